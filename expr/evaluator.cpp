// The expression evaluator. Each parenthesised group is reduced on its own, innermost first; within
// a group the operator that is done next is the first one that goes before its right neighbour,
// else the last one, exactly as the reduction of the group's text would do it.
#include "expr/evaluator.h"

#include <cmath>
#include <string>

#include "core/char_class.h"
#include "core/interpreter.h"
#include "core/rounding.h"
#include "expr/builtin_functions.h"
#include "expr/functions.h"
#include "expr/group_reduction.h"
#include "expr/number_text.h"
#include "expr/expression_lexer.h"
#include "expr/expression_scratch.h"
#include "expr/operators.h"
#include "expr/variables.h"
#include "expr/arrays.h"

namespace tessaly::expr {

namespace {

using core::ErrorId;

using core::isDigit;
using core::isLetter;
using core::isNameChar;

class Parser {
public:
    // scope: the text searched for the words that keep a leading minus from wrapping its term.
    Parser(core::Interpreter& in, std::string_view text, size_t begin, size_t end, std::string_view scope,
        Quotes quotes = Quotes::Plain)
        : m_in(in)
        , m_text(text.substr(0, end))
        , m_pos(begin)
        , m_scope(scope)
        , m_quotes(quotes)
    {
    }

    int parseTop(Value& result);
    int parseArguments(std::vector<Value>& values);

private:
    enum class Stop { Top, CloseParen, Argument };

    // A group being read: its tokens and, while a leading minus wraps it, its first term.
    struct GroupReading {
        std::vector<Token>& tokens;
        std::vector<Token> firstTerm;
        std::vector<Token>* current = nullptr; // where the next token goes
        ValueType type = ValueType::Double;
        bool negateNext = false;
        bool signSeen = false;
        bool wrapping = false;
    };

    int parseGroup(Value& result, Stop stop, bool wrapLeadingMinus);
    // Where an operand is due: a sign, NOT, or the operand itself.
    int readOperandStep(GroupReading& group);
    // Where an operator is due; a + or - ends a wrapped first term.
    int readOperatorStep(GroupReading& group);
    // The group's value once its end is reached.
    int finishGroup(GroupReading& group, Value& result);
    int parseOperand(Value& value, bool& substituted, ValueType& substitutedType);
    int parseNumber(Value& value);
    int parseHexOrOctal(Value& value);
    int parseString(Value& value);
    int parseName(Value& value, bool& substituted, ValueType& substitutedType);
    // FNname or FNname(args), after the name.
    int parseUserFunctionCall(std::string_view name, Value& value, ValueType& substitutedType);
    // A built-in function, after its name.
    int parseFunctionCall(FunctionId function, std::string_view name, Value& value, ValueType& substitutedType);
    // name(subscripts), after the "(".
    int parseArrayElement(std::string_view name, ValueType type, Value& value);
    int parseCallArguments(std::vector<Value>& args, bool& hasParentheses);
    // VARPTR(name) and VARPTR(name(subscripts)): the address of the variable's cell.
    int parseVarptr(Value& value);
    // Array arguments as subscripts: numbers truncated to 0..32767.
    int toSubscripts(const std::vector<Value>& args, std::vector<int32_t>& subscripts);
    bool parseBinaryOperator(Op& op);
    void skipBlanks()
    {
        while (m_pos < m_text.size() && m_text[m_pos] == ' ')
            ++m_pos;
    }
    [[nodiscard]] char peek() const { return m_pos < m_text.size() ? m_text[m_pos] : '\0'; }
    [[nodiscard]] bool atGroupEnd(Stop stop) const;

