// Compiling an expression follows the evaluator's reading of the text step by step, without
// evaluating anything; evaluating the compiled form replays those steps on values.
#include "expr/compiled_expression.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/char_class.h"
#include "core/interpreter.h"
#include "expr/arrays.h"
#include "expr/expression_lexer.h"
#include "expr/expression_scratch.h"
#include "expr/group_reduction.h"
#include "expr/number_text.h"
#include "expr/variables.h"

namespace tessaly::expr {

namespace {

// The most operands a group evaluated on numbers alone may have.
constexpr size_t kNumericSlots = 16;

// What a numeric group gives when one of its names has become a string.
constexpr int kNamesAString = CompiledExpression::kNotNumbers;
static_assert(kNamesAString != core::kFailed && kNamesAString != 0);


using core::ErrorId;
using core::isDigit;
using core::isLetter;
using core::isNameChar;

// Reads text as the evaluator's parser does; false where the parser would raise an error.
class ExpressionCompiler {
public:
    ExpressionCompiler(std::string_view text, size_t begin, size_t end, Quotes quotes)
        : m_text(text.substr(0, end))
        , m_pos(begin)
        , m_quotes(quotes)
    {
    }

    bool top(std::string_view scope, CompiledGroup& group)
    {
        skipBlanks();
        bool wrap = peek() == '-' && leadingMinusWraps(scope);
        if (!readGroup(group, wrap))
            return false;
        skipBlanks();
        return peek() != ')';
    }

    // The arguments up to and with the closing ")".
    bool arguments(std::vector<CompiledGroup>& groups)
    {
        for (;;) {
            skipBlanks();
            if (peek() == '#')
                ++m_pos;
            groups.emplace_back();
            if (!readGroup(groups.back(), false))
                return false;
            skipBlanks();
            char c = peek();
            if (c == ',') {
                ++m_pos;
                continue;
            }
            if (c == ')') {
                ++m_pos;
                return true;
            }
            return false;
        }
    }

private:
    bool readGroup(CompiledGroup& group, bool wrapLeadingMinus)
    {
        // Deeper than the evaluator's groups can go: the text raises its error when it runs.
        if (++m_depth >= kMaxGroupDepth)
            return false;
        if (wrapLeadingMinus) {
            ++m_pos;
            group.wrapping = true;
        }
        bool wrapping = wrapLeadingMinus;
        bool negateNext = false;
        bool signSeen = false;
        // What the current token list (the first term while wrapping, else the group) ends with.
        bool currentEmpty = true;
        bool lastIsOperator = false;
        for (;;) {
            skipBlanks();
            if (atGroupEnd())
                break;
            bool expectOperand = currentEmpty || lastIsOperator;
            if (expectOperand) {
                char c = peek();
                if (c == '+' || c == '-') {
                    if (c == '-')
                        negateNext = !negateNext;
                    signSeen = true;
                    ++m_pos;
                    continue;
                }
                if (startsWithWord(m_text, m_pos, "NOT")) {
                    m_pos += 3;
                    group.steps.push_back({CompiledStep::Kind::Not, Op::Not, 0});
                    currentEmpty = false;
                    lastIsOperator = true;
                    continue;
                }
                CompiledOperand operand;
                if (!readOperand(operand))
                    return false;
                // A string literal under a minus is an error of the text; other strings only show
                // themselves when evaluated.
                if (negateNext && operand.kind == CompiledOperand::Kind::Literal && operand.literal.isString())
                    return false;
                operand.negate = negateNext;
                // A number under a minus is the same number every time: negated once here.
                if (operand.negate && operand.kind == CompiledOperand::Kind::Literal) {
                    negate(operand.literal);
                    operand.negate = false;
                }
                negateNext = false;
                signSeen = false;
                group.steps.push_back(
                    {CompiledStep::Kind::Operand, Op::Add, static_cast<uint16_t>(group.operands.size())});
                group.operands.push_back(std::move(operand));
                currentEmpty = false;
                lastIsOperator = false;
                continue;
            }
            Op op {};
            if (!readBinaryOperator(op))
                return false;
            if (wrapping && (op == Op::Add || op == Op::Subtract)) {
                if (currentEmpty)
                    return false;
                group.steps.push_back({CompiledStep::Kind::CloseFirstTerm, Op::Add, 0});
                wrapping = false;
            }
            group.steps.push_back({CompiledStep::Kind::Operator, op, 0});
            currentEmpty = false;
            lastIsOperator = true;
        }
        --m_depth;
        if (signSeen)
            return false;
        // A group ending in an operator is an error of the text.
        if (!currentEmpty && lastIsOperator)
            return false;
        if (wrapping && currentEmpty)
            return false;
        return scheduleGroup(group);
    }

