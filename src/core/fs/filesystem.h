// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>

class QFile;

// The one seam between the bundle and the operating system's file interface. Everything above
// it (the workspace's saves, the backup, the recovery of a dead window's backup, the command line
// tool) speaks in these types; exactly one implementation is built:
//   filesystem_posix.cpp     Linux and the BSDs, with the macOS calls beside the POSIX ones they
//                            replace (F_FULLFSYNC, renamex_np, clonefile, st_*timespec);
//   filesystem_portable.cpp  std::filesystem and Qt, for a system without a layer of its own
//                            (and on Linux with IMG_PORTABLE_FS=ON, so that it stays tested).
// capabilities() says what the built layer gives; docs/porting.md says what the portable one
// gives up.
namespace Fs {

// A path in the file system's own encoding (QFile::encodeName). Names found in a folder stay
// bytes, so that names which are not valid UTF-8 are copied and removed as they are; decode()
// is for text shown or compared, and may lose such a name.
using NativePath = QByteArray;
NativePath encode(const QString &path);
QString decode(const NativePath &path);

enum class Kind : std::uint8_t { File, Folder, Link, Fifo, Socket, CharDevice, BlockDevice, Other };

// What the system says about one entry without opening it. Times are nanoseconds since 1970;
// a layer that cannot tell an owner, a device or an access time leaves them 0.
struct Entry
{
    Kind kind = Kind::Other;
    std::uint32_t permissions = 0; // the 07777 bits
    std::int64_t size = 0;         // of a link: its target text's length
    std::int64_t accessedNs = 0;
    std::int64_t modifiedNs = 0;
    std::int64_t changedNs = 0; // the entry's own change (rename, chmod, write)
    std::uint32_t owner = 0;
    std::uint32_t group = 0;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t specialDevice = 0; // what a device file stands for

    bool isFile() const { return kind == Kind::File; }
    bool isFolder() const { return kind == Kind::Folder; }
    bool isLink() const { return kind == Kind::Link; }
    bool isSpecial() const { return kind != Kind::File && kind != Kind::Folder && !isLink(); }
};

// Whether a call looks at a symbolic link itself or at what it leads to. In the workspace a link
// is data, never a path to follow; a file of the bundle may be a packager's link to the real one.
enum class Links { NoFollow, Follow };

// What the built layer can do; tests skip what their system lacks.
enum class Capability {
    SpecialFiles,   // FIFOs, sockets and devices are recreated by a copy
    Owners,         // owners are told and kept
    AccessTimes,    // access times are kept by a copy
    LinkTimes,      // a link's own times are kept by a copy
    AtomicExchange, // two entries swap places in one step
    ProcessIds,     // another process's id tells whether it still runs
    DriveFlush,     // a flush reaches the drive, not only the system's cache
    ByteNames,      // a name that is not valid UTF-8 is written as the bytes it is
    ChangeTimes,    // an entry's own change time is told to the nanosecond
};
bool supports(Capability capability);

// Why the last call on this thread failed, as far as callers need to tell.
enum class Failure { None, Missing, Exists, NoSpace, Other };
Failure lastFailure();
// The system's own words for the last failure on this thread.
QString lastFailureText();

// The entry at path; false when nothing is there or it cannot be looked at.
bool entryAt(const NativePath &path, Entry *entry, Links links = Links::NoFollow);

// Appends the names in the folder at path, without "." and "..", in the file system's order.
bool listFolder(const NativePath &path, QList<QByteArray> *names);

enum class CopyResult {
    Done,
    Absent,      // nothing at the source (it vanished; not an error for a live tree)
    NotCopyable, // a special file the system will not let us recreate; the entry is left alone
    Failed,      // the target could not be written (disk full, no access): the copy is not exact
};
// Copies the single entry at from (as entry describes it) to to, which must not exist. A folder
// is made empty and private (applyMetadata gives it its own once its contents are in); a regular
// file is cloned where the file system offers it, with its bytes, mode, times and (for root)
// owner; a link as a link with its target text; a special file as the same kind where allowed.
// Special files are never opened, links never followed; nothing is flushed.
CopyResult copyEntry(const NativePath &from, const NativePath &to, const Entry &entry);

// Gives the entry at path (never a link's target) the mode, times and (for root) owner of entry.
bool applyMetadata(const NativePath &path, const Entry &entry);
// Adds the owner's read, write and search bits to a folder, so that it can be emptied.
bool openUpFolder(const NativePath &path, const Entry &entry);

// Makes a new private folder (mode 0700); false when anything, a link included, is at path.
bool makePrivateFolder(const NativePath &path);
// Removes a file, link or special file (never what a link leads to) or an empty folder.
bool removeFile(const NativePath &path);
bool removeEmptyFolder(const NativePath &path);

// Renames from to to, replacing an entry at to (a folder only when it is empty).
bool rename(const NativePath &from, const NativePath &to);
// Renames from to to only when nothing is at to; the check and the rename are one step where
// the system can do it.
bool renameNoReplace(const NativePath &from, const NativePath &to);
// Swaps the entries at a and b in one step; false (Failure::Other) where the system cannot.
bool exchange(const NativePath &a, const NativePath &b);

// Flushes the folder's entry list, so that a rename inside it survives a power cut.
void syncFolder(const NativePath &path);
// True when both paths lie on one file system (a rename between them works).
bool sameFileSystem(const NativePath &a, const NativePath &b);

// Creates the file at path, which must not exist (a link there included), with data, the
// permissions given (permissions < 0: the system's default for a new file) and flushed to the
// drive when flush is set. On failure nothing is left at path.
bool writeNewFile(const NativePath &path, const QByteArray &data, int permissions, bool flush);
// Writes data over the regular file at path, or creates it, never through a link.
bool overwriteFile(const NativePath &path, const QByteArray &data, bool flush);

// Opens file read-only on path when it is a regular file (with Follow, also a link that ends at
// one), without ever waiting: FIFOs, sockets, devices and folders are refused, also when one is
// swapped in between the look and the opening. False (file left closed) for anything else.
bool openForReading(QFile *file, const NativePath &path, Links links = Links::NoFollow);

// True when the process runs with the rights to give files away (root on POSIX).
bool isPrivileged();
// The id of the user this process runs as; 0 where the layer cannot tell owners.
std::uint32_t currentUser();
// This process's id, and whether the process with that id still runs (true where unknown).
std::int64_t processId();
bool processRuns(std::int64_t pid);

// Lets the calling thread give way to everything else of the process (background copies).
void lowerThreadPriority();

} // namespace Fs
