// RENUM: new line numbers from a starting line on, and every reference to a line rewritten.
#include <map>
#include <string>

#include "core/char_class.h"
#include "core/interpreter.h"
#include "core/statements.h"
#include "core/text_scan.h"
#include "screen/text_screen.h"

namespace tessaly::core {

namespace {

constexpr int kHighestRenumber = 65529;

// The words after which line numbers stand.
constexpr std::string_view kReferenceWords[] = {"THEN ", "ELSE ", "GOTO ", "GO TO ", "GOSUB ", "RETURN ", "LIST ",
    "LLIST ", "RESTORE ", "RESUME ", "RUN ", "DELETE ", "EDIT "};

class ReferenceRewriter {
public:
    ReferenceRewriter(Interpreter& in, const std::map<int, int>& numbers)
        : m_in(in)
        , m_numbers(numbers)
    {
    }

    // Rewrites the references in one line's text; missing targets are reported on the screen.
    std::string rewrite(std::string_view text, int lineNumber)
    {
        std::string out;
        size_t pos = 0;
        // The line's own number is not a reference.
        while (pos < text.size() && (text[pos] == ' ' || isDigit(text[pos])))
            out += text[pos++];
        // Each walk starts outside quotes: after a reference word and its numbers.
        for (;;) {
            size_t word = 0;
            size_t found = findOutsideQuotesIf(text, pos, [&](size_t at) {
                if (text[at] == '\'' || text.compare(at, 3, "REM") == 0)
                    return true;
                word = matchWord(text, at);
                return word > 0;
            });
            if (found == std::string_view::npos || word == 0) {
                // The rest of the line, a comment among it, is kept as it is.
                out.append(text.substr(pos));
                return out;
            }
            out.append(text.substr(pos, found - pos + word));
            pos = rewriteNumbers(text, found + word, out, lineNumber);
        }
    }

private:
    size_t matchWord(std::string_view text, size_t pos) const
    {
        for (auto word : kReferenceWords) {
            if (text.compare(pos, word.size(), word) == 0)
                return word.size();
        }
        // ERL followed by blanks and "=".
        if (text.compare(pos, 3, "ERL") == 0) {
            size_t after = pos + 3;
            while (after < text.size() && text[after] == ' ')
                ++after;
            if (after < text.size() && text[after] == '=')
                return after + 1 - pos;
        }
        return 0;
    }

    // The numbers after a word: a list joined by commas, and a range's second number after "-".
    size_t rewriteNumbers(std::string_view text, size_t pos, std::string& out, int lineNumber)
    {
        for (;;) {
            while (pos < text.size() && text[pos] == ' ')
                out += text[pos++];
            size_t start = pos;
            while (pos < text.size() && isDigit(text[pos]))
                ++pos;
            if (pos > start) {
                int old = leadingNumber(text.substr(start, pos - start));
                auto found = m_numbers.find(old);
                if (found == m_numbers.end()) {
                    report(lineNumber);
                    out.append(text.substr(start, pos - start));
                } else {
                    out += std::to_string(found->second);
                }
            }
            if (pos < text.size() && (text[pos] == ',' || text[pos] == '-')) {
                out += text[pos++];
                continue;
            }
            return pos;
        }
    }

    void report(int lineNumber)
    {
        auto& screen = m_in.screen();
        screen.Print(std::string(errorInfo(ErrorId::UndefinedLineNumber).text) + std::to_string(lineNumber));
        screen.NewLine();
    }

    Interpreter& m_in;
    const std::map<int, int>& m_numbers;
};

int argumentNumber(std::string_view argument, size_t index)
{
    size_t start = 0;
    for (size_t k = 0; k < index; ++k) {
        auto comma = argument.find(',', start);
        if (comma == std::string_view::npos)
            return 0;
        start = comma + 1;
    }
    auto field = argument.substr(start, argument.find(',', start) - start);
    return leadingNumber(field);
}

} // namespace

Outcome stmtRenum(Interpreter& in, int begin, int end)
{
    auto& store = in.program();
    auto argument = in.buffer().view().substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
    argument = argument.substr(0, argument.find_first_of(":'\r\n"));
    int count = store.count();
    int newStart = argumentNumber(argument, 0);
    int old = argumentNumber(argument, 1);
    int step = argumentNumber(argument, 2);
    if (newStart < 1)
        newStart = 10;
    if (old < 1)
        old = count > 0 ? store.numberAt(1) : 0;
    if (step < 1)
        step = 10;
    if (newStart > kHighestRenumber)
        return in.raiseWithoutLine(ErrorId::SyntaxErrorAtEntry);
    if (count == 0 || old > store.numberAt(count))
        return kDone;

    std::map<int, int> numbers;
    int64_t next = newStart;
    int keptBelow = 0;
    for (int line = 1; line <= count; ++line) {
        int number = store.numberAt(line);
        if (number < old) {
            keptBelow = number;
            numbers.emplace(number, number);
            continue;
        }
        if (next > kHighestRenumber)
            return in.raiseWithoutLine(ErrorId::SyntaxErrorAtEntry);
        numbers.emplace(number, static_cast<int>(next));
        next += step;
    }
    // New numbers may not reach the lines kept below the starting line: the program would lose its order.
    if (keptBelow > 0 && newStart <= keptBelow)
        return in.raise(ErrorId::IllegalFunctionCall);

    ReferenceRewriter rewriter(in, numbers);
    std::vector<ProgramStore::Line> lines;
    for (int line = 1; line <= count; ++line) {
        int number = store.numberAt(line);
        std::string text = rewriter.rewrite(store.textAt(line), number);
        int renumbered = numbers[number];
        if (renumbered != number) {
            size_t digits = text.find_first_not_of(' ');
            size_t digitsEnd = digits;
            while (digitsEnd < text.size() && isDigit(text[digitsEnd]))
                ++digitsEnd;
            text.replace(digits, digitsEnd - digits, std::to_string(renumbered));
        }
        lines.push_back({renumbered, std::move(text)});
    }
    store.replaceAll(std::move(lines));
    programEdited(in);
    return kDone;
}

} // namespace tessaly::core
