// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "roundview.h"
#include "simplecell.h"
#include "testenv.h"
#include "transitionbgview.h"

#include <QApplication>
#include <QEnterEvent>
#include <QImage>
#include <QPixmap>
#include <QtTest>

namespace {

// The widget drawn alone onto a transparent image: only what its own painting puts there.
QImage render(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

bool near(int value, int expected, int tolerance = 3)
{
    return std::abs(value - expected) <= tolerance;
}

QString describe(const QColor &c)
{
    return QStringLiteral("rgba(%1,%2,%3,%4)")
        .arg(c.red())
        .arg(c.green())
        .arg(c.blue())
        .arg(c.alpha());
}

#define COMPARE_COLOUR(image, x, y, r, g, b, a)                                                    \
    do {                                                                                           \
        const QColor c = (image).pixelColor((x), (y));                                             \
        QVERIFY2(near(c.red(), r) && near(c.green(), g) && near(c.blue(), b) &&                    \
                     near(c.alpha(), a),                                                           \
                 qPrintable(describe(c)));                                                         \
    } while (false)

void hover(SimpleCell &cell)
{
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QApplication::sendEvent(&cell, &enter);
}

void leave(SimpleCell &cell)
{
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(&cell, &event);
}

QIcon redIcon(int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

bool isRed(const QColor &c)
{
    return c.red() > 240 && c.green() < 15 && c.blue() < 15 && c.alpha() > 240;
}

// Whether any pixel inside rect has some colour.
bool anyPainted(const QImage &image, const QRect &rect)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            if (image.pixelColor(x, y).alpha() > 0)
                return true;
    return false;
}

} // namespace

class TestDrawnWidgets : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { TestEnv::isolate(); }

    void roundViewStrokesOnlyAThinRoundedGreyFrame();
    void transitionBackgroundFadesFromWhiteToLightGrey();

    void cellAtRestShowsOnlyTheGreyFrame();
    void cellUnderTheMouseShowsTheBlueHoverRing();
    void cellWithoutMouseTrackingShowsNoHoverRing();
    void disabledCellUnderTheMouseShowsOnlyTheGreyFrame();
    void pressedCellShowsTheGradientAndNoHoverRing();
    void transparentCellDrawsNothing();
    void leavingTheCellRemovesTheHoverRing();

    void layoutPlacesImageAndTitle_data();
    void layoutPlacesImageAndTitle();
    void cellDrawsItsImageInTheLeftSquare();
    void imageOnlyCellDrawsNoTitle();
    void noImageCellDrawsItsTitle();
};

void TestDrawnWidgets::roundViewStrokesOnlyAThinRoundedGreyFrame()
{
    RoundView view;
    view.resize(40, 30);
    const QImage image = render(view);
    // A 1.0 line centred on the edge: half of the edge pixel is covered, in 0.5 grey.
    COMPARE_COLOUR(image, 0, 15, 128, 128, 128, 128);
    COMPARE_COLOUR(image, 20, 0, 128, 128, 128, 128);
    COMPARE_COLOUR(image, 39, 15, 128, 128, 128, 128);
    // No fill, nothing inside the line, and the corner is rounded off.
    QCOMPARE(image.pixelColor(1, 15).alpha(), 0);
    QCOMPARE(image.pixelColor(20, 15).alpha(), 0);
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
}

void TestDrawnWidgets::transitionBackgroundFadesFromWhiteToLightGrey()
{
    TransitionBGView view;
    view.resize(40, 100);
    const QImage image = render(view);
    // Half-transparent white at the top, half-transparent 0.8 grey at the bottom.
    COMPARE_COLOUR(image, 20, 1, 254, 254, 254, 128);
    COMPARE_COLOUR(image, 20, 50, 229, 229, 229, 128);
    COMPARE_COLOUR(image, 20, 98, 205, 205, 205, 128);
    // The grey frame is drawn over the gradient on the edge.
    QVERIFY(image.pixelColor(0, 50).red() < 200);
    QVERIFY(image.pixelColor(0, 50).alpha() > 128);
    COMPARE_COLOUR(image, 2, 50, 229, 229, 229, 128);
}

