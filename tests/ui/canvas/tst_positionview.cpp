// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "editgeometry.h"
#include "positionview.h"
#include "postionviewdelete.h"
#include "testenv.h"
#include "veleditview.h"

#include <QAccessible>
#include <QMenu>
#include <QtTest>

#include <cmath>
#include <memory>

using namespace EditGeometry;

Q_DECLARE_METATYPE(PositionRect)

namespace {

// Records what the canvas told it, with the canvas's margins as they were at each call.
struct Owner : PostionViewDelete
{
    PositionView *view = nullptr;
    QList<PositionRect> steps;
    int ends = 0;
    void onChangePositionView() override { steps << *view->positionRect(); }
    void didChangedPositionView() override { ++ends; }
};

// A move with the left button down and the given keys held, sent as the window would.
void sendMove(QWidget *widget, QPoint pos, Qt::KeyboardModifiers modifiers)
{
    QMouseEvent move(QEvent::MouseMove, pos, widget->mapToGlobal(pos), Qt::NoButton, Qt::LeftButton,
                     modifiers);
    QApplication::sendEvent(widget, &move);
}

// A 500 x 400 window with the canvas at (50, 50), shown under the offscreen platform.
struct Scene
{
    QWidget window;
    PositionView *canvas;

    explicit Scene(QSize canvasSize)
    {
        window.resize(500, 400);
        canvas = new PositionView(&window);
        canvas->setGeometry(QRect(QPoint(50, 50), canvasSize));
    }
    // Shows the window and lets the canvas paint, which places the box from the record.
    bool showAndPaint()
    {
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            return false;
        canvas->repaint();
        return true;
    }
    VelEditView *box() const { return canvas->editView(); }
    // The box widget's pixel whose centre is the given canvas point (y up, at a pixel centre).
    QPoint boxPixel(QPointF canvasPoint) const
    {
        const QPointF down = flipped(canvasPoint, canvas->height());
        return QPoint(int(std::floor(down.x())), int(std::floor(down.y()))) - box()->pos();
    }
    void press(QPointF canvasPoint)
    {
        QTest::mousePress(box(), Qt::LeftButton, {}, boxPixel(canvasPoint));
    }
    void drag(QPointF canvasPoint) { QTest::mouseMove(box(), boxPixel(canvasPoint)); }
    // A drag step with keys held (the test library's moves carry none).
    void dragWith(QPointF canvasPoint, Qt::KeyboardModifiers modifiers)
    {
        sendMove(box(), boxPixel(canvasPoint), modifiers);
    }
    void release(QPointF canvasPoint)
    {
        QTest::mouseRelease(box(), Qt::LeftButton, {}, boxPixel(canvasPoint));
    }
};

PositionRect margins(float left, float top, float right, float bottom, float transparency = 0,
                     int layer = 0)
{
    return PositionRect(left, top, right, bottom, transparency, layer);
}

struct PaintCounter : QObject
{
    int paints = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

QImage renderCanvas(PositionView *canvas)
{
    QImage image(canvas->size(), QImage::Format_ARGB32);
    image.fill(Qt::black);
    canvas->render(&image);
    return image;
}

bool near(QRgb pixel, QColor expected, int tolerance = 2)
{
    return qAbs(qRed(pixel) - expected.red()) <= tolerance &&
           qAbs(qGreen(pixel) - expected.green()) <= tolerance &&
           qAbs(qBlue(pixel) - expected.blue()) <= tolerance;
}

QString describe(QRgb pixel)
{
    return QStringLiteral("(%1, %2, %3)").arg(qRed(pixel)).arg(qGreen(pixel)).arg(qBlue(pixel));
}

bool isWhite(QRgb pixel)
{
    return near(pixel, Qt::white, 0);
}

// The stroked ring: mostly red, whatever it is blended with.
bool isRedRing(QRgb pixel)
{
    return qRed(pixel) >= 200 && qGreen(pixel) <= 160 && qBlue(pixel) <= 160;
}

// The centre of a handle area of a box, in the y-down pixels of the canvas image.
QPoint handleCentrePixel(const QRectF &boxFrame, const QRectF &area, qreal canvasHeight)
{
    const QPointF centreUp = boxFrame.topLeft() + area.center();
    const QPointF down = flipped(centreUp, canvasHeight);
    return QPoint(int(std::floor(down.x())), int(std::floor(down.y())));
}

} // namespace

class TestPositionView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void newCanvasDrawsOnlyThePage();
    void marginsPlaceTheBox();
    void setPositionRectCopiesTheValues();
    void recordIsTheMasterOnEveryRedraw();
    void emptyRectangleLeavesTheBoxWhereItWas();
    void resizeKeepsTheBoxOnThePage();
    void hiddenBoxIsDrawnAsARedRectangle();
    void settledCanvasStopsRepainting();
    void colourDefaultsFollowThePalette();

    void renderingOfPageBoxAndHandles();
    void renderingSkipsHandlesAtSeven_data();
    void renderingSkipsHandlesAtSeven();

    void dragReportsMarginsToTheOwner();
    void dragToTheRightEdgeGivesRightZero();
    void narrowBoxAtTheRightEdgeGivesLeft95();
    void boxTallerThanTheCanvasCountsAsItsHeight();
    void releaseWithoutMovingTellsTheOwnerOnce();
    void otherBoxesAreIgnored();
    void withoutOwerDraggingStillUpdatesTheRecord();

    void canvasIsAKeyboardControl();
    void arrowKeysAreShortDrags_data();
    void arrowKeysAreShortDrags();
    void otherKeysPassToTheWindow();
    void keyboardFocusShowsAFrame();
    void canvasAnnouncesItsMargins();

