// CTessalyDoc: the program file. New, Open, Save and Save As, the modified flag, the title, the
// recent-file list; the file bytes themselves are read and written by io/program_document.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include "io/program_document.h"

namespace tessaly::desktop {

class CTessalyView;
class DocumentPrompts;
class RecentFiles;

class CTessalyDoc : public QObject {
    Q_OBJECT
public:
    CTessalyDoc(CTessalyView& view, DocumentPrompts& prompts, RecentFiles& recent, QObject* parent = nullptr);

    [[nodiscard]] const QString& title() const { return m_title; }
    [[nodiscard]] const QString& pathName() const { return m_path; }
    [[nodiscard]] bool isModified() const { return m_modified; }
    void setModified(bool modified);

    // File New: asks to save changes first; false when the user cancelled.
    bool onNewDocument();
    // File Open: asks to save changes (the answer does not stop the open), then a file name.
    void onFileOpen();
    // Loads path as Open does (also for the command line, the recent files and drops).
    bool openPath(const QString& path);
    // A program from the recent-file list or the command line: the screen starts afresh as well.
    bool openAndResetScreen(const QString& path);
    // A dropped program: after the save question (Cancel keeps the program and ignores the drop),
    // loaded as a LOAD does, the screen afresh and "OK" after it.
    bool openDropped(const QString& path);
    // A file named on the command line that does not exist yet: an empty program under that name,
    // which the first Save writes without asking for a name.
    void startNamed(const QString& path);
    // File Save: to the current path, or through Save As when there is none.
    bool onFileSave();
    bool onFileSaveAs();
    // Before New, Open and exit: true when the work may go on.
    bool saveModified();

    // The questions the document's commands ask; the list-editing commands ask theirs there too.
    DocumentPrompts& prompts() { return m_prompts; }

signals:
    void titleChanged(const QString& title);

private:
    io::LoadOutcome load(const QString& path);
    void reportCut();
    bool saveTo(const QString& path);
    // false, with a line on the screen that names the folder, when path's folder does not exist.
    bool folderExistsFor(const QString& path);
    // After a load or a save: the document takes the path, or the error is shown.
    bool finishFileCommand(bool succeeded, const QString& path);
    void setPath(const QString& path);
    void showCaret();

    CTessalyView& m_view;
    DocumentPrompts& m_prompts;
    RecentFiles& m_recent;
    QString m_path;
    QString m_title;
    bool m_modified = false;
};

} // namespace tessaly::desktop
