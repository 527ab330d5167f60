// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "editgeometry.h"
#include "testenv.h"

#include <QtTest>

#include <limits>

using namespace EditGeometry;

Q_DECLARE_METATYPE(EditGeometry::MouseType)
Q_DECLARE_METATYPE(PositionRect)

// The box's geometry without any window: hit areas, their classification, the drag rules and the
// canvas's clamp before margins are computed.
class TestEditGeometry : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void handleSizeIsSeven() { QCOMPARE(trackBoxSize, 7.0f); }

    void hitAreas_data();
    void hitAreas();
    void containsPoint_data();
    void containsPoint();
    void mouseTypeForArea_data();
    void mouseTypeForArea();
    void mouseTypeAt_data();
    void mouseTypeAt();
    void shownFrameIsNeverStale_data();
    void shownFrameIsNeverStale();
    void withMinimumSize_data();
    void withMinimumSize();
    void dragStep_data();
    void dragStep();
    void dragStepIgnoresTypesOutsideOneToNine_data();
    void dragStepIgnoresTypesOutsideOneToNine();
    void normalise_data();
    void normalise();
    void clampFrameForMargins_data();
    void clampFrameForMargins();
    void keyStepFor_data();
    void keyStepFor();
    void steppedMargins_data();
    void steppedMargins();
    void steppedMarginsKeepTransparencyAndLayer();
    void fittedRect_data();
    void fittedRect();
    void flipIsItsOwnInverse();
    void flipTransformMatchesFlippedPoints();
    void pointerPointIsThePixelCentre_data();
    void pointerPointIsThePixelCentre();
};

void TestEditGeometry::hitAreas_data()
{
    QTest::addColumn<QSizeF>("box");
    QTest::addColumn<int>("index");
    QTest::addColumn<QRectF>("area");

    const QSizeF box(100, 60);
    QTest::newRow("interior is the box less a 7-point band") << box << 0 << QRectF(7, 7, 86, 46);
    QTest::newRow("left handle centred vertically") << box << 1 << QRectF(0, 26.5, 7, 7);
    QTest::newRow("right handle at the right edge") << box << 2 << QRectF(93, 26.5, 7, 7);
    QTest::newRow("top handle at the top edge") << box << 3 << QRectF(46.5, 53, 7, 7);
    QTest::newRow("bottom handle at y 0") << box << 4 << QRectF(46.5, 0, 7, 7);
    QTest::newRow("top-left corner") << box << 5 << QRectF(0, 53, 7, 7);
    QTest::newRow("top-right corner") << box << 6 << QRectF(93, 53, 7, 7);
    QTest::newRow("bottom-left corner at the origin") << box << 7 << QRectF(0, 0, 7, 7);
    QTest::newRow("bottom-right corner") << box << 8 << QRectF(93, 0, 7, 7);

    const QSizeF small(15, 15);
    QTest::newRow("15x15 interior is 1x1 at (7,7)") << small << 0 << QRectF(7, 7, 1, 1);
    QTest::newRow("15x15 left handle overlaps both left corners")
        << small << 1 << QRectF(0, 4, 7, 7);
    QTest::newRow("15x15 top handle overlaps both top corners") << small << 3 << QRectF(4, 8, 7, 7);
    QTest::newRow("15x15 top-right corner") << small << 6 << QRectF(8, 8, 7, 7);

    QTest::newRow("21 wide: top handle lies at x 7") << QSizeF(21, 40) << 3 << QRectF(7, 33, 7, 7);
    QTest::newRow("21 tall: left handle lies at y 7") << QSizeF(40, 21) << 1 << QRectF(0, 7, 7, 7);
}

void TestEditGeometry::hitAreas()
{
    QFETCH(QSizeF, box);
    QFETCH(int, index);
    QFETCH(QRectF, area);
    QCOMPARE(EditGeometry::hitAreas(box)[index], area);
}

