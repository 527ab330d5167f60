// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "pluginsettingsinfo.h"
#include "scrambler.h"
#include "scriptgenerator.h"
#include "specialentries.h"
#include "testenv.h"
#include "xmlhelpers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QByteArray kBom("\xEF\xBB\xBF");

const QByteArray kFrameXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<info>\n"
                             "  <opacity type=\"number\">1</opacity>\n"
                             "  <layout type=\"number\">1</layout>\n"
                             "  <properties>\n"
                             "    <basic>\n"
                             "      <left type=\"text\">0%</left>\n"
                             "      <top type=\"text\">0%</top>\n"
                             "      <width type=\"text\">0%</width>\n"
                             "      <height type=\"text\">0%</height>\n"
                             "    </basic>\n"
                             "  </properties>\n"
                             "</info>\n";

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray frameJson(const char *opacity, int layer, const char *left, const char *top,
                     const char *width, const char *height)
{
    return QStringLiteral(
               "{\"opacity\":%1,\"layout\":%2,\"properties\":{\"basic\":{\"left\":\"%3\","
               "\"top\":\"%4\",\"width\":\"%5\",\"height\":\"%6\"}}}")
        .arg(QLatin1String(opacity))
        .arg(layer)
        .arg(QLatin1String(left), QLatin1String(top), QLatin1String(width), QLatin1String(height))
        .toUtf8();
}

} // namespace

