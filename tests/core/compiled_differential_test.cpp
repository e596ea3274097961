// Compiled statements against statements read from their text: thousands of random programs run
// both ways must write the same screen stream, byte for byte (values, rounding, errors with their
// line numbers, traps), and leave the same variables behind.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "core/compiled_program.h"
#include "io/program_file.h"
#include "support/test_host.h"

namespace tessaly::core {
namespace {

class ProgramGenerator {
public:
    explicit ProgramGenerator(unsigned seed)
        : m_random(seed)
    {
    }

    std::string expression(int depth = 0)
    {
        static constexpr std::string_view kAtoms[] = {"1", "0", "3", "2.5", ".109375", "1E38", "1E-30", "&HFFFF",
            "&O17", "32767", "A", "B%", "C#", "D!", "I", "S$", "\"X\"", "\"\"", "A(2)", "A(I MOD 5)", "B$(1,2)",
            "SIN(1)", "LEFT$(S$,2)", "CHR$(65)", "FNZ(A)", "FNS$(S$)", "LEN(S$)", "ERR", "VAL(\"12\")",
            "MID$(\"ABC\",2)", "ABS(-A)", "INT(C#)", "ASC(S$)", "STR$(B%)", "X", "Y$", ""};
        static constexpr std::string_view kOperators[] = {"+", "-", "*", "/", "^", "\\", " MOD ", " AND ", " OR ",
            " XOR ", " EQV ", " IMP ", "<", ">", "=", "<>", "<=", ">=", " NOT ", "+", "*", "-"};
        std::string text;
        int terms = pick(4) + 1;
        if (pick(4) == 0)
            text += "-";
        for (int k = 0; k < terms; ++k) {
            if (k > 0)
                text += kOperators[pick(std::size(kOperators))];
            if (pick(6) == 0)
                text += "-";
            if (depth < 4 && pick(5) == 0)
                text += "(" + expression(depth + 1) + ")";
            else
                text += kAtoms[pick(std::size(kAtoms))];
        }
        return text;
    }

    std::string statement()
    {
        switch (pick(23)) {
        case 0: return "A=" + expression();
        case 1: return "B%=" + expression();
        case 2: return "C#=" + expression() + ":PRINT C#";
        case 3: return "S$=" + expression();
        case 4: return "A(" + expression() + ")=" + expression();
        case 5: return "B$(" + std::to_string(pick(4)) + "," + std::to_string(pick(4)) + ")=" + expression();
        case 6: return "PRINT " + expression() + ";" + expression();
        case 7: return "X=" + expression() + ":PRINT X;A;B%";
        case 8: return "IF " + expression() + " THEN PRINT 1 ELSE PRINT 2";
        case 9: return "FOR I=" + expression() + " TO " + std::to_string(pick(6)) + " STEP " + expression() + ":PRINT I;:NEXT I";
        case 10: return "LET Y$ = " + expression() + " :PRINT Y$";
        case 11: return pick(2) == 0 ? "DEFINT X" : "DEFDBL D";
        case 12: return "D=" + expression() + ":PRINT D";
        case 13: return "GOSUB 900";
        case 14: return "A=A+1:B%=B%-1:C#=C#*1.5:PRINT A;B%;C#";
        case 15: return "FOR J=1 TO 2:A(J)=A(J)+" + expression() + ":NEXT:PRINT A(1);A(2)";
        case 16: return "IF " + expression() + " AND " + expression() + " THEN PRINT \"T\" ELSE PRINT \"F\"";
        case 17: return "IF S$<" + expression() + " OR A>1 THEN PRINT \"Y\"";
        case 18: return "FOR A(1)=1 TO 3:NEXT A(1):FOR B%=3 TO 1 STEP -1:NEXT:PRINT A(1);B%";
        case 19: return pick(2) == 0 ? "GOTO *SKIP" : "RETURN";
        case 20: return "FOR S$=1 TO 2:NEXT S$";
        case 21: return "W=0:WHILE W<" + expression() + " AND W<4:W=W+1:WEND:PRINT W";
        default: return "PRINT A;B%;C#;D!;X;S$;Y$";
        }
    }

