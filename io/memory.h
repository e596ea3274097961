// Memory and ports: the statements DEF SEG, POKE, BLOAD, BSAVE, OUT and CALL, and the functions
// PEEK, DEFUSER, SEGPTR, VARPTR, INP and USR. The address space is described in io/user_memory.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "expr/values.h"

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



// io/memory_functions.cpp
enum class MemoryFunction : uint8_t { Peek, Defuser, Segptr, Inp };
int memoryFunction(core::Interpreter& in, MemoryFunction function, const std::vector<expr::Value>& args,
    expr::Value& result);
// USRd(...): "Undefined user function in " while DEF USRd has not given an address, else refused.
int usrFunction(core::Interpreter& in, int digit, expr::Value& result);

} // namespace tessaly::io
