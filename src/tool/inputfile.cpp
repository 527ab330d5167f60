#include "inputfile.h"

#include "fileops.h"

#include <QFile>
#include <QFileInfo>
#include <cstdio>

namespace InputFile {

bool isStandardInput(const QString &path)
{
    return path == QLatin1String("-");
}

QString displayName(const QString &path)
{
    return isStandardInput(path) ? QStringLiteral("standard input") : path;
}

QString open(const QString &path, QFile *file)
{
    if (isStandardInput(path)) {
        if (!file->open(stdin, QIODevice::ReadOnly))
            return QStringLiteral("cannot read standard input");
        return QString();
    }
    if (!FileOps::exists(path))
        return QStringLiteral("no file at %1").arg(path);
    if (QFileInfo(path).isDir())
        return QStringLiteral("%1 is a folder, not a file").arg(path);
    if (!FileOps::isRegularFile(path, FileOps::ReadLinks::Follow))
        return QStringLiteral("%1 is not a regular file").arg(path);
    if (!FileOps::openForReading(file, path, FileOps::ReadLinks::Follow))
        return QStringLiteral("cannot read %1").arg(path);
    return QString();
}

} // namespace InputFile
