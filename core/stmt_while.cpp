// WHILE and WEND: the WHILE stack and the skip of a false WHILE to its matching WEND.
#include <string>

#include "core/interpreter.h"
#include "core/for_loops.h"
#include "core/keyword_table.h"
#include "core/program_walk.h"
#include "core/statements.h"
#include "expr/evaluator.h"

namespace tessaly::core {

Outcome stmtWhile(Interpreter& in, int begin, int end)
{
    auto& stacks = in.stacks();
    // More than 31 open WHILE levels is refused with the stack left as it is.
    if (stacks.whileDepth >= kMaxWhileDepth)
        return in.raise(ErrorId::OutOfMemory);
    bool truth = false;
    TRY_BASIC(expr::evaluateCondition(in, begin, end, truth));
    return whileTested(in, truth);
}

Outcome whileTested(Interpreter& in, bool truth)
{
    auto& run = in.run();
    auto& stacks = in.stacks();
    ++stacks.whileDepth;
    stacks.whileEntry[static_cast<size_t>(stacks.whileDepth)] = run.currentIndex;
    if (truth)
        return Outcome(Flow::ChainOn);
    int depth = stacks.whileDepth;
    int count = depth;
    int wend = walkEntriesAfter(in, run.currentIndex, [&](int entry) {
        const auto& text = in.program().textAt(entry);
        if (text.find("WHILE") != std::string::npos)
            ++count;
        if (text.find("WEND") != std::string::npos) {
            if (count <= depth)
                return true;
            --count;
        }
        return false;
    });
    if (wend == 0) {
        --stacks.whileDepth;
        return in.raise(ErrorId::WhileWithoutWend);
    }
    stacks.wendEntry[static_cast<size_t>(depth)] = wend;
    run.currentIndex = wend;
    --stacks.whileDepth;
    return Outcome(Flow::ChainOn);
}

Outcome stmtWend(Interpreter& in, int, int) { return wendReached(in); }

Outcome wendReached(Interpreter& in)
{
    auto& stacks = in.stacks();
    // A WEND with no open WHILE: the WHILE/WEND pairing is broken.
    if (stacks.whileDepth <= 0)
        return in.raise(ErrorId::WhileWithoutWend);
    in.run().currentIndex = stacks.whileEntry[static_cast<size_t>(stacks.whileDepth)] - 1;
    --stacks.whileDepth;
    return Outcome(Flow::ChainOn);
}

} // namespace tessaly::core
