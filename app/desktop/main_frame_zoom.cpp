// The frame's size and place, the zoom commands and full screen.
#include <QActionGroup>
#include <QLayout>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QShowEvent>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <algorithm>

#include "app/desktop/command_table.h"
#include "app/desktop/main_frame.h"
#include "app/desktop/tessaly_view.h"
#include "app/desktop/window_decoration.h"

namespace tessaly::desktop {

namespace {

constexpr int kZoomCommands[] = {cmd::kZoom1, cmd::kZoom2, cmd::kZoom3};
constexpr int kRefitAfterFullScreenMs = 300;

} // namespace

void CMainFrame::createZoomActions()
{
    auto* group = new QActionGroup(this);
    for (int id : kZoomCommands) {
        m_actions[id]->setCheckable(true);
        group->addAction(m_actions[id]);
    }
    m_actions[cmd::kFullScreen]->setCheckable(true);
    // The place is that of the frame with its decoration (move() places a window so); its size is
    // known once the window system has said how wide the decoration is (followDecoration).
    move(kFrameLeft, kFrameTop);
    resize(kFrameWidth, kFrameHeight);
    m_zoom = loadZoomChoice();
    m_view.setZoom(m_zoom.factor);
    if (m_zoom.fullScreen) {
        m_zoom.fullScreen = false;
        setFullScreen(true);
    }
    updateZoomChecks();
}

void CMainFrame::updateZoomChecks()
{
    for (int k = 0; k < kMaxZoom; ++k)
        m_actions[kZoomCommands[k]]->setChecked(m_zoom.factor == k + 1);
    m_actions[cmd::kFullScreen]->setChecked(m_zoom.fullScreen);
}

void CMainFrame::setZoom(int factor)
{
    m_zoom.factor = std::clamp(factor, kMinZoom, kMaxZoom);
    if (m_zoom.fullScreen) {
        setFullScreen(false);
    } else {
        m_view.setZoom(m_zoom.factor);
        fitFrameToZoom();
    }
    saveZoomChoice(m_zoom);
    updateZoomChecks();
}

void CMainFrame::setFullScreen(bool on)
{
    if (on == m_zoom.fullScreen)
        return;
    m_zoom.fullScreen = on;
    if (on) {
        // Back from full screen, the frame comes where it was.
        if (m_placed && !isFullScreen()) {
            QMargins decoration = decorationOf(*this);
            m_cornerBeforeFullScreen = geometry().topLeft() - QPoint(decoration.left(), decoration.top());
        }
        // isHidden, not isVisible: before the frame is first shown no bar is visible yet.
        m_toolBarBeforeFullScreen = !m_toolBar->isHidden();
        m_statusBarBeforeFullScreen = !statusBar()->isHidden();
        menuBar()->hide();
        m_toolBar->hide();
        statusBar()->hide();
        m_view.setZoom(0);
        setWindowState(windowState() | Qt::WindowFullScreen);
    } else {
        setWindowState(windowState() & ~Qt::WindowFullScreen);
        menuBar()->show();
        m_toolBar->setVisible(m_toolBarBeforeFullScreen);
        statusBar()->setVisible(m_statusBarBeforeFullScreen);
        m_view.setZoom(m_zoom.factor);
        // An X11 window manager puts back the frame it had before full screen when it gets round
        // to it, which may come after this fit: the fit is done again a little later.
        std::optional<QPoint> corner = m_cornerBeforeFullScreen;
        fitFrameToZoom();
        QTimer::singleShot(kRefitAfterFullScreenMs, this, [this, corner] {
            if (m_zoom.fullScreen)
                return;
            m_cornerBeforeFullScreen = corner;
            fitFrameToZoom();
        });
    }
    saveZoomChoice(m_zoom);
    updateZoomChecks();
}

void CMainFrame::fitFrameToZoom()
{
    if (m_zoom.fullScreen || isFullScreen())
        return;
    // The bars and the decoration around the screen's area, laid out for the frame's size now.
    if (layout() != nullptr) {
        layout()->invalidate();
        layout()->activate();
    }
    QSize bars = size() - m_scroll->size();
    QMargins decoration = decorationOf(*this);
    QRect available = screen() != nullptr ? screen()->availableGeometry() : QRect();
    QSize outer = frameOuterSize(m_zoom.factor, bars, decoration, available.size());
    // The frame keeps its corner (the start-up place until the decoration is known), moved only
    // where it would leave the display. The inside is placed by its own position, which every window
    // manager takes as it is.
    QPoint inset(decoration.left(), decoration.top());
    QPoint corner = !m_placed                ? QPoint(kFrameLeft, kFrameTop)
        : m_cornerBeforeFullScreen.has_value() ? *m_cornerBeforeFullScreen
                                                : geometry().topLeft() - inset;
    m_cornerBeforeFullScreen.reset();
    corner = frameCornerWithin(corner, outer, available);
    setGeometry(QRect(corner + inset, outer.shrunkBy(decoration)));
    m_placed = m_placed || !decoration.isNull();
}

void CMainFrame::followDecoration(bool always)
{
    if (m_zoom.fullScreen || isFullScreen())
        return;
    QMargins decoration = decorationOf(*this);
    if (!always && decoration == m_decoration)
        return;
    m_decoration = decoration;
    fitFrameToZoom();
}

void CMainFrame::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (event->spontaneous())
        return;
    // The bars are laid out now: the frame takes its size around them.
    followDecoration(true);
    // An X11 window manager tells the decoration's size some time after the window appeared, with
    // no move or resize of the inside when it keeps the inside where it was asked to be: the frame
    // looks again a few times.
    for (int delay : {50, 200, 500, 1500})
        QTimer::singleShot(delay, this, [this] { followDecoration(false); });
}

bool CMainFrame::event(QEvent* event)
{
    bool handled = QMainWindow::event(event);
    // The window system may tell the decoration's size with a move, a resize or the activation
    // after the window appeared: the outer size is kept.
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize
        || event->type() == QEvent::WindowActivate)
        followDecoration(false);
    return handled;
}

} // namespace tessaly::desktop
