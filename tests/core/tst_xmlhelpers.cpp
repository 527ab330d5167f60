#include "testenv.h"
#include "xmlhelpers.h"

#include <QTest>

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
};

QTEST_GUILESS_MAIN(TestXmlHelpers)
#include "tst_xmlhelpers.moc"
