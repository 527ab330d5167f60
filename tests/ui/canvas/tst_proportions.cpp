// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "editgeometry.h"
#include "proportions.h"
#include "testenv.h"

#include <QtTest>

using namespace EditGeometry;
using namespace Proportions;

namespace {

PositionRect margins(float left, float top, float right, float bottom)
{
    PositionRect r;
    r.setLeft(left);
    r.setTop(top);
    r.setRight(right);
    r.setBottom(bottom);
    return r;
}

QString listed(const PositionRect &m)
{
    return QString::asprintf("%.2f %.2f %.2f %.2f", double(m.left()), double(m.top()),
                             double(m.right()), double(m.bottom()));
}

} // namespace

Q_DECLARE_METATYPE(PositionRect)

// Keeping an image's shape without a window: the box's ratio on the canvas, the Shift-corner
// resize and "Fit to image".
class TestProportions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void boxAspect_data();
    void boxAspect();
    void keepAspect_data();
    void keepAspect();
    void fittedToImage_data();
    void fittedToImage();
    void fittedToImageKeepsTransparencyAndLayer();
};

void TestProportions::boxAspect_data()
{
    QTest::addColumn<QSizeF>("image");
    QTest::addColumn<QSizeF>("canvas");
    QTest::addColumn<QSizeF>("page");
    QTest::addColumn<qreal>("aspect");
    QTest::newRow("square image, 3:4 canvas of a 3:4 page")
        << QSizeF(100, 100) << QSizeF(300, 400) << QSizeF(3, 4) << 1.0;
    QTest::newRow("2:1 image") << QSizeF(200, 100) << QSizeF(300, 400) << QSizeF(3, 4) << 2.0;
    QTest::newRow("a canvas one pixel wider than the page's shape widens the box")
        << QSizeF(100, 100) << QSizeF(301, 400) << QSizeF(3, 4) << 301.0 / 300.0;
    QTest::newRow("no page proportions: the canvas's own")
        << QSizeF(100, 100) << QSizeF(301, 400) << QSizeF() << 1.0;
    QTest::newRow("no image: no ratio") << QSizeF() << QSizeF(300, 400) << QSizeF(3, 4) << 0.0;
}

void TestProportions::boxAspect()
{
    QFETCH(QSizeF, image);
    QFETCH(QSizeF, canvas);
    QFETCH(QSizeF, page);
    QFETCH(qreal, aspect);
    QCOMPARE(Proportions::boxAspect(image, canvas, page), aspect);
}

void TestProportions::keepAspect_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QRectF>("dragged");
    QTest::addColumn<qreal>("aspect");
    QTest::addColumn<QRectF>("kept");

    // A 300 x 400 canvas, y up. The opposite corner of the dragged one stays.
    QTest::newRow("bottom-right: the wider pull leads, the top-left stays")
        << int(MouseTypeBottomRight) << QRectF(50, 100, 120, 40) << 2.0 << QRectF(50, 80, 120, 60);
    QTest::newRow("top-right: the taller pull leads")
        << int(MouseTypeTopRight) << QRectF(50, 100, 60, 50) << 2.0 << QRectF(50, 100, 100, 50);
    QTest::newRow("top-left: the page's left edge limits the width")
        << int(MouseTypeTopLeft) << QRectF(10, 100, 100, 80) << 2.0 << QRectF(0, 100, 110, 55);
    QTest::newRow("bottom-left: the page's bottom limits the height")
        << int(MouseTypeBottomLeft) << QRectF(100, 20, 40, 30) << 0.5 << QRectF(115, 0, 25, 50);
    QTest::newRow("no box of the shape fits: the plain drag stands")
        << int(MouseTypeTopRight) << QRectF(100, 380, 15, 15) << 0.25 << QRectF(100, 380, 15, 15);
    QTest::newRow("a side handle keeps no shape")
        << int(MouseTypeRight) << QRectF(50, 100, 120, 40) << 2.0 << QRectF(50, 100, 120, 40);
    QTest::newRow("the move keeps no shape")
        << int(MouseTypeMove) << QRectF(50, 100, 120, 40) << 2.0 << QRectF(50, 100, 120, 40);
    QTest::newRow("no ratio: the plain drag")
        << int(MouseTypeBottomRight) << QRectF(50, 100, 120, 40) << 0.0 << QRectF(50, 100, 120, 40);
}

void TestProportions::keepAspect()
{
    QFETCH(int, type);
    QFETCH(QRectF, dragged);
    QFETCH(qreal, aspect);
    QFETCH(QRectF, kept);
    const QRectF result = Proportions::keepAspect(dragged, type, aspect, QSizeF(300, 400));
    QCOMPARE(result, kept);
    if (kept != dragged)
        QCOMPARE(result.width() / result.height(), aspect);
}

void TestProportions::fittedToImage_data()
{
    QTest::addColumn<PositionRect>("before");
    QTest::addColumn<QSizeF>("image");
    QTest::addColumn<QString>("after");

    // A 300 x 400 canvas for a 3:4 page.
    QTest::newRow("square image: 80 % wide is 60 % high on a 3:4 page")
        << margins(10, 10, 10, 40) << QSizeF(500, 500) << "10.00 10.00 10.00 30.00";
    QTest::newRow("2:1 image: 80 % wide is 30 % high")
        << margins(10, 10, 10, 10) << QSizeF(800, 400) << "10.00 10.00 10.00 60.00";
    QTest::newRow("past the page's bottom: the box moves up")
        << margins(10, 50, 10, 20) << QSizeF(500, 500) << "10.00 40.00 10.00 0.00";
    QTest::newRow("taller than the page: page high, the width follows")
        << margins(10, 20, 10, 20) << QSizeF(100, 400) << "10.00 0.00 56.67 0.00";
    QTest::newRow("a very wide image keeps the 15-point minimum height")
        << margins(40, 10, 40, 10) << QSizeF(1000, 10) << "40.00 10.00 40.00 86.25";
    QTest::newRow("no width left: unchanged")
        << margins(60, 10, 50, 10) << QSizeF(500, 500) << "60.00 10.00 50.00 10.00";
    QTest::newRow("no image: unchanged")
        << margins(10, 10, 10, 10) << QSizeF() << "10.00 10.00 10.00 10.00";
}

void TestProportions::fittedToImage()
{
    QFETCH(PositionRect, before);
    QFETCH(QSizeF, image);
    QFETCH(QString, after);
    const PositionRect fitted =
        Proportions::fittedToImage(before, image, QSizeF(300, 400), QSizeF(3, 4));
    QCOMPARE(listed(fitted), after);
}

void TestProportions::fittedToImageKeepsTransparencyAndLayer()
{
    PositionRect before = margins(10, 10, 10, 10);
    before.setTransparency(35);
    before.setLayer(2);
    const PositionRect fitted =
        Proportions::fittedToImage(before, QSizeF(400, 300), QSizeF(300, 400), QSizeF(3, 4));
    QCOMPARE(fitted.transparency(), 35.0f);
    QCOMPARE(fitted.layer(), 2);
}

QTEST_GUILESS_MAIN(TestProportions)
#include "tst_proportions.moc"