    void dragSnapsToTheCentreWithEqualMargins();
    void guideIsDrawnDuringTheGestureOnly();
    void snappedBoxComesOffTheLineWithThePointer();
    void valuesBeyondThePageMoveTheBoxToTheEdge();
    void modifierTurnsSnappingOff_data();
    void modifierTurnsSnappingOff();
    void shiftCornerKeepsTheImagesShape();
    void shiftWithoutAnImageSnapsAsUsual();
    void fitToImageSetsTheHeightAndTellsTheOwner_data();
    void fitToImageSetsTheHeightAndTellsTheOwner();
    void fitToImageNeedsAnImage();
    void imageShowsAtTheTransparency_data();
    void imageShowsAtTheTransparency();
    void linkShowsASymbolAndItsHost();
};

void TestPositionView::initTestCase()
{
    TestEnv::isolate();
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("offscreen"));
}

void TestPositionView::cleanup()
{
    struct Sink : QWidget
    {
        void mouseReleaseEvent(QMouseEvent *event) override { event->accept(); }
    } sink;
    QTest::mouseRelease(&sink, Qt::LeftButton, {}, QPoint(1, 1));
}

void TestPositionView::newCanvasDrawsOnlyThePage()
{
    Scene scene({200, 100});
    QCOMPARE(*scene.canvas->positionRect(), margins(50, 50, 50, 50));
    QVERIFY(scene.showAndPaint());
    // The 50/50/50/50 record is a zero-sized rectangle: no box.
    QVERIFY(scene.box()->parentWidget() == nullptr);
    QCOMPARE(scene.box()->frame(), QRectF(0, 0, 15, 15));

    const QImage image = renderCanvas(scene.canvas);
    const QColor fill = scene.canvas->fillColor();
    for (int y = 1; y < 99; ++y)
        for (int x = 1; x < 199; ++x)
            QVERIFY2(near(image.pixel(x, y), fill, 0),
                     qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
    QVERIFY(near(image.pixel(0, 50), scene.canvas->outlineColor(), 0));
}

void TestPositionView::marginsPlaceTheBox()
{
    Scene scene({200, 100});
    scene.canvas->setPositionRectWithLeft(10, 10, 10, 10, 0, 0);
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->parentWidget(), scene.canvas);
    QVERIFY(scene.box()->isVisible());
    QCOMPARE(scene.box()->frame(), QRectF(20, 10, 160, 80));
    QCOMPARE(scene.box()->geometry(), QRect(20, 10, 160, 80));
    QCOMPARE(scene.box()->trackingAreas(), hitAreas(QSizeF(160, 80)));
}

void TestPositionView::setPositionRectCopiesTheValues()
{
    PositionView canvas;
    PositionRect *own = canvas.positionRect();
    PositionRect given = margins(10, 20, 30, 15, 100, 2);
    canvas.setPositionRect(given);
    QCOMPARE(canvas.positionRect(), own); // the same record, for the owner to keep
    QCOMPARE(*own, given);
    given.setLeft(44);
    QCOMPARE(own->left(), 10.0f); // the given object is not kept
}

void TestPositionView::recordIsTheMasterOnEveryRedraw()
{
    Scene scene({200, 100});
    scene.canvas->setPositionRect(margins(10, 10, 10, 10));
    QVERIFY(scene.showAndPaint());
    // Drag the box, then set margins from outside: the next redraw follows the record.
    scene.press({100.5, 50.5});
    scene.drag({110.5, 50.5});
    QCOMPARE(scene.box()->frame(), QRectF(30, 10, 160, 80));
    scene.release({110.5, 50.5});
    QCOMPARE(*scene.canvas->positionRect(), margins(15, 10, 5, 10));
    scene.canvas->positionRect()->setLeft(25);
    scene.canvas->positionRect()->setBottom(20);
    scene.canvas->repaint();
    QCOMPARE(scene.box()->frame(), QRectF(50, 20, 140, 70));
}

void TestPositionView::emptyRectangleLeavesTheBoxWhereItWas()
{
    Scene scene({200, 100});
    scene.canvas->setPositionRect(margins(10, 10, 10, 10));
    QVERIFY(scene.showAndPaint());
    scene.canvas->setPositionRect(margins(60, 10, 60, 10)); // negative width
    scene.canvas->repaint();
    QCOMPARE(scene.box()->frame(), QRectF(20, 10, 160, 80));
    scene.canvas->setPositionRect(margins(10, 50, 10, 50)); // zero height
    scene.canvas->repaint();
    QCOMPARE(scene.box()->frame(), QRectF(20, 10, 160, 80));
}

void TestPositionView::resizeKeepsTheBoxOnThePage()
{
    Scene scene({200, 100});
    scene.canvas->setPositionRect(margins(10, 10, 10, 70));
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->geometry(), QRect(20, 10, 160, 20));
    scene.canvas->resize(200, 200);
    scene.canvas->repaint();
    // Bottom 70 % of a 200-high page: y 140, 40 high, 20 below the top.
    QCOMPARE(scene.box()->frame(), QRectF(20, 140, 160, 40));
    QCOMPARE(scene.box()->geometry(), QRect(20, 20, 160, 40));
}

void TestPositionView::hiddenBoxIsDrawnAsARedRectangle()
{
    Scene scene({200, 100});
    scene.box()->hide();
    scene.canvas->setPositionRect(margins(10, 10, 10, 10));
    QVERIFY(scene.showAndPaint());
    QVERIFY(scene.box()->parentWidget() == nullptr);
    const QImage image = renderCanvas(scene.canvas);
    QVERIFY(near(image.pixel(100, 50), Qt::red, 0));
    // The black outline darkens the rectangle's edge.
    QVERIFY2(qRed(image.pixel(20, 50)) < 200 && qGreen(image.pixel(20, 50)) == 0,
             qPrintable(describe(image.pixel(20, 50))));
    QVERIFY(near(image.pixel(10, 50), scene.canvas->fillColor(), 0));
}

