// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "bundlepaths.h"
#include "localisation.h"
#include "testenv.h"
#include "utilityfunction.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestUtilityFunction : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY(m_dir.isValid());
    }

    void cleanup() { setDefaultBundlePath(QString()); }

    // ---- keystroke filters

    void checkFloat_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("12.5 stays") << "12.5"
                                    << "12.5";
        QTest::newRow("12. stays") << "12."
                                   << "12.";
        QTest::newRow("second point removed: 12.5.") << "12.5."
                                                     << "12.5";
        QTest::newRow("second point removed: 1.2.") << "1.2."
                                                    << "1.2";
        QTest::newRow("lone minus becomes empty") << "-"
                                                  << "";
        QTest::newRow("letter removed: 12a") << "12a"
                                             << "12";
        QTest::newRow("lone point stays") << "."
                                          << ".";
        QTest::newRow("empty gives empty") << ""
                                           << "";
        QTest::newRow("null gives empty") << QString() << "";
        QTest::newRow("minus after digits removed") << "12-"
                                                    << "12";
        QTest::newRow("blank removed") << "3 "
                                       << "3";
        QTest::newRow("exponent letter removed") << "1e"
                                                 << "1";
        QTest::newRow("comma removed") << "1,"
                                       << "1";
        QTest::newRow("earlier characters are not re-examined") << "1a2"
                                                                << "1a2";
        QTest::newRow("leading minus kept when a digit follows") << "-5"
                                                                 << "-5";
        QTest::newRow("non-ASCII digit removed") << QString::fromUtf8("1\u0663") << "1";
    }

    void checkFloat()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const QString result = UtilityFunction::checkFloatValueStringFrom(text);
        QCOMPARE(result, expected);
        QVERIFY(!result.isNull());
    }

    void checkInteger_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("123 stays") << "123"
                                   << "123";
        QTest::newRow("point removed: 12.") << "12."
                                            << "12";
        QTest::newRow("lone x becomes empty") << "x"
                                              << "";
        QTest::newRow("empty gives empty") << ""
                                           << "";
        QTest::newRow("null gives empty") << QString() << "";
        QTest::newRow("minus removed") << "-"
                                       << "";
        QTest::newRow("earlier characters are not re-examined") << "1.2"
                                                                << "1.2";
    }

    void checkInteger()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const QString result = UtilityFunction::checkIntegerValueStringFrom(text);
        QCOMPARE(result, expected);
        QVERIFY(!result.isNull());
    }

    // ---- colours

    void colorToHex_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("hex");
        QTest::newRow("white") << QColor(Qt::white) << "0xFFFFFF";
        QTest::newRow("black") << QColor(Qt::black) << "0x000000";
        QTest::newRow("grey 0.5 truncates to 7F")
            << QColor::fromRgbF(0.5f, 0.5f, 0.5f) << "0x7F7F7F";
        QTest::newRow("orange, upper-case digits") << QColor(255, 128, 0) << "0xFF8000";
        QTest::newRow("alpha ignored") << QColor(0x12, 0xAB, 0xEF, 10) << "0x12ABEF";
        QTest::newRow("fractions truncate rather than round")
            << QColor::fromRgbF(0.2f, 0.6f, 0.8f) << "0x3399CC";
        QTest::newRow("HSV colour converted to RGB") << QColor::fromHsv(0, 255, 255) << "0xFF0000";
        QTest::newRow("invalid colour") << QColor() << "0x000000";
    }

    void colorToHex()
    {
        QFETCH(QColor, color);
        QFETCH(QString, hex);
        QCOMPARE(UtilityFunction::colorToHexRGB(color), hex);
    }

    void everyByteSurvivesTheRoundTrip()
    {
        for (int v = 0; v < 256; ++v) {
            const QString hex = QString::asprintf("0x%02X%02X%02X", v, 255 - v, (v * 7) & 0xFF);
            QCOMPARE(UtilityFunction::colorToHexRGB(UtilityFunction::colorFromHexRGB(hex)), hex);
        }
    }

    void colorFromHex_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("color");
        QTest::newRow("0x00FF00 is green") << "0x00FF00" << QColor(0, 255, 0);
        QTest::newRow("lower-case digits") << "0xff0000" << QColor(255, 0, 0);
        QTest::newRow("without prefix") << "FF0000" << QColor(255, 0, 0);
        QTest::newRow("upper-case prefix") << "0X0000ff" << QColor(0, 0, 255);
        QTest::newRow("bit 24 ignored") << "0x1FF0000" << QColor(255, 0, 0);
        QTest::newRow("zz is black") << "zz" << QColor(0, 0, 0);
        QTest::newRow("null is black") << QString() << QColor(0, 0, 0);
        QTest::newRow("empty is black") << "" << QColor(0, 0, 0);
        QTest::newRow("leading blanks skipped") << "  0x808080" << QColor(128, 128, 128);
        QTest::newRow("scan stops at a non-digit") << "0x12zz" << QColor(0, 0, 0x12);
        QTest::newRow("short value fills from blue") << "0x1234" << QColor(0, 0x12, 0x34);
        QTest::newRow("prefix without digits is zero") << "0x" << QColor(0, 0, 0);
        QTest::newRow("too long saturates") << "0xFFFFFFFFFFFF" << QColor(255, 255, 255);
        QTest::newRow("hash form is not read") << "#FF0000" << QColor(0, 0, 0);
    }

    void colorFromHex()
    {
        QFETCH(QString, text);
        QFETCH(QColor, color);
        const QColor result = UtilityFunction::colorFromHexRGB(text);
        QVERIFY(result.isValid());
        QCOMPARE(result.alpha(), 255);
        QCOMPARE(result.alphaF(), 1.0f);
        QCOMPARE(result.rgb(), color.rgb());
    }

    // ---- URLs

    void checkUrl_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("no scheme gets http") << "pages/x"
                                             << "http://pages/x";
        QTest::newRow("https unchanged") << "https://example.org/a.png"
                                         << "https://example.org/a.png";
        QTest::newRow("http unchanged") << "http://a"
                                        << "http://a";
        QTest::newRow("mailto unchanged") << "mailto:someone@example.org"
                                          << "mailto:someone@example.org";
        QTest::newRow("scheme without slashes unchanged") << "https:x"
                                                          << "https:x";
        QTest::newRow("blank always gets http") << "https://a b"
                                                << "http://https://a b";
        QTest::newRow("blank without scheme") << "a b"
                                              << "http://a b";
        QTest::newRow("host name only") << "www.example.org"
                                        << "http://www.example.org";
        QTest::newRow("empty") << ""
                               << "http://";
    }

    void checkUrl()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(UtilityFunction::checkUrlString(text), expected);
    }

    // ---- writeString

    void writeStringBytes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty text is the mark alone") << "" << QByteArray("\xEF\xBB\xBF");
        QTest::newRow("ASCII") << "var config={};" << QByteArray("\xEF\xBB\xBFvar config={};");
        QTest::newRow("non-ASCII as UTF-8") << QString::fromUtf8("\xC3\xA9\xE6\x97\xA5")
                                            << QByteArray("\xEF\xBB\xBF\xC3\xA9\xE6\x97\xA5");
        QTest::newRow("line ends kept") << "a\r\nb\n"
                                        << QByteArray("\xEF\xBB\xBF"
                                                      "a\r\nb\n");
    }

    void writeStringBytes()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        const QString path = m_dir.filePath(QStringLiteral("config.js"));
        QVERIFY(UtilityFunction::writeString(text, path));
        QCOMPARE(readBytes(path), bytes);
    }

    void writeStringReplacesExistingFile()
    {
        const QString path = m_dir.filePath(QStringLiteral("replace.js"));
        QVERIFY(writeBytes(path, QByteArray(5000, 'x')));
        QVERIFY(UtilityFunction::writeString(QStringLiteral("x"), path));
        QCOMPARE(readBytes(path), QByteArray("\xEF\xBB\xBFx"));
    }

    void writeStringIntoMissingFolderFails()
    {
        const QString path = m_dir.filePath(QStringLiteral("missing/folder/config.js"));
        QVERIFY(!UtilityFunction::writeString(QStringLiteral("x"), path));
        QVERIFY(!QFile::exists(m_dir.filePath(QStringLiteral("missing"))));
    }

    void writeStringOntoAFolderFails()
    {
        const QString path = m_dir.filePath(QStringLiteral("a folder"));
        QVERIFY(QDir().mkpath(path));
        QVERIFY(!UtilityFunction::writeString(QStringLiteral("x"), path));
        QVERIFY(QFileInfo(path).isDir());
    }

    void headerIsTheByteOrderMark()
    {
        QCOMPARE(UtilityFunction::header(), QByteArray("\xEF\xBB\xBF"));
    }

    // ---- createTempPath

    void tempPathsAreUniqueAndOnlyReserved()
    {
        QSet<QString> seen;
        for (int i = 0; i < 200; ++i) {
            const QString path = UtilityFunction::createTempPath();
            QVERIFY2(!seen.contains(path), qPrintable(path));
            seen.insert(path);
            QVERIFY(!QFile::exists(path));
        }
    }

    void tempPathLayout()
    {
        // No bundle set: the program's own resources hold no product.id, so "quillamy".
        const QString path = UtilityFunction::createTempPath();
        const QString folder = QDir::tempPath() + "/quillamy";
        QCOMPARE(QFileInfo(path).absolutePath(), folder);
        const QRegularExpression leaf(QStringLiteral("^\\d+\\.\\d{6}-\\d+$"));
        QVERIFY2(leaf.match(QFileInfo(path).fileName()).hasMatch(), qPrintable(path));
        QVERIFY(folder.startsWith(QDir::tempPath()));
    }

    void counterSeparatesCallsInTheSameMicrosecond()
    {
        const QString a = QFileInfo(UtilityFunction::createTempPath()).fileName();
        const QString b = QFileInfo(UtilityFunction::createTempPath()).fileName();
        const int countA = a.section(QLatin1Char('-'), -1).toInt();
        const int countB = b.section(QLatin1Char('-'), -1).toInt();
        QCOMPARE(countB, countA + 1);
    }

    void tempPathUsesProductId()
    {
        const QString bundle = m_dir.filePath(QStringLiteral("with-id.bundle"));
        QVERIFY(writeBytes(BundlePaths::resourcePath(bundle) + "/product.id", "abc\n"));
        setDefaultBundlePath(bundle);
        const QString path = UtilityFunction::createTempPath();
        QCOMPARE(QFileInfo(path).absolutePath(), QDir::tempPath() + "/abc\n");
    }

    // The id is one folder name below temp: an id that would lead anywhere else counts as
    // unreadable, and the name goes straight into temp.
    void tempPathProductIdStaysBelowTemp_data()
    {
        QTest::addColumn<QByteArray>("productId");
        QTest::addColumn<QString>("folder"); // below temp; empty: temp itself
        QTest::newRow("slashes leading up and out") << QByteArray("x/../../etc") << "";
        QTest::newRow("a slash between names") << QByteArray("a/b") << "";
        QTest::newRow("a backslash") << QByteArray("..\\x") << "";
        QTest::newRow("a NUL") << QByteArray("a\0b", 3) << "";
        QTest::newRow("\"..\", which would name temp's parent") << QByteArray("..") << "";
        QTest::newRow("\".\", which would name temp itself") << QByteArray(".") << "";
        QTest::newRow("a trailing line break stays part of the name")
            << QByteArray("abc\n") << "abc\n";
    }

    void tempPathProductIdStaysBelowTemp()
    {
        QFETCH(QByteArray, productId);
        QFETCH(QString, folder);
        static int count = 0;
        const QString bundle = m_dir.filePath(QStringLiteral("id-%1.bundle").arg(++count));
        QVERIFY(writeBytes(BundlePaths::resourcePath(bundle) + "/product.id", productId));
        setDefaultBundlePath(bundle);
        const QString path = UtilityFunction::createTempPath();
        const QString expected =
            folder.isEmpty() ? QDir::tempPath() : QDir::tempPath() + QLatin1Char('/') + folder;
        QCOMPARE(QFileInfo(path).path(), expected);
    }

    void tempPathWithProductIdFolderUsesTheDefaultId()
    {
        // A folder in the place of product.id is no file at all: the default id is used.
        const QString bundle = m_dir.filePath(QStringLiteral("bad-id.bundle"));
        QVERIFY(QDir().mkpath(BundlePaths::resourcePath(bundle) + "/product.id"));
        setDefaultBundlePath(bundle);
        const QString path = UtilityFunction::createTempPath();
        QCOMPARE(QFileInfo(path).absolutePath(), QDir::tempPath() + QStringLiteral("/quillamy"));
    }
};

QTEST_GUILESS_MAIN(TestUtilityFunction)
#include "tst_utilityfunction.moc"
