// PSET and PRESET compiled against PSET and PRESET read from their text: the same pixels, the same
// last point, the same messages with their line numbers.
#include <gtest/gtest.h>

#include "core/compiled_program.h"
#include "io/program_file.h"
#include "support/graphics_session.h"

namespace tessaly::screen {
namespace {

struct PixelRun {
    std::string output;
    std::vector<Pixel> page;
};

// The statement runs twice (compiled the second time), with an error handler that shows ERR and ERL.
PixelRun runOneWay(const std::string& setUp, const std::string& statement, bool textPath)
{
    test::GraphicsSession g;
    g.session.interpreter().compiled().setEnabled(!textPath);
    std::string program = "10 ON ERROR GOTO 100\n15 " + setUp + "\n20 A=7:B=9:C=2:D$=\"Q\":DIM X(3)\n"
                          "30 " + statement + "\n40 R=R+1:A=A+13:B=B+5:IF R<3 THEN 30\n"
                          "50 PSET STEP(1,1),4:END\n100 PRINT \"E\";ERR;ERL:RESUME NEXT\n";
    io::ProgramFile::Read(program, g.session.interpreter().program());
    PixelRun run {g.session.runProgram(), {}};
    for (int y = 0; y < kScreenHeight; ++y)
        for (int x = 0; x < kScreenWidth; ++x)
            run.page.push_back(g.at(x, y));
    return run;
}

TEST(CompiledPixels, DrawAndFailAsFromTheirText)
{
    // DEFSTR S: S (a name without $) is a string, which the point and the colour meet as one.
    const char* setUps[] = {"REM", "WINDOW (-10,-10)-(100,100)", "VIEW (20,20)-(300,200):WINDOW SCREEN (0,0)-(50,40)",
        "DEFSTR S"};
    const char* statements[] = {
        "PSET (A,B)", "PSET (A+.5,B*2.5),C", "PSET STEP(A,-3),5", "PRESET (A,B)", "PRESET STEP (2,2),6",
        "PSET (A,B),9", "PSET (A,B),D$", "PSET (A,B),,3", "PSET (A,B);3", "PSET (A,B),C,7", "PSET (A)",
        "PSET (A,D$)", "PSET (A,B) Z", "PSET (X(A),1)", "PSET (1E10,-1E10),1", "PSET", "PSET STEP A",
        "PSET (A,B", "PSET (A,)", "PSET (A,B),", "PSET (A,B),C+(1", "PSET(A/0,B)", "PSET (A,B),-1",
        "PSET (,B)", "PSET (A,B),S", "PSET (S,B)", "PSET (A,S+1)", "PSET (A,B),C*S", "PSET (A+1,B),(A+B) AND 7",
        "PSET (A,B),C+.5", "PSET (A,B),&HFFFF", "PSET (A,B),-C", "PRESET (-A,-(B)),C-2",
    };
    for (const char* setUp : setUps)
        for (const char* statement : statements) {
            PixelRun compiled = runOneWay(setUp, statement, false);
            PixelRun text = runOneWay(setUp, statement, true);
            EXPECT_EQ(compiled.output, text.output) << setUp << " / " << statement;
            EXPECT_TRUE(compiled.page == text.page) << setUp << " / " << statement;
        }
}

TEST(CompiledPixels, DrawWhereTheyShould)
{
    PixelRun run = runOneWay("REM", "PSET (A,B),C:PRESET (A,B+1)", false);
    EXPECT_EQ(run.output, "OK\n");
    auto at = [&](int x, int y) { return run.page[static_cast<size_t>(y * kScreenWidth + x)]; };
    for (int pass = 0; pass < 3; ++pass) {
        EXPECT_EQ(at(7 + 13 * pass, 9 + 5 * pass), 0xFF0000U);
        EXPECT_EQ(at(7 + 13 * pass, 10 + 5 * pass), 0U);
    }
    EXPECT_EQ(at(7 + 26 + 1, 9 + 10 + 1 + 1), 0x00FF00U); // STEP from the last point, PRESET's
}

} // namespace
} // namespace tessaly::screen
