// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "treecopy.h"

#include <QList>
#include <QLoggingCategory>

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#ifdef __linux__
#include <linux/fs.h>
#include <sys/ioctl.h>
#endif

Q_LOGGING_CATEGORY(lcTreeCopy, "img.treecopy", QtWarningMsg)

namespace TreeCopy {

namespace {

constexpr size_t CopyChunk = 1 << 20;

bool isRoot()
{
    return geteuid() == 0;
}

QByteArray join(const QByteArray &folder, const QByteArray &name)
{
    return folder + '/' + name;
}

int retryClose(int fd)
{
    // Linux frees the descriptor even when close() is interrupted; retrying would close another.
    return ::close(fd);
}

bool setTimes(const QByteArray &path, const struct stat &st)
{
    const struct timespec times[2] = {st.st_atim, st.st_mtim};
    return utimensat(AT_FDCWD, path.constData(), times, AT_SYMLINK_NOFOLLOW) == 0;
}

// Runs a system call again while a signal interrupts it.
template<typename Call> ssize_t retrying(Call call)
{
    ssize_t n;
    do {
        n = call();
    } while (n < 0 && errno == EINTR);
    return n;
}

// The kernel's own copy (a clone where the file system shares blocks); false with errno when
// neither works, so that the caller falls back to read and write.
bool kernelCopy(int in, int out)
{
#ifdef __linux__
    if (ioctl(out, FICLONE, in) == 0)
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
    if (lseek(in, 0, SEEK_SET) < 0 || ftruncate(out, 0) != 0 || lseek(out, 0, SEEK_SET) < 0)
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

Result copyRegular(const QByteArray &from, const QByteArray &to)
{
    // Opened without following a link or waiting for a writer: what lstat called a file may have
    // been replaced by something else since.
    const int in =
        ::open(from.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (in < 0)
        return errno == ENOENT ? Result::Absent : Result::Failed;
    struct stat st;
    if (fstat(in, &st) != 0 || !S_ISREG(st.st_mode)) {
        retryClose(in);
        return Result::Failed;
    }
    const int out =
        ::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (out < 0) {
        retryClose(in);
        return Result::Failed;
    }
    bool ok = copyBytes(in, out);
    if (ok && isRoot())
        ok = fchown(out, st.st_uid, st.st_gid) == 0;
    ok = ok && fchmod(out, st.st_mode & 07777) == 0;
    const struct timespec times[2] = {st.st_atim, st.st_mtim};
    ok = ok && futimens(out, times) == 0;
    ok = retryClose(out) == 0 && ok;
    retryClose(in);
    if (!ok) {
        qCDebug(lcTreeCopy) << "cannot copy" << from << errno;
        ::unlink(to.constData());
        return Result::Failed;
    }
    return Result::Done;
}

bool readLink(const QByteArray &path, qint64 sizeHint, QByteArray *target)
{
    QByteArray buffer(qMax<qint64>(sizeHint, 255) + 1, Qt::Uninitialized);
    for (;;) {
        const ssize_t n = readlink(path.constData(), buffer.data(), size_t(buffer.size()));
        if (n < 0)
            return false;
        if (n < buffer.size()) {
            *target = buffer.left(n);
            return true;
        }
        buffer.resize(buffer.size() * 2); // the link was changed to a longer one meanwhile
    }
}

Result copyLink(const QByteArray &from, const QByteArray &to, const struct stat &st)
{
    QByteArray target;
    if (!readLink(from, st.st_size, &target))
        return errno == ENOENT ? Result::Absent : Result::Failed;
    if (symlink(target.constData(), to.constData()) != 0)
        return Result::Failed;
    if (isRoot() && lchown(to.constData(), st.st_uid, st.st_gid) != 0)
        return Result::Failed;
    return setTimes(to, st) ? Result::Done : Result::Failed;
}

Result copySpecial(const QByteArray &to, const struct stat &st)
{
    const int made = S_ISFIFO(st.st_mode)
                         ? mkfifo(to.constData(), 0600)
                         : mknod(to.constData(), (st.st_mode & S_IFMT) | 0600, st.st_rdev);
    if (made != 0)
        return errno == EPERM || errno == EINVAL ? Result::NotCopyable : Result::Failed;
    if (isRoot() && lchown(to.constData(), st.st_uid, st.st_gid) != 0)
        return Result::Failed;
    if (chmod(to.constData(), st.st_mode & 07777) != 0)
        return Result::Failed;
    return setTimes(to, st) ? Result::Done : Result::Failed;
}

} // namespace

bool listFolder(const QByteArray &path, QList<QByteArray> *names)
{
    DIR *dir = opendir(path.constData());
    if (!dir)
        return false;
    while (const dirent *entry = readdir(dir)) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..")
            names->append(name);
    }
    closedir(dir);
    return true;
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

bool entryStat(const QByteArray &path, struct stat *st)
{
    return !path.isEmpty() && lstat(path.constData(), st) == 0;
}

Result copyEntry(const QByteArray &from, const QByteArray &to, const struct stat &st)
{
    if (S_ISREG(st.st_mode))
        return copyRegular(from, to);
    if (S_ISDIR(st.st_mode))
        return mkdir(to.constData(), 0700) == 0 ? Result::Done : Result::Failed;
    if (S_ISLNK(st.st_mode))
        return copyLink(from, to, st);
    return copySpecial(to, st);
}

bool applyFolderMetadata(const QByteArray &path, const struct stat &st)
{
    bool ok = true;
    if (isRoot())
        ok = lchown(path.constData(), st.st_uid, st.st_gid) == 0;
    ok = chmod(path.constData(), st.st_mode & 07777) == 0 && ok;
    return setTimes(path, st) && ok;
}

Result copyTree(const QByteArray &from, const QByteArray &to, const Progress &progress)
{
    struct stat rootStat;
    if (!entryStat(from, &rootStat))
        return Result::Absent;
    std::vector<std::pair<QByteArray, struct stat>> folders;
    std::vector<std::pair<QByteArray, struct stat>> pending{{QByteArray(), rootStat}};
    qint64 done = 0;
    while (!pending.empty()) {
        const auto [rel, st] = pending.back();
        pending.pop_back();
        const QByteArray source = rel.isEmpty() ? from : join(from, rel);
        const QByteArray target = rel.isEmpty() ? to : join(to, rel);
        const Result result = copyEntry(source, target, st);
        if (result == Result::Failed)
            return Result::Failed;
        if (progress)
            progress(++done);
        if (result != Result::Done || !S_ISDIR(st.st_mode))
            continue;
        folders.emplace_back(target, st);
        QList<QByteArray> names;
        if (!listFolder(source, &names))
            return Result::Failed;
        for (const QByteArray &name : names) {
            const QByteArray child = rel.isEmpty() ? name : join(rel, name);
            struct stat childStat;
            if (entryStat(join(from, child), &childStat))
                pending.emplace_back(child, childStat);
        }
    }
    // Contents first: adding them changed each folder's times.
    for (auto it = folders.rbegin(); it != folders.rend(); ++it) {
        if (!applyFolderMetadata(it->first, it->second))
            return Result::Failed;
    }
    return Result::Done;
}

bool removeTree(const QByteArray &path)
{
    struct stat st;
    if (!entryStat(path, &st))
        return errno == ENOENT;
    if (!S_ISDIR(st.st_mode))
        return ::unlink(path.constData()) == 0 || errno == ENOENT;
    // A read-only folder of our own tree is opened up to be emptied; it is never a link here.
    if ((st.st_mode & S_IRWXU) != S_IRWXU)
        chmod(path.constData(), (st.st_mode & 07777) | S_IRWXU);
    QList<QByteArray> names;
    listFolder(path, &names);
    for (const QByteArray &name : names)
        removeTree(join(path, name));
    return ::rmdir(path.constData()) == 0 || errno == ENOENT;
}

bool exchange(const QByteArray &a, const QByteArray &b)
{
#if defined(__linux__) && defined(RENAME_EXCHANGE)
    return renameat2(AT_FDCWD, a.constData(), AT_FDCWD, b.constData(), RENAME_EXCHANGE) == 0;
#else
    Q_UNUSED(a)
    Q_UNUSED(b)
    errno = ENOSYS;
    return false;
#endif
}

void syncFolder(const QByteArray &path)
{
    const int fd = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    fsync(fd);
    retryClose(fd);
}

bool sameFileSystem(const QByteArray &a, const QByteArray &b)
{
    struct stat sa;
    struct stat sb;
    return stat(a.constData(), &sa) == 0 && stat(b.constData(), &sb) == 0 && sa.st_dev == sb.st_dev;
}

} // namespace TreeCopy
