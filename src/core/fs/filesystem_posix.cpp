// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The POSIX layer. Linux extras (FICLONE, copy_file_range, renameat2) are guarded and fall back
// to the plain calls; the macOS calls stand beside the POSIX ones they replace, from the system's
// documented interfaces (fcntl(2) F_FULLFSYNC, rename(2) renamex_np, clonefile(2), stat(2)).

#include "filesystem.h"

#include <QFile>
#include <QLoggingCategory>

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>
#include <vector>

#ifdef __linux__
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#endif

#ifdef __APPLE__
#include <stdio.h>
#include <sys/clonefile.h>
#endif

Q_LOGGING_CATEGORY(lcFs, "img.fs", QtWarningMsg)

namespace Fs {

namespace {

constexpr size_t CopyChunk = 1 << 20;

// Runs a system call again while a signal interrupts it.
template<typename Call> auto retrying(Call call)
{
    decltype(call()) n;
    do {
        n = call();
    } while (n < 0 && errno == EINTR);
    return n;
}

int closeOnce(int fd)
{
    // Linux frees the descriptor even when close() is interrupted; retrying would close another.
    return ::close(fd);
}

// The three times of a stat, named differently on macOS.
#ifdef __APPLE__
const struct timespec &accessTime(const struct stat &st)
{
    return st.st_atimespec;
}
const struct timespec &modifyTime(const struct stat &st)
{
    return st.st_mtimespec;
}
const struct timespec &changeTime(const struct stat &st)
{
    return st.st_ctimespec;
}
#else
const struct timespec &accessTime(const struct stat &st)
{
    return st.st_atim;
}
const struct timespec &modifyTime(const struct stat &st)
{
    return st.st_mtim;
}
const struct timespec &changeTime(const struct stat &st)
{
    return st.st_ctim;
}
#endif

std::int64_t nanoseconds(const struct timespec &t)
{
    return std::int64_t(t.tv_sec) * 1'000'000'000 + t.tv_nsec;
}

struct timespec timespecOf(std::int64_t ns)
{
    struct timespec t;
    t.tv_sec = time_t(ns / 1'000'000'000);
    t.tv_nsec = long(ns % 1'000'000'000);
    if (t.tv_nsec < 0) {
        t.tv_sec -= 1;
        t.tv_nsec += 1'000'000'000;
    }
    return t;
}

Kind kindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return Kind::File;
    if (S_ISDIR(mode))
        return Kind::Folder;
    if (S_ISLNK(mode))
        return Kind::Link;
    if (S_ISFIFO(mode))
        return Kind::Fifo;
    if (S_ISSOCK(mode))
        return Kind::Socket;
    if (S_ISCHR(mode))
        return Kind::CharDevice;
    if (S_ISBLK(mode))
        return Kind::BlockDevice;
    return Kind::Other;
}

Entry entryOf(const struct stat &st)
{
    Entry e;
    e.kind = kindOf(st.st_mode);
    e.permissions = std::uint32_t(st.st_mode & 07777);
    e.size = std::int64_t(st.st_size);
    e.accessedNs = nanoseconds(accessTime(st));
    e.modifiedNs = nanoseconds(modifyTime(st));
    e.changedNs = nanoseconds(changeTime(st));
    e.owner = std::uint32_t(st.st_uid);
    e.group = std::uint32_t(st.st_gid);
    e.device = std::uint64_t(st.st_dev);
    e.inode = std::uint64_t(st.st_ino);
    e.specialDevice = std::uint64_t(st.st_rdev);
    return e;
}

bool writeAll(int fd, const char *data, qint64 size)
{
    while (size > 0) {
        const ssize_t n = retrying([&] { return ::write(fd, data, size_t(size)); });
        if (n <= 0)
            return false;
        data += n;
        size -= n;
    }
    return true;
}

// Flushes the file's data and entry to the drive.
bool flushToDrive(int fd)
{
#ifdef __APPLE__
    // fsync() hands the data only to the drive's cache there; F_FULLFSYNC asks the drive to write
    // it out. File systems that refuse it (network shares) get the plain fsync().
    if (::fcntl(fd, F_FULLFSYNC) == 0)
        return true;
#endif
    return ::fsync(fd) == 0;
}

// Flushes the file's data, without its times, where the system can tell the two apart.
bool flushDataToDrive(int fd)
{
#if defined(__APPLE__)
    return flushToDrive(fd);
#elif defined(_POSIX_SYNCHRONIZED_IO) && _POSIX_SYNCHRONIZED_IO > 0
    return ::fdatasync(fd) == 0;
#else
    return ::fsync(fd) == 0;
#endif
}

bool setTimes(const NativePath &path, const Entry &entry)
{
    const struct timespec times[2] = {timespecOf(entry.accessedNs), timespecOf(entry.modifiedNs)};
    return ::utimensat(AT_FDCWD, path.constData(), times, AT_SYMLINK_NOFOLLOW) == 0;
}

// The file system's own copy: a clone where it shares blocks, else a copy in the kernel; false
// with errno when neither works, so that the caller falls back to read and write.
bool kernelCopy(int in, int out)
{
#ifdef __linux__
    if (::ioctl(out, FICLONE, in) == 0)
        return true;
    ssize_t n;
    while ((n = retrying(
                [&] { return copy_file_range(in, nullptr, out, nullptr, CopyChunk, 0); })) > 0) {
    }
    return n == 0;
#else
    Q_UNUSED(in)
    Q_UNUSED(out)
    errno = ENOSYS;
    return false;
#endif
}

bool plainCopy(int in, int out)
{
    if (::lseek(in, 0, SEEK_SET) < 0 || ::ftruncate(out, 0) != 0 || ::lseek(out, 0, SEEK_SET) < 0)
        return false;
    std::vector<char> buffer(CopyChunk);
    ssize_t n;
    while ((n = retrying([&] { return ::read(in, buffer.data(), buffer.size()); })) > 0) {
        if (!writeAll(out, buffer.data(), n))
            return false;
    }
    return n == 0;
}

bool copyBytes(int in, int out)
{
    if (kernelCopy(in, out))
        return true;
    // Cross-device, unsupported or interrupted half-way: start over the plain way. A full disk
    // fails here too.
    return errno != ENOSPC && errno != EDQUOT && plainCopy(in, out);
}

#ifdef __APPLE__
// APFS clones a file with its mode, owner and times in one call; anything else falls back.
bool cloneWhole(const NativePath &from, const NativePath &to)
{
    return ::clonefile(from.constData(), to.constData(), CLONE_NOFOLLOW | CLONE_NOOWNERCOPY) == 0;
}
#endif

CopyResult copyRegular(const NativePath &from, const NativePath &to, const Entry &entry)
{
#ifdef __APPLE__
    if (cloneWhole(from, to))
        return !isPrivileged() || ::lchown(to.constData(), entry.owner, entry.group) == 0
                   ? CopyResult::Done
                   : CopyResult::Failed;
#else
    Q_UNUSED(entry)
#endif
    // Opened without following a link or waiting for a writer: what lstat called a file may have
    // been replaced by something else since.
    const int in = retrying([&] {
        return ::open(from.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    });
    if (in < 0)
        return errno == ENOENT ? CopyResult::Absent : CopyResult::Failed;
    struct stat st;
    if (::fstat(in, &st) != 0 || !S_ISREG(st.st_mode)) {
        closeOnce(in);
        return CopyResult::Failed;
    }
    const int out = retrying([&] {
        return ::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    });
    if (out < 0) {
        closeOnce(in);
        return CopyResult::Failed;
    }
    bool ok = copyBytes(in, out);
    if (ok && isPrivileged())
        ok = ::fchown(out, st.st_uid, st.st_gid) == 0;
    ok = ok && ::fchmod(out, st.st_mode & 07777) == 0;
    const struct timespec times[2] = {accessTime(st), modifyTime(st)};
    ok = ok && ::futimens(out, times) == 0;
    ok = closeOnce(out) == 0 && ok;
    const int saved = errno;
    closeOnce(in);
    if (!ok) {
        qCDebug(lcFs) << "cannot copy" << from << saved;
        ::unlink(to.constData());
        errno = saved;
        return CopyResult::Failed;
    }
    return CopyResult::Done;
}

bool readLink(const NativePath &path, qint64 sizeHint, QByteArray *target)
{
    QByteArray buffer(qMax<qint64>(sizeHint, 255) + 1, Qt::Uninitialized);
    for (;;) {
        const ssize_t n = ::readlink(path.constData(), buffer.data(), size_t(buffer.size()));
        if (n < 0)
            return false;
        if (n < buffer.size()) {
            *target = buffer.left(n);
            return true;
        }
        buffer.resize(buffer.size() * 2); // the link was changed to a longer one meanwhile
    }
}

CopyResult copyLink(const NativePath &from, const NativePath &to, const Entry &entry)
{
    QByteArray target;
    if (!readLink(from, entry.size, &target))
        return errno == ENOENT ? CopyResult::Absent : CopyResult::Failed;
    if (::symlink(target.constData(), to.constData()) != 0)
        return CopyResult::Failed;
    if (isPrivileged() && ::lchown(to.constData(), entry.owner, entry.group) != 0)
        return CopyResult::Failed;
    return setTimes(to, entry) ? CopyResult::Done : CopyResult::Failed;
}

mode_t typeBits(Kind kind)
{
    switch (kind) {
    case Kind::Socket:
        return S_IFSOCK;
    case Kind::CharDevice:
        return S_IFCHR;
    case Kind::BlockDevice:
        return S_IFBLK;
    default:
        return 0;
    }
}

CopyResult copySpecial(const NativePath &to, const Entry &entry)
{
    const int made = entry.kind == Kind::Fifo ? ::mkfifo(to.constData(), 0600)
                                              : ::mknod(to.constData(), typeBits(entry.kind) | 0600,
                                                        dev_t(entry.specialDevice));
    if (made != 0)
        return errno == EPERM || errno == EINVAL ? CopyResult::NotCopyable : CopyResult::Failed;
    if (isPrivileged() && ::lchown(to.constData(), entry.owner, entry.group) != 0)
        return CopyResult::Failed;
    if (::chmod(to.constData(), entry.permissions) != 0)
        return CopyResult::Failed;
    return setTimes(to, entry) ? CopyResult::Done : CopyResult::Failed;
}

} // namespace

bool supports(Capability capability)
{
    switch (capability) {
    case Capability::AtomicExchange:
#if (defined(__linux__) && defined(RENAME_EXCHANGE)) || defined(__APPLE__)
        return true;
#else
        return false;
#endif
    default:
        return true;
    }
}

Failure lastFailure()
{
    switch (errno) {
    case 0:
        return Failure::None;
    case ENOENT:
        return Failure::Missing;
    case EEXIST:
        return Failure::Exists;
    case ENOSPC:
    case EDQUOT:
        return Failure::NoSpace;
    default:
        return Failure::Other;
    }
}

QString lastFailureText()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool entryAt(const NativePath &path, Entry *entry, Links links)
{
    if (path.isEmpty()) {
        errno = ENOENT;
        return false;
    }
    struct stat st;
    const int result =
        links == Links::Follow ? ::stat(path.constData(), &st) : ::lstat(path.constData(), &st);
    if (result != 0)
        return false;
    *entry = entryOf(st);
    return true;
}

bool listFolder(const NativePath &path, QList<QByteArray> *names)
{
    DIR *dir = ::opendir(path.constData());
    if (!dir)
        return false;
    while (const dirent *item = ::readdir(dir)) {
        const QByteArray name(item->d_name);
        if (name != "." && name != "..")
            names->append(name);
    }
    ::closedir(dir);
    return true;
}

CopyResult copyEntry(const NativePath &from, const NativePath &to, const Entry &entry)
{
    switch (entry.kind) {
    case Kind::File:
        return copyRegular(from, to, entry);
    case Kind::Folder:
        return ::mkdir(to.constData(), 0700) == 0 ? CopyResult::Done : CopyResult::Failed;
    case Kind::Link:
        return copyLink(from, to, entry);
    default:
        return copySpecial(to, entry);
    }
}

bool applyMetadata(const NativePath &path, const Entry &entry)
{
    bool ok = true;
    if (isPrivileged())
        ok = ::lchown(path.constData(), entry.owner, entry.group) == 0;
    if (!entry.isLink())
        ok = ::chmod(path.constData(), entry.permissions) == 0 && ok;
    return setTimes(path, entry) && ok;
}

bool openUpFolder(const NativePath &path, const Entry &entry)
{
    if ((entry.permissions & S_IRWXU) == S_IRWXU)
        return true;
    return ::chmod(path.constData(), entry.permissions | S_IRWXU) == 0;
}

bool makePrivateFolder(const NativePath &path)
{
    // mkdir() fails on anything already there, a planted link included; the chmod undoes a
    // umask that would take the owner's own bits.
    return ::mkdir(path.constData(), 0700) == 0 && ::chmod(path.constData(), 0700) == 0;
}

bool removeFile(const NativePath &path)
{
    return ::unlink(path.constData()) == 0;
}

bool removeEmptyFolder(const NativePath &path)
{
    return ::rmdir(path.constData()) == 0;
}

bool rename(const NativePath &from, const NativePath &to)
{
    return ::rename(from.constData(), to.constData()) == 0;
}

bool renameNoReplace(const NativePath &from, const NativePath &to)
{
#if defined(__linux__) && defined(RENAME_NOREPLACE)
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
#elif defined(__APPLE__)
    if (::renamex_np(from.constData(), to.constData(), RENAME_EXCL) == 0)
        return true;
    if (errno != ENOTSUP)
        return false;
#endif
    // A file system without the exclusive rename: the look and the rename are two steps.
    struct stat st;
    if (::lstat(to.constData(), &st) == 0) {
        errno = EEXIST;
        return false;
    }
    return ::rename(from.constData(), to.constData()) == 0;
}

bool exchange(const NativePath &a, const NativePath &b)
{
#if defined(__linux__) && defined(RENAME_EXCHANGE)
    return ::renameat2(AT_FDCWD, a.constData(), AT_FDCWD, b.constData(), RENAME_EXCHANGE) == 0;
#elif defined(__APPLE__)
    return ::renamex_np(a.constData(), b.constData(), RENAME_SWAP) == 0;
#else
    Q_UNUSED(a)
    Q_UNUSED(b)
    errno = ENOSYS;
    return false;
#endif
}

void syncFolder(const NativePath &path)
{
    const int fd =
        retrying([&] { return ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (fd < 0)
        return;
    flushToDrive(fd);
    closeOnce(fd);
}

bool sameFileSystem(const NativePath &a, const NativePath &b)
{
    struct stat sa;
    struct stat sb;
    return ::stat(a.constData(), &sa) == 0 && ::stat(b.constData(), &sb) == 0 &&
           sa.st_dev == sb.st_dev;
}

bool writeNewFile(const NativePath &path, const QByteArray &data, int permissions, bool flush)
{
    const mode_t mode = permissions < 0 ? 0666 : mode_t(permissions);
    const int fd = retrying([&] {
        return ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    });
    if (fd < 0)
        return false;
    bool ok = writeAll(fd, data.constData(), data.size());
    // The mode given at creation passes through the umask; an explicit one is set as it is.
    if (ok && permissions >= 0)
        ok = ::fchmod(fd, mode) == 0;
    ok = ok && (!flush || flushToDrive(fd));
    ok = closeOnce(fd) == 0 && ok;
    if (!ok) {
        const int saved = errno;
        ::unlink(path.constData());
        errno = saved;
    }
    return ok;
}

bool overwriteFile(const NativePath &path, const QByteArray &data, bool flush)
{
    const int fd = retrying([&] {
        return ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC,
                      0600);
    });
    if (fd < 0)
        return false;
    const bool ok = writeAll(fd, data.constData(), data.size()) && (!flush || flushDataToDrive(fd));
    return closeOnce(fd) == 0 && ok;
}

bool openForReading(QFile *file, const NativePath &path, Links links)
{
    // Nothing but a regular file is opened at all: opening some devices has effects of their own.
    Entry entry;
    if (!entryAt(path, &entry, links) || !entry.isFile())
        return false;
    // O_NONBLOCK keeps open() from waiting for a FIFO's writer and is harmless for a regular
    // file; O_NOFOLLOW refuses a link in the last place only, so a workspace reached through a
    // linked folder still reads.
    int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    if (links == Links::NoFollow)
        flags |= O_NOFOLLOW;
    const int fd = retrying([&] { return ::open(path.constData(), flags); });
    if (fd < 0)
        return false;
    struct stat st;
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        closeOnce(fd);
        return false;
    }
    if (file->open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return true;
    closeOnce(fd);
    return false;
}

bool isPrivileged()
{
    return ::geteuid() == 0;
}

std::uint32_t currentUser()
{
    return std::uint32_t(::geteuid());
}

std::int64_t processId()
{
    return std::int64_t(::getpid());
}

bool processRuns(std::int64_t pid)
{
    // EPERM: it runs, as another user.
    return pid > 0 && (::kill(pid_t(pid), 0) == 0 || errno == EPERM);
}

void lowerThreadPriority()
{
#ifdef __linux__
    // Linux gives each thread its own nice value.
    ::setpriority(PRIO_PROCESS, id_t(::syscall(SYS_gettid)), 19);
#endif
}

} // namespace Fs
