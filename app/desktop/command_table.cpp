// The command table. Undo is always greyed.
#include "app/desktop/command_table.h"

namespace tessaly::desktop {

using namespace cmd;

namespace {

constexpr Command kCommands[] = {
    {kFileNew, "新規作成(&N)", true, "新規にﾌｧｲﾙを作成/New File", "Ctrl+N", true},
    {kFileOpen, "開く(&O)", true, "既存のﾌｧｲﾙを開く/Open File", "Ctrl+O", true},
    {kFileSave, "上書き保存(&S)", true, "作業中のﾌｧｲﾙを上書きして保存/Renew File", "Ctrl+S", true},
    {kFileSaveAs, "名前を付けて保存(&A)...", false, "作業中のﾌｧｲﾙを新しい名前で保存/SaveAsNewName", nullptr, true},
    {kFilePrint, "印刷(&P)...", true, "作業中のﾌｧｲﾙ、画面を印刷/Print", "Ctrl+P", true},
    {kFilePrintPreview, "印刷ﾌﾟﾚﾋﾞｭｰ(&V)", false, "印刷ｲﾒｰｼﾞを表示/PrintPreview", nullptr, true},
    {kFilePrintSetup, "ﾌﾟﾘﾝﾀの設定(&R)...", false, "ﾌﾟﾘﾝﾀ/印刷ｵﾌﾟｼｮﾝの変更/ Setting printer ,option ", nullptr, true},
    {kSerialPorts, "通信ﾎﾟｰﾄの設定(&M)...", false, "COM1: ... COM5: の装置/Serial port devices", nullptr, true},
    {kRecentFiles, "最近使ったﾌｧｲﾙ", false, "指定のﾌｧｲﾙを開く/Open designation file ", nullptr, true},
    {kAppExit, "ｱﾌﾟﾘｹｰｼｮﾝの終了(&X)", false, "ｱﾌﾟﾘｹｰｼｮﾝを終了し、ﾌｧｲﾙの保存を指示/Close", nullptr, true},
    {kEditUndo, "元に戻す(&U)", false, "直前に行った動作を元に戻す/Undo", "Ctrl+Z", false},
    {kListEditor, "エディターでリスト編集", true, "テキストエディターでリスト編集", nullptr, true},
    {kCls, "CLS（テキスト画面消去）", true, "CLS（テキスト画面消去）", nullptr, true},
    {kCls2, "CLS 2（グラフィック画面消去）", true, "CLS 2（グラフィック画面消去）", nullptr, true},
    {kCls3, "CLS 3（テキスト＆グラフィック画面消去）", true, "CLS 3（テキスト＆グラフィック画面消去）", nullptr, true},
    {kList, "LIST(リストの画面表示)", true, "テキスト画面を消去しリスト表示", nullptr, true},
    {kCopyGraphics, "グラフィック画面をクリップにコピー", false, "グラフィック画面をイメージでクリップにコピー", nullptr, true},
    {kCopyText, "テキスト画面をクリップにコピー", false, "テキスト画面をクリップにコピー", nullptr, true},
    {kCopyAllList, "全リストをｺﾋﾟｰ(&C)", true, "全リストをｺﾋﾟｰ", "Ctrl+C", true},
    {kPasteAllList, "貼り付け／全リストを置換(&P)", true, "貼り付け／全リストを置換", "Ctrl+V", true},
    {kCopyPartList, "リストの部分コピー", false, "リストの部分コピー", nullptr, true},
    {kPastePartList, "リストの部分貼り付け", false, "リストの部分貼り付け（挿入、置換）", nullptr, true},
    {kCutAllList, "全リストの切り取り", true, "全リストを切り取ってｸﾘｯﾌﾟﾎﾞｰﾄﾞに保存", nullptr, true},
    {kDeleteAllList, "全リストの削除", false, "全リストの削除", nullptr, true},
    {kCutPartList, "リストの部分切り取り(&T)", false, nullptr, "Ctrl+X", true},
    {kDeletePartList, "リストの部分削除", false, nullptr, nullptr, true},
    {kRun, "RUN", true, "実行/RUN", nullptr, true},
    {kBreak, "BREAK, STOP", true, "停止/STOP", nullptr, true},
    {kCont, "CONT", true, "継続/CONT", nullptr, true},
    {kViewToolBar, "ﾂｰﾙ ﾊﾞｰ(&T)", false, "ﾂｰﾙ ﾊﾞｰの 表示/非表示/ToolBar On,Off", nullptr, true},
    {kViewStatusBar, "ｽﾃｰﾀｽ ﾊﾞｰ(&S)", false, "ｽﾃｰﾀｽ ﾊﾞｰの 表示/非表示/StatusBar On,Off", nullptr, true},
    // No key of the BASIC screen needs Ctrl with a digit, and F11 is the desktop's usual full-screen
    // key (the help, which has no file to show, gives it up).
    {kZoom1, "等倍(&1)", false, "画面を等倍で表示/Zoom 1x", "Ctrl+1", true},
    {kZoom2, "2 倍(&2)", false, "画面を 2 倍で表示/Zoom 2x", "Ctrl+2", true},
    {kZoom3, "3 倍(&3)", false, "画面を 3 倍で表示/Zoom 3x", "Ctrl+3", true},
    {kFullScreen, "全画面表示(&F)", false, "画面全体に表示/Full screen", "F11", true},
    {kHelpIndex, "ﾄﾋﾟｯｸの検索(&H)", true, "ﾍﾙﾌﾟ ﾄﾋﾟｯｸの一覧", nullptr, true},
    {kContextHelp, nullptr, true, "ｸﾘｯｸされたﾎﾞﾀﾝ、ﾒﾆｭｰまたはｳｨﾝﾄﾞｳのﾍﾙﾌﾟを表示", nullptr, true},
    {kAppAbout, "Tessaly のﾊﾞｰｼﾞｮﾝ情報(&A)...", false, "ﾌﾟﾛｸﾞﾗﾑの情報、ﾊﾞｰｼﾞｮﾝそして著作権を表示", nullptr, true},
    {kFunctionKey10, nullptr, false, nullptr, "F10", true},
};

constexpr ToolButton kToolBar[] = {
    {kFileNew, "document-new", "N", 0x2060C0},
    {kFileOpen, "document-open", "O", 0xC08020},
    {kFileSave, "document-save", "S", 0x2060C0},
    {kSeparator},
    {kRun, "media-playback-start", "\u25B6", 0x109010},
    {kBreak, "media-playback-stop", "\u25A0", 0xC01010},
    {kCont, "media-seek-forward", "\u25B7", 0x109010},
    {kSeparator},
    {kCls, nullptr, "C1", 0x404040},
    {kCls2, nullptr, "C2", 0x404040},
    {kCls3, nullptr, "C3", 0x404040},
    {kSeparator},
    {kList, nullptr, "L", 0x404040},
    {kListEditor, "accessories-text-editor", "E", 0x404040},
    {kSeparator},
    {kCutAllList, "edit-cut", "X", 0x404040},
    {kCopyAllList, "edit-copy", "C", 0x404040},
    {kPasteAllList, "edit-paste", "V", 0x404040},
    {kFilePrint, "document-print", "P", 0x404040},
    {kSeparator},
    {kHelpIndex, "help-contents", "?", 0x2060C0},
    {kContextHelp, "help-whatsthis", "\u2196?", 0x2060C0},
};

// Which pop-up holds which command is this shell's own arrangement: files, list editing, running,
// the screen, help.
constexpr int kFileMenu[] = {kFileNew, kFileOpen, kFileSave, kFileSaveAs, kSeparator, kFilePrint,
    kFilePrintPreview, kFilePrintSetup, kSerialPorts, kSeparator, kRecentFiles, kSeparator, kAppExit};
constexpr int kEditMenu[] = {kEditUndo, kSeparator, kListEditor, kSeparator, kCopyAllList, kPasteAllList,
    kCutAllList, kDeleteAllList, kSeparator, kCopyPartList, kPastePartList, kCutPartList, kDeletePartList};
constexpr int kRunMenu[] = {kRun, kBreak, kCont};
constexpr int kViewMenu[] = {kViewToolBar, kViewStatusBar, kSeparator, kZoom1, kZoom2, kZoom3, kFullScreen, kSeparator, kCls, kCls2, kCls3, kList, kSeparator,
    kCopyGraphics, kCopyText};
constexpr int kHelpMenu[] = {kHelpIndex, kSeparator, kAppAbout};

const MenuPopup kMenuBar[] = {
    {"ﾌｧｲﾙ(&F)", kFileMenu},
    {"編集(&E)", kEditMenu},
    {"RUN/STOP", kRunMenu},
    {"表示(&V)", kViewMenu},
    {"ﾍﾙﾌﾟ(&H)", kHelpMenu},
};

} // namespace

std::span<const Command> commands() { return kCommands; }

const Command* findCommand(int id)
{
    for (const auto& command : kCommands)
        if (command.id == id)
            return &command;
    return nullptr;
}

std::span<const ToolButton> toolBarButtons() { return kToolBar; }

std::span<const MenuPopup> menuBarPopups() { return kMenuBar; }

const MenuPopup& editPopup() { return kMenuBar[1]; }

} // namespace tessaly::desktop
