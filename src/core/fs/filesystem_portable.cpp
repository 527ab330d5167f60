// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The portable layer, on std::filesystem and Qt alone, for a system without a layer of its own.
// What it gives up against the POSIX layer (capabilities() answers it, docs/porting.md lists it):
// special files are never recreated, owners and access times are neither told nor kept, a link's
// own times are not kept, two entries cannot swap in one step, an exclusive rename looks before
// it renames, the folder is not flushed after a rename and a flush does not reach the drive, a
// file is looked at and then opened in two steps, and a process id tells nothing.

#include "filesystem.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <chrono>
#include <filesystem>
#include <system_error>

namespace Fs {

namespace {

namespace stdfs = std::filesystem;

thread_local Failure t_failure = Failure::None;
thread_local QString t_failureText;

bool fail(const std::error_code &error)
{
    if (error == std::errc::no_such_file_or_directory)
        t_failure = Failure::Missing;
    else if (error == std::errc::file_exists)
        t_failure = Failure::Exists;
    else if (error == std::errc::no_space_on_device)
        t_failure = Failure::NoSpace;
    else
        t_failure = Failure::Other;
    t_failureText = QString::fromStdString(error.message());
    return false;
}

bool fail(Failure failure, const QString &text)
{
    t_failure = failure;
    t_failureText = text;
    return false;
}

bool failFrom(const QFile &file)
{
    return fail(file.exists() ? Failure::Other : Failure::Missing, file.errorString());
}

stdfs::path pathOf(const NativePath &path)
{
#ifdef _WIN32
    return stdfs::path(decode(path).toStdWString());
#else
    return stdfs::path(path.toStdString());
#endif
}

QByteArray nameOf(const stdfs::path &path)
{
#ifdef _WIN32
    return encode(QString::fromStdWString(path.filename().native()));
#else
    return QByteArray::fromStdString(path.filename().native());
#endif
}

// The file clock's epoch is the library's own; one offset, taken once, turns its times into
// nanoseconds since 1970 and back without a round trip ever changing them.
std::int64_t clockOffsetNs()
{
    using namespace std::chrono;
    static const std::int64_t offset =
        duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count() -
        duration_cast<nanoseconds>(stdfs::file_time_type::clock::now().time_since_epoch()).count();
    return offset;
}

std::int64_t nanosecondsOf(stdfs::file_time_type time)
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(time.time_since_epoch()).count() + clockOffsetNs();
}

stdfs::file_time_type fileTimeOf(std::int64_t ns)
{
    using namespace std::chrono;
    return stdfs::file_time_type(
        duration_cast<stdfs::file_time_type::duration>(nanoseconds(ns - clockOffsetNs())));
}

Kind kindOf(stdfs::file_type type)
{
    switch (type) {
    case stdfs::file_type::regular:
        return Kind::File;
    case stdfs::file_type::directory:
        return Kind::Folder;
    case stdfs::file_type::symlink:
        return Kind::Link;
    case stdfs::file_type::fifo:
        return Kind::Fifo;
    case stdfs::file_type::socket:
        return Kind::Socket;
    case stdfs::file_type::character:
        return Kind::CharDevice;
    case stdfs::file_type::block:
        return Kind::BlockDevice;
    default:
        return Kind::Other;
    }
}

bool setPermissions(const stdfs::path &path, std::uint32_t permissions)
{
    std::error_code error;
    stdfs::permissions(path, stdfs::perms(permissions & 07777), stdfs::perm_options::replace,
                       error);
    return !error || fail(error);
}

bool setModified(const stdfs::path &path, std::int64_t ns)
{
    std::error_code error;
    stdfs::last_write_time(path, fileTimeOf(ns), error);
    return !error || fail(error);
}

bool writeWhole(QFile *file, const QByteArray &data)
{
    return file->write(data) == data.size() && file->flush();
}

} // namespace

bool supports(Capability capability)
{
    Q_UNUSED(capability)
    return false;
}

