// Firing and reporting trapped events.
#include "core/event_traps.h"

#include "core/interpreter.h"

namespace tessaly::core {

int fireTrap(Interpreter& in, int slot)
{
    auto& run = in.run();
    auto& stacks = in.stacks();
    int target = in.eventTraps().sources[static_cast<size_t>(slot)].target;
    if (target <= 0)
        return 0;
    run.runMode = RunMode::Gosub;
    run.outputText.clear();
    // The message names the line of the statement after which the event came (a jump there has
    // already moved the current entry to before its target).
    if (stacks.gosubDepth >= kMaxGosubDepth)
        return in.raiseAt(run.lastExecutedIndex > 0 ? run.lastExecutedIndex : run.currentIndex, ErrorId::OutOfMemory);
    stacks.gosubReturn[static_cast<size_t>(stacks.gosubDepth)] = run.currentIndex + 1;
    ++stacks.gosubDepth;
    run.currentIndex = target - 1;
    stacks.gosubTarget[static_cast<size_t>(stacks.gosubDepth)] = run.currentIndex;
    return 0;
}

void markTrapDue(Interpreter& in, int slot)
{
    in.run().pendingEvents |= pending::trapBit(slot);
}

bool reportEvent(Interpreter& in, int slot)
{
    if (!in.isRunning())
        return false;
    auto& entry = in.eventTraps().sources[static_cast<size_t>(slot)];
    switch (entry.mode) {
    case TrapMode::On:
        if (entry.target <= 0)
            return false;
        markTrapDue(in, slot);
        return true;
    case TrapMode::Stopped:
        if (entry.target > 0)
            entry.target = -entry.target;
        return entry.target != 0;
    default:
        return false;
    }
}

} // namespace tessaly::core
