// CMainFrame: the main window with the menu bar, the tool bar, the status bar with its lock
// indicators, and the screen view in a scroll area. Commands are routed to the document, the view's
// interpreter or the application.
#pragma once

#include <QHash>
#include <QMainWindow>
#include <memory>

class QAction;
class QLabel;
class QMenu;
class QToolBar;

namespace tessaly::desktop {

class CTessalyDoc;
class CTessalyView;
class RecentFiles;

class CMainFrame : public QMainWindow {
    Q_OBJECT
public:
    CMainFrame(CTessalyView& view, CTessalyDoc& doc, RecentFiles& recent);

    // The action of a command number; nullptr for an unknown number.
    QAction* action(int id) const { return m_actions.value(id, nullptr); }
    QToolBar* toolBar() const { return m_toolBar; }
    QMenu* popupMenu() const { return m_popup; }
    QMenu* recentMenu() const { return m_recentMenu; }
    // Runs a command as its menu item does.
    void runCommand(int id);
    // Reads the keyboard lock state into the indicator panes.
    void updateLockIndicators();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createActions();
    void createMenus();
    void createToolBar();
    void createStatusBar();
    void fillRecentMenu();
    void updateTitle();
    // File Print (preview false) and Print Preview: the choice of what to print, then the print
    // dialog or the preview window.
    void printDocument(bool preview);

    CTessalyView& m_view;
    CTessalyDoc& m_doc;
    RecentFiles& m_recent;
    QHash<int, QAction*> m_actions;
    QToolBar* m_toolBar = nullptr;
    QMenu* m_popup = nullptr;
    QMenu* m_recentMenu = nullptr;
    QLabel* m_lockLabels[4] = {};
};

} // namespace tessaly::desktop