void TestEditGeometry::containsPoint_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("inside");
    // The rectangle (10, 20, 30, 40) throughout.
    QTest::newRow("left edge belongs") << QPointF(10, 30) << true;
    QTest::newRow("bottom edge belongs") << QPointF(20, 20) << true;
    QTest::newRow("right edge does not") << QPointF(40, 30) << false;
    QTest::newRow("top edge does not") << QPointF(20, 60) << false;
    QTest::newRow("just inside the top-right corner") << QPointF(39.99, 59.99) << true;
    QTest::newRow("left of the rectangle") << QPointF(9.99, 30) << false;
}

void TestEditGeometry::containsPoint()
{
    QFETCH(QPointF, point);
    QFETCH(bool, inside);
    QCOMPARE(EditGeometry::containsPoint(QRectF(10, 20, 30, 40), point), inside);
}

void TestEditGeometry::mouseTypeForArea_data()
{
    QTest::addColumn<QSizeF>("frame");
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<MouseType>("type");

    const QSizeF box(100, 60);
    const HitAreas a = EditGeometry::hitAreas(box);
    QTest::newRow("interior moves") << box << a[0] << MouseTypeMove;
    QTest::newRow("left handle") << box << a[1] << MouseTypeLeft;
    QTest::newRow("right handle") << box << a[2] << MouseTypeRight;
    QTest::newRow("top handle") << box << a[3] << MouseTypeTop;
    QTest::newRow("bottom handle") << box << a[4] << MouseTypeBottom;
    QTest::newRow("top-left corner") << box << a[5] << MouseTypeTopLeft;
    QTest::newRow("top-right corner") << box << a[6] << MouseTypeTopRight;
    QTest::newRow("bottom-left corner") << box << a[7] << MouseTypeBottomLeft;
    QTest::newRow("bottom-right corner") << box << a[8] << MouseTypeBottomRight;

    const HitAreas narrow = EditGeometry::hitAreas(QSizeF(21, 40));
    QTest::newRow("21 wide: top handle at x 7 counts as interior")
        << QSizeF(21, 40) << narrow[3] << MouseTypeMove;
    QTest::newRow("21 wide: bottom handle at x 7 counts as interior")
        << QSizeF(21, 40) << narrow[4] << MouseTypeMove;
    QTest::newRow("21 wide: side handles keep their types")
        << QSizeF(21, 40) << narrow[2] << MouseTypeRight;

    const HitAreas small = EditGeometry::hitAreas(QSizeF(15, 15));
    QTest::newRow("15x15 left handle below half height")
        << QSizeF(15, 15) << small[1] << MouseTypeLeft;
    QTest::newRow("15x15 top-left corner at half height or above")
        << QSizeF(15, 15) << small[5] << MouseTypeTopLeft;
    QTest::newRow("15x15 right handle right of half width")
        << QSizeF(15, 15) << small[2] << MouseTypeRight;
    QTest::newRow("15x15 top handle in the middle column")
        << QSizeF(15, 15) << small[3] << MouseTypeTop;

    QTest::newRow("an area not 7 wide is none") << box << QRectF(0, 0, 8, 7) << MouseTypeNone;
    QTest::newRow("x test is exact: 7.0001 is not the interior")
        << box << QRectF(7.0001, 7, 7, 7) << MouseTypeTop;
    QTest::newRow("right column starts at half width")
        << box << QRectF(50, 20, 7, 7) << MouseTypeRight;
    QTest::newRow("upper half starts at half height")
        << box << QRectF(0, 30, 7, 7) << MouseTypeTopLeft;
}

void TestEditGeometry::mouseTypeForArea()
{
    QFETCH(QSizeF, frame);
    QFETCH(QRectF, area);
    QFETCH(MouseType, type);
    QCOMPARE(EditGeometry::mouseTypeForArea(area, frame), type);
}

