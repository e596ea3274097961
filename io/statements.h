// Handlers of the statements that the files subsystem owns. Each takes the position after its
// keyword and the statement's end; see core/dispatch.h.
#pragma once

#include "core/outcome.h"

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

using core::Failure;
using core::Flow;
using core::kDone;
using core::Outcome;

// io/stmt_program_files.cpp
Outcome stmtLoad(core::Interpreter&, int begin, int end);
Outcome stmtSave(core::Interpreter&, int begin, int end);
Outcome stmtMerge(core::Interpreter&, int begin, int end);
// io/stmt_chain.cpp
Outcome stmtChain(core::Interpreter&, int begin, int end);
Outcome stmtCommon(core::Interpreter&, int begin, int end);
// io/stmt_open_close.cpp
Outcome stmtOpen(core::Interpreter&, int begin, int end);
Outcome stmtClose(core::Interpreter&, int begin, int end);
// io/stmt_sequential.cpp
Outcome stmtPrintFile(core::Interpreter&, int begin, int end);
Outcome stmtWriteFile(core::Interpreter&, int begin, int end);
Outcome stmtInputFile(core::Interpreter&, int begin, int end);
Outcome stmtLineInputFile(core::Interpreter&, int begin, int end);
// io/stmt_random.cpp (GET # and PUT #: the record forms)
Outcome stmtField(core::Interpreter&, int begin, int end);
Outcome stmtLset(core::Interpreter&, int begin, int end);
Outcome stmtRset(core::Interpreter&, int begin, int end);
Outcome stmtGetRecord(core::Interpreter&, int begin, int end);
Outcome stmtPutRecord(core::Interpreter&, int begin, int end);
// io/stmt_kill_name.cpp
Outcome stmtKill(core::Interpreter&, int begin, int end);
Outcome stmtName(core::Interpreter&, int begin, int end);

} // namespace tessaly::io
