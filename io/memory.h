// Memory and ports: the reach into the address space that the statements DEF SEG, POKE, BLOAD and
// BSAVE and the functions PEEK and VARPTR share (the functions' handlers are io/memory_functions.cpp
// and io/expression_answers.cpp). The address space is described in io/user_memory.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

// io/memory_map.cpp
// The length bytes at address, when the program owns all of them (for writing: none of them a
// string's cell); else "Illegal function call in " and kFailed. A length of 0 reaches nothing and
// is always allowed.
int reachBytes(core::Interpreter& in, int64_t address, size_t length, bool forWriting, uint8_t*& bytes);
// The address of a variable's cell (a scalar, or an array element; with no subscripts the first
// element), the variable made as on first use.
int variableAddress(core::Interpreter& in, std::string_view name, bool isArray,
    const std::vector<int32_t>& subscripts, uint32_t& address);

} // namespace tessaly::io
