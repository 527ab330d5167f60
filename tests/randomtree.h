// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "treestate.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRandomGenerator>
#include <QSet>
#include <QString>
#include <QStringList>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

// Workspace trees made at random from a seed, and random changes to them, for checking that a
// backup gives back exactly what was there: files of every size (some binary), nested, empty and
// hidden folders, awkward names (spaces, non-ASCII, emoji, 200 bytes and more), links inside, out
// of the workspace, relative ones with "../", dangling and looping, FIFOs (and, as root, sockets
// and character devices), read-only files and folders, and past modification times to the
// nanosecond. Nothing here follows a link or opens a special file, and nothing is written outside
// the root given (and the "outside" folder a tree is asked to fill).
namespace RandomTree {

struct Options
{
    int folders = 8; // besides the root, and besides two folders left empty
    int files = 20;
    int links = 8;
    int specials = 2; // FIFOs, and as root sometimes a socket or a character device
    int maxDepth = 4;
    qint64 maxFileSize = 200 * 1024;
    // settings.dat, config.js, index.html and img.xml at the top as files, links or absent
    bool workspaceFiles = true;
    // where links out of the workspace point: filled with files and a folder when not empty
    QString outside;
};

// Relative paths of what was made (outside: absolute paths).
struct Made
{
    QStringList folders, files, links, specials;
    QStringList outsideFiles, outsideFolders;
    int entries() const
    {
        return 1 + int(folders.size() + files.size() + links.size() + specials.size());
    }
};

inline QByteArray nat(const QString &path)
{
    return QFile::encodeName(path);
}

inline bool isRoot()
{
    return ::geteuid() == 0;
}

// The bytes into a new file (never through a link); false when it could not be made.
inline bool createFile(const QString &path, const QByteArray &bytes, mode_t mode = 0600)
{
    const int fd =
        ::open(nat(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    if (fd < 0)
        return false;
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n <= 0) {
            ::close(fd);
            return false;
        }
        done += n;
    }
    return ::close(fd) == 0;
}

// Overwrites the regular file at path in place (refusing links and special files).
inline bool overwriteFile(const QString &path, const QByteArray &bytes)
{
    struct stat st;
    if (::lstat(nat(path).constData(), &st) != 0 || !S_ISREG(st.st_mode))
        return false;
    const int fd =
        ::open(nat(path).constData(), O_WRONLY | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool ok = ::write(fd, bytes.constData(), size_t(bytes.size())) == bytes.size();
    return ::close(fd) == 0 && ok;
}

inline bool setTime(const QString &path, qint64 sec, long nsec)
{
    struct timespec times[2];
    times[0].tv_sec = 0;
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = time_t(sec);
    times[1].tv_nsec = nsec;
    return ::utimensat(AT_FDCWD, nat(path).constData(), times, AT_SYMLINK_NOFOLLOW) == 0;
}

inline void setRandomPastTime(QRandomGenerator &rng, const QString &path)
{
    // 2001 to 2022, any nanosecond; now and then a whole second
    const qint64 sec = 978307200 + qint64(rng.bounded(693000000));
    const long nsec = rng.bounded(4) == 0 ? 0 : long(rng.bounded(1000000000));
    setTime(path, sec, nsec);
}

inline QByteArray randomBytes(QRandomGenerator &rng, qint64 size, bool binary)
{
    QByteArray out(int(size), Qt::Uninitialized);
    if (binary) {
        for (int i = 0; i < out.size(); ++i)
            out[i] = char(rng.bounded(256));
        return out;
    }
    static const char alphabet[] = "abcdefghijklmnopqrstuvwxyz ABCDEFGHIJ 0123456789.,;\n";
    for (int i = 0; i < out.size(); ++i)
        out[i] = alphabet[rng.bounded(int(sizeof alphabet - 1))];
    return out;
}

inline qint64 randomSize(QRandomGenerator &rng, qint64 max)
{
    const int r = rng.bounded(10);
    qint64 size;
    if (r == 0)
        size = 0;
    else if (r < 4)
        size = rng.bounded(200);
    else if (r < 7)
        size = rng.bounded(4096);
    else if (r < 9)
        size = rng.bounded(64 * 1024);
    else
        size = rng.bounded(200 * 1024 + 1);
    return qMin(size, max);
}

// A name nobody has used in that folder yet, of a random style.
class Names
{
public:
    explicit Names(QRandomGenerator &rng, const QString &tag = QString())
        : m_rng(rng)
        , m_tag(tag)
    {}

    QString next(const QString &folder, bool forFolder = false)
    {
        for (;;) {
            const QString name = make(forFolder);
            if (QFile::encodeName(name).size() > 250)
                continue;
            QSet<QString> &used = m_used[folder];
            if (!used.contains(name)) {
                used.insert(name);
                return name;
            }
        }
    }

    void reserve(const QString &folder, const QString &name) { m_used[folder].insert(name); }

private:
    QString make(bool forFolder)
    {
        const QString n = m_tag + QString::number(++m_counter);
        const QString ext = forFolder ? QString() : QStringLiteral(".dat");
        switch (m_rng.bounded(12)) {
        case 0:
        case 1:
        case 2:
            return (forFolder ? QStringLiteral("folder") : QStringLiteral("file")) + n + ext;
        case 3:
            return QStringLiteral("my picture ") + n +
                   (forFolder ? QString() : QStringLiteral(".jpg"));
        case 4:
            return QStringLiteral(" spaced  out ") + n + QStringLiteral(" ");
        case 5:
            return QStringLiteral(".hidden") + n + ext;
        case 6:
            return QString::fromUtf8("Bild äöü ") + n + ext;
        case 7:
            return QString::fromUtf8("画像") + n + (forFolder ? QString() : QStringLiteral(".png"));
        case 8:
            return QString::fromUtf8("😀 smile ") + n + QString::fromUtf8(" 🎉");
        case 9:
            return QStringLiteral("long-") + QString(200 + m_rng.bounded(30), QLatin1Char('x')) +
                   QLatin1Char('-') + n;
        case 10:
            // three bytes a character: well over 200 bytes in 70 characters
            return QString(68 + m_rng.bounded(8), QChar(0x753B)) + n;
        default:
            return QStringLiteral("odd*?:\\[] 100% ") + n + QStringLiteral(".txt");
        }
    }

    QRandomGenerator &m_rng;
    QString m_tag;
    QHash<QString, QSet<QString>> m_used;
    int m_counter = 0;
};

inline QString joined(const QString &folder, const QString &name)
{
    return folder.isEmpty() ? name : folder + QLatin1Char('/') + name;
}

inline int depthOf(const QString &rel)
{
    return rel.isEmpty() ? 0 : int(rel.count(QLatin1Char('/'))) + 1;
}

// The target text of a link at linkRel (in root) to the entry at targetRel, written relative.
inline QString relativeTarget(const QString &linkRel, const QString &targetRel)
{
    const int up = depthOf(linkRel) - 1;
    QString t;
    for (int i = 0; i < up; ++i)
        t += QStringLiteral("../");
    return t + (targetRel.isEmpty() ? QStringLiteral(".") : targetRel);
}

inline bool makeLink(const QString &path, const QString &target)
{
    return ::symlink(nat(target).constData(), nat(path).constData()) == 0;
}

// Fills root (created when missing) from seed; see Options. Modes are given after everything is
// in place, and times last, so that the folders keep theirs.
inline Made make(const QString &root, quint32 seed, const Options &opt = Options())
{
    QRandomGenerator rng(seed);
    Names names(rng);
    Made made;
    QDir().mkpath(root);
    auto abs = [&](const QString &rel) {
        return rel.isEmpty() ? root : root + QLatin1Char('/') + rel;
    };

    // Link targets out of the workspace.
    if (!opt.outside.isEmpty()) {
        QDir().mkpath(opt.outside);
        for (int i = 0; i < 3; ++i) {
            const QString p = opt.outside + QStringLiteral("/target %1.dat").arg(i);
            if (createFile(p, randomBytes(rng, 100 + rng.bounded(3000), i == 2)))
                made.outsideFiles << p;
        }
        const QString folder = opt.outside + QStringLiteral("/target folder");
        if (::mkdir(nat(folder).constData(), 0755) == 0) {
            made.outsideFolders << folder;
            createFile(folder + QStringLiteral("/inner.txt"), "outside, inner");
            ::mkdir(nat(folder + QStringLiteral("/sub")).constData(), 0700);
            createFile(folder + QStringLiteral("/sub/deeper.txt"), "outside, deeper");
        }
        ::chmod(nat(made.outsideFiles.value(0)).constData(), 0444);
        for (const QString &p : made.outsideFiles + made.outsideFolders)
            setRandomPastTime(rng, p);
        setRandomPastTime(rng, folder + QStringLiteral("/sub"));
        setRandomPastTime(rng, folder + QStringLiteral("/inner.txt"));
    }

    QStringList folders{QString()};
    QStringList workspaceNames;
    if (opt.workspaceFiles)
        workspaceNames = {QStringLiteral("settings.dat"), QStringLiteral("config.js"),
                          QStringLiteral("index.html"), QStringLiteral("img.xml")};
    for (const QString &n : workspaceNames)
        names.reserve(QString(), n);

    for (int i = 0; i < opt.folders; ++i) {
        QString parent;
        const QString last = folders.last();
        if (rng.bounded(2) == 0 && depthOf(last) < opt.maxDepth) {
            parent = last;
        } else {
            do {
                parent = folders.at(rng.bounded(int(folders.size())));
            } while (depthOf(parent) >= opt.maxDepth);
        }
        const QString rel = joined(parent, names.next(parent, true));
        if (::mkdir(nat(abs(rel)).constData(), 0700) == 0) {
            folders << rel;
            made.folders << rel;
        }
    }

    for (int i = 0; i < opt.files; ++i) {
        const QString parent = folders.at(rng.bounded(int(folders.size())));
        const QString rel = joined(parent, names.next(parent));
        if (createFile(abs(rel),
                       randomBytes(rng, randomSize(rng, opt.maxFileSize), rng.bounded(5) < 2)))
            made.files << rel;
    }

    // The window's own files: files, links out or in, or not there at all.
    for (const QString &n : workspaceNames) {
        const int r = rng.bounded(10);
        if (r < 5) {
            if (createFile(abs(n), randomBytes(rng, 10 + rng.bounded(400), false)))
                made.files << n;
        } else if (r == 7 && !made.outsideFiles.isEmpty()) {
            if (makeLink(abs(n), made.outsideFiles.at(rng.bounded(int(made.outsideFiles.size())))))
                made.links << n;
        } else if (r == 8 && !made.outsideFiles.isEmpty()) {
            const QString target = made.outsideFiles.at(rng.bounded(int(made.outsideFiles.size())));
            if (makeLink(abs(n), QStringLiteral("../") +
                                     QDir(QFileInfo(root).path()).relativeFilePath(target)))
                made.links << n;
        } else if (r == 9 && !made.files.isEmpty()) {
            if (makeLink(abs(n), made.files.at(rng.bounded(int(made.files.size())))))
                made.links << n;
        }
    }

    for (int i = 0; i < opt.links; ++i) {
        const QString parent = folders.at(rng.bounded(int(folders.size())));
        const QString rel = joined(parent, names.next(parent));
        QString target;
        switch (rng.bounded(11)) {
        case 0:
            if (!made.files.isEmpty())
                target = relativeTarget(rel, made.files.at(rng.bounded(int(made.files.size()))));
            break;
        case 1:
            if (!made.files.isEmpty())
                target = abs(made.files.at(rng.bounded(int(made.files.size()))));
            break;
        case 2:
            target = relativeTarget(rel, folders.at(rng.bounded(int(folders.size()))));
            break;
        case 3:
            target = QStringLiteral("no such/place ") + QString::number(i);
            break;
        case 4:
            target = QStringLiteral("/nonexistent-img-target/") + QString::number(i);
            break;
        case 5:
            if (!made.outsideFiles.isEmpty())
                target = made.outsideFiles.at(rng.bounded(int(made.outsideFiles.size())));
            break;
        case 6:
            if (!made.outsideFolders.isEmpty())
                target = made.outsideFolders.first();
            break;
        case 7:
            if (!opt.outside.isEmpty()) {
                // out of the workspace by "../" to the folder beside it
                const QString from = QFileInfo(abs(rel)).path();
                target =
                    QDir(from).relativeFilePath(rng.bounded(2) && !made.outsideFolders.isEmpty()
                                                    ? made.outsideFolders.first()
                                                    : made.outsideFiles.value(0, opt.outside));
            }
            break;
        case 8:
            target = QFileInfo(rel).fileName(); // itself: a loop
            break;
        case 9:
            target = rng.bounded(2) ? QStringLiteral(".") : QStringLiteral("..");
            break;
        default:
            if (!made.links.isEmpty())
                target = relativeTarget(rel, made.links.at(rng.bounded(int(made.links.size()))));
            break;
        }
        if (target.isEmpty())
            target = QStringLiteral("dangling ") + QString::number(i);
        if (makeLink(abs(rel), target))
            made.links << rel;
    }

    for (int i = 0; i < opt.specials; ++i) {
        const QString parent = folders.at(rng.bounded(int(folders.size())));
        const QString rel = joined(parent, names.next(parent));
        const int r = rng.bounded(5);
        int rc;
        if (r == 3)
            rc = ::mknod(nat(abs(rel)).constData(), S_IFSOCK | 0755, 0);
        else if (r == 4 && isRoot())
            rc = ::mknod(nat(abs(rel)).constData(), S_IFCHR | 0666, makedev(1, 3));
        else
            rc = ::mkfifo(nat(abs(rel)).constData(), rng.bounded(2) ? 0600 : 0644);
        if (rc == 0)
            made.specials << rel;
    }

    // Two folders that stay empty, one of them hidden.
    if (opt.folders > 0) {
        for (const QString &n : {QStringLiteral("empty"), QStringLiteral(".empty")}) {
            QString parent;
            do {
                parent = folders.at(rng.bounded(int(folders.size())));
            } while (depthOf(parent) >= opt.maxDepth);
            const QString rel = joined(parent, n + QString::number(rng.bounded(1000)));
            if (::mkdir(nat(abs(rel)).constData(), 0700) == 0)
                made.folders << rel;
        }
    }

    static const mode_t fileModes[] = {0400, 0444, 0600, 0644, 0755, 0640, 0600};
    static const mode_t folderModes[] = {0700, 0755, 0500, 0755, 0700};
    for (const QString &rel : made.files)
        ::chmod(nat(abs(rel)).constData(), fileModes[rng.bounded(7)]);
    // Read-only folders get their mode only now, once they are full.
    for (const QString &rel : made.folders)
        ::chmod(nat(abs(rel)).constData(), folderModes[rng.bounded(5)]);
    ::chmod(nat(root).constData(), rng.bounded(2) ? 0700 : 0755);

    // Times last: setting one changes nothing else, but creating an entry changes its folder's.
    for (const QString &rel : made.files + made.links + made.specials + made.folders)
        setRandomPastTime(rng, abs(rel));
    setRandomPastTime(rng, root);
    return made;
}

// A wide tree of small files: folders "dNN", each with sub-folders "sN" holding files "fN.dat";
// random past times, folders included.
inline int makeWide(const QString &root, quint32 seed, int folders, int subFolders, int filesEach,
                    int fileSize = 1024)
{
    QRandomGenerator rng(seed);
    QDir().mkpath(root);
    int count = 1;
    QStringList dirs;
    for (int d = 0; d < folders; ++d) {
        const QString dir = root + QStringLiteral("/d%1").arg(d, 2, 10, QLatin1Char('0'));
        ::mkdir(nat(dir).constData(), 0755);
        dirs << dir;
        ++count;
        for (int s = 0; s < subFolders; ++s) {
            const QString sub = dir + QStringLiteral("/s%1").arg(s);
            ::mkdir(nat(sub).constData(), 0755);
            dirs << sub;
            ++count;
            for (int f = 0; f < filesEach; ++f) {
                const QString file = sub + QStringLiteral("/f%1.dat").arg(f);
                createFile(file, randomBytes(rng, fileSize / 2 + rng.bounded(fileSize), true),
                           0644);
                setRandomPastTime(rng, file);
                ++count;
            }
        }
    }
    for (const QString &dir : dirs)
        setRandomPastTime(rng, dir);
    setRandomPastTime(rng, root);
    return count;
}

// Removes the entry at path and everything below it, never following a link.
inline bool removeAll(const QString &path)
{
    const QByteArray p = nat(path);
    struct stat st;
    if (::lstat(p.constData(), &st) != 0)
        return errno == ENOENT;
    if (!S_ISDIR(st.st_mode))
        return ::unlink(p.constData()) == 0;
    ::chmod(p.constData(), 0700);
    if (DIR *d = ::opendir(p.constData())) {
        QList<QByteArray> names;
        while (const dirent *de = ::readdir(d)) {
            const QByteArray name(de->d_name);
            if (name != "." && name != "..")
                names << name;
        }
        ::closedir(d);
        for (const QByteArray &name : names)
            removeAll(QFile::decodeName(p + '/' + name));
    }
    return ::rmdir(p.constData()) == 0;
}

// Gives every real folder below root (and root) its owner's rwx, so that a removal by a user
// who is not root can go through read-only folders.
inline void makeRemovable(const QString &root)
{
    const TreeState::Tree tree = TreeState::capture(root);
    for (auto it = tree.cbegin(); it != tree.cend(); ++it) {
        if (it->kind == TreeState::Kind::Dir)
            ::chmod(nat(it.key() == QLatin1String(".") ? root : root + QLatin1Char('/') + it.key())
                        .constData(),
                    it->perms | 0700);
    }
}

// Changes made to a workspace by someone other than the bundle, straight on the file system:
// entries added, rewritten (bytes and time), deleted, re-linked, re-moded, retyped and touched.
// Returns one line per change. Links are never followed; linkTargetsOut are targets for re-links
// that point out of the workspace.
inline QStringList changeOutside(const QString &root, quint32 seed, int count,
                                 const QStringList &linkTargetsOut = {})
{
    QRandomGenerator rng(seed ^ 0x5eed5eedu);
    Names names(rng, QStringLiteral("c"));
    QStringList log;
    auto abs = [&](const QString &rel) {
        return rel == QLatin1String(".") ? root : root + QLatin1Char('/') + rel;
    };
    for (int i = 0; i < count; ++i) {
        const TreeState::Tree tree = TreeState::capture(root);
        if (tree.isEmpty())
            break;
        QStringList dirs, files, links, others;
        for (auto it = tree.cbegin(); it != tree.cend(); ++it) {
            switch (it->kind) {
            case TreeState::Kind::Dir:
                dirs << it.key();
                break;
            case TreeState::Kind::File:
                files << it.key();
                break;
            case TreeState::Kind::Symlink:
                links << it.key();
                break;
            default:
                others << it.key();
                break;
            }
        }
        const QStringList nonRoot = [&] {
            QStringList all = files + links + others + dirs;
            all.removeAll(QStringLiteral("."));
            return all;
        }();
        auto pick = [&](const QStringList &from) {
            return from.at(rng.bounded(int(from.size())));
        };
        const QString folder = pick(dirs);
        const QString inFolder = folder == QLatin1String(".") ? QString() : folder;
        int op = rng.bounded(9);
        if ((op == 2 && files.isEmpty()) || ((op == 3 || op == 6) && nonRoot.isEmpty()) ||
            (op == 4 && links.isEmpty()))
            op = 0;
        switch (op) {
        case 0: {
            const QString rel = joined(inFolder, names.next(inFolder));
            createFile(abs(rel), randomBytes(rng, randomSize(rng, 50000), rng.bounded(2)));
            log << QStringLiteral("added file %1").arg(rel);
            break;
        }
        case 1: {
            const QString rel = joined(inFolder, names.next(inFolder, true));
            ::mkdir(nat(abs(rel)).constData(), 0750);
            createFile(abs(rel) + QStringLiteral("/inside.txt"), "added with its folder");
            log << QStringLiteral("added folder %1").arg(rel);
            break;
        }
        case 2: {
            const QString rel = pick(files);
            overwriteFile(abs(rel), randomBytes(rng, randomSize(rng, 50000), rng.bounded(2)));
            setRandomPastTime(rng, abs(rel));
            log << QStringLiteral("rewrote %1").arg(rel);
            break;
        }
        case 3: {
            const QString rel = pick(nonRoot);
            removeAll(abs(rel));
            log << QStringLiteral("deleted %1").arg(rel);
            break;
        }
        case 4: {
            const QString rel = pick(links);
            ::unlink(nat(abs(rel)).constData());
            const int r = rng.bounded(3);
            QString target = QStringLiteral("elsewhere ") + QString::number(i);
            if (r == 0 && !linkTargetsOut.isEmpty())
                target = pick(linkTargetsOut);
            else if (r == 1 && !files.isEmpty())
                target = abs(pick(files));
            makeLink(abs(rel), target);
            log << QStringLiteral("re-linked %1 to %2").arg(rel, target);
            break;
        }
        case 5: {
            QStringList modable = files + dirs + others;
            const QString rel = pick(modable);
            static const mode_t modes[] = {0600, 0640, 0700, 0444, 0555, 0777, 0711};
            ::chmod(nat(abs(rel)).constData(), modes[rng.bounded(7)]);
            log << QStringLiteral("chmod %1").arg(rel);
            break;
        }
        case 6: {
            const QString rel = pick(nonRoot);
            const bool wasDir = tree.value(rel).kind == TreeState::Kind::Dir;
            removeAll(abs(rel));
            if (wasDir)
                createFile(abs(rel), "was a folder");
            else if (rng.bounded(2))
                ::mkdir(nat(abs(rel)).constData(), 0755);
            else
                makeLink(abs(rel), QStringLiteral("retyped into a link"));
            log << QStringLiteral("retyped %1").arg(rel);
            break;
        }
        case 7:
            setRandomPastTime(rng, abs(folder));
            log << QStringLiteral("touched %1").arg(folder);
            break;
        default: {
            const QString rel = joined(inFolder, names.next(inFolder));
            ::mkfifo(nat(abs(rel)).constData(), 0600);
            log << QStringLiteral("added fifo %1").arg(rel);
            break;
        }
        }
    }
    return log;
}

} // namespace RandomTree
