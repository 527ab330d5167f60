// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The book output commands end to end on the bundle's own resources: a workspace made by
// "workspace", its scripts written by "config" and "publish", restored by "unscramble".
#include "testenv.h"
#include "toolrun.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using ToolRun::Result;

Result runTool(const QStringList &args, const QByteArray &input = QByteArray())
{
    ToolRun::Setup setup;
    setup.input = input;
    return ToolRun::run(args, setup);
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestBookCommands : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString m_workspace;

private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY(m_dir.isValid());
        m_workspace = m_dir.filePath(QStringLiteral("img"));
        const Result made =
            runTool({QStringLiteral("workspace"), QStringLiteral("--bundle"),
                     QStringLiteral(IMG_BUNDLE_DIR), QStringLiteral("--workspace"), m_workspace});
        QCOMPARE(made.exitCode, 0);
        QVERIFY(QFileInfo::exists(m_workspace + QStringLiteral("/img.xml")));
    }

    void configOfTheDefaultWorkspace()
    {
        const Result result =
            runTool({QStringLiteral("config"), QStringLiteral("--workspace"), m_workspace});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, (m_workspace + QStringLiteral("/config.js\n")).toUtf8());
        const QByteArray config = readBytes(m_workspace + QStringLiteral("/config.js"));
        QVERIFY2(config.startsWith("\xEF\xBB\xBFvar config={"), config.constData());
        QVERIFY(config.endsWith("};"));
    }

    void publishRestoresToTheConfigSettings()
    {
        QCOMPARE(runTool({QStringLiteral("config"), QStringLiteral("--workspace"), m_workspace})
                     .exitCode,
                 0);
        QCOMPARE(runTool({QStringLiteral("publish"), QStringLiteral("--workspace"), m_workspace})
                     .exitCode,
                 0);
        const QByteArray scrambled = readBytes(m_workspace + QStringLiteral("/bookPlugin.js"));
        QVERIFY(QRegularExpression(QStringLiteral("^[A-Za-v]+[0-9a-fA-F]{8}_$"))
                    .match(QString::fromLatin1(scrambled))
                    .hasMatch());
        const Result restored = runTool({QStringLiteral("unscramble")}, scrambled);
        QCOMPARE(restored.exitCode, 0);
        const QByteArray config = readBytes(m_workspace + QStringLiteral("/config.js"));
        // The default description's image is empty: the preview's script keeps it empty, and the
        // book's names the plugin's folder itself, which the book's loader takes for no image.
        QByteArray book = config.mid(int(qstrlen("\xEF\xBB\xBFvar config=")));
        QVERIFY(book.contains("\"src\":\"\""));
        book.replace("\"src\":\"\"", "\"src\":\"files/plugin\"");
        QCOMPARE(restored.out, "var bookPlugin=" + book);
    }

    void positionReachesTheScripts()
    {
        QVERIFY(writeBytes(m_workspace + QStringLiteral("/settings.dat"),
                           "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QCOMPARE(runTool({QStringLiteral("config"), QStringLiteral("--workspace"), m_workspace})
                     .exitCode,
                 0);
        const QByteArray config = readBytes(m_workspace + QStringLiteral("/config.js"));
        QVERIFY2(config.contains("\"opacity\":0.750000,\"layout\":2"), config.constData());
        QVERIFY2(config.contains("\"left\":\"10.0%\",\"top\":\"20.0%\",\"width\":\"60.0%\","
                                 "\"height\":\"65.0%\""),
                 config.constData());
    }

    void jsonOfTheBundleDescription()
    {
        const Result result =
            runTool({QStringLiteral("json"),
                     QStringLiteral(IMG_BUNDLE_DIR "/Contents/Resources/data/img.xml")});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.out.startsWith("{\"opacity\":"));
        QVERIFY(result.out.endsWith("}\n"));
        QCOMPARE(result.out.count('\n'), 1);
    }

    void scrambleFilterRoundTrips_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("ASCII with a final line break") << QByteArray("var bookPlugin={};\n");
        QTest::newRow("non-ASCII") << QByteArray("Gr\xC3\xBC\xC3\x9F"
                                                 "e \xE6\x97\xA5");
    }
    void scrambleFilterRoundTrips()
    {
        QFETCH(QByteArray, text);
        const Result scrambled = runTool({QStringLiteral("scramble")}, text);
        QCOMPARE(scrambled.exitCode, 0);
        QCOMPARE(scrambled.out.size(), 2 * text.size() + 9);
        const Result restored = runTool({QStringLiteral("unscramble")}, scrambled.out);
        QCOMPARE(restored.exitCode, 0);
        QCOMPARE(restored.out, text);
    }

    void badUseIsOneLine_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("json without file") << QStringList{"json"} << 2;
        QTest::newRow("config without workspace") << QStringList{"config"} << 2;
        QTest::newRow("publish with unknown option") << QStringList{"publish", "--x"} << 2;
        QTest::newRow("publish of missing workspace")
            << QStringList{"publish", "--workspace", "/nonexistent/img"} << 1;
        QTest::newRow("unscramble of plain text") << QStringList{"unscramble"} << 1;
    }
    void badUseIsOneLine()
    {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        const Result result = runTool(args, "plain");
        QVERIFY(!result.crashed);
        QCOMPARE(result.exitCode, exitCode);
        QCOMPARE(result.err.count('\n'), 1);
        QVERIFY(result.out.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestBookCommands)
#include "tst_bookcommands.moc"
