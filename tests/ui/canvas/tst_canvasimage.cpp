// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The chosen image as the canvas and the image facts read it: its shape as it stands (a turned
// photo is taller than it is stored) and its colours in the reduced copy, for every kind of PNG,
// JPEG and GIF.

#include "canvasimage.h"
#include "testenv.h"

#include <QBuffer>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QtTest>

class TestCanvasImage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }
    void turnedPhotoHasTheShapeItIsShownIn_data();
    void turnedPhotoHasTheShapeItIsShownIn();
    void reducedCopyKeepsTheColours_data();
    void reducedCopyKeepsTheColours();

private:
    QTemporaryDir m_dir;
};

void TestCanvasImage::turnedPhotoHasTheShapeItIsShownIn_data()
{
    QTest::addColumn<int>("transformation");
    QTest::addColumn<QSize>("shown");
    // Stored 400 x 200; the orientation the camera recorded decides how it stands.
    QTest::newRow("not turned: 2:1") << int(QImageIOHandler::TransformationNone) << QSize(400, 200);
    QTest::newRow("turned a quarter clockwise: 1:2")
        << int(QImageIOHandler::TransformationRotate90) << QSize(200, 400);
    QTest::newRow("turned a quarter anticlockwise: 1:2")
        << int(QImageIOHandler::TransformationRotate270) << QSize(200, 400);
    QTest::newRow("upside down: 2:1") << int(QImageIOHandler::TransformationRotate180)
                                      << QSize(400, 200);
    QTest::newRow("mirrored and turned: 1:2")
        << int(QImageIOHandler::TransformationMirrorAndRotate90) << QSize(200, 400);
}

void TestCanvasImage::turnedPhotoHasTheShapeItIsShownIn()
{
    QFETCH(int, transformation);
    QFETCH(QSize, shown);
    const QString path = m_dir.filePath(QStringLiteral("photo-%1.jpg").arg(transformation));
    QImage stored(400, 200, QImage::Format_RGB32);
    stored.fill(Qt::darkYellow);
    QImageWriter writer(path, "jpeg");
    writer.setTransformation(QImageIOHandler::Transformations(transformation));
    QVERIFY2(writer.write(stored), qPrintable(writer.errorString()));

    const CanvasImage::Picture picture = CanvasImage::read(path);
    QCOMPARE(picture.size, shown);
    QCOMPARE(picture.image.size(), shown);
    // The thumbnail's reader gives the same shape at its own size.
    QImageReader reader(path);
    QSize size;
    const QImage small = CanvasImage::readReduced(reader, 32, &size);
    QCOMPARE(size, shown);
    QCOMPARE(small.size(), shown.scaled(32, 32, Qt::KeepAspectRatio));
}

void TestCanvasImage::reducedCopyKeepsTheColours_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QColor>("left");
    QTest::addColumn<QColor>("right");
    const QColor red(220, 20, 20), blue(20, 20, 220);
    // 200 x 100: the left half red, the right half blue, in each of the image's kinds.
    const auto encode = [&](QImage image, const char *format) {
        const bool palette = image.colorCount() > 0; // its pixels are indexes: 0 red, 1 blue
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (palette)
                    image.setPixel(x, y, x < image.width() / 2 ? 0 : 1);
                else
                    image.setPixelColor(x, y, x < image.width() / 2 ? red : blue);
            }
        }
        QByteArray out;
        QBuffer buffer(&out);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, format);
        return out;
    };
    QImage mono(200, 100, QImage::Format_Mono);
    mono.setColorTable({red.rgb(), blue.rgb()});
    QImage indexed(200, 100, QImage::Format_Indexed8);
    indexed.setColorTable({red.rgb(), blue.rgb(), qRgb(0, 0, 0), qRgb(255, 255, 255)});
    QTest::newRow("png, 1-bit palette") << encode(mono, "PNG") << red << blue;
    QTest::newRow("png, 8-bit palette") << encode(indexed, "PNG") << red << blue;
    QTest::newRow("png, 8-bit RGB") << encode(QImage(200, 100, QImage::Format_RGB32), "PNG") << red
                                    << blue;
    QTest::newRow("png, 8-bit RGBA") << encode(QImage(200, 100, QImage::Format_ARGB32), "PNG")
                                     << red << blue;
    QTest::newRow("png, 16-bit RGBA") << encode(QImage(200, 100, QImage::Format_RGBA64), "PNG")
                                      << red << blue;
    QTest::newRow("jpeg") << encode(QImage(200, 100, QImage::Format_RGB32), "JPEG") << red << blue;
    // Grey images: the same halves in grey.
    QImage grey8(200, 100, QImage::Format_Grayscale8);
    QImage grey16(200, 100, QImage::Format_Grayscale16);
    for (QImage *grey : {&grey8, &grey16}) {
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 200; ++x)
                grey->setPixelColor(x, y, x < 100 ? QColor(40, 40, 40) : QColor(210, 210, 210));
    }
    const auto raw = [](const QImage &image) {
        QByteArray out;
        QBuffer buffer(&out);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        return out;
    };
    QTest::newRow("png, 8-bit grey") << raw(grey8) << QColor(40, 40, 40) << QColor(210, 210, 210);
    QTest::newRow("png, 16-bit grey") << raw(grey16) << QColor(40, 40, 40) << QColor(210, 210, 210);
    // Qt writes no GIF: a 2 x 1 GIF of one red and one blue dot, its palette global.
    const QByteArray gif("GIF89a\x02\x00\x01\x00\x80\x00\x00\xdc\x14\x14\x14\x14\xdc"
                         ",\x00\x00\x00\x00\x02\x00\x01\x00\x00\x02\x02\x44\x0a\x00;",
                         35);
    QTest::newRow("gif, first frame") << gif << red << blue;
}

void TestCanvasImage::reducedCopyKeepsTheColours()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QColor, left);
    QFETCH(QColor, right);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    QSize size;
    const QImage small = CanvasImage::readReduced(reader, 32, &size);
    QVERIFY(!small.isNull());
    const auto near = [](const QColor &a, const QColor &b) {
        return qAbs(a.red() - b.red()) < 40 && qAbs(a.green() - b.green()) < 40 &&
               qAbs(a.blue() - b.blue()) < 40;
    };
    const QColor seenLeft = small.pixelColor(0, small.height() / 2);
    const QColor seenRight = small.pixelColor(small.width() - 1, small.height() / 2);
    QVERIFY2(near(seenLeft, left), qPrintable(seenLeft.name() + " for " + left.name()));
    QVERIFY2(near(seenRight, right), qPrintable(seenRight.name() + " for " + right.name()));
}

QTEST_GUILESS_MAIN(TestCanvasImage)
#include "tst_canvasimage.moc"
