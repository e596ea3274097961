// Scalar variables: the DEF type table, the scalar table with its typed cells and string pool, and
// the conversion and range tests of a store. Arrays are expr/arrays; reading values into
// expressions is expr/evaluator.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "expr/cell_bytes.h"
#include "expr/number_text.h"
#include "expr/values.h"

namespace tessaly::expr {

inline constexpr int kMaxScalars = 65535;
inline constexpr size_t kScalarDataBytes = 1 << 20;

enum class StoreStatus : uint8_t { Ok, Overflow, TypeMismatch, OutOfMemory };

// Hashing that lets a string_view find a std::string key without building one. Names are short:
// FNV-1a over their bytes is quicker than the library's hash and spreads them as well.
struct NameHash {
    using is_transparent = void;
    size_t operator()(std::string_view name) const
    {
        uint64_t hash = 14695981039346656037ULL;
        for (char c : name)
            hash = (hash ^ static_cast<uint8_t>(c)) * 1099511628211ULL;
        return static_cast<size_t>(hash);
    }
};

// The value a number takes in a cell of the given type, range-tested; Ok or Overflow.
StoreStatus convertForStore(const Value& value, ValueType target, double& stored);
// The same for a number (unsignedLiteral: it was a lone &H or &O literal, 0..65535 fits an integer);
// a string target is a type mismatch.
StoreStatus convertNumberForStore(double number, bool unsignedLiteral, ValueType target, double& stored);
// A cell's value as the evaluator reads it, set into value.
void setCellValue(Value& value, ValueType type, double stored);
// A numeric cell's number as the evaluator reads it: a single through its seven-digit text, a
// double through its sixteen-digit one.
[[nodiscard]] inline double cellNumber(ValueType type, double stored)
{
    switch (type) {
    case ValueType::Integer: return stored;
    case ValueType::Single: return RoundToDigits(stored, 7);
    default: return RoundToDigits(stored, 16);
    }
}
// How a numeric variable's value is written.
[[nodiscard]] constexpr NumberForm variableForm(ValueType type)
{
    switch (type) {
    case ValueType::Integer: return NumberForm::IntegerVar;
    case ValueType::Single: return NumberForm::SingleVar;
    default: return NumberForm::DoubleVar;
    }
}

class VariableStore {
public:
    VariableStore();

    // The type of a name: its last suffix (% ! # $) before a terminator or "(", else its first
    // letter's DEF type (single when no DEF statement named it).
    [[nodiscard]] ValueType typeOfName(std::string_view name) const;
    [[nodiscard]] ValueType defaultType(char letter) const;
    // DEFINT and its kin for letters first..last; false when a letter already has another type.
    [[nodiscard]] bool canDefine(char first, char last, ValueType type) const;
    void define(char first, char last, ValueType type);

    // The scalar of that name (with its suffix as written); -1 when none.
    [[nodiscard]] int find(std::string_view name) const;
    // Reads the scalar, creating it with 0 or "" when it does not exist; false when the table is full.
    bool read(std::string_view name, ValueType type, Value& value);
    // The number in a numeric scalar's cell as stored (a single exactly, not through its text),
    // creating the scalar with 0 first; false when the table is full.
    bool readStored(std::string_view name, ValueType type, double& stored);
    // Stores value into the scalar of that name, creating it first.
    StoreStatus store(std::string_view name, ValueType type, const Value& value);

    [[nodiscard]] int count() const { return static_cast<int>(m_entries.size()); }

    // Bound access for compiled code. The generation changes when places of names may change (the
    // store emptied) or the types of names without a suffix do (a DEF statement); a place found
    // earlier stays good while it is the same.
    [[nodiscard]] uint32_t generation() const { return m_generation; }
    // Reads and stores the scalar at a place that find() gave.
    void readAt(int index, Value& value) const;
    // A numeric scalar's value as reading it gives (a single through its seven-digit text).
    [[nodiscard]] double readNumberAt(int index) const
    {
        const auto& scalar = m_entries[static_cast<size_t>(index)];
        return cellNumber(scalar.type, readCell(m_cells.data() + scalar.offset, scalar.type));
    }
    // Stores a computed number (as storeAt would store it as a value).
    StoreStatus storeNumberAt(int index, double number);
    [[nodiscard]] double readStoredAt(int index) const;
    StoreStatus storeAt(int index, const Value& value);
    // The byte offset of a scalar's cell in the data area (its slot order), for VARPTR.
    [[nodiscard]] uint32_t cellOffset(int index) const { return m_entries[static_cast<size_t>(index)].offset; }
    // The data area: every scalar's cell in its machine form (expr/cell_bytes), one after the
    // other in creation order.
    [[nodiscard]] uint8_t* data() { return m_cells.data(); }
    [[nodiscard]] size_t dataSize() const { return m_cells.size(); }
    // Whether the bytes [offset, offset + length) of the data area hold only numeric cells.
    [[nodiscard]] bool onlyNumbers(size_t offset, size_t length) const;

    void reset();
    // Empties the store as reset() does, but the named scalars keep their values (CHAIN with COMMON).
    void resetKeeping(const std::vector<std::string>& names);

private:
    struct Scalar {
        std::string name;
        ValueType type;
        uint32_t offset;
        uint16_t poolNumber;
    };
    int create(std::string_view name, ValueType type);
    // The entry of a variable, made as on first use; -1 when no room is left.
    int findOrCreate(std::string_view name, ValueType type);

    std::array<ValueType, 27> m_defTypes {};
    std::vector<Scalar> m_entries;
    std::vector<std::string> m_stringPool; // pool number 1.. is index - 1
    std::unordered_map<std::string, int, NameHash, std::equal_to<>> m_index;
    std::vector<uint8_t> m_cells;
    uint32_t m_generation = 1;
};

} // namespace tessaly::expr
