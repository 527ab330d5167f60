// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "backuprecovery.h"

#include "backupfolder.h"
#include "treecopy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <fcntl.h>
#include <mutex>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcRecovery, "img.backup.recovery", QtWarningMsg)

namespace BackupRecovery {

namespace {

const QByteArray DiscardSuffix = ".discard";

// Removes trees on a thread of its own, so that Cancel and OK return once the workspace is right
// rather than once the old tree of ten thousand files is gone. The process waits for it before
// it exits (or the plugin is unloaded).
class Janitor
{
public:
    ~Janitor()
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_quit = true;
        }
        m_wake.notify_all();
        if (m_worker.joinable())
            m_worker.join();
    }

    void add(const QByteArray &path)
    {
        if (path.isEmpty())
            return;
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_queue.push_back(path);
        if (!m_worker.joinable())
            m_worker = std::thread([this] { run(); });
        m_wake.notify_all();
    }

    void waitIdle()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_idle.wait(lock, [this] { return m_queue.empty() && !m_busy; });
    }

private:
    void run()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        for (;;) {
            m_wake.wait(lock, [this] { return m_quit || !m_queue.empty(); });
            if (m_queue.empty())
                return; // quitting, nothing left
            const QByteArray path = m_queue.front();
            m_queue.pop_front();
            m_busy = true;
            lock.unlock();
            TreeCopy::removeTree(path);
            lock.lock();
            m_busy = false;
            m_idle.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::deque<QByteArray> m_queue;
    std::thread m_worker;
    bool m_busy = false;
    bool m_quit = false;
};

Janitor &janitor()
{
    static Janitor instance;
    return instance;
}

void removeLater(const QByteArray &path)
{
    struct stat st;
    if (TreeCopy::entryStat(path, &st))
        janitor().add(path);
}

void discardFolder(const QByteArray &backup)
{
    struct stat st;
    if (!TreeCopy::entryStat(backup, &st))
        return;
    const QByteArray renamed = backup + DiscardSuffix;
    TreeCopy::removeTree(renamed); // a leftover of an earlier crash at the same name
    if (::rename(backup.constData(), renamed.constData()) == 0) {
        janitor().add(renamed);
        return;
    }
    // Cannot be renamed: it stops counting as complete before anything else of it goes.
    ::unlink((backup + BackupFolder::Complete).constData());
    TreeCopy::removeTree(backup);
}

bool exists(const QByteArray &path)
{
    struct stat st;
    return TreeCopy::entryStat(path, &st);
}

// "device:inode" of the entry at path; empty when nothing is there.
QByteArray identity(const QByteArray &path)
{
    struct stat st;
    if (!TreeCopy::entryStat(path, &st))
        return {};
    return QByteArray::number(quint64(st.st_dev)) + ':' + QByteArray::number(quint64(st.st_ino));
}

// Where a restore puts its copy, and where a swap without exchange parks the old workspace:
// hidden siblings of the workspace named after the backup, so that they are found again.
struct Siblings
{
    QByteArray staging;
    QByteArray parked;
};

QByteArray parentOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : path.left(slash);
}

Siblings siblingsOf(const QByteArray &workSpace, const QByteArray &backup)
{
    const QByteArray prefix =
        parentOf(workSpace) + "/." + workSpace.mid(workSpace.lastIndexOf('/') + 1);
    const QByteArray tag = backup.mid(backup.lastIndexOf('/') + 1);
    return {prefix + ".restore-" + tag, prefix + ".old-" + tag};
}

