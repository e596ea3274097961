// LIST and LLIST: program lines to the screen (long lines over linked rows) or to the printer.
#include <algorithm>
#include <string>
#include <vector>

#include "core/interpreter.h"
#include "core/printer_output.h"
#include "core/shift_jis.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "screen/text_screen.h"

namespace tessaly::core {

namespace {

// The texts of a range argument: before "-" and after it.
struct RangeText {
    std::string from;
    std::string to;
    bool hasDash = false;
};

RangeText splitRange(std::string_view argument)
{
    RangeText range;
    auto stop = argument.find_first_of(":'\r\n");
    argument = argument.substr(0, stop);
    auto dash = argument.find('-');
    if (dash == std::string_view::npos) {
        range.from = trimBlanks(argument);
        range.to = range.from;
        return range;
    }
    range.hasDash = true;
    range.from = trimBlanks(argument.substr(0, dash));
    range.to = trimBlanks(argument.substr(dash + 1));
    return range;
}

// A range end as a line number: a label's line, or the decimal value of its digits.
int rangeNumber(Interpreter& in, const std::string& text, int& number)
{
    if (!text.empty() && text[0] == '*') {
        number = labelLineNumber(in, text);
        if (number < 0)
            return in.raise(ErrorId::UndefinedLabel);
        return 0;
    }
    number = leadingNumber(text);
    return 0;
}

int listRange(Interpreter& in, int begin, int end, int& from, int& to)
{
    auto argument = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    auto range = splitRange(argument);
    TRY_BASIC(rangeNumber(in, range.from, from));
    TRY_BASIC(rangeNumber(in, range.to, to));
    if (from < 1)
        from = 1;
    int count = in.program().count();
    if (to < 1)
        to = count > 0 ? in.program().numberAt(count) : 0;
    return 0;
}

std::string_view withoutLineEnd(std::string_view text)
{
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
        text.remove_suffix(1);
    return text;
}

} // namespace

int labelLineNumber(Interpreter& in, std::string_view label)
{
    auto& store = in.program();
    for (int line = 1; line <= store.count(); ++line) {
        std::string_view text = store.textAt(line);
        if (text.find(label) == std::string_view::npos)
            continue;
        auto blank = text.find(' ');
        if (blank == std::string_view::npos)
            continue;
        auto word = text.substr(blank + 1);
        word = word.substr(0, word.find_first_of(" \n\r'"));
        if (word == label)
            return store.numberAt(line);
    }
    return -1;
}

void listLines(Interpreter& in, int from, int to)
{
    auto& screen = in.screen();
    auto& store = in.program();
    screen.setCursor(0, screen.cursorRow());
    for (int line = 1; line <= store.count(); ++line) {
        int number = store.numberAt(line);
        if (number > to)
            break;
        if (number < from)
            continue;
        auto text = withoutLineEnd(store.textAt(line));
        // A row takes 80 bytes, or 81 when the 80th is the first byte of a double-byte character.
        std::vector<std::string_view> pieces;
        for (size_t pos = 0; pos < text.size() || pieces.empty();) {
            size_t take = std::min<size_t>(80, text.size() - pos);
            if (take == 80 && pos + 80 < text.size() && core::IsLeadByte(static_cast<uint8_t>(text[pos + 79])))
                take = 81;
            pieces.push_back(text.substr(pos, take));
            pos += take;
        }
        screen.WriteLinkedRows(pieces);
    }
    screen.RedrawRows();
    in.run().statementEcho = 0;
    screen.saveCursor();
}

Outcome stmtList(Interpreter& in, int begin, int end)
{
    char next = in.buffer().at(begin);
    if (begin < end && next != ' ')
        return in.raise(ErrorId::SyntaxError);
    int from = 0;
    int to = 0;
    TRY_BASIC(listRange(in, begin, end, from, to));
    listLines(in, from, to);
    return kDone;
}

Outcome stmtLlist(Interpreter& in, int begin, int end)
{
    int from = 0;
    int to = 0;
    TRY_BASIC(listRange(in, begin, end, from, to));
    auto& store = in.program();
    for (int line = 1; line <= store.count(); ++line) {
        int number = store.numberAt(line);
        if (number > to)
            break;
        if (number < from)
            continue;
        // Each line ends with CR LF on paper, whether or not preparation has taken the line end
        // off the stored text. A failed write names the line as the other disk errors do ("in"),
        // unlike LPRINT's.
        std::string text = store.textAt(line);
        if (!text.ends_with("\r\n"))
            text += "\r\n";
        TRY_BASIC(writeToPrinter(in, text, PrinterFailure::WithIn));
    }
    return kDone;
}

} // namespace tessaly::core