void TestPositionView::settledCanvasStopsRepainting()
{
    // Each paint places the box; a box that repainted for an unchanged frame would make the
    // canvas paint again, for ever.
    Scene scene({200, 100});
    scene.canvas->setPositionRect(margins(10, 10, 10, 10));
    QVERIFY(scene.showAndPaint());
    PaintCounter counter;
    scene.canvas->installEventFilter(&counter);
    QTest::qWait(50);
    counter.paints = 0;
    QTest::qWait(150);
    QCOMPARE(counter.paints, 0);

    scene.press({100.5, 50.5});
    scene.drag({103.5, 50.5});
    scene.release({103.5, 50.5});
    QTest::qWait(50);
    counter.paints = 0;
    QTest::qWait(150);
    QCOMPARE(counter.paints, 0);
}

void TestPositionView::colourDefaultsFollowThePalette()
{
    PositionView canvas;
    QCOMPARE(canvas.fillColor(), canvas.palette().color(QPalette::Base));
    QCOMPARE(canvas.outlineColor(), QColor(128, 128, 128));
    QPalette dark = canvas.palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    canvas.setPalette(dark);
    QCOMPARE(canvas.fillColor(), QColor(30, 30, 30));
    canvas.setFillColor(QColor(1, 2, 3));
    canvas.setOutlineColor(QColor(4, 5, 6));
    QCOMPARE(canvas.fillColor(), QColor(1, 2, 3));
    QCOMPARE(canvas.outlineColor(), QColor(4, 5, 6));
    canvas.setFillColor(QColor());
    QCOMPARE(canvas.fillColor(), QColor(30, 30, 30));
}

void TestPositionView::renderingOfPageBoxAndHandles()
{
    Scene scene({200, 100});
    scene.canvas->setFillColor(Qt::white);
    scene.canvas->setPositionRectWithLeft(10, 10, 10, 10, 0, 0);
    QVERIFY(scene.showAndPaint());
    const QImage image = renderCanvas(scene.canvas);
    const QColor grey(128, 128, 128);

    // The page: fill inside, a one-pixel grey outline on every edge.
    QVERIFY(isWhite(image.pixel(10, 50)));
    QVERIFY(isWhite(image.pixel(190, 5)));
    for (const QPoint p : {QPoint(0, 50), QPoint(199, 50), QPoint(100, 0), QPoint(100, 99),
                           QPoint(0, 0), QPoint(199, 99)})
        QVERIFY2(
            near(image.pixel(p), grey, 0),
            qPrintable(QStringLiteral("%1,%2 ").arg(p.x()).arg(p.y()) + describe(image.pixel(p))));

    // The box covers (20, 10) to (180, 90); its body is inset 3.5, so the red outline is the
    // fourth pixel in from each side and the three outside it show the page.
    QVERIFY(isWhite(image.pixel(22, 30)));
    QVERIFY2(near(image.pixel(23, 30), Qt::red, 0), qPrintable(describe(image.pixel(23, 30))));
    QVERIFY(near(image.pixel(176, 30), Qt::red, 0));
    QVERIFY(near(image.pixel(60, 13), Qt::red, 0));
    QVERIFY(near(image.pixel(60, 86), Qt::red, 0));
    QVERIFY(isWhite(image.pixel(60, 12)));
    // Inside: 30 % of (0.5, 0.5, 0.6) over the white page.
    const QColor body(217, 217, 224);
    QVERIFY2(near(image.pixel(24, 30), body), qPrintable(describe(image.pixel(24, 30))));
    QVERIFY2(near(image.pixel(100, 50), body), qPrintable(describe(image.pixel(100, 50))));

    // Eight handles: white at the centre, a red ring at the radius.
    const QRectF frame = scene.box()->frame();
    const HitAreas areas = scene.box()->trackingAreas();
    for (int i = 1; i < 9; ++i) {
        const QPoint centre = handleCentrePixel(frame, areas[i], 100);
        QVERIFY2(
            isWhite(image.pixel(centre)),
            qPrintable(
                QStringLiteral("handle %1 centre %2").arg(i).arg(describe(image.pixel(centre)))));
        const QPointF c = flipped(frame.topLeft() + areas[i].center(), 100);
        const QPoint ringLeft(int(std::floor(c.x() - 3.5)), int(std::floor(c.y())));
        const QPoint ringTop(int(std::floor(c.x())), int(std::floor(c.y() - 3.5)));
        QVERIFY2(
            isRedRing(image.pixel(ringLeft)),
            qPrintable(
                QStringLiteral("handle %1 ring %2").arg(i).arg(describe(image.pixel(ringLeft)))));
        QVERIFY2(
            isRedRing(image.pixel(ringTop)),
            qPrintable(
                QStringLiteral("handle %1 ring %2").arg(i).arg(describe(image.pixel(ringTop)))));
    }
}

void TestPositionView::renderingSkipsHandlesAtSeven_data()
{
    QTest::addColumn<PositionRect>("record");
    QTest::addColumn<QRectF>("frame");
    QTest::addColumn<QList<int>>("skipped");
    // Margins of a 200 x 100 page. 21 wide: the top and bottom handles lie at x 7. 21 high: the
    // left and right handles lie at y 7.
    QTest::newRow("21 wide: no top or bottom handle")
        << margins(10, 10, 79.5, 10) << QRectF(20, 10, 21, 80) << QList<int>({3, 4});
    QTest::newRow("21 high: no left or right handle")
        << margins(10, 10, 10, 69) << QRectF(20, 69, 160, 21) << QList<int>({1, 2});
    QTest::newRow("160 x 80: every handle")
        << margins(10, 10, 10, 10) << QRectF(20, 10, 160, 80) << QList<int>();
}

