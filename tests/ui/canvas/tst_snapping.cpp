// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "editgeometry.h"
#include "snapping.h"
#include "testenv.h"

#include <QtTest>

using namespace EditGeometry;
using namespace Snapping;

Q_DECLARE_METATYPE(Snapping::AxisSnap)

namespace {

// The margins a snapped frame is saved with, by the canvas's own path: bounded to the page,
// converted, made exact.
PositionRect savedMargins(const Result &snap, QSizeF canvas)
{
    const PositionRect converted =
        PositionRect::convertObjectFrame(clampFrameForMargins(snap.frame, canvas), canvas);
    return exactMargins(converted, snap);
}

// The margins as "settings.dat" writes them, left top right bottom.
QString printed(const PositionRect &m)
{
    return QString::asprintf("%.1f %.1f %.1f %.1f", double(m.left()), double(m.top()),
                             double(m.right()), double(m.bottom()));
}

// Guides as "x150 y0": a vertical line at x = 150, a horizontal one at y = 0.
QString listed(const QList<Guide> &guides)
{
    QStringList parts;
    for (const Guide &g : guides)
        parts << (g.orientation == Qt::Vertical ? QStringLiteral("x") : QStringLiteral("y")) +
                     QString::number(g.position);
    return parts.join(QLatin1Char(' '));
}

} // namespace

// Snapping without a window: which lines pull which sides, the limits it keeps, and the exact
// margins it leads to.
class TestSnapping : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void snapDistanceIsFivePoints() { QCOMPARE(snapDistance, 5.0); }

    void snapFrame_data();
    void snapFrame();
    void centredBoxPrintsEqualMarginsOnlyAfterCorrection();
    void exactMargins_data();
    void exactMargins();
    void typesOutsideOneToNineSnapNothing();
};

