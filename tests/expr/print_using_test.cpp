// PRINT USING: fields, reuse of the format, numeric and string filling, errors.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/test_host.h"

namespace tessaly::expr {
namespace {

struct UsingCase {
    const char* statement;
    const char* shown; // the printed row, or the error message
};

class PrintUsing : public ::testing::TestWithParam<UsingCase> {};

TEST_P(PrintUsing, FormatsTheItems)
{
    test::Session session;
    std::string command = GetParam().statement;
    std::string out = session.type(command);
    out.erase(0, command.size() + 1);
    auto end = out.find('\n');
    EXPECT_EQ(out.substr(0, end), GetParam().shown) << command;
}

INSTANTIATE_TEST_SUITE_P(Expr, PrintUsing,
    ::testing::Values(UsingCase {"PRINT USING \"& &\";\"ABCDE\"", "ABC"}, UsingCase {"PRINT USING \"& &\";\"A\"", "A  "},
        UsingCase {"PRINT USING \"##\";1,2,3", " 1 2 3"}, UsingCase {"PRINT USING \"A## B## Z\";5", "A 5 B"},
        UsingCase {"PRINT USING \"## END\";7", " 7 END"}, UsingCase {"PRINT USING \"**\";5", "Syntax error in "},
        UsingCase {"PRINT USING \"###.##\";3.14159", "  3.14"}, UsingCase {"PRINT USING \"###.##\";0.5", "  0.50"},
        UsingCase {"PRINT USING \"###.##\";-1.5", " -1.50"}, UsingCase {"PRINT USING \"###.##\";12345.6", "%12345.60"},
        UsingCase {"PRINT USING \"##.##^^^^\";123.456", " 1.23E+02"},
        UsingCase {"PRINT USING \"##.##^^^^\";0.000015", " 1.50E-05"},
        UsingCase {"PRINT USING \".##^^^^\";0.000015", ".15E-04"},
        UsingCase {"PRINT USING \"##.##^^^^-\";-123.456", "12.35E+01-"},
        UsingCase {"PRINT USING \"##.##^^^^-\";123.456", "12.35E+01 "},
        UsingCase {"PRINT USING \"##.##^^^^+\";123.456", "12.35E+01+"},
        UsingCase {"PRINT USING \"##.##^^^^+\";-0.5", "50.00E-02-"},
        UsingCase {"PRINT USING \"+##.##^^^^\";-123.456", "-12.35E+01"},
        UsingCase {"PRINT USING \"+##.##^^^^\";123.456", "+12.35E+01"}, UsingCase {"PRINT USING \"##,###\";12345", "12,345"},
        UsingCase {"PRINT USING \"+##.#\";2.5", " +2.5"}, UsingCase {"PRINT USING \"+##.#\";-2.5", " -2.5"},
        UsingCase {"PRINT USING \"###.#-\";-2.5", "  2.5-"}, UsingCase {"PRINT USING \"###.#-\";2.5", "  2.5 "},
        UsingCase {"PRINT USING \"**###\";12", "***12"}, UsingCase {"PRINT USING \"\\###\";12", " \\12"},
        UsingCase {"PRINT USING \"!\";\"XYZ\"", "X"}, UsingCase {"PRINT USING \"!\";\"\"", " "},
        UsingCase {"PRINT USING \"@!\";\"HELLO\",\"Q\"", "HELLOQ"}, UsingCase {"PRINT USING \"_##\";5", "#5"},
        UsingCase {"PRINT USING \"__#\";5", "_5"}, UsingCase {"PRINT USING \"##\";\"A\"", "Illegal function call in "},
        UsingCase {"PRINT USING \"!\";5", "Illegal function call in "}, UsingCase {"PRINT USING \"##\"", "Illegal function call in "},
        UsingCase {"PRINT USING \"ABC\";5", "Illegal function call in "},
        UsingCase {"PRINT USING \"#.##\";0.125", "0.12"}, UsingCase {"PRINT USING \".##\";0.5", ".50"}));

TEST(PrintRow, DoubledQuotesStandForOneQuote)
{
    test::Session session;
    EXPECT_EQ(session.type("PRINT \"A\"\"B\";\"C\""), "PRINT \"A\"\"B\";\"C\"\nA\"BC\nOK\n");
    EXPECT_EQ(session.type("PRINT \"X\",\"Y\""), "PRINT \"X\",\"Y\"\nX             Y\nOK\n");
}

// A leading minus wraps its first term (-2^2 is -4) unless MOD, \\ or a logical word stands
// anywhere in the rest of the statement, later items included; an earlier item does not count.
// Unwrapped, the minus belongs to the number: (-3)^2 goes through the logarithm of 3 without
// rounding, as (-2)^3 does.
TEST(PrintRow, ALeadingMinusLooksAtTheRestOfTheStatement)
{
    test::Session session;
    for (auto [command, shown] : {std::pair {"PRINT -2^2;5 MOD 3", " 4  2 "}, std::pair {"PRINT 5 MOD 3;-2^2", " 2 -4 "},
             std::pair {"PRINT -2^2;2", "-4  2 "}, std::pair {"PRINT -2^2,1 AND 1", " 4             1 "},
             std::pair {"PRINT -2^2;7 \\ 2", " 4  3 "}, std::pair {"PRINT USING \"## ##\";-2^2;5 MOD 3", " 4  2"},
             std::pair {"WRITE -2^2,5 MOD 3", "4,2"}, std::pair {"A=-2^2:PRINT A;5 MOD 3", "-4  2 "},
             std::pair {"PRINT -3^2;5 MOD 3", " 9.000000000000002  2 "}}) {
        EXPECT_EQ(session.type(command), std::string(command) + "\n" + shown + "\nOK\n");
    }
}

TEST(PrintUsingRow, SemicolonKeepsTheRow)
{
    test::Session session;
    EXPECT_EQ(session.type("PRINT USING \"##\";7;:PRINT \"X\""), "PRINT USING \"##\";7;:PRINT \"X\"\n 7X\nOK\n");
}

} // namespace
} // namespace tessaly::expr

