// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "descriptiontemplate.h"
#include "pluginsettingsinfo.h"
#include "scriptgenerator.h"
#include "testenv.h"
#include "utilityfunction.h"
#include "xmlhelpers.h"
#include "xmljson.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <iterator>

namespace {

const char *const kWorkedExample = "<info>\n"
                                   "  <opacity type=\"number\">1</opacity>\n"
                                   "  <layout type=\"number\">1</layout>\n"
                                   "  <properties>\n"
                                   "    <basic>\n"
                                   "      <left type=\"text\">10.0%</left>\n"
                                   "      <top type=\"text\">26.0%</top>\n"
                                   "    </basic>\n"
                                   "    <extended>\n"
                                   "      <image type=\"file\">photo.png</image>\n"
                                   "      <link type=\"text\">Say &quot;hi&quot; &amp; bye</link>\n"
                                   "      <show type=\"bool\">1</show>\n"
                                   "      <tint type=\"color\">0xFF0000</tint>\n"
                                   "      <pages>\n"
                                   "        <item><page type=\"number\">3</page></item>\n"
                                   "        <item><page type=\"number\">5</page></item>\n"
                                   "      </pages>\n"
                                   "    </extended>\n"
                                   "  </properties>\n"
                                   "</info>\n";

QString workedJson(const QString &image)
{
    return QStringLiteral(
               "{\"opacity\":1,\"layout\":1,\"properties\":{\"basic\":{\"left\":\"10.0%\","
               "\"top\":\"26.0%\"},\"extended\":{\"image\":\"%1\",\"link\":\"Say "
               "\\\"hi\\\" & bye\",\"show\":true,\"tint\":\"#FF0000\",\"pages\":[{"
               "\"page\":3},{\"page\":5}]}}}")
        .arg(image);
}

// The escaping as a chain of whole-text replacements, each on the result of the one before:
// the reference the one-pass escaper must agree with.
QString escapeByReplacements(QString text, char quote)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("<br/>"));
    text.replace(QLatin1String("\r"), QLatin1String("<br/>"));
    text.replace(QLatin1String("\n"), QLatin1String("<br/>"));
    text.replace(QLatin1String("\\u"), QLatin1String("${Unicode}"));
    text.replace(QLatin1String("\\U"), QLatin1String("${Unicode}"));
    text.replace(QLatin1String("\\"), QLatin1String("\\\\"));
    if (quote == '\'')
        text.replace(QLatin1String("'"), QLatin1String("\\'"));
    else if (quote == '"')
        text.replace(QLatin1String("\""), QLatin1String("\\\""));
    text.replace(QLatin1String("${Unicode}"), QLatin1String("\\u"));
    text.replace(QLatin1String("&lt;"), QLatin1String("<"));
    text.replace(QLatin1String("&gt;"), QLatin1String(">"));
    text.replace(QLatin1String("&amp;"), QLatin1String("&"));
    return text;
}

// A random description made of the shapes the conversion tells apart.
// levels elements, each inside the one before: containers around one number value.
QByteArray nested(int levels)
{
    return QByteArray("<d>").repeated(levels - 1) + "<v type=\"number\">7</v>" +
           QByteArray("</d>").repeated(levels - 1);
}

void randomElement(QByteArray &xml, QRandomGenerator &random, int depth)
{
    static const char *const names[] = {"info", "item", "a", "b", "pages", "x:item", "x:c"};
    static const char *const types[] = {"", "text", "number", "bool", "color", "file", "Text"};
    static const char *const texts[] = {" ",
                                        "x",
                                        "\n",
                                        " a b ",
                                        "&amp;",
                                        "&lt;",
                                        "&#32;",
                                        "<![CDATA[ ]]>",
                                        "<![CDATA[c]]>",
                                        "<!-- n -->",
                                        "0x1f",
                                        "\\u00e9",
                                        "1",
                                        "é",
                                        "&#160;",
                                        "\r\n",
                                        "a\\b",
                                        "<?p q?>"};
    const QByteArray name = names[random.bounded(int(std::size(names)))];
    const char *type = types[random.bounded(int(std::size(types)))];
    xml += '<' + name;
    if (*type)
        xml += QByteArray(" type=\"") + type + '"';
    xml += '>';
    const int parts = random.bounded(depth > 3 ? 3 : 5);
    for (int k = 0; k < parts; ++k) {
        if (depth < 5 && random.bounded(3) > 0)
            randomElement(xml, random, depth + 1);
        else
            xml += texts[random.bounded(int(std::size(texts)))];
    }
    xml += "</" + name + '>';
}

