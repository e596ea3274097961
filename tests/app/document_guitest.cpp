// The document as a user meets it: the command line, Open and Save As through the file-name
// prompts, the save question, and what a failed save leaves on disk.
#include <QFile>
#include <QTemporaryDir>
#include <sys/resource.h>
#include <csignal>
#include <unistd.h>

#include "gui_fixture.h"

using namespace tessaly;
using namespace tessaly::desktop;
using test::Window;

namespace {

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class DocumentTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { test::isolateSettings(); }

    void startsUntitledAndEmpty()
    {
        Window w;
        QCOMPARE(w.frame().windowTitle(), QStringLiteral("無題 - Tessaly"));
        QCOMPARE(w.interpreter().program().count(), 0);
    }

    void commandLineOpensAndRunOpensAndRuns()
    {
        QTemporaryDir dir;
        QString path = dir.filePath(QStringLiteral("ARGS.BAS"));
        writeFile(path, "10 PRINT \"HI\"\r\n");
        Window opened({path});
        QCOMPARE(opened.interpreter().program().count(), 1);
        QCOMPARE(opened.frame().windowTitle(), QStringLiteral("ARGS.BAS - Tessaly"));
        QCOMPARE(opened.row(0), QString());
        Window ran({QStringLiteral("--run"), path});
        QVERIFY(ran.settle());
        QCOMPARE(ran.row(0), QStringLiteral("HI"));
    }

