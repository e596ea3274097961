// Typical expressions: arithmetic with variables, string concatenation, a function call and an
// array element, evaluated as statements evaluate them.
#include <benchmark/benchmark.h>

#include <string>

#include "core/interpreter.h"
#include "expr/evaluator.h"

namespace {

using namespace tessaly;

void evaluateRepeatedly(benchmark::State& state, const std::string& expression)
{
    core::Host host;
    core::Interpreter in(host);
    for (const char* setup : {"A=1.5:B=2:C%=3", "S$=\"HELLO\":T$=\"WORLD\"", "DIM X(100):X(50)=7"})
        in.lineEntered(setup);
    for (auto _ : state) {
        if (!in.buffer().assign(expression))
            state.SkipWithError("does not fit");
        expr::Value value;
        benchmark::DoNotOptimize(expr::evaluateExpression(in, 0, in.buffer().length(), value));
    }
}

void BM_ArithmeticWithVariables(benchmark::State& state) { evaluateRepeatedly(state, "A*B+C%/2-(A-B)*3"); }
BENCHMARK(BM_ArithmeticWithVariables);

void BM_StringConcatenation(benchmark::State& state) { evaluateRepeatedly(state, "S$+\" \"+T$+\"!\""); }
BENCHMARK(BM_StringConcatenation);

void BM_FunctionCall(benchmark::State& state) { evaluateRepeatedly(state, "SIN(A)*COS(B)+SQR(C%)"); }
BENCHMARK(BM_FunctionCall);

void BM_ArrayElement(benchmark::State& state) { evaluateRepeatedly(state, "X(50)+X(C%*10)"); }
BENCHMARK(BM_ArrayElement);

void BM_ManyVariables(benchmark::State& state)
{
    core::Host host;
    core::Interpreter in(host);
    for (int k = 0; k < 500; ++k)
        in.lineEntered("V" + std::to_string(k) + "=" + std::to_string(k));
    std::string expression = "V1+V250+V499";
    for (auto _ : state) {
        if (!in.buffer().assign(expression))
            state.SkipWithError("does not fit");
        expr::Value value;
        benchmark::DoNotOptimize(expr::evaluateExpression(in, 0, in.buffer().length(), value));
    }
}
BENCHMARK(BM_ManyVariables);

} // namespace