    // Works out, from the group's steps, the order in which the reduction of its tokens applies
    // the operators; false where that reduction would raise an error.
    static bool scheduleGroup(CompiledGroup& group)
    {
        struct SimToken {
            bool isOperator;
            Op op;
            uint16_t slot;
        };
        std::vector<SimToken> tokens;
        std::vector<SimToken> firstTerm;
        std::vector<SimToken>* current = group.wrapping ? &firstTerm : &tokens;
        auto& code = group.code;
        // The reduction of reduceGroup, on slots: the result's slot, or -1 where it would fail.
        auto reduce = [&code](std::vector<SimToken>& list, bool* relational) -> int {
            while (list.size() > 1) {
                int chosen = nextOperatorAt(list);
                if (chosen < 0)
                    return -1;
                auto at = static_cast<size_t>(chosen);
                Op op = list[at].op;
                if (at + 1 >= list.size() || list[at + 1].isOperator)
                    return -1;
                if (op == Op::Not) {
                    code.push_back({GroupInstruction::Kind::Not, Op::Not, list[at + 1].slot, 0});
                    list.erase(list.begin() + static_cast<std::ptrdiff_t>(at));
                    continue;
                }
                if (at == 0 || list[at - 1].isOperator)
                    return -1;
                code.push_back({GroupInstruction::Kind::Binary, op, list[at - 1].slot, list[at + 1].slot});
                if (relational != nullptr && isRelational(op))
                    *relational = true;
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(at), list.begin() + static_cast<std::ptrdiff_t>(at) + 2);
            }
            return list.empty() || list.front().isOperator ? -1 : list.front().slot;
        };
        auto closeTerm = [&]() {
            int slot = reduce(firstTerm, nullptr);
            if (slot < 0)
                return false;
            code.push_back({GroupInstruction::Kind::NegateTerm, Op::Add, static_cast<uint16_t>(slot), 0});
            tokens.push_back({false, Op::Add, static_cast<uint16_t>(slot)});
            current = &tokens;
            return true;
        };
        for (const auto& step : group.steps) {
            switch (step.kind) {
            case CompiledStep::Kind::Operand:
                code.push_back({GroupInstruction::Kind::Operand, Op::Add, step.operand, 0});
                current->push_back({false, Op::Add, step.operand});
                break;
            case CompiledStep::Kind::Not:
            case CompiledStep::Kind::Operator:
                current->push_back({true, step.op, 0});
                break;
            case CompiledStep::Kind::CloseFirstTerm:
                if (!closeTerm())
                    return false;
                break;
            }
        }
        if (current == &firstTerm && !closeTerm())
            return false;
        group.steps.clear();
        group.steps.shrink_to_fit();
        if (tokens.empty())
            return true;
        if (tokens.back().isOperator)
            return false;
        group.result = reduce(tokens, &group.relational);
        if (group.result < 0)
            return false;
        readLiteralsInPlace(group);
        group.numeric = isNumeric(group);
        group.shape = shapeOf(group);
        return true;
    }

