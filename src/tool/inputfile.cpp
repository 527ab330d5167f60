// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "inputfile.h"

#include "fileops.h"
#include "standardstreams.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace InputFile {

bool isStandardInput(const QString &path)
{
    return path == QLatin1String("-");
}

QString displayName(const QString &path)
{
    return isStandardInput(path) ? QStringLiteral("standard input") : path;
}

namespace {

QString systemReason(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

// Standard input as it is: a pipe, a file, or what the shell made of "<&-" and "< folder".
QString readStandardInput(QByteArray *bytes)
{
    if (StandardStreams::wasClosed(StandardStreams::Input))
        return QStringLiteral("cannot read standard input: it is closed (%1)")
            .arg(systemReason(EBADF));
    bytes->clear();
    char buffer[65536];
    for (;;) {
        errno = 0;
        const size_t got = std::fread(buffer, 1, sizeof buffer, stdin);
        bytes->append(buffer, qsizetype(got));
        if (got == sizeof buffer)
            continue;
        if (std::ferror(stdin))
            return QStringLiteral("cannot read standard input: %1")
                .arg(systemReason(errno != 0 ? errno : EIO));
        return QString();
    }
}

QString open(const QString &path, QFile *file)
{
    if (!FileOps::exists(path))
        return QStringLiteral("no file at %1").arg(path);
    if (QFileInfo(path).isDir())
        return QStringLiteral("%1 is a folder, not a file").arg(path);
    if (!FileOps::isRegularFile(path, FileOps::ReadLinks::Follow))
        return QStringLiteral("%1 is not a regular file").arg(path);
    errno = 0;
    if (!FileOps::openForReading(file, path, FileOps::ReadLinks::Follow))
        return QStringLiteral("cannot read %1: %2").arg(path, systemReason(errno != 0 ? errno : EIO));
    return QString();
}

} // namespace

QString readAll(const QString &path, QByteArray *bytes)
{
    if (isStandardInput(path))
        return readStandardInput(bytes);
    QFile file;
    if (const QString why = open(path, &file); !why.isNull())
        return why;
    *bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
    return QString();
}

} // namespace InputFile
