// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "filesystem.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QMap>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

// A file tree captured exactly, for telling whether a tree came back as it was: every entry below
// a root (hidden ones included) with its kind, permission bits, owner, modification time to the
// nanosecond, size, the SHA-256 of a regular file's bytes and the target text of a link. Only
// lstat() and readlink() look at the tree: links are never followed, special files never opened,
// and capturing changes nothing but access times, which are ignored.
namespace TreeState {

enum class Kind { File, Dir, Symlink, Fifo, Socket, CharDevice, BlockDevice, Unknown };

inline const char *kindName(Kind kind)
{
    switch (kind) {
    case Kind::File:
        return "file";
    case Kind::Dir:
        return "folder";
    case Kind::Symlink:
        return "link";
    case Kind::Fifo:
        return "fifo";
    case Kind::Socket:
        return "socket";
    case Kind::CharDevice:
        return "char device";
    case Kind::BlockDevice:
        return "block device";
    case Kind::Unknown:
        break;
    }
    return "unknown";
}

inline Kind kindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return Kind::File;
    if (S_ISDIR(mode))
        return Kind::Dir;
    if (S_ISLNK(mode))
        return Kind::Symlink;
    if (S_ISFIFO(mode))
        return Kind::Fifo;
    if (S_ISSOCK(mode))
        return Kind::Socket;
    if (S_ISCHR(mode))
        return Kind::CharDevice;
    if (S_ISBLK(mode))
        return Kind::BlockDevice;
    return Kind::Unknown;
}

struct Entry
{
    Kind kind = Kind::Unknown;
    uint perms = 0; // st_mode & 07777
    uint uid = 0;
    uint gid = 0;
    qint64 mtimeSec = 0;
    qint64 mtimeNsec = 0;
    qint64 size = 0;         // regular files only; a folder's size is the file system's business
    QByteArray sha256;       // regular files only
    QByteArray target;       // links only: the target text as stored
    quint64 rdev = 0;        // devices only
    bool unreadable = false; // a regular file whose bytes could not be read

    bool operator==(const Entry &o) const
    {
        return kind == o.kind && perms == o.perms && uid == o.uid && gid == o.gid &&
               mtimeSec == o.mtimeSec && mtimeNsec == o.mtimeNsec && size == o.size &&
               sha256 == o.sha256 && target == o.target && rdev == o.rdev &&
               unreadable == o.unreadable;
    }
    bool operator!=(const Entry &o) const { return !(*this == o); }
};

// Relative path -> entry; the root itself is ".". An empty tree: nothing at the root.
using Tree = QMap<QString, Entry>;

inline QByteArray native(const QString &path)
{
    return QFile::encodeName(path);
}

inline bool lstatPath(const QString &path, struct stat *st)
{
    return ::lstat(native(path).constData(), st) == 0;
}

inline bool existsNoFollow(const QString &path)
{
    struct stat st;
    return lstatPath(path, &st);
}

inline Kind kindAt(const QString &path)
{
    struct stat st;
    return lstatPath(path, &st) ? kindOf(st.st_mode) : Kind::Unknown;
}

inline QByteArray linkTarget(const QByteArray &path, qint64 sizeHint = 0)
{
    QByteArray buf(qMax<qint64>(sizeHint, 255) + 1, '\0');
    for (;;) {
        const ssize_t n = ::readlink(path.constData(), buf.data(), size_t(buf.size()));
        if (n < 0)
            return QByteArrayLiteral("<readlink failed>");
        if (n < buf.size())
            return buf.left(int(n));
        buf.resize(buf.size() * 2);
    }
}

inline QByteArray hashRegularFile(const QByteArray &path, bool *ok)
{
    *ok = false;
    // O_NONBLOCK and the fstat check: should something special have appeared here meanwhile,
    // it is not waited on or read.
    const int fd = ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return {};
    struct stat st;
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return {};
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    char buf[65536];
    for (;;) {
        const ssize_t n = ::read(fd, buf, sizeof buf);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            ::close(fd);
            return {};
        }
        if (n == 0)
            break;
        hash.addData(QByteArrayView(buf, n));
    }
    ::close(fd);
    *ok = true;
    return hash.result();
}