Failure lastFailure()
{
    return t_failure;
}

QString lastFailureText()
{
    return t_failureText;
}

bool entryAt(const NativePath &path, Entry *entry, Links links)
{
    if (path.isEmpty())
        return fail(Failure::Missing, QStringLiteral("no path"));
    const stdfs::path p = pathOf(path);
    std::error_code error;
    const stdfs::file_status status =
        links == Links::Follow ? stdfs::status(p, error) : stdfs::symlink_status(p, error);
    if (error || !stdfs::exists(status))
        return fail(error ? error : std::make_error_code(std::errc::no_such_file_or_directory));
    Entry e;
    e.kind = kindOf(status.type());
    e.permissions = std::uint32_t(status.permissions()) & 07777;
    if (e.isLink()) {
        // The link's own times cannot be told here; its size is its target text's.
        const stdfs::path target = stdfs::read_symlink(p, error);
        e.size = error ? 0 : std::int64_t(target.native().size());
    } else {
        if (e.isFile())
            e.size = std::int64_t(stdfs::file_size(p, error));
        const stdfs::file_time_type modified = stdfs::last_write_time(p, error);
        e.modifiedNs = error ? 0 : nanosecondsOf(modified);
        // The change of the entry itself (a rename, a chmod), to the millisecond as Qt tells it.
        const QDateTime changed = QFileInfo(decode(path)).metadataChangeTime();
        e.changedNs = changed.isValid() ? changed.toMSecsSinceEpoch() * 1'000'000 : e.modifiedNs;
    }
    *entry = e;
    return true;
}

bool listFolder(const NativePath &path, QList<QByteArray> *names)
{
    std::error_code error;
    stdfs::directory_iterator it(pathOf(path), error);
    if (error)
        return fail(error);
    for (const stdfs::directory_iterator end; it != end; it.increment(error)) {
        names->append(nameOf(it->path()));
        if (error)
            return fail(error);
    }
    return true;
}

CopyResult copyEntry(const NativePath &from, const NativePath &to, const Entry &entry)
{
    const stdfs::path source = pathOf(from);
    const stdfs::path target = pathOf(to);
    std::error_code error;
    switch (entry.kind) {
    case Kind::File:
        if (!stdfs::copy_file(source, target, stdfs::copy_options::none, error)) {
            fail(error ? error : std::make_error_code(std::errc::file_exists));
            return lastFailure() == Failure::Missing ? CopyResult::Absent : CopyResult::Failed;
        }
        if (setPermissions(target, entry.permissions) && setModified(target, entry.modifiedNs))
            return CopyResult::Done;
        stdfs::remove(target, error);
        return CopyResult::Failed;
    case Kind::Folder:
        if (!stdfs::create_directory(target, error)) {
            fail(error ? error : std::make_error_code(std::errc::file_exists));
            return CopyResult::Failed;
        }
        return setPermissions(target, 0700) ? CopyResult::Done : CopyResult::Failed;
    case Kind::Link: {
        const stdfs::path linkTarget = stdfs::read_symlink(source, error);
        if (error) {
            fail(error);
            return lastFailure() == Failure::Missing ? CopyResult::Absent : CopyResult::Failed;
        }
        stdfs::create_symlink(linkTarget, target, error);
        return error ? (fail(error), CopyResult::Failed) : CopyResult::Done;
    }
    default:
        fail(Failure::Other, QStringLiteral("special files are not recreated here"));
        return CopyResult::NotCopyable;
    }
}

bool applyMetadata(const NativePath &path, const Entry &entry)
{
    if (entry.isLink())
        return true; // a link's own mode and times cannot be set here
    const stdfs::path p = pathOf(path);
    const bool permissions = setPermissions(p, entry.permissions);
    return setModified(p, entry.modifiedNs) && permissions;
}

bool openUpFolder(const NativePath &path, const Entry &entry)
{
    if ((entry.permissions & 0700) == 0700)
        return true;
    return setPermissions(pathOf(path), entry.permissions | 0700);
}

