// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "log.h"

#include "fileops.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QString>
#include <algorithm>
#include <cstdarg>

namespace {

constexpr qint64 MaxLogSize = 4 * 1024 * 1024;
constexpr int MaxBackups = 30;

QString logFolder()
{
    return QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                           QLatin1String("/Kelvara/bundle"));
}

QString formatted(const char *format, va_list args)
{
    return QString::vasprintf(format, args);
}

// The message goes out through "%s", so a '%' in it is not interpreted a second time.
void toConsole(const char *prefix, const char *format, va_list args)
{
    const QString message = format ? formatted(format, args) : QStringLiteral("nil");
    qWarning("%s", qUtf8Printable(QLatin1String(prefix) + message));
}

void createEmpty(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly); // fails quietly when the log folder is missing
}

// Keeps at most MaxBackups ".txt" files (any case, at any depth) below the backup folder by
// deleting the one that sorts first, which is the oldest because the names are time stamps.
void pruneBackups(const QString &backupFolder)
{
    QStringList backups;
    for (const QString &rel : FileOps::subpaths(backupFolder)) {
        if (QFileInfo(rel).suffix().toUpper() == QLatin1String("TXT"))
            backups.append(rel);
    }
    if (backups.size() <= MaxBackups)
        return;
    std::sort(backups.begin(), backups.end(), [](const QString &a, const QString &b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
    FileOps::removeItem(backupFolder + QLatin1Char('/') + backups.first());
}

// Moves an oversized log into backupLog/<stamp>.txt and starts it afresh.
void rotate(const QString &folder, const QString &logPath, const QDateTime &now)
{
    const QString backupFolder = folder + QLatin1String("/backupLog");
    const QString backupPath = backupFolder + QLatin1Char('/') +
                               now.toString(QStringLiteral("yyyyMMdd_HHmmss")) +
                               QLatin1String(".txt");
    if (!FileOps::exists(backupFolder))
        QDir().mkpath(backupFolder);
    // Two rotations in one second lose the first log's lines: the copy fails, the log is
    // restarted all the same. Accepted, as rotations are megabytes apart.
    QFile::copy(logPath, backupPath);
    QFile::remove(logPath);
    createEmpty(logPath);
    pruneBackups(backupFolder);
}

} // namespace

void logSave(const char *format, ...)
{
    const QString folder = logFolder();
    const QString logPath = folder + QLatin1String("/Log.txt");
    const QDateTime now = QDateTime::currentDateTime();
    QByteArray contents;
    if (FileOps::exists(logPath)) {
        // The log is no file of the workspace: a link to it is followed (to a regular file only).
        FileOps::readAll(logPath, &contents, FileOps::ReadLinks::Follow);
        if (contents.size() > MaxLogSize) {
            rotate(folder, logPath, now);
            contents.clear();
        }
    } else {
        createEmpty(logPath);
    }
    if (!format)
        return;
    va_list args;
    va_start(args, format);
    const QString message = formatted(format, args);
    va_end(args);
    // "{bundle}" is a literal part of every line.
    QString line =
        now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QLatin1String("{bundle}:") + message;
    if (!contents.isEmpty())
        line.prepend(QLatin1Char('\n'));
    contents += line.toUtf8();
    FileOps::writeAtomically(logPath, contents);
}

void logError(const char *format, ...)
{
    va_list args;
    va_start(args, format);
    toConsole("Error:", format, args);
    va_end(args);
}

void logWarn(const char *format, ...)
{
    va_list args;
    va_start(args, format);
    toConsole("Warn:", format, args);
    va_end(args);
}

void logDebug(const char *, ...)
{}
