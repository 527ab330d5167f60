// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "fileops.h"

#include "treecopy.h"
#include "writeguard.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace FileOps {

namespace {

constexpr qsizetype MaxTemporaryStem = 200;
constexpr int TemporaryTagLength = 6;
const char TemporaryMark[] = ".imgsave-";

void collect(const QString &root, const QString &prefix, QStringList *out)
{
    const QDir dir(prefix.isEmpty() ? root : root + QLatin1Char('/') + prefix);
    const QFileInfoList entries = dir.entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &entry : entries) {
        const QString rel =
            prefix.isEmpty() ? entry.fileName() : prefix + QLatin1Char('/') + entry.fileName();
        out->append(rel);
        // Links are listed as themselves; following them could loop or leave the tree.
        if (entry.isDir() && !entry.isSymLink())
            collect(root, rel, out);
    }
}

bool statIsRegular(const QByteArray &native, ReadLinks links)
{
    struct stat st;
    const int result = links == ReadLinks::Follow ? ::stat(native.constData(), &st)
                                                  : ::lstat(native.constData(), &st);
    return result == 0 && S_ISREG(st.st_mode);
}

// O_NONBLOCK keeps open() from waiting for a FIFO's writer and is harmless for a regular file;
// O_NOFOLLOW refuses a link in the last place only, so a workspace reached through a linked
// folder still reads.
int openRegular(const QString &path, ReadLinks links)
{
    const QByteArray native = QFile::encodeName(path);
    // Nothing but a regular file is opened at all: opening some devices has effects of its own.
    if (path.isEmpty() || !statIsRegular(native, links))
        return -1;
    int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    if (links == ReadLinks::NoFollow)
        flags |= O_NOFOLLOW;
    int fd = -1;
    do {
        fd = ::open(native.constData(), flags);
    } while (fd < 0 && errno == EINTR);
    if (fd < 0)
        return -1;
    struct stat st;
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return -1;
    }
    return fd;
}

// The bundle's own temporaries: hidden, named after the file they replace and marked, so that
// the ones an interrupted save leaves can be told from the author's files and removed.
int createTemporary(const QByteArray &folder, const QByteArray &name, QByteArray *temp)
{
    static const char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    // Long names are shortened so that the temporary's name still fits the file system.
    const QByteArray stem = name.left(MaxTemporaryStem);
    for (int attempt = 0; attempt < 100; ++attempt) {
        QByteArray tag(TemporaryTagLength, Qt::Uninitialized);
        for (char &c : tag)
            c = Alphabet[QRandomGenerator::global()->bounded(int(sizeof(Alphabet) - 1))];
        *temp = folder + "/." + stem + TemporaryMark + tag;
        // Announced like any new entry, so that a backup being taken never mistakes it for a
        // file the workspace had.
        WriteGuard::aboutToChange(QFile::decodeName(*temp));
        const int fd =
            ::open(temp->constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    return -1;
}

} // namespace

QStringList subpaths(const QString &folder)
{
    QStringList out;
    if (folder.isEmpty() || !isDir(folder))
        return out;
    collect(folder, QString(), &out);
    return out;
}

bool exists(const QString &path)
{
    if (path.isEmpty())
        return false;
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool isDir(const QString &path)
{
    // Asked on every save: one stat(), which follows a link to a folder as QFileInfo does.
    struct stat st;
    return !path.isEmpty() && ::stat(QFile::encodeName(path).constData(), &st) == 0 &&
           S_ISDIR(st.st_mode);
}

bool removeItem(const QString &path)
{
    if (!exists(path))
        return false;
    WriteGuard::aboutToChange(path);
    return TreeCopy::removeTree(QFile::encodeName(path));
}

bool renameItem(const QString &from, const QString &to)
{
    if (!exists(from) || exists(to))
        return false;
    WriteGuard::aboutToChange(from);
    WriteGuard::aboutToChange(to);
    return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

bool copyItem(const QString &from, const QString &to)
{
    if (exists(to))
        return false;
    QByteArray data;
    return readAll(from, &data, ReadLinks::Follow) && writeAtomically(to, data);
}

bool isRegularFile(const QString &path, ReadLinks links)
{
    return !path.isEmpty() && statIsRegular(QFile::encodeName(path), links);
}

bool openForReading(QFile *file, const QString &path, ReadLinks links)
{
    const int fd = openRegular(path, links);
    if (fd < 0)
        return false;
    if (file->open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return true;
    ::close(fd);
    return false;
}

bool readAll(const QString &path, QByteArray *data, ReadLinks links)
{
    QFile file;
    if (!openForReading(&file, path, links))
        return false;
    *data = file.readAll();
    return file.error() == QFileDevice::NoError;
}

bool writeAtomically(const QString &path, const QByteArray &data)
{
    if (path.isEmpty())
        return false;
    WriteGuard::aboutToChange(path);
    const QFileInfo info(path);
    const QByteArray folder = QFile::encodeName(info.path());
    const QByteArray target = QFile::encodeName(path);
    QByteArray temp;
    const int fd = createTemporary(folder, QFile::encodeName(info.fileName()), &temp);
    if (fd < 0)
        return false;
    // A regular file that is replaced keeps its permissions; a link or anything else at the
    // target is replaced by the rename itself, never written through.
    struct stat old;
    bool ok = TreeCopy::writeAll(fd, data.constData(), data.size());
    if (ok && ::lstat(target.constData(), &old) == 0 && S_ISREG(old.st_mode))
        ok = ::fchmod(fd, old.st_mode & 07777) == 0;
    ok = ok && ::fsync(fd) == 0;
    ok = ::close(fd) == 0 && ok;
    ok = ok && ::rename(temp.constData(), target.constData()) == 0;
    if (!ok) {
        ::unlink(temp.constData());
        return false;
    }
    TreeCopy::syncFolder(folder);
    return true;
}

} // namespace FileOps
