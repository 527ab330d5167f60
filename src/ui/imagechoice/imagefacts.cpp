// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "imagefacts.h"

#include "canvasimage.h"
#include "fileops.h"
#include "localisation.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace ImageFacts {

namespace {

QString localised(const char *key)
{
    const QString text = QString::fromUtf8(key);
    return loadAppString(text, text);
}

} // namespace

Facts read(const QString &path, qreal pixelRatio)
{
    Facts facts;
    if (path.isEmpty())
        return facts;
    // A dangling link is there but reads as nothing: not a missing file.
    if (!QFileInfo::exists(path) && !QFileInfo(path).isSymLink()) {
        facts.state = State::Missing;
        return facts;
    }
    facts.state = State::NotAnImage;
    QFile file;
    if (!FileOps::openForReading(&file, path, FileOps::ReadLinks::NoFollow))
        return facts;
    QImageReader reader(&file);
    if (!reader.size().isValid())
        return facts;
    const int side = qMax(1, qRound(thumbnailSide * qMax(pixelRatio, 1.0)));
    // A small image is shown as it is, never blown up; a turned one as it stands.
    facts.thumbnail = CanvasImage::readReduced(reader, side, &facts.size);
    if (facts.thumbnail.isNull())
        return Facts{State::NotAnImage, {}, {}};
    facts.thumbnail.setDevicePixelRatio(qMax(pixelRatio, 1.0));
    facts.state = State::Image;
    return facts;
}

QString text(const Facts &facts)
{
    switch (facts.state) {
    case State::NoFile:
        return QString();
    case State::Missing:
        return localised(QT_TRANSLATE_NOOP("PluginLocale", "The image file is missing."));
    case State::NotAnImage:
        return localised(
            QT_TRANSLATE_NOOP("PluginLocale", "This file is not an image that can be read."));
    case State::Image:
        return localised(QT_TRANSLATE_NOOP("PluginLocale", "%1 × %2 pixels"))
            .arg(facts.size.width())
            .arg(facts.size.height());
    }
    return QString();
}

} // namespace ImageFacts
