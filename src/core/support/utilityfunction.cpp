// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "utilityfunction.h"

#include "bundlepaths.h"
#include "fileops.h"
#include "localisation.h"

#include <QDir>
#include <QUrl>
#include <chrono>

namespace {

bool isAsciiDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

QString withoutLast(const QString &text)
{
    return text.left(text.size() - 1);
}

// A channel of QColor's 16-bit storage as a fraction of 65536: 8-bit values come back as the
// same 8 bits, and 0.5 (stored as 32768) stays just below the 128 boundary, as a float 0.5 does.
int channelByte(quint16 channel)
{
    const float fraction = float(channel) / 65536.0f;
    return int(fraction * 255.99998f);
}

int hexDigitValue(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    if (u >= 'a' && u <= 'f')
        return u - 'a' + 10;
    if (u >= 'A' && u <= 'F')
        return u - 'A' + 10;
    return -1;
}

// Scans one hexadecimal integer from the start of text: blanks skipped, an optional "0x" or
// "0X", then hex digits up to the first other character. 0 when there is no digit; a value too
// large for 32 bits saturates.
quint32 scanHex(const QString &text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    if (i + 1 < text.size() && text.at(i) == QLatin1Char('0') &&
        (text.at(i + 1) == QLatin1Char('x') || text.at(i + 1) == QLatin1Char('X')) &&
        i + 2 < text.size() && hexDigitValue(text.at(i + 2)) >= 0)
        i += 2;
    quint64 value = 0;
    for (; i < text.size(); ++i) {
        const int digit = hexDigitValue(text.at(i));
        if (digit < 0)
            break;
        value = value * 16 + quint64(digit);
        if (value > 0xFFFFFFFFu)
            value = 0xFFFFFFFFu;
    }
    return quint32(value);
}

int createTime = 0;

} // namespace

QString UtilityFunction::checkFloatValueStringFrom(const QString &text)
{
    if (text.isEmpty())
        return QStringLiteral("");
    const QChar last = text.back();
    if (isAsciiDigit(last))
        return text;
    if (last != QLatin1Char('.'))
        return withoutLast(text);
    // Only the character just typed is new: a second point is dropped, the first one kept.
    return text.indexOf(QLatin1Char('.')) == text.size() - 1 ? text : withoutLast(text);
}

QString UtilityFunction::checkIntegerValueStringFrom(const QString &text)
{
    if (text.isEmpty())
        return QStringLiteral("");
    return isAsciiDigit(text.back()) ? text : withoutLast(text);
}

QString UtilityFunction::colorToHexRGB(const QColor &color)
{
    if (!color.isValid())
        return QStringLiteral("0x000000");
    const QRgba64 rgb = color.toRgb().rgba64();
    return QString::asprintf("0x%02X%02X%02X", channelByte(rgb.red()), channelByte(rgb.green()),
                             channelByte(rgb.blue()));
}

QColor UtilityFunction::colorFromHexRGB(const QString &text)
{
    const quint32 value = text.isNull() ? 0 : scanHex(text);
    return QColor(int((value >> 16) & 0xFF), int((value >> 8) & 0xFF), int(value & 0xFF));
}

QString UtilityFunction::checkUrlString(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    if (url.isValid() && !url.scheme().isEmpty())
        return text;
    return QStringLiteral("http://") + text;
}

const QByteArray &UtilityFunction::header()
{
    static const QByteArray bom("\xEF\xBB\xBF", 3);
    return bom;
}

bool UtilityFunction::writeString(const QString &text, const QString &path)
{
    return FileOps::writeAtomically(path, header() + text.toUtf8());
}

QString UtilityFunction::createTempPath()
{
    const QString resourceDir = BundlePaths::resourceDirFor(defaultBundlePath());
    // An unreadable "product.id" leaves no product folder: the name goes straight into temp.
    const QString productId = BundlePaths::readProductId(resourceDir).value_or(QString());
    QString folder = QDir::tempPath();
    if (!productId.isEmpty())
        folder += QLatin1Char('/') + productId;
    const double seconds =
        std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    const QString leaf = QString::asprintf("%f-%i", seconds, createTime);
    ++createTime;
    const QString path = folder + QLatin1Char('/') + leaf;
    // Only the name is reserved; the caller creates the folder or file. Something already there
    // is kept, and asking for it as a folder then changes nothing.
    if (FileOps::exists(path))
        QDir().mkpath(path);
    return path;
}
