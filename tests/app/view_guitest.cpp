// The screen window used as a user uses it: typing and running a program, breaking it, clicking,
// typing Japanese through an input method, dropping a file.
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>

#include "gui_fixture.h"
#include "screen/renderer.h"

using namespace tessaly;
using namespace tessaly::desktop;
using test::Window;

class ViewTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { test::isolateSettings(); }

    void typedProgramRunsAndShowsOnTheScreen()
    {
        Window w;
        QVERIFY(w.started);
        w.typeLine(QStringLiteral("10 PRINT 1+1"));
        w.typeLine(QStringLiteral("RUN"));
        QCOMPARE(w.row(0), QStringLiteral("10 PRINT 1+1"));
        QCOMPARE(w.row(1), QStringLiteral("RUN"));
        QCOMPARE(w.row(2).trimmed(), QStringLiteral("2"));
        QCOMPARE(w.row(3), QStringLiteral("OK"));
        QCOMPARE(w.interpreter().program().count(), 1);
        // The window shows the composite: the answer's digit is drawn in white on black.
        QImage shown = w.view().grab().toImage();
        const auto& composite = w.view().renderer().composite();
        QPoint origin = w.view().placement().origin;
        int whiteInDigit = 0;
        for (int y = 2 * 16; y < 3 * 16; ++y) {
            for (int x = 8; x < 16; ++x) {
                QCOMPARE(shown.pixel(origin + QPoint(x, y)) & 0xFFFFFFu, composite.pixel(x, y));
                whiteInDigit += composite.pixel(x, y) == 0xFFFFFFu;
            }
        }
        QVERIFY(whiteInDigit > 5);
    }

    void escapeBreaksAnEndlessLoop()
    {
        Window w;
        w.typeLine(QStringLiteral("10 GOTO 10"));
        QTest::keyClicks(&w.view(), QStringLiteral("RUN"));
        QTest::keyClick(&w.view(), Qt::Key_Return);
        QVERIFY(!w.settle(20));
        QVERIFY(w.interpreter().isRunning());
        QTest::keyClick(&w.view(), Qt::Key_Escape);
        QVERIFY(w.settle(20));
        QVERIFY(!w.interpreter().isRunning());
        QCOMPARE(w.row(2), QStringLiteral("BREAK, OK in 10"));
    }

    void inputDollarSleepsUntilAKeyArrives()
    {
        Window w;
        w.typeLine(QStringLiteral("10 A$=INPUT$(2)"));
        w.typeLine(QStringLiteral("20 PRINT \"GOT \";A$"));
        // Waiting for its keys, the program schedules no idle steps: the window rests.
        w.typeLine(QStringLiteral("RUN"));
        QVERIFY(w.interpreter().isRunning());
        QVERIFY(w.interpreter().isWaitingForKeys());
        QVERIFY(!w.app->idleActive());
        QTest::keyClick(&w.view(), Qt::Key_X);
        QVERIFY(w.settle(20));
        QVERIFY(w.interpreter().isWaitingForKeys());
        QTest::keyClick(&w.view(), Qt::Key_Y);
        QVERIFY(w.settle(20));
        QVERIFY(!w.interpreter().isRunning());
        QCOMPARE(w.row(3), QStringLiteral("GOT xy"));
        QCOMPARE(w.row(4), QStringLiteral("OK"));
    }

    void controlCStopsAndItsPressTypesNothing()
    {
        Window w;
        w.typeLine(QStringLiteral("10 GOTO 10"));
        QTest::keyClicks(&w.view(), QStringLiteral("RUN"));
        QTest::keyClick(&w.view(), Qt::Key_Return);
        QVERIFY(!w.settle(5));
        QTest::keyPress(&w.view(), Qt::Key_Control, Qt::ControlModifier);
        QTest::keyClick(&w.view(), Qt::Key_C, Qt::ControlModifier);
        QTest::keyRelease(&w.view(), Qt::Key_Control);
        QVERIFY(w.settle(20));
        QCOMPARE(w.row(2), QStringLiteral("BREAK, OK in 10"));
        // In the editor, Ctrl+V and Ctrl+Z do nothing at all.
        QTest::keyClick(&w.view(), Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&w.view(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(w.row(3), QString());
    }

    void keysMoveAndEditLikeTheScreenEditor()
    {
        Window w;
        QTest::keyClicks(&w.view(), QStringLiteral("ABC"));
        QTest::keyClick(&w.view(), Qt::Key_Left);
        QTest::keyClick(&w.view(), Qt::Key_Left);
        QTest::keyClick(&w.view(), Qt::Key_Delete);
        QCOMPARE(w.row(0).trimmed(), QStringLiteral("AC"));
        QTest::keyClick(&w.view(), Qt::Key_Tab);
        QVERIFY(w.view().hasFocus());
        QCOMPARE(w.interpreter().screen().cursorColumn(), 5);
    }

    void inputMethodTextArrivesAsShiftJis()
    {
        Window w;
        QInputMethodEvent event;
        event.setCommitString(QStringLiteral("あｱ"));
        QApplication::sendEvent(&w.view(), &event);
        QCOMPARE(w.interpreter().screen().row(0), std::string("\x82\xa0\xb1"));
    }

    void leftClickPutsTheCursorOnTheCell()
    {
        Window w;
        QTest::mouseClick(&w.view(), Qt::LeftButton, {}, w.view().placement().origin + QPoint(8 * 5 + 3, 16 * 3 + 7));
        QCOMPARE(w.interpreter().screen().cursorColumn(), 5);
        QCOMPARE(w.interpreter().screen().cursorRow(), 3);
        QCOMPARE(w.view().caretRect(), QRect(40, 48, 8, 13));
        QTest::keyClick(&w.view(), Qt::Key_Insert);
        QCOMPARE(w.view().caretRect().height(), 9);
    }

    void droppedFileIsLoaded()
    {
        QTemporaryDir dir;
        QString path = dir.filePath(QStringLiteral("drop.bas"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("10 PRINT 7\r\n20 END\r\n");
        file.close();
        Window w;
        w.typeLine(QStringLiteral("PRINT 1"));
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        // A drop reaches the widget that accepted the drag's entry.
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&w.view(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&w.view(), &drop);
        QCOMPARE(w.interpreter().program().count(), 2);
        QCOMPARE(w.frame().windowTitle(), QStringLiteral("drop.bas - Tessaly"));
        // As a LOAD: the screen starts afresh and OK follows.
        QCOMPARE(w.row(0), QStringLiteral("OK"));
        QCOMPARE(w.row(1), QString());
    }

    // A drop on a changed program asks the save question first: Cancel keeps the program and
    // ignores the drop, No drops the changes, Yes saves them before the load.
    void aDropAsksToSaveChangesFirst()
    {
        QTemporaryDir dir;
        QString dropped = dir.filePath(QStringLiteral("DROP.BAS"));
        QFile file(dropped);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("10 PRINT 7\r\n20 END\r\n");
        file.close();
        auto drop = [&](Window& w) {
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(dropped)});
            QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&w.view(), &enter);
            QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&w.view(), &event);
        };
        Window w;
        w.typeLine(QStringLiteral("5 REM MINE"));
        w.prompts->saveAnswers = {SaveChangesAnswer::Cancel};
        drop(w);
        QCOMPARE(w.prompts->saveQuestions, 1);
        QCOMPARE(w.interpreter().program().count(), 1);
        QCOMPARE(w.frame().windowTitle(), QStringLiteral("無題 - Tessaly"));
        QVERIFY(w.doc().isModified());

        // Yes with a name: the program is saved there, then the dropped one is loaded.
        QString kept = dir.filePath(QStringLiteral("MINE.BAS"));
        w.prompts->saveAnswers = {SaveChangesAnswer::Save};
        w.prompts->saveNames = {kept};
        drop(w);
        QCOMPARE(w.prompts->saveQuestions, 2);
        QFile mine(kept);
        QVERIFY(mine.open(QIODevice::ReadOnly));
        QCOMPARE(mine.readAll(), QByteArray("5 REM MINE\r\n"));
        QCOMPARE(w.interpreter().program().count(), 2);
        QCOMPARE(w.frame().windowTitle(), QStringLiteral("DROP.BAS - Tessaly"));

        // Yes, then Cancel in the name dialog: nothing is saved and nothing is loaded.
        w.frame().runCommand(cmd::kFileNew);
        w.typeLine(QStringLiteral("1 REM OTHER"));
        w.prompts->saveAnswers = {SaveChangesAnswer::Save};
        drop(w);
        QCOMPARE(w.prompts->saveQuestions, 3);
        QCOMPARE(w.interpreter().program().count(), 1);
        QCOMPARE(w.frame().windowTitle(), QStringLiteral("無題 - Tessaly"));

        // No: the changes are dropped with the old program.
        w.prompts->saveAnswers = {SaveChangesAnswer::Discard};
        drop(w);
        QCOMPARE(w.prompts->saveQuestions, 4);
        QCOMPARE(w.interpreter().program().count(), 2);
        QVERIFY(!w.doc().isModified());
        QCOMPARE(w.row(0), QStringLiteral("OK"));
    }
};

QTEST_MAIN(ViewTest)
#include "screen/text_screen.h"
#include "view_guitest.moc"
