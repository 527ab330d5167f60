#include "positionview.h"
#include "postionviewdelete.h"
#include "testenv.h"
#include "veleditview.h"

#include <QAccessible>
#include <QtTest>

#include <cmath>

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
    void release(QPointF canvasPoint)
    {
        QTest::mouseRelease(box(), Qt::LeftButton, {}, boxPixel(canvasPoint));
    }
};

PositionRect margins(float left, float top, float right, float bottom, float transparency = 0,
                     int layer = 0)
{
    PositionRect r;
    r.setLeft(left);
    r.setTop(top);
    r.setRight(right);
    r.setBottom(bottom);
    r.setTransparency(transparency);
    r.setLayer(layer);
    return r;
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
    QTest::mouseMove(&other, QPoint(35, 30));
    QCOMPARE(other.frame(), QRectF(20, 5, 50, 50)); // the other box did move
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
    scene.drag({90.5, 55.5});
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

QTEST_MAIN(TestPositionView)
#include "tst_positionview.moc"
