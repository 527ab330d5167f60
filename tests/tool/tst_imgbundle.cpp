// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "bundlepaths.h"
#include "specialentries.h"
#include "testenv.h"
#include "toolrun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using ToolRun::Result;

Result runTool(const QStringList &args)
{
    return ToolRun::run(args);
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

// True when anything, even a dangling link or a FIFO, is at path.
bool entryExists(const QString &path)
{
    return QFileInfo::exists(path) || QFileInfo(path).isSymLink();
}

bool isOneLine(const QByteArray &text)
{
    return text.endsWith('\n') && text.count('\n') == 1 && text.size() > 1;
}

} // namespace

class TestImgBundle : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    int m_count = 0;

    QString fresh(const QString &name)
    {
        return m_dir.filePath(QStringLiteral("%1-%2").arg(++m_count).arg(name));
    }

    QString makeBundle(const QByteArray &productId = QByteArray())
    {
        const QString bundle = fresh(QStringLiteral("img.bundle"));
        const QString res = BundlePaths::resourcePath(bundle);
        writeBytes(res + "/html/index.html", "<html></html>");
        writeBytes(res + "/data/img.xml", "<info/>");
        writeBytes(res + "/data/defaultsettings.dat", "1\n2\n3\n4\n5\n6");
        if (!productId.isNull())
            writeBytes(res + "/product.id", productId);
        return bundle;
    }

