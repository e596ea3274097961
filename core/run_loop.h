// The run loop (one entry per step), the prompts, BREAK, CONT and direct commands.
// The idle driver that calls the loop is Interpreter::idle; single statements are core/executor.
#pragma once

namespace tessaly::core {

class Interpreter;

enum class PromptKind { Output = 0, Ok = 1, Break = 2 };

void runLoop(Interpreter& interpreter);
// Shows the output text, or a pending error (or enters its ON ERROR GOTO handler), or a prompt.
void showPrompt(Interpreter& interpreter, PromptKind kind);
// Runs the direct command standing in the statement buffer.
void runDirectCommand(Interpreter& interpreter);
// Copies the statement of an entry (line number and comment cut off) into the statement buffer.
// Returns 1 when loaded, 0 when the entry holds no statement, kFailed when it does not fit.
int loadEntryIntoBuffer(Interpreter& interpreter, int entry);

void breakProgram(Interpreter& interpreter);
void continueProgram(Interpreter& interpreter);

} // namespace tessaly::core
