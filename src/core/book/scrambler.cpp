// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "scrambler.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <utility>
#include <vector>

const char myBase64[65] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

namespace {

constexpr int kKeyLength = 8;
constexpr quint32 kStateSize = 256;

// The RC4 keystream over a state of 256 bytes, each output byte handed to sink(index, byte):
// every index stays a byte, so no reductions are needed.
template<typename Sink>
inline void keystream256(unsigned char *state, const unsigned char *in, qsizetype size, Sink sink)
{
    quint8 i = 0;
    quint8 j = 0;
    for (qsizetype x = 0; x < size; ++x) {
        i = quint8(i + 1);
        j = quint8(j + state[i]);
        std::swap(state[i], state[j]);
        sink(x, quint8(in[x] ^ state[quint8(state[i] + state[j])]));
    }
}

void cryptWith256(unsigned char *state, const unsigned char *in, unsigned char *out, qsizetype size)
{
    keystream256(state, in, size, [out](qsizetype x, quint8 byte) { out[x] = byte; });
}

// The two letters of every byte in each third of the alphabet, as UTF-16 code units.
struct LetterPairs
{
    char16_t units[3][256][2];
    LetterPairs()
    {
        for (int third = 0; third < 3; ++third) {
            for (int b = 0; b < 256; ++b) {
                units[third][b][0] = char16_t(myBase64[16 * third + (b >> 4)]);
                units[third][b][1] = char16_t(myBase64[16 * third + (b & 15)]);
            }
        }
    }
};

// Any other state size, with the reductions of the general form.
void cryptWithSize(unsigned char *state, quint32 n, const unsigned char *in, unsigned char *out,
                   qsizetype size)
{
    quint32 i = 0;
    quint32 j = 0;
    for (qsizetype x = 0; x < size; ++x) {
        i = ((i % 256) + 1) % n;
        j = ((j % 256) + state[i % 256]) % n;
        std::swap(state[i % 256], state[j % 256]);
        const quint32 t = (quint32(state[i % 256]) + state[j % 256]) % n;
        out[x] = in[x] ^ state[t % 256];
    }
}

// Eight hexadecimal digits of a value made from the clock and rand(), most significant first,
// each letter digit in a case of its own random choice.
QByteArray makeKey()
{
    const quint32 ticks = quint32(std::clock());
    quint32 v = (quint32(std::rand()) << 16) + ticks;
    QByteArray key(kKeyLength, '0');
    for (int position = kKeyLength - 1; position >= 0; --position) {
        const int d = int(v & 0xF);
        if (d < 10)
            key[position] = char('0' + d);
        else
            key[position] = char(((std::rand() & 1) ? 'a' : 'A') + (d - 10));
        v >>= 4;
    }
    return key;
}

// Index of a letter in the first 48 entries of the table, or -1.
int letterIndex(char16_t c)
{
    if (c >= u'A' && c <= u'Z')
        return c - u'A';
    if (c >= u'a' && c <= u'v')
        return 26 + (c - u'a');
    return -1;
}

bool isHexDigit(char16_t c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

QByteArray cryptBytes(const QByteArray &data, const QByteArray &keyBytes, quint32 n)
{
    if (n == 0)
        return data;
    QByteArray out(data.size(), Qt::Uninitialized);
    const auto *in = reinterpret_cast<const unsigned char *>(data.constData());
    auto *dest = reinterpret_cast<unsigned char *>(out.data());
    const auto *key = reinterpret_cast<const unsigned char *>(keyBytes.constData());
    const auto keyLength = quint8(keyBytes.size());
    if (n == kStateSize) {
        unsigned char state[kStateSize];
        RC4C_Init(state, key, keyLength, n);
        cryptWith256(state, in, dest, data.size());
    } else {
        std::vector<unsigned char> state(std::max<quint32>(n, kStateSize));
        RC4C_Init(state.data(), key, keyLength, n);
        cryptWithSize(state.data(), n, in, dest, data.size());
    }
    return out;
}

} // namespace

void RC4C_Init(unsigned char *state, const unsigned char *key, quint8 keyLength, quint32 n)
{
    // The temporary key array lives on the stack for the usual 256-byte state.
    std::array<unsigned char, kStateSize> small{};
    std::vector<unsigned char> large(n > kStateSize ? n : 0, 0);
    unsigned char *keyArray = n > kStateSize ? large.data() : small.data();
    for (quint32 x = 0; x < n; ++x) {
        state[x] = static_cast<unsigned char>(x);
        if (keyLength != 0)
            keyArray[x] = key[x % keyLength];
    }
    quint32 j = 0;
    for (quint32 x = 0; x < n; ++x) {
        j = (keyArray[x] + j + state[x]) % n;
        std::swap(state[x], state[j]);
    }
}

QByteArray rc4CryptData(const QByteArray &data, const QString &key, quint32 n)
{
    return cryptBytes(data, key.toUtf8(), n);
}

QString scrambleScriptString(const QString &text)
{
    static const LetterPairs pairs;
    const QByteArray key = makeKey();
    const QByteArray bytes = text.toUtf8();

    QString result(bytes.size() * 2 + kKeyLength + 1, Qt::Uninitialized);
    char16_t *out = reinterpret_cast<char16_t *>(result.data());
    unsigned char state[kStateSize];
    RC4C_Init(state, reinterpret_cast<const unsigned char *>(key.constData()), kKeyLength,
              kStateSize);
    // Encrypting and encoding in one pass: the letters of byte p come from third p mod 3.
    int third = 0;
    keystream256(state, reinterpret_cast<const unsigned char *>(bytes.constData()), bytes.size(),
                 [&](qsizetype, quint8 byte) {
                     std::memcpy(out, pairs.units[third][byte], sizeof pairs.units[third][byte]);
                     out += 2;
                     third = third == 2 ? 0 : third + 1;
                 });
    for (const char c : key)
        *out++ = char16_t(c);
    *out = u'_';
    return result;
}

std::optional<QString> unscrambleScriptString(QStringView scrambled)
{
    if (!scrambled.endsWith(u'_') || scrambled.size() < kKeyLength + 1)
        return std::nullopt;
    const QStringView body = scrambled.first(scrambled.size() - kKeyLength - 1);
    const QStringView keyText = scrambled.sliced(body.size(), kKeyLength);
    if (body.size() % 2 != 0)
        return std::nullopt;
    QByteArray key(kKeyLength, Qt::Uninitialized);
    for (int k = 0; k < kKeyLength; ++k) {
        if (!isHexDigit(keyText[k].unicode()))
            return std::nullopt;
        key[k] = char(keyText[k].unicode());
    }

    QByteArray bytes(body.size() / 2, Qt::Uninitialized);
    int third = 0;
    for (qsizetype p = 0; p < bytes.size(); ++p) {
        const int high = letterIndex(body[2 * p].unicode()) - 16 * third;
        const int low = letterIndex(body[2 * p + 1].unicode()) - 16 * third;
        if (high < 0 || high > 15 || low < 0 || low > 15)
            return std::nullopt;
        bytes[p] = char(high * 16 + low);
        third = third > 1 ? 0 : third + 1;
    }
    // The text comes back whole: a byte-order mark at its start is one of its characters.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return QString(decode(cryptBytes(bytes, key, kStateSize)));
}
