// The frame: its place and size, the menu bar and tool bar of the command table, and menu commands
// reaching the interpreter.
#include <QClipboard>
#include <QDialogButtonBox>
#include <QPrinter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QMenuBar>
#include <QSignalSpy>
#include <QToolBar>

#include "app/desktop/command_table.h"
#include "app/desktop/print_job.h"
#include "app/desktop/qt_translations.h"
#include "app/desktop/serial_port_settings.h"
#include "app/desktop/virtual_keys.h"
#include "io/file_table.h"
#include "io/program_text.h"
#include "screen/statements.h"
#include "gui_fixture.h"

using namespace tessaly;
using namespace tessaly::desktop;
using test::Window;

namespace {
QString listing(Window& w)
{
    return QString::fromStdString(core::ShiftJisToUtf8(io::ProgramText(w.interpreter().program())));
}
} // namespace

class FrameTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { test::isolateSettings(); }

    void placeSizeAndNoMaximise()
    {
        Window w;
        // The frame with its decoration starts at (99, 75); its size is tested with the zoom.
        QCOMPARE(w.frame().frameGeometry().topLeft(), QPoint(99, 75));
        QVERIFY(!(w.frame().windowFlags() & Qt::WindowMaximizeButtonHint));
        w.frame().showMaximized();
        QApplication::processEvents();
        QVERIFY(!w.frame().isMaximized());
    }

    void menuBarAndToolBarFollowTheTable()
    {
        Window w;
        QStringList titles;
        for (auto* action : w.frame().menuBar()->actions())
            titles << action->text();
        QCOMPARE(titles, (QStringList {QStringLiteral("ﾌｧｲﾙ(&F)"), QStringLiteral("編集(&E)"), QStringLiteral("RUN/STOP"),
                             QStringLiteral("表示(&V)"), QStringLiteral("ﾍﾙﾌﾟ(&H)")}));
        QList<QAction*> expected;
        auto toolActions = w.frame().toolBar()->actions();
        auto order = toolBarButtons();
        QCOMPARE(toolActions.size(), static_cast<qsizetype>(order.size()));
        for (size_t k = 0; k < order.size(); ++k) {
            auto* action = toolActions[static_cast<qsizetype>(k)];
            if (order[k].id == cmd::kSeparator) {
                QVERIFY(action->isSeparator());
            } else {
                QCOMPARE(action, w.frame().action(order[k].id));
                QVERIFY(!action->icon().isNull());
            }
        }
        QCOMPARE(w.frame().action(cmd::kRun)->statusTip(), QStringLiteral("実行/RUN"));
        QCOMPARE(w.frame().action(cmd::kFileNew)->shortcut(), QKeySequence(QStringLiteral("Ctrl+N")));
        // Later work: printing and the list-edit dialog are present but disabled; undo is greyed.
        QVERIFY(!w.frame().action(cmd::kEditUndo)->isEnabled());
        for (int id : {cmd::kFilePrint, cmd::kFilePrintPreview, cmd::kFilePrintSetup})
            QVERIFY(w.frame().action(id)->isEnabled());
        for (int id : {cmd::kListEditor, cmd::kCopyAllList, cmd::kPasteAllList, cmd::kCutAllList, cmd::kDeleteAllList,
                 cmd::kCopyPartList, cmd::kPastePartList, cmd::kCutPartList, cmd::kDeletePartList})
            QVERIFY(w.frame().action(id)->isEnabled());
        QVERIFY(w.frame().action(cmd::kCopyText)->isEnabled());
        QCOMPARE(w.frame().popupMenu()->actions().size(), static_cast<qsizetype>(editPopup().items.size()));
    }

    // The program through the clipboard: Japanese text in UTF-8 there, Shift-JIS in the program.
    void listCommandsMoveTheProgramThroughTheClipboard()
    {
        Window w;
        auto* clipboard = QApplication::clipboard();
        auto run = [&](int id) { w.frame().action(id)->trigger(); };
        io::EnterProgramLines(w.interpreter(), {core::Utf8ToShiftJis("10 PRINT \"日本語\""), "20 A=1"},
            io::LineSource::Paste);
        run(cmd::kCopyAllList);
        QCOMPARE(clipboard->text(), QStringLiteral("10 PRINT \"日本語\"\r\n20 A=1\r\n"));

        // Paste all: mixed line ends, a line without a number, lower case; the program is replaced.
        clipboard->setText(QStringLiteral("30 print \"かな\"\n\nno number\r40 ?1\r\n"));
        run(cmd::kPasteAllList);
        QCOMPARE(listing(w), QStringLiteral("30 PRINT \"かな\"\r\n40 ?1\r\n"));
        QVERIFY(w.doc().isModified());

        // Paste part merges; a character without a Shift-JIS form becomes "?" and the user is told.
        clipboard->setText(QStringLiteral("35 A$=\"\U0001F600\"\n30 B=2"));
        run(cmd::kPastePartList);
        QCOMPARE(listing(w), QStringLiteral("30 B=2\r\n35 A$=\"?\"\r\n40 ?1\r\n"));
        QVERIFY(w.prompts->told.last().startsWith(QStringLiteral("Shift-JIS にない文字 1 個")));

        // Copy part of a range; a range that runs backwards is asked again.
        w.prompts->ranges = {{40, 31}, {31, 40}};
        run(cmd::kCopyPartList);
        QCOMPARE(w.prompts->told.last(), QStringLiteral("Begin > End , let re_input."));
        QCOMPARE(w.prompts->rangeCaptions.first(), QStringLiteral("リストの部分コピー"));
        QCOMPARE(clipboard->text(), QStringLiteral("35 A$=\"?\"\r\n40 ?1\r\n"));
        w.prompts->ranges = {{30, 35}};
        run(cmd::kCutPartList);
        QCOMPARE(clipboard->text(), QStringLiteral("30 B=2\r\n35 A$=\"?\"\r\n"));
        QCOMPARE(listing(w), QStringLiteral("40 ?1\r\n"));

        // Cut all and delete all ask first; Cancel leaves the program.
        w.prompts->confirmations = {false};
        run(cmd::kDeleteAllList);
        QCOMPARE(listing(w), QStringLiteral("40 ?1\r\n"));
        run(cmd::kCutAllList);
        QCOMPARE(clipboard->text(), QStringLiteral("40 ?1\r\n"));
        QCOMPARE(listing(w), QString());
        w.typeLine(QStringLiteral("50 END"));
        run(cmd::kDeleteAllList);
        QCOMPARE(listing(w), QString());
    }

    void theListEditDialogSortsRenumbersAndTakesTheListingBack()
    {
        Window w;
        io::EnterProgramLines(w.interpreter(), {"10 A=1", "20 B=2"}, io::LineSource::Paste);
        using Step = test::ScriptedPrompts::ListEditStep;
        w.prompts->listEdits = {
            Step {ListEditAnswer::Sort, QStringLiteral("30 c=3\r\n10 A=1\r\nno number\r\n")},
            Step {ListEditAnswer::Renum, QStringLiteral("10 A=1\r\n30 C=3\r\n")},
            Step {ListEditAnswer::Ok, QStringLiteral("  15 ? 7  \nno number\n"), ListEditMode::Merge},
        };
        w.frame().action(cmd::kListEditor)->trigger();
        QCOMPARE(w.prompts->listingsShown,
            (QStringList {QStringLiteral("10 A=1\r\n20 B=2\r\n"), QStringLiteral("10 A=1\r\n30 C=3\r\n"),
                QStringLiteral("10 A=1\r\n20 C=3\r\n")}));
        QCOMPARE(listing(w), QStringLiteral("10 A=1\r\n15 PRINT  7\r\n20 C=3\r\n"));
        QVERIFY(w.doc().isModified());

        // Cancel leaves the program; a number above 65536 ends the lines with its error.
        w.frame().action(cmd::kListEditor)->trigger();
        QCOMPARE(listing(w), QStringLiteral("10 A=1\r\n15 PRINT  7\r\n20 C=3\r\n"));
        w.prompts->listEdits = {Step {ListEditAnswer::Ok, QStringLiteral("5 X\n70000 Y\n6 Z\n")}};
        w.frame().action(cmd::kListEditor)->trigger();
        QCOMPARE(listing(w), QStringLiteral("5 X\r\n"));
        bool shown = false;
        for (int r = 0; r < 25; ++r)
            shown = shown || w.row(r).startsWith(QStringLiteral("Out of memory in 0"));
        QVERIFY(shown);
    }

    // Pages painted as the printer gets them, into an image of a page's size.
    void printingPaintsTheListingAndTheScreen()
    {
        Window w;
        std::vector<std::string> lines;
        for (int k = 1; k <= 60; ++k)
            lines.push_back(std::to_string(k * 10) + " REM X");
        io::EnterProgramLines(w.interpreter(), lines, io::LineSource::Paste);
        // An end before the start asks again, without a message.
        PrintChoice backwards;
        backwards.startLine = 5;
        backwards.endLine = 3;
        w.prompts->printChoices = {backwards, PrintChoice {}};
        PrintJob listing;
        QVERIFY(listing.prepare(w.interpreter(), *w.prompts));
        QCOMPARE(w.prompts->printQuestions, 2);
        QCOMPARE(listing.pageCount(), 2); // 50 lines, then 10
        const QSize page(1072, 1006);     // a canvas of 1,024 x 990 stretched one to one
        QImage image(page, QImage::Format_RGB32);
        image.fill(Qt::gray);
        {
            QPainter painter(&image);
            listing.paintPage(painter, 2, page, w.interpreter(), w.view().renderer());
        }
        auto dark = [&](int left, int top, int right, int bottom) {
            int count = 0;
            for (int y = top; y < bottom; ++y)
                for (int x = left; x < right; ++x)
                    count += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
            return count;
        };
        // Margins stay as they were; the first row ("510 REM X") at y 18 of the canvas; "-2-" at
        // x 200 on row 53.
        QCOMPARE(image.pixel(10, 500), QColor(Qt::gray).rgb());
        QCOMPARE(image.pixel(24 + 500, 8 + 500), qRgb(255, 255, 255));
        QVERIFY(dark(24 + 1, 8 + 18, 24 + 1 + 9 * 8, 8 + 34) > 0);
        QCOMPARE(dark(24 + 1 + 9 * 8, 8 + 18, 24 + 1024, 8 + 34), 0);
        QVERIFY(dark(24 + 200, 8 + 53 * 18, 24 + 224, 8 + 53 * 18 + 16) > 0);
        QCOMPARE(dark(24, 8 + 11 * 18, 24 + 1024, 8 + 53 * 18), 0); // page 2 holds 10 lines

        // A negative print of the black screen is white paper.
        PrintChoice screen;
        screen.kind = PrintChoice::Kind::Screen;
        screen.negative = true;
        w.prompts->printChoices = {screen};
        PrintJob screenJob;
        QVERIFY(screenJob.prepare(w.interpreter(), *w.prompts));
        QCOMPARE(screenJob.pageCount(), 1);
        image.fill(Qt::gray);
        {
            QPainter painter(&image);
            screenJob.paintPage(painter, 1, page, w.interpreter(), w.view().renderer());
        }
        // Scale min((1072-16)/640, (1006-16)/400) = 1.65: 1056 x 660 at the top left.
        QCOMPARE(image.pixel(600, 300), qRgb(255, 255, 255));
        QCOMPARE(image.pixel(1060, 300), QColor(Qt::gray).rgb());
        QCOMPARE(image.pixel(600, 700), QColor(Qt::gray).rgb());
        // Cancel prints nothing.
        QVERIFY(!PrintJob().prepare(w.interpreter(), *w.prompts));
    }

    // LPRINT's bytes wait for the end of the run, then print as one job on the chosen printer.
    void lprintPrintsWhenTheRunEnds()
    {
        Window w;
        QTemporaryDir folder;
        const QString pdf = folder.filePath(QStringLiteral("lprint.pdf"));
        QPrinter& printer = w.view().host().linePrinter().printer();
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        w.typeLine(QStringLiteral("10 LPRINT \"A\":LPRINT CHR$(12);\"B\""));
        w.typeLine(QStringLiteral("20 INPUT X"));
        w.typeLine(QStringLiteral("RUN"));
        QVERIFY(w.interpreter().isWaitingForInput());
        QVERIFY(!QFile::exists(pdf));
        w.typeLine(QStringLiteral("1"));
        QVERIFY(!w.interpreter().isRunning());
        QFile file(pdf);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray bytes = file.readAll();
        QVERIFY(bytes.startsWith("%PDF"));
        // The form feed starts the second page.
        QCOMPARE(bytes.count("/Type /Page\n"), 2);
    }

    void standardDialogsSpeakJapanese()
    {
        QVERIFY(installQtTranslations(*QCoreApplication::instance()));
        QDialogButtonBox box(QDialogButtonBox::Cancel);
        QCOMPARE(box.button(QDialogButtonBox::Cancel)->text(), QStringLiteral("キャンセル"));
    }

    void serialPortDevicesAreSetInTheirDialogAndKept()
    {
        Window w;
        QVERIFY(w.frame().action(cmd::kSerialPorts)->isEnabled());
        auto& ports = w.interpreter().files().comPorts();
        SerialPortDialog dialog(ports);
        QCOMPARE(dialog.pathField(1)->placeholderText(), QStringLiteral("/dev/ttyS0"));
        dialog.pathField(2)->setText(QStringLiteral(" /dev/ttyUSB0 "));
        dialog.applyTo(ports);
        saveSerialPortPaths(ports);
        QCOMPARE(ports.devicePath(1), std::string("/dev/ttyS0"));
        QCOMPARE(ports.devicePath(2), std::string("/dev/ttyUSB0"));
        io::ComPorts kept;
        loadSerialPortPaths(kept);
        QCOMPARE(kept.devicePath(2), std::string("/dev/ttyUSB0"));
        // An emptied field is the machine's own port again, and is no longer kept.
        dialog.pathField(2)->clear();
        dialog.applyTo(ports);
        saveSerialPortPaths(ports);
        io::ComPorts again;
        loadSerialPortPaths(again);
        QCOMPARE(again.devicePath(2), std::string("/dev/ttyS1"));
        // The command line goes over the settings for its run.
        saveSerialPortPaths(kept);
        Window started(QStringList {QStringLiteral("--com"), QStringLiteral("2=/dev/pts/9")});
        QCOMPARE(started.interpreter().files().comPorts().devicePath(2), std::string("/dev/pts/9"));
        saveSerialPortPaths(io::ComPorts());
    }

    void screenCommandsRunAsTheirStatements()
    {
        Window w;
        w.typeLine(QStringLiteral("10 PRINT \"X\""));
        w.typeLine(QStringLiteral("PRINT 5"));
        w.frame().runCommand(cmd::kCls);
        QCOMPARE(w.row(0), QString());
        QCOMPARE(w.row(1), QString());
        w.frame().runCommand(cmd::kList);
        QCOMPARE(w.row(0), QStringLiteral("10 PRINT \"X\""));
        // RUN writes RUN on the cursor row and enters it.
        w.frame().runCommand(cmd::kRun);
        QVERIFY(w.settle());
        QCOMPARE(w.row(1), QStringLiteral("RUN"));
        QCOMPARE(w.row(2), QStringLiteral("X"));
        QCOMPARE(w.row(3), QStringLiteral("OK"));
    }

    void breakAndContinueFromTheMenu()
    {
        Window w;
        w.typeLine(QStringLiteral("10 A=A+1:GOTO 10"));
        w.frame().runCommand(cmd::kRun);
        QVERIFY(!w.settle(5));
        w.frame().runCommand(cmd::kBreak);
        QVERIFY(w.settle(5));
        QVERIFY(w.row(2).startsWith(QStringLiteral("BREAK, OK in 10")));
        w.frame().runCommand(cmd::kCont);
        QVERIFY(!w.settle(5));
        QVERIFY(w.interpreter().isRunning());
        QTest::keyClick(&w.view(), Qt::Key_Escape);
        QVERIFY(w.settle(20));
    }

    void functionKeysTypeTheirTexts()
    {
        Window w;
        QTest::keyClick(&w.view(), Qt::Key_F1);
        QCOMPARE(w.row(0), QStringLiteral("load"));
        // F10 comes through its accelerator and types once.
        QSignalSpy accelerator(w.frame().action(cmd::kFunctionKey10), &QAction::triggered);
        QTest::keyClick(&w.view(), Qt::Key_F10);
        QCOMPARE(accelerator.count(), 1);
        QCOMPARE(w.row(0), QStringLiteral("load  cont"));
    }

    void screensToTheClipboard()
    {
        Window w;
        // Typed as Shift-JIS bytes: the clipboard gets them as Unicode text.
        w.interpreter().typeLine("PRINT \"\x93\xfa\x96\x7b\"");
        emit w.view().inputHandled(); // the command runs on in idle steps, as after a key
        QVERIFY(w.settle());
        w.frame().runCommand(cmd::kCopyText);
        QString copied = QApplication::clipboard()->text();
        QVERIFY(copied.contains(QStringLiteral("PRINT \"日本\"\r\n日本")));
        QCOMPARE(copied, QString::fromStdString(core::ShiftJisToUtf8(screen::textScreenForClipboard(w.interpreter().screen()))));
        w.typeLine(QStringLiteral("PSET (5,5),2"));
        QCOMPARE(w.view().renderer().page(0).pixel(5, 5), 0xFF0000u);
        w.frame().runCommand(cmd::kCopyGraphics);
        QImage image = QApplication::clipboard()->image();
        QCOMPARE(image.size(), QSize(640, 400));
        QCOMPARE(image.pixel(5, 5) & 0xFFFFFFu, 0xFF0000u);
        w.typeLine(QStringLiteral("SCREEN ,2"));
        w.frame().runCommand(cmd::kCopyGraphics);
        QVERIFY(QApplication::clipboard()->image().isNull());
    }

    void graphicsClearFromTheMenu()
    {
        Window w;
        w.typeLine(QStringLiteral("PSET (300,300),2"));
        QCOMPARE(w.view().renderer().composite().pixel(300, 300), 0xFF0000u);
        w.frame().runCommand(cmd::kCls2);
        QCOMPARE(w.view().renderer().composite().pixel(300, 300), 0u);
    }

    void virtualKeyCodes_data()
    {
        QTest::addColumn<int>("qtKey");
        QTest::addColumn<int>("vk");
        QTest::newRow("A") << int(Qt::Key_A) << 0x41;
        QTest::newRow("Z") << int(Qt::Key_Z) << 0x5A;
        QTest::newRow("0") << int(Qt::Key_0) << 0x30;
        QTest::newRow("F1") << int(Qt::Key_F1) << 0x70;
        QTest::newRow("F10") << int(Qt::Key_F10) << 0x79;
        QTest::newRow("Backspace") << int(Qt::Key_Backspace) << 0x08;
        QTest::newRow("Tab") << int(Qt::Key_Tab) << 0x09;
        QTest::newRow("Return") << int(Qt::Key_Return) << 0x0D;
        QTest::newRow("Enter") << int(Qt::Key_Enter) << 0x0D;
        QTest::newRow("Shift") << int(Qt::Key_Shift) << 0x10;
        QTest::newRow("Control") << int(Qt::Key_Control) << 0x11;
        QTest::newRow("Pause") << int(Qt::Key_Pause) << 0x13;
        QTest::newRow("Escape") << int(Qt::Key_Escape) << 0x1B;
        QTest::newRow("Space") << int(Qt::Key_Space) << 0x20;
        QTest::newRow("PageUp") << int(Qt::Key_PageUp) << 0x21;
        QTest::newRow("PageDown") << int(Qt::Key_PageDown) << 0x22;
        QTest::newRow("Home") << int(Qt::Key_Home) << 0x24;
        QTest::newRow("Left") << int(Qt::Key_Left) << 0x25;
        QTest::newRow("Up") << int(Qt::Key_Up) << 0x26;
        QTest::newRow("Right") << int(Qt::Key_Right) << 0x27;
        QTest::newRow("Down") << int(Qt::Key_Down) << 0x28;
        QTest::newRow("Insert") << int(Qt::Key_Insert) << 0x2D;
        QTest::newRow("Delete") << int(Qt::Key_Delete) << 0x2E;
        QTest::newRow("unknown") << int(Qt::Key_VolumeUp) << 0;
    }

    void virtualKeyCodes()
    {
        QFETCH(int, qtKey);
        QFETCH(int, vk);
        QCOMPARE(virtualKeyFor(qtKey), vk);
    }

    void charactersOfKeys()
    {
        auto bytes = [](Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
            QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
            return characterBytesFor(event);
        };
        QCOMPARE(bytes(Qt::Key_A, Qt::NoModifier, QStringLiteral("a")), std::string("a"));
        QCOMPARE(bytes(Qt::Key_C, Qt::ControlModifier, QStringLiteral("\x03")), std::string("\x03"));
        QCOMPARE(bytes(Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r")), std::string("\r"));
        QCOMPARE(bytes(Qt::Key_Escape, Qt::NoModifier, QStringLiteral("\x1b")), std::string("\x1b"));
        QCOMPARE(bytes(Qt::Key_Delete, Qt::NoModifier, QStringLiteral("\x7f")), std::string());
        QCOMPARE(bytes(Qt::Key_Left, Qt::NoModifier, QString()), std::string());
        QCOMPARE(bytes(Qt::Key_yen, Qt::NoModifier, QStringLiteral("¥")), std::string("\x5c"));
        QCOMPARE(bytes(Qt::Key_unknown, Qt::NoModifier, QStringLiteral("日")), std::string("\x93\xfa"));
    }
};

QTEST_MAIN(FrameTest)
#include "frame_guitest.moc"
#include "screen/text_screen.h"
