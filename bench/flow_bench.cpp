// Whole loops through the run loop: a tight FOR/NEXT, a WHILE/WEND loop (statements that chain
// without returning to the idle driver), a GOSUB/RETURN loop, and GOTO across a
// 5,000-line program (the line lookup must not scan every entry on every jump).
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "core/interpreter.h"

namespace {

using namespace tessaly;

void runToEnd(core::Interpreter& in)
{
    in.runProgram();
    while (in.isRunning())
        in.idle();
}

void BM_TightForNext(benchmark::State& state)
{
    core::Host host;
    core::Interpreter in(host);
    in.program().replaceAll({{10, "10 FOR I=1 TO 1000:NEXT I\r\n"}});
    for (auto _ : state)
        runToEnd(in);
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(BM_TightForNext)->Unit(benchmark::kMillisecond);

void BM_WhileWend(benchmark::State& state)
{
    core::Host host;
    core::Interpreter in(host);
    in.program().replaceAll({{10, "10 I=0:WHILE I<1000:I=I+1:WEND\r\n"}});
    for (auto _ : state)
        runToEnd(in);
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(BM_WhileWend)->Unit(benchmark::kMillisecond);

void BM_GosubReturn(benchmark::State& state)
{
    core::Host host;
    core::Interpreter in(host);
    in.program().replaceAll({{10, "10 FOR I=1 TO 1000:GOSUB 100:NEXT I\r\n"}, {20, "20 END\r\n"},
        {100, "100 A=A+1:RETURN\r\n"}});
    for (auto _ : state)
        runToEnd(in);
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(BM_GosubReturn)->Unit(benchmark::kMillisecond);

void BM_GotoInLongProgram(benchmark::State& state)
{
    core::Host host;
    core::Interpreter in(host);
    std::vector<core::ProgramStore::Line> lines;
    lines.push_back({10, "10 I=I+1:IF I>1000 THEN END\r\n"});
    lines.push_back({20, "20 GOTO 49990\r\n"});
    for (int line = 3; line < 5000; ++line)
        lines.push_back({line * 10, std::to_string(line * 10) + " REM filler\r\n"});
    lines.push_back({49990, "49990 GOTO 10\r\n"});
    in.program().replaceAll(lines);
    for (auto _ : state)
        runToEnd(in);
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(BM_GotoInLongProgram)->Unit(benchmark::kMillisecond);

} // namespace
