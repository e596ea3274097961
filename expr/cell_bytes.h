// The machine form of a value in a variable's cell: an integer in 2 bytes, a single in 4 and a
// double in 8 (IEEE 754), least significant byte first; a string's cell holds its 16-bit pool number.
// Scalars and arrays keep their cells as these bytes, so that PEEK, POKE, BLOAD, GET@ and PUT@ see
// and change the values themselves.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "expr/values.h"

namespace tessaly::expr {

[[nodiscard]] constexpr uint32_t cellSize(ValueType type)
{
    switch (type) {
    case ValueType::Single: return 4;
    case ValueType::Double: return 8;
    default: return 2;
    }
}

// On a little-endian machine a cell is the value's own bytes: one copy.
inline void writeLittleEndian(uint8_t* bytes, uint64_t value, int count)
{
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(bytes, &value, static_cast<size_t>(count));
    } else {
        for (int k = 0; k < count; ++k)
            bytes[k] = static_cast<uint8_t>(value >> (8 * k));
    }
}

[[nodiscard]] inline uint64_t readLittleEndian(const uint8_t* bytes, int count)
{
    uint64_t value = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&value, bytes, static_cast<size_t>(count));
    } else {
        for (int k = count; k-- > 0;)
            value = (value << 8) | bytes[k];
    }
    return value;
}

// Stores a number already converted for the cell's type (expr/variables: convertForStore).
inline void writeCell(uint8_t* cell, ValueType type, double stored)
{
    switch (type) {
    case ValueType::Integer:
        writeLittleEndian(cell, static_cast<uint16_t>(static_cast<int16_t>(stored)), 2);
        return;
    case ValueType::Single:
        writeLittleEndian(cell, std::bit_cast<uint32_t>(static_cast<float>(stored)), 4);
        return;
    default:
        writeLittleEndian(cell, std::bit_cast<uint64_t>(stored), 8);
        return;
    }
}

// The number in a numeric cell. Bytes that make no finite number (an infinity or a NaN, which only
// POKE, BLOAD or GET@ can put there) read as 0: the language has no text for them.
[[nodiscard]] inline double readCell(const uint8_t* cell, ValueType type)
{
    double x = 0;
    switch (type) {
    case ValueType::Integer:
        return static_cast<int16_t>(static_cast<uint16_t>(readLittleEndian(cell, 2)));
    case ValueType::Single:
        x = std::bit_cast<float>(static_cast<uint32_t>(readLittleEndian(cell, 4)));
        break;
    default:
        x = std::bit_cast<double>(readLittleEndian(cell, 8));
        break;
    }
    return std::isfinite(x) ? x : 0.0;
}

} // namespace tessaly::expr