    // A program that keeps going past errors: the handler shows ERR and ERL and resumes after them.
    // Its lines run twice: the first time from their text (and compiled then), then compiled.
    std::string program()
    {
        std::string text = "1 ON ERROR GOTO 1000\n2 DIM A(10),B$(3,3)\n3 DEF FNZ(Q)=Q*2+1\n"
                           "4 DEF FNS$(Q$)=Q$+\"!\"\n5 S$=\"HELLO\":A=1:B%=2:C#=3.25:D!=0.1\n";
        int lines = pick(20) + 5;
        for (int line = 1; line <= lines; ++line)
            text += std::to_string(line * 10) + " " + statement() + "\n";
        text += "780 *SKIP:PRINT \"S\"\n790 R=R+1:IF R<2 THEN 10\n800 END\n900 X=X+1:RETURN\n1000 PRINT \"E\";ERR;ERL:RESUME NEXT\n";
        return text;
    }

private:
    int pick(size_t count) { return std::uniform_int_distribution<int>(0, static_cast<int>(count) - 1)(m_random); }

    std::mt19937 m_random;
};

// Runs the program one way; a run longer than maxSteps idle steps is broken off.
std::string runOneWay(const std::string& program, bool textPath, int maxSteps = 40)
{
    test::Session session(maxSteps);
    session.interpreter().compiled().setEnabled(!textPath);
    io::ProgramFile::Read(program, session.interpreter().program());
    std::string out = session.runProgram();
    out += session.type("PRINT A;B%;C#;D!;X;S$;Y$;A(2);B$(1,2)");
    return out;
}

TEST(CompiledStatements, ALeadingMinusWrapsTheFirstTerm)
{
    std::string program = "10 A=-2+1:PRINT A\n20 B=-2^2+1*3:PRINT B\n30 R=R+1:IF R<3 THEN 10\n";
    EXPECT_EQ(runOneWay(program, false, 100000), runOneWay(program, true, 100000));
}

// Groups of numbers and names are evaluated on numbers alone; lone literals keep their spelling
// (signs put in front of them included), and names that DEFSTR turns into strings send the group
// back the general way, after errors that came before them and with the errors strings bring.
TEST(CompiledStatements, NumericGroupsGiveWhatTheGeneralPathGives)
{
    std::string program = "1 ON ERROR GOTO 900\n"
                          "10 DEFINT I:A=1.5:B=2:C#=1/3:I=7:D!=.1\n"
                          "20 PRINT -5;-(5);(-5);2.50;-2.50;&HFFFF;-&H10;--3;-(-(2.0));1E+3\n"
                          "21 IF R=1 THEN PRINT E+1;E<\"A\";(E)\n"
                          "22 IF R=1 THEN X=(E+1)*2\n"
                          "23 IF R=1 THEN X=1/0+E\n"
                          "24 IF R=1 THEN X=-E\n"
                          "25 IF R=1 THEN X=(A+1)+(E-1)\n"
                          "26 IF R=1 THEN GOSUB 800\n"
                          "28 B%=&HFFFF:PRINT B%:B%=-1+&H8000:PRINT B%:B%=&H7FFF+1\n"
                          "29 IF I<8 AND A>1 THEN PRINT \"Y\" ELSE PRINT \"N\"\n"
                          "30 PRINT A*B-C#;(A+B)*(I-1);-(A);-A+B;NOT A;I\\2;I MOD 4;A AND 3;(I+A) AND 7;2^-1\n"
                          "40 PRINT D!*3;D!+D!+D!;C#*3;A/B;I/2;-I;(I);((A));A<B;(A>B)+1;A=1.5\n"
                          "50 X=A/0+D:PRINT X\n"
                          "60 Y=1E38*A*B:PRINT Y\n"
                          "70 PRINT (((((((((((A+1)))))))))));-(B)*-(A)\n"
                          "75 M(3)=4:PRINT M(3)+M(A*2)*2;-M(3);M(11)+1\n"
                          "76 M(A)=M(A+1)-M(3)/3:PRINT M(1);M(2)\n"
                          "80 R=R+1:IF R<2 THEN DEFSTR E,G:GOTO 20\n"
                          "100 END\n"
                          "800 IF E<\"A\" THEN PRINT \"L\"\n"
                          "810 IF E THEN PRINT \"T\"\n"
                          "815 X=G(1)+1:PRINT G(1)+\"!\";X\n"
                          "820 RETURN\n"
                          "900 PRINT \"E\";ERR;ERL:RESUME NEXT\n";
    std::string compiled = runOneWay(program, false, 100000);
    EXPECT_EQ(compiled, runOneWay(program, true, 100000));
    EXPECT_EQ(compiled.substr(0, compiled.find('\n')), "-5 -5 -5  2.5 -2.5  65535 -16  3  2.  1000. ");
    // E is a string once DEFSTR E has run: "" + 1 is "", a string under * or a minus is a syntax
    // error, and 1/0 comes before E is met.
    EXPECT_NE(compiled.find("-1 \nE 2  22 \nE 11  23 \nE 2  24 \nE 2  25 \nL\nE 13  810 \n"), std::string::npos)
        << compiled;
    // A lone &H literal fits an integer up to 65535; a computed one does not.
    EXPECT_NE(compiled.find("-1 \n 32767 \nE 6  28 \nY\n"), std::string::npos) << compiled;
}

// The lines the tests below share: errors are shown with their line and the run resumes after
// them; the program runs a second time with E a string.
constexpr std::string_view kResumeAfterErrors = "1 ON ERROR GOTO 900\n";
constexpr std::string_view kShowErrors = "900 PRINT \"E\";ERR;ERL:RESUME NEXT\n";
constexpr std::string_view kAgainWithStringE = "90 R=R+1:IF R>1 THEN 100\n95 DEFSTR E:GOTO 20\n100 END\n";

// Runs the program both ways, expects the same output, and gives what it wrote before "OK".
std::string outputBothWays(const std::string& program)
{
    std::string compiled = runOneWay(program, false, 100000);
    EXPECT_EQ(compiled, runOneWay(program, true, 100000));
    return compiled.substr(0, compiled.find("OK\n"));
}

// One or two literals and names with an operator between them are evaluated at once, without the
// group's levels: the same values, types, errors and string names as any other group.
TEST(CompiledStatements, OneOrTwoOperandsGiveWhatTheGeneralPathGives)
{
    std::string program = std::string(kResumeAfterErrors) +
                          "10 DEFINT I:A=1.5:I=7:D!=.1:C#=1/3\n"
                          "20 X=A+I:Y=I*A:Z=-A+1:W=2-I:V=C#*3:U=D!+D!:PRINT X;Y;Z;W;V;U\n"
                          "30 X=A<I:Y=2>A:Z=I=7:T=-I:C#=D!:PRINT X;Y;Z;T;-3;C#\n"
                          "40 B%=I*5000\n"
                          "45 M%(1)=I*5000\n"
                          "46 S$(1)=I+1\n"
                          "47 M%(2)=I+1:M(I)=A*2:PRINT M%(2);M(7)\n"
                          "50 X=A/0\n"
                          "60 IF A<I THEN PRINT \"LT\"\n"
                          "70 IF -A THEN PRINT \"NZ\"\n"
                          "80 IF R=1 THEN X=E+1\n"
                          "81 IF R=1 THEN X=1+E\n"
                          "82 IF R=1 THEN X=-E\n"
                          "83 IF R=1 THEN X=E\n"
                          "84 IF R=1 THEN GOSUB 800\n" +
                          std::string(kAgainWithStringE) +
                          "800 IF E<1 THEN PRINT \"N\"\n"
                          "810 IF E=\"\" THEN PRINT \"S\"\n"
                          "820 RETURN\n" +
                          std::string(kShowErrors);
    // Round two: C# holds .1 now, and E is a string (a string + 1 is a string, a string under a
    // minus a syntax error, a string against a number a type mismatch).
    EXPECT_EQ(outputBothWays(program),
        " 8.5  10.5 -0.5 -5  1  0.2 \n-1 -1 -1 -7 -3  0.1 \nE 6  40 \nE 6  45 \nE 13  46 \n 8  3 \n"
        "E 11  50 \nLT\nNZ\n"
        " 8.5  10.5 -0.5 -5  0.3  0.2 \n-1 -1 -1 -7 -3  0.1 \nE 6  40 \nE 6  45 \nE 13  46 \n 8  3 \n"
        "E 11  50 \nLT\nNZ\n"
        "E 13  80 \nE 13  81 \nE 2  82 \nE 13  83 \nE 13  800 \nS\n");
}

// A NEXT remembers the loop it stepped last; other loops pushed meanwhile, a NEXT of an outer
// variable that closes inner loops, a subroutine's loop at the same variable and loops that have
// ended must all make it look again.
TEST(CompiledStatements, NextFindsItsLoopAfterOthersWerePushed)
{
    std::string program = std::string(kResumeAfterErrors) +
                          "10 FOR I=1 TO 3\n20 FOR J=1 TO 2\n30 PRINT I;J;\n"
                          "40 IF J=1 AND I=2 THEN NEXT I\n50 NEXT J\n60 PRINT \"/\";\n70 NEXT I\n75 PRINT\n"
                          "80 FOR K=1 TO 2:FOR L=1 TO 2:NEXT K\n90 PRINT K;L\n"
                          "100 FOR I=1 TO 2:GOSUB 200:NEXT I:PRINT \"I\";I\n"
                          "110 NEXT L\n"
                          "115 FOR M=1 TO 2:FOR N=1 TO 2:NEXT N:NEXT M:PRINT M;N:NEXT M\n"
                          "120 END\n"
                          "200 FOR J=5 TO 6:NEXT J:RETURN\n" +
                          std::string(kShowErrors);
    EXPECT_EQ(outputBothWays(program),
        " 1  1  1  2 / 2  1  3  1  3  2 /\n 3  1 \nI 3 \nE 1  110 \n 3  3 \nE 1  115 \n");
}

// Functions of numbers that change nothing (SIN, INT, ROUND and their kin) are called from groups
// evaluated on numbers, with the same arguments, errors and values; a group that meets a name
// turned into a string after such a call goes the general way and calls it again unseen.
TEST(CompiledStatements, FunctionsOfNumbersGiveWhatTheGeneralPathGives)
{
    std::string program = std::string(kResumeAfterErrors) +
                          "10 DEFINT I:A=1.5:I=7:D!=.1:C#=1/3\n"
                          "20 X=SIN(A)+COS(I)*2:Y=INT(-A)+FIX(-A):Z=SQR(I*I)-ABS(-3):PRINT X;Y;Z\n"
                          "30 X=CINT(&HFFFF):PRINT X\n"
                          "31 X=CINT(&H7FFF)+CDBL(D!)+CSNG(C#):PRINT X\n"
                          "32 X=ROUND(C#,3)+SGN(-A)+EXP(0)+LOG(1):PRINT X;ATN(1)*4\n"
                          "40 X=LOG(0)\n"
                          "41 X=SQR(-1)+1\n"
                          "50 IF SIN(A)>.5 THEN PRINT \"S\"\n"
                          "60 M(INT(A))=5:PRINT M(1);M(FIX(A*2))\n"
                          "70 X=-SIN(A):Y=(COS(0)):PRINT X;Y\n"
                          "80 IF R=1 THEN X=SIN(A)+E\n"
                          "81 IF R=1 THEN X=INT(E)\n"
                          "82 IF R=1 THEN X=ABS(2)*E+SIN(1)\n" +
                          std::string(kAgainWithStringE) + std::string(kShowErrors);
    EXPECT_EQ(outputBothWays(program),
        " 2.5053 -3  4 \nE 6  30 \n 2.5053 \n 32767.4 \n 0.333  3.141592653589793 \nE 5  40 \n"
        "E 5  41 \nS\n 5  0 \n-0.997495  1 \n 2.5053 -3  4 \nE 6  30 \n 2.5053 \n 32767.4 \n"
        " 0.333  3.141592653589793 \nE 5  40 \nE 5  41 \nS\n 5  0 \n-0.997495  1 \nE 13  80 \n"
        "E 13  81 \nE 2  82 \n");
}

// SIN, COS, TAN, ATN, LOG, EXP and SQR have a way on numbers alone: the same results, errors and
// forms as their handlers, for literals with their spelling, names, sums and nested calls. Each
// line runs twice: the first time from its text, then compiled.
TEST(CompiledStatements, FunctionsOfOneNumberGiveWhatTheirHandlersGive)
{
    std::string program = std::string(kResumeAfterErrors) +
                          "10 DEFINT I:DEFDBL D:A=2.5:I=3:D=1/7:FOR P=1 TO 2\n"
                          "20 PRINT TAN(A);TAN(I);ATN(D);SQR(&H10);EXP(1D0);LOG(1E3)\n"
                          "21 X=SIN(COS(TAN(A)))+SQR(SQR(I)):PRINT X;SIN(D*2)\n"
                          "22 IF EXP(A)>LOG(I) THEN PRINT \"T\";EXP(-A)\n"
                          "30 X=EXP(1000)\n"
                          "31 X=LOG(A-A)+1\n"
                          "32 X=SQR(I-4)\n"
                          "33 X=1+EXP(88.7)\n"
                          "34 PRINT SIN();LOG(-0)\n"
                          "35 NEXT P:END\n" +
                          std::string(kShowErrors);
    // The first row ends at its 80th column, inside EXP's value.
    const std::string once = "-0.7470222972386603 -0.1425465430742778  0.1418970546041639  4  2.71828182845904\n"
                             "5  6.907755278982137 \n 1.98571  0.2818428521222098 \nT 0.0820849986238988 \n"
                             "E 6  30 \nE 5  31 \nE 5  32 \nE 6  33 \nE 5  34 \n";
    EXPECT_EQ(outputBothWays(program), once + once);
}

class RandomPrograms : public ::testing::TestWithParam<unsigned> {};

TEST_P(RandomPrograms, RunAsFromTheirText)
{
    ProgramGenerator generator(GetParam());
    for (int k = 0; k < 300; ++k) {
        std::string program = generator.program();
        std::string compiled = runOneWay(program, false);
        std::string text = runOneWay(program, true);
        ASSERT_EQ(compiled, text) << program;
    }
}

INSTANTIATE_TEST_SUITE_P(CompiledStatements, RandomPrograms, ::testing::Values(1U, 2U, 3U, 4U, 5U));

} // namespace
} // namespace tessaly::core

