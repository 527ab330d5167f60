// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "testenv.h"
#include "veleditview.h"

#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <memory>

using namespace EditGeometry;

Q_DECLARE_METATYPE(EditGeometry::MouseType)

namespace {

// A 500 x 400 window with a 400 x 300 canvas at (50, 50) and the box on the canvas, shown under
// the offscreen platform, so pointer positions pass through real window coordinates.
struct Scene
{
    QWidget window;
    QWidget *canvas;
    VelEditView *box;

    explicit Scene(const QRectF &frame)
    {
        window.resize(500, 400);
        canvas = new QWidget(&window);
        canvas->setGeometry(50, 50, 400, 300);
        box = new VelEditView(frame, canvas);
        window.show();
    }

    // The box widget's pixel whose centre is the given canvas point (y up). Points are given at
    // pixel centres (x.5) so the answer is exact.
    QPoint boxPixelForCanvasPoint(QPointF canvasPoint) const
    {
        const QPointF down = flipped(canvasPoint, canvas->height());
        return QPoint(int(std::floor(down.x())), int(std::floor(down.y()))) - box->pos();
    }
    // The same for a box-local point (y up).
    QPoint boxPixel(QPointF local) const
    {
        return boxPixelForCanvasPoint(box->frame().topLeft() + local);
    }
    // The y-up window coordinates the box should see for a pixel of its own widget.
    QPointF windowPointOf(QPoint boxPixel) const
    {
        const QPoint inWindow = box->mapTo(&window, boxPixel);
        return QPointF(inWindow.x() + 0.5, window.height() - (inWindow.y() + 0.5));
    }
};

void press(VelEditView *box, QPoint pos)
{
    QTest::mousePress(box, Qt::LeftButton, {}, pos);
}
// With the button down the test library sends moves straight to the box, as Qt's implicit grab
// does for a real pointer, wherever the pointer is.
void drag(VelEditView *box, QPoint pos)
{
    QTest::mouseMove(box, pos);
}
// A drag step with keys held, sent as the window would (the test library's moves carry none).
void dragWith(VelEditView *box, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    QMouseEvent move(QEvent::MouseMove, pos, box->mapToGlobal(pos), Qt::NoButton, Qt::LeftButton,
                     modifiers);
    QApplication::sendEvent(box, &move);
}
void release(VelEditView *box, QPoint pos)
{
    QTest::mouseRelease(box, Qt::LeftButton, {}, pos);
}
// Without a button the pointer itself moves, and the window delivers enter, move and leave.
void hover(VelEditView *box, QPoint pos)
{
    QTest::mouseMove(box, pos);
}

const QRectF standardFrame(100, 50, 100, 50);

bool sameImage(QImage a, QImage b)
{
    return a.convertToFormat(QImage::Format_ARGB32) == b.convertToFormat(QImage::Format_ARGB32);
}

int ink(const QImage &image, int x, int y)
{
    return qAlpha(image.pixel(x, y));
}

} // namespace

class TestVelEditView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void minimumSizeAtCreation_data();
    void minimumSizeAtCreation();
    void areasFollowEveryFrameChange();
    void widgetCoversTheFrameFlipped();

    void hoverCursorPerArea_data();
    void hoverCursorPerArea();
    void leavingTheBoxShowsTheArrow();
    void gapBetweenHandlesIsNone();
    void cursorOutsideOneToNineIsTheArrow_data();
    void cursorOutsideOneToNineIsTheArrow();

    void pressInsideTheBox();
    void dragMovesTheBoxWithYUp();
    void dragHandlePastTheCanvasEdge();
    void stepsOutsideTheCanvasAreIgnored();
    void releaseWithoutMoving();
    void zeroStepStillAnnounces();
    void box21WideTopHandleMoves();
    void box15x15OverlapPressesTheEdgeHandle();
    void pressInAGapKeepsTheType();
    void releaseOutsideTheBoxResetsTheType();
    void typeStaysFrozenWhileTheButtonIsDown();
    void notificationsAreSynchronous();
    void otherButtonsAreIgnored();
    void noCanvasNoDrag();

    void identifierAndIsChange();
    void dragIconIsACrossOfArrows();
    void resizeIconsAreMirrorImages();
};

