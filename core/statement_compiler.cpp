// Compiling a statement: the executor's reading of the statement (blanks, a label, the keyword, LET,
// an assignment without LET) done once, then the statement's own compiler.
#include <string_view>

#include "core/char_class.h"
#include "core/compiled_statement.h"
#include "core/keyword_table.h"
#include "core/text_scan.h"

namespace tessaly::expr {
std::unique_ptr<core::CompiledStatement> compileLet(std::string_view text, int begin, int end);
std::unique_ptr<core::CompiledStatement> compilePrintStatement(std::string_view text, int begin, int end);
std::unique_ptr<core::CompiledStatement> compileLprintStatement(std::string_view text, int begin, int end);
} // namespace tessaly::expr
namespace tessaly::screen {
std::unique_ptr<core::CompiledStatement> compilePsetStatement(std::string_view text, int begin, int end);
std::unique_ptr<core::CompiledStatement> compilePresetStatement(std::string_view text, int begin, int end);
} // namespace tessaly::screen

namespace tessaly::core {

std::unique_ptr<CompiledStatement> compileGotoStatement(std::string_view text, int begin, int end);
std::unique_ptr<CompiledStatement> compileGoToStatement(std::string_view text, int begin, int end);
std::unique_ptr<CompiledStatement> compileGosub(std::string_view text, int begin, int end);
std::unique_ptr<CompiledStatement> compileReturn(std::string_view text, int begin, int end);
std::unique_ptr<CompiledStatement> compileIf(std::string_view text, int begin, int end);
std::unique_ptr<CompiledStatement> compileFor(std::string_view text, int begin, int end);
std::unique_ptr<CompiledStatement> compileNext(std::string_view text, int begin, int end);
std::unique_ptr<CompiledStatement> compileWhile(std::string_view text, int begin, int end);
std::unique_ptr<CompiledStatement> compileWend(std::string_view text, int begin, int end);

namespace {

// A label alone: the statement does nothing.
class CompiledLabel final : public CompiledStatement {
public:
    CompiledLabel()
        : CompiledStatement(0)
    {
    }
    Outcome run(Interpreter&) override { return kDone; }
};

int skipBlanks(std::string_view text, int pos)
{
    while (pos < static_cast<int>(text.size()) && text[static_cast<size_t>(pos)] == ' ')
        ++pos;
    return pos;
}

char at(std::string_view text, int pos) { return pos >= 0 && pos < static_cast<int>(text.size()) ? text[static_cast<size_t>(pos)] : '\0'; }

} // namespace

StatementCompiler compilerFor(int code)
{
    switch (static_cast<Stmt>(code)) {
    case Stmt::Let:
        return expr::compileLet;
    case Stmt::Print:
        return expr::compilePrintStatement;
    case Stmt::Lprint:
        return expr::compileLprintStatement;
    case Stmt::Goto:
        return compileGotoStatement;
    case Stmt::GoTo:
        return compileGoToStatement;
    case Stmt::Gosub:
        return compileGosub;
    case Stmt::Return:
        return compileReturn;
    case Stmt::If:
        return compileIf;
    case Stmt::For:
        return compileFor;
    case Stmt::Next:
        return compileNext;
    case Stmt::While:
        return compileWhile;
    case Stmt::Wend:
        return compileWend;
    case Stmt::Pset:
        return screen::compilePsetStatement;
    case Stmt::Preset:
        return screen::compilePresetStatement;
    default:
        return nullptr;
    }
}

std::unique_ptr<CompiledStatement> compileStatement(std::string_view text)
{
    int end = static_cast<int>(text.size());
    int pos = skipBlanks(text, 0);
    // Line numbers, "=" at the start and the other oddities keep their text and its errors.
    if (isDigit(at(text, pos)) || at(text, pos) == '=')
        return nullptr;
    if (at(text, pos) == '*')
        return std::make_unique<CompiledLabel>();
    for (int restarts = 0; restarts < 8; ++restarts) {
        auto recognized = keywordTable().recognizeStatement(text, pos);
        if (recognized.code == 0) {
            // An assignment without LET starts at the first letter, when an "=" stands outside quotes.
            if (findOutsideQuotes(text, "=", static_cast<size_t>(pos)) == std::string_view::npos)
                return nullptr;
            while (pos < end && !isLetter(at(text, pos)))
                ++pos;
            if (pos >= end)
                return nullptr;
            return expr::compileLet(text, pos, end);
        }
        pos = recognized.position;
        if (recognized.code == static_cast<int>(Stmt::Let))
            continue;
        StatementCompiler compiler = compilerFor(recognized.code);
        return compiler != nullptr ? compiler(text, pos, end) : nullptr;
    }
    return nullptr;
}

} // namespace tessaly::core
