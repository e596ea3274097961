// The three keyword lists (statements, numeric functions, string functions) and statement recognition.
// What a recognised statement does is left to the handlers that the dispatch table selects.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tessaly::core {

enum class Stmt : uint8_t {
    None = 0,
#define X(name, code, text, area, handler) name = code,
#include "core/keywords.def"
#undef X
#define X(name, code, area, handler) name = code,
#include "core/internal_statements.def"
#undef X
};

inline constexpr int kStatementSlots = 120;
inline constexpr int kStatementCount = 110;
inline constexpr int kFunctionSlots = 100;
inline constexpr int kNumericFunctionCount = 77;
inline constexpr int kStringFunctionCount = 18;

struct Recognition {
    int code = 0;      // 0 when no keyword matched
    int position = 0;  // just after the keyword; unchanged when none matched
};

class KeywordTable {
public:
    // The room for the statement codes of one first byte in the recognition index.
    static constexpr size_t kCodesPerFirstByte = 16;

    KeywordTable();

    [[nodiscard]] std::string_view statement(int code) const;
    [[nodiscard]] std::string_view numericFunction(int code) const;
    [[nodiscard]] std::string_view stringFunction(int code) const;
    [[nodiscard]] static constexpr int statementCount() { return kStatementCount; }
    [[nodiscard]] static constexpr int numericFunctionCount() { return kNumericFunctionCount; }
    [[nodiscard]] static constexpr int stringFunctionCount() { return kStringFunctionCount; }

    // The first keyword, in code order, that is a prefix of text at start (after blanks).
    [[nodiscard]] Recognition recognizeStatement(std::string_view text, int start) const;

private:
    std::array<std::string_view, kStatementSlots> m_statements {};
    std::array<std::string_view, kFunctionSlots> m_numericFunctions {};
    std::array<std::string_view, kFunctionSlots> m_stringFunctions {};
    // For each first byte, the codes whose keyword starts with it, in code order (0-terminated).
    std::array<std::array<uint8_t, kCodesPerFirstByte>, 256> m_byFirstByte {};
};

// The one table, built once; it never changes.
const KeywordTable& keywordTable();

} // namespace tessaly::core