void TestVelEditView::initTestCase()
{
    TestEnv::isolate();
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("offscreen"));
}

// A test that ends with the button down must not leave the test library's button state set for
// the next one, or its hovering would turn into dragging.
void TestVelEditView::cleanup()
{
    struct Sink : QWidget
    {
        void mouseReleaseEvent(QMouseEvent *event) override { event->accept(); }
    } sink;
    QTest::mouseRelease(&sink, Qt::LeftButton, {}, QPoint(1, 1));
}

void TestVelEditView::minimumSizeAtCreation_data()
{
    QTest::addColumn<QRectF>("frame");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("10 x 40 becomes 15 x 40") << QRectF(5, 6, 10, 40) << QRectF(5, 6, 15, 40);
    QTest::newRow("40 x 10 becomes 40 x 15") << QRectF(5, 6, 40, 10) << QRectF(5, 6, 40, 15);
    QTest::newRow("5 x 5 becomes 15 x 15") << QRectF(5, 6, 5, 5) << QRectF(5, 6, 15, 15);
    QTest::newRow("20 x 30 stays") << QRectF(5, 6, 20, 30) << QRectF(5, 6, 20, 30);
}

void TestVelEditView::minimumSizeAtCreation()
{
    QFETCH(QRectF, frame);
    QFETCH(QRectF, expected);
    QWidget canvas;
    canvas.resize(200, 100);
    VelEditView box(frame, &canvas);
    QCOMPARE(box.frame(), expected);
    QCOMPARE(box.size(), expected.size().toSize());
    // The areas were built for the corrected size.
    QCOMPARE(box.trackingAreas(), hitAreas(expected.size()));
}

void TestVelEditView::areasFollowEveryFrameChange()
{
    VelEditView plain;
    QCOMPARE(plain.frame(), QRectF(0, 0, 15, 15));
    QCOMPARE(plain.trackingAreas()[0], QRectF(7, 7, 1, 1));

    QWidget canvas;
    canvas.resize(200, 100);
    VelEditView box(QRectF(10, 10, 50, 40), &canvas);
    box.setFrame(QRectF(20, 30, 80, 21));
    QCOMPARE(box.trackingAreas(), hitAreas(QSizeF(80, 21)));
    box.refreshArea(QRectF(0, 0, 30, 30), trackBoxSize);
    QCOMPARE(box.trackingAreas(), hitAreas(QSizeF(30, 30)));
    box.forceRefreshLayout();
    QCOMPARE(box.trackingAreas(), hitAreas(QSizeF(80, 21)));
}

void TestVelEditView::widgetCoversTheFrameFlipped()
{
    QWidget canvas;
    canvas.resize(200, 100);
    VelEditView box(QRectF(20, 10, 160, 30), &canvas);
    // y up on a 100-high canvas: the box's top edge is 40 above the bottom, 60 below the top.
    QCOMPARE(box.geometry(), QRect(20, 60, 160, 30));
    box.setFrame(QRectF(20.5, 10.25, 100, 30));
    QCOMPARE(box.geometry(), QRect(20, 59, 101, 31));
}