void TestEditGeometry::mouseTypeAt_data()
{
    QTest::addColumn<QSizeF>("frame");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<MouseType>("type");

    const QSizeF small(15, 15);
    QTest::newRow("15x15 centre pixel is the interior")
        << small << QPointF(7.5, 7.5) << MouseTypeMove;
    QTest::newRow("15x15 left/top-left overlap goes to the left handle")
        << small << QPointF(3, 9) << MouseTypeLeft;
    QTest::newRow("15x15 top-left corner above the overlap")
        << small << QPointF(3, 12) << MouseTypeTopLeft;
    QTest::newRow("15x15 bottom/bottom-left overlap goes to the bottom handle")
        << small << QPointF(5, 2) << MouseTypeBottom;
    QTest::newRow("15x15 right/bottom-right overlap goes to the right handle")
        << small << QPointF(10, 5) << MouseTypeRight;
    QTest::newRow("15x15 top/top-right overlap goes to the top handle")
        << small << QPointF(9, 13) << MouseTypeTop;

    const QSizeF box(100, 60);
    QTest::newRow("left handle's right edge belongs to the interior")
        << box << QPointF(7, 30) << MouseTypeMove;
    QTest::newRow("gap between corner and middle handle is none")
        << box << QPointF(20, 3) << MouseTypeNone;
    QTest::newRow("outside the box is none") << box << QPointF(100, 30) << MouseTypeNone;
    QTest::newRow("21 wide: over the top handle is the interior")
        << QSizeF(21, 40) << QPointF(10.5, 36.5) << MouseTypeMove;
}

void TestEditGeometry::mouseTypeAt()
{
    QFETCH(QSizeF, frame);
    QFETCH(QPointF, point);
    QFETCH(MouseType, type);
    QCOMPARE(EditGeometry::mouseTypeAt(EditGeometry::hitAreas(frame), point, frame), type);
}

void TestEditGeometry::withMinimumSize_data()
{
    QTest::addColumn<QRectF>("frame");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("10 x 40 becomes 15 x 40") << QRectF(3, 4, 10, 40) << QRectF(3, 4, 15, 40);
    QTest::newRow("40 x 10 becomes 40 x 15") << QRectF(3, 4, 40, 10) << QRectF(3, 4, 40, 15);
    QTest::newRow("empty frame becomes 15 x 15 at the origin") << QRectF() << QRectF(0, 0, 15, 15);
    QTest::newRow("large enough stays") << QRectF(1, 2, 15, 16) << QRectF(1, 2, 15, 16);
}

void TestEditGeometry::withMinimumSize()
{
    QFETCH(QRectF, frame);
    QFETCH(QRectF, expected);
    QCOMPARE(EditGeometry::withMinimumSize(frame), expected);
}

