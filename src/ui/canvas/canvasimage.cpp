// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "canvasimage.h"

#include "fileops.h"

#include <QBuffer>
#include <QImageReader>
#include <QUrl>

namespace CanvasImage {

Picture read(const QString &path)
{
    QByteArray bytes;
    if (path.isEmpty() || !FileOps::readAll(path, &bytes, FileOps::ReadLinks::NoFollow))
        return {};
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    Picture picture;
    picture.image = readReduced(reader, shownSide, &picture.size);
    if (picture.image.isNull())
        return {};
    return picture;
}

QImage readReduced(QImageReader &reader, int side, QSize *shownSize)
{
    reader.setAutoTransform(true);
    const QSize stored = reader.size();
    // A photo turned by its orientation stands the other way round than it is stored: its
    // shape, for the box and for "Fit to image", is the turned one.
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize shown = turned ? stored.transposed() : stored;
    const bool large = stored.isValid() && (stored.width() > side || stored.height() > side);
    const QImage::Format format = reader.imageFormat();
    const bool fewColours = format == QImage::Format_Mono || format == QImage::Format_MonoLSB ||
                            format == QImage::Format_Indexed8;
    // The reduced size is asked for in the stored orientation, before the turn is applied.
    if (large && !fewColours)
        reader.setScaledSize(stored.scaled(side, side, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    QImage image = reader.read();
    if (image.isNull())
        return {};
    if (large && fewColours)
        image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                    .scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (shownSize)
        *shownSize = shown.isValid() ? shown : image.size();
    return image;
}

QString linkHost(const QString &link)
{
    const QString text = link.trimmed();
    if (text.isEmpty())
        return QString();
    const QString host = QUrl(text).host();
    return host.isEmpty() ? QUrl::fromUserInput(text).host() : host;
}

} // namespace CanvasImage