void TestVelEditView::hoverCursorPerArea_data()
{
    QTest::addColumn<QPointF>("local");
    QTest::addColumn<MouseType>("type");
    QTest::addColumn<int>("shape");
    QTest::addColumn<QImage>("image");

    const int bitmap = Qt::BitmapCursor;
    const QImage none;
    // The standard 100 x 50 box: handles are 7 x 7 in the corners and edge middles.
    QTest::newRow("interior: drawn cross")
        << QPointF(50.5, 25.5) << MouseTypeMove << bitmap << VelEditView::drawDragIcon();
    QTest::newRow("left handle: horizontal resize")
        << QPointF(3.5, 25.5) << MouseTypeLeft << int(Qt::SizeHorCursor) << none;
    QTest::newRow("right handle: horizontal resize")
        << QPointF(96.5, 25.5) << MouseTypeRight << int(Qt::SizeHorCursor) << none;
    QTest::newRow("top handle: vertical resize")
        << QPointF(50.5, 46.5) << MouseTypeTop << int(Qt::SizeVerCursor) << none;
    QTest::newRow("bottom handle: vertical resize")
        << QPointF(50.5, 3.5) << MouseTypeBottom << int(Qt::SizeVerCursor) << none;
    QTest::newRow("top-left corner: drawn res1")
        << QPointF(3.5, 46.5) << MouseTypeTopLeft << bitmap << VelEditView::drawRes1Icon();
    QTest::newRow("top-right corner: drawn res2")
        << QPointF(96.5, 46.5) << MouseTypeTopRight << bitmap << VelEditView::drawRes2Icon();
    QTest::newRow("bottom-left corner: drawn res2")
        << QPointF(3.5, 3.5) << MouseTypeBottomLeft << bitmap << VelEditView::drawRes2Icon();
    QTest::newRow("bottom-right corner: drawn res1")
        << QPointF(96.5, 3.5) << MouseTypeBottomRight << bitmap << VelEditView::drawRes1Icon();
}

void TestVelEditView::hoverCursorPerArea()
{
    QFETCH(QPointF, local);
    QFETCH(MouseType, type);
    QFETCH(int, shape);
    QFETCH(QImage, image);

    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    hover(scene.box, scene.boxPixel(local));
    QCOMPARE(scene.box->mouseType(), int(type));
    const QCursor cursor = scene.box->cursor();
    QCOMPARE(int(cursor.shape()), shape);
    if (shape == Qt::BitmapCursor) {
        QVERIFY(sameImage(cursor.pixmap().toImage(), image));
        QCOMPARE(cursor.hotSpot(), QPoint(8, 8));
    }
}

void TestVelEditView::leavingTheBoxShowsTheArrow()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    hover(scene.box, scene.boxPixel({96.5, 25.5}));
    QCOMPARE(scene.box->mouseType(), int(MouseTypeRight));
    QCOMPARE(scene.box->cursor().shape(), Qt::SizeHorCursor);

    hover(scene.box, scene.boxPixelForCanvasPoint({300.5, 150.5}));
    QCOMPARE(scene.box->mouseType(), int(MouseTypeNone));
    QCOMPARE(scene.box->cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(scene.canvas->cursor().shape(), Qt::ArrowCursor);
}

void TestVelEditView::gapBetweenHandlesIsNone()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    hover(scene.box, scene.boxPixel({3.5, 3.5}));
    QCOMPARE(scene.box->mouseType(), int(MouseTypeBottomLeft));
    hover(scene.box, scene.boxPixel({20.5, 3.5}));
    QCOMPARE(scene.box->mouseType(), int(MouseTypeNone));
    QCOMPARE(scene.box->cursor().shape(), Qt::ArrowCursor);
}

void TestVelEditView::cursorOutsideOneToNineIsTheArrow_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("none") << 0;
    QTest::newRow("ten") << 10;
    QTest::newRow("negative") << -3;
}

void TestVelEditView::cursorOutsideOneToNineIsTheArrow()
{
    QFETCH(int, type);
    QCOMPARE(VelEditView::cursorForMouseType(type).shape(), Qt::ArrowCursor);
}

void TestVelEditView::pressInsideTheBox()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    const QPoint at = scene.boxPixel({50.5, 25.5});
    press(scene.box, at);
    QVERIFY(scene.box->isMouseDown());
    QCOMPARE(scene.box->mouseType(), int(MouseTypeMove));
    // Window coordinates, y up: canvas at x 50, its bottom 50 above the window's bottom; the box
    // at (100, 50) on it.
    QCOMPARE(scene.box->orgPoint(), QPointF(50 + 100 + 50.5, 50 + 50 + 25.5));
    QCOMPARE(scene.box->orgPoint(), scene.windowPointOf(at));
    QCOMPARE(scene.box->cursor().shape(), Qt::BitmapCursor);
    QVERIFY(!scene.box->isChange());
}

