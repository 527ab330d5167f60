// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QImage>
#include <QImageReader>
#include <QSize>
#include <QString>

// What the page canvas shows of the chosen image: the picture itself for a file in the workspace,
// only the host's name for a link (nothing is ever fetched).
namespace CanvasImage {

// The longest side of the copy the canvas paints; the box is never larger on screen.
inline constexpr int shownSide = 1024;

struct Picture
{
    QImage image; // a copy no larger than shownSide on either side; null when unreadable
    QSize size;   // the image's own size in pixels, which fixes its shape
};

// Reads an image file of the workspace for the canvas. A link there is data and is not followed,
// and a special file is never opened: both read as no picture. A large image is decoded straight
// to the reduced size.
Picture read(const QString &path);

// Reads reader's image (with its orientation applied) no larger than side pixels on either
// side, never blown up; the image's own size, as shown, goes to *shownSize. Formats that Qt can
// decode straight to a smaller size (JPEG) are; an image of few colours (a palette, one bit) is
// decoded whole and reduced smoothly, since Qt's reduced decode of those loses their colours.
QImage readReduced(QImageReader &reader, int side, QSize *shownSize = nullptr);

// The host a link names ("www.example.org"), also for a link written without its scheme; empty
// when it names none.
QString linkHost(const QString &link);

} // namespace CanvasImage
