// Kernels of the spine: statement recognition, line entry, preparation, and the run loop on a
// jump-heavy program. Whole programs through the runner: bench/compare.
#include <benchmark/benchmark.h>

#include <string>

#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/preparation.h"

namespace {

using namespace tessaly;

void BM_RecognizeStatement(benchmark::State& state)
{
    const auto& table = core::keywordTable();
    const char* statements[] = {"PRINT X", "LOCATE 1,2", "RETURN", "ON ERROR GOTO 100", "A=1", "WEND"};
    for (auto _ : state) {
        for (const char* text : statements)
            benchmark::DoNotOptimize(table.recognizeStatement(text, 0));
    }
}
BENCHMARK(BM_RecognizeStatement);

void BM_EnterLines(benchmark::State& state)
{
    core::Host host;
    for (auto _ : state) {
        core::Interpreter in(host);
        for (int line = 1000; line > 0; --line)
            in.lineEntered(std::to_string(line * 10) + " REM line");
        benchmark::DoNotOptimize(in.program().count());
    }
}
BENCHMARK(BM_EnterLines)->Unit(benchmark::kMillisecond);

void BM_PrepareLongProgram(benchmark::State& state)
{
    core::Host host;
    core::Interpreter in(host);
    std::vector<core::ProgramStore::Line> lines;
    for (int line = 1; line <= 5000; ++line) {
        std::string text = std::to_string(line * 10) + " IF A THEN 10 ELSE REM x:REM y";
        lines.push_back({line * 10, text + "\r\n"});
    }
    in.program().replaceAll(lines);
    for (auto _ : state)
        benchmark::DoNotOptimize(core::prepareProgram(in));
}
BENCHMARK(BM_PrepareLongProgram)->Unit(benchmark::kMillisecond);

// GOTO back and forth across a 5,000-line program: the line lookup must not scan the entries.
void BM_GotoAcrossLongProgram(benchmark::State& state)
{
    core::Host host;
    core::Interpreter in(host);
    std::vector<core::ProgramStore::Line> lines;
    lines.push_back({10, "10 GOTO 49990\r\n"});
    for (int line = 2; line < 5000; ++line)
        lines.push_back({line * 10, std::to_string(line * 10) + " REM filler\r\n"});
    lines.push_back({49990, "49990 GOTO 10\r\n"});
    in.program().replaceAll(lines);
    in.runProgram();
    for (auto _ : state)
        in.idle();
    in.breakProgram();
}
BENCHMARK(BM_GotoAcrossLongProgram);

} // namespace
