// CMainFrame: the main window with the menu bar, the tool bar, the status bar with its lock
// indicators, and the screen view in a scroll area. Commands are routed to the document, the view's
// interpreter or the application. The frame, decoration included, starts at 665 x 506 (grown when the
// window system's decoration and bars leave less than the screen needs) and fits itself around the
// screen at the zoom the user chose; full screen shows the screen alone.
#pragma once

#include <QHash>
#include <QMainWindow>
#include <QMargins>
#include <memory>
#include <optional>

#include "app/desktop/screen_zoom.h"

class QAction;
class QLabel;
class QMenu;
class QScrollArea;
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

    // The screen at a whole factor (1 to 3): full screen ends, the frame fits around the screen.
    void setZoom(int factor);
    // Full screen: the screen alone at the largest factor that fits, centred on black.
    void setFullScreen(bool on);
    [[nodiscard]] const ZoomChoice& zoomChoice() const { return m_zoom; }
    // The frame's outer size for the chosen zoom: 665 x 506, or larger where the screen needs it.
    void fitFrameToZoom();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void createActions();
    void createMenus();
    void createToolBar();
    void createStatusBar();
    void fillRecentMenu();
    void updateTitle();
    void createZoomActions();
    void updateZoomChecks();
    // When the decoration becomes known or changes, the frame is fitted again.
    void followDecoration(bool always);
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
    QScrollArea* m_scroll = nullptr;
    ZoomChoice m_zoom;
    QMargins m_decoration;
    // The frame stands at its start-up place with the decoration known (until then each fit puts it
    // there again).
    bool m_placed = false;
    // The bars shown before full screen hid them.
    bool m_toolBarBeforeFullScreen = true;
    bool m_statusBarBeforeFullScreen = true;
    // Where the frame stood before full screen, decoration included.
    std::optional<QPoint> m_cornerBeforeFullScreen;
};

} // namespace tessaly::desktop