void TestPositionView::renderingSkipsHandlesAtSeven()
{
    QFETCH(PositionRect, record);
    QFETCH(QRectF, frame);
    QFETCH(QList<int>, skipped);
    Scene scene({200, 100});
    scene.canvas->setFillColor(Qt::white);
    scene.canvas->setPositionRect(record);
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->frame(), frame);
    const QImage image = renderCanvas(scene.canvas);
    const HitAreas areas = scene.box()->trackingAreas();
    for (int i = 1; i < 9; ++i) {
        const QPoint centre = handleCentrePixel(frame, areas[i], 100);
        const bool drawn = isWhite(image.pixel(centre));
        QVERIFY2(
            drawn == !skipped.contains(i),
            qPrintable(QStringLiteral("handle %1: %2").arg(i).arg(describe(image.pixel(centre)))));
    }
}

void TestPositionView::dragReportsMarginsToTheOwner()
{
    Scene scene({200, 100});
    Owner owner;
    owner.view = scene.canvas;
    scene.canvas->setOwer(&owner);
    QCOMPARE(scene.canvas->ower(), &owner);
    scene.canvas->setPositionRect(margins(10, 10, 30, 10, 42, 3));
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->frame(), QRectF(20, 10, 120, 80));

    scene.press({50.5, 50.5});
    scene.drag({60.5, 40.5}); // right 10, down 10
    QCOMPARE(owner.steps.size(), 1);
    QCOMPARE(owner.steps.at(0), margins(15, 20, 25, 0, 42, 3)); // already updated when called
    scene.drag({70.5, 40.5});
    QCOMPARE(owner.steps.size(), 2);
    QCOMPARE(owner.steps.at(1), margins(20, 20, 20, 0, 42, 3));
    QCOMPARE(owner.ends, 0);
    scene.release({70.5, 40.5});
    QCOMPARE(owner.ends, 1);
    QCOMPARE(*scene.canvas->positionRect(), margins(20, 20, 20, 0, 42, 3));
}

void TestPositionView::dragToTheRightEdgeGivesRightZero()
{
    Scene scene({300, 200});
    scene.canvas->setPositionRect(margins(10, 10, 30, 10));
    QVERIFY(scene.showAndPaint());
    scene.press({150.5, 100.5});
    scene.drag({299.5, 100.5}); // further than the space left: the box stops at the edge
    QCOMPARE(scene.box()->frame().right(), 300.0);
    QVERIFY(scene.canvas->positionRect()->right() == 0.0f);
    QVERIFY(scene.canvas->positionRect()->left() == 40.0f);
}

void TestPositionView::narrowBoxAtTheRightEdgeGivesLeft95()
{
    Scene scene({300, 200});
    scene.canvas->setPositionRect(margins(50, 10, 0, 10));
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->frame(), QRectF(150, 20, 150, 160));
    // The left handle dragged right past the whole width leaves a 15-wide box at Wc - 15.
    scene.press({153.5, 100.5});
    QCOMPARE(scene.box()->mouseType(), int(MouseTypeLeft));
    scene.drag({299.5, 100.5});
    QCOMPARE(scene.box()->frame(), QRectF(285, 20, 15, 160));
    QVERIFY(scene.canvas->positionRect()->left() == 95.0f);
    QVERIFY(scene.canvas->positionRect()->right() == 0.0f);
}

void TestPositionView::boxTallerThanTheCanvasCountsAsItsHeight()
{
    Scene scene({200, 100});
    scene.canvas->setPositionRect(margins(10, 0, 10, 10));
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->frame(), QRectF(20, 10, 160, 90));
    // The bottom handle pushed below the page keeps its growth: the top edge rises past the page.
    scene.press({100.5, 13.5});
    QCOMPARE(scene.box()->mouseType(), int(MouseTypeBottom));
    scene.drag({100.5, -16.5});
    QCOMPARE(scene.box()->frame(), QRectF(20, 10, 160, 90)); // below the page: ignored
    scene.drag({100.5, 0.5});
    QCOMPARE(scene.box()->frame(), QRectF(20, 0, 160, 103));
    // Margins are computed from the box bounded to the page; the box itself stays as it is.
    QVERIFY(scene.canvas->positionRect()->bottom() == 0.0f);
    QVERIFY(scene.canvas->positionRect()->top() == 0.0f);
    scene.release({100.5, 0.5});
    QCOMPARE(scene.box()->frame(), QRectF(20, 0, 160, 103));
}

void TestPositionView::releaseWithoutMovingTellsTheOwnerOnce()
{
    Scene scene({200, 100});
    Owner owner;
    owner.view = scene.canvas;
    scene.canvas->setOwer(&owner);
    scene.canvas->setPositionRect(margins(10, 10, 10, 10));
    QVERIFY(scene.showAndPaint());
    scene.press({100.5, 50.5});
    scene.release({100.5, 50.5});
    QCOMPARE(owner.ends, 1);
    QCOMPARE(owner.steps.size(), 0);
    QCOMPARE(*scene.canvas->positionRect(), margins(10, 10, 10, 10));
}

void TestPositionView::otherBoxesAreIgnored()
{
    Scene scene({200, 100});
    Owner owner;
    owner.view = scene.canvas;
    scene.canvas->setOwer(&owner);
    scene.canvas->setPositionRect(margins(10, 10, 10, 10));
    QVERIFY(scene.showAndPaint());

    // A second box on another page, its reports wired to this canvas as well.
    QWidget otherPage(&scene.window);
    otherPage.setGeometry(260, 50, 200, 100);
    otherPage.show();
    VelEditView other(QRectF(10, 10, 50, 50), &otherPage);
    other.show();
    connect(&other, &VelEditView::EditViewChangeNotification, scene.canvas,
            &PositionView::onChangeEditView, Qt::DirectConnection);
    connect(&other, &VelEditView::EditViewDidChangedNotification, scene.canvas,
            &PositionView::onDidChangedEditView, Qt::DirectConnection);
    QTest::mousePress(&other, Qt::LeftButton, {}, QPoint(25, 25));
    sendMove(&other, QPoint(35, 30), Qt::AltModifier); // Alt: the bottom edge is not pulled to 0
    QCOMPARE(other.frame(), QRectF(20, 5, 50, 50));    // the other box did move
    QTest::mouseRelease(&other, Qt::LeftButton, {}, QPoint(35, 30));

    QCOMPARE(*scene.canvas->positionRect(), margins(10, 10, 10, 10));
    QCOMPARE(owner.steps.size(), 0);
    QCOMPARE(owner.ends, 0);
}

