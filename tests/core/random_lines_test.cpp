// Thousands of random lines, typed and run: nothing may crash, overrun or leave the program unsorted.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "core/keyword_table.h"
#include "support/temp_folder.h"
#include "support/test_host.h"

namespace tessaly::core {
namespace {

std::string randomLine(std::mt19937& random)
{
    static constexpr std::string_view kPieces[] = {" ", ":", "\"", "'", "=", ",", "#", "*", "?", "(", ")", "-",
        "0", "10", "65536", "99999", "A", "X$", "IF ", " THEN ", " ELSE ", "GOTO ", "REM", "DATA ", "NEXT ", "*L",
        "RUN", "CONT", "\x82\xa0", "\x81", "\t", "\r"};
    std::uniform_int_distribution<int> pieceCount(0, 24);
    std::uniform_int_distribution<size_t> pick(0, std::size(kPieces) - 1);
    std::uniform_int_distribution<int> keyword(1, KeywordTable::statementCount());
    std::uniform_int_distribution<int> coin(0, 3);
    std::string line;
    if (coin(random) != 0)
        line = std::to_string(std::uniform_int_distribution<int>(0, 70000)(random)) + " ";
    int count = pieceCount(random);
    for (int i = 0; i < count; ++i) {
        if (coin(random) == 0)
            line += keywordTable().statement(keyword(random));
        else
            line += kPieces[pick(random)];
    }
    if (coin(random) == 0)
        line += std::string(std::uniform_int_distribution<int>(0, 1100)(random), 'Z');
    return line;
}

std::string randomExpression(std::mt19937& random, int depth)
{
    static constexpr std::string_view kAtoms[] = {"1", "0", "-3", "2.5", "1E300", "1E-300", "&HFFFF", "&O7", "A",
        "B%", "C#", "S$", "\"X\"", "A(3)", "B$(1,2)", "SIN(1)", "LEFT$(S$,2)", "CHR$(65)", "FNZ(1)", "RND",
        "LEN(\"AB\")", "ERR", "VAL(\"&H\")", "MID$(\"ABC\",2)", "STRING$(300,65)", "INSTR(\"A\",\"\")", ""};
    static constexpr std::string_view kOperators[] = {"+", "-", "*", "/", "^", "\\", " MOD ", " AND ", " OR ",
        " XOR ", " EQV ", " IMP ", "<", ">", "=", "<>", "<=", ">=", " NOT ", ",", ")", "(", "\""};
    std::uniform_int_distribution<size_t> atom(0, std::size(kAtoms) - 1);
    std::uniform_int_distribution<size_t> op(0, std::size(kOperators) - 1);
    std::uniform_int_distribution<int> shape(0, 5);
    std::string text;
    int terms = shape(random) + 1;
    for (int k = 0; k < terms; ++k) {
        if (k > 0)
            text += kOperators[op(random)];
        if (depth < 6 && shape(random) == 0)
            text += "(" + randomExpression(random, depth + 1) + ")";
        else
            text += kAtoms[atom(random)];
    }
    return text;
}

// Random statements may write files (COPY, SAVE, OPEN ...): they run in a folder of their own.
class RandomLines : public test::InFolder {};

TEST_F(RandomLines, RandomExpressionsNeverCrash)
{
    std::mt19937 random(7);
    test::Session session(200);
    session.type({"DIM A(10)", "DEF FNZ(X)=X*2", "S$=\"HELLO\""});
    for (int i = 0; i < 3000; ++i) {
        auto expression = randomExpression(random, 0);
        session.type("Q=" + expression);
        session.type("Q$=" + expression);
        session.type("IF " + expression + " THEN Q=1 ELSE Q=2");
        ASSERT_FALSE(session.interpreter().isRunning());
    }
    session.type(std::string(70, '(') + "1" + std::string(70, ')'));
    session.type("S$=S$+S$:S$=S$+S$:S$=S$+S$:S$=S$+S$:S$=S$+S$:S$=S$+S$:S$=S$+S$:S$=S$+S$");
}

TEST_F(RandomLines, NeverCrashAndKeepTheProgramSorted)
{
    std::mt19937 random(20261123);
    test::Session session(2000);
    auto& in = session.interpreter();
    for (int i = 0; i < 4000; ++i) {
        auto line = randomLine(random);
        session.type(line);
        if (i % 40 == 39)
            session.type("RUN");
        if (i % 500 == 499)
            in.program().clear();
        ASSERT_FALSE(in.isRunning());
        for (int e = 2; e < in.program().count(); ++e)
            ASSERT_LT(in.program().numberAt(e - 1), in.program().numberAt(e)) << "after " << line;
    }
}

} // namespace
} // namespace tessaly::core
