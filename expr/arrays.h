// Arrays: creation (DIM or first use), element access with the subscript checks, ERASE and
// OPTION BASE. The store rules are those of scalars (expr/variables).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "expr/variables.h"

namespace tessaly::expr {

inline constexpr int kMaxArrays = 65535;
inline constexpr int kMaxDimensions = 127;
inline constexpr size_t kArrayDataBytes = 1 << 20;
inline constexpr int kMaxStringElements = 65535;
inline constexpr int kImplicitBound = 10;

enum class ArrayStatus : uint8_t { Ok, Duplicate, OutOfMemory, SubscriptOutOfRange, Overflow, TypeMismatch };

class ArrayStore {
public:
    // DIM name(bounds): Duplicate when it exists, OutOfMemory beyond the limits.
    ArrayStatus create(std::string_view name, ValueType type, const std::vector<int32_t>& bounds);
    [[nodiscard]] bool exists(std::string_view name) const { return m_index.find(name) != m_index.end(); }
    // Reads an element, creating the array with bound 10 in every dimension on first use.
    ArrayStatus read(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts, Value& value);
    // A numeric element's cell as stored (a single exactly, not through its text).
    ArrayStatus readStored(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts, double& stored);
    ArrayStatus store(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts, const Value& value);
    // Removes an array; false when there is none of that name.
    bool erase(std::string_view name);

    [[nodiscard]] int optionBase() const { return m_optionBase; }
    // OPTION BASE: false when it was already given since the last reset.
    bool setOptionBase(int base);
    void reset();
    // Empties the store as reset() does, but the named arrays stay as they are (CHAIN with COMMON).
    void resetKeeping(const std::vector<std::string>& names);

private:
    struct Array {
        ValueType type;
        std::vector<int32_t> bounds;
        std::vector<double> numbers;
        std::vector<std::string> strings;
        size_t bytes;
    };
    ArrayStatus locate(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts, Array*& array,
        size_t& cell);

    std::unordered_map<std::string, Array, NameHash, std::equal_to<>> m_index;
    size_t m_usedBytes = 0;
    int m_stringElements = 0;
    int m_optionBase = 0;
    bool m_optionBaseSet = false;
};

} // namespace tessaly::expr
