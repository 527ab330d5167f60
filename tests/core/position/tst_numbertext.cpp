// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "numbertext.h"
#include "testenv.h"

#include <QtTest>
#include <cmath>
#include <limits>

class TestNumberText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void floatValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");

        QTest::newRow("plain decimal") << "12.5" << 12.5;
        QTest::newRow("integer text") << "42" << 42.0;
        QTest::newRow("leading blanks skipped") << "   7.25" << 7.25;
        QTest::newRow("leading tab and newline skipped") << "\t\n 3" << 3.0;
        QTest::newRow("trailing garbage ignored") << " 12.5px" << 12.5;
        QTest::newRow("negative") << "-5.0" << -5.0;
        QTest::newRow("explicit plus") << "+8" << 8.0;
        QTest::newRow("point without integer part") << ".5" << 0.5;
        QTest::newRow("signed point without integer part") << "-.25" << -0.25;
        QTest::newRow("trailing point") << "5." << 5.0;
        QTest::newRow("exponent") << "1.5e2" << 150.0;
        QTest::newRow("negative exponent") << "25E-1" << 2.5;
        QTest::newRow("e without digits is not an exponent") << "3e" << 3.0;
        QTest::newRow("e with sign but no digits is not an exponent") << "3e+x" << 3.0;
        QTest::newRow("second point ends the number") << "1.2.3" << 1.2;
        QTest::newRow("letters give zero") << "abc" << 0.0;
        QTest::newRow("empty gives zero") << "" << 0.0;
        QTest::newRow("blanks only give zero") << "   " << 0.0;
        QTest::newRow("lone sign gives zero") << "-" << 0.0;
        QTest::newRow("lone point gives zero") << "." << 0.0;
        QTest::newRow("comma is not a decimal mark") << "3,5" << 3.0;
        QTest::newRow("blank after sign ends it") << "- 4" << 0.0;
        QTest::newRow("hexadecimal is not read") << "0x1A" << 0.0;
        QTest::newRow("words are not read") << "inf" << 0.0;
        QTest::newRow("non-ASCII digits are not read") << QString::fromUtf8("\u0661\u0662") << 0.0;
    }

    void floatValue()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        QCOMPARE(NumberText::floatValue(text), float(value));
        QCOMPARE(NumberText::doubleValue(text), value);
    }

    void floatValueOutOfRange()
    {
        QVERIFY(std::isinf(NumberText::floatValue(u"1e999")));
        QVERIFY(NumberText::floatValue(u"1e999") > 0);
        QVERIFY(std::isinf(NumberText::floatValue(u"-1e300")));
        QVERIFY(NumberText::floatValue(u"-1e300") < 0);
        QCOMPARE(NumberText::floatValue(u"1e-999"), 0.0f);
        QCOMPARE(NumberText::floatValue(QString(5000, QLatin1Char('9'))),
                 std::numeric_limits<float>::infinity());
    }

    void doubleValueKeepsDoublePrecision()
    {
        QCOMPARE(NumberText::doubleValue(u"0.1"), 0.1);
        QVERIFY(double(NumberText::floatValue(u"0.1")) != 0.1);
    }

    void intValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");

        QTest::newRow("plain") << "2" << 2;
        QTest::newRow("fraction is cut: 2.9 is 2") << "2.9" << 2;
        QTest::newRow("negative fraction is cut") << "-2.9" << -2;
        QTest::newRow("leading blanks skipped") << "  17" << 17;
        QTest::newRow("trailing garbage ignored") << "3px" << 3;
        QTest::newRow("explicit plus") << "+4" << 4;
        QTest::newRow("exponent is not read") << "1e3" << 1;
        QTest::newRow("letters give zero") << "layer" << 0;
        QTest::newRow("empty gives zero") << "" << 0;
        QTest::newRow("lone sign gives zero") << "-" << 0;
        QTest::newRow("point first gives zero") << ".9" << 0;
        QTest::newRow("largest int") << "2147483647" << 2147483647;
        QTest::newRow("smallest int") << "-2147483648" << std::numeric_limits<int>::min();
        QTest::newRow("too large saturates") << "99999999999999999999" << 2147483647;
        QTest::newRow("too small saturates")
            << "-99999999999999999999" << std::numeric_limits<int>::min();
    }

    void intValue()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        QCOMPARE(NumberText::intValue(text), value);
    }

    void longTextReadsOnlyItsPrefix()
    {
        QString text = QStringLiteral("12.5");
        text += QString(1000000, QLatin1Char('x'));
        QCOMPARE(NumberText::floatValue(text), 12.5f);
        QCOMPARE(NumberText::intValue(text), 12);
    }
};

QTEST_GUILESS_MAIN(TestNumberText)
#include "tst_numbertext.moc"
