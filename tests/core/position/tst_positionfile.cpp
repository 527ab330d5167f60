// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "positionfile.h"
#include "positionrect.h"
#include "specialentries.h"
#include "testenv.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(PositionRect)

namespace {

PositionRect make(float left, float top, float right, float bottom, float transparency, int layer)
{
    PositionRect rect;
    rect.setLeft(left);
    rect.setTop(top);
    rect.setRight(right);
    rect.setBottom(bottom);
    rect.setTransparency(transparency);
    rect.setLayer(layer);
    return rect;
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestPositionFile : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString fileWith(const QByteArray &bytes)
    {
        static int count = 0;
        const QString path = m_dir.filePath(QStringLiteral("settings-%1.dat").arg(++count));
        if (!writeBytes(path, bytes))
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY(m_dir.isValid());
    }

    void readsSixLines_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<PositionRect>("rect");

        QTest::newRow("as written, no trailing newline")
            << QByteArray("10.0\n20.0\n30.0\n15.0\n100.0\n2") << make(10, 20, 30, 15, 100, 2);
        QTest::newRow("CR LF line ends read the same as LF")
            << QByteArray("10.0\r\n20.0\r\n30.0\r\n15.0\r\n100.0\r\n2\r\n")
            << make(10, 20, 30, 15, 100, 2);
        QTest::newRow("stray CR inside a number is removed")
            << QByteArray("1\r0.5\n2\n3\n4\n5\n6") << make(10.5f, 2, 3, 4, 5, 6);
        QTest::newRow("trailing newline is fine")
            << QByteArray("1\n2\n3\n4\n5\n6\n") << make(1, 2, 3, 4, 5, 6);
        QTest::newRow("seventh line ignored")
            << QByteArray("1\n2\n3\n4\n5\n6\n7") << make(1, 2, 3, 4, 5, 6);
        QTest::newRow("many lines after the sixth ignored")
            << QByteArray("1\n2\n3\n4\n5\n6\nx\ny\nz\n") << make(1, 2, 3, 4, 5, 6);
        QTest::newRow("layer line 2.9 is layer 2")
            << QByteArray("0\n0\n0\n0\n0\n2.9") << make(0, 0, 0, 0, 0, 2);
        QTest::newRow("margin line of letters is 0")
            << QByteArray("abc\n20\n30\n15\n100\n1") << make(0, 20, 30, 15, 100, 1);
        QTest::newRow("leading blanks and trailing text")
            << QByteArray("  12.5%\n\t7\n8 \n9x\n 50.5 \n  3 ") << make(12.5f, 7, 8, 9, 50.5f, 3);
        QTest::newRow("negative values")
            << QByteArray("-5.0\n-1\n0\n0\n-20\n-1") << make(-5, -1, 0, 0, -20, -1);
        QTest::newRow("empty lines are zeros") << QByteArray("\n\n\n\n\n") << PositionRect();
        QTest::newRow("byte-order mark at the start is skipped")
            << QByteArray("\xEF\xBB\xBF"
                          "10\n20\n30\n15\n0\n1")
            << make(10, 20, 30, 15, 0, 1);
        QTest::newRow("UTF-8 text after the numbers is fine")
            << QByteArray("1 \xC3\xA9\n2\n3\n4\n5\n6") << make(1, 2, 3, 4, 5, 6);
    }

