// The screen window: painting, caret, keyboard, mouse, focus and drops.
#include "app/desktop/tessaly_view.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QRegion>
#include <QResizeEvent>
#include <QWindow>
#include <algorithm>
#include <cstdlib>

#include "app/desktop/virtual_keys.h"
#include "screen/colours.h"
#include "screen/function_keys.h"
#include "screen/graphics.h"
#include "screen/screen_editor.h"
#include "screen/text_screen.h"

namespace tessaly::desktop {

namespace {
// As desktop carets do, the caret stops blinking (and stays on) after about ten seconds without
// input, so that a window left alone costs nothing.
constexpr int kBlinksBeforeRest = 20;
} // namespace

CTessalyView::CTessalyView(const screen::Font& font, QWidget* parent)
    : QWidget(parent)
    , m_interpreter(m_host)
    , m_renderer(font, m_interpreter.colours(), m_interpreter.functionKeys(), m_interpreter.graphics())
{
    m_interpreter.setRenderer(&m_renderer);
    m_host.setPrinterFont(&font);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAcceptDrops(true);
    m_exitAfterFirstPaint = qEnvironmentVariableIsSet("TESSALY_EXIT_AFTER_FIRST_PAINT");
    connect(&m_host, &QtHost::timerFired, this, [this](core::TimerId id) {
        m_interpreter.onTimer(id);
        afterInput();
    });
    // The caret blinks as the desktop's text carets do.
    int flash = QApplication::cursorFlashTime();
    if (flash > 0) {
        m_blink.setInterval(flash / 2);
        connect(&m_blink, &QTimer::timeout, this, [this] {
            m_caretOn = !m_caretOn || m_blinksLeft <= 0;
            if (--m_blinksLeft <= 0 && m_caretOn)
                m_blink.stop();
            update(m_placement.toView(m_caret));
        });
    }
    setZoom(1);
    placeCaret();
}

CTessalyView::~CTessalyView() { m_interpreter.setRenderer(nullptr); }

QSize CTessalyView::sizeHint() const { return zoomedScreenSize(std::max(1, m_chosenZoom)); }

void CTessalyView::setZoom(int factor)
{
    m_chosenZoom = factor == 0 ? 0 : std::clamp(factor, kMinZoom, kMaxZoom);
    setMinimumSize(sizeHint());
    updateGeometry();
    updatePlacement();
}

void CTessalyView::updatePlacement()
{
    int factor = m_chosenZoom == 0 ? largestFittingZoom(size()) : m_chosenZoom;
    ScreenPlacement placement = placeScreen(size(), factor);
    if (placement.factor != m_placement.factor || placement.origin != m_placement.origin) {
        m_placement = placement;
        update();
    }
}

void CTessalyView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    updatePlacement();
}

void CTessalyView::refresh()
{
    screen::Rect damage = m_renderer.takeWindowDamage();
    if (!damage.empty())
        update(m_placement.toView(QRect(damage.left, damage.top, damage.right - damage.left, damage.bottom - damage.top)));
    placeCaret();
}

void CTessalyView::placeCaret()
{
    auto& editor = m_interpreter.editor();
    auto caret = m_interpreter.screen().ShowCursor(editor.editMode < 0);
    // The caret's cell row starts at y; it covers the upper part of the cell.
    QRect rect(caret.x, caret.y, caret.width, caret.height);
    bool visible = caret.visible && !m_interpreter.isRunning();
    if (rect != m_caret || visible != m_caretVisible) {
        update(m_placement.toView(m_caret));
        m_caret = rect;
        m_caretVisible = visible;
        update(m_placement.toView(m_caret));
        restartBlinking();
    }
    if (!m_caretVisible)
        m_blink.stop();
}

void CTessalyView::restartBlinking()
{
    m_caretOn = true;
    m_blinksLeft = kBlinksBeforeRest;
    if (m_blink.interval() > 0 && hasFocus() && m_caretVisible)
        m_blink.start();
}

