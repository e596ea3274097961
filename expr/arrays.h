// Arrays: creation (DIM or first use), element access with the subscript checks, ERASE and
// OPTION BASE. The store rules are those of scalars (expr/variables). The cells of every array lie
// in one data area, array after array in creation order, in their machine form (expr/cell_bytes):
// screen images, PEEK and POKE work on these bytes.
#pragma once

#include <cmath>
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

// A subscript is its number truncated toward zero; false (Subscript out of range) outside 0..32767.
[[nodiscard]] inline bool toSubscript(double number, int32_t& subscript)
{
    double s = std::trunc(number);
    if (!(s >= 0 && s <= 32767))
        return false;
    subscript = static_cast<int32_t>(s);
    return true;
}

// An array named in compiled code: found once, and again only after arrays went away (ERASE,
// CLEAR, RUN, NEW, CHAIN).
struct ArrayBinding {
    std::string name;
    uint32_t generation = 0;
    void* array = nullptr; // the store's array while the generation is the same
};

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
    // The same through a binding.
    ArrayStatus read(ArrayBinding& binding, ValueType type, const std::vector<int32_t>& subscripts, Value& value);
    // The same for a numeric element: only its number. TypeMismatch (nothing read, nothing raised)
    // when the array holds strings.
    ArrayStatus readNumber(ArrayBinding& binding, ValueType type, const std::vector<int32_t>& subscripts,
        double& number);
    ArrayStatus store(ArrayBinding& binding, ValueType type, const std::vector<int32_t>& subscripts, const Value& value);
    // The same for a computed number (as a number value without a spelling would be stored).
    ArrayStatus storeNumber(ArrayBinding& binding, ValueType type, const std::vector<int32_t>& subscripts,
        double number);
    // Removes an array; false when there is none of that name. The cells of the arrays made after
    // it move down to close the gap.
    bool erase(std::string_view name);

    // The cells of a numeric or string array from the given element (the first element when
    // subscripts is empty) to the array's end, creating the array as on first use; for screen
    // images and VARPTR. offset is the element's place in the data area.
    struct CellRange {
        ValueType type = ValueType::Single;
        uint32_t offset = 0;
        uint32_t size = 0;
    };
    ArrayStatus cellsFrom(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts,
        CellRange& range);
    // The data area: the cells of all arrays (its size grows and shrinks with DIM and ERASE).
    [[nodiscard]] uint8_t* data() { return m_data.data(); }
    [[nodiscard]] size_t dataSize() const { return m_data.size(); }
    // Whether the bytes [offset, offset + length) of the data area hold only numeric cells.
    [[nodiscard]] bool onlyNumbers(size_t offset, size_t length) const;

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
        std::vector<std::string> strings;
        uint32_t start; // the first cell's offset in m_data
        uint32_t bytes;
    };
    // An element: its array and its cell's index in that array.
    struct Element {
        Array* array = nullptr;
        size_t cell = 0;
    };
    // Appends the array's cells to the data area (pool numbers in a string array's cells).
    void place(Array& array);
    ArrayStatus locate(std::string_view name, ValueType type, const std::vector<int32_t>& subscripts, Element& element,
        ArrayBinding* binding = nullptr);
    ArrayStatus readElement(const Element& element, Value& value) const;
    ArrayStatus storeElement(const Element& element, const Value& value);
    // Into a numeric array's cell, converted as storing does.
    ArrayStatus storeCellNumber(const Element& element, double number, bool unsignedLiteral);
    // The number a numeric array's cell holds.
    [[nodiscard]] double storedAt(const Array& array, size_t cell) const;

    std::unordered_map<std::string, Array, NameHash, std::equal_to<>> m_index;
    std::vector<uint8_t> m_data;
    int m_stringElements = 0;
    uint16_t m_stringCounter = 0; // the pool number of the last string element made
    int m_optionBase = 0;
    bool m_optionBaseSet = false;
    uint32_t m_generation = 1; // changes when arrays go away
};

} // namespace tessaly::expr