private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY(m_dir.isValid());
        QVERIFY(QFile::exists(QStringLiteral(IMG_TOOL_PATH)));
    }

    // ---- help and argument errors

    void helpForEveryCommand_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("firstLine");
        QTest::newRow("overview") << QStringList{"--help"}
                                  << "Usage: imgbundle COMMAND [ARGUMENTS]";
        QTest::newRow("workspace") << QStringList{"workspace", "--help"}
                                   << "Usage: imgbundle workspace [--bundle DIR] [--workspace DIR]";
        QTest::newRow("position group")
            << QStringList{"position", "--help"} << "Usage: imgbundle COMMAND [ARGUMENTS]";
        QTest::newRow("position read")
            << QStringList{"position", "read", "--help"} << "Usage: imgbundle position read FILE";
        QTest::newRow("position write")
            << QStringList{"position", "write", "-h"}
            << "Usage: imgbundle position write FILE LEFT TOP RIGHT BOTTOM TRANSPARENCY LAYER";
    }

    void helpForEveryCommand()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, firstLine);
        const Result r = runTool(args);
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(QString::fromUtf8(r.out).section(QLatin1Char('\n'), 0, 0), firstLine);
        QVERIFY(r.err.isEmpty());
    }

    void overviewListsEveryCommand()
    {
        const Result r = runTool({"--help"});
        for (const char *name : {"workspace", "position read", "position write"})
            QVERIFY2(r.out.contains(QByteArray("\n  ") + name), name);
        const Result group = runTool({"position", "--help"});
        QVERIFY(group.out.contains("position read"));
        QVERIFY(!group.out.contains("\n  workspace"));
    }

    void wrongArguments_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("no command") << QStringList{};
        QTest::newRow("unknown command") << QStringList{"frobnicate"};
        QTest::newRow("group without command") << QStringList{"position"};
        QTest::newRow("unknown sub-command") << QStringList{"position", "erase", "x"};
        QTest::newRow("read without file") << QStringList{"position", "read"};
        QTest::newRow("read with two files") << QStringList{"position", "read", "a", "b"};
        QTest::newRow("write without values") << QStringList{"position", "write", "f"};
        QTest::newRow("write with a word for a number")
            << QStringList{"position", "write", "f", "ten", "0", "0", "0", "0", "1"};
        QTest::newRow("write with a fractional layer")
            << QStringList{"position", "write", "f", "1", "0", "0", "0", "0", "2.5"};
        QTest::newRow("write with not-a-number")
            << QStringList{"position", "write", "f", "nan", "0", "0", "0", "0", "1"};
        QTest::newRow("write with infinity")
            << QStringList{"position", "write", "f", "1", "inf", "0", "0", "0", "1"};
        QTest::newRow("write with one value too many")
            << QStringList{"position", "write", "f", "1", "2", "3", "4", "5", "6", "7"};
        QTest::newRow("workspace with unknown option") << QStringList{"workspace", "--colour"};
        QTest::newRow("workspace with stray argument") << QStringList{"workspace", "extra"};
        QTest::newRow("workspace option without value") << QStringList{"workspace", "--bundle"};
        QTest::newRow("workspace option with empty value")
            << QStringList{"workspace", "--workspace="};
    }

    void wrongArguments()
    {
        QFETCH(QStringList, args);
        const QString cwd = QDir::currentPath();
        const Result r = runTool(args);
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 2);
        if (!args.isEmpty()) {
            QVERIFY2(isOneLine(r.err), r.err.constData());
            QVERIFY(r.out.isEmpty());
        }
        QVERIFY(!QFile::exists(cwd + "/f"));
    }

    // ---- position read

    void readPrintsTheSixValues_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("printed");
        const QByteArray zeros("left 0\ntop 0\nright 0\nbottom 0\ntransparency 0\nlayer 0\n");
        QTest::newRow("as written") << QByteArray("10.0\n20.0\n30.0\n15.0\n100.0\n2")
                                    << QByteArray("left 10\ntop 20\nright 30\nbottom 15\n"
                                                  "transparency 100\nlayer 2\n");
        QTest::newRow("CR LF line ends") << QByteArray("12.5\r\n0\r\n0\r\n0\r\n0\r\n1\r\n")
                                         << QByteArray("left 12.5\ntop 0\nright 0\nbottom 0\n"
                                                       "transparency 0\nlayer 1\n");
        QTest::newRow("layer 2.9 is 2, letters are 0")
            << QByteArray("abc\n-5\n0.1\n0\n0\n2.9")
            << QByteArray("left 0\ntop -5\nright 0.1\nbottom 0\ntransparency 0\nlayer 2\n");
        QTest::newRow("five lines are all zeros") << QByteArray("1\n2\n3\n4\n5") << zeros;
        QTest::newRow("empty file is all zeros") << QByteArray() << zeros;
        QTest::newRow("binary file is all zeros")
            << QByteArray("\xff\x00\n\xfe\n\n\n\n\n\x80", 11) << zeros;
    }

    void readPrintsTheSixValues()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, printed);
        const QString path = fresh(QStringLiteral("settings.dat"));
        QVERIFY(writeBytes(path, bytes));
        const Result r = runTool({"position", "read", path});
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, printed);
    }

    void readHugeFile()
    {
        QByteArray bytes("1\n2\n3\n4\n5\n6\n");
        bytes.append(QByteArray(16 * 1024 * 1024, '#'));
        const QString path = fresh(QStringLiteral("huge.dat"));
        QVERIFY(writeBytes(path, bytes));
        const Result r = runTool({"position", "read", path});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, QByteArray("left 1\ntop 2\nright 3\nbottom 4\ntransparency 5\nlayer 6\n"));
    }

    void readMissingOrFolderFails()
    {
        for (const QString &path : {fresh(QStringLiteral("missing.dat")), m_dir.path()}) {
            const Result r = runTool({"position", "read", path});
            QVERIFY(!r.crashed);
            QCOMPARE(r.exitCode, 1);
            QVERIFY2(isOneLine(r.err), r.err.constData());
            QVERIFY(r.out.isEmpty());
        }
    }

    // A FILE that is no regular file is an error, never read: a FIFO would wait for a writer
    // and a device might never end.
    void readSpecialFileFails_data()
    {
        QTest::addColumn<QString>("path");
        const QString fifo = fresh(QStringLiteral("fifo.dat"));
        const QString linkToFifo = fresh(QStringLiteral("link-to-fifo.dat"));
        QVERIFY(SpecialEntries::makeFifo(fifo));
        QVERIFY(QFile::link(fifo, linkToFifo));
        QTest::newRow("a FIFO") << fifo;
        QTest::newRow("a link to a FIFO") << linkToFifo;
        QTest::newRow("/dev/null") << QStringLiteral("/dev/null");
        QTest::newRow("/dev/zero") << QStringLiteral("/dev/zero");
    }

    void readSpecialFileFails()
    {
        QFETCH(QString, path);
        if (!entryExists(path))
            QSKIP("no such entry here");
        const Result r = runTool({"position", "read", path});
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(isOneLine(r.err), r.err.constData());
        QVERIFY(r.out.isEmpty());
    }

    void readFollowsALinkToAFile()
    {
        const QString path = fresh(QStringLiteral("link.dat"));
        QVERIFY(SpecialEntries::make(SpecialEntries::LinkToFile, path,
                                     fresh(QStringLiteral("real")), "1\n2\n3\n4\n5\n6"));
        const Result r = runTool({"position", "read", path});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, QByteArray("left 1\ntop 2\nright 3\nbottom 4\ntransparency 5\nlayer 6\n"));
    }

    // ---- json

    void jsonOfSpecialFileFails_data() { readSpecialFileFails_data(); }
    void jsonOfSpecialFileFails()
    {
        QFETCH(QString, path);
        if (!entryExists(path))
            QSKIP("no such entry here");
        const Result r = runTool({"json", path});
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(isOneLine(r.err), r.err.constData());
        QVERIFY(r.out.isEmpty());
    }

    void jsonOfAFolderFails()
    {
        const Result r = runTool({"json", m_dir.path()});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(isOneLine(r.err), r.err.constData());
    }

    void jsonDepth_data()
    {
        QTest::addColumn<int>("levels");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("nested exactly to the limit converts") << 256 << 0;
        QTest::newRow("one level deeper is damaged") << 257 << 1;
        QTest::newRow("200,000 levels are damaged") << 200000 << 1;
    }

    void jsonDepth()
    {
        QFETCH(int, levels);
        QFETCH(int, exitCode);
        const QString path = fresh(QStringLiteral("deep.xml"));
        QVERIFY(writeBytes(path, QByteArray("<d>").repeated(levels) +
                                     QByteArray("</d>").repeated(levels)));
        const Result r = runTool({"json", path});
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY2(isOneLine(exitCode == 0 ? r.out : r.err), r.err.constData());
        if (exitCode == 0)
            QCOMPARE(r.out, QByteArray("\"d\":{").repeated(levels) +
                                QByteArray("}").repeated(levels) + '\n');
    }

    // ---- position write

    void writeBytesExactly_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("example") << QStringList{"10", "20", "30", "15", "100", "2"}
                                 << QByteArray("10.0\n20.0\n30.0\n15.0\n100.0\n2");
        QTest::newRow("one decimal only") << QStringList{"12.34", "0", "0", "0", "0.05", "0"}
                                          << QByteArray("12.3\n0.0\n0.0\n0.0\n0.1\n0");
        QTest::newRow("negative values as they are")
            << QStringList{"-5", "0", "120", "0", "-20", "-1"}
            << QByteArray("-5.0\n0.0\n120.0\n0.0\n-20.0\n-1");
        QTest::newRow("exponent form") << QStringList{"1e1", "0", "0", "0", "0", "3"}
                                       << QByteArray("10.0\n0.0\n0.0\n0.0\n0.0\n3");
    }

    void writeBytesExactly()
    {
        QFETCH(QStringList, values);
        QFETCH(QByteArray, bytes);
        const QString path = fresh(QStringLiteral("settings.dat"));
        const Result r = runTool(QStringList{"position", "write", path} + values);
        QVERIFY2(!r.crashed && r.exitCode == 0, r.err.constData());
        QCOMPARE(readBytes(path), bytes);
        QVERIFY(r.out.isEmpty());
        const Result back = runTool({"position", "read", path});
        QCOMPARE(back.exitCode, 0);
    }

    void writeReplacesAFile()
    {
        const QString path = fresh(QStringLiteral("settings.dat"));
        QVERIFY(writeBytes(path, QByteArray(100000, 'x')));
        const Result r = runTool({"position", "write", path, "1", "2", "3", "4", "5", "6"});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(readBytes(path), QByteArray("1.0\n2.0\n3.0\n4.0\n5.0\n6"));
    }

    void writeIntoMissingFolderFails()
    {
        const QString path = fresh(QStringLiteral("no folder")) + "/settings.dat";
        const Result r = runTool({"position", "write", path, "1", "2", "3", "4", "5", "6"});
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(isOneLine(r.err), r.err.constData());
        QVERIFY(!QFile::exists(path));
    }

    // ---- workspace

    void workspaceIsCreatedAndPrinted()
    {
        const QString ws = fresh(QString::fromUtf8("my w\xC3\xB6rkspace")) + "/img";
        const Result r = runTool({"workspace", "--bundle", makeBundle(), "--workspace", ws});
        QVERIFY2(!r.crashed && r.exitCode == 0, r.err.constData());
        QCOMPARE(QString::fromUtf8(r.out), ws + "\n");
        QCOMPARE(readBytes(ws + "/index.html"), QByteArray("<html></html>"));
        QCOMPARE(readBytes(ws + "/defaultsettings.dat"), QByteArray("1\n2\n3\n4\n5\n6"));
    }

    void workspaceIsToppedUp()
    {
        const QString bundle = makeBundle();
        const QString ws = fresh(QStringLiteral("ws"));
        QCOMPARE(runTool({"workspace", "--bundle=" + bundle, "--workspace=" + ws}).exitCode, 0);
        QVERIFY(writeBytes(ws + "/img.xml", "<info>mine</info>"));
        QVERIFY(QFile::remove(ws + "/index.html"));
        QCOMPARE(runTool({"workspace", "--bundle", bundle, "--workspace", ws}).exitCode, 0);
        QCOMPARE(readBytes(ws + "/img.xml"), QByteArray("<info>mine</info>"));
        QCOMPARE(readBytes(ws + "/index.html"), QByteArray("<html></html>"));
    }

    void workspaceDefaultsToTheSaveFolder()
    {
        const Result r = runTool({"workspace", "--bundle", makeBundle("tooltest")});
        QCOMPARE(r.exitCode, 0);
        const QString expected = QString::fromLocal8Bit(qgetenv("XDG_DATA_HOME")) +
                                 "/Kelvara/tooltest_resource/Plugin/Save/img";
        QCOMPARE(QString::fromUtf8(r.out), expected + "\n");
        QVERIFY(QFile::exists(expected + "/img.xml"));
    }

    // The bundle's files are read without waiting: a FIFO among them is left out and a FIFO as
    // "product.id" counts as no product id (the default one).
    void workspaceFromABundleWithFifos()
    {
        const QString bundle = makeBundle();
        const QString res = BundlePaths::resourcePath(bundle);
        for (const char *rel : {"/html/index.html", "/data/img.xml"}) {
            QVERIFY(QFile::remove(res + rel));
            QVERIFY(SpecialEntries::makeFifo(res + rel));
        }
        QVERIFY(SpecialEntries::makeFifo(res + "/product.id"));
        const Result r = runTool({"workspace", "--bundle", bundle});
        QVERIFY2(!r.crashed && r.exitCode == 0, r.err.constData());
        const QString expected = QString::fromLocal8Bit(qgetenv("XDG_DATA_HOME")) +
                                 "/Kelvara/quillamy_resource/Plugin/Save/img";
        QCOMPARE(QString::fromUtf8(r.out), expected + "\n");
        QCOMPARE(QDir(expected).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList{"defaultsettings.dat"});
    }

    void workspaceProductId_data()
    {
        QTest::addColumn<bool>("linked");
        QTest::addColumn<QByteArray>("productId");
        QTest::addColumn<QString>("folderName");
        QTest::newRow("a packager's link is followed") << true << QByteArray("linked") << "linked";
        QTest::newRow("a slash makes the id unreadable") << false << QByteArray("a/b") << "(null)";
        QTest::newRow("\"..\" makes the id unreadable") << false << QByteArray("..") << "(null)";
    }

    void workspaceProductId()
    {
        QFETCH(bool, linked);
        QFETCH(QByteArray, productId);
        QFETCH(QString, folderName);
        const QString bundle = makeBundle(linked ? QByteArray() : productId);
        if (linked)
            QVERIFY(SpecialEntries::make(SpecialEntries::LinkToFile,
                                         BundlePaths::resourcePath(bundle) + "/product.id",
                                         fresh(QStringLiteral("packaged")), productId));
        const Result r = runTool({"workspace", "--bundle", bundle});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(QString::fromUtf8(r.out), QString::fromLocal8Bit(qgetenv("XDG_DATA_HOME")) +
                                               "/Kelvara/" + folderName +
                                               "_resource/Plugin/Save/img\n");
    }

    void workspaceDefaultsToTheBuiltBundle()
    {
        const QString ws = fresh(QStringLiteral("ws"));
        const Result r = runTool({"workspace", "--workspace", ws});
        QCOMPARE(r.exitCode, 0);
        const QString res = BundlePaths::resourcePath(QStringLiteral(IMG_BUNDLE_DIR));
        QCOMPARE(readBytes(ws + "/img.xml"), readBytes(res + "/data/img.xml"));
        QCOMPARE(readBytes(ws + "/defaultsettings.dat"),
                 readBytes(res + "/data/defaultsettings.dat"));
        QCOMPARE(readBytes(ws + "/index.html"), readBytes(res + "/html/index.html"));
    }

    void workspaceWithMissingBundleFails()
    {
        const QString ws = fresh(QStringLiteral("ws"));
        const Result r =
            runTool({"workspace", "--bundle", fresh(QStringLiteral("gone")), "--workspace", ws});
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(isOneLine(r.err), r.err.constData());
        QVERIFY(!QFile::exists(ws));
    }

    void workspaceThatIsAFileFails()
    {
        const QString ws = fresh(QStringLiteral("ws"));
        QVERIFY(writeBytes(ws, "not a folder"));
        const Result r = runTool({"workspace", "--bundle", makeBundle(), "--workspace", ws});
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(isOneLine(r.err), r.err.constData());
        QCOMPARE(readBytes(ws), QByteArray("not a folder"));
    }

    void workspaceBelowAFileFails()
    {
        const QString file = fresh(QStringLiteral("file"));
        QVERIFY(writeBytes(file, "x"));
        const Result r =
            runTool({"workspace", "--bundle", makeBundle(), "--workspace", file + "/img"});
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(isOneLine(r.err), r.err.constData());
        QCOMPARE(readBytes(file), QByteArray("x"));
    }
};

QTEST_GUILESS_MAIN(TestImgBundle)
#include "tst_imgbundle.moc"
