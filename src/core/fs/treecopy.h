// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QList>

#include <functional>
#include <sys/stat.h>

// Exact copies and removals of file trees, entry by entry, for the workspace backup. An entry is
// copied as what it is: a regular file with its bytes, mode and times; a folder with its mode and
// times; a symbolic link as a link with its target text, never followed; a FIFO, socket or device
// recreated as the same kind where the system allows. Special files are never opened, links never
// followed, and nothing is written outside the target given. Paths are in the file system's own
// encoding (QFile::encodeName), so that names which are not valid UTF-8 survive the round trip.
namespace TreeCopy {

enum class Result {
    Done,
    Absent,      // nothing at the source (it vanished; not an error for a live tree)
    NotCopyable, // a special file the system will not let us recreate; the entry is left alone
    Failed,      // the target could not be written (disk full, no access): the copy is not exact
};

// Writes all of data to the descriptor, again after interruptions; false on an error (a full
// disk among them).
bool writeAll(int fd, const char *data, qint64 size);

// Appends the names in the folder at path, without "." and "..", in the file system's order;
// false (errno set) when it cannot be read.
bool listFolder(const QByteArray &path, QList<QByteArray> *names);

// The lstat() of path; false when nothing is there.
bool entryStat(const QByteArray &path, struct stat *st);

// Copies the single entry at from (as its lstat says it is) to to, which must not exist. A
// folder is created empty (its mode and times are set by applyFolderMetadata once its contents
// are in place). Regular files are cloned where the file system offers it, else copied in the
// kernel; nothing is synced.
Result copyEntry(const QByteArray &from, const QByteArray &to, const struct stat &st);

// Gives the folder at path the mode, times and (for root) owner of st; called after its
// contents are complete, as adding them changes its times.
bool applyFolderMetadata(const QByteArray &path, const struct stat &st);

// Copies the whole tree at from to to (which must not exist), exactly; progress is called with
// the number of entries copied so far. Failed on the first entry that cannot be written; the
// half-made target is then left for the caller to remove.
using Progress = std::function<void(qint64 done)>;
Result copyTree(const QByteArray &from, const QByteArray &to, const Progress &progress = {});

// Removes the entry at path and, for a real folder, everything in it; links are removed, never
// followed. True when nothing is left at path.
bool removeTree(const QByteArray &path);

// Swaps the entries at a and b in one step where the system can (both on one file system).
bool exchange(const QByteArray &a, const QByteArray &b);

// Flushes the folder's entry list, so that a rename inside it survives a power cut.
void syncFolder(const QByteArray &path);

// True when both paths lie on the same file system (a rename between them works).
bool sameFileSystem(const QByteArray &a, const QByteArray &b);

} // namespace TreeCopy
