// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "bundlepaths.h"

#include "fileops.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>

namespace BundlePaths {

namespace {

// The id becomes one folder name, in the save path and in the temporary folder: a separator or
// a NUL would lead into another folder, "." and ".." name one that is not its own (".." would
// put temporary files beside the temporary folder).
bool isOneFolderName(const QString &id)
{
    if (id == QLatin1String(".") || id == QLatin1String(".."))
        return false;
    return !id.contains(QLatin1Char('/')) && !id.contains(QLatin1Char('\\')) &&
           !id.contains(QChar(u'\0'));
}

} // namespace

QString mainBundlePath()
{
    // Without an application object there is no executable path to ask for.
    const QString exeDir =
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QDir::currentPath();
    const QDir dir(exeDir);
    QDir up(exeDir);
    if (up.cdUp() && up.dirName() == QLatin1String("Contents") && up.cdUp())
        return up.absolutePath();
    return dir.absolutePath();
}

QString resourcePath(const QString &bundlePath)
{
    return bundlePath + QLatin1String("/Contents/Resources");
}

QString resourceDirFor(const QString &bundlePath)
{
    if (FileOps::exists(bundlePath))
        return resourcePath(bundlePath);
    return resourcePath(mainBundlePath());
}

QString problemWith(const QString &bundlePath)
{
    if (bundlePath.isEmpty())
        return QStringLiteral("no bundle path was given");
    const QFileInfo bundle(bundlePath);
    if (!bundle.exists())
        return QStringLiteral("%1 does not exist; expected the bundle folder (img.bundle)")
            .arg(bundlePath);
    if (!bundle.isDir())
        return QStringLiteral("%1 is a file; expected the bundle folder (img.bundle)").arg(bundlePath);
    // Inside the bundle: Contents/<binary folder> or Contents/Resources given by mistake.
    const QDir contents = bundle.absoluteDir();
    if (contents.dirName() == QLatin1String("Contents")
        && QFileInfo::exists(contents.filePath(QStringLiteral("Resources")))) {
        QDir up = contents;
        up.cdUp();
        return QStringLiteral("%1 is a folder inside a bundle; expected the bundle folder itself: %2")
            .arg(bundlePath, up.absolutePath());
    }
    const QString resources = resourcePath(bundlePath);
    if (!QFileInfo(resources).isDir())
        return QStringLiteral("%1 has no Contents/Resources folder; expected the bundle folder "
                              "(img.bundle)")
            .arg(bundlePath);
    const QString description = resources + QLatin1String("/en.lproj/PluginSettingsDelegate.ui");
    if (!QFileInfo(description).isFile())
        return QStringLiteral("%1 has no window description; expected %2").arg(bundlePath, description);
    const QString page = resources + QLatin1String("/html/index.html");
    if (!QFileInfo(page).isFile())
        return QStringLiteral("%1 has no preview page; expected %2").arg(bundlePath, page);
    return QString();
}

std::optional<QString> readProductId(const QString &resourceDir)
{
    const QString path = resourceDir + QLatin1String("/product.id");
    // A packager may link the file. Anything but a regular file at the end (a FIFO, device,
    // folder or dangling link) is never opened and counts as no file at all.
    if (!FileOps::isRegularFile(path, FileOps::ReadLinks::Follow))
        return QStringLiteral("quillamy");
    QByteArray bytes;
    if (!FileOps::readAll(path, &bytes, FileOps::ReadLinks::Follow))
        return std::nullopt;
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(bytes);
    if (decode.hasError() || !isOneFolderName(text))
        return std::nullopt;
    return text;
}

} // namespace BundlePaths
