// Every command of the menus, the tool bar and the accelerators: its number, menu text, status-bar
// prompt and whether the tool bar has it. Texts are UTF-8.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace tessaly::desktop {

namespace cmd {
inline constexpr int kFileNew = 57600, kFileOpen = 57601, kFileSave = 57603, kFileSaveAs = 57604;
inline constexpr int kFilePrint = 57607, kFilePrintPreview = 57609, kFilePrintSetup = 57606;
inline constexpr int kRecentFiles = 57616, kAppExit = 57665, kEditUndo = 57643;
inline constexpr int kListEditor = 32786, kCls = 32794, kCls2 = 32797, kCls3 = 32795, kList = 32796;
inline constexpr int kCopyGraphics = 32792, kCopyText = 32799, kCopyAllList = 32801, kPasteAllList = 32800;
inline constexpr int kCopyPartList = 32783, kPastePartList = 32784, kCutAllList = 32788, kDeleteAllList = 32789;
inline constexpr int kCutPartList = 32802, kDeletePartList = 32803;
inline constexpr int kRun = 32779, kBreak = 32778, kCont = 32780;
inline constexpr int kViewToolBar = 59392, kViewStatusBar = 59393;
inline constexpr int kHelpIndex = 57667, kContextHelp = 57669, kAppAbout = 57664, kFunctionKey10 = 1006;
inline constexpr int kSerialPorts = 32810;
// The screen's size: a whole number of window pixels per screen pixel, or the whole display.
inline constexpr int kZoom1 = 32811, kZoom2 = 32812, kZoom3 = 32813, kFullScreen = 32814;
inline constexpr int kSeparator = 0;
} // namespace cmd

struct Command {
    int id;
    const char* menuText; // nullptr: the tool bar or an accelerator only
    bool onToolBar;
    const char* prompt;   // nullptr: no prompt
    const char* shortcut; // Qt key sequence text, or nullptr
    bool enabled;         // false while the command's work is not built
};

std::span<const Command> commands();
const Command* findCommand(int id);

// A button of the tool bar: its command, and its image: the desktop icon theme's name for it (or
// nullptr), and the mark and colour of the small picture drawn where the theme has none.
struct ToolButton {
    int id;                        // kSeparator: a separator
    const char* themeName = nullptr;
    const char* mark = nullptr;
    uint32_t colour = 0;           // 0xRRGGBB
};

// The tool bar, left to right.
std::span<const ToolButton> toolBarButtons();

// The pop-ups of the menu bar with their commands in order (kSeparator for a separator).
struct MenuPopup {
    const char* title;
    std::span<const int> items;
};
std::span<const MenuPopup> menuBarPopups();
// The right-click pop-up repeats the edit pop-up.
const MenuPopup& editPopup();

} // namespace tessaly::desktop