    static bool isNumeric(const CompiledGroup& group)
    {
        if (group.operands.size() > kNumericSlots)
            return false;
        for (const auto& operand : group.operands) {
            switch (operand.kind) {
            case CompiledOperand::Kind::Literal:
                if (operand.literal.isString())
                    return false;
                break;
            case CompiledOperand::Kind::Scalar:
                if (operand.scalar.name.ends_with('$'))
                    return false;
                break;
            case CompiledOperand::Kind::Group:
                if (!operand.groups.front().numeric)
                    return false;
                break;
            case CompiledOperand::Kind::Function:
                if (!isPureNumericFunction(operand.function) || !operand.hasParentheses)
                    return false;
                for (const auto& argument : operand.groups)
                    if (!argument.numeric)
                        return false;
                break;
            case CompiledOperand::Kind::Element:
                if (operand.array.name.ends_with('$') || operand.groups.size() > kNumericSlots)
                    return false;
                for (const auto& subscript : operand.groups)
                    if (!subscript.numeric)
                        return false;
                break;
            default:
                return false;
            }
        }
        auto result = static_cast<uint16_t>(group.result);
        bool computed = std::any_of(group.code.begin(), group.code.end(), [&](const GroupInstruction& instruction) {
            return (instruction.kind == GroupInstruction::Kind::Binary || instruction.kind == GroupInstruction::Kind::Not)
                && instruction.a == result;
        });
        if (computed)
            return true;
        // A lone operand keeps its own form: a name its variable's, a function's value its own, a
        // literal its spelling (so no minus may have been put in front of it while running); a
        // group in parentheses whatever its own value had, which only the general path carries.
        const auto& lone = group.operands[result];
        if (lone.kind == CompiledOperand::Kind::Scalar || lone.kind == CompiledOperand::Kind::Element
            || lone.kind == CompiledOperand::Kind::Function)
            return true;
        return lone.kind == CompiledOperand::Kind::Literal
            && std::none_of(group.code.begin(), group.code.end(), [&](const GroupInstruction& instruction) {
                   return instruction.kind == GroupInstruction::Kind::NegateTerm && instruction.a == result;
               });
    }

    // One or two literals and names with at most an operator between them: evaluated at once.
    static GroupShape shapeOf(const CompiledGroup& group)
    {
        if (!group.numeric || group.result != 0)
            return GroupShape::General;
        for (const auto& operand : group.operands) {
            if (operand.kind != CompiledOperand::Kind::Literal && operand.kind != CompiledOperand::Kind::Scalar)
                return GroupShape::General;
        }
        using Kind = GroupInstruction::Kind;
        const auto& code = group.code;
        if (code.empty())
            return GroupShape::General;
        auto operandAt = [&](size_t k, uint16_t operand) { return code[k].kind == Kind::Operand && code[k].a == operand; };
        // One operand read and nothing more done to it (a wrapped minus would be a second instruction).
        if (group.operands.size() == 1 && code.size() == 1 && operandAt(0, 0))
            return GroupShape::Single;
        if (group.operands.size() != 2 || !operandAt(0, 0))
            return GroupShape::General;
        // Two operands and the operator between them: a literal on the right is read where it stands.
        const auto& last = code.back();
        bool pair = last.kind == Kind::Binary && last.a == 0 && last.b == 1
            && (last.rightIsLiteral ? code.size() == 2 : code.size() == 3 && operandAt(1, 1));
        return pair ? GroupShape::Pair : GroupShape::General;
    }

    // A literal that is only ever the right operand of an operator is not copied into its slot:
    // the operator reads it where it stands.
    static void readLiteralsInPlace(CompiledGroup& group)
    {
        std::vector<bool> changed(group.operands.size(), false);
        changed[static_cast<size_t>(group.result)] = true;
        for (auto& instruction : group.code) {
            if (instruction.kind == GroupInstruction::Kind::Binary) {
                const auto& right = group.operands[instruction.b];
                instruction.rightIsLiteral = right.kind == CompiledOperand::Kind::Literal && !changed[instruction.b];
            }
            if (instruction.kind != GroupInstruction::Kind::Operand)
                changed[instruction.a] = true;
        }
        std::erase_if(group.code, [&](const GroupInstruction& instruction) {
            return instruction.kind == GroupInstruction::Kind::Operand
                && group.operands[instruction.a].kind == CompiledOperand::Kind::Literal && !changed[instruction.a];
        });
    }