void TestEditGeometry::dragStep_data()
{
    QTest::addColumn<QRectF>("frame");
    QTest::addColumn<MouseType>("type");
    QTest::addColumn<qreal>("dx");
    QTest::addColumn<qreal>("dy");
    QTest::addColumn<QRectF>("expected");

    // A 400 x 300 canvas throughout; frames are (x, y, w, h) with y up.
    const QRectF box(100, 50, 100, 50);

    QTest::newRow("right handle to pointer x 450 stops at the canvas edge: w 300")
        << box << MouseTypeRight << 250.0 << 0.0 << QRectF(100, 50, 300, 50);
    QTest::newRow("right handle inwards past the left edge collapses, then 15")
        << box << MouseTypeRight << -130.0 << 0.0 << QRectF(100, 50, 15, 50);
    QTest::newRow("left handle right by more than the width: w 15, x from the rule")
        << QRectF(100, 50, 50, 50) << MouseTypeLeft << 80.0 << 0.0 << QRectF(150, 50, 15, 50);
    QTest::newRow("left handle past the canvas's left edge keeps the right edge")
        << QRectF(10, 50, 50, 50) << MouseTypeLeft << -30.0 << 0.0 << QRectF(0, 50, 60, 50);
    QTest::newRow("left handle right stops at Wc - 15 without correcting w")
        << QRectF(380, 50, 40, 50) << MouseTypeLeft << 10.0 << 0.0 << QRectF(385, 50, 30, 50);

    QTest::newRow("move that would end at x -20 stops at 0, size unchanged")
        << QRectF(10, 50, 50, 50) << MouseTypeMove << -30.0 << 0.0 << QRectF(0, 50, 50, 50);
    QTest::newRow("move past the right edge stops at Wc - w")
        << QRectF(340, 50, 50, 50) << MouseTypeMove << 30.0 << 0.0 << QRectF(350, 50, 50, 50);
    QTest::newRow("move past the top stops at Hc - h")
        << QRectF(100, 240, 50, 50) << MouseTypeMove << 0.0 << 30.0 << QRectF(100, 250, 50, 50);
    QTest::newRow("move below the bottom stops at 0")
        << QRectF(100, 20, 50, 50) << MouseTypeMove << 0.0 << -30.0 << QRectF(100, 0, 50, 50);
    QTest::newRow("move by nothing gives the same frame")
        << box << MouseTypeMove << 0.0 << 0.0 << box;

    QTest::newRow("top handle up past the canvas top: h to Hc - y")
        << QRectF(100, 200, 50, 50) << MouseTypeTop << 0.0 << 80.0 << QRectF(100, 200, 50, 100);
    QTest::newRow("top handle up with y above Hc - 15 pulls y down to it")
        << QRectF(100, 290, 50, 15) << MouseTypeTop << 0.0 << 5.0 << QRectF(100, 285, 50, 15);
    QTest::newRow("top handle down past the bottom collapses, then 15")
        << box << MouseTypeTop << 0.0 << -80.0 << QRectF(100, 50, 100, 15);

    QTest::newRow("bottom handle below the canvas raises the top by the overshoot")
        << QRectF(100, 10, 50, 50) << MouseTypeBottom << 0.0 << -30.0 << QRectF(100, 0, 50, 80);
    QTest::newRow("bottom handle up past the top edge collapses at the old top, then 15")
        << box << MouseTypeBottom << 0.0 << 80.0 << QRectF(100, 100, 100, 15);
    QTest::newRow("bottom handle up near the canvas top stops at Hc - 15")
        << QRectF(100, 280, 50, 10) << MouseTypeBottom << 0.0 << 10.0 << QRectF(100, 285, 50, 15);

    QTest::newRow("top-left: left rule then top rule")
        << box << MouseTypeTopLeft << -10.0 << 10.0 << QRectF(90, 50, 110, 60);
    QTest::newRow("top-right: right rule then top rule")
        << box << MouseTypeTopRight << 10.0 << -10.0 << QRectF(100, 50, 110, 40);
    QTest::newRow("bottom-left: left rule then bottom rule")
        << box << MouseTypeBottomLeft << -10.0 << -10.0 << QRectF(90, 40, 110, 60);
    QTest::newRow("bottom-right: right rule then bottom rule")
        << box << MouseTypeBottomRight << 10.0 << 10.0 << QRectF(100, 60, 110, 40);
    QTest::newRow("bottom-right corner to the canvas's corner")
        << box << MouseTypeBottomRight << 500.0 << -500.0 << QRectF(100, 0, 300, 550);

    QTest::newRow("a step normalises a box above the canvas: 15 high at Hc - 15")
        << QRectF(100, 310, 50, 40) << MouseTypeRight << 0.0 << 0.0 << QRectF(100, 285, 50, 15);
    QTest::newRow("a step normalises a box beyond Wc - 15: 15 wide at Wc - 15")
        << QRectF(390, 50, 50, 50) << MouseTypeTop << 0.0 << 0.0 << QRectF(385, 50, 15, 50);
}

void TestEditGeometry::dragStep()
{
    QFETCH(QRectF, frame);
    QFETCH(MouseType, type);
    QFETCH(qreal, dx);
    QFETCH(qreal, dy);
    QFETCH(QRectF, expected);
    const std::optional<QRectF> next = EditGeometry::dragStep(frame, type, dx, dy, {400, 300});
    QVERIFY(next.has_value());
    QCOMPARE(*next, expected);
}

void TestEditGeometry::dragStepIgnoresTypesOutsideOneToNine_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("none") << 0;
    QTest::newRow("ten") << 10;
    QTest::newRow("negative") << -1;
}