inline Entry entryFor(const QByteArray &path, const struct stat &st)
{
    Entry e;
    e.kind = kindOf(st.st_mode);
    e.perms = uint(st.st_mode & 07777);
    e.uid = st.st_uid;
    e.gid = st.st_gid;
    e.mtimeSec = qint64(st.st_mtim.tv_sec);
    e.mtimeNsec = qint64(st.st_mtim.tv_nsec);
    switch (e.kind) {
    case Kind::File: {
        e.size = qint64(st.st_size);
        bool ok = false;
        e.sha256 = hashRegularFile(path, &ok);
        e.unreadable = !ok;
        break;
    }
    case Kind::Symlink:
        e.target = linkTarget(path, qint64(st.st_size));
        // A file layer that cannot set a link's own times leaves them to the moment it was made.
        if (!Fs::supports(Fs::Capability::LinkTimes))
            e.mtimeSec = e.mtimeNsec = 0;
        break;
    case Kind::CharDevice:
    case Kind::BlockDevice:
        e.rdev = quint64(st.st_rdev);
        break;
    default:
        break;
    }
    return e;
}

inline bool excludedPath(const QString &rel, const QStringList &exclude)
{
    for (const QString &x : exclude) {
        if (rel == x || rel.startsWith(x + QLatin1Char('/')))
            return true;
    }
    return false;
}

inline void walk(const QByteArray &dir, const QString &relDir, const QStringList &exclude,
                 Tree *tree)
{
    DIR *d = ::opendir(dir.constData());
    if (!d)
        return;
    QList<QByteArray> names;
    while (const dirent *de = ::readdir(d)) {
        const QByteArray name(de->d_name);
        if (name != "." && name != "..")
            names.append(name);
    }
    ::closedir(d);
    std::sort(names.begin(), names.end());
    for (const QByteArray &name : names) {
        const QByteArray path = dir + '/' + name;
        const QString rel = relDir.isEmpty() ? QFile::decodeName(name)
                                             : relDir + QLatin1Char('/') + QFile::decodeName(name);
        if (excludedPath(rel, exclude))
            continue;
        struct stat st;
        if (::lstat(path.constData(), &st) != 0)
            continue; // vanished between the listing and the look
        tree->insert(rel, entryFor(path, st));
        if (S_ISDIR(st.st_mode))
            walk(path, rel, exclude, tree);
    }
}

// The bytes of the regular file at path; empty for anything else (a link is not followed, a
// special file not opened).
inline QByteArray bytesOf(const QString &path)
{
    QByteArray out;
    const int fd = ::open(native(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return out;
    struct stat st;
    if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode)) {
        char buf[65536];
        ssize_t n;
        while ((n = ::read(fd, buf, sizeof buf)) > 0)
            out.append(buf, int(n));
    }
    ::close(fd);
    return out;
}

// The whole tree at root, the root itself as ".". Entries whose relative path is one of exclude
// (or lies below one) are left out. Empty when nothing is at root; a root that is a link or a
// file is captured as that single entry.
inline Tree capture(const QString &root, const QStringList &exclude = {})
{
    Tree tree;
    const QByteArray base = native(root);
    struct stat st;
    if (::lstat(base.constData(), &st) != 0)
        return tree;
    tree.insert(QStringLiteral("."), entryFor(base, st));
    if (S_ISDIR(st.st_mode))
        walk(base, QString(), exclude, &tree);
    return tree;
}

// Everything under folder except the entries at the relative paths in exclude (typically the
// workspace) and the folder's own entry, whose times change whenever anything is renamed inside
// it: what must stay as it is while a workspace in folder is backed up and restored.
inline Tree captureOutside(const QString &folder, const QStringList &exclude)
{
    Tree tree = capture(folder, exclude);
    tree.remove(QStringLiteral("."));
    return tree;
}

// The names at the top of folder, links and special files included, sorted.
inline QStringList names(const QString &folder)
{
    QStringList out;
    DIR *d = ::opendir(native(folder).constData());
    if (!d)
        return out;
    while (const dirent *de = ::readdir(d)) {
        const QByteArray name(de->d_name);
        if (name != "." && name != "..")
            out.append(QFile::decodeName(name));
    }
    ::closedir(d);
    out.sort();
    return out;
}

inline QString timeText(qint64 sec, qint64 nsec)
{
    return QDateTime::fromSecsSinceEpoch(sec, Qt::UTC).toString(Qt::ISODate) +
           QStringLiteral(".%1").arg(nsec, 9, 10, QLatin1Char('0'));
}

inline QString describe(const Entry &e)
{
    QString s = QString::fromLatin1(kindName(e.kind)) +
                QStringLiteral(" %1").arg(e.perms, 4, 8, QLatin1Char('0'));
    if (e.kind == Kind::File)
        s += QStringLiteral(" %1 bytes").arg(e.size);
    if (e.kind == Kind::Symlink)
        s += QStringLiteral(" -> \"%1\"").arg(QFile::decodeName(e.target));
    return s;
}