    bool readOperand(CompiledOperand& operand)
    {
        char c = peek();
        if (isDigit(c) || c == '.')
            return readNumber(operand);
        if (c == '&')
            return readHexOrOctal(operand);
        if (c == '"')
            return readString(operand);
        if (c == '(') {
            ++m_pos;
            operand.kind = CompiledOperand::Kind::Group;
            operand.groups.emplace_back();
            if (!readGroup(operand.groups.back(), false))
                return false;
            skipBlanks();
            if (peek() != ')')
                return false;
            ++m_pos;
            return true;
        }
        if (isLetter(c))
            return readName(operand);
        return false;
    }

    bool readNumber(CompiledOperand& operand)
    {
        operand.literal = Value::makeNumber(0, NumberForm::Literal);
        operand.literal.text.assign(readNumberLiteral(m_text, m_pos));
        operand.literal.number = ReadNumberText(operand.literal.text);
        return std::isfinite(operand.literal.number);
    }

    bool readHexOrOctal(CompiledOperand& operand)
    {
        int32_t read = 0;
        if (!readHexOrOctalLiteral(m_text, m_pos, read))
            return false;
        operand.literal = Value::makeNumber(read, NumberForm::Literal);
        operand.literal.text = std::to_string(read);
        operand.literal.unsignedLiteral = true;
        return true;
    }

    bool readString(CompiledOperand& operand)
    {
        std::string text;
        if (readStringLiteral(m_text, m_pos, m_quotes, text) != StringLiteral::Read)
            return false;
        operand.literal = Value::makeString(std::move(text));
        return true;
    }

    bool readName(CompiledOperand& operand)
    {
        size_t start = m_pos;
        while (isNameChar(peek()))
            ++m_pos;
        std::string name(m_text.substr(start, m_pos - start));
        for (char& c : name)
            c = core::toUpperAscii(c);
        operand.setsType = true;
        if (name.size() > 2 && name.starts_with("FN")) {
            operand.kind = CompiledOperand::Kind::UserFunction;
            operand.name = std::move(name);
            return readCallArguments(operand);
        }
        auto function = findFunction(name);
        if (function.kind != FunctionKind::None) {
            // VARPTR names a variable rather than reading it: its text is read when it runs.
            if (function.shape == ArgumentShape::Variable)
                return false;
            operand.kind = CompiledOperand::Kind::Function;
            operand.function = function;
            operand.name = std::move(name);
            if (!readCallArguments(operand))
                return false;
            if (operand.hasParentheses && operand.groups.size() == 1 && operand.groups.front().result >= 0)
                operand.oneNumber = oneNumberHandler(function);
            return true;
        }
        operand.scalar.name = std::move(name);
        size_t mark = m_pos;
        skipBlanks();
        if (peek() == '(') {
            ++m_pos;
            operand.kind = CompiledOperand::Kind::Element;
            operand.array.name = operand.scalar.name;
            return arguments(operand.groups);
        }
        m_pos = mark;
        operand.kind = CompiledOperand::Kind::Scalar;
        return true;
    }

    bool readCallArguments(CompiledOperand& operand)
    {
        size_t mark = m_pos;
        skipBlanks();
        operand.hasParentheses = peek() == '(';
        if (!operand.hasParentheses) {
            m_pos = mark;
            return true;
        }
        ++m_pos;
        return arguments(operand.groups);
    }

    bool readBinaryOperator(Op& op) { return expr::readBinaryOperator(m_text, m_pos, op); }

    [[nodiscard]] bool atGroupEnd() const
    {
        char c = peek();
        return c == '\0' || c == ':' || c == '\'' || c == '\r' || c == '\n' || c == ')' || c == ',' || c == ';';
    }
    void skipBlanks()
    {
        while (m_pos < m_text.size() && m_text[m_pos] == ' ')
            ++m_pos;
    }
    [[nodiscard]] char peek() const { return m_pos < m_text.size() ? m_text[m_pos] : '\0'; }

