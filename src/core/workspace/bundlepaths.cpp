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
