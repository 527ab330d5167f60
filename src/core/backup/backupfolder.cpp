// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "backupfolder.h"

#include "filesystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace BackupFolder {

namespace {

constexpr qint64 MaxMarkSize = 1024 * 1024;

} // namespace

QByteArray nativeAbsolute(const QString &path)
{
    return Fs::encode(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
}

bool writeMark(const QByteArray &path, const QByteArray &data, bool flush)
{
    return Fs::overwriteFile(path, data, flush);
}

QByteArray readMark(const QByteArray &path)
{
    QFile file;
    if (!Fs::openForReading(&file, path) || file.size() >= MaxMarkSize)
        return {};
    return file.readAll();
}

} // namespace BackupFolder