    void readsSixLines()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(PositionRect, rect);
        const auto read = PositionFile::read(fileWith(bytes));
        QVERIFY(read.has_value());
        QCOMPARE(*read, rect);
        QCOMPARE(PositionFile::parse(QString::fromUtf8(bytes)).value_or(PositionRect()), rect);
    }

    void shortFileIsNullopt_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("five lines") << QByteArray("10.0\n20.0\n30.0\n15.0\n100.0");
        QTest::newRow("CR only line ends are one line")
            << QByteArray("10.0\r20.0\r30.0\r15.0\r100.0\r2");
        QTest::newRow("one line") << QByteArray("10.0");
        QTest::newRow("five lines CR LF") << QByteArray("1\r\n2\r\n3\r\n4\r\n5");
        QTest::newRow("binary without line breaks") << QByteArray("\x00\x01\x02\xff\xfe", 5);
    }

    void shortFileIsNullopt()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!PositionFile::read(fileWith(bytes)).has_value());
        QVERIFY(!PositionFile::parse(QString::fromLatin1(bytes)).has_value());
    }

    void fiveLinesWithTrailingNewlineAreSixLines()
    {
        // The empty part after the last "\n" is a sixth line: the layer reads as 0.
        const auto read = PositionFile::read(fileWith("1\n2\n3\n4\n5\n"));
        QVERIFY(read.has_value());
        QCOMPARE(*read, make(1, 2, 3, 4, 5, 0));
    }

    void missingFileIsNullopt()
    {
        QVERIFY(!PositionFile::read(m_dir.filePath(QStringLiteral("missing.dat"))).has_value());
        QVERIFY(!PositionFile::read(QString()).has_value());
    }

    void folderIsNullopt()
    {
        const QString folder = m_dir.filePath(QStringLiteral("a folder"));
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(!PositionFile::read(folder).has_value());
    }

    void binaryFileIsUnreadable()
    {
        // Bytes that are not UTF-8 cannot be read as text: the file counts as short.
        QByteArray bytes;
        for (int i = 0; i < 4096; ++i)
            bytes.append(char((i * 37 + 11) & 0xFF));
        QVERIFY(bytes.count('\n') >= 6);
        QVERIFY(!PositionFile::read(fileWith(bytes)).has_value());
    }

    void invalidBytesAfterTheSixthLineDoNotMatter()
    {
        QByteArray bytes("1\n2\n3\n4\n5\n6\n");
        bytes.append("\xff\xfe\x00\x80", 4);
        const auto read = PositionFile::read(fileWith(bytes));
        QVERIFY(read.has_value());
        QCOMPARE(*read, make(1, 2, 3, 4, 5, 6));
    }

    void nulBytesReadAsText()
    {
        const auto read = PositionFile::read(fileWith(QByteArray("1\n\0\n3\n4\n5\n6", 11)));
        QVERIFY(read.has_value());
        QCOMPARE(*read, make(1, 0, 3, 4, 5, 6));
    }

    void hugeFileReadsItsHead()
    {
        QByteArray bytes("10.0\n20.0\n30.0\n15.0\n100.0\n2\n");
        bytes.append(QByteArray(20 * 1024 * 1024, 'z'));
        const auto read = PositionFile::read(fileWith(bytes));
        QVERIFY(read.has_value());
        QCOMPARE(*read, make(10, 20, 30, 15, 100, 2));
    }

    void hugeFileWithoutLineBreaksIsShort()
    {
        const auto read = PositionFile::read(fileWith(QByteArray(8 * 1024 * 1024, '7')));
        QVERIFY(!read.has_value());
    }

    void endlessDeviceIsShort()
    {
        if (!QFile::exists(QStringLiteral("/dev/zero")))
            QSKIP("no endless device here");
        QVERIFY(!PositionFile::read(QStringLiteral("/dev/zero")).has_value());
    }

    void hugeSixthLineReadsItsPrefix()
    {
        QByteArray bytes("1\n2\n3\n4\n5\n6");
        bytes.append(QByteArray(3 * 1024 * 1024, '9'));
        const auto read = PositionFile::read(fileWith(bytes));
        QVERIFY(read.has_value());
        QCOMPARE(read->layer(), 2147483647);
    }

    void specialEntryReadsAsMissing_data()
    {
        using namespace SpecialEntries;
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<bool>("follow");
        QTest::addColumn<bool>("reads");
        QTest::newRow("a FIFO reads as missing, without waiting for a writer")
            << Fifo << false << false;
        QTest::newRow("a FIFO reads as missing when links are followed") << Fifo << true << false;
        QTest::newRow("a link to a file outside is data in the workspace: missing")
            << LinkToFile << false << false;
        QTest::newRow("a link to a regular file is followed when asked")
            << LinkToFile << true << true;
        QTest::newRow("a link to a FIFO reads as missing when followed")
            << LinkToFifo << true << false;
        QTest::newRow("a dangling link reads as missing") << DanglingLink << true << false;
        QTest::newRow("a folder reads as missing") << Folder << true << false;
        QTest::newRow("a socket reads as missing") << Socket << true << false;
    }

    void specialEntryReadsAsMissing()
    {
        QFETCH(SpecialEntries::Kind, kind);
        QFETCH(bool, follow);
        QFETCH(bool, reads);
        static int count = 0;
        const QString path = m_dir.filePath(QStringLiteral("special-%1.dat").arg(++count));
        QVERIFY(SpecialEntries::make(kind, path, m_dir.filePath(QStringLiteral("elsewhere")),
                                     "1\n2\n3\n4\n5\n6"));
        const auto read = PositionFile::read(path, follow ? FileOps::ReadLinks::Follow
                                                          : FileOps::ReadLinks::NoFollow);
        QCOMPARE(read.has_value(), reads);
        if (reads)
            QCOMPARE(*read, make(1, 2, 3, 4, 5, 6));
    }

    void devicesReadAsMissing_data()
    {
        QTest::addColumn<QString>("device");
        QTest::newRow("/dev/null, which would read as empty") << QStringLiteral("/dev/null");
        QTest::newRow("/dev/zero, which would never end") << QStringLiteral("/dev/zero");
    }

    void devicesReadAsMissing()
    {
        QFETCH(QString, device);
        if (!QFile::exists(device))
            QSKIP("no such device here");
        QVERIFY(!PositionFile::read(device).has_value());
        QVERIFY(!PositionFile::read(device, FileOps::ReadLinks::Follow).has_value());
    }

    void writtenFileReadsBack()
    {
        const PositionRect rect = make(12.3f, 45.6f, 7.8f, 9.1f, 55.5f, 3);
        const QString path = m_dir.filePath(QStringLiteral("roundtrip.dat"));
        rect.saveToFile(path);
        const auto read = PositionFile::read(path);
        QVERIFY(read.has_value());
        QCOMPARE(*read, rect);
    }
};

QTEST_GUILESS_MAIN(TestPositionFile)
#include "tst_positionfile.moc"
