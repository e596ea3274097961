// The error state of the interpreter (pending flag, ERR, ERL, message) and the one message table.
// Raising takes the line number from the entry being executed; trapping is done by the run loop.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly::core {

enum class ErrorId : uint8_t {
#define X(name, code, text) name,
#include "core/errors.def"
#undef X
};

struct ErrorInfo {
    int16_t code;
    std::string_view text;
};
[[nodiscard]] ErrorInfo errorInfo(ErrorId id);

// The value every int-returning helper returns after raising.
inline constexpr int kFailed = -1;

// What raising returns. Helpers that return an int pass it on as kFailed; statement handlers pass it
// on as a failed outcome (core/outcome.h).
struct Failure {
    constexpr operator int() const { return kFailed; } // NOLINT(google-explicit-constructor)
};

enum class ErrorPending : int8_t { None = 0, Raised = -1, Caught = -9 };

struct BasicError {
    ErrorPending pending = ErrorPending::None;
    int16_t code = 0;   // ERR
    int16_t line = 0;   // ERL (the line number as a 16-bit value)
    // Where the error must be trapped or shown; message text lives in the run state's output text.
    [[nodiscard]] bool isPending() const { return pending == ErrorPending::Raised; }
    void clear() { *this = BasicError {}; }
};

// Passes a failure upwards: the BASIC error is already raised.
#define TRY_BASIC(expression)                  \
    do {                                       \
        if ((expression) < 0)                  \
            return ::tessaly::core::Failure {}; \
    } while (0)

} // namespace tessaly::core
