// The user memory of PEEK, POKE, BLOAD and BSAVE, and the address space that programs see.
//
// An address is the DEF SEG base plus an offset, a 32-bit number. Three areas of 1 MiB are mapped:
//   &H100000 .. &H1FFFFF  the user memory block (DEFUSER gives its first address, the first base);
//   &H200000 .. &H2FFFFF  the scalar variables' cells, in the order the variables were made;
//   &H300000 .. &H3FFFFF  the array elements' cells, array after array in the order of DIM.
// VARPTR gives addresses in the two variable areas, so that with DEF SEG = 0 PEEK(VARPTR(V)) reads
// the first byte of V and POKE changes V itself. Only the cells that exist can be reached there, and
// a string's cell (its pool number) can be read but not written, so that no variable loses its
// text. Every other address belongs to nothing the program owns and is refused.
#pragma once

#include <cstdint>
#include <vector>

#include "core/zeroed_allocator.h"

namespace tessaly::io {

inline constexpr uint32_t kAreaBytes = 1U << 20;
inline constexpr uint32_t kUserMemoryBase = 0x100000;
inline constexpr uint32_t kScalarAreaBase = 0x200000;
inline constexpr uint32_t kArrayAreaBase = 0x300000;

struct UserMemory {
    std::vector<uint8_t, core::ZeroedAllocator<uint8_t>> bytes = std::vector<uint8_t, core::ZeroedAllocator<uint8_t>>(kAreaBytes);
    int64_t segmentBase = kUserMemoryBase; // DEF SEG
    int64_t lastAddress = 0;               // the last byte PEEK, POKE, BLOAD or BSAVE reached
};

} // namespace tessaly::io
