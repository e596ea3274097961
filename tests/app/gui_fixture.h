// Drives the real window in tests: the application with scripted answers for the file dialogs and
// the save question, typing through key events, and turning the event loop until the program rests.
#pragma once

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QStringList>
#include <QTest>
#include <deque>
#include <tuple>
#include <memory>
#include <string>

#include "app/desktop/command_table.h"
#include "app/desktop/document_prompts.h"
#include "app/desktop/print_job.h"
#include "app/desktop/main_frame.h"
#include "app/desktop/tessaly_app.h"
#include "app/desktop/tessaly_doc.h"
#include "app/desktop/tessaly_view.h"
#include "core/shift_jis.h"

namespace tessaly::desktop::test {

// Answers given in order; an exhausted queue answers Cancel (an empty name).
class ScriptedPrompts final : public DocumentPrompts {
public:
    std::deque<QString> openNames;
    std::deque<QString> saveNames;
    std::deque<SaveChangesAnswer> saveAnswers;
    int saveQuestions = 0;

    QString openFileName() override { return take(openNames); }
    QString saveFileName(const QString&) override { return take(saveNames); }
    SaveChangesAnswer saveChanges(const QString&) override
    {
        ++saveQuestions;
        if (saveAnswers.empty())
            return SaveChangesAnswer::Cancel;
        auto answer = saveAnswers.front();
        saveAnswers.pop_front();
        return answer;
    }

    // The list-editing questions: confirmations answered from `confirmations` (OK when empty),
    // messages recorded, ranges given from `ranges` (Cancel when empty).
    std::deque<bool> confirmations;
    QStringList told;
    std::deque<std::pair<int, int>> ranges;
    QStringList rangeCaptions;
    bool confirm(const QString& text) override
    {
        told << text;
        if (confirmations.empty())
            return true;
        bool answer = confirmations.front();
        confirmations.pop_front();
        return answer;
    }
    void tell(const QString& text) override { told << text; }
    bool lineRange(const QString& caption, int& start, int& end) override
    {
        rangeCaptions << caption;
        if (ranges.empty())
            return false;
        std::tie(start, end) = ranges.front();
        ranges.pop_front();
        return true;
    }

    // The list-edit dialog: each answer gives the listing and mode it closes with; Cancel when none
    // is left. The listings shown are recorded.
    struct ListEditStep {
        ListEditAnswer answer;
        QString listing;
        ListEditMode mode = ListEditMode::Replace;
    };
    std::deque<ListEditStep> listEdits;
    QStringList listingsShown;
    ListEditAnswer editListing(QString& listing, ListEditMode& mode) override
    {
        listingsShown << listing;
        if (listEdits.empty())
            return ListEditAnswer::Cancel;
        auto step = listEdits.front();
        listEdits.pop_front();
        listing = step.listing;
        mode = step.mode;
        return step.answer;
    }

    // The print choice: given from `printChoices` in turn; Cancel when none is left.
    std::deque<PrintChoice> printChoices;
    int printQuestions = 0;
    bool printChoice(PrintChoice& choice) override
    {
        ++printQuestions;
        if (printChoices.empty())
            return false;
        choice = printChoices.front();
        printChoices.pop_front();
        return true;
    }

private:
    static QString take(std::deque<QString>& queue)
    {
        if (queue.empty())
            return {};
        QString name = queue.front();
        queue.pop_front();
        return name;
    }
};

// Settings (the recent files) go to a folder of the test's own, empty at each run.
inline void isolateSettings()
{
    static QTemporaryDir folder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    QStandardPaths::setTestModeEnabled(true);
    QApplication::setOrganizationName(QStringLiteral("Local AppWizard-Generated Applications"));
    QApplication::setApplicationName(QStringLiteral("TessalyTest"));
}

struct Window {
    ScriptedPrompts* prompts = nullptr;
    std::unique_ptr<CTessalyApp> app;

    explicit Window(const QStringList& arguments = {})
    {
        auto owned = std::make_unique<ScriptedPrompts>();
        prompts = owned.get();
        app = std::make_unique<CTessalyApp>(std::move(owned));
        started = app->initInstance(arguments);
        if (started) {
            app->frame().show();
            QApplication::setActiveWindow(&app->frame());
            app->view().setFocus();
            started = QTest::qWaitForWindowExposed(&app->frame());
        }
    }

    bool started = false;

    CTessalyView& view() { return app->view(); }
    core::Interpreter& interpreter() { return app->view().interpreter(); }
    CMainFrame& frame() { return app->frame(); }
    CTessalyDoc& doc() { return app->document(); }

    // Types the text as key presses, then Enter, and lets the program run until it rests.
    void typeLine(const QString& text, int maxTurns = 1000)
    {
        QTest::keyClicks(&view(), text);
        QTest::keyClick(&view(), Qt::Key_Return);
        settle(maxTurns);
    }
    // Turns the event loop until no program runs; false when it still runs after maxTurns.
    bool settle(int maxTurns = 1000)
    {
        for (int turn = 0; turn < maxTurns; ++turn) {
            QApplication::processEvents();
            if (!app->idleActive())
                return true;
        }
        return false;
    }
    // Row r of the text screen as UTF-8, without the blanks that pad it.
    QString row(int r)
    {
        QString text = QString::fromStdString(core::ShiftJisToUtf8(interpreter().screen().row(r)));
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        return text;
    }
};

} // namespace tessaly::desktop::test
