// INPUT # and LINE INPUT # of a serial channel: the items are read from the bytes received so far,
// and taken only when all of them are there.
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "io/com_channel.h"
#include "io/file_table.h"
#include "io/input_targets.h"
#include "io/item_reader.h"

namespace tessaly::io {

namespace {

// Gives the waiting bytes one by one from at.
struct WaitingBytes {
    std::string_view waiting;
    size_t at = 0;
    int operator()(char& byte)
    {
        if (at >= waiting.size())
            return 0;
        byte = waiting[at++];
        return 1;
    }
};

// One line: a CR outside quotes ends it and the LFs right behind it go with it; quotes are not
// kept, LF never is. Returns 1 with the line, 0 when the bytes ran out first.
int readComLine(WaitingBytes& bytes, std::string& line, bool& onlyLineEnd)
{
    core::QuoteState quotes;
    onlyLineEnd = true;
    char byte = 0;
    while (bytes(byte) == 1) {
        if (byte == '\n')
            continue;
        if (byte == '\r' && !quotes.inside()) {
            while (bytes.at < bytes.waiting.size() && bytes.waiting[bytes.at] == '\n')
                ++bytes.at;
            return 1;
        }
        onlyLineEnd = false;
        if (!quotes.takesQuote(byte))
            line += byte;
    }
    return 0;
}

} // namespace

int inputFromCom(core::Interpreter& in, const FileChannel& channel, int pos, int end)
{
    std::vector<expr::Target> targets;
    TRY_BASIC(forEachTarget(in, pos, end, [&](const expr::Target& target) {
        targets.push_back(target);
        return 0;
    }));
    std::vector<std::string> items(targets.size());
    TRY_BASIC(receiveFromCom(in, channel, [&](std::string_view waiting, bool queueFull) {
        WaitingBytes bytes {waiting};
        for (size_t k = 0; k < targets.size(); ++k) {
            items[k].clear();
            // A full input queue ends the item where it ends.
            if (readItem(bytes, targets[k].type == expr::ValueType::String, items[k]) == 0 && !queueFull)
                return kNeedMore;
        }
        return bytes.at;
    }));
    for (size_t k = 0; k < targets.size(); ++k)
        TRY_BASIC(assignText(in, targets[k], items[k]));
    return 0;
}

int lineInputFromCom(core::Interpreter& in, const FileChannel& channel, int pos, int end)
{
    expr::Target target;
    TRY_BASIC(expr::parseTarget(in, pos, end, target));
    std::string line;
    TRY_BASIC(receiveFromCom(in, channel, [&](std::string_view waiting, bool queueFull) {
        WaitingBytes bytes {waiting};
        for (;;) {
            line.clear();
            bool onlyLineEnd = true;
            if (readComLine(bytes, line, onlyLineEnd) == 0)
                return queueFull ? bytes.at : kNeedMore;
            if (!onlyLineEnd)
                return bytes.at;
        }
    }));
    return assignText(in, target, line);
}

} // namespace tessaly::io
