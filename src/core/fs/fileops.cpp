// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "fileops.h"

#include "filesystem.h"
#include "treecopy.h"
#include "writeguard.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

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

// Writes data into a new hidden sibling of the bundle's own, named after the file it replaces
// and marked, so that the ones an interrupted save leaves can be told from the author's files
// and removed.
bool writeTemporary(const Fs::NativePath &folder, const QByteArray &name, const QByteArray &data,
                    int permissions, Fs::NativePath *temp)
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
        WriteGuard::aboutToChange(Fs::decode(*temp));
        if (Fs::writeNewFile(*temp, data, permissions, true))
            return true;
        if (Fs::lastFailure() != Fs::Failure::Exists)
            return false;
    }
    return false;
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
    return !path.isEmpty() && TreeCopy::exists(Fs::encode(path));
}

bool isDir(const QString &path)
{
    // Asked on every save: one look, which follows a link to a folder as QFileInfo does.
    Fs::Entry entry;
    return Fs::entryAt(Fs::encode(path), &entry, Fs::Links::Follow) && entry.isFolder();
}

bool removeItem(const QString &path)
{
    if (!exists(path))
        return false;
    WriteGuard::aboutToChange(path);
    return TreeCopy::removeTree(Fs::encode(path));
}

bool renameItem(const QString &from, const QString &to)
{
    if (!exists(from) || exists(to))
        return false;
    WriteGuard::aboutToChange(from);
    WriteGuard::aboutToChange(to);
    return Fs::rename(Fs::encode(from), Fs::encode(to));
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
    Fs::Entry entry;
    return Fs::entryAt(Fs::encode(path), &entry, links) && entry.isFile();
}

bool openForReading(QFile *file, const QString &path, ReadLinks links)
{
    return !path.isEmpty() && Fs::openForReading(file, Fs::encode(path), links);
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
    const Fs::NativePath folder = Fs::encode(info.path());
    const Fs::NativePath target = Fs::encode(path);
    // A regular file that is replaced keeps its permissions; a link or anything else at the
    // target is replaced by the rename itself, never written through.
    Fs::Entry old;
    const int permissions = Fs::entryAt(target, &old) && old.isFile() ? int(old.permissions) : -1;
    Fs::NativePath temp;
    if (!writeTemporary(folder, Fs::encode(info.fileName()), data, permissions, &temp))
        return false;
    if (!Fs::rename(temp, target)) {
        Fs::removeFile(temp);
        return false;
    }
    Fs::syncFolder(folder);
    return true;
}

} // namespace FileOps
