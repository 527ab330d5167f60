// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QFileInfo>
#include <QImage>
#include <QString>

// Real image files for the image choice's tests: the window takes only files whose bytes read
// as JPEG, GIF or PNG.
namespace TestImages {

// A small image of the type that name's suffix gives, whose bytes stand for content: two
// contents give two different files.
inline QByteArray bytes(const QByteArray &content, const QString &name)
{
    const QString suffix = QFileInfo(name).suffix().toLower();
    if (suffix == QLatin1String("gif")) {
        // Qt reads GIF but does not write it: a 1 x 1 GIF with content as its comment.
        QByteArray gif("GIF89a\x01\x00\x01\x00\x80\x00\x00\x00\x00\x00\xff\xff\xff", 19);
        const QByteArray comment = content.left(255);
        gif += QByteArray("\x21\xfe", 2) + char(comment.size()) + comment + QByteArray(1, '\0');
        gif += QByteArray("\x2c\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00\x3b", 16);
        return gif;
    }
    const char *format = suffix == QLatin1String("png") ? "PNG" : "JPEG";
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(QColor::fromRgb(qHash(content) & 0xffffff));
    picture.setText(QStringLiteral("Comment"), QString::fromUtf8(content));
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, format);
    return out;
}

} // namespace TestImages
