// The frame's size and the screen's zoom: the frame's outer size, whole-pixel zoom factors centred
// on black, full screen, clicks mapped back through the zoom, and the choice kept between runs.
#include <QMenuBar>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolBar>

#include "app/desktop/screen_zoom.h"
#include "gui_fixture.h"

using namespace tessaly;
using namespace tessaly::desktop;
using test::Window;

namespace {

// The area of the frame's scroll area (the screen's room) in frame coordinates.
QRect screenRoom(Window& w)
{
    QWidget* room = w.frame().centralWidget();
    return QRect(room->mapTo(&w.frame(), QPoint(0, 0)), room->size());
}

// The first view pixel that is not black outside the screen, or (-1, -1).
QPoint firstNonBlackBorderPixel(const QImage& shown, const ScreenPlacement& placement)
{
    QRect screenArea = placement.screenArea();
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            if (!screenArea.contains(x, y) && (shown.pixel(x, y) & 0xFFFFFFu) != 0)
                return {x, y};
        }
    }
    return {-1, -1};
}

// The first screen pixel whose factor x factor block in the view differs from the composite (the
// caret's cell left out), or (-1, -1).
QPoint firstWrongBlock(Window& w, const QImage& shown)
{
    const auto& placement = w.view().placement();
    const auto& composite = w.view().renderer().composite();
    int f = placement.factor;
    QRect caret = w.view().caretRect();
    for (int y = 0; y < 400; ++y) {
        for (int x = 0; x < 640; ++x) {
            if (caret.contains(x, y))
                continue;
            for (int dy = 0; dy < f; ++dy) {
                for (int dx = 0; dx < f; ++dx) {
                    QPoint at = placement.origin + QPoint(x * f + dx, y * f + dy);
                    if ((shown.pixel(at) & 0xFFFFFFu) != composite.pixel(x, y))
                        return {x, y};
                }
            }
        }
    }
    return {-1, -1};
}

void drawSomething(Window& w)
{
    // Blue page, a red diagonal, text: neighbouring pixels differ, so a shifted block shows.
    w.typeLine(QStringLiteral("LINE (0,0)-(639,399),1,BF"));
    w.typeLine(QStringLiteral("LINE (0,0)-(639,399),2"));
    w.typeLine(QStringLiteral("PRINT \"ZOOM\""));
}

} // namespace

class ZoomTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { test::isolateSettings(); }
    // Every case starts from 1x in a window, whatever the one before chose.
    void init() { saveZoomChoice(ZoomChoice {}); }

    void placementOfTheScreen_data()
    {
        QTest::addColumn<QSize>("area");
        QTest::addColumn<int>("factor"); // 0: the largest that fits
        QTest::addColumn<int>("placed");
        QTest::addColumn<QPoint>("origin");
        QTest::newRow("exact 1x") << QSize(640, 400) << 1 << 1 << QPoint(0, 0);
        QTest::newRow("1x centred") << QSize(661, 421) << 1 << 1 << QPoint(10, 10);
        QTest::newRow("2x in a small view") << QSize(700, 500) << 2 << 2 << QPoint(0, 0);
        QTest::newRow("fit: 1 below 2x") << QSize(1279, 800) << 0 << 1 << QPoint(319, 200);
        QTest::newRow("fit: 2x exactly") << QSize(1280, 800) << 0 << 2 << QPoint(0, 0);
        QTest::newRow("fit: 1920 x 1080") << QSize(1920, 1080) << 0 << 2 << QPoint(320, 140);
        QTest::newRow("fit: 2560 x 1440") << QSize(2560, 1440) << 0 << 3 << QPoint(320, 120);
        QTest::newRow("fit: 3840 x 2160") << QSize(3840, 2160) << 0 << 5 << QPoint(320, 80);
        QTest::newRow("fit: smaller than 1x") << QSize(600, 300) << 0 << 1 << QPoint(0, 0);
    }

    void placementOfTheScreen()
    {
        QFETCH(QSize, area);
        QFETCH(int, factor);
        QFETCH(int, placed);
        QFETCH(QPoint, origin);
        auto placement = placeScreen(area, factor == 0 ? largestFittingZoom(area) : factor);
        QCOMPARE(placement.factor, placed);
        QCOMPARE(placement.origin, origin);
    }

    void viewPointsMapToScreenPixels()
    {
        auto placement = placeScreen(QSize(1300, 820), 2); // origin (10, 10)
        QPoint at;
        QVERIFY(placement.toScreen(QPoint(10, 10), at));
        QCOMPARE(at, QPoint(0, 0));
        QVERIFY(placement.toScreen(QPoint(11, 11), at));
        QCOMPARE(at, QPoint(0, 0));
        QVERIFY(placement.toScreen(QPoint(12, 13), at));
        QCOMPARE(at, QPoint(1, 1));
        QVERIFY(placement.toScreen(QPoint(1289, 809), at));
        QCOMPARE(at, QPoint(639, 399));
        QVERIFY(!placement.toScreen(QPoint(9, 100), at));
        QVERIFY(!placement.toScreen(QPoint(1290, 100), at));
        QVERIFY(!placement.toScreen(QPoint(100, 810), at));
        QCOMPARE(placement.toView(QRect(8, 16, 8, 13)), QRect(26, 42, 16, 26));
        // A view rectangle is covered by whole screen pixels, clipped to the screen.
        QCOMPARE(placement.screenPixelsUnder(QRect(11, 11, 2, 2)), QRect(0, 0, 2, 2));
        QCOMPARE(placement.screenPixelsUnder(QRect(0, 0, 13, 13)), QRect(0, 0, 2, 2));
        QCOMPARE(placement.screenPixelsUnder(QRect(0, 0, 1300, 820)), QRect(0, 0, 640, 400));
        QVERIFY(placement.screenPixelsUnder(QRect(0, 0, 10, 820)).isEmpty());
    }

    void theFramesOuterSize_data()
    {
        QTest::addColumn<int>("factor");
        QTest::addColumn<QSize>("bars");
        QTest::addColumn<QMargins>("decoration");
        QTest::addColumn<QSize>("available");
        QTest::addColumn<QSize>("outer");
        const QMargins none;
        const QMargins thin(4, 30, 4, 4);
        const QSize large(3000, 2000);
        QTest::newRow("1x: the start-up's size") << 1 << QSize(0, 70) << thin << large << QSize(665, 506);
        QTest::newRow("1x: taller bars grow it") << 1 << QSize(0, 110) << thin << large << QSize(665, 544);
        QTest::newRow("1x: no decoration") << 1 << QSize(0, 106) << none << large << QSize(665, 506);
        QTest::newRow("2x: around the screen") << 2 << QSize(0, 90) << thin << large << QSize(1288, 924);
        QTest::newRow("3x: around the screen") << 3 << QSize(2, 90) << thin << large << QSize(1930, 1324);
        QTest::newRow("3x: no more than the display") << 3 << QSize(0, 90) << thin << QSize(1366, 740) << QSize(1366, 740);
        QTest::newRow("no display known") << 3 << QSize(0, 90) << thin << QSize() << QSize(1928, 1324);
    }

    void theFramesOuterSize()
    {
        QFETCH(int, factor);
        QFETCH(QSize, bars);
        QFETCH(QMargins, decoration);
        QFETCH(QSize, available);
        QFETCH(QSize, outer);
        QCOMPARE(frameOuterSize(factor, bars, decoration, available), outer);
    }

    void theFrameStaysOnTheDisplay_data()
    {
        QTest::addColumn<QPoint>("corner");
        QTest::addColumn<QSize>("outer");
        QTest::addColumn<QRect>("available");
        QTest::addColumn<QPoint>("kept");
        const QRect display(0, 0, 1920, 1050);
        QTest::newRow("inside") << QPoint(99, 75) << QSize(665, 506) << display << QPoint(99, 75);
        QTest::newRow("past the right") << QPoint(1500, 75) << QSize(665, 506) << display << QPoint(1255, 75);
        QTest::newRow("past the bottom") << QPoint(99, 75) << QSize(1290, 1000) << display << QPoint(99, 50);
        QTest::newRow("larger than the display") << QPoint(99, 75) << QSize(2000, 1100) << display << QPoint(0, 0);
        QTest::newRow("a panel on the left") << QPoint(10, 75) << QSize(665, 506) << QRect(64, 0, 1856, 1080)
                                             << QPoint(64, 75);
        QTest::newRow("no display known") << QPoint(1500, 75) << QSize(665, 506) << QRect() << QPoint(1500, 75);
    }

    void theFrameStaysOnTheDisplay()
    {
        QFETCH(QPoint, corner);
        QFETCH(QSize, outer);
        QFETCH(QRect, available);
        QFETCH(QPoint, kept);
        QCOMPARE(frameCornerWithin(corner, outer, available), kept);
    }

    // The decoration included, the frame is 665 x 506 at (99, 75); the screen's room around the
    // 640 x 400 screen is black, with no strips of the window's grey.
    void theFramesOuterSizeAndNoGreyStrips()
    {
        Window w;
        QVERIFY(w.started);
        QRect outer = w.frame().frameGeometry();
        QRect room = screenRoom(w);
        QVERIFY(outer.size().width() >= 665 && outer.size().height() >= 506);
        QCOMPARE(outer.topLeft(), QPoint(99, 75));
        // Grown only where the bars leave less than the screen needs.
        if (room.width() > 640)
            QCOMPARE(outer.width(), 665);
        if (room.height() > 400)
            QCOMPARE(outer.height(), 506);
        QVERIFY(room.width() >= 640 && room.height() >= 400);
        QVERIFY(w.frame().geometry() != outer); // the window system's decoration is known here
        QCOMPARE(w.view().size(), room.size());
        QCOMPARE(w.view().placement().factor, 1);
        drawSomething(w);
        QImage shown = w.view().grab().toImage();
        QCOMPARE(firstNonBlackBorderPixel(shown, w.view().placement()), QPoint(-1, -1));
        QCOMPARE(firstWrongBlock(w, shown), QPoint(-1, -1));
    }

    // At 2x each screen pixel is a 2 x 2 block, the frame fits around the screen, and clicks land on
    // the cell under them.
    void twiceTheSizeDrawsBlocksAndFitsTheFrame()
    {
        Window w;
        QSize startSize = w.frame().frameGeometry().size();
        QSize bars = w.frame().size() - w.frame().centralWidget()->size();
        QMargins decoration(w.frame().geometry().left() - w.frame().frameGeometry().left(),
            w.frame().geometry().top() - w.frame().frameGeometry().top(),
            w.frame().frameGeometry().right() - w.frame().geometry().right(),
            w.frame().frameGeometry().bottom() - w.frame().geometry().bottom());
        QTest::keyClick(&w.view(), Qt::Key_2, Qt::ControlModifier);
        QApplication::processEvents();
        QCOMPARE(w.frame().zoomChoice().factor, 2);
        QVERIFY(w.frame().action(cmd::kZoom2)->isChecked());
        QVERIFY(!w.frame().action(cmd::kZoom1)->isChecked());
        // The key typed nothing.
        QCOMPARE(w.row(0), QString());
        QCOMPARE(w.frame().centralWidget()->size(), QSize(1280, 800));
        QCOMPARE(w.frame().size(), QSize(1280, 800) + bars);
        QCOMPARE(w.frame().frameGeometry().size(), (QSize(1280, 800) + bars).grownBy(decoration));
        QCOMPARE(w.view().placement().factor, 2);
        QCOMPARE(w.view().placement().origin, QPoint(0, 0));
        drawSomething(w);
        QImage shown = w.view().grab().toImage();
        QCOMPARE(shown.size(), QSize(1280, 800));
        QCOMPARE(firstWrongBlock(w, shown), QPoint(-1, -1));
        // The caret is drawn twice as large over its cell.
        QCOMPARE(static_cast<QWidget&>(w.view()).inputMethodQuery(Qt::ImCursorRectangle).toRect(),
            w.view().placement().toView(w.view().caretRect()));

        // PEN sees screen pixels too.
        w.typeLine(QStringLiteral("10 ON PEN GOSUB 100:PEN ON"));
        w.typeLine(QStringLiteral("20 IF P=0 THEN 20"));
        w.typeLine(QStringLiteral("30 PRINT PEN(1);PEN(2):END"));
        w.typeLine(QStringLiteral("100 P=1:RETURN"));
        QTest::keyClicks(&w.view(), QStringLiteral("RUN"));
        QTest::keyClick(&w.view(), Qt::Key_Return);
        QVERIFY(!w.settle(5));
        QTest::mouseClick(&w.view(), Qt::LeftButton, {}, QPoint(2 * 300 + 1, 2 * 200 + 1));
        QVERIFY(w.settle());
        bool found = false;
        for (int r = 0; r < 25; ++r)
            found = found || w.row(r).endsWith(QStringLiteral(" 300  200")); // printed where the click put the cursor
        QVERIFY(found);
        // A click at the view pixel (2 * (8 * 5 + 3), 2 * (16 * 3 + 7)) is on column 5 of row 3: the
        // editor's cursor goes there.
        QTest::mouseClick(&w.view(), Qt::LeftButton, {}, QPoint(2 * (8 * 5 + 3), 2 * (16 * 3 + 7)));
        QCOMPARE(w.interpreter().screen().cursorColumn(), 5);
        QCOMPARE(w.interpreter().screen().cursorRow(), 3);

        // Back to 1x: the frame is the start-up's again.
        w.frame().action(cmd::kZoom1)->trigger();
        QCOMPARE(w.frame().frameGeometry().size(), startSize);
        QCOMPARE(w.view().placement().factor, 1);
    }

    // Full screen: the screen alone at the largest factor that fits, centred on black; a click on
    // the black border is no click on the screen; F11 brings the window back as it was.
    void fullScreenShowsTheScreenAlone()
    {
        Window w;
        QRect before = w.frame().frameGeometry();
        w.frame().action(cmd::kZoom2)->trigger();
        QTest::keyClick(&w.view(), Qt::Key_F11);
        QApplication::processEvents();
        QVERIFY(w.frame().isFullScreen());
        QVERIFY(w.frame().action(cmd::kFullScreen)->isChecked());
        QVERIFY(!w.frame().menuBar()->isVisible());
        QVERIFY(!w.frame().toolBar()->isVisible());
        QVERIFY(!w.frame().statusBar()->isVisible());
        // The test's display is 2000 x 1300: 3x, with a black border of 40 and 50 pixels.
        QCOMPARE(w.view().size(), QSize(2000, 1300));
        QCOMPARE(w.view().placement().factor, 3);
        QCOMPARE(w.view().placement().origin, QPoint(40, 50));
        drawSomething(w);
        QImage shown = w.view().grab().toImage();
        QCOMPARE(firstNonBlackBorderPixel(shown, w.view().placement()), QPoint(-1, -1));
        QCOMPARE(firstWrongBlock(w, shown), QPoint(-1, -1));
        int f = w.view().placement().factor;
        QPoint origin = w.view().placement().origin;
        QTest::mouseClick(&w.view(), Qt::LeftButton, {}, origin + QPoint(f * (8 * 7 + 1), f * (16 * 2 + 1)));
        QCOMPARE(w.interpreter().screen().cursorColumn(), 7);
        QCOMPARE(w.interpreter().screen().cursorRow(), 2);
        QTest::mouseClick(&w.view(), Qt::LeftButton, {}, QPoint(origin.x() - 1, origin.y() + 20));
        QCOMPARE(w.interpreter().screen().cursorColumn(), 7);
        QCOMPARE(w.interpreter().screen().cursorRow(), 2);

        QTest::keyClick(&w.view(), Qt::Key_F11);
        QApplication::processEvents();
        QVERIFY(!w.frame().isFullScreen());
        QVERIFY(w.frame().menuBar()->isVisible());
        QVERIFY(w.frame().toolBar()->isVisible());
        QVERIFY(w.frame().statusBar()->isVisible());
        QCOMPARE(w.view().placement().factor, 2);
        QCOMPARE(w.frame().centralWidget()->size(), QSize(1280, 800));
        QVERIFY(w.frame().frameGeometry() != before);
        // A bar hidden before full screen stays hidden after it.
        w.frame().runCommand(cmd::kViewStatusBar);
        w.frame().setFullScreen(true);
        QApplication::processEvents();
        w.frame().setFullScreen(false);
        QApplication::processEvents();
        QVERIFY(!w.frame().statusBar()->isVisible());
        QVERIFY(w.frame().toolBar()->isVisible());
        // Full screen entered and left by the window system: the bars and the zoom follow.
        w.frame().setWindowState(Qt::WindowFullScreen);
        QVERIFY(w.frame().action(cmd::kFullScreen)->isChecked());
        QVERIFY(!w.frame().menuBar()->isVisible());
        QTRY_COMPARE(w.view().placement().factor, 3);
        w.frame().showNormal();
        QApplication::processEvents();
        QVERIFY(!w.frame().action(cmd::kFullScreen)->isChecked());
        QVERIFY(w.frame().menuBar()->isVisible());
        QCOMPARE(w.view().placement().factor, 2);
        QCOMPARE(w.frame().centralWidget()->size(), QSize(1280, 800));
        // A zoom chosen in full screen ends it.
        w.frame().setFullScreen(true);
        w.frame().action(cmd::kZoom3)->trigger();
        QVERIFY(!w.frame().isFullScreen());
        QCOMPARE(w.view().placement().factor, 3);
    }

    // The choice is kept in the settings store and comes back with the next window.
    void theChoiceSurvivesARestart()
    {
        {
            Window w;
            w.frame().setZoom(2);
        }
        {
            Window w;
            QCOMPARE(w.frame().zoomChoice().factor, 2);
            QVERIFY(w.frame().action(cmd::kZoom2)->isChecked());
            QCOMPARE(w.view().placement().factor, 2);
            QCOMPARE(w.frame().centralWidget()->size(), QSize(1280, 800));
            w.frame().setFullScreen(true);
        }
        {
            Window w;
            QVERIFY(w.frame().isFullScreen());
            QVERIFY(!w.frame().menuBar()->isVisible());
            QCOMPARE(w.view().placement().factor, largestFittingZoom(w.view().size()));
            w.frame().setFullScreen(false);
            QCOMPARE(w.view().placement().factor, 2);
            QCOMPARE(w.frame().centralWidget()->size(), QSize(1280, 800));
        }
        // A value the window does not know counts as 1x.
        QSettings().setValue(QStringLiteral("View/Zoom"), 9);
        QCOMPARE(loadZoomChoice().factor, 1);
        QSettings().setValue(QStringLiteral("View/Zoom"), QStringLiteral("big"));
        QCOMPARE(loadZoomChoice().factor, 1);
    }
};

QTEST_MAIN(ZoomTest)
#include "screen/text_screen.h"
#include "zoom_guitest.moc"