namespace tessaly::core {
namespace {

// What a name means changes under a compiled statement: DEFINT and its kin, CLEAR, ERASE and DIM.
// The compiled statements find the variable or array anew, as reading their text would.
TEST(CompiledStatements, NamesAreBoundAgainWhenTheirMeaningChanges)
{
    const std::string program = "10 A=B+1.5:C(1)=A:PRINT A;B;C(1)\n"
                                "20 R=R+1:ON R GOTO 100,110,120,130,140,150\n"
                                "100 DEFINT B:GOTO 10\n"
                                "110 CLEAR:R=2:GOTO 10\n"
                                "120 DEFDBL A-C:GOTO 10\n"
                                "130 ERASE C:DIM C(3):C(1)=7:B=7:GOTO 10\n"
                                "140 DEFSTR D:GOTO 10\n"
                                "150 END\n";
    std::string compiled = runOneWay(program, false, 100000);
    EXPECT_EQ(compiled, runOneWay(program, true, 100000));
    EXPECT_EQ(compiled.substr(0, compiled.find("PRINT A;")),
        " 1.5  0  1.5 \n 1.5  0  1.5 \n 1.5  0  1.5 \n 1.5  0  1.5 \n 8.5  7  8.5 \n 8.5  7  8.5 \nOK\n");
}

} // namespace
} // namespace tessaly::core

namespace tessaly::core {
namespace {

std::string editAfterBreak(bool textPath)
{
    test::Session session;
    session.interpreter().compiled().setEnabled(!textPath);
    session.type({"10 A=A+1", "20 IF A<1000000 THEN 10", "30 PRINT A", "40 END"});
    session.typeThenBreak("RUN", 60);
    session.type("10 A=A+100000");
    return session.type("GOTO 10");
}

// A line changed after BREAK runs as it now reads: nothing compiled from its old text is left.
TEST(CompiledStatements, ALineEditedAfterBreakRunsItsNewText)
{
    std::string compiled = editAfterBreak(false);
    EXPECT_EQ(compiled, editAfterBreak(true));
    EXPECT_NE(compiled.find(" 1000"), std::string::npos) << compiled;
    EXPECT_EQ(compiled.find(" 1000000 "), std::string::npos) << compiled;
}

} // namespace
} // namespace tessaly::core