void TestVelEditView::dragMovesTheBoxWithYUp()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QSignalSpy changed(scene.box, &VelEditView::EditViewChangeNotification);
    const QPoint at = scene.boxPixel({50.5, 25.5});
    press(scene.box, at);
    // Right 10 and down 5 on screen: down is towards y 0 in the box's coordinates.
    drag(scene.box, at + QPoint(10, 5));
    QCOMPARE(scene.box->frame(), QRectF(110, 45, 100, 50));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).value<VelEditView *>(), scene.box);
    QVERIFY(scene.box->isChange());
    QCOMPARE(scene.box->orgPoint(), QPointF(50 + 100 + 50.5 + 10, 50 + 50 + 25.5 - 5));
    // The widget followed: 10 right, 5 down.
    QCOMPARE(scene.box->geometry(), QRect(110, 205, 100, 50));
}

void TestVelEditView::dragHandlePastTheCanvasEdge()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QSignalSpy changed(scene.box, &VelEditView::EditViewChangeNotification);
    press(scene.box, scene.boxPixel({96.5, 25.5}));
    QCOMPARE(scene.box->mouseType(), int(MouseTypeRight));

    // To the canvas's last column: the pointer went 203 right, the right edge stops at 400.
    drag(scene.box, scene.boxPixelForCanvasPoint({399.5, 75.5}));
    QCOMPARE(scene.box->frame(), QRectF(100, 50, 300, 50));
    QCOMPARE(changed.count(), 1);

    // Past the canvas's right edge: no step at all.
    const QPointF org = scene.box->orgPoint();
    drag(scene.box, scene.boxPixelForCanvasPoint({420.5, 75.5}));
    QCOMPARE(scene.box->frame(), QRectF(100, 50, 300, 50));
    QCOMPARE(scene.box->orgPoint(), org);
    QCOMPARE(changed.count(), 1);
}

void TestVelEditView::stepsOutsideTheCanvasAreIgnored()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QSignalSpy changed(scene.box, &VelEditView::EditViewChangeNotification);
    const QPoint at = scene.boxPixel({50.5, 25.5});
    press(scene.box, at);
    const QPointF org = scene.box->orgPoint();

    // Above the canvas (inside the window) and left of it: ignored, the origin stays.
    drag(scene.box, scene.boxPixelForCanvasPoint({120.5, 320.5}));
    drag(scene.box, scene.boxPixelForCanvasPoint({-10.5, 120.5}));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(scene.box->frame(), standardFrame);
    QCOMPARE(scene.box->orgPoint(), org);

    // Back inside, 30 left of the press: the whole distance arrives in one step.
    drag(scene.box, at - QPoint(30, 0));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(scene.box->frame(), QRectF(70, 50, 100, 50));
}

void TestVelEditView::releaseWithoutMoving()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QSignalSpy changed(scene.box, &VelEditView::EditViewChangeNotification);
    QSignalSpy ended(scene.box, &VelEditView::EditViewDidChangedNotification);
    const QPoint at = scene.boxPixel({50.5, 25.5});
    press(scene.box, at);
    release(scene.box, at);
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended.at(0).at(0).value<VelEditView *>(), scene.box);
    QCOMPARE(changed.count(), 0);
    QVERIFY(!scene.box->isMouseDown());
    QVERIFY(!scene.box->isChange());
    QCOMPARE(scene.box->frame(), standardFrame);
    QCOMPARE(scene.box->mouseType(), int(MouseTypeMove));
}

void TestVelEditView::zeroStepStillAnnounces()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QSignalSpy changed(scene.box, &VelEditView::EditViewChangeNotification);
    const QPoint at = scene.boxPixel({96.5, 3.5});
    press(scene.box, at);
    drag(scene.box, at);
    QCOMPARE(changed.count(), 1);
    QVERIFY(scene.box->isChange());
    QCOMPARE(scene.box->frame(), standardFrame);
    QCOMPARE(scene.box->trackingAreas(), hitAreas(standardFrame.size()));
}

