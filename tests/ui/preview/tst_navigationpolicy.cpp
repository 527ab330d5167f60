// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "navigationpolicy.h"
#include "testenv.h"

#include <QtTest>

#include <stdexcept>

using NavigationPolicy::Decision;
Q_DECLARE_METATYPE(Decision)

class TestNavigationPolicy : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { TestEnv::isolate(); }

    void decide_data()
    {
        QTest::addColumn<QString>("scheme");
        QTest::addColumn<bool>("ignoreOpenURL");
        QTest::addColumn<Decision>("expected");
        QTest::addColumn<bool>("providerAsked");

        QTest::newRow("file loads inside") << "file" << false << Decision::Use << false;
        QTest::newRow("file loads inside without asking the view")
            << "file" << true << Decision::Use << false;
        QTest::newRow("https is refused and opened outside")
            << "https" << false << Decision::IgnoreAndOpenOutside << true;
        QTest::newRow("http is refused and opened outside")
            << "http" << false << Decision::IgnoreAndOpenOutside << true;
        QTest::newRow("mailto is only refused") << "mailto" << false << Decision::Ignore << true;
        QTest::newRow("ftp is only refused") << "ftp" << false << Decision::Ignore << true;
        QTest::newRow("data is only refused") << "data" << false << Decision::Ignore << true;
        QTest::newRow("HTTP in capitals is refused, not handed on")
            << "HTTP" << false << Decision::Ignore << true;
        QTest::newRow("Https in mixed case is refused, not handed on")
            << "Https" << false << Decision::Ignore << true;
        QTest::newRow("FILE in capitals is not a file")
            << "FILE" << false << Decision::Ignore << true;
        QTest::newRow("https followed inside when the view allows it")
            << "https" << true << Decision::Use << true;
        QTest::newRow("mailto followed inside when the view allows it")
            << "mailto" << true << Decision::Use << true;
        QTest::newRow("empty scheme is refused") << "" << false << Decision::Ignore << true;
    }
    void decide()
    {
        QFETCH(QString, scheme);
        QFETCH(bool, ignoreOpenURL);
        QFETCH(Decision, expected);
        QFETCH(bool, providerAsked);

        int asked = 0;
        const auto provider = [&] {
            ++asked;
            return ignoreOpenURL;
        };
        QCOMPARE(NavigationPolicy::decide(scheme, provider), expected);
        QCOMPARE(asked, providerAsked ? 1 : 0);
    }

    void withoutProviderWebLinksStillLeave()
    {
        QCOMPARE(NavigationPolicy::decide(QStringLiteral("https"), {}),
                 Decision::IgnoreAndOpenOutside);
        QCOMPARE(NavigationPolicy::decide(QStringLiteral("ftp"), {}), Decision::Ignore);
        QCOMPARE(NavigationPolicy::decide(QStringLiteral("file"), {}), Decision::Use);
    }

    void providerExceptionReachesTheCaller()
    {
        // The page catches it and logs it; the decision itself does not swallow it.
        const auto provider = []() -> bool {
            throw std::runtime_error("boom");
        };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                                 NavigationPolicy::decide(QStringLiteral("https"), provider));
    }
};

QTEST_GUILESS_MAIN(TestNavigationPolicy)
#include "tst_navigationpolicy.moc"