class TestScriptGenerator : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;

    QString path(const char *name) const { return m_dir->filePath(QLatin1String(name)); }

    void generate(const QString &relatePath)
    {
        PluginSettingsInfo info;
        info.setWorkSpace(m_dir->path());
        info.setIdentifier(QStringLiteral("img"));
        info.generateJSConfig(relatePath);
    }

    QByteArray config() const { return readFile(path("config.js")); }

    QString book() const
    {
        const QByteArray bytes = readFile(path("bookPlugin.js"));
        return unscrambleScriptString(QString::fromUtf8(bytes)).value_or(QStringLiteral("?"));
    }

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }

    void configExampleByteForByte()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        generate(QString());
        QCOMPARE(config(), kBom + "var config={\"opacity\":0.750000,\"layout\":2,\"properties\":{"
                                  "\"basic\":{\"left\":\"10.0%\",\"top\":\"20.0%\",\"width\":"
                                  "\"60.0%\",\"height\":\"65.0%\"}}};");
        QVERIFY(!QFileInfo::exists(path("bookPlugin.js")));
        // The description on disk is not rewritten.
        QCOMPARE(readFile(path("img.xml")), kFrameXml);
    }

    void bookExampleIsScrambledWithoutMark()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        generate(QStringLiteral("files/plugin"));
        const QByteArray bytes = readFile(path("bookPlugin.js"));
        QVERIFY(!bytes.startsWith(kBom));
        QVERIFY(!bytes.endsWith('\n'));
        QVERIFY(QRegularExpression(QStringLiteral("^[A-Za-v]+[0-9a-fA-F]{8}_$"))
                    .match(QString::fromLatin1(bytes))
                    .hasMatch());
        QCOMPARE(book(), QStringLiteral("var bookPlugin={\"opacity\":0.750000,\"layout\":2,"
                                        "\"properties\":{\"basic\":{\"left\":\"10.0%\",\"top\":"
                                        "\"20.0%\",\"width\":\"60.0%\",\"height\":\"65.0%\"}}};"));
        QVERIFY(!QFileInfo::exists(path("config.js")));
    }

    void positionVariants_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("five lines give the built-in position")
            << QByteArray("10.0\n20.0\n30.0\n15.0\n25.0")
            << frameJson("1.000000", 1, "10.0%", "26.0%", "30.0%", "48.0%");
        QTest::newRow("empty file gives the built-in position")
            << QByteArray() << frameJson("1.000000", 1, "10.0%", "26.0%", "30.0%", "48.0%");
        QTest::newRow("transparency 150 is limited to full")
            << QByteArray("0\n0\n0\n0\n150\n0")
            << frameJson("0.000000", 0, "0.0%", "0.0%", "100.0%", "100.0%");
        QTest::newRow("transparency -20 passes through")
            << QByteArray("0\n0\n0\n0\n-20\n3")
            << frameJson("1.200000", 3, "0.0%", "0.0%", "100.0%", "100.0%");
        QTest::newRow("CR LF reads as LF")
            << QByteArray("10.0\r\n20.0\r\n30.0\r\n15.0\r\n25.0\r\n2")
            << frameJson("0.750000", 2, "10.0%", "20.0%", "60.0%", "65.0%");
        QTest::newRow("lines after the sixth ignored")
            << QByteArray("10.0\n20.0\n30.0\n15.0\n25.0\n2\n99\nx")
            << frameJson("0.750000", 2, "10.0%", "20.0%", "60.0%", "65.0%");
        QTest::newRow("text that is no number reads as zero")
            << QByteArray("abc\n20.0\n30.0\n15.0\n25.0\n2")
            << frameJson("0.750000", 2, "0.0%", "20.0%", "70.0%", "65.0%");
        QTest::newRow("margins past 100 give negative sizes")
            << QByteArray("60\n70\n60\n70\n0\n1")
            << frameJson("1.000000", 1, "60.0%", "70.0%", "-20.0%", "-40.0%");
        QTest::newRow("one decimal rounding")
            << QByteArray("12.34\n0\n0\n0\n0\n1")
            << frameJson("1.000000", 1, "12.3%", "0.0%", "87.7%", "100.0%");
    }
    void positionVariants()
    {
        QFETCH(QByteArray, settings);
        QFETCH(QByteArray, json);
        QVERIFY(writeFile(path("settings.dat"), settings));
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        generate(QString());
        QCOMPARE(config(), kBom + "var config=" + json + ';');
    }

    void defaultPositionFileWhenNoSettings()
    {
        QVERIFY(writeFile(path("defaultsettings.dat"), "5\n5\n5\n5\n50\n4"));
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        generate(QString());
        QCOMPARE(config(), kBom + "var config=" +
                               frameJson("0.500000", 4, "5.0%", "5.0%", "90.0%", "90.0%") + ';');
    }

    void settingsWinOverDefaults()
    {
        QVERIFY(writeFile(path("defaultsettings.dat"), "5\n5\n5\n5\n50\n4"));
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        generate(QString());
        QCOMPARE(config(), kBom + "var config=" +
                               frameJson("0.750000", 2, "10.0%", "20.0%", "60.0%", "65.0%") + ';');
    }

    void onlyLastBasicAndEveryProperties()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(
            writeFile(path("img.xml"),
                      "<info><properties><basic><left type=\"text\">a</left></basic>"
                      "<basic><left type=\"text\">b</left><other type=\"text\">o</other>"
                      "</basic></properties><properties><basic><top type=\"text\">c</top>"
                      "</basic></properties><extra><left type=\"text\">x</left></extra></info>"));
        generate(QString());
        QCOMPARE(config(),
                 kBom +
                     "var config={\"properties\":{\"basic\":{\"left\":\"a\"},\"basic\":{\"left\":"
                     "\"10.0%\",\"other\":\"o\"}},\"properties\":{\"basic\":{\"top\":\"20.0%\"}},"
                     "\"extra\":{\"left\":\"x\"}};");
    }

    void nullAndEmptyArgumentBothWriteConfig_data()
    {
        QTest::addColumn<QString>("relatePath");
        QTest::newRow("null") << QString();
        QTest::newRow("empty") << QStringLiteral("");
    }
    void nullAndEmptyArgumentBothWriteConfig()
    {
        QFETCH(QString, relatePath);
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        generate(relatePath);
        QCOMPARE(config(), kBom + "var config=" +
                               frameJson("0.750000", 2, "10.0%", "20.0%", "60.0%", "65.0%") + ';');
        QVERIFY(!QFileInfo::exists(path("bookPlugin.js")));
    }

    void fileValuesPointIntoTheBookFolder()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(writeFile(path("photo 1.png"), "png"));
        QVERIFY(writeFile(path("img.xml"), "<info><properties><extended><src type=\"file\">"
                                           "photo 1.png</src></extended></properties></info>"));
        generate(QString());
        QCOMPARE(config(), kBom + "var config={\"properties\":{\"extended\":{\"src\":"
                                  "\"photo 1.png\"}}};");
        generate(QStringLiteral("files/plugin"));
        QCOMPARE(book(), QStringLiteral("var bookPlugin={\"properties\":{\"extended\":{\"src\":"
                                        "\"files/plugin/photo 1.png\"}}};"));
    }

    void nonAsciiSettingsSurviveTheBook()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(
            writeFile(path("img.xml"), "<info><t type=\"text\">Grüße, 日本 \U0001F600</t></info>"));
        generate(QString());
        QCOMPARE(config(), kBom + "var config={\"t\":\"Grüße, 日本 \U0001F600\"};");
        generate(QStringLiteral("files/plugin"));
        QCOMPARE(book(), QStringLiteral("var bookPlugin={\"t\":\"Grüße, 日本 \U0001F600\"};"));
    }

    void emptyNumberPassesThrough()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(writeFile(path("img.xml"), "<info><n type=\"number\"></n></info>"));
        generate(QString());
        QCOMPARE(config(), kBom + "var config={\"n\":};");
    }

    void descriptionWithoutInfoIsKeyed()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(writeFile(path("img.xml"),
                          "<settings><opacity type=\"number\">1</opacity></settings>"));
        generate(QString());
        QCOMPARE(config(), kBom + "var config=\"settings\":{\"opacity\":0.750000};");
    }

    void nothingWritten_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QByteArray>("settings");
        QTest::newRow("no description") << QByteArray() << QByteArray("1\n2\n3\n4\n5\n6");
        QTest::newRow("malformed description")
            << QByteArray("<info><a></info>") << QByteArray("1\n2\n3\n4\n5\n6");
        QTest::newRow("binary description")
            << QByteArray("\x00\xff\x01\x02", 4) << QByteArray("1\n2\n3\n4\n5\n6");
        QTest::newRow("no position file") << kFrameXml << QByteArray();
        QTest::newRow("description nested one level past the limit")
            << "<info>" + QByteArray("<d>").repeated(MaxDescriptionDepth) +
                   QByteArray("</d>").repeated(MaxDescriptionDepth) + "</info>"
            << QByteArray("1\n2\n3\n4\n5\n6");
    }
    void nothingWritten()
    {
        QFETCH(QByteArray, xml);
        QFETCH(QByteArray, settings);
        if (!xml.isEmpty())
            QVERIFY(writeFile(path("img.xml"), xml));
        if (!settings.isEmpty())
            QVERIFY(writeFile(path("settings.dat"), settings));
        generate(QString());
        generate(QStringLiteral("files/plugin"));
        QVERIFY(!QFileInfo::exists(path("config.js")));
        QVERIFY(!QFileInfo::exists(path("bookPlugin.js")));
    }

    void descriptionAtTheDepthLimitIsWritten()
    {
        QVERIFY(writeFile(path("settings.dat"), "1\n2\n3\n4\n5\n6"));
        QVERIFY(writeFile(path("img.xml"),
                          "<info>" + QByteArray("<d>").repeated(MaxDescriptionDepth - 1) +
                              QByteArray("</d>").repeated(MaxDescriptionDepth - 1) + "</info>"));
        generate(QString());
        const int inner = MaxDescriptionDepth - 1;
        QCOMPARE(config(), kBom + "var config={" + QByteArray("\"d\":{").repeated(inner) +
                               QByteArray("}").repeated(inner) + "};");
    }

    // A position file that is no regular file is as good as missing: the next one is used, and
    // with none left nothing is written. A FIFO is never waited on.
    void specialPositionFiles_data()
    {
        using namespace SpecialEntries;
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<bool>("withDefaults");
        QTest::newRow("a FIFO settings.dat gives way to the defaults") << Fifo << true;
        QTest::newRow("a linked settings.dat gives way to the defaults") << LinkToFile << true;
        QTest::newRow("a folder settings.dat gives way to the defaults") << Folder << true;
        QTest::newRow("a FIFO settings.dat and no defaults: nothing written") << Fifo << false;
    }

    void specialDefaultsAloneWriteNothing_data()
    {
        using namespace SpecialEntries;
        QTest::addColumn<Kind>("kind");
        QTest::newRow("a FIFO defaultsettings.dat") << Fifo;
        QTest::newRow("a linked defaultsettings.dat") << LinkToFile;
    }

    void specialDefaultsAloneWriteNothing()
    {
        QFETCH(SpecialEntries::Kind, kind);
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        QVERIFY(SpecialEntries::make(kind, path("defaultsettings.dat"), m_dir->filePath("outside"),
                                     "5\n5\n5\n5\n50\n4"));
        generate(QString());
        QVERIFY(!QFileInfo::exists(path("config.js")));
    }

    void specialPositionFiles()
    {
        QFETCH(SpecialEntries::Kind, kind);
        QFETCH(bool, withDefaults);
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        QVERIFY(SpecialEntries::make(kind, path("settings.dat"), m_dir->filePath("outside"),
                                     "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        if (withDefaults)
            QVERIFY(writeFile(path("defaultsettings.dat"), "5\n5\n5\n5\n50\n4"));
        generate(QString());
        if (!withDefaults) {
            QVERIFY(!QFileInfo::exists(path("config.js")));
            return;
        }
        QCOMPARE(config(), kBom + "var config=" +
                               frameJson("0.500000", 4, "5.0%", "5.0%", "90.0%", "90.0%") + ';');
    }

    void specialDescriptionWritesNothing_data()
    {
        using namespace SpecialEntries;
        QTest::addColumn<Kind>("kind");
        QTest::newRow("a FIFO img.xml") << Fifo;
        QTest::newRow("a link to a description outside") << LinkToFile;
    }

    void specialDescriptionWritesNothing()
    {
        QFETCH(SpecialEntries::Kind, kind);
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(SpecialEntries::make(kind, path("img.xml"), m_dir->filePath("outside"), kFrameXml));
        generate(QString());
        generate(QStringLiteral("files/plugin"));
        QVERIFY(!QFileInfo::exists(path("config.js")));
        QVERIFY(!QFileInfo::exists(path("bookPlugin.js")));
    }

    void vanishedWorkspaceWritesNothing()
    {
        PluginSettingsInfo info;
        info.setWorkSpace(m_dir->filePath(QStringLiteral("gone")));
        info.generateJSConfig(QString());
        info.generateJSConfig(QStringLiteral("files/plugin"));
        QVERIFY(!QFileInfo::exists(m_dir->filePath(QStringLiteral("gone"))));
    }

    // A folder where a script should go makes the write fail; generation stays quiet.
    void unwritableTargetsAreQuiet()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("config.js")));
        QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("bookPlugin.js")));
        generate(QString());
        generate(QStringLiteral("files/plugin"));
        QVERIFY(QFileInfo(path("config.js")).isDir());
        QVERIFY(QFileInfo(path("bookPlugin.js")).isDir());
    }

    void hugeDescriptionGivesBothScripts()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QByteArray xml("<info><properties><extended><rows>");
        for (int k = 0; k < 50000; ++k)
            xml += "<item><t type=\"text\">r\u00e9 " + QByteArray::number(k) + "</t></item>";
        xml += "</rows></extended></properties></info>";
        QVERIFY(writeFile(path("img.xml"), xml));
        generate(QString());
        generate(QStringLiteral("files/plugin"));
        const QByteArray script = config().mid(kBom.size());
        QVERIFY(script.startsWith("var config={\"properties\":{\"extended\":{\"rows\":[{\"t\":"));
        QVERIFY(script.endsWith("{\"t\":\"r\u00e9 49999\"}]}}};"));
        QCOMPARE(book(), QStringLiteral("var bookPlugin=") +
                             QString::fromUtf8(script.mid(int(qstrlen("var config=")))));
    }

    void existingScriptsAreReplaced()
    {
        QVERIFY(writeFile(path("settings.dat"), "10.0\n20.0\n30.0\n15.0\n25.0\n2"));
        QVERIFY(writeFile(path("img.xml"), kFrameXml));
        QVERIFY(writeFile(path("config.js"), "a much longer old text that must go away entirely"));
        generate(QString());
        QCOMPARE(config(), kBom + "var config=" +
                               frameJson("0.750000", 2, "10.0%", "20.0%", "60.0%", "65.0%") + ';');
    }
};

QTEST_GUILESS_MAIN(TestScriptGenerator)
#include "tst_scriptgenerator.moc"