void TestDrawnWidgets::cellAtRestShowsOnlyTheGreyFrame()
{
    SimpleCell cell;
    cell.resize(100, 30);
    const QImage image = render(cell);
    COMPARE_COLOUR(image, 0, 15, 128, 128, 128, 128);
    QCOMPARE(image.pixelColor(1, 15).alpha(), 0);
    QVERIFY(!anyPainted(image, QRect(2, 2, 96, 26)));
}

void TestDrawnWidgets::cellUnderTheMouseShowsTheBlueHoverRing()
{
    SimpleCell cell;
    cell.resize(100, 30);
    cell.setShowsBorderOnlyWhileMouseInside(true);
    hover(cell);
    QVERIFY(cell.mouseStatus());
    const QImage image = render(cell);
    // The 4.0 ring reaches 2 pixels inside; the grey 1.0 line lies over its outer half.
    COMPARE_COLOUR(image, 1, 15, 153, 204, 255, 255);
    COMPARE_COLOUR(image, 50, 1, 153, 204, 255, 255);
    QCOMPARE(image.pixelColor(3, 15).alpha(), 0);
    QVERIFY(image.pixelColor(0, 15).blue() > image.pixelColor(0, 15).red());
}

void TestDrawnWidgets::cellWithoutMouseTrackingShowsNoHoverRing()
{
    SimpleCell cell;
    cell.resize(100, 30);
    hover(cell);
    QVERIFY(!cell.mouseStatus());
    QCOMPARE(render(cell).pixelColor(1, 15).alpha(), 0);
}

void TestDrawnWidgets::disabledCellUnderTheMouseShowsOnlyTheGreyFrame()
{
    SimpleCell cell;
    cell.resize(100, 30);
    cell.setShowsBorderOnlyWhileMouseInside(true);
    hover(cell);
    cell.setEnabled(false);
    QVERIFY(cell.mouseStatus());
    const QImage image = render(cell);
    COMPARE_COLOUR(image, 0, 15, 128, 128, 128, 128);
    QCOMPARE(image.pixelColor(1, 15).alpha(), 0);
}

void TestDrawnWidgets::pressedCellShowsTheGradientAndNoHoverRing()
{
    SimpleCell cell;
    cell.resize(100, 30);
    cell.setShowsBorderOnlyWhileMouseInside(true);
    hover(cell);
    cell.setDown(true);
    const QImage image = render(cell);
    // From 0.9 grey at the bottom to 0.6 grey at the top, half transparent.
    COMPARE_COLOUR(image, 50, 27, 223, 223, 223, 128);
    COMPARE_COLOUR(image, 50, 15, 192, 192, 192, 128);
    COMPARE_COLOUR(image, 50, 2, 159, 159, 159, 128);
    // No blue ring even with the mouse inside: the edge is the gradient.
    COMPARE_COLOUR(image, 1, 15, 191, 191, 191, 128);
    // The grey frame on the edge, over the gradient.
    QVERIFY(image.pixelColor(0, 15).alpha() > 128);
    QVERIFY(near(image.pixelColor(0, 15).red(), image.pixelColor(0, 15).blue()));
}

void TestDrawnWidgets::transparentCellDrawsNothing()
{
    SimpleCell cell;
    cell.resize(100, 30);
    cell.setText(QStringLiteral("Browse"));
    cell.setIcon(redIcon(26));
    cell.setImagePosition(SimpleCell::ImageLeft);
    cell.setShowsBorderOnlyWhileMouseInside(true);
    hover(cell);
    cell.setDown(true);
    cell.setTransparent(true);
    QVERIFY(!anyPainted(render(cell), QRect(0, 0, 100, 30)));
}

void TestDrawnWidgets::leavingTheCellRemovesTheHoverRing()
{
    SimpleCell cell;
    cell.resize(100, 30);
    cell.setShowsBorderOnlyWhileMouseInside(true);
    hover(cell);
    leave(cell);
    QVERIFY(!cell.mouseStatus());
    QCOMPARE(render(cell).pixelColor(1, 15).alpha(), 0);
}