// A dead window no longer holds its backup's lock.
bool isAlive(const QByteArray &backup)
{
    const int fd =
        ::open((backup + BackupFolder::Lock).constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool locked = flock(fd, LOCK_EX | LOCK_NB) != 0;
    ::close(fd);
    return locked;
}

// Special files the backup could not hold stay as the workspace has them: they move into the
// restored tree before it is swapped in, and their folders get their times back.
void carryKeptEntries(const QByteArray &workSpace, const QByteArray &backup,
                      const QByteArray &restored)
{
    const QList<QByteArray> kept = BackupFolder::readMark(backup + BackupFolder::Kept).split('\0');
    for (const QByteArray &rel : kept) {
        if (rel.isEmpty())
            continue;
        const QByteArray target = restored + '/' + rel;
        const QByteArray folder = parentOf(target);
        struct stat folderStat;
        if (!exists(workSpace + '/' + rel) || exists(target) ||
            !TreeCopy::entryStat(folder, &folderStat))
            continue;
        if (::rename((workSpace + '/' + rel).constData(), target.constData()) == 0)
            TreeCopy::applyFolderMetadata(folder, folderStat);
    }
}

// Puts the tree at restored in the workspace's place; answers where the old workspace went
// (empty when there was none).
QByteArray swapIn(const QByteArray &workSpace, const QByteArray &restored, const QByteArray &parked)
{
    struct stat rootStat;
    TreeCopy::entryStat(restored, &rootStat);
    QByteArray old;
    if (TreeCopy::exchange(restored, workSpace)) {
        old = restored;
    } else if (!exists(workSpace)) {
        ::rename(restored.constData(), workSpace.constData());
    } else {
        // Without an exchange there is an instant with no workspace; the next opening finishes
        // the swap from the backup's record.
        if (::rename(workSpace.constData(), parked.constData()) != 0)
            return {};
        if (::rename(restored.constData(), workSpace.constData()) != 0) {
            ::rename(parked.constData(), workSpace.constData());
            return {};
        }
        old = parked;
    }
    // Moving a folder may touch its own times.
    TreeCopy::applyFolderMetadata(workSpace, rootStat);
    TreeCopy::syncFolder(parentOf(workSpace));
    return old;
}

bool isBackupName(const QString &name)
{
    static const QRegularExpression pattern(QStringLiteral("^\\d+\\.\\d{6}(-\\d+)?$"));
    return pattern.match(name).hasMatch();
}

// A backup folder still being made (".<name>-<pid>.new"); its maker holds its lock.
bool isUnfinishedName(const QString &name)
{
    static const QRegularExpression pattern(QStringLiteral("^\\.\\d+\\.\\d{6}-\\d+\\.new$"));
    return pattern.match(name).hasMatch();
}

// Its maker holds the lock, or is alive and has not taken the lock yet.
bool isBeingMade(const QString &name, const QByteArray &path)
{
    if (isAlive(path))
        return true;
    const pid_t maker = pid_t(name.section(QLatin1Char('-'), -1).chopped(4).toLongLong());
    return !exists(path + BackupFolder::Lock) && maker > 0 &&
           (::kill(maker, 0) == 0 || errno == EPERM);
}

bool isDiscardedName(const QString &name)
{
    return name.endsWith(QLatin1String(DiscardSuffix)) &&
           isBackupName(name.chopped(DiscardSuffix.size()));
}

// Finishes or undoes a swap that a dead window had begun. True when the workspace is settled
// and the backup is gone.
bool settleSwap(const QByteArray &workSpace, const QByteArray &backup, const Siblings &siblings)
{
    const QByteArray restored = BackupFolder::readMark(backup + BackupFolder::Restored);
    if (restored.isEmpty())
        return false;
    if (identity(workSpace) != restored && !exists(workSpace)) {
        for (const QByteArray &candidate : {siblings.staging, backup + BackupFolder::Tree}) {
            if (identity(candidate) == restored)
                ::rename(candidate.constData(), workSpace.constData());
        }
    }
    if (identity(workSpace) != restored)
        return false;
    removeLater(siblings.parked);
    removeLater(siblings.staging);
    discardFolder(backup);
    return true;
}

// A restored copy or a parked workspace whose backup is gone (its removal was cut short after
// the swap) is garbage: nothing else refers to it any more.
void removeOrphanSiblings(const QByteArray &workSpace, const QDir &temp)
{
    const QByteArray parent = parentOf(workSpace);
    const QString name = QFile::decodeName(workSpace.mid(workSpace.lastIndexOf('/') + 1));
    const QStringList prefixes{QLatin1Char('.') + name + QLatin1String(".restore-"),
                               QLatin1Char('.') + name + QLatin1String(".old-")};
    const QStringList entries =
        QDir(QFile::decodeName(parent))
            .entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QString &entry : entries) {
        for (const QString &prefix : prefixes) {
            const QString tag = entry.mid(prefix.size());
            struct stat st;
            const QByteArray path = parent + '/' + QFile::encodeName(entry);
            if (entry.startsWith(prefix) && isBackupName(tag) &&
                !exists(QFile::encodeName(temp.filePath(tag))) && TreeCopy::entryStat(path, &st) &&
                st.st_uid == geteuid())
                removeLater(path);
        }
    }
}

} // namespace

