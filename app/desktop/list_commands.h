// The list-editing commands of the Edit menu, the pop-up menu and the tool bar: the program copied,
// cut, deleted and pasted through the system clipboard, whole or by a range of line numbers. The
// clipboard speaks UTF-8; the program is Shift-JIS: the text is converted at that boundary.
#pragma once

namespace tessaly::core {
class Interpreter;
}

namespace tessaly::desktop {

class DocumentPrompts;

void copyAllList(core::Interpreter& interpreter, DocumentPrompts& prompts);
void cutAllList(core::Interpreter& interpreter, DocumentPrompts& prompts);
void deleteAllList(core::Interpreter& interpreter, DocumentPrompts& prompts);
// Paste all empties the program first; paste part merges the lines into it.
enum class PasteKind { ReplaceAll, Merge };
void pasteList(core::Interpreter& interpreter, DocumentPrompts& prompts, PasteKind kind);

enum class RangeCommand { Copy, Cut, Delete };
// Asks for the range of line numbers, then copies, cuts or deletes those lines.
void rangeOfList(core::Interpreter& interpreter, DocumentPrompts& prompts, RangeCommand command);

// The list-edit dialog: the program stops, its listing is edited and taken back as program lines;
// SORT shows it again in number order, RENUM renumbers it by 10 first.
void editList(core::Interpreter& interpreter, DocumentPrompts& prompts);

} // namespace tessaly::desktop
