// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Which typed links will show the image in a reader's book, and what the field says of the
// others. The window saves every link as typed; this only decides the field's mark.

#include "linkcheck.h"
#include "testenv.h"

#include <QtTest>

Q_DECLARE_METATYPE(LinkCheck::Problem)

class TestLinkCheck : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }
    void linksAreJudgedAsTheBookUsesThem_data();
    void linksAreJudgedAsTheBookUsesThem();
    void everyProblemSaysWhy_data();
    void everyProblemSaysWhy();
};

void TestLinkCheck::linksAreJudgedAsTheBookUsesThem_data()
{
    using P = LinkCheck::Problem;
    QTest::addColumn<QString>("link");
    QTest::addColumn<P>("problem");
    QTest::newRow("nothing typed yet is no problem") << "" << P::None;
    QTest::newRow("an https link works") << "https://example.com/a.png" << P::None;
    QTest::newRow("an http link works") << "http://example.com/a.png" << P::None;
    QTest::newRow("upper-case scheme works") << "HTTPS://example.com/a.png" << P::None;
    QTest::newRow("a port and a query work") << "https://example.com:8443/a.png?size=2" << P::None;
    QTest::newRow("non-ASCII host works") << "https://例え.jp/ä.png" << P::None;
    QTest::newRow("javascript: is no web link") << "javascript:alert(1)" << P::NotWeb;
    QTest::newRow("no scheme is no web link") << "www.example.com/a.png" << P::NotWeb;
    QTest::newRow("ftp is no web link") << "ftp://example.com/a.png" << P::NotWeb;
    QTest::newRow("data: is no web link") << "data:image/png;base64,AAAA" << P::NotWeb;
    QTest::newRow("a file: link is the author's own file") << "file:///home/me/a.png"
                                                           << P::LocalFile;
    QTest::newRow("http without a host") << "http:///a.png" << P::NoHost;
    QTest::newRow("https with only a scheme") << "https:" << P::NoHost;
    QTest::newRow("a blank inside") << "https://example.com/my photo.png" << P::Blanks;
    QTest::newRow("a leading blank") << " https://example.com/a.png" << P::Blanks;
    QTest::newRow("a trailing tab") << "https://example.com/a.png\t" << P::Blanks;
}

void TestLinkCheck::linksAreJudgedAsTheBookUsesThem()
{
    QFETCH(QString, link);
    QFETCH(LinkCheck::Problem, problem);
    QCOMPARE(LinkCheck::check(link), problem);
}

void TestLinkCheck::everyProblemSaysWhy_data()
{
    using P = LinkCheck::Problem;
    QTest::addColumn<P>("problem");
    QTest::addColumn<QString>("word"); // a word the reason must hold
    QTest::newRow("not a web link names the schemes") << P::NotWeb << "https";
    QTest::newRow("no host names the server") << P::NoHost << "server";
    QTest::newRow("blanks") << P::Blanks << "blanks";
    QTest::newRow("a file: link points to Local file") << P::LocalFile << "Local file";
    QTest::newRow("no problem says nothing") << P::None << "";
}

void TestLinkCheck::everyProblemSaysWhy()
{
    QFETCH(LinkCheck::Problem, problem);
    QFETCH(QString, word);
    const QString text = LinkCheck::reasonText(problem);
    if (word.isEmpty())
        QVERIFY(text.isEmpty());
    else
        QVERIFY2(text.contains(word), qPrintable(text));
}

QTEST_GUILESS_MAIN(TestLinkCheck)
#include "tst_linkcheck.moc"
