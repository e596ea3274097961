// The document's commands. Errors of Open and Save As are shown on the BASIC screen as the
// interpreter's own error messages.
#include "app/desktop/tessaly_doc.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/desktop/document_prompts.h"
#include "app/desktop/recent_files.h"
#include "app/desktop/tessaly_view.h"
#include "app/desktop/virtual_keys.h"
#include "io/program_document.h"
#include "screen/text_screen.h"

namespace tessaly::desktop {

namespace {
const QString kUntitled = QStringLiteral("無題");

std::string localPath(const QString& path) { return QFile::encodeName(path).toStdString(); }
} // namespace

CTessalyDoc::CTessalyDoc(CTessalyView& view, DocumentPrompts& prompts, RecentFiles& recent, QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_prompts(prompts)
    , m_recent(recent)
    , m_title(kUntitled)
{
    connect(&view.host(), &QtHost::documentModified, this, &CTessalyDoc::setModified);
    // A LOAD statement gives the document the loaded file's name.
    connect(&view.host(), &QtHost::programFileLoaded, this, [this](const QString& path) {
        QString absolute = QFileInfo(path).absoluteFilePath();
        setPath(absolute);
        m_recent.add(absolute);
        setModified(false);
    });
}

void CTessalyDoc::setModified(bool modified) { m_modified = modified; }

void CTessalyDoc::setPath(const QString& path)
{
    m_path = path;
    m_title = path.isEmpty() ? kUntitled : QFileInfo(path).fileName();
    emit titleChanged(m_title);
}

void CTessalyDoc::showCaret() { m_view.refresh(); }

bool CTessalyDoc::saveModified()
{
    if (!m_modified)
        return true;
    switch (m_prompts.saveChanges(m_title)) {
    case SaveChangesAnswer::Save: return onFileSave();
    case SaveChangesAnswer::Discard: return true;
    case SaveChangesAnswer::Cancel: return false;
    }
    return false;
}

bool CTessalyDoc::onNewDocument()
{
    if (!saveModified())
        return false;
    auto& in = m_view.interpreter();
    // A program under way does not survive its document.
    if (in.isBusy())
        in.breakProgram();
    in.newDocument();
    setPath(QString());
    setModified(false);
    showCaret();
    return true;
}

void CTessalyDoc::onFileOpen()
{
    // The answer to the save question does not stop the open.
    saveModified();
    QString path = m_prompts.openFileName();
    if (!path.isEmpty())
        openPath(path);
    showCaret();
}

io::LoadOutcome CTessalyDoc::load(const QString& path)
{
    auto& in = m_view.interpreter();
    if (in.isBusy())
        in.breakProgram();
    // Loading makes the program's folder the current one: the full path is taken first.
    QString absolute = QFileInfo(path).absoluteFilePath();
    auto outcome = io::LoadProgramDocument(in, localPath(absolute));
    finishFileCommand(outcome != io::LoadOutcome::Failed, absolute);
    return outcome;
}

void CTessalyDoc::reportCut()
{
    // Only the first 65,535 bytes were loaded: the program says so as LOAD does, and counts as
    // changed so that it is not dropped or taken for the whole file unasked.
    setModified(true);
    m_view.interpreter().raiseWithoutLine(core::ErrorId::OutOfMemory);
    m_view.interpreter().showPendingError();
    showCaret();
}

bool CTessalyDoc::openPath(const QString& path)
{
    auto outcome = load(path);
    if (outcome == io::LoadOutcome::Cut)
        reportCut();
    return outcome != io::LoadOutcome::Failed;
}

bool CTessalyDoc::openAndResetScreen(const QString& path)
{
    auto outcome = load(path);
    if (outcome == io::LoadOutcome::Failed)
        return false;
    m_view.interpreter().resetScreen();
    showCaret();
    if (outcome == io::LoadOutcome::Cut)
        reportCut();
    return true;
}

bool CTessalyDoc::openDropped(const QString& path)
{
    if (!saveModified())
        return false;
    auto outcome = load(path);
    if (outcome == io::LoadOutcome::Failed)
        return false;
    m_view.interpreter().resetScreen();
    if (outcome == io::LoadOutcome::Cut)
        reportCut();
    else
        m_view.interpreter().showOk();
    showCaret();
    return true;
}

void CTessalyDoc::startNamed(const QString& path)
{
    QString absolute = QFileInfo(path).absoluteFilePath();
    // As after a load, bare file names of the program's OPEN and LOAD are found beside it.
    QString folder = QFileInfo(absolute).absolutePath();
    if (QDir(folder).exists())
        QDir::setCurrent(folder);
    setPath(absolute);
    setModified(false);
    showCaret();
}

bool CTessalyDoc::onFileSave()
{
    if (m_path.isEmpty())
        return onFileSaveAs();
    return saveTo(m_path);
}

bool CTessalyDoc::onFileSaveAs()
{
    QString path = m_prompts.saveFileName(m_path.isEmpty() ? m_title : m_path);
    bool saved = false;
    if (!path.isEmpty()) {
        // A name without an extension is saved with .BAS.
        if (QFileInfo(path).suffix().isEmpty())
            path += QStringLiteral(".BAS");
        saved = saveTo(QFileInfo(path).absoluteFilePath());
    }
    // Only a save that succeeded clears the modified flag (finishFileCommand): a cancelled or
    // failed save leaves the program modified, so closing or File New asks about it again and a
    // program is never dropped unsaved.
    showCaret();
    return saved;
}

bool CTessalyDoc::folderExistsFor(const QString& path)
{
    QString folder = QFileInfo(path).absolutePath();
    if (QFileInfo(folder).isDir())
        return true;
    auto& screen = m_view.interpreter().screen();
    screen.Print(shiftJisOf(QStringLiteral("Folder not found: %1").arg(QDir::toNativeSeparators(folder))));
    screen.NewLine();
    showCaret();
    return false;
}

bool CTessalyDoc::saveTo(const QString& path)
{
    // Nothing is written into a folder that is not there (the save would otherwise be refused as
    // a file that cannot be created).
    if (!folderExistsFor(path))
        return false;
    auto& in = m_view.interpreter();
    bool tooLongToLoad = false;
    bool saved = finishFileCommand(io::SaveProgramDocument(in, localPath(path), io::RaiseAt::NoLine, &tooLongToLoad), path);
    if (saved && tooLongToLoad) {
        in.screen().Print(io::kSavedTooLongToLoad);
        in.screen().NewLine();
        showCaret();
    }
    return saved;
}

bool CTessalyDoc::finishFileCommand(bool succeeded, const QString& path)
{
    if (succeeded) {
        setPath(path);
        m_recent.add(path);
        setModified(false);
    } else {
        m_view.interpreter().showPendingError();
    }
    showCaret();
    return succeeded;
}

} // namespace tessaly::desktop