    std::string_view m_text;
    size_t m_pos;
    Quotes m_quotes;
    int m_depth = 0;
};

// A literal or a name of a numeric group into its slot; a name gives the group its type.
// kNamesAString when the name has become a string.
inline int readSimpleOperand(core::Interpreter& in, const CompiledOperand& operand, Number& slot, ValueType& type)
{
    if (operand.kind == CompiledOperand::Kind::Literal) {
        slot = {operand.literal.number, operand.literal.type, operand.literal.form};
    } else {
        if (!operand.scalar.readNumber(in.variables(), slot.number, slot.type))
            return in.raise(ErrorId::OutOfMemory);
        if (slot.type == ValueType::String)
            return kNamesAString;
        slot.form = variableForm(slot.type);
        type = slot.type;
    }
    if (operand.negate)
        slot.number = -slot.number;
    return 0;
}

// A numeric group's number as the value the general path gives: a lone literal with its spelling.
void setGroupValue(const CompiledGroup& group, const Number& number, Value& value)
{
    if (number.form == NumberForm::Literal) {
        value = group.operands[static_cast<size_t>(group.result)].literal;
        value.type = number.type;
    } else {
        value.setNumber(number.number, number.form, number.type);
    }
}

// A group of one or two literals and names (GroupShape Single or Pair), as numericBody does it.
int simpleGroupNumber(core::Interpreter& in, const CompiledGroup& group, Number& result)
{
    const auto& operands = group.operands;
    ValueType type = ValueType::Double;
    if (int read = readSimpleOperand(in, operands[0], result, type); read != 0)
        return read;
    if (group.shape == GroupShape::Pair) {
        const auto& binary = group.code.back();
        double right = operands[1].literal.number;
        if (!binary.rightIsLiteral) {
            Number slot {};
            if (int read = readSimpleOperand(in, operands[1], slot, type); read != 0)
                return read;
            right = slot.number;
        }
        if (!applyQuickly(binary.op, result, right))
            TRY_BASIC(applyBinary(in, binary.op, result, right));
    }
    result.type = group.relational ? ValueType::Integer : type;
    return 0;
}

// Evaluation: the groups' tokens go to the evaluator's scratch lists, level by level.
class Evaluation {
public:
    explicit Evaluation(core::Interpreter& in)
        : m_in(in)
        , m_scratch(in.expressionScratch())
    {
    }

    int group(const CompiledGroup& group, Value& result)
    {
        TRY_BASIC(enterLevel());
        LevelGuard guard {*this};
        if (group.result < 0) {
            result = Value {};
            result.empty = true;
            return 0;
        }
        Number number {};
        int numeric = group.numeric ? numericBody(group, number) : kNamesAString;
        if (numeric == core::kFailed)
            return core::kFailed;
        if (numeric == 0) {
            setGroupValue(group, number, result);
            return 0;
        }
        auto& slots = m_scratch.groups[static_cast<size_t>(m_scratch.depth)];
        if (slots.size() < group.operands.size())
            slots.resize(group.operands.size());
        ValueType type = ValueType::Double;
        for (const auto& instruction : group.code) {
            switch (instruction.kind) {
            case GroupInstruction::Kind::Operand: {
                const auto& operand = group.operands[instruction.a];
                Value& value = slots[instruction.a].value;
                ValueType operandType = ValueType::Double;
                TRY_BASIC(this->operand(operand, value, operandType));
                if (operand.setsType)
                    type = operandType;
                if (operand.negate) {
                    if (value.isString())
                        return m_in.raise(ErrorId::SyntaxError);
                    negate(value);
                }
                break;
            }
            case GroupInstruction::Kind::Not:
                TRY_BASIC(applyNot(m_in, slots[instruction.a].value));
                break;
            case GroupInstruction::Kind::Binary: {
                const Value& right = instruction.rightIsLiteral ? group.operands[instruction.b].literal
                                                                : slots[instruction.b].value;
                TRY_BASIC(applyBinary(m_in, instruction.op, slots[instruction.a].value, right));
                break;
            }
            case GroupInstruction::Kind::NegateTerm: {
                Value& term = slots[instruction.a].value;
                if (term.isString())
                    return m_in.raise(ErrorId::SyntaxError);
                negate(term);
                break;
            }
            }
        }
        result = std::move(slots[static_cast<size_t>(group.result)].value);
        if (!result.isString())
            result.type = group.relational ? ValueType::Integer : type;
        return 0;
    }