void TestSnapping::snapFrame_data()
{
    QTest::addColumn<QSizeF>("canvas");
    QTest::addColumn<int>("type");
    QTest::addColumn<QRectF>("dragged");
    QTest::addColumn<QRectF>("snapped");
    QTest::addColumn<QString>("margins"); // as saved: left top right bottom
    QTest::addColumn<QString>("guides");
    QTest::addColumn<bool>("equalAcross");
    QTest::addColumn<bool>("equalUpDown");

    const QSizeF page(300, 400);
    QTest::newRow("move: centre 2.35 off snaps to equal left and right")
        << QSizeF(252, 336) << int(MouseTypeMove) << QRectF(100, 100, 56.7, 60)
        << QRectF(97.65, 100, 56.7, 60) << "38.8 52.4 38.8 29.8"
        << "x126" << true << false;
    QTest::newRow("move: left edge 4 from the page's edge lands on it")
        << page << int(MouseTypeMove) << QRectF(4, 100, 80, 60) << QRectF(0, 100, 80, 60)
        << "0.0 60.0 73.3 25.0"
        << "x0" << false << false;
    QTest::newRow("move: right edge lands on the page's right edge")
        << page << int(MouseTypeMove) << QRectF(217, 100, 80, 60) << QRectF(220, 100, 80, 60)
        << "73.3 60.0 0.0 25.0"
        << "x300" << false << false;
    QTest::newRow("move: left edge lands on the centre line, left 50")
        << page << int(MouseTypeMove) << QRectF(153, 100, 80, 60) << QRectF(150, 100, 80, 60)
        << "50.0 60.0 23.3 25.0"
        << "x150" << false << false;
    QTest::newRow("move: 6 from every line stays where it is")
        << page << int(MouseTypeMove) << QRectF(6, 100, 80, 60) << QRectF(6, 100, 80, 60)
        << "2.0 60.0 71.3 25.0"
        << "" << false << false;
    QTest::newRow("move: exactly 5 from a line is still in reach")
        << page << int(MouseTypeMove) << QRectF(5, 100, 80, 60) << QRectF(0, 100, 80, 60)
        << "0.0 60.0 73.3 25.0"
        << "x0" << false << false;
    QTest::newRow("move: bottom edge lands on the page's bottom")
        << page << int(MouseTypeMove) << QRectF(100, 3, 80, 60) << QRectF(100, 0, 80, 60)
        << "33.3 85.0 40.0 0.0"
        << "y0" << false << false;
    QTest::newRow("move: vertical centre gives equal top and bottom")
        << page << int(MouseTypeMove) << QRectF(100, 168.7, 80, 60) << QRectF(100, 170, 80, 60)
        << "33.3 42.5 40.0 42.5"
        << "y200" << false << true;
    QTest::newRow("move: the nearer of two lines wins")
        << page << int(MouseTypeMove) << QRectF(148, 100, 148, 60) << QRectF(150, 100, 148, 60)
        << "50.0 60.0 0.7 25.0"
        << "x150" << false << false;
    QTest::newRow("move: a box already centred shows the guide")
        << page << int(MouseTypeMove) << QRectF(110, 100, 80, 60) << QRectF(110, 100, 80, 60)
        << "36.7 60.0 36.7 25.0"
        << "x150" << true << false;
    QTest::newRow("resize right: 3 from the left margin's mirror gives equal margins")
        << page << int(MouseTypeRight) << QRectF(60, 100, 177, 60) << QRectF(60, 100, 180, 60)
        << "20.0 60.0 20.0 25.0"
        << "x150" << true << false;
    QTest::newRow("resize left: equal margins, the right side fixed")
        << page << int(MouseTypeLeft) << QRectF(57, 100, 183, 60) << QRectF(60, 100, 180, 60)
        << "20.0 60.0 20.0 25.0"
        << "x150" << true << false;
    QTest::newRow("resize left: onto the page's edge, the right side stays")
        << page << int(MouseTypeLeft) << QRectF(3, 100, 237, 60) << QRectF(0, 100, 240, 60)
        << "0.0 60.0 20.0 25.0"
        << "x0" << false << false;
    QTest::newRow("resize top: onto the page's top")
        << page << int(MouseTypeTop) << QRectF(100, 100, 80, 297) << QRectF(100, 100, 80, 300)
        << "33.3 0.0 40.0 25.0"
        << "y400" << false << false;
    QTest::newRow("resize top-left: both axes snap")
        << page << int(MouseTypeTopLeft) << QRectF(2, 100, 100, 297) << QRectF(0, 100, 102, 300)
        << "0.0 0.0 66.0 25.0"
        << "x0 y400" << false << false;
    QTest::newRow("resize right: a line leaving the box under 15 points is passed over")
        << page << int(MouseTypeRight) << QRectF(136, 100, 16, 60) << QRectF(136, 100, 16, 60)
        << "45.3 60.0 49.3 25.0"
        << "" << false << false;
    QTest::newRow("resize top: the left and right sides are never pulled")
        << page << int(MouseTypeTop) << QRectF(3, 100, 80, 60) << QRectF(3, 100, 80, 60)
        << "1.0 60.0 72.3 25.0"
        << "" << false << false;
    QTest::newRow("resize bottom: the fixed top is not a reason to pull")
        << page << int(MouseTypeBottom) << QRectF(100, 100, 80, 298) << QRectF(100, 100, 80, 298)
        << "33.3 0.5 40.0 25.0"
        << "" << false << false;
}

void TestSnapping::snapFrame()
{
    QFETCH(QSizeF, canvas);
    QFETCH(int, type);
    QFETCH(QRectF, dragged);
    QFETCH(QRectF, snapped);
    QFETCH(QString, margins);
    QFETCH(QString, guides);
    QFETCH(bool, equalAcross);
    QFETCH(bool, equalUpDown);

    const Result result = Snapping::snapFrame(dragged, type, canvas);
    QCOMPARE(result.frame, snapped);
    QCOMPARE(listed(result.guides), guides);
    QCOMPARE(result.equalHorizontal(), equalAcross);
    QCOMPARE(result.equalVertical(), equalUpDown);
    const PositionRect saved = savedMargins(result, canvas);
    QCOMPARE(printed(saved), margins);
    // Equal margins are equal to the last bit, not only in print.
    if (equalAcross)
        QVERIFY(saved.left() == saved.right());
    if (equalUpDown)
        QVERIFY(saved.top() == saved.bottom());
}