// What differs between a and b, one line an entry ("before"/"after" stand for a and b); empty
// when they are the same.
inline QStringList differences(const Tree &a, const Tree &b, int max = 20)
{
    QStringList out;
    int total = 0;
    auto add = [&](const QString &line) {
        if (++total <= max)
            out.append(line);
    };
    QStringList keys = a.keys();
    for (const QString &k : b.keys()) {
        if (!a.contains(k))
            keys.append(k);
    }
    std::sort(keys.begin(), keys.end());
    for (const QString &k : keys) {
        const auto ia = a.constFind(k);
        const auto ib = b.constFind(k);
        if (ib == b.constEnd()) {
            add(QStringLiteral("%1: gone (was %2)").arg(k, describe(*ia)));
            continue;
        }
        if (ia == a.constEnd()) {
            add(QStringLiteral("%1: new (%2)").arg(k, describe(*ib)));
            continue;
        }
        const Entry &x = *ia;
        const Entry &y = *ib;
        if (x == y)
            continue;
        QStringList what;
        if (x.kind != y.kind)
            what << QStringLiteral("kind %1 != %2")
                        .arg(QLatin1String(kindName(x.kind)), QLatin1String(kindName(y.kind)));
        if (x.perms != y.perms)
            what << QStringLiteral("mode %1 != %2")
                        .arg(x.perms, 4, 8, QLatin1Char('0'))
                        .arg(y.perms, 4, 8, QLatin1Char('0'));
        if (x.uid != y.uid || x.gid != y.gid)
            what << QStringLiteral("owner %1:%2 != %3:%4")
                        .arg(x.uid)
                        .arg(x.gid)
                        .arg(y.uid)
                        .arg(y.gid);
        if (x.mtimeSec != y.mtimeSec || x.mtimeNsec != y.mtimeNsec)
            what << QStringLiteral("mtime %1 != %2")
                        .arg(timeText(x.mtimeSec, x.mtimeNsec), timeText(y.mtimeSec, y.mtimeNsec));
        if (x.size != y.size)
            what << QStringLiteral("size %1 != %2").arg(x.size).arg(y.size);
        else if (x.sha256 != y.sha256)
            what << QStringLiteral("bytes differ");
        if (x.unreadable != y.unreadable)
            what << QStringLiteral("readable %1 != %2").arg(!x.unreadable).arg(!y.unreadable);
        if (x.target != y.target)
            what << QStringLiteral("target \"%1\" != \"%2\"")
                        .arg(QFile::decodeName(x.target), QFile::decodeName(y.target));
        if (x.rdev != y.rdev)
            what << QStringLiteral("device %1:%2 != %3:%4")
                        .arg(major(x.rdev))
                        .arg(minor(x.rdev))
                        .arg(major(y.rdev))
                        .arg(minor(y.rdev));
        add(QStringLiteral("%1: %2").arg(k, what.join(QStringLiteral(", "))));
    }
    if (total > max)
        out.append(QStringLiteral("... and %1 more").arg(total - max));
    return out;
}

// The differences as one printable message, for QVERIFY2(TreeState::diff(a, b).isEmpty(),
// TreeState::diff(a, b)) or, kept in a variable, QVERIFY2(d.isEmpty(), d).
struct Diff
{
    QByteArray text;
    bool isEmpty() const { return text.isEmpty(); }
    operator const char *() const { return text.isEmpty() ? "no differences" : text.constData(); }
};

// A file layer that cannot recreate special files cannot bring one back: where either tree has
// one, the place is left out of the comparison there (the workspace keeps what it holds there).
inline bool isSpecial(const Entry &e)
{
    return e.kind != Kind::File && e.kind != Kind::Dir && e.kind != Kind::Symlink;
}

inline void leaveOutSpecialPlaces(Tree *a, Tree *b)
{
    if (Fs::supports(Fs::Capability::SpecialFiles))
        return;
    QStringList places;
    for (const Tree *tree : {a, b}) {
        for (auto it = tree->cbegin(); it != tree->cend(); ++it) {
            if (isSpecial(*it))
                places.append(it.key());
        }
    }
    for (const QString &place : std::as_const(places)) {
        a->remove(place);
        b->remove(place);
    }
}

inline Diff diff(const Tree &a, const Tree &b, int max = 20)
{
    Tree left = a;
    Tree right = b;
    leaveOutSpecialPlaces(&left, &right);
    const QStringList lines = differences(left, right, max);
    Diff d;
    if (!lines.isEmpty())
        d.text = ("\n    " + lines.join(QStringLiteral("\n    "))).toUtf8();
    return d;
}

} // namespace TreeState
