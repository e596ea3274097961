// PRINT #, PRINT # USING, WRITE #, INPUT # and LINE INPUT #: text to and from sequential files.
// Records end with a CR; an item or line read stops at a CR outside quotes.
#include <cstdlib>
#include <string>
#include <unistd.h>

#include "core/dispatch.h"
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

// The channel named before the first comma of a file statement, and where the rest of the
// statement starts, after that comma.
struct ChannelArgument {
    FileChannel* channel = nullptr;
    int rest = 0;
};

// Finds the channel ("#" and blanks before the number are passed over), which must be open in a
// mode for the direction.
int findChannel(core::Interpreter& in, int begin, int end, Direction direction, ChannelArgument& file)
{
    auto text = in.buffer().view().substr(0, static_cast<size_t>(end));
    size_t comma = text.find(',', static_cast<size_t>(begin));
    if (comma == std::string_view::npos)
        return in.raise(ErrorId::SyntaxError);
    std::string number(text.substr(static_cast<size_t>(begin), comma - static_cast<size_t>(begin)));
    auto start = number.find_first_not_of(" #");
    int n = start == std::string::npos ? 0 : std::atoi(number.c_str() + start);
    FileChannel& channel = in.files().entry(n);
    bool fits = direction == Direction::Out
        ? channel.mode == FileMode::Output || channel.mode == FileMode::Append || channel.mode == FileMode::Com
        : channel.mode == FileMode::Input || channel.mode == FileMode::Com;
    if (!channel.isOpen() || !fits)
        return in.raise(ErrorId::FileNotOpen);
    file = {&channel, static_cast<int>(comma) + 1};
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

// The statement goes on as the plain statement of that code (PRINT, WRITE, INPUT ...) on the rest
// of its text.
Outcome carryOnAs(core::Interpreter& in, core::Stmt code, core::StatementHandler handler, int rest, int end)
{
    in.run().statementCode = static_cast<int>(code);
    return handler(in, rest, end);
}

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
    ChannelArgument file;
    TRY_BASIC(findChannel(in, begin, end, Direction::Out, file));
    int pos = file.rest;
    bool withUsing = usingForm(in, pos, end);
    // The screen and the printer take the statement on as PRINT or LPRINT (with USING).
    if (file.channel->device == DeviceKind::Screen) {
        return withUsing ? carryOnAs(in, core::Stmt::PrintUsing, expr::stmtPrintUsing, pos, end)
                         : carryOnAs(in, core::Stmt::Print, expr::stmtPrint, pos, end);
    }
    if (file.channel->device == DeviceKind::Printer) {
        return withUsing ? carryOnAs(in, core::Stmt::LprintUsing, expr::stmtLprintUsing, pos, end)
                         : carryOnAs(in, core::Stmt::Lprint, expr::stmtLprint, pos, end);
    }
    std::string text;
    bool endsLine = true;
    if (withUsing)
        TRY_BASIC(expr::formatPrintUsingText(in, pos, end, text, endsLine));
    else
        TRY_BASIC(expr::formatPrintText(in, pos, end, text, endsLine));
    if (endsLine)
        text += '\r';
    return core::outcomeOf(writeAll(in, *file.channel, text));
}

Outcome stmtWriteFile(core::Interpreter& in, int begin, int end)
{
    ChannelArgument file;
    TRY_BASIC(findChannel(in, begin, end, Direction::Out, file));
    if (file.channel->device == DeviceKind::Screen)
        return carryOnAs(in, core::Stmt::Write, expr::stmtWrite, file.rest, end);
    std::string text;
    TRY_BASIC(expr::formatWriteText(in, file.rest, end, text));
    if (file.channel->device == DeviceKind::Printer) {
        in.run().printNewline = true;
        return expr::deliverPrintLine(in, std::move(text), expr::PrintTarget::Printer);
    }
    return core::outcomeOf(writeAll(in, *file.channel, text + '\r'));
}

Outcome stmtInputFile(core::Interpreter& in, int begin, int end)
{
    ChannelArgument file;
    TRY_BASIC(findChannel(in, begin, end, Direction::In, file));
    // The keyboard takes the statement on as INPUT of the same variables.
    if (file.channel->device == DeviceKind::Keyboard)
        return carryOnAs(in, core::Stmt::Input, expr::stmtInput, file.rest, end);
    if (file.channel->device == DeviceKind::Serial)
        return core::outcomeOf(inputFromCom(in, *file.channel, file.rest, end));
    // The variable's name decides how an item ends: a blank ends a number, not a string.
    TRY_BASIC(forEachTarget(in, file.rest, end, [&](const expr::Target& target) {
        std::string item;
        if (readItem([&](char& byte) { return readByte(*file.channel, byte); }, target.type == expr::ValueType::String, item) <= 0)
            return static_cast<int>(in.raise(ErrorId::DiskIoError));
        return assignText(in, target, item);
    }));
    return kDone;
}

Outcome stmtLineInputFile(core::Interpreter& in, int begin, int end)
{
    ChannelArgument file;
    TRY_BASIC(findChannel(in, begin, end, Direction::In, file));
    if (file.channel->device == DeviceKind::Keyboard) {
        in.run().lineInputMode = true;
        return carryOnAs(in, core::Stmt::Input, expr::stmtInput, file.rest, end);
    }
    if (file.channel->device == DeviceKind::Serial)
        return core::outcomeOf(lineInputFromCom(in, *file.channel, file.rest, end));
    std::string line;
    core::QuoteState quotes;
    for (;;) {
        char byte = 0;
        int got = readByte(*file.channel, byte);
        if (got < 0)
            return in.raise(ErrorId::DiskIoError);
        if (got == 0)
            break; // the end of the file ends the line
        if (quotes.takesQuote(byte))
            continue;
        if (byte == '\r' && !quotes.inside()) {
            char next = 0;
            int more = readByte(*file.channel, next);
            if (more < 0)
                return in.raise(ErrorId::DiskIoError);
            if (more == 1 && next != '\n')
                ::lseek(file.channel->fd, -1, SEEK_CUR);
            break;
        }
        line += byte;
    }
    expr::Target target;
    TRY_BASIC(expr::parseTarget(in, file.rest, end, target));
    return core::outcomeOf(assignText(in, target, line));
}

} // namespace tessaly::io