void TestEditGeometry::dragStepIgnoresTypesOutsideOneToNine()
{
    QFETCH(int, type);
    QVERIFY(!EditGeometry::dragStep(QRectF(10, 10, 50, 50), type, 5, 5, {400, 300}).has_value());
    QVERIFY(!isDragType(type));
}

void TestEditGeometry::normalise_data()
{
    QTest::addColumn<QRectF>("frame");
    QTest::addColumn<QRectF>("expected");
    // A 400 x 300 canvas throughout.
    QTest::newRow("negative origin goes to 0") << QRectF(-5, -6, 50, 50) << QRectF(0, 0, 50, 50);
    QTest::newRow("collapsed box grows to 15 x 15")
        << QRectF(10, 10, 0, 0) << QRectF(10, 10, 15, 15);
    QTest::newRow("x beyond Wc - 15 forces 15 wide at Wc - 15")
        << QRectF(390, 10, 80, 50) << QRectF(385, 10, 15, 50);
    QTest::newRow("x exactly Wc - 15 is kept")
        << QRectF(385, 10, 80, 50) << QRectF(385, 10, 80, 50);
    QTest::newRow("y above Hc forces 15 high at Hc - 15")
        << QRectF(10, 301, 50, 80) << QRectF(10, 285, 50, 15);
    QTest::newRow("y between Hc - 15 and Hc is kept, unlike x")
        << QRectF(10, 295, 50, 80) << QRectF(10, 295, 50, 80);
}

void TestEditGeometry::normalise()
{
    QFETCH(QRectF, frame);
    QFETCH(QRectF, expected);
    QCOMPARE(EditGeometry::normalise(frame, {400, 300}), expected);
}

void TestEditGeometry::clampFrameForMargins_data()
{
    QTest::addColumn<QRectF>("frame");
    QTest::addColumn<QRectF>("expected");
    // A 200 x 100 canvas throughout.
    QTest::newRow("inside the canvas is unchanged")
        << QRectF(20, 10, 160, 80) << QRectF(20, 10, 160, 80);
    QTest::newRow("negative origin goes to 0") << QRectF(-3, -4, 50, 50) << QRectF(0, 0, 50, 50);
    QTest::newRow("narrow box counts as 15 wide")
        << QRectF(10, 10, 5, 50) << QRectF(10, 10, 15, 50);
    QTest::newRow("box wider than the canvas counts as the canvas's width")
        << QRectF(10, 10, 250, 50) << QRectF(10, 10, 200, 50);
    QTest::newRow("low box counts as 15 high") << QRectF(10, 10, 50, 2) << QRectF(10, 10, 50, 15);
    QTest::newRow("box taller than the canvas counts as the canvas's height")
        << QRectF(10, 10, 50, 150) << QRectF(10, 10, 50, 100);
}

void TestEditGeometry::clampFrameForMargins()
{
    QFETCH(QRectF, frame);
    QFETCH(QRectF, expected);
    QCOMPARE(EditGeometry::clampFrameForMargins(frame, {200, 100}), expected);
}

namespace {
PositionRect margins(float left, float top, float right, float bottom)
{
    PositionRect rect;
    rect.setLeft(left);
    rect.setTop(top);
    rect.setRight(right);
    rect.setBottom(bottom);
    return rect;
}
} // namespace

