// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The one-decimal text of a position value, worked out without a formatter, against the text
// the formatter writes into the fields and the position file.

#include "onedecimal.h"
#include "testenv.h"

#include <QtTest>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

QString formatted(float value)
{
    return QString::asprintf("%.1f", double(value));
}

float fromBits(quint32 bits)
{
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace

class TestOneDecimal : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void text_data()
    {
        QTest::addColumn<float>("value");
        QTest::addColumn<QString>("text");
        QTest::addColumn<qlonglong>("tenths");
        QTest::newRow("zero") << 0.0f << "0.0" << 0LL;
        QTest::newRow("a negative zero has no sign") << -0.0f << "0.0" << 0LL;
        QTest::newRow("a small negative keeps its sign") << -0.04f << "-0.0" << 0LL;
        QTest::newRow("whole") << 12.0f << "12.0" << 120LL;
        QTest::newRow("rounded down") << 12.34f << "12.3" << 123LL;
        QTest::newRow("rounded up") << 12.36f << "12.4" << 124LL;
        QTest::newRow("an exact half rounds away from zero") << 0.25f << "0.3" << 3LL;
        QTest::newRow("a negative half too") << -0.25f << "-0.3" << -3LL;
        QTest::newRow("three quarters") << 99.75f << "99.8" << 998LL;
        QTest::newRow("a float just below a half rounds down") << 0.35f << "0.3" << 3LL;
        QTest::newRow("a float just above a half rounds up") << 49.95f << "50.0" << 500LL;
        QTest::newRow("up to the next whole") << 49.96f << "50.0" << 500LL;
        QTest::newRow("a full page") << 100.0f << "100.0" << 1000LL;
        QTest::newRow("large") << 123456.78f << "123456.8" << 1234568LL;
        QTest::newRow("beyond the arithmetic")
            << 1e16f << "10000000272564224.0" << 100000002725642240LL;
    }

    void text()
    {
        QFETCH(float, value);
        QFETCH(QString, text);
        QFETCH(qlonglong, tenths);
        QCOMPARE(formatted(value), text); // the rows describe the formatter itself
        QCOMPARE(OneDecimal::text(value), text);
        QCOMPARE(OneDecimal::tenths(value), tenths);
    }

    void valuesThatAreNoNumbers()
    {
        const float inf = std::numeric_limits<float>::infinity();
        const float nan = std::numeric_limits<float>::quiet_NaN();
        for (float value : {inf, -inf, nan})
            QCOMPARE(OneDecimal::text(value), formatted(value));
    }

    // Spread over every binary exponent that a margin, a drag or a typed value can reach, both
    // signs, and the values a drag gives on a canvas of a few hundred points.
    void sameTextAsTheFormatter()
    {
        constexpr quint32 below256 = 0x43800000u;
        for (quint32 bits = 0; bits < below256; bits += 4099) {
            for (const float value : {fromBits(bits), -fromBits(bits)}) {
                const QString expected = formatted(value);
                QCOMPARE(OneDecimal::text(value), expected);
                QCOMPARE(OneDecimal::tenths(value), std::llround(expected.toDouble() * 10.0));
            }
        }
        for (int points = 0; points <= 4000; ++points) {
            const float value = float(points) * 100.0f / 437.0f;
            QCOMPARE(OneDecimal::text(value), formatted(value));
        }
    }
};

QTEST_GUILESS_MAIN(TestOneDecimal)
#include "tst_onedecimal.moc"
