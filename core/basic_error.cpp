// The message table behind ErrorId.
// Raising (which needs the run state) is done by Interpreter::raise in core/interpreter.cpp.
#include "core/basic_error.h"

#include <array>

namespace tessaly::core {

namespace {

constexpr ErrorInfo kErrors[] = {
#define X(name, code, text) {code, text},
#include "core/errors.def"
#undef X
};

} // namespace

ErrorInfo errorInfo(ErrorId id)
{
    return kErrors[static_cast<size_t>(id)];
}

} // namespace tessaly::core