namespace tessaly::expr {
namespace {

TEST(PrinterOutput, LprintLprintUsingAndLlistGoToThePrinter)
{
    test::Session session;
    session.type("LPRINT \"A\";1");
    EXPECT_EQ(session.host().printed, "A 1 \r\n");
    session.type("LPRINT \"X\";");
    EXPECT_EQ(session.host().printed, "A 1 \r\nX");
    session.host().printed.clear();
    session.type("LPRINT USING \"##\";5");
    EXPECT_EQ(session.host().printed, " 5\r\n");
    session.host().printed.clear();
    session.type({"10 PRINT 1", "20 END", "LLIST 20"});
    EXPECT_EQ(session.host().printed, "20 END\r\n");
    // Inside a run too, where the stored lines have been prepared, each line ends with CR LF.
    session.host().printed.clear();
    session.type({"10 LLIST -20 ", "20 END", "RUN"});
    EXPECT_EQ(session.host().printed, "10 LLIST -20\r\n20 END\r\n");
    // The screen row is not touched by the printer.
    EXPECT_EQ(session.type("LPRINT 7"), "LPRINT 7\nOK\n");
}

} // namespace
} // namespace tessaly::expr

namespace tessaly::expr {
namespace {

struct PrinterFailureCase {
    core::PrinterWrite printer;
    const char* program;
    const char* message; // the run's last row
};

class PrinterFailures : public ::testing::TestWithParam<PrinterFailureCase> {};

// A missing printer and a failed write are reported with the line number: "File not open " for
// all printer output, "Disk I/O error " after LPRINT but "Disk I/O error in " after LLIST; a
// printer port cannot even be opened without a printer.
TEST_P(PrinterFailures, SayWhatWentWrongInWhichLine)
{
    test::Session session;
    session.host().printer = GetParam().printer;
    session.type({GetParam().program, "20 PRINT \"NOT REACHED\""});
    std::string out = session.runProgram();
    EXPECT_EQ(out, std::string(GetParam().message) + "\n") << GetParam().program;
    EXPECT_EQ(session.host().printed, "");
}

INSTANTIATE_TEST_SUITE_P(Expr, PrinterFailures,
    ::testing::Values(PrinterFailureCase {core::PrinterWrite::NoPrinter, "10 LPRINT 1", "File not open 10"},
        PrinterFailureCase {core::PrinterWrite::NoPrinter, "10 LPRINT USING \"##\";1", "File not open 10"},
        PrinterFailureCase {core::PrinterWrite::NoPrinter, "10 LLIST", "File not open 10"},
        PrinterFailureCase {core::PrinterWrite::NoPrinter, "10 OPEN \"LPT1:\" FOR OUTPUT AS #1",
            "File can not open in 10"},
        PrinterFailureCase {core::PrinterWrite::NoPrinter, "10 SAVE \"LPT1:\"", "File can not open in 10"},
        PrinterFailureCase {core::PrinterWrite::Failed, "10 LPRINT \"A\"", "Disk I/O error 10"},
        PrinterFailureCase {core::PrinterWrite::Failed, "10 LLIST", "Disk I/O error in 10"},
        PrinterFailureCase {core::PrinterWrite::Failed, "10 OPEN \"LPT1:\" FOR OUTPUT AS #1:PRINT #1,\"X\"",
            "Disk I/O error 10"},
        PrinterFailureCase {core::PrinterWrite::Failed, "10 SAVE \"LPT1:\"", "Disk I/O error 10"}));

TEST(PrinterOutput, AnErrorHandlerCatchesAMissingPrinter)
{
    test::Session session;
    session.host().printer = core::PrinterWrite::NoPrinter;
    session.type({"10 ON ERROR GOTO 100", "20 LPRINT 1", "30 END", "100 PRINT ERR;ERL:RESUME 30"});
    EXPECT_EQ(session.runProgram(), " 60  20 \nOK\n");
}

// What a run prints is one job, handed over when the run ends; closing a printer port ends the
// job at once, and a direct command is a job of its own.
TEST(PrinterOutput, JobsEndWithTheRunOrWhenAPrinterPortCloses)
{
    test::Session session;
    auto& host = session.host();
    session.type({"10 LPRINT \"A\"", "20 LPRINT \"B\"", "30 END"});
    EXPECT_TRUE(host.printJobs.empty());
    session.runProgram();
    EXPECT_EQ(host.printJobs, std::vector<std::string> {"A\r\nB\r\n"});

    host.printJobs.clear();
    session.type({"10 OPEN \"LPT1:\" FOR OUTPUT AS #2", "20 PRINT #2,\"P\"", "30 CLOSE #2", "40 LPRINT \"Q\"",
        "50 OPEN \"LPT2:\" FOR OUTPUT AS #3", "60 PRINT #3,\"R\"", "70 STOP"});
    session.runProgram();
    EXPECT_EQ(host.printJobs, (std::vector<std::string> {"P\r\n", "Q\r\nR\r\n"}));

    host.printJobs.clear();
    session.type("LPRINT \"D\"");
    session.type("PRINT 1");
    EXPECT_EQ(host.printJobs, std::vector<std::string> {"D\r\n"});
}

} // namespace
} // namespace tessaly::expr
