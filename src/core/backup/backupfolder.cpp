// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "backupfolder.h"

#include "treecopy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace BackupFolder {

namespace {

constexpr qint64 MaxMarkSize = 1024 * 1024;

} // namespace

QByteArray nativeAbsolute(const QString &path)
{
    return QFile::encodeName(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
}

bool writeMark(const QByteArray &path, const QByteArray &data, bool flush)
{
    const int fd =
        ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    const bool ok =
        TreeCopy::writeAll(fd, data.constData(), data.size()) && (!flush || fdatasync(fd) == 0);
    return ::close(fd) == 0 && ok;
}

QByteArray readMark(const QByteArray &path)
{
    const int fd = ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return {};
    struct stat st;
    QByteArray data;
    if (fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size < MaxMarkSize) {
        data.resize(st.st_size);
        const ssize_t n = ::read(fd, data.data(), size_t(data.size()));
        data.resize(n < 0 ? 0 : n);
    }
    ::close(fd);
    return data;
}

} // namespace BackupFolder