    // The group on numbers alone, or kNamesAString.
    int numericGroup(const CompiledGroup& group, Number& result)
    {
        if (!group.numeric)
            return kNamesAString;
        return numericLevel(group, result);
    }

    int arguments(const std::vector<CompiledGroup>& groups, std::vector<Value>& values)
    {
        // Each argument is evaluated into its place: the values (and their strings' buffers) are
        // used again from call to call. The list is no other level's, so it does not move meanwhile.
        values.resize(groups.size());
        for (size_t k = 0; k < groups.size(); ++k)
            TRY_BASIC(group(groups[k], values[k]));
        return 0;
    }

private:
    // A group one level deeper: as deep as the evaluator of the text may go, and no deeper.
    int enterLevel()
    {
        if (m_depth >= kMaxGroupDepth || m_scratch.depth + 1 >= static_cast<int>(ExpressionScratch::kGroupSlots))
            return m_in.raise(ErrorId::OutOfMemory);
        ++m_scratch.depth;
        ++m_depth;
        return 0;
    }
    struct LevelGuard {
        Evaluation& evaluation;
        ~LevelGuard() { --evaluation.m_scratch.depth, --evaluation.m_depth; }
    };

    // A numeric group one level deeper (a group in parentheses, a subscript, an argument).
    int numericLevel(const CompiledGroup& group, Number& result)
    {
        TRY_BASIC(enterLevel());
        LevelGuard guard {*this};
        return numericBody(group, result);
    }

    // A numeric group, with the same steps, errors and result as the general path, on numbers.
    // A DEFSTR may have made one of its names a string since it was compiled: on meeting it, the
    // group gives kNamesAString and is evaluated again the general way. Nothing before that point
    // can differ between the two (the same reads, the same operations on the same numbers, so the
    // same errors), and reading names again changes nothing.
    int numericBody(const CompiledGroup& group, Number& result)
    {
        if (group.shape != GroupShape::General)
            return simpleGroupNumber(m_in, group, result);
        std::array<Number, kNumericSlots> slots; // NOLINT: each slot is written before it is read
        ValueType type = ValueType::Double;
        for (const auto& instruction : group.code) {
            switch (instruction.kind) {
            case GroupInstruction::Kind::Operand: {
                const auto& operand = group.operands[instruction.a];
                Number& slot = slots[instruction.a];
                switch (operand.kind) {
                case CompiledOperand::Kind::Literal:
                case CompiledOperand::Kind::Scalar:
                    if (int read = readSimpleOperand(m_in, operand, slot, type); read != 0)
                        return read;
                    continue; // its minus is applied already
                case CompiledOperand::Kind::Element:
                    if (int read = numericElement(operand, slot); read != 0)
                        return read;
                    type = slot.type;
                    break;
                case CompiledOperand::Kind::Function:
                    if (int called = numericFunction(operand, slot); called != 0)
                        return called;
                    type = ValueType::Double;
                    break;
                default:
                    if (int inner = numericLevel(operand.groups.front(), slot); inner != 0)
                        return inner;
                    break;
                }
                if (operand.negate)
                    slot.number = -slot.number;
                break;
            }
            case GroupInstruction::Kind::Not:
                TRY_BASIC(applyNot(m_in, slots[instruction.a]));
                break;
            case GroupInstruction::Kind::Binary: {
                double right = instruction.rightIsLiteral ? group.operands[instruction.b].literal.number
                                                          : slots[instruction.b].number;
                if (!applyQuickly(instruction.op, slots[instruction.a], right))
                    TRY_BASIC(applyBinary(m_in, instruction.op, slots[instruction.a], right));
                break;
            }
            case GroupInstruction::Kind::NegateTerm:
                slots[instruction.a].number = -slots[instruction.a].number;
                break;
            }
        }
        result = slots[static_cast<size_t>(group.result)];
        result.type = group.relational ? ValueType::Integer : type;
        return 0;
    }