void CTessalyView::paintEvent(QPaintEvent* event)
{
    const screen::Plane& composite = m_renderer.composite();
    QImage image(reinterpret_cast<const uchar*>(composite.row(0)), composite.width(), composite.height(),
        composite.width() * static_cast<int>(sizeof(screen::Pixel)), QImage::Format_RGB32);
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    // Around the screen: black.
    QRegion border = QRegion(event->rect()) - QRegion(m_placement.screenArea());
    for (const QRect& strip : border)
        painter.fillRect(strip, Qt::black);
    // Whole screen pixels, each drawn as a square of factor x factor view pixels.
    QRect source = m_placement.screenPixelsUnder(event->rect());
    if (!source.isEmpty())
        painter.drawImage(m_placement.toView(source), image, source);
    if (m_caretVisible && m_caretOn && hasFocus()) {
        painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
        painter.fillRect(m_placement.toView(m_caret), Qt::white);
    }
    if (m_exitAfterFirstPaint) {
        m_exitAfterFirstPaint = false;
        // Once the event loop has flushed this paint to the window system.
        QTimer::singleShot(0, [] { std::_Exit(0); });
    }
}

void CTessalyView::keyPressEvent(QKeyEvent* event)
{
    // Ctrl+C, Ctrl+V, Ctrl+X, Ctrl+Z and their other forms are bound to commands that nothing
    // takes: the key press does nothing (the release still reaches the editor, so Ctrl+C stops
    // a program as the STOP key).
    if (isInertAccelerator(*event))
        return;
    if (int key = virtualKeyFor(event->key()))
        m_interpreter.onKeyDown(key);
    for (char byte : characterBytesFor(*event))
        m_interpreter.onChar(static_cast<unsigned char>(byte));
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        emit scrollRequested(event->key() == Qt::Key_PageUp ? -1 : 1);
    else if (event->key() == Qt::Key_Home)
        emit scrollRequested(0);
    afterInput();
}

void CTessalyView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->isAutoRepeat())
        return;
    if (int key = virtualKeyFor(event->key()))
        m_interpreter.onKeyUp(key);
    afterInput();
}

void CTessalyView::inputMethodEvent(QInputMethodEvent* event)
{
    // Committed Japanese text arrives as its code page 932 bytes, one character message each.
    for (char byte : shiftJisOf(event->commitString()))
        m_interpreter.onChar(static_cast<unsigned char>(byte));
    event->accept();
    afterInput();
}

QVariant CTessalyView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (query == Qt::ImCursorRectangle)
        return m_placement.toView(m_caret);
    if (query == Qt::ImEnabled)
        return true;
    return QWidget::inputMethodQuery(query);
}

void CTessalyView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    // A click on the black border around the screen is no click on the screen.
    QPoint at;
    if (!m_placement.toScreen(event->position().toPoint(), at))
        return;
    m_interpreter.onLeftButtonDown(at.x(), at.y());
    afterInput();
}

void CTessalyView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton && m_popup != nullptr)
        m_popup->popup(mapToGlobal(event->position().toPoint()));
}

void CTessalyView::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    // Back to the front: the whole screen is composed again from the planes.
    m_renderer.focusGained();
    refresh();
    restartBlinking();
}

void CTessalyView::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    m_blink.stop();
    update(m_placement.toView(m_caret));
}

void CTessalyView::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void CTessalyView::dropEvent(QDropEvent* event)
{
    const auto urls = event->mimeData()->urls();
    // The first dropped file is loaded.
    for (const auto& url : urls) {
        if (url.isLocalFile()) {
            event->acceptProposedAction();
            emit fileDropped(url.toLocalFile());
            return;
        }
    }
}

bool CTessalyView::focusNextPrevChild(bool next)
{
    // TAB belongs to the editor, not to focus changes.
    (void)next;
    return false;
}

void CTessalyView::afterInput()
{
    m_interpreter.idle();
    refresh();
    restartBlinking();
    emit inputHandled();
}

} // namespace tessaly::desktop
