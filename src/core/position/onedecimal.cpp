// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "onedecimal.h"

#include <cmath>

namespace {

// Beyond this the text is left to the formatter; no margin comes near it.
constexpr double kArithmeticLimit = 1e15;

// A float has a 24-bit significand, so ten times it is exact in a double: rounding that product
// to the nearest integer, halves away from zero, is the formatter's own rounding of the exact
// value to one decimal.
bool hasArithmeticForm(float value)
{
    return std::isfinite(value) && std::fabs(double(value)) < kArithmeticLimit;
}

QString formatted(float value)
{
    return QString::asprintf("%.1f", double(value));
}

} // namespace

namespace OneDecimal {

long long tenths(float value)
{
    if (hasArithmeticForm(value))
        return std::llround(double(value) * 10.0);
    return std::llround(formatted(value).toDouble() * 10.0);
}

QString text(float value)
{
    if (!hasArithmeticForm(value))
        return formatted(value);
    const long long shown = tenths(value);
    const unsigned long long magnitude =
        shown < 0 ? 0ULL - (unsigned long long)shown : (unsigned long long)shown;
    char digits[24];
    int at = sizeof digits;
    digits[--at] = char('0' + magnitude % 10);
    digits[--at] = '.';
    unsigned long long whole = magnitude / 10;
    do {
        digits[--at] = char('0' + whole % 10);
        whole /= 10;
    } while (whole != 0);
    // The formatter writes the sign of every value below zero, "-0.0" included, but not that of
    // a negative zero.
    if (value < 0.0f)
        digits[--at] = '-';
    return QString::fromLatin1(digits + at, qsizetype(sizeof digits) - at);
}

} // namespace OneDecimal