void TestDrawnWidgets::layoutPlacesImageAndTitle_data()
{
    QTest::addColumn<QRectF>("frame");
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("hasTitle");
    QTest::addColumn<bool>("drawsImage");
    QTest::addColumn<bool>("drawsTitle");
    QTest::addColumn<QRectF>("image");
    QTest::addColumn<QRectF>("title");

    const QRectF frame(0, 0, 100, 30);
    QTest::newRow("image and title: 26x26 square at (2,2), title from x=30, 68 wide")
        << frame << int(SimpleCell::ImageLeft) << true << true << true << QRectF(2, 2, 26, 26)
        << QRectF(30, 2, 68, 26);
    QTest::newRow("image without title fills the frame less 2 on every side")
        << frame << int(SimpleCell::ImageLeft) << false << true << false << QRectF(2, 2, 96, 26)
        << QRectF();
    QTest::newRow("no image: title from x+2, 6 narrower than the frame")
        << frame << int(SimpleCell::NoImage) << true << false << true << QRectF()
        << QRectF(2, 2, 94, 26);
    QTest::newRow("image only: no title") << frame << int(SimpleCell::ImageOnly) << true << true
                                          << false << QRectF(2, 2, 26, 26) << QRectF();
    QTest::newRow("any other position still puts the image at the left edge")
        << frame << int(SimpleCell::ImageAbove) << true << true << true << QRectF(2, 2, 26, 26)
        << QRectF(30, 2, 68, 26);
    QTest::newRow("offset frame: rectangles follow its origin")
        << QRectF(10, 20, 100, 30) << int(SimpleCell::ImageLeft) << true << true << true
        << QRectF(12, 22, 26, 26) << QRectF(40, 22, 68, 26);
    QTest::newRow("narrow frame: the square's side is the width less 4")
        << QRectF(0, 0, 20, 40) << int(SimpleCell::ImageLeft) << true << true << true
        << QRectF(2, 2, 16, 16) << QRectF(20, 2, -2, 36);
}

void TestDrawnWidgets::layoutPlacesImageAndTitle()
{
    QFETCH(QRectF, frame);
    QFETCH(int, position);
    QFETCH(bool, hasTitle);
    QFETCH(bool, drawsImage);
    QFETCH(bool, drawsTitle);
    QFETCH(QRectF, image);
    QFETCH(QRectF, title);
    const SimpleCell::Layout layout =
        SimpleCell::layoutFor(frame, SimpleCell::ImagePosition(position), hasTitle);
    QCOMPARE(layout.drawsImage, drawsImage);
    QCOMPARE(layout.drawsTitle, drawsTitle);
    QCOMPARE(layout.image, image);
    if (drawsTitle)
        QCOMPARE(layout.title, title);
}

void TestDrawnWidgets::cellDrawsItsImageInTheLeftSquare()
{
    SimpleCell cell;
    cell.resize(100, 30);
    cell.setIcon(redIcon(26));
    cell.setImagePosition(SimpleCell::ImageLeft);
    cell.setText(QStringLiteral("Go"));
    const QImage image = render(cell);
    QVERIFY(isRed(image.pixelColor(2, 2)));
    QVERIFY(isRed(image.pixelColor(27, 27)));
    QVERIFY(!isRed(image.pixelColor(28, 15)));
    QVERIFY(!isRed(image.pixelColor(1, 15)));
    // The title is drawn, centred in its rectangle from x = 30.
    QVERIFY(anyPainted(image, QRect(40, 5, 50, 20)));
}

void TestDrawnWidgets::imageOnlyCellDrawsNoTitle()
{
    SimpleCell cell;
    cell.resize(100, 30);
    cell.setText(QStringLiteral("MMMMMMMM"));
    cell.setImagePosition(SimpleCell::ImageOnly);
    QVERIFY(!anyPainted(render(cell), QRect(2, 2, 96, 26)));
    cell.setImagePosition(SimpleCell::ImageLeft);
    QVERIFY(anyPainted(render(cell), QRect(30, 2, 68, 26)));
}

void TestDrawnWidgets::noImageCellDrawsItsTitle()
{
    SimpleCell cell;
    cell.resize(100, 30);
    cell.setIcon(redIcon(26));
    cell.setText(QStringLiteral("MMMMMMMM"));
    cell.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    const QImage image = render(cell);
    // No image with NoImage, and the left-aligned title starts right after the 2.0 inset.
    for (int x = 2; x < 98; ++x)
        QVERIFY(!isRed(image.pixelColor(x, 15)));
    QVERIFY(anyPainted(image, QRect(2, 2, 12, 26)));
}

QTEST_MAIN(TestDrawnWidgets)
#include "tst_drawnwidgets.moc"
