// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "backuprecovery.h"

#include "backupfolder.h"
#include "filesystem.h"
#include "treecopy.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QLoggingCategory>
#include <QMutex>
#include <QRegularExpression>
#include <QThreadPool>

#include <algorithm>

Q_LOGGING_CATEGORY(lcRecovery, "img.backup.recovery", QtWarningMsg)

namespace BackupRecovery {

namespace {

const QByteArray DiscardSuffix = ".discard";
const QLatin1String RemovalLockSuffix(".rmlock");

// Removes trees in the background, so that Cancel and OK return once the workspace is right
// rather than once the old tree of ten thousand files is gone. The removals run one at a time in
// a pool that the application object waits for when it goes (a post routine of its destructor,
// at the end of main()), never a destructor of the plugin's own statics, where a loader lock may
// be held.
QMutex poolMutex;
QThreadPool *pool = nullptr;

void finishCleanUp()
{
    const QMutexLocker lock(&poolMutex);
    if (pool) {
        pool->waitForDone();
        delete pool;
        pool = nullptr;
    }
}

QThreadPool *cleanUpPool()
{
    const QMutexLocker lock(&poolMutex);
    if (!pool) {
        pool = new QThreadPool;
        pool->setObjectName(QStringLiteral("img.backup.cleanup"));
        pool->setMaxThreadCount(1);
        qAddPostRoutine(finishCleanUp);
    }
    return pool;
}

bool exists(const QByteArray &path)
{
    return TreeCopy::exists(path);
}

void removeLater(const QByteArray &path)
{
    if (exists(path))
        cleanUpPool()->start([path] { TreeCopy::removeTree(path); });
}

void discardFolder(const QByteArray &backup)
{
    if (!exists(backup))
        return;
    const QByteArray renamed = backup + DiscardSuffix;
    TreeCopy::removeTree(renamed); // a leftover of an earlier crash at the same name
    if (Fs::rename(backup, renamed)) {
        removeLater(renamed);
        return;
    }
    // Cannot be renamed: it stops counting as complete before anything else of it goes.
    Fs::removeFile(backup + BackupFolder::Complete);
    TreeCopy::removeTree(backup);
}

// "device:inode" of the entry at path; empty when nothing is there.
QByteArray identity(const QByteArray &path)
{
    Fs::Entry entry;
    if (!Fs::entryAt(path, &entry))
        return {};
    return QByteArray::number(entry.device) + ':' + QByteArray::number(entry.inode);
}

// True when the entry at path belongs to the user this process runs as: another user's backups
// and leftovers in a shared temporary folder are never touched.
bool isOurs(const QByteArray &path, Fs::Entry *entry = nullptr)
{
    Fs::Entry found;
    if (!Fs::entryAt(path, &found) || found.owner != Fs::currentUser())
        return false;
    if (entry)
        *entry = found;
    return true;
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

// Whether the lock file at path is held; a lock file whose owner is gone is removed on the way.
bool probeLock(const QByteArray &path)
{
    QLockFile probe(Fs::decode(path));
    probe.setStaleLockTime(1);
    // A few milliseconds, so that a lock file made this very moment has aged past the stale time
    // and its system lock is asked.
    if (probe.tryLock(5)) {
        probe.unlock();
        return false;
    }
    return probe.error() == QLockFile::LockFailedError;
}

// A dead window no longer holds its backup's lock. The probe takes any lock file as stale that
// its owner does not hold: the system's own lock on it, which a live owner keeps and a dead one
// has lost, decides, so neither a lock file of a dead process nor an empty one left by a crash
// while it was made counts. A dead owner's lock file is removed on the way.
bool isAlive(const QByteArray &backup)
{
    const QByteArray lock = backup + BackupFolder::LockSuffix;
    Fs::Entry entry;
    return Fs::entryAt(lock, &entry) && entry.isFile() && probeLock(lock);
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
        Fs::Entry folderEntry;
        if (!exists(workSpace + '/' + rel) || exists(target) || !Fs::entryAt(folder, &folderEntry))
            continue;
        if (Fs::rename(workSpace + '/' + rel, target))
            Fs::applyMetadata(folder, folderEntry);
    }
}

// Puts the tree at restored in the workspace's place; answers where the old workspace went
// (empty when there was none).
QByteArray swapIn(const QByteArray &workSpace, const QByteArray &restored, const QByteArray &parked)
{
    Fs::Entry root;
    const bool rootKnown = Fs::entryAt(restored, &root);
    QByteArray old;
    if (Fs::exchange(restored, workSpace)) {
        old = restored;
    } else if (!exists(workSpace)) {
        Fs::rename(restored, workSpace);
    } else {
        // Without an exchange there is an instant with no workspace; the next opening finishes
        // the swap from the backup's record.
        if (!Fs::rename(workSpace, parked))
            return {};
        if (!Fs::rename(restored, workSpace)) {
            Fs::rename(parked, workSpace);
            return {};
        }
        old = parked;
    }
    // Moving a folder may touch its own times.
    if (rootKnown)
        Fs::applyMetadata(workSpace, root);
    Fs::syncFolder(parentOf(workSpace));
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

// Its maker, named in it, still runs.
bool isBeingMade(const QString &name)
{
    const qint64 maker = name.section(QLatin1Char('-'), -1).chopped(4).toLongLong();
    return maker > 0 && Fs::processRuns(maker);
}

// The lock file of a backup folder that is gone (a crash came between the lock and the folder,
// or between the folder's removal and the lock's).
bool isOrphanLockName(const QString &name)
{
    return name.endsWith(QLatin1String(BackupFolder::LockSuffix)) &&
           isBackupName(name.chopped(int(sizeof BackupFolder::LockSuffix) - 1));
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
                Fs::rename(candidate, workSpace);
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
    const QString name = Fs::decode(workSpace.mid(workSpace.lastIndexOf('/') + 1));
    const QStringList prefixes{QLatin1Char('.') + name + QLatin1String(".restore-"),
                               QLatin1Char('.') + name + QLatin1String(".old-")};
    const QStringList entries =
        QDir(Fs::decode(parent))
            .entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QString &entry : entries) {
        for (const QString &prefix : prefixes) {
            const QString tag = entry.mid(prefix.size());
            const QByteArray path = parent + '/' + Fs::encode(entry);
            if (entry.startsWith(prefix) && isBackupName(tag) &&
                !exists(Fs::encode(temp.filePath(tag))) && isOurs(path))
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
        const QByteArray path = Fs::encode(temp.filePath(name));
        if (isDiscardedName(name) && isOurs(path))
            removeLater(path);
        else if (isUnfinishedName(name) && isOurs(path) && !isBeingMade(name))
            removeLater(path);
    }
    const QStringList files = temp.entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QString &name : files) {
        const QByteArray path = Fs::encode(temp.filePath(name));
        if (!isOurs(path))
            continue;
        // Asking it removes the lock file when its owner is gone.
        if (isOrphanLockName(name) &&
            !exists(path.chopped(int(sizeof BackupFolder::LockSuffix) - 1)))
            isAlive(path.chopped(int(sizeof BackupFolder::LockSuffix) - 1));
        // QLockFile serialises the removal of a stale lock with a lock of its own beside it,
        // "<lock>.rmlock"; a process killed in that moment leaves it behind.
        else if (name.endsWith(QLatin1String(RemovalLockSuffix)) &&
                 isOrphanLockName(name.chopped(RemovalLockSuffix.size())))
            probeLock(path);
    }
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const QString &name) { return !isBackupName(name); }),
                names.end());
    std::sort(names.begin(), names.end(), [](const QString &a, const QString &b) {
        return a.section(QLatin1Char('-'), 0, 0).toDouble() <
               b.section(QLatin1Char('-'), 0, 0).toDouble();
    });
    for (const QString &name : std::as_const(names)) {
        const QByteArray backup = Fs::encode(temp.filePath(name));
        Fs::Entry entry;
        if (!isOurs(backup, &entry) || !entry.isFolder() ||
            BackupFolder::readMark(backup + BackupFolder::Owner) != ws || isAlive(backup))
            continue;
        const Siblings siblings = siblingsOf(ws, backup);
        if (settleSwap(ws, backup, siblings))
            continue;
        if (!exists(ws) && exists(siblings.parked))
            Fs::rename(siblings.parked, ws);
        TreeCopy::removeTree(siblings.staging);
        if (!exists(backup + BackupFolder::Complete)) {
            qCDebug(lcRecovery) << "removing the incomplete backup" << backup;
            discardFolder(backup);
        } else if (exists(backup + BackupFolder::Cancel)) {
            // The author had chosen Cancel: that is finished now, without asking again.
            goBack(workSpace, Fs::decode(backup));
        } else {
            pending.append({Fs::decode(backup), name.section(QLatin1Char('-'), 0, 0).toDouble()});
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
    const QByteArray backup = Fs::encode(backupPath);
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
    if (!Fs::sameFileSystem(tree, parentOf(ws))) {
        const auto step = [&](qint64 done) {
            if (progress)
                progress(done, total);
        };
        if (TreeCopy::copyTree(tree, siblings.staging, step) != Fs::CopyResult::Done) {
            qCDebug(lcRecovery) << "cannot make the restored copy of" << ws;
            TreeCopy::removeTree(siblings.staging);
            Fs::removeFile(backup + BackupFolder::Cancel); // asked again at the next opening
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
        Fs::removeFile(backup + BackupFolder::Restored);
        Fs::removeFile(backup + BackupFolder::Cancel);
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
        discardFolder(Fs::encode(backupPath));
}

void waitForCleanUp()
{
    cleanUpPool()->waitForDone();
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
        const QByteArray path = Fs::encode(dir.filePath(name));
        Fs::Entry entry;
        if (pattern.match(name).hasMatch() && Fs::entryAt(path, &entry) && entry.isFile() &&
            Fs::removeFile(path))
            removed.append(name);
    }
    return removed;
}

} // namespace BackupRecovery
