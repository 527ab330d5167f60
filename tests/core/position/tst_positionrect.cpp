// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "positionrect.h"
#include "testenv.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>
#include <cmath>

Q_DECLARE_METATYPE(PositionRect)

class TestPositionRect : public QObject
{
    Q_OBJECT

private:
    static PositionRect make(float left, float top, float right, float bottom, float transparency,
                             int layer)
    {
        return PositionRect(left, top, right, bottom, transparency, layer);
    }

    static QByteArray readBytes(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
    }

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void freshRecordIsAllZero()
    {
        const PositionRect rect;
        QCOMPARE(rect.left(), 0.0f);
        QCOMPARE(rect.top(), 0.0f);
        QCOMPARE(rect.right(), 0.0f);
        QCOMPARE(rect.bottom(), 0.0f);
        QCOMPARE(rect.transparency(), 0.0f);
        QCOMPARE(rect.layer(), 0);
    }

    void settersStoreWithoutClamping()
    {
        const PositionRect rect = make(-5.0f, 250.5f, 1e6f, -0.25f, 150.0f, -3);
        QCOMPARE(rect.left(), -5.0f);
        QCOMPARE(rect.top(), 250.5f);
        QCOMPARE(rect.right(), 1e6f);
        QCOMPARE(rect.bottom(), -0.25f);
        QCOMPARE(rect.transparency(), 150.0f);
        QCOMPARE(rect.layer(), -3);
    }

    void valueConstructorTakesTheSixValuesInFileOrder()
    {
        const PositionRect rect(1.5f, 2, 3, 4, 5, 6);
        QCOMPARE(rect.left(), 1.5f);
        QCOMPARE(rect.top(), 2.0f);
        QCOMPARE(rect.right(), 3.0f);
        QCOMPARE(rect.bottom(), 4.0f);
        QCOMPARE(rect.transparency(), 5.0f);
        QCOMPARE(rect.layer(), 6);
        QCOMPARE(PositionRect(1, 2, 3, 4), PositionRect(1, 2, 3, 4, 0, 0));
        QCOMPARE(rect.toText(), QByteArray("1.5\n2.0\n3.0\n4.0\n5.0\n6"));
    }

    void printsEveryValue_data()
    {
        QTest::addColumn<PositionRect>("rect");
        QTest::addColumn<QString>("text");
        QTest::newRow("the bundle's defaults") << PositionRect(10, 26, 60, 26, 0, 1)
                                               << "PositionRect(10, 26, 60, 26, 0, 1)";
        QTest::newRow("fractions to a float's digits")
            << PositionRect(0.1f, 2.5f, 3, 4, 99.9f, 0)
            << "PositionRect(0.100000001, 2.5, 3, 4, 99.9000015, 0)";
        QTest::newRow("negative and huge values as stored")
            << PositionRect(-5, 1e6f, 0, 0, 250, -3) << "PositionRect(-5, 1000000, 0, 0, 250, -3)";
    }

    void printsEveryValue()
    {
        QFETCH(PositionRect, rect);
        QFETCH(QString, text);
        QCOMPARE(rect.toDebugText(), text);
        QString logged;
        QDebug(&logged) << rect;
        QCOMPARE(logged.trimmed(), text); // QDebug puts a space after each item
        // What QtTest prints when a comparison of two records fails.
        char *printed = toString(rect);
        QCOMPARE(QString::fromUtf8(printed), text);
        delete[] printed;
    }

    void equalityComparesEveryField()
    {
        const PositionRect a = make(1, 2, 3, 4, 5, 6);
        QVERIFY(a == make(1, 2, 3, 4, 5, 6));
        QVERIFY(a != make(1, 2, 3, 4, 5, 7));
        QVERIFY(a != make(1, 2, 3, 4, 5.5f, 6));
        QVERIFY(a != make(0, 2, 3, 4, 5, 6));
    }

