// The dispatch table from statement code to handler, generated from the keyword list: every
// keyword names its handler, which lives beside its subsystem. Codes that no keyword has do nothing.
#include "core/dispatch.h"

#include <array>
#include <cstddef>

#include "core/keyword_table.h"

// Each handler is declared here from the lists, so that a new statement needs no header line.
#define X(name, code, text, area, handler) \
    namespace tessaly::area {              \
    core::Outcome handler(core::Interpreter& interpreter, int begin, int end); \
    }
#include "core/keywords.def"
#undef X
#define X(name, code, area, handler) \
    namespace tessaly::area {        \
    core::Outcome handler(core::Interpreter& interpreter, int begin, int end); \
    }
#include "core/internal_statements.def"
#undef X

namespace tessaly::core {

namespace {

Outcome doNothing(Interpreter&, int, int) { return kDone; }

constexpr size_t kHandlerSlots = 256;

struct HandlerTable {
    std::array<StatementHandler, kHandlerSlots> handlers {};

    constexpr HandlerTable()
    {
        for (auto& handler : handlers)
            handler = doNothing;
#define X(name, code, text, area, handler) set(code, area::handler);
#include "core/keywords.def"
#undef X
#define X(name, code, area, handler) set(code, area::handler);
#include "core/internal_statements.def"
#undef X
    }
    constexpr void set(int code, StatementHandler handler) { handlers[static_cast<size_t>(code)] = handler; }
};

constexpr HandlerTable kHandlers;

} // namespace

StatementHandler handlerFor(int code)
{
    return kHandlers.handlers[static_cast<uint8_t>(code)];
}

} // namespace tessaly::core