void TestEditGeometry::keyStepFor_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("isStep");
    QTest::addColumn<float>("dx");
    QTest::addColumn<float>("dy");
    QTest::addColumn<bool>("resize");

    const int none = Qt::NoModifier;
    QTest::newRow("left moves 1 % left")
        << int(Qt::Key_Left) << none << true << -1.0f << 0.0f << false;
    QTest::newRow("right moves 1 % right")
        << int(Qt::Key_Right) << none << true << 1.0f << 0.0f << false;
    QTest::newRow("up moves 1 % up") << int(Qt::Key_Up) << none << true << 0.0f << -1.0f << false;
    QTest::newRow("down moves 1 % down")
        << int(Qt::Key_Down) << none << true << 0.0f << 1.0f << false;
    QTest::newRow("shift makes it 10 %")
        << int(Qt::Key_Right) << int(Qt::ShiftModifier) << true << 10.0f << 0.0f << false;
    QTest::newRow("alt moves the right edge")
        << int(Qt::Key_Right) << int(Qt::AltModifier) << true << 1.0f << 0.0f << true;
    QTest::newRow("shift+alt moves the bottom edge 10 %")
        << int(Qt::Key_Up) << int(Qt::ShiftModifier | Qt::AltModifier) << true << 0.0f << -10.0f
        << true;
    QTest::newRow("keypad arrows count as arrows")
        << int(Qt::Key_Down) << int(Qt::KeypadModifier) << true << 0.0f << 1.0f << false;
    QTest::newRow("control+arrow is left to the window")
        << int(Qt::Key_Left) << int(Qt::ControlModifier) << false << 0.0f << 0.0f << false;
    QTest::newRow("meta+arrow is left to the window")
        << int(Qt::Key_Left) << int(Qt::MetaModifier) << false << 0.0f << 0.0f << false;
    QTest::newRow("other keys are no step")
        << int(Qt::Key_Tab) << none << false << 0.0f << 0.0f << false;
}

void TestEditGeometry::keyStepFor()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(bool, isStep);
    QFETCH(float, dx);
    QFETCH(float, dy);
    QFETCH(bool, resize);
    const auto step = EditGeometry::keyStepFor(key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(step.has_value(), isStep);
    if (!step)
        return;
    QCOMPARE(step->dx, dx);
    QCOMPARE(step->dy, dy);
    QCOMPARE(step->resize, resize);
}

void TestEditGeometry::steppedMargins_data()
{
    QTest::addColumn<PositionRect>("before");
    QTest::addColumn<float>("dx");
    QTest::addColumn<float>("dy");
    QTest::addColumn<bool>("resize");
    QTest::addColumn<PositionRect>("after");

    // On a 200 x 300 page the 15-point minimum is 7.5 % wide and 5 % high.
    const PositionRect box = margins(10, 26, 60, 26);
    QTest::newRow("move right: left grows, right shrinks")
        << box << 1.0f << 0.0f << false << margins(11, 26, 59, 26);
    QTest::newRow("move down 10 %: top grows, bottom shrinks")
        << box << 0.0f << 10.0f << false << margins(10, 36, 60, 16);
    QTest::newRow("move up: top shrinks, bottom grows")
        << box << 0.0f << -1.0f << false << margins(10, 25, 60, 27);
    QTest::newRow("move stops where the right edge meets the page")
        << margins(10, 26, 0.5f, 26) << 1.0f << 0.0f << false << margins(10.5f, 26, 0, 26);
    QTest::newRow("move stops where the left edge meets the page")
        << margins(0.5f, 26, 60, 26) << -10.0f << 0.0f << false << margins(0, 26, 60.5f, 26);
    QTest::newRow("move at the bottom edge changes nothing")
        << margins(10, 26, 60, 0) << 0.0f << 1.0f << false << margins(10, 26, 60, 0);
    QTest::newRow("an edge beyond the page is not pushed further out")
        << margins(-5, 26, 60, 26) << -1.0f << 0.0f << false << margins(-5, 26, 60, 26);
    QTest::newRow("a box beyond the page moves back in")
        << margins(-5, 26, 60, 26) << 1.0f << 0.0f << false << margins(-4, 26, 59, 26);
    QTest::newRow("alt+right grows the box at its right edge")
        << box << 1.0f << 0.0f << true << margins(10, 26, 59, 26);
    QTest::newRow("alt+left shrinks the box at its right edge")
        << box << -1.0f << 0.0f << true << margins(10, 26, 61, 26);
    QTest::newRow("alt+down grows the box at its bottom edge")
        << box << 0.0f << 1.0f << true << margins(10, 26, 60, 25);
    QTest::newRow("alt+up shrinks the box at its bottom edge")
        << box << 0.0f << -10.0f << true << margins(10, 26, 60, 36);
    QTest::newRow("growing stops at the page's edge")
        << margins(10, 26, 0.5f, 0.25f) << 10.0f << 10.0f << true << margins(10, 26, 0, 0);
    QTest::newRow("shrinking stops at the minimum width")
        << margins(10, 26, 81, 26) << -10.0f << 0.0f << true << margins(10, 26, 82.5f, 26);
    QTest::newRow("shrinking stops at the minimum height")
        << margins(10, 40, 60, 54) << 0.0f << -10.0f << true << margins(10, 40, 60, 55);
    QTest::newRow("a box at its minimum does not shrink")
        << margins(10, 26, 82.5f, 26) << -1.0f << 0.0f << true << margins(10, 26, 82.5f, 26);
    QTest::newRow("a box under its minimum is not shrunk further")
        << margins(10, 26, 85, 26) << -1.0f << 0.0f << true << margins(10, 26, 85, 26);
}

