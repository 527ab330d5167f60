// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "numbertext.h"

#include <QLocale>
#include <limits>

namespace NumberText {

namespace {

bool isAsciiDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

qsizetype skipBlanks(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    return i;
}

qsizetype skipDigits(QStringView text, qsizetype i)
{
    while (i < text.size() && isAsciiDigit(text.at(i)))
        ++i;
    return i;
}

bool isSign(QChar c)
{
    return c == QLatin1Char('+') || c == QLatin1Char('-');
}

// The longest prefix after the blanks that reads as a decimal number: sign, digits, point,
// digits, and an exponent only when at least one digit follows its "e". Empty when there is none.
QStringView numericPrefix(QStringView text)
{
    const qsizetype start = skipBlanks(text);
    qsizetype i = start;
    if (i < text.size() && isSign(text.at(i)))
        ++i;
    const qsizetype intStart = i;
    i = skipDigits(text, i);
    bool digits = i > intStart;
    if (i < text.size() && text.at(i) == QLatin1Char('.')) {
        const qsizetype fracStart = i + 1;
        const qsizetype fracEnd = skipDigits(text, fracStart);
        if (digits || fracEnd > fracStart) {
            digits = true;
            i = fracEnd;
        }
    }
    if (!digits)
        return {};
    if (i < text.size() && (text.at(i) == QLatin1Char('e') || text.at(i) == QLatin1Char('E'))) {
        qsizetype e = i + 1;
        if (e < text.size() && isSign(text.at(e)))
            ++e;
        const qsizetype expEnd = skipDigits(text, e);
        if (expEnd > e)
            i = expEnd;
    }
    return text.sliced(start, i - start);
}

} // namespace

double doubleValue(QStringView text)
{
    const QStringView prefix = numericPrefix(text);
    if (prefix.isEmpty())
        return 0.0;
    // Out of range the conversion still answers the right infinity, or zero for a tiny value.
    return QLocale::c().toDouble(prefix);
}

float floatValue(QStringView text)
{
    // Converting a double beyond the float range is undefined; such a number reads as infinite.
    const double value = doubleValue(text);
    if (value > double(std::numeric_limits<float>::max()))
        return std::numeric_limits<float>::infinity();
    if (value < -double(std::numeric_limits<float>::max()))
        return -std::numeric_limits<float>::infinity();
    return float(value);
}

int intValue(QStringView text)
{
    qsizetype i = skipBlanks(text);
    bool negative = false;
    if (i < text.size() && isSign(text.at(i))) {
        negative = text.at(i) == QLatin1Char('-');
        ++i;
    }
    // Accumulate as a negative number so that the minimum integer fits; saturate on overflow.
    qint64 value = 0;
    const qint64 limit = qint64(std::numeric_limits<int>::max()) + 1;
    for (; i < text.size() && isAsciiDigit(text.at(i)); ++i) {
        value = value * 10 + (text.at(i).unicode() - '0');
        if (value > limit)
            value = limit;
    }
    if (negative)
        return int(-value < std::numeric_limits<int>::min() ? std::numeric_limits<int>::min()
                                                            : -value);
    return int(value > std::numeric_limits<int>::max() ? std::numeric_limits<int>::max() : value);
}

} // namespace NumberText
