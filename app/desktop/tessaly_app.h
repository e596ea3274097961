// CTessalyApp: start-up (settings, font, document, frame, view, command line) and the idle driver
// that lets a running program advance between two turns of the event loop.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <memory>
#include <optional>

#include "app/desktop/document_prompts.h"
#include "app/desktop/recent_files.h"
#include "screen/font.h"

namespace tessaly::desktop {

class CMainFrame;
class CTessalyDoc;
class CTessalyView;

class CTessalyApp : public QObject {
    Q_OBJECT
public:
    // prompts: where Open and Save As get their file names (nullptr: the desktop's dialogs).
    explicit CTessalyApp(std::unique_ptr<DocumentPrompts> prompts = nullptr);
    ~CTessalyApp() override;

    // Start-up with the arguments after the program name: none (a new document), FILE (opened as
    // Open does; a FILE that does not exist yet is an empty program under that name) or --run FILE
    // (opened and run). false ends the application (message in error()).
    bool initInstance(const QStringList& arguments);
    [[nodiscard]] const QString& error() const { return m_error; }

    CMainFrame& frame() { return *m_frame; }
    CTessalyDoc& document() { return *m_doc; }
    CTessalyView& view() { return *m_view; }
    // True while idle steps are scheduled (a program runs).
    [[nodiscard]] bool idleActive() const { return m_idle.isActive(); }

    // One call of the idle hook: runs steps of a running program for a slice of time.
    void onIdle();

private:
    void kick();

    std::optional<screen::Font> m_font;
    std::unique_ptr<DocumentPrompts> m_prompts;
    std::unique_ptr<RecentFiles> m_recent;
    CTessalyView* m_view = nullptr;
    std::unique_ptr<CTessalyDoc> m_doc;
    std::unique_ptr<CMainFrame> m_frame;
    QTimer m_idle;
    QElapsedTimer m_lastRefresh; // the screen is composed for the window at most once a frame
    QString m_error;
};

// The desktop program: tessaly [FILE] | tessaly --run FILE.
int runDesktop(int argc, char** argv);

} // namespace tessaly::desktop