bool makePrivateFolder(const NativePath &path)
{
    const stdfs::path p = pathOf(path);
    std::error_code error;
    if (!stdfs::create_directory(p, error))
        return fail(error ? error : std::make_error_code(std::errc::file_exists));
    return setPermissions(p, 0700);
}

bool removeFile(const NativePath &path)
{
    Entry entry;
    if (!entryAt(path, &entry))
        return false;
    if (entry.isFolder())
        return fail(std::make_error_code(std::errc::is_a_directory));
    std::error_code error;
    return stdfs::remove(pathOf(path), error) || fail(error);
}

bool removeEmptyFolder(const NativePath &path)
{
    Entry entry;
    if (!entryAt(path, &entry))
        return false;
    if (!entry.isFolder())
        return fail(std::make_error_code(std::errc::not_a_directory));
    std::error_code error;
    return stdfs::remove(pathOf(path), error) || fail(error);
}

bool rename(const NativePath &from, const NativePath &to)
{
    std::error_code error;
    stdfs::rename(pathOf(from), pathOf(to), error);
    return !error || fail(error);
}

bool renameNoReplace(const NativePath &from, const NativePath &to)
{
    // Two steps: another process may take the name in between.
    Entry existing;
    if (entryAt(to, &existing))
        return fail(std::make_error_code(std::errc::file_exists));
    return rename(from, to);
}

bool exchange(const NativePath &a, const NativePath &b)
{
    Q_UNUSED(a)
    Q_UNUSED(b)
    return fail(std::make_error_code(std::errc::function_not_supported));
}

void syncFolder(const NativePath &path)
{
    Q_UNUSED(path) // no portable way to flush a folder's entry list
}

bool sameFileSystem(const NativePath &a, const NativePath &b)
{
    const QStorageInfo first(decode(a));
    const QStorageInfo second(decode(b));
    return first.isValid() && second.isValid() && first.rootPath() == second.rootPath() &&
           first.device() == second.device();
}

bool writeNewFile(const NativePath &path, const QByteArray &data, int permissions, bool flush)
{
    Q_UNUSED(flush) // QFile hands the data to the system; nothing portable reaches the drive
    QFile file(decode(path));
    // NewOnly creates exclusively, so a link planted at the name is refused, not followed.
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return fail(file.exists() ? Failure::Exists : Failure::Other, file.errorString());
    bool ok = writeWhole(&file, data);
    file.close();
    ok = ok && (permissions < 0 || setPermissions(pathOf(path), std::uint32_t(permissions)));
    if (!ok) {
        const Failure failure =
            file.error() == QFileDevice::ResourceError ? Failure::NoSpace : Failure::Other;
        const QString text = file.errorString();
        file.remove();
        return fail(failure, text);
    }
    return true;
}

bool overwriteFile(const NativePath &path, const QByteArray &data, bool flush)
{
    Q_UNUSED(flush)
    Entry entry;
    if (entryAt(path, &entry) && !entry.isFile())
        return fail(Failure::Other, QStringLiteral("not a regular file"));
    QFile file(decode(path));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return failFrom(file);
    const bool ok = writeWhole(&file, data);
    file.close();
    return ok || fail(Failure::Other, file.errorString());
}

bool openForReading(QFile *file, const NativePath &path, Links links)
{
    // Looked at, then opened: a FIFO swapped in between is not caught here.
    Entry entry;
    if (!entryAt(path, &entry, links) || !entry.isFile())
        return false;
    file->setFileName(decode(path));
    return file->open(QIODevice::ReadOnly) || failFrom(*file);
}

bool isPrivileged()
{
    return false;
}

std::uint32_t currentUser()
{
    return 0;
}

std::int64_t processId()
{
    return QCoreApplication::applicationPid();
}

bool processRuns(std::int64_t pid)
{
    return pid > 0; // cannot be told here: taken as running, so nothing of it is removed
}

void lowerThreadPriority()
{}

} // namespace Fs
