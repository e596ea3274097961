// The frame's construction and the routing of its commands.
#include "app/desktop/main_frame.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QRegularExpression>
#include <QMenuBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QToolBar>
#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include "app/desktop/about_dialog.h"
#include "app/desktop/command_table.h"
#include "app/desktop/list_commands.h"
#include "app/desktop/lock_state.h"
#include "app/desktop/print_job.h"
#include "app/desktop/recent_files.h"
#include "app/desktop/serial_port_settings.h"
#include "app/desktop/tessaly_doc.h"
#include "app/desktop/tessaly_view.h"
#include "app/desktop/tool_icons.h"
#include "io/file_table.h"
#include "screen/keyboard.h"
#include "screen/statements.h"

namespace tessaly::desktop {

namespace {

// Only these accelerators are bound; the others only show their keys in the menu.
bool isBoundShortcut(int id)
{
    return id == cmd::kFileNew || id == cmd::kFileOpen || id == cmd::kFileSave || id == cmd::kFilePrint
        || id == cmd::kFunctionKey10 || id == cmd::kZoom1 || id == cmd::kZoom2 || id == cmd::kZoom3
        || id == cmd::kFullScreen;
}

QString toolTipOf(const char* menuText)
{
    QString text = QString::fromUtf8(menuText);
    text.remove(QRegularExpression(QStringLiteral("\\(&.\\)|&|\\.\\.\\.$")));
    return text;
}

} // namespace

CMainFrame::CMainFrame(CTessalyView& view, CTessalyDoc& doc, RecentFiles& recent)
    : m_view(view)
    , m_doc(doc)
    , m_recent(recent)
{
    // No maximise box.
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint
        | Qt::WindowCloseButtonHint);
    setWindowIcon(applicationIcon());
    // The view fills the scroll area and draws the screen centred on black; the scroll bars come only
    // when the frame is smaller than the zoomed screen.
    auto* scroll = new QScrollArea(this);
    m_scroll = scroll;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(&m_view);
    scroll->setFocusProxy(&m_view);
    QPalette black = scroll->palette();
    black.setColor(QPalette::Window, Qt::black);
    scroll->setPalette(black);
    setCentralWidget(scroll);
    createActions();
    createMenus();
    createToolBar();
    createStatusBar();
    createZoomActions();
    connect(&m_doc, &CTessalyDoc::titleChanged, this, &CMainFrame::updateTitle);
    connect(&m_recent, &RecentFiles::changed, this, &CMainFrame::fillRecentMenu);
    connect(&m_view, &CTessalyView::scrollRequested, scroll, [scroll](int direction) {
        if (direction == 0) {
            scroll->horizontalScrollBar()->setValue(0);
            scroll->verticalScrollBar()->setValue(0);
        } else {
            scroll->verticalScrollBar()->triggerAction(
                direction < 0 ? QAbstractSlider::SliderPageStepSub : QAbstractSlider::SliderPageStepAdd);
        }
    });
    connect(&m_view, &CTessalyView::fileDropped, this, [this](const QString& path) { m_doc.openDropped(path); });
    m_view.setPopupMenu(m_popup);
    m_view.installEventFilter(this);
    updateTitle();
    m_view.setFocus();
}

void CMainFrame::createActions()
{
    for (const auto& command : commands()) {
        if (command.id == cmd::kRecentFiles)
            continue;
        QString text = command.menuText != nullptr ? QString::fromUtf8(command.menuText) : QString();
        auto* action = new QAction(text, this);
        if (command.menuText == nullptr)
            action->setText(QString::fromUtf8(command.prompt));
        if (command.shortcut != nullptr) {
            if (isBoundShortcut(command.id))
                action->setShortcut(QKeySequence(QString::fromLatin1(command.shortcut)));
            else
                action->setText(text + QLatin1Char('\t') + QString::fromLatin1(command.shortcut));
        }
        if (command.prompt != nullptr)
            action->setStatusTip(QString::fromUtf8(command.prompt));
        action->setToolTip(command.menuText != nullptr ? toolTipOf(command.menuText) : QString());
        action->setEnabled(command.enabled);
        action->setIconVisibleInMenu(false);
        int id = command.id;
        connect(action, &QAction::triggered, this, [this, id] { runCommand(id); });
        m_actions.insert(id, action);
    }
    // F10 is an accelerator of its own, so that no desktop takes it to open the menu bar; the zoom
    // keys work in full screen, where the menu bar is hidden.
    for (int id : {cmd::kFunctionKey10, cmd::kZoom1, cmd::kZoom2, cmd::kZoom3, cmd::kFullScreen})
        addAction(m_actions[id]);
    for (int id : {cmd::kViewToolBar, cmd::kViewStatusBar}) {
        m_actions[id]->setCheckable(true);
        m_actions[id]->setChecked(true);
    }
}