// A random description shaped like the real ones, so that the members a position writes turn up
// at their depths, beside look-alikes at other depths and with other prefixes.
void randomDescription(QByteArray &xml, QRandomGenerator &random, int depth, QByteArray parent)
{
    static const char *const anywhere[] = {"item", "a", "x:left", "basic", "info"};
    static const char *const underRoot[] = {"opacity", "layout", "properties", "properties"};
    static const char *const underProperties[] = {"basic", "basic", "extended"};
    static const char *const underBasic[] = {"left", "top", "width", "height"};
    static const char *const types[] = {"", "", "text", "number", "bool", "color", "file", "Text"};
    static const char *const texts[] = {"1",      " ",          "x&amp;y", "<![CDATA[c]]>", "é",
                                        "&#160;", "<!-- n -->", "\\u00e9", "0x1f",          "\r\n"};
    QByteArray name;
    const bool special = random.bounded(4) > 0;
    if (depth == 0)
        name = random.bounded(2) ? "info" : "root";
    else if (special && depth == 1)
        name = underRoot[random.bounded(int(std::size(underRoot)))];
    else if (special && depth == 2 && parent == "properties")
        name = underProperties[random.bounded(int(std::size(underProperties)))];
    else if (special && depth == 3 && parent == "basic")
        name = underBasic[random.bounded(int(std::size(underBasic)))];
    else
        name = anywhere[random.bounded(int(std::size(anywhere)))];
    const char *type = types[random.bounded(int(std::size(types)))];
    xml += '<' + name;
    if (*type)
        xml += QByteArray(" type=\"") + type + '"';
    xml += '>';
    const int parts = random.bounded(depth > 3 ? 2 : 5);
    for (int k = 0; k < parts; ++k) {
        if (depth < 5 && random.bounded(4) > 0)
            randomDescription(xml, random, depth + 1, name);
        else
            xml += texts[random.bounded(int(std::size(texts)))];
    }
    xml += "</" + name + '>';
}

PositionRect randomPosition(QRandomGenerator &random)
{
    PositionRect position;
    position.setLeft(float(random.bounded(2000) - 100) / 10.0f);
    position.setTop(float(random.bounded(1000)) / 10.0f);
    position.setRight(float(random.bounded(1000)) / 10.0f);
    position.setBottom(float(random.bounded(1000)) / 10.0f);
    position.setTransparency(float(random.bounded(3000) - 500) / 10.0f);
    position.setLayer(random.bounded(5));
    return position;
}

// "config.js" as a save wrote it before the description was kept between saves: the file read
// and parsed, the position written into the tree, the tree converted.
QByteArray freshConfigScript(const QString &workSpace, const QByteArray &xml,
                             const PositionRect &position)
{
    QFile file(workSpace + QStringLiteral("/img.xml"));
    if (!file.open(QIODevice::WriteOnly) || file.write(xml) != xml.size())
        return "<not written>";
    file.close();
    PluginSettingsInfo info;
    info.setWorkSpace(workSpace);
    QDomElement root = info.getXMLFromWorkspace();
    if (root.isNull())
        return QByteArray();
    ScriptGenerator::applyPosition(root, position);
    return UtilityFunction::header() +
           ScriptGenerator::configScript(info.jsonFromXml(root, QString())).toUtf8();
}

} // namespace

class TestXmlJson : public QObject
{
    Q_OBJECT

private:
    QString json(const QByteArray &xml, const QString &relatePath = QString())
    {
        const QDomDocument doc = parseDescriptionXml(xml);
        PluginSettingsInfo info;
        info.setWorkSpace(m_workspace.path());
        return info.jsonFromXml(doc.documentElement(), relatePath);
    }

