// Drawing through the renderer: PSET over a 256 x 256 area (each pixel recomposes only its own
// rectangle) and 2,000 printed lines that scroll the text window.
#include <benchmark/benchmark.h>

#include <string>

#include "core/interpreter.h"
#include "screen/colours.h"
#include "screen/function_keys.h"
#include "screen/graphics.h"
#include "screen/renderer.h"

namespace {

using namespace tessaly;

struct RenderedInterpreter {
    core::Host host;
    core::Interpreter in {host};
    screen::Font font = screen::Font::parse("0041:FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\n");
    screen::Renderer renderer {font, in.colours(), in.functionKeys(), in.graphics()};
    RenderedInterpreter() { in.setRenderer(&renderer); }
    ~RenderedInterpreter() { in.setRenderer(nullptr); }

    void run(const std::string& line)
    {
        in.program().replaceAll({{10, "10 " + line + "\r\n"}});
        in.runProgram();
        while (in.isRunning())
            in.idle();
    }
};

void BM_PsetArea(benchmark::State& state)
{
    RenderedInterpreter r;
    for (auto _ : state)
        r.run("FOR Y%=0 TO 255:FOR X%=0 TO 255:PSET (X%,Y%),X% MOD 8:NEXT:NEXT");
    state.SetItemsProcessed(state.iterations() * 65536);
}
BENCHMARK(BM_PsetArea)->Unit(benchmark::kMillisecond);

void BM_PrintScrolling(benchmark::State& state)
{
    RenderedInterpreter r;
    for (auto _ : state)
        r.run("FOR I%=1 TO 2000:PRINT \"AAAAAAAAAAAAAAAAAAAA\";I%:NEXT");
    state.SetItemsProcessed(state.iterations() * 2000);
}
BENCHMARK(BM_PrintScrolling)->Unit(benchmark::kMillisecond);

} // namespace
