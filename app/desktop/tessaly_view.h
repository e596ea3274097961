// CTessalyView: the BASIC screen. It owns the one interpreter with its renderer, shows the
// composite plane at a whole zoom factor centred on black (on a high-density screen the application
// also rounds the device pixel ratio to a whole number, so each pixel becomes a sharp square of
// device pixels), blinks the caret, and hands the interpreter keys, clicks (mapped back through the
// zoom), focus and dropped files.
#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

#include "app/desktop/qt_host.h"
#include "app/desktop/screen_zoom.h"
#include "core/interpreter.h"
#include "screen/font.h"
#include "screen/renderer.h"

class QMenu;

namespace tessaly::desktop {

class CTessalyView : public QWidget {
    Q_OBJECT
public:
    CTessalyView(const screen::Font& font, QWidget* parent = nullptr);
    ~CTessalyView() override;

    core::Interpreter& interpreter() { return m_interpreter; }
    screen::Renderer& renderer() { return m_renderer; }
    QtHost& host() { return m_host; }
    // The pop-up menu of a right click (the frame provides it).
    void setPopupMenu(QMenu* menu) { m_popup = menu; }
    // Copies what changed on the composite to the window and places the caret.
    void refresh();
    [[nodiscard]] QSize sizeHint() const override;
    // Where the caret stands, in screen pixels (for tests and painting).
    [[nodiscard]] QRect caretRect() const { return m_caret; }

    // A fixed zoom factor (1 to 3): the view is at least that large. 0: the largest factor that
    // fits the view's size, as in full screen.
    void setZoom(int factor);
    [[nodiscard]] int chosenZoom() const { return m_chosenZoom; }
    // Where the screen is drawn now, and at what factor.
    [[nodiscard]] const ScreenPlacement& placement() const { return m_placement; }

signals:
    // Keys or clicks reached the interpreter: a program may have started.
    void inputHandled();
    void fileDropped(const QString& path);
    // Page Up, Page Down and Home move the scroll view: -1 a page up, 1 a page down, 0 the top left.
    void scrollRequested(int direction);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void afterInput();
    void placeCaret();
    void restartBlinking();
    void updatePlacement();

    QtHost m_host;
    core::Interpreter m_interpreter;
    screen::Renderer m_renderer;
    QMenu* m_popup = nullptr;
    QTimer m_blink;
    bool m_caretOn = true;
    int m_blinksLeft = 0;
    QRect m_caret;
    bool m_caretVisible = false;
    int m_chosenZoom = 1;
    ScreenPlacement m_placement;
    // The start-up benchmark's hook (TESSALY_EXIT_AFTER_FIRST_PAINT set): the process ends as soon
    // as the first paint has reached the window system, so that its run time is the time to it.
    bool m_exitAfterFirstPaint = false;
};

} // namespace tessaly::desktop
