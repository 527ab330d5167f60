// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "filesystem.h"

#include <QString>
#include <QStringList>

class QFile;

// File-tree operations shared by the workspace, the logs and the backups. Like the rest of the
// core they never raise: a failure is a false result or an empty list.
namespace FileOps {

// Every path below folder, relative to it, recursively: folders and files, hidden ones included,
// each folder before its contents, siblings in name order. Symbolic links are listed but not
// followed. Empty when folder is not a folder.
QStringList subpaths(const QString &folder);

// True when a file, folder or (even dangling) symbolic link is at path.
bool exists(const QString &path);
// True when path is a folder or a link to one.
bool isDir(const QString &path);

// Removes whatever is at path: a file or link (never what it points to), or a folder with
// everything in it.
bool removeItem(const QString &path);

// Renames the entry at from to to, which must not exist yet; links are moved, never followed.
bool renameItem(const QString &from, const QString &to);

// Copies the regular file at from (a link there is followed to a regular file) to to, which must
// not exist yet, as writeAtomically does.
bool copyItem(const QString &from, const QString &to);

// What a reader does with a symbolic link at the path it reads (see Fs::Links).
using ReadLinks = Fs::Links;

// True when path is a regular file (with Follow, also a link that ends at one). FIFOs, sockets,
// devices and folders are not: opening a FIFO for reading waits for a writer, a device may never
// end, so readers treat all of them as missing.
bool isRegularFile(const QString &path, ReadLinks links = ReadLinks::NoFollow);

// Opens file read-only on path when it is a regular file, as isRegularFile tells, without ever
// waiting: the check is repeated on the opened descriptor, so a FIFO swapped in between is
// refused too. False (file left closed) for anything else.
bool openForReading(QFile *file, const QString &path, ReadLinks links = ReadLinks::NoFollow);

// Reads the whole file into data; false when it cannot be read (missing, not a regular file,
// no access), or is a link while links is NoFollow.
bool readAll(const QString &path, QByteArray *data, ReadLinks links = ReadLinks::NoFollow);

// Writes data to path atomically: into a hidden sibling ".<name>.imgsave-XXXXXX" whose data is
// flushed, renamed over path, then the folder flushed, so that after a crash or power cut path
// holds its old or its new content. A link at path is replaced, never written through (unlike
// QSaveFile, which writes to the link's target). Every change is announced to WriteGuard first.
// False when it could not be written; path is then as it was.
bool writeAtomically(const QString &path, const QByteArray &data);

} // namespace FileOps
