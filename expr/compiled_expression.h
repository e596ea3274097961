// An expression read once: literals already read into values, names bound to their variables,
// functions identified, groups in parentheses nested. Evaluating it does what evaluating its text
// does, in the same order (operands left to right, each group reduced when its end is reached, the
// same errors at the same moments), without reading the text again.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "expr/arrays.h"
#include "expr/evaluator.h"
#include "expr/functions.h"
#include "expr/operators.h"
#include "expr/scalar_binding.h"
#include "expr/values.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

struct CompiledGroup;

struct CompiledOperand {
    enum class Kind : uint8_t { Literal, Scalar, Element, Function, UserFunction, Group };
    Kind kind = Kind::Literal;
    bool negate = false;                // a minus (or an odd number of them) stood before it
    bool setsType = false;              // a name: the group takes its type
    Value literal;                      // Literal
    mutable ScalarBinding scalar;       // Scalar; Element: its name (and the type of the name)
    mutable ArrayBinding array;         // Element
    FunctionId function;                // Function
    OneNumberHandler oneNumber = nullptr; // Function of one argument with a way on a number alone
    std::string name;                   // Function, UserFunction (with FN)
    bool hasParentheses = false;        // Function, UserFunction
    std::vector<CompiledGroup> groups;  // the arguments or subscripts; Group: the group itself
};

// What reading the group's text met, in order (used while compiling).
struct CompiledStep {
    enum class Kind : uint8_t { Operand, Not, Operator, CloseFirstTerm };
    Kind kind = Kind::Operand;
    Op op = Op::Add;
    uint16_t operand = 0;
};

// What evaluating the group does, in order: operand k is evaluated into slot k; NOT and the binary
// operators work on slots in the order the reduction of the group's tokens takes them (the result
// stays in the left slot); a wrapped first term is negated where its reduction ends.
struct GroupInstruction {
    enum class Kind : uint8_t { Operand, Not, Binary, NegateTerm };
    Kind kind = Kind::Operand;
    Op op = Op::Add;
    uint16_t a = 0; // the operand and its slot; NOT's slot; the left slot; the negated slot
    uint16_t b = 0; // the right slot
    bool rightIsLiteral = false; // the right operand is literal b itself, read where it stands
};

// The commonest numeric groups, a literal or a name alone or two of them with an operator between
// them, are evaluated at once, without the loop over instructions or levels below.
enum class GroupShape : uint8_t { General, Single, Pair };

struct CompiledGroup {
    std::vector<CompiledStep> steps;
    std::vector<CompiledOperand> operands;
    bool wrapping = false; // a leading minus wraps the first term
    std::vector<GroupInstruction> code;
    int result = -1;          // the slot of the group's value; -1: the group is empty
    bool relational = false;  // a comparison is done: the group's type is integer
    // Only numbers can meet here (numeric literals, names without $, such groups) and the value is
    // computed: evaluated on numbers alone while its names are numeric.
    bool numeric = false;
    GroupShape shape = GroupShape::General; // Single and Pair are numeric
};

class CompiledExpression {
public:
    // Reads text[begin, end) as the evaluator would, with scope deciding whether a leading minus
    // wraps the first term; nullptr when the evaluator would stop on the text with an error (the
    // statement then keeps reading its text, which raises that error at its moment).
    static std::unique_ptr<CompiledExpression> compile(std::string_view text, size_t begin, size_t end,
        std::string_view scope, Quotes quotes = Quotes::Plain);
    // An argument list "a, b, c)" as evaluateArguments reads it.
    static std::unique_ptr<CompiledExpression> compileArguments(std::string_view list);

    // Returns 0, or kFailed after raising.
    int evaluate(core::Interpreter& interpreter, Value& result) const;
    // Evaluates an expression of numbers and names on numbers alone: 0, kFailed after raising, or
    // kNotNumbers when it is not such an expression or one of its names has become a string (then
    // nothing has happened that evaluate would not do again the same way). A lone literal gives
    // form Literal: its value with its spelling is literal().
    static constexpr int kNotNumbers = 1;
    int evaluateNumber(core::Interpreter& interpreter, Number& result) const;
    [[nodiscard]] const Value& literal() const { return m_top.operands.front().literal; }
    // The same for an argument list of exactly count numeric groups, into out[0..count).
    int evaluateArgumentNumbers(core::Interpreter& interpreter, Number* out, size_t count) const;
    [[nodiscard]] size_t argumentCount() const { return m_arguments.size(); }
    int evaluateArguments(core::Interpreter& interpreter, std::vector<Value>& values) const;

private:
    CompiledGroup m_top;
    std::vector<CompiledGroup> m_arguments;
};

} // namespace tessaly::expr