void TestPositionView::withoutOwerDraggingStillUpdatesTheRecord()
{
    Scene scene({200, 100});
    QVERIFY(scene.canvas->ower() == nullptr);
    scene.canvas->setPositionRect(margins(10, 10, 10, 10, 5, 1));
    QVERIFY(scene.showAndPaint());
    scene.press({100.5, 50.5});
    scene.dragWith({90.5, 55.5}, Qt::AltModifier); // Alt: not pulled to the centre line
    scene.release({90.5, 55.5});
    QCOMPARE(*scene.canvas->positionRect(), margins(5, 5, 15, 15, 5, 1));
}

void TestPositionView::canvasIsAKeyboardControl()
{
    Scene scene(QSize(200, 300));
    QCOMPARE(scene.canvas->focusPolicy(), Qt::StrongFocus);
    QVERIFY(scene.showAndPaint());
    // A click on the box gives the canvas the focus, as a click on any control does.
    QTest::mouseClick(scene.box(), Qt::LeftButton, {}, scene.box()->rect().center());
    QVERIFY(scene.canvas->hasFocus());
}

void TestPositionView::arrowKeysAreShortDrags_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<PositionRect>("after");
    QTest::addColumn<int>("steps");

    // 10, 26, 60, 26 on a 200 x 300 page.
    QTest::newRow("right arrow moves 1 %")
        << int(Qt::Key_Right) << int(Qt::NoModifier) << margins(11, 26, 59, 26, 40, 1) << 1;
    QTest::newRow("shift+up moves 10 %")
        << int(Qt::Key_Up) << int(Qt::ShiftModifier) << margins(10, 16, 60, 36, 40, 1) << 1;
    QTest::newRow("alt+right grows the right edge")
        << int(Qt::Key_Right) << int(Qt::AltModifier) << margins(10, 26, 59, 26, 40, 1) << 1;
    QTest::newRow("alt+up shrinks at the bottom edge")
        << int(Qt::Key_Up) << int(Qt::AltModifier) << margins(10, 26, 60, 27, 40, 1) << 1;
    QTest::newRow("shift+left stops at the page's left edge")
        << int(Qt::Key_Left) << int(Qt::ShiftModifier) << margins(0, 26, 70, 26, 40, 1) << 1;
}

void TestPositionView::arrowKeysAreShortDrags()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(PositionRect, after);
    QFETCH(int, steps);
    Scene scene(QSize(200, 300));
    Owner owner;
    owner.view = scene.canvas;
    scene.canvas->setOwer(&owner);
    scene.canvas->setPositionRect(margins(10, 26, 60, 26, 40, 1));
    QVERIFY(scene.showAndPaint());
    scene.canvas->setFocus();
    QTest::keyClick(scene.canvas, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(*scene.canvas->positionRect(), after);
    // The owner saw the new margins during the step, then the end of the gesture.
    QCOMPARE(owner.steps.size(), steps);
    QCOMPARE(owner.steps.last(), after);
    QCOMPARE(owner.ends, 1);
    // The box follows the record on the next redraw.
    scene.canvas->repaint();
    QCOMPARE(scene.box()->frame(), after.getObjectFrameWithOutlineSize(QSizeF(200, 300)));
}

void TestPositionView::otherKeysPassToTheWindow()
{
    Scene scene(QSize(200, 300));
    Owner owner;
    owner.view = scene.canvas;
    scene.canvas->setOwer(&owner);
    scene.canvas->setPositionRect(margins(10, 26, 60, 0));
    QVERIFY(scene.showAndPaint());
    scene.canvas->setFocus();
    struct Catcher : QObject
    {
        QList<int> keys;
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::KeyPress)
                keys << static_cast<QKeyEvent *>(event)->key();
            return false;
        }
    } catcher;
    scene.window.installEventFilter(&catcher);
    QTest::keyClick(scene.canvas, Qt::Key_Escape);
    QTest::keyClick(scene.canvas, Qt::Key_Left, Qt::ControlModifier);
    QVERIFY(catcher.keys.contains(Qt::Key_Escape));
    QVERIFY(catcher.keys.contains(Qt::Key_Left));
    QCOMPARE(owner.ends, 0);
    // At the page's bottom edge a step down moves nothing, but still ends a gesture.
    QTest::keyClick(scene.canvas, Qt::Key_Down);
    QCOMPARE(owner.steps.size(), 0);
    QCOMPARE(owner.ends, 1);
    QCOMPARE(*scene.canvas->positionRect(), margins(10, 26, 60, 0));
}

void TestPositionView::keyboardFocusShowsAFrame()
{
    Scene scene(QSize(200, 300));
    QVERIFY(scene.showAndPaint());
    const QColor highlight = scene.canvas->palette().color(QPalette::Highlight);
    QVERIFY(!near(scene.canvas->grab().toImage().pixel(1, 150), highlight, 0));
    QWidget other(&scene.window);
    other.setFocusPolicy(Qt::StrongFocus);
    other.setGeometry(300, 50, 20, 20);
    other.show();
    other.setFocus();
    QTest::keyClick(&other, Qt::Key_Tab); // focus arrives by the keyboard
    QVERIFY(scene.canvas->hasFocus());
    const QImage focused = scene.canvas->grab().toImage();
    QVERIFY(near(focused.pixel(0, 150), highlight, 0));
    QVERIFY(near(focused.pixel(1, 150), highlight, 0));
    QVERIFY(near(focused.pixel(199, 10), highlight, 0));
    QVERIFY(!near(focused.pixel(3, 150), highlight, 0));
}