    // A name that is not there yet is an empty program under that name, as in a text editor; the
    // first Save writes it without asking for a name. What is there but cannot be read still ends
    // the start, and --run wants a program to run.
    void commandLineNameOfANewFile()
    {
        QTemporaryDir dir;
        QString path = dir.filePath(QStringLiteral("NEW.BAS"));
        Window w({path});
        QVERIFY(w.started);
        QCOMPARE(w.frame().windowTitle(), QStringLiteral("NEW.BAS - Tessaly"));
        QCOMPARE(w.doc().pathName(), path);
        QCOMPARE(w.interpreter().program().count(), 0);
        QVERIFY(!w.doc().isModified());
        QVERIFY(!QFile::exists(path));
        QCOMPARE(QFileInfo(QDir::currentPath()).canonicalFilePath(), QFileInfo(dir.path()).canonicalFilePath());
        w.typeLine(QStringLiteral("10 PRINT 3"));
        QTest::keyClick(&w.frame(), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(readAll(path), QByteArray("10 PRINT 3\r\n"));
        QVERIFY(!w.doc().isModified());
        QVERIFY(w.prompts->saveNames.empty());

        // In a folder that is not there: the name is kept, Save says which folder is missing.
        QString lost = dir.filePath(QStringLiteral("nowhere/LOST.BAS"));
        Window away({lost});
        QVERIFY(away.started);
        QCOMPARE(away.frame().windowTitle(), QStringLiteral("LOST.BAS - Tessaly"));
        away.typeLine(QStringLiteral("10 END"));
        QTest::keyClick(&away.frame(), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(away.row(1), QStringLiteral("Folder not found: %1").arg(dir.filePath(QStringLiteral("nowhere"))));
        QVERIFY(away.doc().isModified());

        QDir(dir.path()).mkdir(QStringLiteral("folder"));
        Window aFolder({dir.filePath(QStringLiteral("folder"))});
        QVERIFY(!aFolder.started);
        QVERIFY(aFolder.app->error().contains(QStringLiteral("folder")));
        Window runMissing({QStringLiteral("--run"), dir.filePath(QStringLiteral("NONE.BAS"))});
        QVERIFY(!runMissing.started);
        if (geteuid() != 0) { // the superuser reads any file
            QString locked = dir.filePath(QStringLiteral("LOCKED.BAS"));
            writeFile(locked, "10 END\r\n");
            QFile::setPermissions(locked, QFileDevice::WriteOwner);
            Window unreadable({locked});
            QVERIFY(!unreadable.started);
        }
    }

    // Save As into a folder that is not there names the folder and writes nothing.
    void saveAsIntoAMissingFolder()
    {
        QTemporaryDir dir;
        Window w;
        w.typeLine(QStringLiteral("10 END"));
        QString target = dir.filePath(QStringLiteral("gone/deeper/X.BAS"));
        w.prompts->saveNames = {target};
        w.frame().runCommand(cmd::kFileSaveAs);
        QCOMPARE(w.row(1), QStringLiteral("Folder not found: %1").arg(dir.filePath(QStringLiteral("gone/deeper"))));
        QCOMPARE(w.row(2), QString());
        QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList());
        QCOMPARE(w.frame().windowTitle(), QStringLiteral("無題 - Tessaly"));
        QVERIFY(w.doc().isModified());
        // A folder that is there takes the file.
        w.prompts->saveNames = {dir.filePath(QStringLiteral("X.BAS"))};
        w.frame().runCommand(cmd::kFileSaveAs);
        QCOMPARE(readAll(dir.filePath(QStringLiteral("X.BAS"))), QByteArray("10 END\r\n"));
    }

    void openThroughThePromptAndCancel()
    {
        QTemporaryDir dir;
        QString path = dir.filePath(QStringLiteral("P.BAS"));
        writeFile(path, "10 A=1\r\n20 B=2\r\n");
        Window w;
        w.prompts->openNames = {path};
        w.frame().runCommand(cmd::kFileOpen);
        QCOMPARE(w.interpreter().program().count(), 2);
        QCOMPARE(w.doc().pathName(), path);
        // Cancel leaves the program as it is.
        w.frame().runCommand(cmd::kFileOpen);
        QCOMPARE(w.interpreter().program().count(), 2);
        // A file that cannot be read: the error on the screen, the program untouched.
        w.prompts->openNames = {dir.filePath(QStringLiteral("GONE.BAS"))};
        w.frame().runCommand(cmd::kFileOpen);
        QCOMPARE(w.interpreter().program().count(), 2);
        QCOMPARE(w.interpreter().screen().row(1).substr(0, 18), std::string("File not open in  "));
    }

    void saveAsWritesTheLoadedFormatAndAddsTheExtension()
    {
        QTemporaryDir dir;
        QString source = dir.filePath(QStringLiteral("T.BAS"));
        writeFile(source, "10 PRINT 1\r\n20 END\r\n");
        Window w({source});
        w.prompts->saveNames = {dir.filePath(QStringLiteral("copy"))};
        w.frame().runCommand(cmd::kFileSaveAs);
        QCOMPARE(readAll(dir.filePath(QStringLiteral("copy.BAS"))), QByteArray("10 PRINT 1\r\n20 END\r\n"));
        QCOMPARE(w.frame().windowTitle(), QStringLiteral("copy.BAS - Tessaly"));
        // A typed line marks the document; Save writes it to the same file.
        w.typeLine(QStringLiteral("30 REM"));
        QVERIFY(w.doc().isModified());
        QTest::keyClick(&w.frame(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!w.doc().isModified());
        QCOMPARE(readAll(dir.filePath(QStringLiteral("copy.BAS"))), QByteArray("10 PRINT 1\r\n20 END\r\n30 REM\r\n"));
    }

    void aFailedWriteKeepsThePreviousFile()
    {
        QTemporaryDir dir;
        QString path = dir.filePath(QStringLiteral("KEEP.BAS"));
        writeFile(path, "10 END\r\n");
        Window w({path});
        w.typeLine(QStringLiteral("20 PRINT \"a line long enough to pass the limit\""));
        // The file size limit makes the write fail half-way, as a full disk would.
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit old {};
        getrlimit(RLIMIT_FSIZE, &old);
        rlimit small = old;
        small.rlim_cur = 16;
        setrlimit(RLIMIT_FSIZE, &small);
        QTest::keyClick(&w.frame(), Qt::Key_S, Qt::ControlModifier);
        setrlimit(RLIMIT_FSIZE, &old);
        QCOMPARE(readAll(path), QByteArray("10 END\r\n"));
        QCOMPARE(w.interpreter().screen().row(2).substr(0, 19), std::string("Disk I/O error in  "));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList {QStringLiteral("KEEP.BAS")});
    }

    void programsLongerThanLoadReadsAreNeverCutSilently()
    {
        QTemporaryDir dir;
        QByteArray bytes;
        for (int line = 1; line <= 300; ++line)
            bytes += QByteArray::number(line) + " REM " + QByteArray(240, 'x') + "\r\n";
        QString path = dir.filePath(QStringLiteral("LONG.BAS"));
        writeFile(path, bytes);
        auto screenHas = [](Window& w, const QString& text) {
            for (int r = 0; r < 25; ++r) {
                if (w.row(r) == text)
                    return true;
            }
            return false;
        };
        // Open keeps the first 65,535 bytes, says so, and counts the cut program as changed.
        Window w;
        w.prompts->openNames = {path};
        w.frame().runCommand(cmd::kFileOpen);
        QCOMPARE(w.interpreter().program().count(), 263);
        QVERIFY(screenHas(w, QStringLiteral("Out of memory in")));
        QVERIFY(w.doc().isModified());
        // Save As writes a long program whole and warns that LOAD will not read it all.
        std::vector<core::ProgramStore::Line> lines;
        for (int line = 1; line <= 300; ++line)
            lines.push_back({line, std::to_string(line) + " REM " + std::string(240, 'y') + "\r\n"});
        w.interpreter().program().replaceAll(std::move(lines));
        QString copy = dir.filePath(QStringLiteral("COPY.BAS"));
        w.prompts->saveNames = {copy};
        w.frame().runCommand(cmd::kFileSaveAs);
        QCOMPARE(readAll(copy).size(), bytes.size());
        QVERIFY(screenHas(w, QStringLiteral("Program longer than 65535 bytes: LOAD reads only the first 65535")));
        QVERIFY(!w.doc().isModified());
    }

    void newAsksToSaveChanges()
    {
        Window w;
        w.typeLine(QStringLiteral("10 END"));
        w.prompts->saveAnswers = {SaveChangesAnswer::Cancel};
        QTest::keyClick(&w.frame(), Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(w.prompts->saveQuestions, 1);
        QCOMPARE(w.interpreter().program().count(), 1);
        w.prompts->saveAnswers = {SaveChangesAnswer::Discard};
        QTest::keyClick(&w.frame(), Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(w.interpreter().program().count(), 0);
        QCOMPARE(w.row(0), QString());
        QCOMPARE(w.interpreter().screen().cursorRow(), 0);
    }

    void aTypedLoadNamesTheDocument()
    {
        QTemporaryDir dir;
        QString before = QDir::currentPath();
        QDir::setCurrent(dir.path());
        Window w;
        w.typeLine(QStringLiteral("10 PRINT 2"));
        w.typeLine(QStringLiteral("SAVE \"typed\""));
        w.typeLine(QStringLiteral("NEW"));
        w.typeLine(QStringLiteral("LOAD \"TYPED\""));
        QCOMPARE(w.interpreter().program().count(), 1);
        QCOMPARE(w.frame().windowTitle(), QStringLiteral("TYPED.BAS - Tessaly"));
        QCOMPARE(w.doc().pathName(), QDir(dir.path()).filePath(QStringLiteral("TYPED.BAS")));
        QVERIFY(!w.doc().isModified());
        QDir::setCurrent(before);
    }

    void closingAsksToSaveChanges()
    {
        Window w;
        w.typeLine(QStringLiteral("10 END"));
        w.prompts->saveAnswers = {SaveChangesAnswer::Cancel};
        QVERIFY(!w.frame().close());
        QVERIFY(w.frame().isVisible());
        w.prompts->saveAnswers = {SaveChangesAnswer::Discard};
        QVERIFY(w.frame().close());
        QCOMPARE(w.prompts->saveQuestions, 2);
    }

    void aCancelledSaveKeepsTheProgramModified()
    {
        Window w;
        w.typeLine(QStringLiteral("10 END"));
        // Closing: Yes, then Cancel in the Save As dialog; the next close asks again.
        w.prompts->saveAnswers = {SaveChangesAnswer::Save};
        QVERIFY(!w.frame().close());
        QVERIFY(w.doc().isModified());
        w.prompts->saveAnswers = {SaveChangesAnswer::Cancel};
        QVERIFY(!w.frame().close());
        QCOMPARE(w.prompts->saveQuestions, 2);
        // Ctrl+S on the untitled program, Cancel; File New still asks.
        QTest::keyClick(&w.frame(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(w.doc().isModified());
        w.prompts->saveAnswers = {SaveChangesAnswer::Cancel};
        QTest::keyClick(&w.frame(), Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(w.prompts->saveQuestions, 3);
        QCOMPARE(w.interpreter().program().count(), 1);
        w.prompts->saveAnswers = {SaveChangesAnswer::Discard};
        QVERIFY(w.frame().close());
    }

    void theProgramsFolderBecomesTheCurrentOne()
    {
        QTemporaryDir dir;
        QDir(dir.path()).mkdir(QStringLiteral("sub"));
        QString path = dir.filePath(QStringLiteral("sub/HERE.BAS"));
        writeFile(path, "10 END\r\n");
        QString before = QDir::currentPath();
        Window w({path});
        QCOMPARE(QFileInfo(QDir::currentPath()).canonicalFilePath(), QFileInfo(dir.filePath(QStringLiteral("sub"))).canonicalFilePath());
        QDir::setCurrent(before);
    }

    void recentFilesRememberTheLastFour()
    {
        QTemporaryDir dir;
        Window w;
        for (int k = 1; k <= 5; ++k) {
            QString path = dir.filePath(QStringLiteral("R%1.BAS").arg(k));
            writeFile(path, "10 END\r\n");
            w.doc().openPath(path);
        }
        auto actions = w.frame().recentMenu()->actions();
        QCOMPARE(actions.size(), 4);
        QCOMPARE(actions.first()->text(), QStringLiteral("&1 R5.BAS"));
        QCOMPARE(actions.last()->text(), QStringLiteral("&4 R2.BAS"));
        w.typeLine(QStringLiteral("PRINT 1"));
        actions.last()->trigger();
        QCOMPARE(w.doc().pathName(), dir.filePath(QStringLiteral("R2.BAS")));
        // Opened from the list, the program comes with a fresh screen.
        QCOMPARE(w.row(0), QString());
    }
};

QTEST_MAIN(DocumentTest)
#include "document_guitest.moc"
#include "screen/text_screen.h"