    // A function of numbers alone, its arguments evaluated on numbers as the general path evaluates
    // them (each a group of its own, one level deeper) into the values it is called with. The
    // function changes nothing, so a group that goes the general way after it may call it again.
    int numericFunction(const CompiledOperand& operand, Number& slot)
    {
        if (operand.oneNumber != nullptr) {
            // The number its argument value would carry (a lone literal its own), without the value.
            const auto& argument = operand.groups.front();
            Number number {};
            if (int inner = numericLevel(argument, number); inner != 0)
                return inner;
            double x = number.form == NumberForm::Literal
                ? argument.operands[static_cast<size_t>(argument.result)].literal.number
                : number.number;
            return operand.oneNumber(m_in, x, slot);
        }
        auto& args = argumentList();
        args.resize(operand.groups.size());
        for (size_t k = 0; k < operand.groups.size(); ++k) {
            Number number {};
            if (int inner = numericLevel(operand.groups[k], number); inner != 0)
                return inner;
            setGroupValue(operand.groups[k], number, args[k]);
        }
        Value& value = m_scratch.functionResults[static_cast<size_t>(m_scratch.depth)];
        TRY_BASIC(callFunction(m_in, operand.function, FunctionCall {operand.name, args, true}, value));
        slot = {value.number, value.type, value.form};
        return 0;
    }

    // An element of a numeric array, its subscripts evaluated on numbers as the general path
    // evaluates them (each a group of its own, one level deeper), with the same checks.
    int numericElement(const CompiledOperand& operand, Number& slot)
    {
        slot.type = operand.scalar.typeIn(m_in.variables());
        if (slot.type == ValueType::String)
            return kNamesAString;
        slot.form = variableForm(slot.type);
        std::array<Number, kNumericSlots> numbers; // NOLINT: each is written before it is read
        for (size_t k = 0; k < operand.groups.size(); ++k) {
            if (int inner = numericLevel(operand.groups[k], numbers[k]); inner != 0)
                return inner;
        }
        auto& subscripts = m_scratch.subscriptLists[static_cast<size_t>(m_scratch.depth)];
        subscripts.resize(operand.groups.size());
        for (size_t k = 0; k < operand.groups.size(); ++k) {
            if (!toSubscript(numbers[k].number, subscripts[k]))
                return m_in.raise(ErrorId::SubscriptOutOfRange);
        }
        switch (m_in.arrays().readNumber(operand.array, slot.type, subscripts, slot.number)) {
        case ArrayStatus::Ok:
            return 0;
        case ArrayStatus::TypeMismatch:
            return kNamesAString;
        case ArrayStatus::OutOfMemory:
            return m_in.raise(ErrorId::OutOfMemory);
        default:
            return m_in.raise(ErrorId::SubscriptOutOfRange);
        }
    }

    int operand(const CompiledOperand& operand, Value& value, ValueType& type)
    {
        switch (operand.kind) {
        case CompiledOperand::Kind::Literal:
            value = operand.literal;
            return 0;
        case CompiledOperand::Kind::Group:
            return group(operand.groups.front(), value);
        case CompiledOperand::Kind::Scalar:
            type = operand.scalar.typeIn(m_in.variables());
            if (!operand.scalar.read(m_in.variables(), value))
                return m_in.raise(ErrorId::OutOfMemory);
            return 0;
        case CompiledOperand::Kind::Element:
            type = operand.scalar.typeIn(m_in.variables());
            return element(operand, type, value);
        case CompiledOperand::Kind::Function: {
            auto& args = argumentList();
            if (operand.hasParentheses)
                TRY_BASIC(arguments(operand.groups, args));
            else
                args.clear();
            TRY_BASIC(callFunction(m_in, operand.function, FunctionCall {operand.name, args, operand.hasParentheses},
                value));
            type = operand.function.kind == FunctionKind::String ? ValueType::String : ValueType::Double;
            return 0;
        }
        case CompiledOperand::Kind::UserFunction: {
            auto& args = argumentList();
            if (operand.hasParentheses)
                TRY_BASIC(arguments(operand.groups, args));
            else
                args.clear();
            TRY_BASIC(callUserFunction(m_in, std::string_view(operand.name).substr(2), args, operand.hasParentheses,
                value));
            type = value.isString() ? ValueType::String : value.type;
            return 0;
        }
        }
        return m_in.raise(ErrorId::SyntaxError);
    }