void CMainFrame::createMenus()
{
    auto fill = [this](QMenu* menu, const MenuPopup& popup) {
        for (int id : popup.items) {
            if (id == cmd::kSeparator)
                menu->addSeparator();
            else if (id == cmd::kRecentFiles)
                m_recentMenu = menu->addMenu(QString::fromUtf8(findCommand(id)->menuText));
            else
                menu->addAction(m_actions.value(id));
        }
    };
    for (const auto& popup : menuBarPopups())
        fill(menuBar()->addMenu(QString::fromUtf8(popup.title)), popup);
    m_popup = new QMenu(this);
    fill(m_popup, editPopup());
    m_recentMenu->setStatusTip(QString::fromUtf8(findCommand(cmd::kRecentFiles)->prompt));
    fillRecentMenu();
}

void CMainFrame::fillRecentMenu()
{
    m_recentMenu->clear();
    const auto& paths = m_recent.paths();
    for (int k = 0; k < paths.size(); ++k) {
        QString path = paths[k];
        auto* action = m_recentMenu->addAction(QStringLiteral("&%1 %2").arg(k + 1).arg(QFileInfo(path).fileName()));
        action->setStatusTip(QString::fromUtf8(findCommand(cmd::kRecentFiles)->prompt));
        connect(action, &QAction::triggered, this, [this, path] {
            if (m_doc.saveModified())
                m_doc.openAndResetScreen(path);
        });
    }
    m_recentMenu->setEnabled(!paths.isEmpty());
}

void CMainFrame::createToolBar()
{
    m_toolBar = addToolBar(QStringLiteral("Standard"));
    m_toolBar->setObjectName(QStringLiteral("toolBar"));
    m_toolBar->setIconSize(QSize(16, 15));
    m_toolBar->setMovable(true);
    m_toolBar->setAllowedAreas(Qt::AllToolBarAreas);
    for (const ToolButton& button : toolBarButtons()) {
        if (button.id == cmd::kSeparator) {
            m_toolBar->addSeparator();
            continue;
        }
        QAction* action = m_actions.value(button.id);
        action->setIcon(toolIcon(button));
        m_toolBar->addAction(action);
    }
    connect(m_toolBar, &QToolBar::visibilityChanged, m_actions[cmd::kViewToolBar], &QAction::setChecked);
}

void CMainFrame::createStatusBar()
{
    static const char* const kIndicators[] = {"ｶﾅ", "CAP", "NUM", "SCRL"};
    for (int k = 0; k < 4; ++k) {
        m_lockLabels[k] = new QLabel(QString::fromUtf8(kIndicators[k]), this);
        m_lockLabels[k]->setFrameShape(QFrame::Panel);
        m_lockLabels[k]->setFrameShadow(QFrame::Sunken);
        m_lockLabels[k]->setMinimumWidth(m_lockLabels[k]->sizeHint().width());
        statusBar()->addPermanentWidget(m_lockLabels[k]);
    }
    updateLockIndicators();
}

void CMainFrame::updateLockIndicators()
{
    LockState state = readLockState();
    const bool on[4] = {state.kana, state.caps, state.num, state.scroll};
    for (int k = 0; k < 4; ++k) {
        // An indicator whose lock is off shows no text, as a status pane does.
        m_lockLabels[k]->setEnabled(on[k]);
        m_lockLabels[k]->setStyleSheet(on[k] ? QString() : QStringLiteral("color: transparent"));
    }
}

void CMainFrame::printDocument(bool preview)
{
    auto& in = m_view.interpreter();
    QPrinter& printer = m_view.host().linePrinter().printer();
    PrintJob job;
    if (!job.prepare(in, m_doc.prompts()))
        return;
    auto paintPages = [this, &job, &in](QPrinter* printer) {
        QPainter painter(printer);
        int first = printer->fromPage() > 0 ? printer->fromPage() : 1;
        int last = printer->toPage() > 0 ? std::min(printer->toPage(), job.pageCount()) : job.pageCount();
        QSize area = printer->pageLayout().paintRectPixels(printer->resolution()).size();
        for (int page = first; page <= last; ++page) {
            if (page > first)
                printer->newPage();
            job.paintPage(painter, page, area, in, m_view.renderer());
        }
    };
    if (preview) {
        QPrintPreviewDialog dialog(&printer, this);
        connect(&dialog, &QPrintPreviewDialog::paintRequested, this, paintPages);
        dialog.exec();
        return;
    }
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, job.pageCount());
    if (dialog.exec() == QDialog::Accepted)
        paintPages(&printer);
}

