// Program-order walks over the prepared entries.
#include "core/program_walk.h"

#include "core/interpreter.h"

namespace tessaly::core {

int programLineOf(Interpreter& in, int entry)
{
    if (!ProgramStore::isValidEntry(entry))
        return 0;
    int source = in.prepared().sourceAt(entry);
    return source >= 1 && source <= in.program().count() ? source : 0;
}

bool walkLine(Interpreter& in, int line, const std::function<bool(int)>& visit, int& found)
{
    auto& prepared = in.prepared();
    int last = prepared.lastPieceOf(line);
    int first = prepared.overrideAt(line);
    if (last == 0 || first == 0) {
        if (visit(line)) {
            found = line;
            return true;
        }
        return false;
    }
    for (int entry = first; entry <= last; ++entry) {
        if (visit(entry)) {
            found = entry;
            return true;
        }
    }
    return false;
}

int walkEntriesAfter(Interpreter& in, int from, const std::function<bool(int)>& visit)
{
    auto& prepared = in.prepared();
    int line = programLineOf(in, from);
    if (line == 0)
        return 0;
    int last = prepared.lastPieceOf(line);
    int first = prepared.overrideAt(line);
    if (last != 0 && first != 0 && from >= first && from < last) {
        for (int entry = from + 1; entry <= last; ++entry) {
            if (visit(entry))
                return entry;
        }
    }
    int count = in.program().count();
    int found = 0;
    for (int next = line + 1; next <= count; ++next) {
        if (walkLine(in, next, visit, found))
            return found;
    }
    return 0;
}

} // namespace tessaly::core
