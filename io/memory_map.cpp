// Addresses to bytes: the user memory block and the cells of the variables (io/user_memory.h).
#include "core/interpreter.h"
#include "expr/arrays.h"
#include "expr/variables.h"
#include "io/memory.h"
#include "io/user_memory.h"

namespace tessaly::io {

int reachBytes(core::Interpreter& in, int64_t address, size_t length, bool forWriting, uint8_t*& bytes)
{
    bytes = nullptr;
    if (length == 0)
        return 0;
    auto refuse = [&] { return in.raise(core::ErrorId::IllegalFunctionCall); };
    auto within = [&](uint32_t base, size_t size, size_t& offset) {
        if (address < base || address - base >= static_cast<int64_t>(size))
            return false;
        offset = static_cast<size_t>(address - base);
        return length <= size - offset;
    };
    size_t offset = 0;
    auto& memory = in.memory();
    if (within(kUserMemoryBase, memory.bytes.size(), offset)) {
        bytes = memory.bytes.data() + offset;
    } else if (within(kScalarAreaBase, in.variables().dataSize(), offset)) {
        if (forWriting && !in.variables().onlyNumbers(offset, length))
            return refuse();
        bytes = in.variables().data() + offset;
    } else if (within(kArrayAreaBase, in.arrays().dataSize(), offset)) {
        if (forWriting && !in.arrays().onlyNumbers(offset, length))
            return refuse();
        bytes = in.arrays().data() + offset;
    } else {
        return refuse();
    }
    memory.lastAddress = address + static_cast<int64_t>(length) - 1;
    return 0;
}

int variableAddress(core::Interpreter& in, std::string_view name, bool isArray,
    const std::vector<int32_t>& subscripts, uint32_t& address)
{
    auto type = in.variables().typeOfName(name);
    if (isArray) {
        expr::ArrayStore::CellRange range;
        switch (in.arrays().cellsFrom(name, type, subscripts, range)) {
        case expr::ArrayStatus::Ok:
            address = kArrayAreaBase + range.offset;
            return 0;
        case expr::ArrayStatus::OutOfMemory:
            return in.raise(core::ErrorId::OutOfMemory);
        default:
            return in.raise(core::ErrorId::SubscriptOutOfRange);
        }
    }
    expr::Value ignored;
    if (!in.variables().read(name, type, ignored))
        return in.raise(core::ErrorId::OutOfMemory);
    address = kScalarAreaBase + in.variables().cellOffset(in.variables().find(name));
    return 0;
}

} // namespace tessaly::io