    QTemporaryDir m_workspace;

private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY(m_workspace.isValid());
    }

    void cleanup() { QFile::remove(m_workspace.filePath(QStringLiteral("photo.png"))); }

    void propertyTypeCodes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("code");
        QTest::newRow("text is 0") << "text" << 0;
        QTest::newRow("number is 1") << "number" << 1;
        QTest::newRow("color is 2") << "color" << 2;
        QTest::newRow("bool is 3") << "bool" << 3;
        QTest::newRow("border is 4") << "border" << 4;
        QTest::newRow("file is 5") << "file" << 5;
        QTest::newRow("capital Text is unknown") << "Text" << 6;
        QTest::newRow("NUMBER is unknown") << "NUMBER" << 6;
        QTest::newRow("padded name is unknown") << " text" << 6;
        QTest::newRow("empty is unknown") << "" << 6;
        QTest::newRow("null is unknown") << QString() << 6;
        QTest::newRow("other word is unknown") << "image" << 6;
    }
    void propertyTypeCodes()
    {
        QFETCH(QString, name);
        QFETCH(int, code);
        QCOMPARE(propertyTypeFromString(name), code);
    }

    void escapesForScript_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("quote");
        QTest::addColumn<QString>("expected");
        const int dq = '"';
        const int sq = '\'';
        QTest::newRow("plain text unchanged") << "hello" << dq << "hello";
        QTest::newRow("CR LF is one break") << "a\r\nb" << dq << "a<br/>b";
        QTest::newRow("lone CR is a break") << "a\rb" << dq << "a<br/>b";
        QTest::newRow("LF is a break") << "a\nb" << dq << "a<br/>b";
        QTest::newRow("LF CR is two breaks") << "a\n\rb" << dq << "a<br/><br/>b";
        QTest::newRow("single quote kept in double-quote mode") << "it's" << dq << "it's";
        QTest::newRow("double quote escaped in double-quote mode") << "a\"b" << dq << "a\\\"b";
        QTest::newRow("single quote escaped in single-quote mode") << "it's" << sq << "it\\'s";
        QTest::newRow("double quote kept in single-quote mode") << "a\"b" << sq << "a\"b";
        QTest::newRow("other quote character escapes nothing") << "'\"" << int('x') << "'\"";
        QTest::newRow("one backslash becomes two") << "a\\b" << dq << "a\\\\b";
        QTest::newRow("unicode escape survives") << "\\u00e9" << dq << "\\u00e9";
        QTest::newRow("capital unicode escape comes back lower") << "\\U00E9" << dq << "\\u00E9";
        QTest::newRow("escaped backslash before u") << "\\\\u" << dq << "\\\\\\u";
        QTest::newRow("literal marker reads as escape") << "${Unicode}" << dq << "\\u";
        QTest::newRow("entities decoded") << "&lt;b&gt; &amp; c" << dq << "<b> & c";
        QTest::newRow("amp decoded last") << "&amp;lt;" << dq << "&lt;";
        QTest::newRow("lone ampersand kept") << "a & b &x" << dq << "a & b &x";
        QTest::newRow("empty stays empty") << "" << dq << "";
        QTest::newRow("non-ASCII unchanged")
            << QStringLiteral("Grüße 日本") << dq << QStringLiteral("Grüße 日本");
    }
    void escapesForScript()
    {
        QFETCH(QString, text);
        QFETCH(int, quote);
        QFETCH(QString, expected);
        QCOMPARE(replaceStringForJS(text, char(quote)), expected);
        QCOMPARE(escapeByReplacements(text, char(quote)), expected);
    }

    // The one-pass escaper against the chain of replacements on texts made of the characters
    // that matter to it.
    void escapingMatchesReplacementChain()
    {
        const QStringList pieces = {
            "\r", "\n", "\\",   "u",    "U",     "'",   "\"",   "${Unicode}", "$",
            "{",  "&",  "&lt;", "&gt;", "&amp;", "lt;", "amp;", "a",          "é",
        };
        QRandomGenerator random(20261121);
        for (int round = 0; round < 20000; ++round) {
            QString text;
            const int length = random.bounded(12);
            for (int k = 0; k < length; ++k)
                text += pieces.at(random.bounded(int(pieces.size())));
            for (const char quote : {'"', '\'', 'x'}) {
                const QString expected = escapeByReplacements(text, quote);
                if (replaceStringForJS(text, quote) != expected)
                    QFAIL(qPrintable(QStringLiteral("differs for [%1]").arg(text)));
            }
        }
    }

    void workedExample_data()
    {
        QTest::addColumn<bool>("filePresent");
        QTest::addColumn<QString>("relatePath");
        QTest::addColumn<QString>("image");
        QTest::newRow("preview with the file") << true << ""
                                               << "photo.png";
        QTest::newRow("book with the file") << true << "files/plugin"
                                            << "files/plugin/photo.png";
        QTest::newRow("preview without the file") << false << ""
                                                  << "photo.png";
        QTest::newRow("book without the file") << false << "files/plugin"
                                               << "photo.png";
    }
    void workedExample()
    {
        QFETCH(bool, filePresent);
        QFETCH(QString, relatePath);
        QFETCH(QString, image);
        if (filePresent) {
            QFile file(m_workspace.filePath(QStringLiteral("photo.png")));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QCOMPARE(json(kWorkedExample, relatePath), workedJson(image));
    }

    void elementShapes_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("expected");
        QTest::newRow("item with a type is still an anonymous object")
            << QByteArray("<item type=\"text\"><a type=\"number\">1</a></item>") << "{\"a\":1}";
        QTest::newRow("list with a non-item child writes it as a keyed member")
            << QByteArray("<pages><item><p type=\"number\">1</p></item>"
                          "<note type=\"text\">n</note><extra/></pages>")
            << "\"pages\":[{\"p\":1},\"note\":\"n\",\"extra\":{}]";
        QTest::newRow("capital Text is a keyed object without members")
            << QByteArray("<info><a type=\"Text\">dropped</a></info>") << "{\"a\":{}}";
        QTest::newRow("unknown type is a keyed object of its children")
            << QByteArray("<info><a type=\"image\"><b type=\"number\">2</b></a></info>")
            << "{\"a\":{\"b\":2}}";
        QTest::newRow("empty info gives empty braces") << QByteArray("<info/>") << "{}";
        QTest::newRow("empty keyed object keeps its key")
            << QByteArray("<info><box/></info>") << "{\"box\":{}}";
        QTest::newRow("container text is never written")
            << QByteArray("<info>stray<a type=\"number\">1</a>text</info>") << "{\"a\":1}";
        QTest::newRow("comments are not members")
            << QByteArray("<info><!-- c --><a type=\"number\">1</a></info>") << "{\"a\":1}";
        QTest::newRow("keys are never escaped")
            << QByteArray("<info><k.\u00e9 type=\"number\">1</k.\u00e9></info>")
            << QStringLiteral("{\"k.\u00e9\":1}");
        QTest::newRow("prefixed names are kept as written")
            << QByteArray("<info xmlns:x=\"urn:x\"><x:a type=\"number\">1</x:a><u:b/></info>")
            << "{\"x:a\":1,\"u:b\":{}}";
        QTest::newRow("description without info is a keyed object")
            << QByteArray("<settings><opacity type=\"number\">1</opacity></settings>")
            << "\"settings\":{\"opacity\":1}";
        QTest::newRow("element text concatenates CDATA")
            << QByteArray("<info><t type=\"text\">a<![CDATA[<b>]]>c</t></info>")
            << "{\"t\":\"a<b>c\"}";
        QTest::newRow("nested value text is the text of descendants")
            << QByteArray("<info><t type=\"text\">a<x>b</x></t></info>") << "{\"t\":\"ab\"}";
    }
    void elementShapes()
    {
        QFETCH(QByteArray, xml);
        QFETCH(QString, expected);
        QCOMPARE(json(xml), expected);
        QCOMPARE(XmlJson::jsonFromXmlText(xml, QString(), m_workspace.path()), expected);
    }

    void typedValues_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("bool TRUE gives true") << "bool"
                                              << "TRUE"
                                              << "true";
        QTest::newRow("bool False gives false") << "bool"
                                                << "False"
                                                << "false";
        QTest::newRow("bool 0 gives false") << "bool"
                                            << "0"
                                            << "false";
        QTest::newRow("bool 2 gives true") << "bool"
                                           << "2"
                                           << "true";
        QTest::newRow("bool empty gives false") << "bool"
                                                << ""
                                                << "false";
        QTest::newRow("bool blank and sign before digits") << "bool"
                                                           << "  -3x"
                                                           << "true";
        QTest::newRow("bool 0.5 reads the integer 0") << "bool"
                                                      << "0.5"
                                                      << "false";
        QTest::newRow("bool word gives false") << "bool"
                                               << "yes"
                                               << "false";
        QTest::newRow("bool many digits gives true") << "bool"
                                                     << "99999999999999999999"
                                                     << "true";
        QTest::newRow("color 0x lower") << "color"
                                        << "0x00ff00"
                                        << "\"#00ff00\"";
        QTest::newRow("color 0X upper") << "color"
                                        << "0X00FF00"
                                        << "\"#00FF00\"";
        QTest::newRow("color without prefix stays") << "color"
                                                    << "ff0000"
                                                    << "\"ff0000\"";
        QTest::newRow("border like color") << "border"
                                           << "0x123456"
                                           << "\"#123456\"";
        QTest::newRow("number as stored") << "number"
                                          << "1.50"
                                          << "1.50";
        QTest::newRow("malformed number passes through") << "number"
                                                         << "12abc"
                                                         << "12abc";
        QTest::newRow("empty number leaves nothing after the colon") << "number"
                                                                     << ""
                                                                     << "";
        QTest::newRow("text escaped") << "text"
                                      << "a\\b\nc"
                                      << "\"a\\\\b<br/>c\"";
        QTest::newRow("file missing stays") << "file"
                                            << "nothere.png"
                                            << "\"nothere.png\"";
        QTest::newRow("file link stays") << "file"
                                         << "http://x/y.png"
                                         << "\"http://x/y.png\"";
    }
    void typedValues()
    {
        QFETCH(QString, type);
        QFETCH(QString, value);
        QFETCH(QString, expected);
        QDomDocument doc;
        QDomElement info = doc.createElement(QStringLiteral("info"));
        info.appendChild(generateXmlWithType(doc, QStringLiteral("v"), value, type));
        PluginSettingsInfo settings;
        settings.setWorkSpace(m_workspace.path());
        const QString member = QStringLiteral("{\"v\":%1}").arg(expected);
        QCOMPARE(settings.jsonFromXml(info, QString()), member);
        QCOMPARE(settings.jsonFromXml(info, QStringLiteral("files/plugin")), member);
    }

    void fileValues_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("relatePath");
        QTest::addColumn<QString>("expected");
        QTest::newRow("workspace file under the book folder") << "photo.png"
                                                              << "files/plugin"
                                                              << "files/plugin/photo.png";
        QTest::newRow("trailing slash of the folder is not doubled") << "photo.png"
                                                                     << "files/plugin/"
                                                                     << "files/plugin/photo.png";
        QTest::newRow("empty folder leaves the value") << "photo.png"
                                                       << ""
                                                       << "photo.png";
        QTest::newRow("absolute path of an existing file joined as a component")
            << "@abs"
            << "files/plugin"
            << "files/plugin@abs";
        QTest::newRow("empty value names the workspace, so the plugin folder itself")
            << ""
            << "files/plugin"
            << "files/plugin";
        QTest::newRow("empty value in the preview stays empty") << ""
                                                                << ""
                                                                << "";
        QTest::newRow("name with blanks and accents")
            << QStringLiteral("my phöto 1.png") << "files/plugin"
            << QStringLiteral("files/plugin/my phöto 1.png");
        QTest::newRow("hidden file name") << ".photo.png"
                                          << "files/plugin"
                                          << "files/plugin/.photo.png";
    }
    void fileValues()
    {
        QFETCH(QString, value);
        QFETCH(QString, relatePath);
        QFETCH(QString, expected);
        const QString absolute = m_workspace.filePath(QStringLiteral("photo.png"));
        if (value == QLatin1String("@abs")) {
            value = absolute;
            expected.replace(QLatin1String("@abs"), absolute);
        }
        if (!value.isEmpty()) {
            QFile file(value.startsWith(u'/') ? value : m_workspace.filePath(value));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QDomDocument doc;
        QDomElement info = doc.createElement(QStringLiteral("info"));
        info.appendChild(
            generateXmlWithType(doc, QStringLiteral("src"), value, QStringLiteral("file")));
        PluginSettingsInfo settings;
        settings.setWorkSpace(m_workspace.path());
        QCOMPARE(settings.jsonFromXml(info, relatePath),
                 QStringLiteral("{\"src\":\"%1\"}").arg(expected));
        if (!value.isEmpty() && !value.startsWith(u'/'))
            QFile::remove(m_workspace.filePath(value));
    }

    // A file value is a JSON string: a quote, a backslash, a control character and the two line
    // separators are escaped, nothing else; by both readings of the description, in the preview's
    // form and in the book's.
    void fileNamesAreValidScript_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("escaped");
        QTest::newRow("a quote") << QStringLiteral("my \"best\" photo.png")
                                 << QStringLiteral("my \\\"best\\\" photo.png");
        QTest::newRow("a backslash") << QStringLiteral("a\\b.png") << QStringLiteral("a\\\\b.png");
        QTest::newRow("a tab") << QStringLiteral("a\tb.png") << QStringLiteral("a\\u0009b.png");
        QTest::newRow("a line separator")
            << QStringLiteral("a\u2028b.png") << QStringLiteral("a\\u2028b.png");
        QTest::newRow("a paragraph separator")
            << QStringLiteral("a\u2029b.png") << QStringLiteral("a\\u2029b.png");
        QTest::newRow("code in a name stays a string")
            << QStringLiteral("x\"};alert(1);\".png") << QStringLiteral("x\\\"};alert(1);\\\".png");
        QTest::newRow("anything else is as it was")
            << QStringLiteral("'<é> 画像 &.png") << QStringLiteral("'<é> 画像 &.png");
    }
    void fileNamesAreValidScript()
    {
        QFETCH(QString, name);
        QFETCH(QString, escaped);
        QFile file(m_workspace.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QDomDocument doc;
        QDomElement info = doc.createElement(QStringLiteral("info"));
        info.appendChild(
            generateXmlWithType(doc, QStringLiteral("src"), name, QStringLiteral("file")));
        QString xml;
        QTextStream stream(&xml);
        info.save(stream, -1);
        for (const QString &relatePath : {QString(), QStringLiteral("files/plugin")}) {
            const QString expected =
                QStringLiteral("{\"src\":\"%1%2\"}")
                    .arg(relatePath.isEmpty() ? QString() : relatePath + QLatin1Char('/'), escaped);
            PluginSettingsInfo settings;
            settings.setWorkSpace(m_workspace.path());
            QCOMPARE(settings.jsonFromXml(info, relatePath), expected);
            QCOMPARE(XmlJson::jsonFromXmlText(xml.toUtf8(), relatePath, m_workspace.path()),
                     expected);
        }
        QFile::remove(m_workspace.filePath(name));
    }

    void malformedXmlGivesNoJson_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("unclosed element") << QByteArray("<info><a type=\"number\">1</info>");
        QTest::newRow("empty text") << QByteArray();
        QTest::newRow("plain text") << QByteArray("not xml at all");
        QTest::newRow("binary bytes") << QByteArray("\x00\xff\xfe<\x01", 5);
        QTest::newRow("two roots") << QByteArray("<info/><info/>");
    }
    void malformedXmlGivesNoJson()
    {
        QFETCH(QByteArray, xml);
        const QDomDocument doc = parseDescriptionXml(xml);
        QVERIFY(doc.documentElement().isNull());
        QCOMPARE(json(xml), QString());
    }

    void hugeListConverts()
    {
        QByteArray xml("<info><properties><extended><rows>");
        const int items = 50000;
        for (int k = 0; k < items; ++k)
            xml += "<item><name type=\"text\">row " + QByteArray::number(k) +
                   "</name><on type=\"bool\">1</on></item>";
        xml += "</rows></extended></properties></info>";
        const QString result = json(xml);
        QVERIFY(result.startsWith(QLatin1String(
            "{\"properties\":{\"extended\":{\"rows\":[{\"name\":\"row 0\",\"on\":true},")));
        QVERIFY(result.endsWith(QLatin1String("{\"name\":\"row 49999\",\"on\":true}]}}}")));
        QCOMPARE(result.count(QLatin1String("\"on\":true")), items);
    }

    // A tree built in memory has no depth limit; its conversion needs no recursion either.
    void deepTreeConvertsWithoutRecursion()
    {
        const int depth = 20000;
        QDomDocument doc;
        QDomElement parent = doc.appendChild(doc.createElement(QStringLiteral("d"))).toElement();
        for (int k = 1; k < depth; ++k)
            parent = parent.appendChild(doc.createElement(QStringLiteral("d"))).toElement();
        parent.appendChild(generateXmlWithType(doc, QStringLiteral("v"), QStringLiteral("7"),
                                               QStringLiteral("number")));
        PluginSettingsInfo info;
        const QString result = info.jsonFromXml(doc.documentElement(), QString());
        QCOMPARE(result.size(), qsizetype(depth) * 6 + 5);
        QVERIFY(result.startsWith(QLatin1String("\"d\":{\"d\":{")));
        QVERIFY(result.contains(QLatin1String("{\"v\":7}}")));
    }

    void depthLimit_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<bool>("converts");
        const QByteArray doctype("<!DOCTYPE d []>");
        QTest::newRow("at the limit converts") << nested(MaxDescriptionDepth) << true;
        QTest::newRow("one level deeper is damaged") << nested(MaxDescriptionDepth + 1) << false;
        QTest::newRow("200,000 levels are damaged") << nested(200000) << false;
        QTest::newRow("too deep after a doctype (read as a tree) is damaged")
            << doctype + nested(MaxDescriptionDepth + 1) << false;
        QTest::newRow("at the limit after a doctype converts")
            << doctype + nested(MaxDescriptionDepth) << true;
        QTest::newRow("too deep under a typed element (read as a tree) is damaged")
            << "<t type=\"text\">" + nested(MaxDescriptionDepth) + "</t>" << false;
    }

    // The one-pass reading and the parsed tree draw the line at the same depth.
    void depthLimit()
    {
        QFETCH(QByteArray, xml);
        QFETCH(bool, converts);
        const QString fromTree = json(xml);
        const QString fromText = XmlJson::jsonFromXmlText(xml, QString(), m_workspace.path());
        QCOMPARE(!fromText.isNull(), converts);
        QCOMPARE(!fromTree.isEmpty(), converts);
        if (converts)
            QCOMPARE(fromText, fromTree);
    }

    // The one-pass reading of a text and the conversion of its parsed tree give the same JSON.
    void textReadingMatchesTree()
    {
        QFile file(m_workspace.filePath(QStringLiteral("photo.png")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QRandomGenerator random(1121);
        PluginSettingsInfo info;
        info.setWorkSpace(m_workspace.path());
        for (int round = 0; round < 4000; ++round) {
            QByteArray xml;
            randomElement(xml, random, 0);
            for (const QString &relatePath : {QString(), QStringLiteral("files/plugin")}) {
                const QString fromTree =
                    info.jsonFromXml(parseDescriptionXml(xml).documentElement(), relatePath);
                const QString fromText =
                    XmlJson::jsonFromXmlText(xml, relatePath, m_workspace.path());
                if (fromTree != fromText)
                    QFAIL(qPrintable(QStringLiteral("%1\n tree %2\n text %3")
                                         .arg(QString::fromUtf8(xml), fromTree, fromText)));
            }
        }
    }

    void textReadingOfWorkedExample()
    {
        QCOMPARE(XmlJson::jsonFromXmlText(kWorkedExample, QString(), m_workspace.path()),
                 workedJson(QStringLiteral("photo.png")));
    }

    void textReadingOfMalformedXmlIsNull_data() { malformedXmlGivesNoJson_data(); }
    void textReadingOfMalformedXmlIsNull()
    {
        QFETCH(QByteArray, xml);
        QVERIFY(XmlJson::jsonFromXmlText(xml, QString(), m_workspace.path()).isNull());
    }

    void textReadingWithDoctypeUsesTheTree()
    {
        const QByteArray xml("<!DOCTYPE info [<!ENTITY who \"you\">]>"
                             "<info><t type=\"text\">hi &who;</t></info>");
        PluginSettingsInfo info;
        QCOMPARE(XmlJson::jsonFromXmlText(xml, QString(), QString()),
                 info.jsonFromXml(parseDescriptionXml(xml).documentElement(), QString()));
    }

    // The description read once and filled with each position gives the bytes that reading and
    // parsing it afresh for every position gives.
    void keptDescriptionMatchesFreshReading()
    {
        QRandomGenerator random(20261124);
        int filled = 0;
        for (int round = 0; round < 3000; ++round) {
            QByteArray xml;
            randomDescription(xml, random, 0, QByteArray());
            if (round % 10 == 0)
                xml.insert(0, "<!DOCTYPE x [<!ENTITY e \"&#38;amp;\">]>");
            if (round % 10 == 1)
                xml.chop(3); // not well-formed
            DescriptionTemplate kept = DescriptionTemplate::fromBytes(xml);
            for (int k = 0; k < 3; ++k) {
                const PositionRect position = randomPosition(random);
                const QByteArray fresh = freshConfigScript(m_workspace.path(), xml, position);
                const QByteArray fromKept = kept.configScript(position);
                if (fresh != fromKept)
                    QFAIL(qPrintable(QStringLiteral("%1\n fresh %2\n kept  %3")
                                         .arg(QString::fromUtf8(xml), QString::fromUtf8(fresh),
                                              QString::fromUtf8(fromKept))));
                filled += fresh.contains("%\"") ? 1 : 0;
            }
        }
        QVERIFY2(filled > 500, "the random descriptions must take the frame often");
    }

    void keptDescription_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<bool>("usesTree");
        QTest::newRow("the worked example is filled in pieces")
            << QByteArray(kWorkedExample) << false;
        QTest::newRow("only the last basic takes the frame")
            << QByteArray("<info><properties><basic><left type=\"text\">a</left></basic>"
                          "<basic><top type=\"number\">b</top></basic><basic type=\"text\"/>"
                          "</properties><properties><basic><left>c</left></basic>"
                          "<basic><width><item/></width><x:left type=\"text\">d</x:left></basic>"
                          "</properties></info>")
            << false;
        QTest::newRow("members with content of their own lose it")
            << QByteArray("<r><opacity><item><a type=\"text\">1</a></item></opacity>"
                          "<layout type=\"bool\">0</layout><properties><basic>"
                          "<height type=\"color\"><![CDATA[0x12]]></height></basic>"
                          "</properties></r>")
            << false;
        QTest::newRow("a declared encoding is ignored, as the workspace reader ignores it")
            << QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"
                          "<info><opacity type=\"text\">\xc3\xa9</opacity><t type=\"text\">"
                          "\xc3\xa9</t></info>")
            << false;
        QTest::newRow("an entity reference keeps the tree")
            << QByteArray("<!DOCTYPE info [<!ENTITY who \"you\">]><info><t type=\"text\">&who;"
                          "</t><opacity type=\"number\">1</opacity></info>")
            << true;
        QTest::newRow("an element inside a typed member keeps the tree")
            << QByteArray("<info><properties><basic><left type=\"text\">1<b/></left></basic>"
                          "</properties></info>")
            << true;
    }

    void keptDescription()
    {
        QFETCH(QByteArray, xml);
        QFETCH(bool, usesTree);
        DescriptionTemplate kept = DescriptionTemplate::fromBytes(xml);
        QVERIFY(!kept.isNull());
        QCOMPARE(kept.usesTree(), usesTree);
        QRandomGenerator random(7);
        // The same position twice: a kept tree takes a position over the one before.
        for (int k = 0; k < 4; ++k) {
            const PositionRect position =
                k == 2 ? ScriptGenerator::builtInPosition() : randomPosition(random);
            QCOMPARE(kept.configScript(position),
                     freshConfigScript(m_workspace.path(), xml, position));
        }
    }

    void keptDescriptionOfNoDescriptionIsNull_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("bytes that are no UTF-8") << QByteArray("<info>caf\xe9</info>");
        QTest::newRow("not well-formed") << QByteArray("<info><a></info>");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("too deep") << nested(MaxDescriptionDepth + 1);
    }

    void keptDescriptionOfNoDescriptionIsNull()
    {
        QFETCH(QByteArray, xml);
        DescriptionTemplate kept = DescriptionTemplate::fromBytes(xml);
        QVERIFY(kept.isNull());
        QCOMPARE(kept.configScript(ScriptGenerator::builtInPosition()), QByteArray());
        QCOMPARE(freshConfigScript(m_workspace.path(), xml, ScriptGenerator::builtInPosition()),
                 QByteArray());
    }

    void nullElementGivesEmptyText()
    {
        PluginSettingsInfo info;
        QCOMPARE(info.jsonFromXml(QDomElement(), QStringLiteral("files/plugin")), QString());
    }
};

QTEST_GUILESS_MAIN(TestXmlJson)
#include "tst_xmljson.moc"
