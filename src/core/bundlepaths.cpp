#include "bundlepaths.h"

#include "fileops.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>

namespace BundlePaths {

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
    if (!FileOps::exists(path))
        return QStringLiteral("quillamy");
    QByteArray bytes;
    if (!FileOps::readAll(path, &bytes))
        return std::nullopt;
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(bytes);
    if (decode.hasError())
        return std::nullopt;
    return text;
}

} // namespace BundlePaths
