// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QColor>
#include <QString>

// Stateless helpers shared across the bundle.
class UtilityFunction
{
public:
    UtilityFunction() = delete;

    // Keystroke filters: they look at the last character only, the one just typed.
    static QString checkFloatValueStringFrom(const QString &text);
    static QString checkIntegerValueStringFrom(const QString &text);

    // "0xRRGGBB" with upper-case digits; "0x000000" for an invalid colour.
    static QString colorToHexRGB(const QColor &color);
    // An opaque colour from a hexadecimal text; black when nothing can be read.
    static QColor colorFromHexRGB(const QString &text);

    // Puts "http://" in front of a text that has no scheme.
    static QString checkUrlString(const QString &text);

    // Writes the UTF-8 byte-order mark and the text atomically; true when written.
    static bool writeString(const QString &text, const QString &path);
    static const QByteArray &header();

    // A path under the temporary folder, unique within the process. Only the name is reserved.
    static QString createTempPath();
};
