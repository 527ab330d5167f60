// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "scrambler.h"
#include "testenv.h"

#include <QRegularExpression>
#include <QTest>
#include <algorithm>

namespace {

// RC4 written out from its textbook form, for comparison.
QByteArray textbookRc4(const QByteArray &data, const QByteArray &key)
{
    unsigned char s[256];
    for (int x = 0; x < 256; ++x)
        s[x] = static_cast<unsigned char>(x);
    int j = 0;
    for (int x = 0; x < 256; ++x) {
        const int k = key.isEmpty() ? 0 : static_cast<unsigned char>(key[x % key.size()]);
        j = (j + s[x] + k) % 256;
        std::swap(s[x], s[j]);
    }
    QByteArray out = data;
    int i = 0;
    j = 0;
    for (qsizetype x = 0; x < data.size(); ++x) {
        i = (i + 1) % 256;
        j = (j + s[i]) % 256;
        std::swap(s[i], s[j]);
        out[x] = char(data[x] ^ s[(s[i] + s[j]) % 256]);
    }
    return out;
}

const QRegularExpression scrambledForm(QStringLiteral("^[A-Za-v]*[0-9a-fA-F]{8}_$"));

} // namespace

class TestScrambler : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void tableIsTheStandardAlphabet()
    {
        QCOMPARE(QByteArray(myBase64),
                 QByteArray("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"));
    }

    void keyScheduleIsRc4()
    {
        unsigned char state[256];
        const unsigned char key[] = {'K', 'e', 'y'};
        RC4C_Init(state, key, 3, 256);
        // The first bytes of the RC4 state after scheduling the key "Key".
        QByteArray zeros(3, '\0');
        QCOMPARE(rc4CryptData(zeros, QStringLiteral("Key"), 256), QByteArray::fromHex("eb9f77"));
        unsigned char identity[256];
        for (int x = 0; x < 256; ++x)
            identity[x] = static_cast<unsigned char>(x);
        QVERIFY(std::is_permutation(state, state + 256, identity));
        QVERIFY(!std::equal(state, state + 256, identity));
    }

    void zeroLengthKeySchedulesAllZeroKey()
    {
        unsigned char state[256];
        RC4C_Init(state, nullptr, 0, 256);
        unsigned char expected[256];
        for (int x = 0; x < 256; ++x)
            expected[x] = static_cast<unsigned char>(x);
        int j = 0;
        for (int x = 0; x < 256; ++x) {
            j = (j + expected[x]) % 256;
            std::swap(expected[x], expected[j]);
        }
        QVERIFY(std::equal(state, state + 256, expected));
    }

    void cryptMatchesTextbook_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QString>("key");
        QTest::newRow("known vector Plaintext") << QByteArray("Plaintext") << "Key";
        QTest::newRow("hex key") << QByteArray("var bookPlugin={};") << "0a1B2c3D";
        QTest::newRow("empty data") << QByteArray() << "12345678";
        QTest::newRow("empty key") << QByteArray("abc") << "";
        QTest::newRow("long data") << QByteArray(100000, 'x') << "deadBEEF";
        QTest::newRow("non-ASCII key counts UTF-8 bytes")
            << QByteArray("abc") << QStringLiteral("ké");
    }
    void cryptMatchesTextbook()
    {
        QFETCH(QByteArray, data);
        QFETCH(QString, key);
        const QByteArray out = rc4CryptData(data, key, 256);
        QCOMPARE(out, textbookRc4(data, key.toUtf8()));
        QCOMPARE(rc4CryptData(out, key, 256), data);
    }

    void knownRc4Vector()
    {
        QCOMPARE(rc4CryptData("Plaintext", QStringLiteral("Key"), 256).toHex(),
                 QByteArray("bbf316e8d940af0ad3"));
    }

    void keyLengthWrapsAt256()
    {
        const QString key(256, u'k');
        QCOMPARE(rc4CryptData("abc", key, 256), rc4CryptData("abc", QString(), 256));
    }

    void otherStateSizesRoundTrip_data()
    {
        QTest::addColumn<uint>("n");
        QTest::newRow("16-byte state") << 16u;
        QTest::newRow("300-byte state") << 300u;
        QTest::newRow("1-byte state") << 1u;
    }
    void otherStateSizesRoundTrip()
    {
        QFETCH(uint, n);
        const QByteArray data("some text to run through the stream");
        const QByteArray out = rc4CryptData(data, QStringLiteral("0a1B2c3D"), n);
        QCOMPARE(out.size(), data.size());
        QCOMPARE(rc4CryptData(out, QStringLiteral("0a1B2c3D"), n), data);
    }

    void zeroStateSizeLeavesDataAlone()
    {
        QCOMPARE(rc4CryptData("abc", QStringLiteral("k"), 0), QByteArray("abc"));
    }

    void emptyTextIsKeyAndUnderscore()
    {
        const QString out = scrambleScriptString(QString());
        QCOMPARE(out.size(), 9);
        QVERIFY(scrambledForm.match(out).hasMatch());
        QCOMPARE(unscrambleScriptString(out), std::optional<QString>(QString()));
    }

    void lengthAndAlphabet_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("utf8Bytes");
        QTest::newRow("ASCII script") << "var bookPlugin={\"a\":1};" << 23;
        QTest::newRow("accented letter counts two bytes") << QStringLiteral("é") << 2;
        QTest::newRow("CJK counts three bytes") << QStringLiteral("日本") << 6;
        QTest::newRow("emoji counts four bytes") << QStringLiteral("\U0001F600") << 4;
        QTest::newRow("one byte") << "x" << 1;
        QTest::newRow("a leading byte-order mark comes back") << QStringLiteral("\uFEFFvar a;") << 9;
    }
    void lengthAndAlphabet()
    {
        QFETCH(QString, text);
        QFETCH(int, utf8Bytes);
        const QString out = scrambleScriptString(text);
        QCOMPARE(out.size(), 2 * utf8Bytes + 9);
        QVERIFY(scrambledForm.match(out).hasMatch());
        QCOMPARE(unscrambleScriptString(out), std::optional<QString>(text));
    }

    void lettersRotateThroughThirds()
    {
        const QString out = scrambleScriptString(QString(300, u'a'));
        for (int p = 0; p < 300; ++p) {
            for (int half = 0; half < 2; ++half) {
                const int index = QByteArray(myBase64).indexOf(out.at(2 * p + half).toLatin1());
                QVERIFY(index >= 0);
                QCOMPARE(index / 16, p % 3);
            }
        }
    }

    void keyIsEightHexDigitsThatDecrypt()
    {
        const QString text = QStringLiteral("var bookPlugin={\"x\":\"Grüße\"};");
        const QString out = scrambleScriptString(text);
        const QString key = out.mid(out.size() - 9, 8);
        QByteArray bytes;
        for (int p = 0; p < (out.size() - 9) / 2; ++p) {
            const int r = p % 3;
            const int hi = QByteArray(myBase64).indexOf(out.at(2 * p).toLatin1()) - 16 * r;
            const int lo = QByteArray(myBase64).indexOf(out.at(2 * p + 1).toLatin1()) - 16 * r;
            bytes += char(hi * 16 + lo);
        }
        QCOMPARE(QString::fromUtf8(rc4CryptData(bytes, key, 256)), text);
    }

    void twoCallsDifferAndBothRestore()
    {
        const QString text = QStringLiteral("var bookPlugin={\"opacity\":1};");
        const QString a = scrambleScriptString(text);
        QString b = scrambleScriptString(text);
        for (int tries = 0; a == b && tries < 100; ++tries)
            b = scrambleScriptString(text);
        QVERIFY(a != b);
        QCOMPARE(unscrambleScriptString(a), std::optional<QString>(text));
        QCOMPARE(unscrambleScriptString(b), std::optional<QString>(text));
    }

    void keysVaryInCase()
    {
        // Letter digits take a random case, so over many keys both cases turn up.
        bool lower = false;
        bool upper = false;
        for (int k = 0; k < 400 && !(lower && upper); ++k) {
            const QString key = scrambleScriptString(QString()).left(8);
            for (const QChar c : key) {
                lower = lower || (c >= u'a' && c <= u'f');
                upper = upper || (c >= u'A' && c <= u'F');
            }
        }
        QVERIFY(lower);
        QVERIFY(upper);
    }

    void malformedScrambledTextIsRejected_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "";
        QTest::newRow("no underscore") << "AB12345678";
        QTest::newRow("too short for a key") << "1234_";
        QTest::newRow("odd number of letters") << "ABC12345678_";
        QTest::newRow("letter beyond v") << "Az12345678_";
        QTest::newRow("second pair outside its third") << "AAAA12345678_";
        QTest::newRow("key not hexadecimal") << "AB1234567g_";
    }
    void malformedScrambledTextIsRejected()
    {
        QFETCH(QString, text);
        QCOMPARE(unscrambleScriptString(text), std::nullopt);
    }

    void megabyteRoundTrips()
    {
        QString text;
        for (int k = 0; text.size() < 1000000; ++k)
            text += QStringLiteral("{\"row\":%1,\"t\":\"é\"},").arg(k);
        const QString out = scrambleScriptString(text);
        QCOMPARE(out.size(), 2 * text.toUtf8().size() + 9);
        QCOMPARE(unscrambleScriptString(out), std::optional<QString>(text));
    }
};

QTEST_GUILESS_MAIN(TestScrambler)
#include "tst_scrambler.moc"
