// The argument readers that LINE, CIRCLE and PAINT share: what an omitted argument, an argument with
// nothing in it, a number and a string each give, and the point with what follows it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/interpreter.h"
#include "screen/figure_arguments.h"
#include "support/test_host.h"

namespace tessaly::screen {
namespace {

// The message of the error a reader raised, taken off the interpreter.
std::string takeMessage(core::Interpreter& in)
{
    in.error().clear();
    std::string message = in.run().outputText;
    in.run().outputText.clear();
    return message;
}

// Argument 1 is blank, 2 has nothing in it (a remark follows), 4 is a string.
const std::vector<std::string> kFields {"2.5", "", "'", "-1.5", "\"AB\""};

TEST(FigureArguments, NumbersKeepTheirDefaultWhenOmittedOrEmpty)
{
    test::Session session;
    auto& in = session.interpreter();
    for (size_t k : {1, 2, 9}) {
        double number = 7;
        EXPECT_EQ(numberArgument(in, kFields, k, number), 0) << k;
        EXPECT_EQ(number, 7) << k;
    }
    double number = 7;
    EXPECT_EQ(numberArgument(in, kFields, 0, number), 0);
    EXPECT_EQ(number, 2.5);
    EXPECT_LT(numberArgument(in, kFields, 4, number), 0);
    EXPECT_EQ(takeMessage(in), "Type mismatch in ");
}

TEST(FigureArguments, RoundedArgumentsCountAnEmptyOneAsZero)
{
    test::Session session;
    auto& in = session.interpreter();
    int number = 7;
    EXPECT_EQ(roundedArgument(in, kFields, 1, number), 0);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(roundedArgument(in, kFields, 2, number), 0);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(roundedArgument(in, kFields, 0, number), 0);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(roundedArgument(in, kFields, 3, number), 0);
    EXPECT_EQ(number, -2);
    EXPECT_LT(roundedArgument(in, kFields, 4, number), 0);
    EXPECT_EQ(takeMessage(in), "Type mismatch in ");
}

TEST(FigureArguments, AStringArgumentBecomesTheTile)
{
    test::Session session;
    auto& in = session.interpreter();
    in.graphics().tileText = "old";
    TileOrNumber argument;
    EXPECT_EQ(readTileOrNumber(in, kFields, 1, argument), 0);
    EXPECT_FALSE(argument.given);
    EXPECT_EQ(in.graphics().tileText, "old");
    EXPECT_EQ(readTileOrNumber(in, kFields, 3, argument), 0);
    EXPECT_TRUE(argument.given);
    EXPECT_FALSE(argument.tile);
    EXPECT_EQ(argument.value.number, -1.5);
    EXPECT_EQ(in.graphics().tileText, "old");
    EXPECT_EQ(readTileOrNumber(in, kFields, 4, argument), 0);
    EXPECT_TRUE(argument.tile);
    EXPECT_EQ(in.graphics().tileText, "AB");
    EXPECT_EQ(readTileOrNumber(in, kFields, 2, argument), 0);
    EXPECT_TRUE(argument.given);
    EXPECT_FALSE(argument.tile);
    EXPECT_TRUE(argument.value.empty);
}

TEST(FigureArguments, APointTakesOnlyArgumentsAfterAComma)
{
    test::Session session;
    auto& in = session.interpreter();
    FigurePoint point;
    std::vector<std::string> fields;
    EXPECT_EQ(readPointAndArguments(in, " STEP(1, 2), 3 ,, X", 0, point, fields), 0);
    EXPECT_TRUE(point.step);
    EXPECT_EQ(point.x, 1);
    EXPECT_EQ(point.y, 2);
    EXPECT_EQ(fields, (std::vector<std::string> {"3", "", "X"}));
    EXPECT_EQ(readPointAndArguments(in, "(1, 2)", 0, point, fields), 0);
    EXPECT_TRUE(fields.empty());
    for (const char* text : {"(1, 2) 3", " 3, 4", ""}) {
        EXPECT_LT(readPointAndArguments(in, text, 0, point, fields), 0) << text;
        EXPECT_EQ(takeMessage(in), "Syntax error in ") << text;
    }
}

} // namespace
} // namespace tessaly::screen
