// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QImage>
#include <QSize>
#include <QString>

// What the image choice tells about the chosen file beside its name: a thumbnail and the image's
// size in pixels, or that the file is missing or no image that can be read.
namespace ImageFacts {

// The thumbnail's longest side in pixels: small enough to sit beside the name without making
// the view taller than its buttons.
inline constexpr int thumbnailSide = 32;

enum class State { NoFile, Missing, NotAnImage, Image };

struct Facts
{
    State state = State::NoFile;
    QSize size;       // the image's own size in pixels, for an Image
    QImage thumbnail; // at most thumbnailSide device-independent pixels on either side
};

// Reads the facts of the file at path; an empty path is NoFile. Only the header is read for the
// size, and the thumbnail is decoded straight to its reduced size where the format allows, so a
// huge image is never held whole. A link in the workspace is data and is not followed, and a
// special file is never opened: both read as NotAnImage. The thumbnail has pixelRatio pixels
// per point, so that it is sharp on the screen that shows it.
Facts read(const QString &path, qreal pixelRatio = 1.0);

// The text shown for the facts in the window's language; empty for NoFile.
QString text(const Facts &facts);

} // namespace ImageFacts