    core::Interpreter& m_in;
    std::string_view m_text;
    size_t m_pos;
    std::string_view m_scope;
    Quotes m_quotes;
    int m_depth = 0;
};

bool Parser::atGroupEnd(Stop stop) const
{
    char c = peek();
    if (c == '\0' || c == ':' || c == '\'' || c == '\r' || c == '\n')
        return true;
    if (c == ')')
        return true;
    // Commas and semicolons end a group: only argument lists hold them.
    (void)stop;
    return c == ',' || c == ';';
}

int Parser::parseTop(Value& result)
{
    skipBlanks();
    // A leading minus applies to the whole first term (-A^2+B is -(A^2)+B), unless a logical
    // operator, MOD, \, THEN or ELSE stands anywhere in the rest of the statement.
    bool wrap = peek() == '-' && leadingMinusWraps(m_scope);
    TRY_BASIC(parseGroup(result, Stop::Top, wrap));
    skipBlanks();
    if (peek() == ')')
        return m_in.raise(ErrorId::SyntaxError);
    return 0;
}

int Parser::parseGroup(Value& result, Stop stop, bool wrapLeadingMinus)
{
    auto& scratch = m_in.expressionScratch();
    // 63 levels of groups per expression; an FN call's expression has levels of its own.
    if (m_depth >= kMaxGroupDepth || scratch.depth + 1 >= static_cast<int>(ExpressionScratch::kGroupSlots))
        return m_in.raise(ErrorId::OutOfMemory);
    ++scratch.depth;
    ++m_depth;
    struct DepthGuard {
        int& depth;
        int& local;
        ~DepthGuard() { --depth, --local; }
    } guard {scratch.depth, m_depth};
    auto& tokens = scratch.groups[static_cast<size_t>(scratch.depth)];
    tokens.clear();

    GroupReading group {tokens, {}, &tokens};
    if (wrapLeadingMinus) {
        ++m_pos; // the "-": its first term is reduced as a group of its own
        group.wrapping = true;
        group.current = &group.firstTerm;
    }
    for (;;) {
        skipBlanks();
        if (atGroupEnd(stop))
            break;
        bool expectOperand = group.current->empty() || group.current->back().isOperator;
        TRY_BASIC(expectOperand ? readOperandStep(group) : readOperatorStep(group));
    }
    return finishGroup(group, result);
}

int Parser::readOperandStep(GroupReading& group)
{
    char c = peek();
    if (c == '+' || c == '-') {
        if (c == '-')
            group.negateNext = !group.negateNext;
        group.signSeen = true;
        ++m_pos;
        return 0;
    }
    if (startsWithWord(m_text, m_pos, "NOT")) {
        m_pos += 3;
        group.current->push_back({true, Op::Not, {}});
        return 0;
    }
    Token token {false, Op::Add, {}};
    bool substituted = false;
    ValueType substitutedType = ValueType::Double;
    TRY_BASIC(parseOperand(token.value, substituted, substitutedType));
    if (substituted)
        group.type = substitutedType;
    if (group.negateNext) {
        if (token.value.isString())
            return m_in.raise(ErrorId::SyntaxError);
        negate(token.value);
    }
    group.negateNext = false;
    group.signSeen = false;
    group.current->push_back(std::move(token));
    return 0;
}

int Parser::readOperatorStep(GroupReading& group)
{
    Op op {};
    if (!parseBinaryOperator(op))
        return m_in.raise(ErrorId::SyntaxError);
    if (group.wrapping && (op == Op::Add || op == Op::Subtract)) {
        // The first term ends at the first + or - of this group.
        TRY_BASIC(closeFirstTerm(m_in, group.firstTerm, group.tokens));
        group.current = &group.tokens;
        group.wrapping = false;
    }
    group.current->push_back({true, op, {}});
    return 0;
}

int Parser::finishGroup(GroupReading& group, Value& result)
{
    if (group.signSeen)
        return m_in.raise(ErrorId::SyntaxError);
    return finishGroupTokens(m_in, group.tokens, group.firstTerm, group.wrapping, group.type, result);
}

bool Parser::parseBinaryOperator(Op& op) { return readBinaryOperator(m_text, m_pos, op); }

int Parser::parseOperand(Value& value, bool& substituted, ValueType& substitutedType)
{
    char c = peek();
    if (isDigit(c) || c == '.')
        return parseNumber(value);
    if (c == '&')
        return parseHexOrOctal(value);
    if (c == '"')
        return parseString(value);
    if (c == '(') {
        ++m_pos;
        TRY_BASIC(parseGroup(value, Stop::CloseParen, false));
        skipBlanks();
        if (peek() != ')')
            return m_in.raise(ErrorId::SyntaxError);
        ++m_pos;
        return 0;
    }
    if (isLetter(c))
        return parseName(value, substituted, substitutedType);
    return m_in.raise(ErrorId::SyntaxError);
}

int Parser::parseNumber(Value& value)
{
    value = Value::makeNumber(0, NumberForm::Literal);
    value.text.assign(readNumberLiteral(m_text, m_pos));
    value.number = ReadNumberText(value.text);
    if (!std::isfinite(value.number))
        return m_in.raise(ErrorId::Overflow);
    return 0;
}

int Parser::parseHexOrOctal(Value& value)
{
    int32_t read = 0;
    if (!readHexOrOctalLiteral(m_text, m_pos, read))
        return m_in.raise(ErrorId::SyntaxError);
    value = Value::makeNumber(read, NumberForm::Literal);
    value.text = std::to_string(read);
    value.unsignedLiteral = true;
    return 0;
}

int Parser::parseString(Value& value)
{
    std::string text;
    switch (readStringLiteral(m_text, m_pos, m_quotes, text)) {
    case StringLiteral::Unterminated:
        return m_in.raise(ErrorId::IllegalFunctionCall);
    case StringLiteral::TooLong:
        return m_in.raise(ErrorId::OutOfMemory);
    case StringLiteral::Read:
        break;
    }
    value = Value::makeString(std::move(text));
    return 0;
}

int Parser::parseCallArguments(std::vector<Value>& args, bool& hasParentheses)
{
    size_t mark = m_pos;
    skipBlanks();
    hasParentheses = peek() == '(';
    if (!hasParentheses) {
        m_pos = mark;
        return 0;
    }
    ++m_pos;
    TRY_BASIC(parseArguments(args));
    return 0;
}

int Parser::parseArguments(std::vector<Value>& values)
{
    for (;;) {
        Value value;
        skipBlanks();
        // A "#" before a file number is part of the argument (INPUT$(n,#f)).
        if (peek() == '#')
            ++m_pos;
        TRY_BASIC(parseGroup(value, Stop::Argument, false));
        values.push_back(std::move(value));
        skipBlanks();
        char c = peek();
        if (c == ',') {
            ++m_pos;
            continue;
        }
        if (c == ')') {
            ++m_pos;
            return 0;
        }
        return m_in.raise(ErrorId::SyntaxError);
    }
}

int Parser::parseVarptr(Value& value)
{
    skipBlanks();
    if (peek() != '(')
        return m_in.raise(ErrorId::SyntaxError);
    ++m_pos;
    skipBlanks();
    size_t start = m_pos;
    if (!isLetter(peek()))
        return m_in.raise(ErrorId::SyntaxError);
    while (isNameChar(peek()))
        ++m_pos;
    std::string name(m_text.substr(start, m_pos - start));
    for (char& c : name)
        c = core::toUpperAscii(c);
    skipBlanks();
    bool isArray = peek() == '(';
    std::vector<int32_t> subscripts;
    if (isArray) {
        ++m_pos;
        std::vector<Value> args;
        TRY_BASIC(parseArguments(args));
        // NAME() stands for the first element.
        bool none = args.size() == 1 && args[0].empty;
        if (!none)
            TRY_BASIC(toSubscripts(args, subscripts));
        skipBlanks();
    }
    if (peek() != ')')
        return m_in.raise(ErrorId::SyntaxError);
    ++m_pos;
    uint32_t address = 0;
    TRY_BASIC(builtin::addressOfVariable(m_in, name, isArray, subscripts, address));
    value = Value::makeNumber(address, NumberForm::Computed16);
    return 0;
}

int Parser::toSubscripts(const std::vector<Value>& args, std::vector<int32_t>& subscripts)
{
    for (const auto& arg : args) {
        if (arg.isString())
            return m_in.raise(ErrorId::TypeMismatch);
        int32_t subscript = 0;
        if (!toSubscript(arg.number, subscript))
            return m_in.raise(ErrorId::SubscriptOutOfRange);
        subscripts.push_back(subscript);
    }
    return 0;
}

int Parser::parseName(Value& value, bool& substituted, ValueType& substitutedType)
{
    size_t start = m_pos;
    while (isNameChar(peek()))
        ++m_pos;
    std::string name(m_text.substr(start, m_pos - start));
    for (char& c : name)
        c = core::toUpperAscii(c);
    substituted = true;
    if (name.size() > 2 && name.starts_with("FN"))
        return parseUserFunctionCall(name, value, substitutedType);
    auto function = findFunction(name);
    if (function.kind != FunctionKind::None)
        return parseFunctionCall(function, name, value, substitutedType);
    ValueType type = m_in.variables().typeOfName(name);
    substitutedType = type;
    size_t mark = m_pos;
    skipBlanks();
    if (peek() == '(') {
        ++m_pos;
        return parseArrayElement(name, type, value);
    }
    m_pos = mark;
    if (!m_in.variables().read(name, type, value))
        return m_in.raise(ErrorId::OutOfMemory);
    return 0;
}

int Parser::parseUserFunctionCall(std::string_view name, Value& value, ValueType& substitutedType)
{
    std::vector<Value> args;
    bool parens = false;
    TRY_BASIC(parseCallArguments(args, parens));
    TRY_BASIC(callUserFunction(m_in, name.substr(2), args, parens, value));
    substitutedType = value.isString() ? ValueType::String : value.type;
    return 0;
}

int Parser::parseFunctionCall(FunctionId function, std::string_view name, Value& value, ValueType& substitutedType)
{
    if (function.shape == ArgumentShape::Variable) {
        substitutedType = ValueType::Double;
        return parseVarptr(value);
    }
    std::vector<Value> args;
    bool parens = false;
    TRY_BASIC(parseCallArguments(args, parens));
    TRY_BASIC(callFunction(m_in, function, FunctionCall {name, args, parens}, value));
    substitutedType = function.kind == FunctionKind::String ? ValueType::String : ValueType::Double;
    return 0;
}

int Parser::parseArrayElement(std::string_view name, ValueType type, Value& value)
{
    std::vector<Value> args;
    TRY_BASIC(parseArguments(args));
    std::vector<int32_t> subscripts;
    TRY_BASIC(toSubscripts(args, subscripts));
    switch (m_in.arrays().read(name, type, subscripts, value)) {
    case ArrayStatus::Ok:
        return 0;
    case ArrayStatus::OutOfMemory:
        return m_in.raise(ErrorId::OutOfMemory);
    default:
        return m_in.raise(ErrorId::SubscriptOutOfRange);
    }
}

} // namespace

int32_t integerOf(const Value& value)
{
    if (value.isString() || !std::isfinite(value.number))
        return 0;
    double truncated = std::trunc(value.number);
    if (truncated > 2147483647.0)
        return 2147483647;
    if (truncated < -2147483648.0)
        return -2147483647 - 1;
    return static_cast<int32_t>(truncated);
}

int32_t roundedIntegerOf(const Value& value)
{
    Value rounded = value;
    rounded.number = core::roundHalfAwayFromZero(value.number);
    return integerOf(rounded);
}

int evaluateExpression(core::Interpreter& in, int begin, int end, Value& result)
{
    auto text = in.buffer().view();
    auto stop = static_cast<size_t>(std::max(begin, std::min(end, static_cast<int>(text.size()))));
    auto from = static_cast<size_t>(std::max(begin, 0));
    Parser parser(in, text, from, stop, text.substr(std::min(from, text.size())));
    return parser.parseTop(result);
}

int evaluateText(core::Interpreter& in, std::string_view text, Value& result, Quotes quotes)
{
    Parser parser(in, text, 0, text.size(), text, quotes);
    return parser.parseTop(result);
}

int evaluateText(core::Interpreter& in, std::string_view text, Value& result, Quotes quotes,
    std::string_view restOfStatement)
{
    Parser parser(in, text, 0, text.size(), restOfStatement, quotes);
    return parser.parseTop(result);
}

int evaluateNumber(core::Interpreter& in, std::string_view text, double& number)
{
    Value value;
    TRY_BASIC(evaluateText(in, text, value));
    if (value.isString())
        return in.raise(ErrorId::TypeMismatch);
    if (value.empty)
        return in.raise(ErrorId::SyntaxError);
    number = value.number;
    return 0;
}

int evaluateArguments(core::Interpreter& in, std::string_view text, std::vector<Value>& values)
{
    std::string list(text);
    list += ')';
    Parser parser(in, list, 0, list.size(), list);
    return parser.parseArguments(values);
}

} // namespace tessaly::expr