void TestPositionView::canvasAnnouncesItsMargins()
{
    Scene scene(QSize(200, 300));
    scene.canvas->setAccessibleName(QStringLiteral("Page"));
    QVERIFY(scene.showAndPaint());
    QAccessibleInterface *canvas = QAccessible::queryAccessibleInterface(scene.canvas);
    QVERIFY(canvas);
    QCOMPARE(canvas->role(), QAccessible::Canvas);
    QCOMPARE(canvas->text(QAccessible::Name), QStringLiteral("Page"));
    QList<QString> values;
    connect(scene.canvas, &PositionView::marginsChanged, this,
            [&] { values << canvas->text(QAccessible::Value); });
    scene.canvas->setPositionRect(margins(10, 26, 60, 26));
    scene.canvas->setFocus();
    QTest::keyClick(scene.canvas, Qt::Key_Right);
    scene.canvas->setPositionRect(margins(10.25f, 0, 12.5f, -3));
    QCOMPARE(values, QList<QString>({"Left 10 %, top 26 %, right 60 %, bottom 26 %",
                                     "Left 11 %, top 26 %, right 59 %, bottom 26 %",
                                     "Left 10.3 %, top 0 %, right 12.5 %, bottom -3 %"}));
}

namespace {

// A 252 x 336 page (3:4) whose box, 56.7 wide, converts to margins that print differently
// (38.8 and 38.7) when it is centred by hand.
PositionRect offCentre()
{
    return margins(30, 10, 47.5, 60);
}

bool isGuide(QRgb pixel)
{
    return near(pixel, QColor(230, 0, 140), 0);
}

} // namespace

void TestPositionView::dragSnapsToTheCentreWithEqualMargins()
{
    Scene scene({252, 336});
    Owner owner;
    owner.view = scene.canvas;
    scene.canvas->setOwer(&owner);
    scene.canvas->setPositionRect(offCentre());
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->frame().x(), 75.6f);
    scene.press({100.5, 250.5});
    scene.drag({123.5, 250.5}); // the centre 126.95, 0.95 from the page's
    QCOMPARE(scene.box()->frame().center().x(), 126.0);
    QCOMPARE(owner.steps.size(), 1);
    QVERIFY(owner.steps.at(0).left() == owner.steps.at(0).right());
    scene.release({123.5, 250.5});
    QCOMPARE(owner.ends, 1);
    // What the owner saves: equal to the tenth, and to the last bit.
    const QList<QByteArray> lines = scene.canvas->positionRect()->toText().split('\n');
    QCOMPARE(lines.at(0), QByteArray("38.8"));
    QCOMPARE(lines.at(2), lines.at(0));
    QVERIFY(scene.canvas->positionRect()->left() == scene.canvas->positionRect()->right());
}

void TestPositionView::guideIsDrawnDuringTheGestureOnly()
{
    Scene scene({252, 336});
    scene.canvas->setFillColor(Qt::white);
    scene.canvas->setPositionRect(offCentre());
    QVERIFY(scene.showAndPaint());
    QVERIFY(!isGuide(renderCanvas(scene.canvas).pixel(126, 10)));
    scene.press({100.5, 250.5});
    scene.drag({123.5, 250.5});
    QCOMPARE(scene.canvas->snapResult().guides, QList<Snapping::Guide>({{Qt::Vertical, 126.0}}));
    QVERIFY(scene.canvas->snapResult().equalHorizontal());
    const QImage during = renderCanvas(scene.canvas);
    // The centre line runs over the page above and below the box; the margins are marked equal.
    QVERIFY2(isGuide(during.pixel(126, 10)), qPrintable(describe(during.pixel(126, 10))));
    QVERIFY(isGuide(during.pixel(126, 300)));
    QVERIFY(!isGuide(during.pixel(125, 10)));
    QVERIFY(!isGuide(during.pixel(127, 10)));
    // The bar's first dash starts at the page's edge, on the row of the box's middle.
    const int markRow = 335 - int(std::floor(scene.box()->frame().center().y()));
    QVERIFY2(isGuide(during.pixel(2, markRow)), qPrintable(describe(during.pixel(2, markRow))));
    scene.release({123.5, 250.5});
    QVERIFY(scene.canvas->snapResult().guides.isEmpty());
    const QImage after = renderCanvas(scene.canvas);
    QVERIFY(!isGuide(after.pixel(126, 10)));
    QVERIFY(!isGuide(after.pixel(2, markRow)));
}

// The box does not stick: the drag follows the pointer, and snapping only adjusts what is shown.
void TestPositionView::snappedBoxComesOffTheLineWithThePointer()
{
    Scene scene({252, 336});
    scene.canvas->setPositionRect(offCentre());
    QVERIFY(scene.showAndPaint());
    scene.press({100.5, 250.5});
    scene.drag({123.5, 250.5});
    QCOMPARE(scene.box()->frame().center().x(), 126.0);
    scene.drag({124.5, 250.5}); // still in reach
    QCOMPARE(scene.box()->frame().center().x(), 126.0);
    scene.drag({133.5, 250.5}); // the pointer has moved 33 since the press
    QCOMPARE(scene.box()->frame().x(), 75.6f + 33.0);
    QVERIFY(scene.canvas->snapResult().guides.isEmpty());
    scene.release({133.5, 250.5});
}