void TestVelEditView::box21WideTopHandleMoves()
{
    const QRectF frame(100, 50, 21, 50);
    Scene scene(frame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    // The top handle of a 21-wide box lies at x 7: hovering it is the interior.
    const QPoint topHandle = scene.boxPixel({10.5, 46.5});
    hover(scene.box, topHandle);
    QCOMPARE(scene.box->mouseType(), int(MouseTypeMove));
    QCOMPARE(scene.box->cursor().shape(), Qt::BitmapCursor);
    QVERIFY(sameImage(scene.box->cursor().pixmap().toImage(), VelEditView::drawDragIcon()));

    press(scene.box, topHandle);
    drag(scene.box, topHandle + QPoint(10, -10));
    QCOMPARE(scene.box->frame(), QRectF(110, 60, 21, 50)); // moved, not resized
}

void TestVelEditView::box15x15OverlapPressesTheEdgeHandle()
{
    Scene scene(QRectF(100, 50, 15, 15));
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    // (3.5, 9.5) lies in both the left handle (y 4 to 11) and the top-left corner (y 8 to 15).
    const QPoint overlap = scene.boxPixel({3.5, 9.5});
    press(scene.box, overlap);
    QCOMPARE(scene.box->mouseType(), int(MouseTypeLeft));
    QCOMPARE(scene.box->cursor().shape(), Qt::SizeHorCursor);
    drag(scene.box, overlap + QPoint(-10, -5));
    // The left rule alone: the top edge did not follow the pointer up.
    QCOMPARE(scene.box->frame(), QRectF(90, 50, 25, 15));

    // The centre pixel is the 1 x 1 interior.
    release(scene.box, overlap + QPoint(-10, -5));
    const QPoint centre = scene.boxPixel({7.5, 7.5});
    QTest::mouseMove(scene.box, centre);
    press(scene.box, centre);
    QCOMPARE(scene.box->mouseType(), int(MouseTypeMove));
}

void TestVelEditView::pressInAGapKeepsTheType()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QSignalSpy changed(scene.box, &VelEditView::EditViewChangeNotification);
    QSignalSpy ended(scene.box, &VelEditView::EditViewDidChangedNotification);
    const QPoint gap = scene.boxPixel({20.5, 3.5});
    hover(scene.box, gap);
    press(scene.box, gap);
    QCOMPARE(scene.box->mouseType(), int(MouseTypeNone));
    drag(scene.box, gap + QPoint(15, 0));
    QCOMPARE(scene.box->frame(), standardFrame);
    QCOMPARE(changed.count(), 0);
    QVERIFY(!scene.box->isChange());
    QCOMPARE(scene.box->orgPoint(), scene.windowPointOf(gap + QPoint(15, 0)));
    release(scene.box, gap + QPoint(15, 0));
    QCOMPARE(ended.count(), 1);
}

void TestVelEditView::releaseOutsideTheBoxResetsTheType()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    press(scene.box, scene.boxPixel({50.5, 25.5}));
    QCOMPARE(scene.box->mouseType(), int(MouseTypeMove));
    const QPoint outside = scene.boxPixelForCanvasPoint({350.5, 250.5});
    release(scene.box, outside);
    QCOMPARE(scene.box->mouseType(), int(MouseTypeNone));
    QCOMPARE(scene.box->cursor().shape(), Qt::ArrowCursor);
}

void TestVelEditView::typeStaysFrozenWhileTheButtonIsDown()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    const QPoint right = scene.boxPixel({96.5, 25.5});
    press(scene.box, right);
    // Dragging the right edge to the left passes the pointer over the interior.
    drag(scene.box, right - QPoint(40, 0));
    QCOMPARE(scene.box->mouseType(), int(MouseTypeRight));
    QCOMPARE(scene.box->frame(), QRectF(100, 50, 60, 50));
    // Released on the right handle of the new frame: the type stays and so does the cursor.
    release(scene.box, right - QPoint(40, 0));
    QCOMPARE(scene.box->mouseType(), int(MouseTypeRight));
    QCOMPARE(scene.box->cursor().shape(), Qt::SizeHorCursor);
}