QList<Pending> settle(const QString &workSpace, const QString &tempDir)
{
    QList<Pending> pending;
    if (workSpace.isEmpty())
        return pending;
    const QByteArray ws = BackupFolder::nativeAbsolute(workSpace);
    const QString tempPath = tempDir.isEmpty() ? QDir::tempPath() : tempDir;
    if (tempPath.isEmpty() || QDir::isRelativePath(tempPath)) {
        removeStaleTemporaries(workSpace);
        return pending; // no temporary folder: no backup can be there
    }
    const QDir temp(tempPath);
    QStringList names =
        temp.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QString &name : std::as_const(names)) {
        // What a crash left of a removal; nothing in it is trusted or needed.
        struct stat st;
        const QByteArray path = QFile::encodeName(temp.filePath(name));
        if (isDiscardedName(name) && TreeCopy::entryStat(path, &st) && st.st_uid == geteuid())
            removeLater(path);
        else if (isUnfinishedName(name) && TreeCopy::entryStat(path, &st) &&
                 st.st_uid == geteuid() && !isBeingMade(name, path))
            removeLater(path);
    }
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const QString &name) { return !isBackupName(name); }),
                names.end());
    std::sort(names.begin(), names.end(), [](const QString &a, const QString &b) {
        return a.section(QLatin1Char('-'), 0, 0).toDouble() <
               b.section(QLatin1Char('-'), 0, 0).toDouble();
    });
    for (const QString &name : std::as_const(names)) {
        const QByteArray backup = QFile::encodeName(temp.filePath(name));
        struct stat st;
        if (!TreeCopy::entryStat(backup, &st) || !S_ISDIR(st.st_mode) || st.st_uid != geteuid() ||
            BackupFolder::readMark(backup + BackupFolder::Owner) != ws || isAlive(backup))
            continue;
        const Siblings siblings = siblingsOf(ws, backup);
        if (settleSwap(ws, backup, siblings))
            continue;
        if (!exists(ws) && exists(siblings.parked))
            ::rename(siblings.parked.constData(), ws.constData());
        TreeCopy::removeTree(siblings.staging);
        if (!exists(backup + BackupFolder::Complete)) {
            qCDebug(lcRecovery) << "removing the incomplete backup" << backup;
            discardFolder(backup);
        } else if (exists(backup + BackupFolder::Cancel)) {
            // The author had chosen Cancel: that is finished now, without asking again.
            goBack(workSpace, QFile::decodeName(backup));
        } else {
            pending.append(
                {QFile::decodeName(backup), name.section(QLatin1Char('-'), 0, 0).toDouble()});
        }
    }
    removeOrphanSiblings(ws, temp);
    removeStaleTemporaries(workSpace);
    return pending;
}

SettingsBackup::Outcome goBack(const QString &workSpace, const QString &backupPath,
                               const SettingsBackup::Progress &progress)
{
    const QByteArray ws = BackupFolder::nativeAbsolute(workSpace);
    const QByteArray backup = QFile::encodeName(backupPath);
    const QByteArray tree = backup + BackupFolder::Tree;
    if (workSpace.isEmpty() || !exists(backup + BackupFolder::Complete) || !exists(tree))
        return SettingsBackup::Outcome::NothingToUndo;
    const qint64 total = BackupFolder::readMark(backup + BackupFolder::Complete).toLongLong();
    BackupFolder::writeMark(backup + BackupFolder::Cancel, QByteArray(), true);
    const Siblings siblings = siblingsOf(ws, backup);
    TreeCopy::removeTree(siblings.staging);
    QByteArray restored = tree;
    // Across file systems the backup is copied beside the workspace first; the workspace is
    // replaced only once that copy is complete.
    if (!TreeCopy::sameFileSystem(tree, parentOf(ws))) {
        const auto step = [&](qint64 done) {
            if (progress)
                progress(done, total);
        };
        if (TreeCopy::copyTree(tree, siblings.staging, step) != TreeCopy::Result::Done) {
            qCDebug(lcRecovery) << "cannot make the restored copy of" << ws;
            TreeCopy::removeTree(siblings.staging);
            ::unlink(
                (backup + BackupFolder::Cancel).constData()); // asked again at the next opening
            return SettingsBackup::Outcome::Failed;
        }
        restored = siblings.staging;
    }
    carryKeptEntries(ws, backup, restored);
    BackupFolder::writeMark(backup + BackupFolder::Restored, identity(restored), true);
    const QByteArray old = swapIn(ws, restored, siblings.parked);
    if (identity(ws) != BackupFolder::readMark(backup + BackupFolder::Restored)) {
        // Not swapped: the workspace is as it was, and the backup is offered again next time.
        if (restored != tree)
            removeLater(restored);
        ::unlink((backup + BackupFolder::Restored).constData());
        ::unlink((backup + BackupFolder::Cancel).constData());
        return SettingsBackup::Outcome::Failed;
    }
    removeLater(old);
    removeLater(siblings.staging);
    discardFolder(backup);
    return SettingsBackup::Outcome::Restored;
}

void keep(const QString &backupPath)
{
    discard(backupPath);
}

void discard(const QString &backupPath)
{
    if (!backupPath.isEmpty())
        discardFolder(QFile::encodeName(backupPath));
}

void waitForCleanUp()
{
    janitor().waitIdle();
}

QStringList removeStaleTemporaries(const QString &workSpace)
{
    static const QRegularExpression pattern(QStringLiteral("^\\..+\\.imgsave-[A-Za-z0-9]{6}$"));
    QStringList removed;
    if (workSpace.isEmpty())
        return removed;
    const QDir dir(workSpace);
    const QStringList names = dir.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        const QByteArray path = QFile::encodeName(dir.filePath(name));
        struct stat st;
        if (pattern.match(name).hasMatch() && TreeCopy::entryStat(path, &st) &&
            S_ISREG(st.st_mode) && ::unlink(path.constData()) == 0)
            removed.append(name);
    }
    return removed;
}

} // namespace BackupRecovery
