// The pieces of expression text that reading an expression and compiling one both take apart:
// number, hexadecimal/octal and string literals, and the binary operators.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "expr/evaluator.h"
#include "expr/operators.h"

namespace tessaly::expr {

// The upper-cased word stands at pos (letters compared without case).
[[nodiscard]] bool startsWithWord(std::string_view text, size_t pos, std::string_view word);

// A leading minus applies to the whole first term (-A^2+B is -(A^2)+B), unless a logical operator,
// MOD, \, THEN or ELSE stands anywhere in the scope (the rest of the statement).
[[nodiscard]] bool leadingMinusWraps(std::string_view scope);

// A number literal from pos (digits, a point, an exponent with E or D): pos moves past it and past
// a type mark (# ! %) after it; the spelling is returned.
std::string_view readNumberLiteral(std::string_view text, size_t& pos);

// &H, &O or & and digits, from pos at the "&"; false when no digit kind follows (pos then stands
// after the "&"). The value is the digits' 32-bit pattern.
bool readHexOrOctalLiteral(std::string_view text, size_t& pos, int32_t& value);

enum class StringLiteral : uint8_t { Read, Unterminated, TooLong };
// A string literal from pos at its opening quote: pos moves past the closing one. With
// DoubledIsQuote "" inside stands for one ".
StringLiteral readStringLiteral(std::string_view text, size_t& pos, Quotes quotes, std::string& bytes);

// A binary operator at pos (two relational marks in either order make one); pos moves past it.
bool readBinaryOperator(std::string_view text, size_t& pos, Op& op);

} // namespace tessaly::expr
