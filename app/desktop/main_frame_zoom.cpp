// The frame's size and place, the zoom commands and full screen.
#include <QActionGroup>
#include <QLayout>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QShowEvent>
#include <QStatusBar>
#include <QToolBar>
#include <algorithm>

#include "app/desktop/command_table.h"
#include "app/desktop/main_frame.h"
#include "app/desktop/tessaly_view.h"

namespace tessaly::desktop {

namespace {

constexpr int kZoomCommands[] = {cmd::kZoom1, cmd::kZoom2, cmd::kZoom3};

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
        fitFrameToZoom();
    }
    saveZoomChoice(m_zoom);
    updateZoomChecks();
}

QMargins CMainFrame::decorationMargins() const
{
    QRect outer = frameGeometry();
    QRect inner = geometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
        outer.bottom() - inner.bottom()};
}

void CMainFrame::fitFrameToZoom()
{
    if (m_zoom.fullScreen || isFullScreen())
        return;
    // The bars and the decoration around the screen's area, as they are laid out now.
    if (layout() != nullptr)
        layout()->activate();
    QSize bars = size() - m_scroll->size();
    QMargins decoration = decorationMargins();
    QSize available = screen() != nullptr ? screen()->availableGeometry().size() : QSize();
    resize(frameOuterSize(m_zoom.factor, bars, decoration, available).shrunkBy(decoration));
}

void CMainFrame::followDecoration(bool always)
{
    if (m_zoom.fullScreen || isFullScreen())
        return;
    QMargins decoration = decorationMargins();
    if (!always && decoration == m_decoration)
        return;
    m_decoration = decoration;
    fitFrameToZoom();
}

void CMainFrame::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // The bars are laid out now: the frame takes its size around them.
    if (!event->spontaneous())
        followDecoration(true);
}

bool CMainFrame::event(QEvent* event)
{
    bool handled = QMainWindow::event(event);
    // The window system tells the decoration's size after the window appeared (a move or a resize
    // follows): the outer size is kept.
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        followDecoration(false);
    return handled;
}

} // namespace tessaly::desktop