void TestVelEditView::notificationsAreSynchronous()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QList<QRectF> seen;
    QList<bool> downAtEnd;
    connect(
        scene.box, &VelEditView::EditViewChangeNotification, this,
        [&](VelEditView *box) { seen << box->frame(); }, Qt::DirectConnection);
    connect(
        scene.box, &VelEditView::EditViewDidChangedNotification, this,
        [&](VelEditView *box) { downAtEnd << box->isMouseDown(); }, Qt::DirectConnection);
    const QPoint at = scene.boxPixel({50.5, 25.5});
    press(scene.box, at);
    // Alt: the right edge, 5 points from the centre line, is not pulled onto it.
    dragWith(scene.box, at + QPoint(5, 0), Qt::AltModifier);
    QCOMPARE(seen, QList<QRectF>({QRectF(105, 50, 100, 50)})); // the new frame, before return
    drag(scene.box, at + QPoint(7, 0));
    QCOMPARE(seen.size(), 2);
    release(scene.box, at + QPoint(7, 0));
    QCOMPARE(downAtEnd, QList<bool>({true})); // announced before the button state clears
}

void TestVelEditView::otherButtonsAreIgnored()
{
    Scene scene(standardFrame);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QTest::mousePress(scene.box, Qt::RightButton, {}, scene.boxPixel({50.5, 25.5}));
    QVERIFY(!scene.box->isMouseDown());
    QTest::mouseRelease(scene.box, Qt::RightButton, {}, scene.boxPixel({50.5, 25.5}));
}

void TestVelEditView::noCanvasNoDrag()
{
    VelEditView box(QRectF(0, 0, 60, 60));
    QSignalSpy changed(&box, &VelEditView::EditViewChangeNotification);
    press(&box, QPoint(30, 30));
    QCOMPARE(box.mouseType(), int(MouseTypeMove));
    drag(&box, QPoint(35, 30));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(box.frame(), QRectF(0, 0, 60, 60));
    release(&box, QPoint(35, 30));
}

void TestVelEditView::identifierAndIsChange()
{
    VelEditView box;
    QVERIFY(box.identifier().isEmpty());
    box.setIdentifier(QStringLiteral("img"));
    QCOMPARE(box.identifier(), QStringLiteral("img"));
    QVERIFY(!box.isChange());
    box.setIsChange(true);
    QVERIFY(box.isChange());
}

void TestVelEditView::dragIconIsACrossOfArrows()
{
    const QImage icon = VelEditView::drawDragIcon();
    QCOMPARE(icon.size(), QSize(16, 16));
    // Arrow tips at the four edge middles, ink along the cross, clear corners.
    QVERIFY(ink(icon, 2, 7) > 100);
    QVERIFY(ink(icon, 13, 7) > 100);
    QVERIFY(ink(icon, 7, 2) > 100);
    QVERIFY(ink(icon, 7, 13) > 100);
    QVERIFY(ink(icon, 5, 7) > 50);
    QCOMPARE(ink(icon, 0, 0), 0);
    QCOMPARE(ink(icon, 15, 15), 0);
    QCOMPARE(ink(icon, 3, 3), 0);
    QCOMPARE(qRed(icon.pixel(2, 7)), 0); // black
}

void TestVelEditView::resizeIconsAreMirrorImages()
{
    const QImage res1 = VelEditView::drawRes1Icon();
    const QImage res2 = VelEditView::drawRes2Icon();
    QCOMPARE(res1.size(), QSize(16, 16));
    QCOMPARE(res2.size(), QSize(16, 16));
    // res1 has its arrowheads top-left and bottom-right, res2 bottom-left and top-right.
    QVERIFY(ink(res1, 3, 4) > 200);
    QVERIFY(ink(res1, 11, 11) > 200);
    QVERIFY(ink(res2, 3, 11) > 200);
    QVERIFY(ink(res2, 11, 4) > 200);
    QCOMPARE(ink(res1, 0, 15), 0);
    QCOMPARE(ink(res2, 0, 0), 0);
    // The same figure, drawn y-down and y-up.
    const QImage mirrored = res1.mirrored(false, true);
    int worst = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            worst = qMax(worst, qAbs(ink(mirrored, x, y) - ink(res2, x, y)));
    QVERIFY2(worst <= 8, qPrintable(QString::number(worst)));
}

QTEST_MAIN(TestVelEditView)
#include "tst_veleditview.moc"