    void frameFromMargins_data()
    {
        QTest::addColumn<PositionRect>("rect");
        QTest::addColumn<QSizeF>("outline");
        QTest::addColumn<QRectF>("frame");

        QTest::newRow("zero record is the full page")
            << PositionRect() << QSizeF(200, 300) << QRectF(0, 0, 200, 300);
        QTest::newRow("bottom margin fixes the y origin")
            << make(10, 20, 30, 15, 0, 0) << QSizeF(200, 100) << QRectF(20, 15, 120, 65);
        QTest::newRow("margins past 100 give a negative size")
            << make(60, 70, 60, 50, 0, 0) << QSizeF(100, 100) << QRectF(60, 50, -20, -20);
        QTest::newRow("negative margins reach outside the page")
            << make(-5, -5, 0, 0, 0, 0) << QSizeF(100, 200) << QRectF(-5, 0, 105, 210);
        QTest::newRow("transparency and layer do not matter")
            << make(0, 0, 0, 0, 77, 9) << QSizeF(50, 40) << QRectF(0, 0, 50, 40);
    }

    void frameFromMargins()
    {
        QFETCH(PositionRect, rect);
        QFETCH(QSizeF, outline);
        QFETCH(QRectF, frame);
        QCOMPARE(rect.getObjectFrameWithOutlineSize(outline), frame);
        QCOMPARE(PositionRect::getObjectFrameWith(rect, outline), frame);
    }

    void frameFromMarginsIsSinglePrecision()
    {
        // The same margins computed in double precision land on other values; the frame must
        // carry the single-precision ones exactly.
        const PositionRect rect = make(0.1f, 0, 0, 0.3f, 0, 0);
        const QRectF frame = rect.getObjectFrameWithOutlineSize(QSizeF(333, 777));
        const float expectedX = 333.0f * 0.1f / 100.0f;
        const float expectedY = 777.0f * 0.3f / 100.0f;
        const float expectedW = 333.0f * (100.0f - 0.1f - 0.0f) / 100.0f;
        QVERIFY(double(expectedX) != 333.0 * double(0.1f) / 100.0);
        QVERIFY(double(expectedY) != 777.0 * double(0.3f) / 100.0);
        QVERIFY(frame.x() == double(expectedX));
        QVERIFY(frame.y() == double(expectedY));
        QVERIFY(frame.width() == double(expectedW));
    }

    void marginsFromFrame_data()
    {
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<QSizeF>("outline");
        QTest::addColumn<PositionRect>("rect");

        QTest::newRow("full page is the zero record")
            << QRectF(0, 0, 200, 300) << QSizeF(200, 300) << PositionRect();
        QTest::newRow("y origin is the bottom margin")
            << QRectF(20, 15, 120, 65) << QSizeF(200, 100) << make(10, 20, 30, 15, 0, 0);
        QTest::newRow("frame outside the page gives negative margins")
            << QRectF(-10, -20, 220, 240) << QSizeF(200, 200) << make(-5, -10, -5, -10, 0, 0);
    }

    void marginsFromFrame()
    {
        QFETCH(QRectF, frame);
        QFETCH(QSizeF, outline);
        QFETCH(PositionRect, rect);
        const PositionRect converted = PositionRect::convertObjectFrame(frame, outline);
        QCOMPARE(converted.left(), rect.left());
        QCOMPARE(converted.top(), rect.top());
        QCOMPARE(converted.right(), rect.right());
        QCOMPARE(converted.bottom(), rect.bottom());
        QCOMPARE(converted.transparency(), 0.0f);
        QCOMPARE(converted.layer(), 0);
    }

    void marginsFromFrameSumFarEdgeInSinglePrecision()
    {
        // x + w is summed as floats before the double division: 0.1f + 0.7f is 0.80000001...,
        // which leaves a right margin just under 20 where a double sum would give 20 exactly.
        const PositionRect rect =
            PositionRect::convertObjectFrame(QRectF(0.1, 0.1, 0.7, 0.7), QSizeF(1, 1));
        QVERIFY(rect.right() == 19.999998092651367f);
        QVERIFY(rect.right() != 20.0f);
        QVERIFY(rect.top() == 19.999998092651367f);
        QCOMPARE(rect.left(), float(0.1 * 100.0));
        QCOMPARE(rect.bottom(), float(0.1 * 100.0));
    }

    void roundTripReproducesFrame_data()
    {
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<QSizeF>("outline");
        QTest::newRow("ordinary box") << QRectF(12.5, 40.25, 100.75, 60.5) << QSizeF(320, 240);
        QTest::newRow("odd sizes") << QRectF(1.3, 2.7, 33.3, 44.4) << QSizeF(123.4, 567.8);
        QTest::newRow("box bigger than the page") << QRectF(-20, -10, 400, 300) << QSizeF(320, 240);
    }

