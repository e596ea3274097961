// Handlers of the statements that the files subsystem owns. Each takes the position after its
// keyword and the statement's end; see core/dispatch.h.
#pragma once

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::io {

// io/stmt_program_files.cpp
int stmtLoad(core::Interpreter&, int begin, int end);
int stmtSave(core::Interpreter&, int begin, int end);
int stmtMerge(core::Interpreter&, int begin, int end);
// io/stmt_chain.cpp
int stmtChain(core::Interpreter&, int begin, int end);
int stmtCommon(core::Interpreter&, int begin, int end);
// io/stmt_open_close.cpp
int stmtOpen(core::Interpreter&, int begin, int end);
int stmtClose(core::Interpreter&, int begin, int end);
// io/stmt_sequential.cpp
int stmtPrintFile(core::Interpreter&, int begin, int end);
int stmtWriteFile(core::Interpreter&, int begin, int end);
int stmtInputFile(core::Interpreter&, int begin, int end);
int stmtLineInputFile(core::Interpreter&, int begin, int end);
// io/stmt_random.cpp (GET # and PUT #: the record forms)
int stmtField(core::Interpreter&, int begin, int end);
int stmtLset(core::Interpreter&, int begin, int end);
int stmtRset(core::Interpreter&, int begin, int end);
int stmtGetRecord(core::Interpreter&, int begin, int end);
int stmtPutRecord(core::Interpreter&, int begin, int end);
// io/stmt_kill_name.cpp
int stmtKill(core::Interpreter&, int begin, int end);
int stmtName(core::Interpreter&, int begin, int end);

} // namespace tessaly::io