void TestEditGeometry::steppedMargins()
{
    QFETCH(PositionRect, before);
    QFETCH(float, dx);
    QFETCH(float, dy);
    QFETCH(bool, resize);
    QFETCH(PositionRect, after);
    const PositionRect result =
        EditGeometry::steppedMargins(before, EditGeometry::KeyStep{dx, dy, resize}, {200, 300});
    QCOMPARE(result.left(), after.left());
    QCOMPARE(result.top(), after.top());
    QCOMPARE(result.right(), after.right());
    QCOMPARE(result.bottom(), after.bottom());
}

void TestEditGeometry::steppedMarginsKeepTransparencyAndLayer()
{
    PositionRect before = margins(10, 26, 60, 26);
    before.setTransparency(42.5f);
    before.setLayer(1);
    const PositionRect after =
        EditGeometry::steppedMargins(before, EditGeometry::KeyStep{1, 1, false}, {200, 300});
    QCOMPARE(after.transparency(), 42.5f);
    QCOMPARE(after.layer(), 1);
    QCOMPARE(after.left(), 11.0f);
    QCOMPARE(after.top(), 27.0f);
    // A page of no size has no percent to step by.
    QCOMPARE(EditGeometry::steppedMargins(before, EditGeometry::KeyStep{1, 1, false}, {0, 0}),
             before);
}

void TestEditGeometry::fittedRect_data()
{
    QTest::addColumn<QSize>("area");
    QTest::addColumn<QRect>("expected");
    // The page's proportions, 3 : 4.
    QTest::newRow("exact fit fills the area") << QSize(300, 400) << QRect(0, 0, 300, 400);
    QTest::newRow("wide area: full height, centred across")
        << QSize(500, 400) << QRect(100, 0, 300, 400);
    QTest::newRow("tall area: full width, centred down")
        << QSize(300, 600) << QRect(0, 100, 300, 400);
    QTest::newRow("odd leftover rounds the offset down")
        << QSize(301, 400) << QRect(0, 0, 300, 400);
    QTest::newRow("a width the ratio cannot split rounds to the nearest pixel")
        << QSize(1000, 239) << QRect(410, 0, 179, 239);
    QTest::newRow("empty area gives nothing") << QSize(0, 400) << QRect();
}

void TestEditGeometry::fittedRect()
{
    QFETCH(QSize, area);
    QFETCH(QRect, expected);
    QCOMPARE(EditGeometry::fittedRect(area, QSizeF(3, 4)), expected);
    QCOMPARE(EditGeometry::fittedRect(area, QSizeF()), QRect());
}

void TestEditGeometry::flipIsItsOwnInverse()
{
    const QRectF r(20, 10, 160, 30);
    QCOMPARE(flipped(r, 100), QRectF(20, 60, 160, 30));
    QCOMPARE(flipped(flipped(r, 100), 100), r);
    QCOMPARE(flipped(QPointF(3, 25), 100), QPointF(3, 75));
    QCOMPARE(flipped(flipped(QPointF(3, 25), 100), 100), QPointF(3, 25));
}

