// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "imagedrop.h"

#include "fileops.h"
#include "localisation.h"
#include "workspacelayout.h"

#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeData>
#include <QUrl>

namespace ImageDrop {

namespace {

Verdict refused(Reason reason)
{
    Verdict verdict;
    verdict.reason = reason;
    return verdict;
}

// Whether the file's bytes begin as an image of the types the window takes, whatever its
// name says. A drag asks again at every move: the answer for the last file is kept while the
// file stays as it was.
bool readsAsImage(const QFileInfo &info)
{
    static QString lastPath;
    static QDateTime lastModified;
    static qint64 lastSize = -1;
    static bool lastAnswer = false;
    if (info.absoluteFilePath() == lastPath && info.lastModified() == lastModified &&
        info.size() == lastSize)
        return lastAnswer;
    QImageReader reader(info.absoluteFilePath());
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.canRead() ? reader.format() : QByteArray();
    lastPath = info.absoluteFilePath();
    lastModified = info.lastModified();
    lastSize = info.size();
    lastAnswer = WorkspaceLayout::isImageFormat(format);
    return lastAnswer;
}

Verdict localFile(const QString &path)
{
    const QFileInfo info(path);
    // A link to a folder is a folder to the author too.
    if (info.isDir())
        return refused(Reason::Folder);
    if (!imageTypes().contains(info.suffix().toLower()))
        return refused(Reason::NotAnImageType);
    // The copy into the workspace reads the file: a FIFO or device would never end.
    if (!FileOps::isRegularFile(path, FileOps::ReadLinks::Follow))
        return refused(Reason::Unreadable);
    if (!readsAsImage(info))
        return refused(Reason::NotAnImage);
    Verdict verdict;
    verdict.kind = Kind::ImageFile;
    verdict.reason = Reason::None;
    verdict.path = path;
    return verdict;
}

Verdict url(const QUrl &url)
{
    if (url.isLocalFile())
        return localFile(url.toLocalFile());
    const QString scheme = url.scheme().toLower();
    if (scheme.isEmpty())
        return refused(Reason::NotALink);
    if ((scheme != QLatin1String("http") && scheme != QLatin1String("https")) ||
        url.host().isEmpty())
        return refused(Reason::OtherLink);
    Verdict verdict;
    verdict.kind = Kind::Link;
    verdict.reason = Reason::None;
    verdict.link = url.toString(QUrl::FullyEncoded);
    return verdict;
}

QString localised(const char *key)
{
    const QString text = QString::fromUtf8(key);
    return loadAppString(text, text);
}

} // namespace

QStringList imageTypes()
{
    return WorkspaceLayout::imageSuffixes();
}

Verdict classifyText(const QString &text)
{
    const QString line = text.trimmed();
    if (line.isEmpty())
        return refused(Reason::Nothing);
    // A copied path, as some programs put a file on the clipboard; it may hold blanks.
    if (!line.contains(QLatin1Char('\n')) && QFileInfo(line).isAbsolute())
        return localFile(line);
    // One link only: a second line or a blank inside is a list or a sentence, not a link.
    if (line.contains(QLatin1Char('\n')) || line.contains(QLatin1Char(' ')))
        return refused(line.count(QLatin1String("://")) > 1 ? Reason::SeveralItems
                                                            : Reason::NotALink);
    const QUrl parsed(line, QUrl::StrictMode);
    if (!parsed.isValid())
        return refused(Reason::NotALink);
    return url(parsed);
}

Verdict classify(const QMimeData *data)
{
    if (!data)
        return refused(Reason::Nothing);
    if (data->hasUrls()) {
        const QList<QUrl> urls = data->urls();
        if (urls.size() > 1)
            return refused(Reason::SeveralItems);
        if (urls.size() == 1)
            return url(urls.first());
    }
    if (data->hasText())
        return classifyText(data->text());
    return refused(Reason::Nothing);
}

Verdict classifyFile(const QString &path)
{
    return localFile(path);
}

QString reasonText(Reason reason)
{
    switch (reason) {
    case Reason::None:
        return QString();
    case Reason::Nothing:
    case Reason::NotALink:
        return localised(QT_TRANSLATE_NOOP(
            "PluginLocale", "Only an image file or an http or https link can be dropped here."));
    case Reason::SeveralItems:
        return localised(
            QT_TRANSLATE_NOOP("PluginLocale", "Drop one image file or link at a time."));
    case Reason::Folder:
        return localised(
            QT_TRANSLATE_NOOP("PluginLocale", "A folder cannot be used: drop one image file."));
    case Reason::NotAnImageType:
        return localised(QT_TRANSLATE_NOOP(
            "PluginLocale", "Only JPEG, GIF and PNG image files (.jpg, .jpeg, .gif, .png) can be "
                            "used."));
    case Reason::Unreadable:
        return localised(QT_TRANSLATE_NOOP("PluginLocale", "This file cannot be read."));
    case Reason::NotAnImage:
        return localised(
            QT_TRANSLATE_NOOP("PluginLocale", "This file is not an image that can be read."));
    case Reason::OtherLink:
        return localised(
            QT_TRANSLATE_NOOP("PluginLocale", "Only http and https links can be used."));
    }
    return QString();
}

} // namespace ImageDrop