void CMainFrame::updateTitle() { setWindowTitle(m_doc.title() + QStringLiteral(" - Tessaly")); }

void CMainFrame::runCommand(int id)
{
    auto& in = m_view.interpreter();
    switch (id) {
    case cmd::kFileNew: m_doc.onNewDocument(); break;
    case cmd::kFileOpen: m_doc.onFileOpen(); break;
    case cmd::kFileSave: m_doc.onFileSave(); break;
    case cmd::kFileSaveAs: m_doc.onFileSaveAs(); break;
    case cmd::kAppExit: close(); break;
    case cmd::kCls: in.runStatementCommand("CLS"); break;
    case cmd::kCls2: in.runStatementCommand("CLS 2"); break;
    case cmd::kCls3: in.runStatementCommand("CLS 3"); break;
    case cmd::kList: in.listMenuCommand(); break;
    case cmd::kRun: in.runMenuCommand(); break;
    case cmd::kBreak: in.breakProgram(); break;
    case cmd::kCont: in.continueProgram(); break;
    case cmd::kFunctionKey10: in.onKeyDown(screen::vk::kF10); break;
    case cmd::kCopyGraphics: screen::copyGraphicsToClipboard(in); break;
    case cmd::kCopyText: screen::copyTextScreenToClipboard(in); break;
    case cmd::kViewToolBar: m_toolBar->setVisible(!m_toolBar->isVisible()); break;
    case cmd::kViewStatusBar:
        statusBar()->setVisible(!statusBar()->isVisible());
        m_actions[cmd::kViewStatusBar]->setChecked(statusBar()->isVisible());
        break;
    case cmd::kZoom1: setZoom(1); break;
    case cmd::kZoom2: setZoom(2); break;
    case cmd::kZoom3: setZoom(3); break;
    case cmd::kFullScreen: setFullScreen(!m_zoom.fullScreen); break;
    case cmd::kListEditor: editList(in, m_doc.prompts()); break;
    case cmd::kFilePrint: printDocument(false); break;
    case cmd::kFilePrintPreview: printDocument(true); break;
    case cmd::kFilePrintSetup: {
        QPageSetupDialog setup(&m_view.host().linePrinter().printer(), this);
        setup.exec();
        break;
    }
    case cmd::kCopyAllList: copyAllList(in, m_doc.prompts()); break;
    case cmd::kCutAllList: cutAllList(in, m_doc.prompts()); break;
    case cmd::kDeleteAllList: deleteAllList(in, m_doc.prompts()); break;
    case cmd::kPasteAllList: pasteList(in, m_doc.prompts(), PasteKind::ReplaceAll); break;
    case cmd::kPastePartList: pasteList(in, m_doc.prompts(), PasteKind::Merge); break;
    case cmd::kCopyPartList: rangeOfList(in, m_doc.prompts(), RangeCommand::Copy); break;
    case cmd::kCutPartList: rangeOfList(in, m_doc.prompts(), RangeCommand::Cut); break;
    case cmd::kDeletePartList: rangeOfList(in, m_doc.prompts(), RangeCommand::Delete); break;
    case cmd::kSerialPorts: {
        auto& ports = m_view.interpreter().files().comPorts();
        SerialPortDialog dialog(ports, this);
        if (dialog.exec() == QDialog::Accepted) {
            dialog.applyTo(ports);
            saveSerialPortPaths(ports);
        }
        break;
    }
    case cmd::kAppAbout: {
        CAboutDlg about(this);
        about.exec();
        break;
    }
    // No help file is shipped: the help commands do nothing.
    case cmd::kHelpIndex: case cmd::kContextHelp: break;
    default: break;
    }
    m_view.refresh();
    emit m_view.inputHandled();
    m_view.setFocus();
}

bool CMainFrame::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_view && (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease))
        updateLockIndicators();
    return QMainWindow::eventFilter(watched, event);
}

void CMainFrame::closeEvent(QCloseEvent* event)
{
    if (m_doc.saveModified())
        event->accept();
    else
        event->ignore();
}

void CMainFrame::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    // The frame is not maximised.
    if (event->type() == QEvent::WindowStateChange && (windowState() & Qt::WindowMaximized))
        setWindowState(windowState() & ~Qt::WindowMaximized);
    // Full screen entered or left through the window system (its own key, another program): the
    // bars and the zoom follow.
    if (event->type() == QEvent::WindowStateChange && isVisible())
        setFullScreen((windowState() & Qt::WindowFullScreen) != 0);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        updateLockIndicators();
}

} // namespace tessaly::desktop