// On a 252-point canvas a centred box 56.7 wide converts to 38.75 and 38.749996: printed with one
// decimal that is 38.8 and 38.7. The correction makes them one number.
void TestSnapping::centredBoxPrintsEqualMarginsOnlyAfterCorrection()
{
    const QSizeF canvas(252, 336);
    const Result result = Snapping::snapFrame(QRectF(100, 100, 56.7, 60), MouseTypeMove, canvas);
    const PositionRect converted = PositionRect::convertObjectFrame(result.frame, canvas);
    QVERIFY(QString::asprintf("%.1f", double(converted.left())) !=
            QString::asprintf("%.1f", double(converted.right())));
    const PositionRect exact = Snapping::exactMargins(converted, result);
    QVERIFY(exact.left() == exact.right());
    QCOMPARE(exact.toText().split('\n').at(0), exact.toText().split('\n').at(2));
}

void TestSnapping::exactMargins_data()
{
    QTest::addColumn<AxisSnap>("across");
    QTest::addColumn<AxisSnap>("upDown");
    QTest::addColumn<QString>("margins");

    const AxisSnap none;
    AxisSnap both;
    both.equal = AxisSnap::Equal::Both;
    AxisSnap nearFollows;
    nearFollows.equal = AxisSnap::Equal::NearFollowsFar;
    AxisSnap farFollows;
    farFollows.equal = AxisSnap::Equal::FarFollowsNear;
    AxisSnap onEdges;
    onEdges.nearMargin = 0.0f;
    onEdges.farMargin = 50.0f;

    // Converted margins: left 10.04, top 20.02, right 9.98, bottom 30.06.
    QTest::newRow("nothing snapped: as converted") << none << none << "10.04 20.02 9.98 30.06";
    QTest::newRow("a moved box's equal margins take their mean")
        << both << none << "10.01 20.02 10.01 30.06";
    QTest::newRow("a moved left side takes the fixed right margin")
        << nearFollows << none << "9.98 20.02 9.98 30.06";
    QTest::newRow("a moved top takes the fixed bottom margin")
        << none << farFollows << "10.04 30.06 9.98 30.06";
    QTest::newRow("sides on a page edge and on the centre line are 0 and 50")
        << onEdges << onEdges << "0.00 50.00 50.00 0.00";
}

void TestSnapping::exactMargins()
{
    QFETCH(AxisSnap, across);
    QFETCH(AxisSnap, upDown);
    QFETCH(QString, margins);
    PositionRect converted;
    converted.setLeft(10.04f);
    converted.setTop(20.02f);
    converted.setRight(9.98f);
    converted.setBottom(30.06f);
    converted.setTransparency(40);
    converted.setLayer(2);
    Result snap;
    snap.horizontal = across;
    snap.vertical = upDown;
    const PositionRect exact = Snapping::exactMargins(converted, snap);
    QCOMPARE(QString::asprintf("%.2f %.2f %.2f %.2f", double(exact.left()), double(exact.top()),
                               double(exact.right()), double(exact.bottom())),
             margins);
    QCOMPARE(exact.transparency(), 40.0f);
    QCOMPARE(exact.layer(), 2);
}

void TestSnapping::typesOutsideOneToNineSnapNothing()
{
    for (int type : {0, 10, -1}) {
        const Result result = Snapping::snapFrame(QRectF(3, 3, 50, 50), type, QSizeF(300, 400));
        QCOMPARE(result.frame, QRectF(3, 3, 50, 50));
        QVERIFY(result.guides.isEmpty());
    }
}

QTEST_GUILESS_MAIN(TestSnapping)
#include "tst_snapping.moc"