// A margin typed beyond the page moves the box as far as it goes, never leaving the box of the
// value before it.
void TestPositionView::valuesBeyondThePageMoveTheBoxToTheEdge()
{
    Scene scene({200, 400});
    scene.canvas->setPositionRect(margins(10, 26, 60, 26));
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->frame().x(), 20.0);
    scene.canvas->setPositionRect(margins(150, 26, 60, 26));
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->frame().x() + scene.box()->frame().width(), 200.0);
    scene.canvas->setPositionRect(margins(10, 26, 100000, 26)); // far beyond, no room across
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->frame().x(), 20.0); // at its left margin, as narrow as a box goes
    QCOMPARE(scene.box()->frame().width(), EditGeometry::minimumBoxSize);
}

void TestPositionView::modifierTurnsSnappingOff_data()
{
    QTest::addColumn<int>("modifier");
    QTest::newRow("Alt turns snapping off") << int(Qt::AltModifier);
    // Where the desktop takes Alt+drag for the window itself; Cmd on macOS.
    QTest::newRow("Ctrl turns snapping off") << int(Qt::ControlModifier);
    QTest::newRow("Ctrl and Alt together turn it off") << int(Qt::ControlModifier | Qt::AltModifier);
}

void TestPositionView::modifierTurnsSnappingOff()
{
    QFETCH(int, modifier);
    Scene scene({252, 336});
    Owner owner;
    owner.view = scene.canvas;
    scene.canvas->setOwer(&owner);
    scene.canvas->setPositionRect(offCentre());
    QVERIFY(scene.showAndPaint());
    scene.press({100.5, 250.5});
    scene.dragWith({123.5, 250.5}, Qt::KeyboardModifiers(modifier));
    QCOMPARE(scene.box()->frame().x(), 75.6f + 23.0);
    QVERIFY(scene.canvas->snapResult().guides.isEmpty());
    scene.release({123.5, 250.5});
    const PositionRect *saved = scene.canvas->positionRect();
    QVERIFY(saved->left() != saved->right());
    QCOMPARE(QString::asprintf("%.1f", double(saved->left())), QStringLiteral("39.1"));
    QCOMPARE(owner.steps.size(), 1);
    QCOMPARE(owner.ends, 1);
}

void TestPositionView::shiftCornerKeepsTheImagesShape()
{
    Scene scene({240, 320});
    scene.canvas->setPageProportions(QSizeF(3, 4));
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::blue);
    scene.canvas->setImage(image);
    QCOMPARE(scene.box()->keptAspect(), 2.0);
    scene.canvas->setPositionRect(margins(10, 45, 60, 40));
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->frame(), QRectF(24, 128, 72, 48));
    scene.press({92.5, 131.5});
    QCOMPARE(scene.box()->mouseType(), int(MouseTypeBottomRight));
    scene.dragWith({122.5, 111.5}, Qt::ShiftModifier); // the plain drag: 102 x 68
    QCOMPARE(scene.box()->frame(), QRectF(24, 108, 136, 68));
    scene.release({122.5, 111.5});
    // On the 3:4 page the box is twice as wide as it is high, like the image.
    const PositionRect *m = scene.canvas->positionRect();
    const double pageWidth = (100.0 - m->left() - m->right()) * 3;
    const double pageHeight = (100.0 - m->top() - m->bottom()) * 4;
    QVERIFY2(qAbs(pageWidth / pageHeight - 2.0) < 1e-5,
             qPrintable(QString::number(pageWidth / pageHeight)));
    QCOMPARE(m->top(), 45.0f); // the opposite corner stayed
    QCOMPARE(m->left(), 10.0f);
}

void TestPositionView::shiftWithoutAnImageSnapsAsUsual()
{
    Scene scene({240, 320});
    scene.canvas->setPositionRect(margins(10, 45, 60, 40));
    QVERIFY(scene.showAndPaint());
    QCOMPARE(scene.box()->keptAspect(), 0.0);
    scene.press({92.5, 131.5});
    scene.dragWith({122.5, 111.5}, Qt::ShiftModifier);
    // The right side at 126 is 6 from the centre line: out of reach, the plain drag.
    QCOMPARE(scene.box()->frame(), QRectF(24, 108, 102, 68));
    scene.dragWith({117.5, 111.5}, Qt::ShiftModifier); // 1 past the centre line: pulled onto it
    QCOMPARE(scene.box()->frame(), QRectF(24, 108, 96, 68));
    scene.release({117.5, 111.5});
}

void TestPositionView::fitToImageSetsTheHeightAndTellsTheOwner_data()
{
    QTest::addColumn<QSize>("image");
    QTest::addColumn<PositionRect>("before");
    QTest::addColumn<PositionRect>("after");
    QTest::newRow("4:3 image, 80 % wide: 45 % high on the 3:4 page")
        << QSize(400, 300) << margins(10, 10, 10, 10, 20, 2) << margins(10, 10, 10, 45, 20, 2);
    QTest::newRow("square image past the bottom: the box moves up")
        << QSize(300, 300) << margins(10, 50, 10, 10) << margins(10, 40, 10, 0);
}

