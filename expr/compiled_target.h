// A target of LET, FOR and NEXT (a scalar or an array element) read once: its name bound and its
// subscripts compiled. Locating it evaluates the subscripts, as reading the target's text would.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "expr/arrays.h"
#include "expr/compiled_expression.h"
#include "expr/scalar_binding.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::expr {

class CompiledTarget {
public:
    // Reads the name and any subscripts at pos (blanks before it skipped); pos moves past them.
    // False where reading the text would raise an error.
    bool compile(std::string_view text, size_t& pos, size_t end);

    // Evaluates the subscripts (0, or kFailed after raising) and takes the name's type.
    int locate(core::Interpreter& interpreter);
    // Stores into the located target; 0 or kFailed.
    int assign(core::Interpreter& interpreter, const Value& value);
    // The same for a computed number (or a variable's value): no value is made for a scalar.
    int assignNumber(core::Interpreter& interpreter, const Number& number);

    [[nodiscard]] const std::string& name() const { return m_scalar.name; }
    [[nodiscard]] bool isElement() const { return m_subscriptList != nullptr; }
    [[nodiscard]] ValueType type() const { return m_type; }
    [[nodiscard]] const std::vector<int32_t>& subscripts() const { return m_subscripts; }

private:
    ScalarBinding m_scalar;
    ArrayBinding m_array;
    std::unique_ptr<CompiledExpression> m_subscriptList;
    ValueType m_type = ValueType::Single;
    std::vector<Value> m_values;
    std::vector<int32_t> m_subscripts;
};

} // namespace tessaly::expr