void TestEditGeometry::flipTransformMatchesFlippedPoints()
{
    const QTransform t = flipTransform(100);
    QCOMPARE(t.map(QPointF(3, 25)), flipped(QPointF(3, 25), 100));
    QCOMPARE(t.mapRect(QRectF(20, 10, 160, 30)), flipped(QRectF(20, 10, 160, 30), 100));
}

void TestEditGeometry::pointerPointIsThePixelCentre_data()
{
    QTest::addColumn<QPointF>("qtPosition");
    QTest::addColumn<QPointF>("expected");
    // A container 100 high.
    QTest::newRow("top-left pixel") << QPointF(0, 0) << QPointF(0.5, 99.5);
    QTest::newRow("bottom-left pixel") << QPointF(0, 99) << QPointF(0.5, 0.5);
    QTest::newRow("pixel (12, 40)") << QPointF(12, 40) << QPointF(12.5, 59.5);
}

void TestEditGeometry::pointerPointIsThePixelCentre()
{
    QFETCH(QPointF, qtPosition);
    QFETCH(QPointF, expected);
    QCOMPARE(pointerPoint(qtPosition, 100), expected);
}

void TestEditGeometry::shownFrameIsNeverStale_data()
{
    QTest::addColumn<QList<float>>("margins"); // left, top, right, bottom
    QTest::addColumn<QRectF>("frame"); // on a 200 x 400 canvas, y up; empty: the box stays
    const float nan = std::numeric_limits<float>::quiet_NaN();
    QTest::newRow("on the page: the exact frame")
        << QList<float>{10, 26, 60, 26} << QRectF(20, 104, 60, 192);
    QTest::newRow("touching every edge: the exact frame")
        << QList<float>{0, 0, 0, 0} << QRectF(0, 0, 200, 400);
    QTest::newRow("a left margin of 150: the box at the right edge")
        << QList<float>{150, 26, 60, 26} << QRectF(185, 104, 15, 192);
    QTest::newRow("a left margin of 100000: the box at the right edge")
        << QList<float>{100000, 26, 0, 26} << QRectF(185, 104, 15, 192);
    QTest::newRow("on the page, left and right add up to 100: the box stays where it was")
        << QList<float>{40, 26, 60, 26} << QRectF();
    QTest::newRow("beyond the page and no room: the smallest box at the near margin")
        << QList<float>{40, 26, 160, 26} << QRectF(80, 104, 15, 192);
    QTest::newRow("a bottom margin of 150: the box at the top")
        << QList<float>{10, 0, 60, 150} << QRectF(20, 385, 60, 15);
    QTest::newRow("a negative margin from a file: taken at the page's edge")
        << QList<float>{-20, 26, 60, 26} << QRectF(0, 104, 80, 192);
    QTest::newRow("not a number: taken as 0") << QList<float>{nan, 26, 60, 26}
                                              << QRectF(0, 104, 80, 192);
}

void TestEditGeometry::shownFrameIsNeverStale()
{
    QFETCH(QList<float>, margins);
    QFETCH(QRectF, frame);
    PositionRect rect;
    rect.setLeft(margins.at(0));
    rect.setTop(margins.at(1));
    rect.setRight(margins.at(2));
    rect.setBottom(margins.at(3));
    const std::optional<QRectF> found = EditGeometry::shownFrame(rect, QSizeF(200, 400));
    QCOMPARE(found.has_value(), !frame.isNull());
    if (!found)
        return;
    const QRectF shown = *found;
    QVERIFY2(qAbs(shown.x() - frame.x()) < 0.01 && qAbs(shown.y() - frame.y()) < 0.01 &&
                 qAbs(shown.width() - frame.width()) < 0.01 &&
                 qAbs(shown.height() - frame.height()) < 0.01,
             qPrintable(QStringLiteral("%1,%2 %3x%4")
                            .arg(shown.x())
                            .arg(shown.y())
                            .arg(shown.width())
                            .arg(shown.height())));
}

QTEST_GUILESS_MAIN(TestEditGeometry)
#include "tst_editgeometry.moc"