    // The argument list of this level: deeper levels (the arguments' own calls) have theirs. It
    // keeps its values from call to call (arguments() sizes it), so nothing is made or allocated
    // once the lists have grown.
    std::vector<Value>& argumentList() { return m_scratch.argumentLists[static_cast<size_t>(m_scratch.depth)]; }

    int element(const CompiledOperand& operand, ValueType type, Value& value)
    {
        auto& args = argumentList();
        TRY_BASIC(arguments(operand.groups, args));
        auto& subscripts = m_scratch.subscriptLists[static_cast<size_t>(m_scratch.depth)];
        subscripts.clear();
        for (const auto& arg : args) {
            if (arg.isString())
                return m_in.raise(ErrorId::TypeMismatch);
            int32_t subscript = 0;
            if (!toSubscript(arg.number, subscript))
                return m_in.raise(ErrorId::SubscriptOutOfRange);
            subscripts.push_back(subscript);
        }
        switch (m_in.arrays().read(operand.array, type, subscripts, value)) {
        case ArrayStatus::Ok:
            return 0;
        case ArrayStatus::OutOfMemory:
            return m_in.raise(ErrorId::OutOfMemory);
        default:
            return m_in.raise(ErrorId::SubscriptOutOfRange);
        }
    }

    core::Interpreter& m_in;
    ExpressionScratch& m_scratch;
    int m_depth = 0;
};

} // namespace

std::unique_ptr<CompiledExpression> CompiledExpression::compile(std::string_view text, size_t begin, size_t end,
    std::string_view scope, Quotes quotes)
{
    auto compiled = std::make_unique<CompiledExpression>();
    ExpressionCompiler compiler(text, begin, end, quotes);
    if (!compiler.top(scope, compiled->m_top))
        return nullptr;
    return compiled;
}

std::unique_ptr<CompiledExpression> CompiledExpression::compileArguments(std::string_view list)
{
    auto compiled = std::make_unique<CompiledExpression>();
    ExpressionCompiler compiler(list, 0, list.size(), Quotes::Plain);
    if (!compiler.arguments(compiled->m_arguments))
        return nullptr;
    return compiled;
}

int CompiledExpression::evaluate(core::Interpreter& in, Value& result) const
{
    Evaluation evaluation(in);
    return evaluation.group(m_top, result);
}

int CompiledExpression::evaluateNumber(core::Interpreter& in, Number& result) const
{
    // A group of one or two operands at a level of its own (which must be free): nothing below it.
    if (m_top.shape != GroupShape::General
        && in.expressionScratch().depth + 1 < static_cast<int>(ExpressionScratch::kGroupSlots))
        return simpleGroupNumber(in, m_top, result);
    Evaluation evaluation(in);
    return evaluation.numericGroup(m_top, result);
}

int CompiledExpression::evaluateArgumentNumbers(core::Interpreter& in, Number* out, size_t count) const
{
    if (m_arguments.size() != count)
        return kNotNumbers;
    Evaluation evaluation(in);
    for (size_t k = 0; k < count; ++k) {
        if (int status = evaluation.numericGroup(m_arguments[k], out[k]); status != 0)
            return status;
    }
    return 0;
}

int CompiledExpression::evaluateArguments(core::Interpreter& in, std::vector<Value>& values) const
{
    Evaluation evaluation(in);
    return evaluation.arguments(m_arguments, values);
}

} // namespace tessaly::expr