void TestPositionView::fitToImageSetsTheHeightAndTellsTheOwner()
{
    QFETCH(QSize, image);
    QFETCH(PositionRect, before);
    QFETCH(PositionRect, after);
    Scene scene({240, 320});
    Owner owner;
    owner.view = scene.canvas;
    scene.canvas->setOwer(&owner);
    scene.canvas->setPageProportions(QSizeF(3, 4));
    QImage picture(image, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    scene.canvas->setImage(picture);
    scene.canvas->setPositionRect(before);
    QVERIFY(scene.showAndPaint());

    std::unique_ptr<QMenu> menu(scene.canvas->createContextMenu(nullptr));
    QAction *fit = menu->findChild<QAction *>(QStringLiteral("actionFitToImage"));
    QVERIFY(fit);
    QCOMPARE(fit->text(), QStringLiteral("Fit to image"));
    QVERIFY(fit->isEnabled());
    fit->trigger();
    QCOMPARE(*scene.canvas->positionRect(), after);
    // Saved like a drag: one step with the new margins, then the end.
    QCOMPARE(owner.steps, QList<PositionRect>({after}));
    QCOMPARE(owner.ends, 1);
    QVERIFY(scene.showAndPaint());
    const QRectF box = scene.box()->frame();
    QVERIFY(qAbs(box.width() / box.height() - qreal(image.width()) / image.height()) < 0.01);
}

void TestPositionView::fitToImageNeedsAnImage()
{
    Scene scene({240, 320});
    Owner owner;
    owner.view = scene.canvas;
    scene.canvas->setOwer(&owner);
    scene.canvas->setPositionRect(margins(10, 10, 10, 10));
    std::unique_ptr<QMenu> menu(scene.canvas->createContextMenu(nullptr));
    QAction *fit = menu->findChild<QAction *>(QStringLiteral("actionFitToImage"));
    QVERIFY(fit);
    QVERIFY(!fit->isEnabled());
    scene.canvas->fitToImage();
    QCOMPARE(*scene.canvas->positionRect(), margins(10, 10, 10, 10));
    QCOMPARE(owner.steps.size(), 0);
    QCOMPARE(owner.ends, 0);
    // A link gives no image to fit to.
    scene.canvas->setLinkHost(QStringLiteral("example.org"));
    menu.reset(scene.canvas->createContextMenu(nullptr));
    QVERIFY(!menu->findChild<QAction *>(QStringLiteral("actionFitToImage"))->isEnabled());
}

void TestPositionView::imageShowsAtTheTransparency_data()
{
    QTest::addColumn<float>("transparency");
    QTest::addColumn<QColor>("left");
    QTest::addColumn<QColor>("right");
    // The body's own fill over the white page is (217, 217, 224); the image goes over it.
    QTest::newRow("0 %: the image as it is") << 0.0f << QColor(0, 0, 255) << QColor(0, 255, 0);
    QTest::newRow("50 %: half the image, half the box")
        << 50.0f << QColor(108, 108, 240) << QColor(108, 236, 112);
    QTest::newRow("100 %: the empty box")
        << 100.0f << QColor(217, 217, 224) << QColor(217, 217, 224);
}

void TestPositionView::imageShowsAtTheTransparency()
{
    QFETCH(float, transparency);
    QFETCH(QColor, left);
    QFETCH(QColor, right);
    Scene scene({200, 100});
    scene.canvas->setFillColor(Qt::white);
    // A 40 x 20 image, blue on its left half and green on its right, on a 160 x 80 box.
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::blue);
    for (int y = 0; y < 20; ++y)
        for (int x = 20; x < 40; ++x)
            image.setPixel(x, y, qRgb(0, 255, 0));
    scene.canvas->setImage(image);
    scene.canvas->setPositionRectWithLeft(10, 10, 10, 10, transparency, 0);
    QVERIFY(scene.showAndPaint());
    const QImage shown = renderCanvas(scene.canvas);
    // Scaled to the body: the halves meet at the box's middle, x 100.
    QVERIFY2(near(shown.pixel(60, 50), left, 3), qPrintable(describe(shown.pixel(60, 50))));
    QVERIFY2(near(shown.pixel(96, 30), left, 3), qPrintable(describe(shown.pixel(96, 30))));
    QVERIFY2(near(shown.pixel(104, 30), right, 3), qPrintable(describe(shown.pixel(104, 30))));
    QVERIFY2(near(shown.pixel(140, 70), right, 3), qPrintable(describe(shown.pixel(140, 70))));
    // Handles and outline on top, whatever the transparency.
    QVERIFY(near(shown.pixel(60, 13), Qt::red, 0));
    const QRectF frame = scene.box()->frame();
    const HitAreas areas = scene.box()->trackingAreas();
    for (int i = 1; i < 9; ++i)
        QVERIFY2(isWhite(shown.pixel(handleCentrePixel(frame, areas[i], 100))),
                 qPrintable(QString::number(i)));
    // Outside the box, the page.
    QVERIFY(isWhite(shown.pixel(10, 50)));
}

void TestPositionView::linkShowsASymbolAndItsHost()
{
    Scene scene({200, 100});
    scene.canvas->setFillColor(Qt::white);
    scene.canvas->setPositionRectWithLeft(10, 10, 10, 10, 0, 0);
    QVERIFY(scene.showAndPaint());
    const QImage empty = renderCanvas(scene.canvas);
    scene.canvas->setLinkHost(QStringLiteral("images.example.org"));
    QCOMPARE(scene.box()->linkHost(), QStringLiteral("images.example.org"));
    const QImage linked = renderCanvas(scene.canvas);
    // Dark ink in the body: the symbol in the upper middle, the host name under it.
    const auto inkIn = [](const QImage &image, const QRect &area) {
        int ink = 0;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                ink += qGray(image.pixel(x, y)) < 120;
        return ink;
    };
    const QRect symbol(90, 25, 20, 22);
    const QRect name(30, 50, 140, 25);
    QCOMPARE(inkIn(empty, symbol), 0);
    QCOMPARE(inkIn(empty, name), 0);
    QVERIFY(inkIn(linked, symbol) > 10);
    QVERIFY(inkIn(linked, name) > 20);
    // An image takes the link's place.
    QImage image(10, 10, QImage::Format_RGB32);
    image.fill(Qt::white);
    scene.canvas->setImage(image);
    QCOMPARE(inkIn(renderCanvas(scene.canvas), name), 0);
}

QTEST_MAIN(TestPositionView)
#include "tst_positionview.moc"
