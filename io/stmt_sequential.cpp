// PRINT #, PRINT # USING, WRITE #, INPUT # and LINE INPUT #: text to and from sequential files.
// Records end with a CR; an item or line read stops at a CR outside quotes.
#include <cstdlib>
#include <string>
#include <unistd.h>

#include "core/interpreter.h"
#include "core/keyword_table.h"
#include "core/outcome.h"
#include "core/text_scan.h"
#include "expr/number_text.h"
#include "expr/print_items.h"
#include "expr/statements.h"
#include "io/com_channel.h"
#include "io/file_table.h"
#include "io/input_targets.h"
#include "io/item_reader.h"

namespace tessaly::io {

using core::kDone;
using core::Outcome;

namespace {

using core::ErrorId;

enum class Direction { Out, In };

// The channel named before the first comma ("#" and blanks before the number are passed over);
// afterComma is the position after that comma.
int findChannel(core::Interpreter& in, int begin, int end, Direction direction, FileChannel*& channel, int& afterComma)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    size_t comma = text.find(',', static_cast<size_t>(begin));
    if (comma == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    std::string number(text.substr(static_cast<size_t>(begin), comma - static_cast<size_t>(begin)));
    auto start = number.find_first_not_of(" #");
    int n = start == std::string::npos ? 0 : std::atoi(number.c_str() + start);
    channel = &in.files().entry(n);
    bool fits = direction == Direction::Out
        ? channel->mode == FileMode::Output || channel->mode == FileMode::Append || channel->mode == FileMode::Com
        : channel->mode == FileMode::Input || channel->mode == FileMode::Com;
    if (!channel->isOpen() || !fits)
        return in.raise(ErrorId::FileNotOpen);
    afterComma = static_cast<int>(comma) + 1;
    return 0;
}

int writeAll(core::Interpreter& in, const FileChannel& channel, const std::string& bytes)
{
    if (channel.device == DeviceKind::Serial)
        return sendToCom(in, channel, bytes);
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = ::write(channel.fd, bytes.data() + done, bytes.size() - done);
        if (n <= 0)
            return in.raise(ErrorId::DiskIoError);
        done += static_cast<size_t>(n);
    }
    return 0;
}

// One byte of the file: 1 read, 0 at the end, -1 on a read error.
int readByte(const FileChannel& channel, char& byte)
{
    ssize_t n = ::read(channel.fd, &byte, 1);
    return n == 1 ? 1 : n == 0 ? 0 : -1;
}

void carryOnAs(core::Interpreter& in, core::Stmt code) { in.run().statementCode = static_cast<int>(code); }

// Whether the text after the comma starts with USING; pos moves past the word.
bool usingForm(core::Interpreter& in, int& pos, int end)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    size_t at = text.find_first_not_of(' ', static_cast<size_t>(pos));
    if (at == std::string_view::npos || text.compare(at, 5, "USING") != 0)
        return false;
    pos = static_cast<int>(at) + 5;
    return true;
}

} // namespace

Outcome stmtPrintFile(core::Interpreter& in, int begin, int end)
{
    FileChannel* channel = nullptr;
    int pos = 0;
    TRY_BASIC(findChannel(in, begin, end, Direction::Out, channel, pos));
    bool withUsing = usingForm(in, pos, end);
    // The screen and the printer take the statement on as PRINT or LPRINT (with USING).
    if (channel->device == DeviceKind::Screen) {
        carryOnAs(in, withUsing ? core::Stmt::PrintUsing : core::Stmt::Print);
        return withUsing ? expr::stmtPrintUsing(in, pos, end) : expr::stmtPrint(in, pos, end);
    }
    if (channel->device == DeviceKind::Printer) {
        carryOnAs(in, withUsing ? core::Stmt::LprintUsing : core::Stmt::Lprint);
        return withUsing ? expr::stmtLprintUsing(in, pos, end) : expr::stmtLprint(in, pos, end);
    }
    std::string text;
    bool endsLine = true;
    if (withUsing)
        TRY_BASIC(expr::formatPrintUsingText(in, pos, end, text, endsLine));
    else
        TRY_BASIC(expr::formatPrintText(in, pos, end, text, endsLine));
    if (endsLine)
        text += '\r';
    TRY_BASIC(writeAll(in, *channel, text));
    return kDone;
}

Outcome stmtWriteFile(core::Interpreter& in, int begin, int end)
{
    FileChannel* channel = nullptr;
    int pos = 0;
    TRY_BASIC(findChannel(in, begin, end, Direction::Out, channel, pos));
    if (channel->device == DeviceKind::Screen) {
        carryOnAs(in, core::Stmt::Write);
        return expr::stmtWrite(in, pos, end);
    }
    std::string text;
    TRY_BASIC(expr::formatWriteText(in, pos, end, text));
    if (channel->device == DeviceKind::Printer) {
        in.run().printNewline = true;
        return expr::deliverPrintLine(in, std::move(text), expr::PrintTarget::Printer);
    }
    TRY_BASIC(writeAll(in, *channel, text + '\r'));
    return kDone;
}

Outcome stmtInputFile(core::Interpreter& in, int begin, int end)
{
    FileChannel* channel = nullptr;
    int pos = 0;
    TRY_BASIC(findChannel(in, begin, end, Direction::In, channel, pos));
    // The keyboard takes the statement on as INPUT of the same variables.
    if (channel->device == DeviceKind::Keyboard) {
        carryOnAs(in, core::Stmt::Input);
        return expr::stmtInput(in, pos, end);
    }
    if (channel->device == DeviceKind::Serial)
        return core::outcomeOf(inputFromCom(in, *channel, pos, end));
    // The variable's name decides how an item ends: a blank ends a number, not a string.
    TRY_BASIC(forEachTarget(in, pos, end, [&](const expr::Target& target) {
        std::string item;
        if (readItem([&](char& byte) { return readByte(*channel, byte); }, target.type == expr::ValueType::String, item) <= 0)
            return static_cast<int>(in.raise(ErrorId::DiskIoError));
        return assignText(in, target, item);
    }));
    return kDone;
}

Outcome stmtLineInputFile(core::Interpreter& in, int begin, int end)
{
    FileChannel* channel = nullptr;
    int pos = 0;
    TRY_BASIC(findChannel(in, begin, end, Direction::In, channel, pos));
    if (channel->device == DeviceKind::Keyboard) {
        in.run().lineInputMode = true;
        carryOnAs(in, core::Stmt::Input);
        return expr::stmtInput(in, pos, end);
    }
    if (channel->device == DeviceKind::Serial)
        return core::outcomeOf(lineInputFromCom(in, *channel, pos, end));
    std::string line;
    core::QuoteState quotes;
    for (;;) {
        char byte = 0;
        int got = readByte(*channel, byte);
        if (got < 0)
            return in.raise(ErrorId::DiskIoError);
        if (got == 0)
            break; // the end of the file ends the line
        if (quotes.takesQuote(byte))
            continue;
        if (byte == '\r' && !quotes.inside()) {
            char next = 0;
            int more = readByte(*channel, next);
            if (more < 0)
                return in.raise(ErrorId::DiskIoError);
            if (more == 1 && next != '\n')
                ::lseek(channel->fd, -1, SEEK_CUR);
            break;
        }
        line += byte;
    }
    expr::Target target;
    TRY_BASIC(expr::parseTarget(in, pos, end, target));
    return core::outcomeOf(assignText(in, target, line));
}

} // namespace tessaly::io
