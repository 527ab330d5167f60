// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "testenv.h"
#include "xmlhelpers.h"

#include <QTest>

namespace {

// levels elements named name, each inside the one before, the innermost holding a value.
QByteArray nested(int levels, const QByteArray &name = "d")
{
    const QByteArray open = '<' + name + '>';
    const QByteArray close = "</" + name + '>';
    return open.repeated(levels - 1) + "<v type=\"number\">7</v>" + close.repeated(levels - 1);
}

} // namespace

class TestXmlHelpers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void typedElementCarriesNameTypeAndValue()
    {
        QDomDocument doc;
        const QDomElement src = generateXmlWithType(
            doc, QStringLiteral("src"), QStringLiteral("a.png"), QStringLiteral("file"));
        QCOMPARE(src.tagName(), QStringLiteral("src"));
        QCOMPARE(src.attribute(QStringLiteral("type")), QStringLiteral("file"));
        QCOMPARE(src.text(), QStringLiteral("a.png"));
        QVERIFY(src.parentNode().isNull());
        QCOMPARE(src.ownerDocument(), doc);
    }

    void typedElementWithEmptyValueHasNoText()
    {
        QDomDocument doc;
        const QDomElement src =
            generateXmlWithType(doc, QStringLiteral("src"), QString(), QStringLiteral("file"));
        QCOMPARE(src.text(), QString());
        QCOMPARE(src.attribute(QStringLiteral("type")), QStringLiteral("file"));
    }

    void typedElementWritesEscapedMarkup()
    {
        QDomDocument doc;
        doc.appendChild(generateXmlWithType(doc, QStringLiteral("t"), QStringLiteral("a<b&\"c"),
                                            QStringLiteral("text")));
        const QDomDocument back = parseDescriptionXml(doc.toByteArray(-1));
        QCOMPARE(back.documentElement().text(), QStringLiteral("a<b&\"c"));
    }

    void dictKeepsTheLastOfTwoSameNames()
    {
        const QDomDocument doc = parseDescriptionXml(
            "<info><a type=\"text\">first</a><a type=\"text\">second</a></info>");
        const QVariantMap dict = xml2dict(doc.documentElement());
        QCOMPARE(dict.size(), 1);
        QCOMPARE(dict.value(QStringLiteral("a")).toString(), QStringLiteral("second"));
    }

    void dictTakesOneChildElementAsLeaf()
    {
        const QDomDocument doc = parseDescriptionXml(
            "<info><one><inner>x</inner></one><two><p>1</p><q>2</q></two><e/></info>");
        const QVariantMap dict = xml2dict(doc.documentElement());
        QCOMPARE(dict.value(QStringLiteral("one")).toString(), QStringLiteral("x"));
        QCOMPARE(dict.value(QStringLiteral("e")).toString(), QString());
        const QVariantMap two = dict.value(QStringLiteral("two")).toMap();
        QCOMPARE(two.value(QStringLiteral("p")).toString(), QStringLiteral("1"));
        QCOMPARE(two.value(QStringLiteral("q")).toString(), QStringLiteral("2"));
    }

    void roundTripLosesTypesAndMayReorder()
    {
        const QDomDocument doc =
            parseDescriptionXml("<info><z type=\"number\">1</z><basic><top type=\"text\">2</top>"
                                "<left type=\"text\">3</left></basic></info>");
        QDomDocument out;
        const QDomElement back =
            dict2xml(out, xml2dict(doc.documentElement()), QStringLiteral("info"));
        QCOMPARE(back.tagName(), QStringLiteral("info"));
        QDomDocument written;
        written.appendChild(written.importNode(back, true));
        QCOMPARE(written.toByteArray(-1).trimmed(),
                 QByteArray("<info><basic><left>3</left><top>2</top></basic><z>1</z></info>"));
    }

    void dictOfNumberWritesItsText()
    {
        QVariantMap dict;
        dict.insert(QStringLiteral("n"), 3);
        dict.insert(QStringLiteral("f"), 2.5);
        dict.insert(QStringLiteral("b"), true);
        QDomDocument doc;
        const QDomElement element = dict2xml(doc, dict, QStringLiteral("root"));
        QCOMPARE(element.firstChildElement(QStringLiteral("n")).text(), QStringLiteral("3"));
        QCOMPARE(element.firstChildElement(QStringLiteral("f")).text(), QStringLiteral("2.5"));
        QCOMPARE(element.firstChildElement(QStringLiteral("b")).text(), QStringLiteral("true"));
    }

    void xmlTextEscaping_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("breaks dropped, brackets escaped") << "a<b>\r\nc"
                                                          << "a&lt;b&gt;c";
        QTest::newRow("lone CR and LF dropped") << "a\rb\nc"
                                                << "abc";
        QTest::newRow("ampersand and quotes left") << "a&\"'b"
                                                   << "a&\"'b";
        QTest::newRow("empty") << ""
                               << "";
    }
    void xmlTextEscaping()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(replaceStringForXML(text), expected);
    }

    void parsingDropsLayoutWhitespace()
    {
        const QDomDocument doc = parseDescriptionXml("<info>\n  <a>1</a>\n  <b> </b>\n</info>");
        const QDomElement root = doc.documentElement();
        QCOMPARE(root.childNodes().size(), 2);
        QVERIFY(root.firstChild().isElement());
    }

    void descriptionDepth_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<bool>("parses");
        const int limit = MaxDescriptionDepth;
        QTest::newRow("a root alone parses") << QByteArray("<info/>") << true;
        QTest::newRow("exactly the limit parses") << nested(limit) << true;
        QTest::newRow("one level deeper is damaged") << nested(limit + 1) << false;
        QTest::newRow("200,000 levels are damaged") << nested(200000) << false;
        QTest::newRow("prefixed names count the same, at the limit")
            << nested(limit, "x:d") << true;
        QTest::newRow("prefixed names count the same, one deeper")
            << nested(limit + 1, "x:d") << false;
        QTest::newRow("closed levels are given back: two branches at the limit")
            << "<info>" + nested(limit - 1) + nested(limit - 1) + "</info>" << true;
        QTest::newRow("thousands of siblings are one level")
            << "<info>" + QByteArray("<a type=\"text\">x</a>").repeated(20000) + "</info>" << true;
        QTest::newRow("too deep and then broken is damaged")
            << nested(limit + 1).chopped(4) << false;
        QTest::newRow("broken before the limit is damaged")
            << QByteArray("<info><a></info>") << false;
    }

    // Both ways in (bytes, and text already decoded) draw the line at the same depth.
    void descriptionDepth()
    {
        QFETCH(QByteArray, xml);
        QFETCH(bool, parses);
        QCOMPARE(!parseDescriptionXml(xml).isNull(), parses);
        QString error;
        int line = 0;
        QCOMPARE(!parseDescriptionXml(QString::fromUtf8(xml), &error, &line).isNull(), parses);
        QCOMPARE(error.isEmpty(), parses);
        QCOMPARE(line > 0, !parses);
    }

    void tooDeepSaysWhereAndWhy()
    {
        const QByteArray xml = "<info>\n<a>\n" + nested(MaxDescriptionDepth - 1) + "</a></info>";
        QString error;
        int line = 0;
        QVERIFY(parseDescriptionXml(QString::fromUtf8(xml), &error, &line).isNull());
        QCOMPARE(line, 3);
        QVERIFY2(error.contains(QString::number(MaxDescriptionDepth)), qPrintable(error));
    }
};

QTEST_GUILESS_MAIN(TestXmlHelpers)
#include "tst_xmlhelpers.moc"
