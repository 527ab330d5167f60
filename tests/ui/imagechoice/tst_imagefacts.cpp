// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// What the image choice tells about a chosen file: its size in pixels and a small thumbnail, or
// that it is missing or no readable image.

#include "imagefacts.h"
#include "testenv.h"

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(ImageFacts::State)

class TestImageFacts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void factsOfAFile_data();
    void factsOfAFile();
    void thumbnailIsSharpOnADenseScreen();
    void textsSayWhatTheFactsAre_data();
    void textsSayWhatTheFactsAre();

private:
    QString picture(const QString &name, QSize size, const char *format);
    QString bytes(const QString &name, const QByteArray &content);
    QTemporaryDir m_dir;
};

void TestImageFacts::initTestCase()
{
    TestEnv::isolate();
    QVERIFY(m_dir.isValid());
}

QString TestImageFacts::picture(const QString &name, QSize size, const char *format)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    const QString path = m_dir.filePath(name);
    return image.save(path, format) ? path : QString();
}

QString TestImageFacts::bytes(const QString &name, const QByteArray &content)
{
    const QString path = m_dir.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return QString();
    return path;
}

void TestImageFacts::factsOfAFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<ImageFacts::State>("state");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("thumbnail");
    using S = ImageFacts::State;
    QTest::newRow("png: its size, a thumbnail within 32 points")
        << picture("wide.png", QSize(640, 480), "PNG") << S::Image << QSize(640, 480)
        << QSize(32, 24);
    QTest::newRow("jpeg: its size, a thumbnail within 32 points")
        << picture("tall.jpg", QSize(300, 1200), "JPG") << S::Image << QSize(300, 1200)
        << QSize(8, 32);
    // Qt writes no GIF: a 2 x 1 one, made by hand (35 bytes, the trailer ';' last).
    static constexpr char gif[] = "GIF89a\x02\x00\x01\x00\x80\x00\x00\x00\x8b\x8b"
                                  "\x00\x8b\x8b,\x00\x00\x00\x00\x02\x00\x01\x00\x00"
                                  "\x02\x02\x44\x0a\x00;";
    static_assert(sizeof(gif) - 1 == 35);
    QTest::newRow("gif: its size") << bytes("dots.gif", QByteArray(gif, sizeof(gif) - 1))
                                   << S::Image << QSize(2, 1) << QSize(2, 1);
    QTest::newRow("small image is not blown up")
        << picture("icon.png", QSize(16, 10), "PNG") << S::Image << QSize(16, 10) << QSize(16, 10);
    QTest::newRow("text named .png is no image")
        << bytes("notes.png", "these are notes, not pixels") << S::NotAnImage << QSize() << QSize();
    QTest::newRow("truncated png is no image")
        << bytes("cut.png", QByteArray("\x89PNG\r\n\x1a\n", 8)) << S::NotAnImage << QSize()
        << QSize();
    QTest::newRow("empty file is no image")
        << bytes("empty.jpg", QByteArray()) << S::NotAnImage << QSize() << QSize();
    QTest::newRow("a folder is no image") << m_dir.path() << S::NotAnImage << QSize() << QSize();
    QTest::newRow("missing file") << m_dir.filePath("gone.png") << S::Missing << QSize() << QSize();
    QTest::newRow("no file chosen") << QString() << S::NoFile << QSize() << QSize();
}

void TestImageFacts::factsOfAFile()
{
    QFETCH(QString, path);
    QFETCH(ImageFacts::State, state);
    QFETCH(QSize, size);
    QFETCH(QSize, thumbnail);
    const ImageFacts::Facts facts = ImageFacts::read(path);
    QCOMPARE(facts.state, state);
    QCOMPARE(facts.size, size);
    QCOMPARE(facts.thumbnail.isNull() ? QSize() : facts.thumbnail.size(), thumbnail);
    if (!thumbnail.isEmpty()) // the picture itself, not a blank
        QCOMPARE(facts.thumbnail.pixelColor(thumbnail.width() / 2, thumbnail.height() / 2).rgb() &
                     0xf0f0f0,
                 QColor(Qt::darkCyan).rgb() & 0xf0f0f0);
}

void TestImageFacts::thumbnailIsSharpOnADenseScreen()
{
    const ImageFacts::Facts facts =
        ImageFacts::read(picture("dense.png", QSize(400, 400), "PNG"), 2.0);
    QCOMPARE(facts.thumbnail.size(), QSize(64, 64));
    QCOMPARE(facts.thumbnail.deviceIndependentSize(), QSizeF(32, 32));
}

void TestImageFacts::textsSayWhatTheFactsAre_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    QTest::newRow("image: width by height in pixels")
        << int(ImageFacts::State::Image) << QStringLiteral("640 × 480 pixels");
    QTest::newRow("missing file") << int(ImageFacts::State::Missing)
                                  << QStringLiteral("The image file is missing.");
    QTest::newRow("no image") << int(ImageFacts::State::NotAnImage)
                              << QStringLiteral("This file is not an image that can be read.");
    QTest::newRow("nothing chosen: nothing said") << int(ImageFacts::State::NoFile) << QString();
}

void TestImageFacts::textsSayWhatTheFactsAre()
{
    QFETCH(int, state);
    QFETCH(QString, text);
    ImageFacts::Facts facts;
    facts.state = ImageFacts::State(state);
    facts.size = QSize(640, 480);
    QCOMPARE(ImageFacts::text(facts), text);
}

QTEST_MAIN(TestImageFacts)
#include "tst_imagefacts.moc"
