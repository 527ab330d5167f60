// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "positionfile.h"

#include "numbertext.h"

#include <QFile>
#include <QStringDecoder>

namespace PositionFile {

namespace {

constexpr int LineCount = 6;
// Six lines of numbers are a few dozen bytes; a head this long without six line breaks is not a
// position file and reads as short (a file that grows while it is read cannot hold us forever).
constexpr qsizetype MaxHeadSize = 16 * 1024 * 1024;

// The first six lines and nothing after them: the rest is ignored anyway, so a huge file costs
// no more than its head and bytes after the sixth line cannot make the file unreadable.
QByteArray readHead(QIODevice &device)
{
    QByteArray data;
    qsizetype breaks = 0;
    while (breaks < LineCount && data.size() < MaxHeadSize) {
        const QByteArray chunk = device.read(64 * 1024);
        if (chunk.isEmpty())
            break;
        breaks += chunk.count('\n');
        data += chunk;
    }
    qsizetype end = -1;
    for (int i = 0; i < LineCount; ++i) {
        end = data.indexOf('\n', end + 1);
        if (end < 0)
            return data;
    }
    data.truncate(end);
    return data;
}

} // namespace

std::optional<PositionRect> parse(const QString &text)
{
    QString clean = text;
    clean.remove(QLatin1Char('\r'));
    const QList<QStringView> lines = QStringView(clean).split(QLatin1Char('\n'));
    if (lines.size() < LineCount)
        return std::nullopt;
    PositionRect rect;
    rect.setLeft(NumberText::floatValue(lines.at(0)));
    rect.setTop(NumberText::floatValue(lines.at(1)));
    rect.setRight(NumberText::floatValue(lines.at(2)));
    rect.setBottom(NumberText::floatValue(lines.at(3)));
    rect.setTransparency(NumberText::floatValue(lines.at(4)));
    rect.setLayer(NumberText::intValue(lines.at(5)));
    return rect;
}

std::optional<PositionRect> read(const QString &path, FileOps::ReadLinks links)
{
    QFile file;
    if (!FileOps::openForReading(&file, path, links))
        return std::nullopt;
    return read(file);
}

std::optional<PositionRect> read(QIODevice &device)
{
    // Text that is not UTF-8 cannot be read, which counts as a short file.
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(readHead(device));
    if (decode.hasError())
        return std::nullopt;
    return parse(text);
}

} // namespace PositionFile