    void roundTripReproducesFrame()
    {
        QFETCH(QRectF, frame);
        QFETCH(QSizeF, outline);
        const PositionRect rect = PositionRect::convertObjectFrame(frame, outline);
        const QRectF back = rect.getObjectFrameWithOutlineSize(outline);
        const double tolerance = 1e-3;
        QVERIFY2(std::abs(back.x() - frame.x()) < tolerance, qPrintable(QString::number(back.x())));
        QVERIFY2(std::abs(back.y() - frame.y()) < tolerance, qPrintable(QString::number(back.y())));
        QVERIFY2(std::abs(back.width() - frame.width()) < tolerance,
                 qPrintable(QString::number(back.width())));
        QVERIFY2(std::abs(back.height() - frame.height()) < tolerance,
                 qPrintable(QString::number(back.height())));
    }

    void zeroOutlineIsNotGuarded()
    {
        const PositionRect rect =
            PositionRect::convertObjectFrame(QRectF(10, 10, 5, 5), QSizeF(0, 0));
        QVERIFY(std::isinf(rect.left()));
        QVERIFY(std::isinf(rect.bottom()));
        const PositionRect none =
            PositionRect::convertObjectFrame(QRectF(0, 0, 0, 0), QSizeF(0, 0));
        QVERIFY(std::isnan(none.left()));
    }

    void textForm_data()
    {
        QTest::addColumn<PositionRect>("rect");
        QTest::addColumn<QByteArray>("bytes");

        QTest::newRow("example record")
            << make(10, 20, 30, 15, 100, 2) << QByteArray("10.0\n20.0\n30.0\n15.0\n100.0\n2");
        QTest::newRow("zero record") << PositionRect() << QByteArray("0.0\n0.0\n0.0\n0.0\n0.0\n0");
        QTest::newRow("one decimal only: 12.34 is 12.3")
            << make(12.34f, 0.05f, 99.99f, 33.35f, 0.44f, 1)
            << QByteArray("12.3\n0.1\n100.0\n33.3\n0.4\n1");
        QTest::newRow("negative values as they are")
            << make(-5, -0.04f, 0, 120, -20, -1) << QByteArray("-5.0\n-0.0\n0.0\n120.0\n-20.0\n-1");
        QTest::newRow("large layer")
            << make(0, 0, 0, 0, 0, 2147483647) << QByteArray("0.0\n0.0\n0.0\n0.0\n0.0\n2147483647");
    }

    void textForm()
    {
        QFETCH(PositionRect, rect);
        QFETCH(QByteArray, bytes);
        QCOMPARE(rect.toText(), bytes);
    }

    void saveToFileWritesTextFormByteForByte_data() { textForm_data(); }

    void saveToFileWritesTextFormByteForByte()
    {
        QFETCH(PositionRect, rect);
        QFETCH(QByteArray, bytes);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("settings.dat"));
        rect.saveToFile(path);
        const QByteArray written = readBytes(path);
        QCOMPARE(written, bytes);
        QVERIFY(!written.endsWith('\n'));
        QVERIFY(!written.startsWith("\xEF\xBB\xBF"));
    }

    void saveToFileReplacesExistingFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("settings.dat"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(10000, 'x'));
        file.close();
        make(1, 2, 3, 4, 5, 6).saveToFile(path);
        QCOMPARE(readBytes(path), QByteArray("1.0\n2.0\n3.0\n4.0\n5.0\n6"));
    }

    void saveToFileIntoMissingFolderIsIgnored()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("no such folder/settings.dat"));
        make(1, 2, 3, 4, 5, 6).saveToFile(path);
        QVERIFY(!QFile::exists(path));
    }

    void saveToFileIsLocaleIndependent()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("settings.dat"));
        make(10.5f, 0, 0, 0, 0, 1).saveToFile(path);
        QLocale::setDefault(before);
        QCOMPARE(readBytes(path), QByteArray("10.5\n0.0\n0.0\n0.0\n0.0\n1"));
    }
};

QTEST_GUILESS_MAIN(TestPositionRect)
#include "tst_positionrect.moc"
