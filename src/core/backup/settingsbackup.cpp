// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "settingsbackup.h"

#include "backupfolder.h"
#include "backuprecovery.h"
#include "filesystem.h"
#include "treecopy.h"
#include "writeguard.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QLoggingCategory>
#include <QMutex>
#include <QSet>
#include <QWaitCondition>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

Q_LOGGING_CATEGORY(lcBackup, "img.backup", QtWarningMsg)

namespace {

constexpr int MaxNameSuffix = 1000;

// Gives the ready folder at staging the backup name base, or base with "-1", "-2", ... when
// that is taken, and takes the lock of that name first: a folder with a backup's name is never
// without its lock. The rename never replaces anything, a link planted at the name included.
QByteArray nameFolder(const QByteArray &staging, const QString &base,
                      std::unique_ptr<QLockFile> *lock)
{
    for (int suffix = 0; suffix <= MaxNameSuffix; ++suffix) {
        const QString name = suffix == 0 ? base : base + QLatin1Char('-') + QString::number(suffix);
        const QByteArray path = Fs::encode(name);
        if (TreeCopy::exists(path))
            continue;
        auto candidate =
            std::make_unique<QLockFile>(name + QLatin1String(BackupFolder::LockSuffix));
        // A lock file of a process that is gone is taken over; anything else means the name is
        // someone else's.
        candidate->setStaleLockTime(0);
        if (!candidate->tryLock(0))
            continue;
        if (Fs::renameNoReplace(staging, path)) {
            *lock = std::move(candidate);
            return path;
        }
        if (Fs::lastFailure() != Fs::Failure::Exists)
            return {};
    }
    return {};
}

} // namespace

class SettingsBackup::Private
{
public:
    QString workSpaceText;
    QByteArray workSpace;
    QByteArray folder;
    QByteArray tree;
    // Held for as long as the window lives; the system's lock on the file, which a dead process
    // loses, is what a later opening asks.
    std::unique_ptr<QLockFile> lock;
    int guardId = 0;

    QMutex mutex;
    QWaitCondition stateChanged;
    // Changes about to be made that wait for the lock: the image gives them the lock before it
    // copies its next entry, so that a save never queues behind the whole image.
    std::atomic<int> changesWaiting{0};
    QWaitCondition changesDone;
    State state = State::Unavailable;
    bool started = false;
    // While held, the image copies nothing more than entriesBeforeHold entries until proceed()
    // or the deadline.
    bool held = false;
    qint64 entriesBeforeHold = 0;
    QDeadlineTimer holdUntil;
    QWaitCondition holdEnded;
    bool failed = false;
    std::atomic<bool> stop{false};
    std::thread worker;
    std::function<void(State)> finished;

    // What the image holds, by path relative to the workspace: every entry handled (taken, or
    // found missing), the missing ones (their subtrees did not exist at opening either), the
    // folders taken with their opening metadata in the order taken (parents first), and the
    // special files left alone.
    QSet<QByteArray> handled;
    QSet<QByteArray> missing;
    QSet<QByteArray> folderSet;
    std::vector<std::pair<QByteArray, Fs::Entry>> folders;
    QList<QByteArray> kept;
    qint64 count = 0;

    QByteArray source(const QByteArray &rel) const
    {
        return rel.isEmpty() ? workSpace : workSpace + '/' + rel;
    }
    QByteArray target(const QByteArray &rel) const
    {
        return rel.isEmpty() ? tree : tree + '/' + rel;
    }

    bool takeRoot();
    void waitWhileHeldLocked();
    void endHold();
    Fs::CopyResult takeLocked(const QByteArray &rel);
    void takeSubtreeLocked(const QByteArray &rel);
    void preserveLocked(const QByteArray &rel);
    void preservePath(const QString &path);
    void run();
    void finishLocked();
    void stopWorker();
    void removeGuard();
    void unlock();
};

bool SettingsBackup::Private::takeRoot()
{
    Fs::Entry root;
    if (!Fs::entryAt(workSpace, &root) || !root.isFolder())
        return false; // a workspace that is not a real folder has no image to go back to
    if (!Fs::makePrivateFolder(tree))
        return false;
    handled.insert(QByteArray());
    folderSet.insert(QByteArray());
    folders.emplace_back(QByteArray(), root);
    count = 1;
    return true;
}

Fs::CopyResult SettingsBackup::Private::takeLocked(const QByteArray &rel)
{
    handled.insert(rel);
    Fs::Entry entry;
    if (!Fs::entryAt(source(rel), &entry)) {
        missing.insert(rel);
        return Fs::CopyResult::Absent;
    }
    const Fs::CopyResult result = Fs::copyEntry(source(rel), target(rel), entry);
    switch (result) {
    case Fs::CopyResult::Done:
        ++count;
        if (entry.isFolder()) {
            folderSet.insert(rel);
            folders.emplace_back(rel, entry);
        }
        break;
    case Fs::CopyResult::Absent:
        missing.insert(rel);
        break;
    case Fs::CopyResult::NotCopyable:
        kept.append(rel);
        break;
    case Fs::CopyResult::Failed:
        qCDebug(lcBackup) << "cannot take" << rel << "into the backup" << Fs::lastFailureText();
        failed = true;
        stop = true;
        break;
    }
    return result;
}

// A folder that the bundle is about to change as a whole goes in with everything below it.
void SettingsBackup::Private::takeSubtreeLocked(const QByteArray &rel)
{
    std::vector<QByteArray> pending{rel};
    while (!pending.empty() && !failed) {
        const QByteArray folder = pending.back();
        pending.pop_back();
        if (!handled.contains(folder) && takeLocked(folder) != Fs::CopyResult::Done)
            continue;
        if (!folderSet.contains(folder))
            continue;
        QList<QByteArray> names;
        Fs::listFolder(source(folder), &names);
        for (const QByteArray &name : std::as_const(names))
            pending.push_back(folder.isEmpty() ? name : folder + '/' + name);
    }
}

void SettingsBackup::Private::preserveLocked(const QByteArray &rel)
{
    // Parents first, each as the folder entry it was: their opening times are taken before the
    // change below touches them.
    qsizetype slash = rel.indexOf('/');
    while (slash > 0) {
        const QByteArray parent = rel.left(slash);
        if (missing.contains(parent))
            return; // not there at opening: nothing below it was either
        if (!handled.contains(parent) && takeLocked(parent) != Fs::CopyResult::Done)
            return;
        if (!folderSet.contains(parent))
            return;
        slash = rel.indexOf('/', slash + 1);
    }
    // A folder taken as an entry may still lack what is inside it: that goes in now too.
    if (folderSet.contains(rel)) {
        takeSubtreeLocked(rel);
        return;
    }
    if (handled.contains(rel))
        return;
    Fs::Entry entry;
    if (Fs::entryAt(source(rel), &entry) && entry.isFolder())
        takeSubtreeLocked(rel);
    else
        takeLocked(rel);
}

void SettingsBackup::Private::preservePath(const QString &path)
{
    const QByteArray native = BackupFolder::nativeAbsolute(path);
    if (workSpace.isEmpty() || !native.startsWith(workSpace + '/'))
        return;
    ++changesWaiting;
    const QMutexLocker lock(&mutex);
    if (started && state == State::Capturing && !stop)
        preserveLocked(native.mid(workSpace.size() + 1));
    if (--changesWaiting == 0)
        changesDone.wakeAll();
}

void SettingsBackup::Private::waitWhileHeldLocked()
{
    while (held && !stop) {
        if (!holdEnded.wait(&mutex, holdUntil))
            break;
    }
    held = false;
}

void SettingsBackup::Private::endHold()
{
    const QMutexLocker lock(&mutex);
    held = false;
    holdEnded.wakeAll();
}

void SettingsBackup::Private::run()
{
    // The image is background work: the window starting up and answering input comes first.
    Fs::lowerThreadPriority();
    std::vector<QByteArray> pending{QByteArray()};
    while (!pending.empty() && !stop) {
        const QByteArray folder = pending.back();
        pending.pop_back();
        QList<QByteArray> names;
        if (!Fs::listFolder(source(folder), &names)) {
            // A folder that vanished meanwhile is simply not there; one we cannot read is a hole.
            if (Fs::lastFailure() != Fs::Failure::Missing) {
                const QMutexLocker lock(&mutex);
                failed = true;
            }
            continue;
        }
        for (const QByteArray &name : std::as_const(names)) {
            const QByteArray rel = folder.isEmpty() ? name : folder + '/' + name;
            QMutexLocker lock(&mutex);
            if (held && count >= entriesBeforeHold)
                waitWhileHeldLocked();
            while (changesWaiting > 0 && !stop)
                changesDone.wait(&mutex, 50); // the timeout only guards against a lost wake
            if (stop)
                break;
            if (!handled.contains(rel))
                takeLocked(rel);
            if (folderSet.contains(rel))
                pending.push_back(rel);
        }
    }
    QMutexLocker lock(&mutex);
    finishLocked();
    const State end = state;
    lock.unlock();
    // A finished image needs nothing more before a change: the saves of the rest of the session
    // no longer pass through it.
    removeGuard();
    if (finished)
        finished(end);
}

void SettingsBackup::Private::finishLocked()
{
    bool ok = !failed && !stop;
    // Contents first: taking them changed each folder's times.
    for (auto it = folders.rbegin(); ok && it != folders.rend(); ++it)
        ok = Fs::applyMetadata(target(it->first), it->second);
    if (ok) {
        QByteArray keptList;
        for (const QByteArray &rel : std::as_const(kept))
            keptList += rel + '\0';
        ok = BackupFolder::writeMark(folder + BackupFolder::Kept, keptList) &&
             BackupFolder::writeMark(folder + BackupFolder::Complete, QByteArray::number(count));
    }
    if (!ok) {
        // Never trusted, so it need not fill the disk any longer.
        TreeCopy::removeTree(tree);
        qCDebug(lcBackup) << "the backup of" << workSpace << "is incomplete";
    }
    state = ok ? State::Complete : State::Incomplete;
    stateChanged.wakeAll();
}

void SettingsBackup::Private::stopWorker()
{
    stop = true;
    endHold();
    if (worker.joinable())
        worker.join();
}

void SettingsBackup::Private::removeGuard()
{
    if (guardId) {
        WriteGuard::remove(guardId);
        guardId = 0;
    }
}

void SettingsBackup::Private::unlock()
{
    lock.reset(); // removes the lock file beside the folder
}

SettingsBackup::SettingsBackup(const QString &workSpace, const QString &tempDir)
    : d(std::make_unique<Private>())
{
    using namespace std::chrono;
    d->workSpaceText = workSpace;
    if (workSpace.isEmpty())
        return;
    d->workSpace = BackupFolder::nativeAbsolute(workSpace);
    const auto micros = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    // Qt answers an empty path for a temporary folder that does not exist; a relative one would
    // put the backup wherever the host happens to run.
    const QString temp = tempDir.isEmpty() ? QDir::tempPath() : tempDir;
    if (temp.isEmpty() || QDir::isRelativePath(temp)) {
        qCDebug(lcBackup) << "no temporary folder for the backup";
        return;
    }
    // The folder is made under a hidden name and told its workspace, and only then locked and
    // given a backup's name: a crash half-way leaves nothing that looks like a backup, and what
    // it leaves is removed by the next opening. Making the folder fails on anything already there,
    // a planted link included, so the folder is new and ours.
    const QString base = backupPathFor(double(micros) / 1e6, temp);
    const QByteArray staging = Fs::encode(
        QDir(temp).filePath(QLatin1Char('.') + QFileInfo(base).fileName() + QLatin1Char('-') +
                            QString::number(Fs::processId()) + QLatin1String(".new")));
    if (!Fs::makePrivateFolder(staging)) {
        qCDebug(lcBackup) << "cannot create a backup folder in" << temp;
        return;
    }
    if (BackupFolder::writeMark(staging + BackupFolder::Owner, d->workSpace))
        d->folder = nameFolder(staging, base, &d->lock);
    if (d->folder.isEmpty()) {
        d->unlock();
        TreeCopy::removeTree(staging);
        return;
    }
    d->tree = d->folder + BackupFolder::Tree;
    d->state = State::Capturing;
}

SettingsBackup::~SettingsBackup()
{
    d->stopWorker();
    d->removeGuard();
    d->unlock();
}

QString SettingsBackup::backupPathFor(double secondsSince1970, const QString &tempDir)
{
    return QDir(tempDir).filePath(QString::asprintf("%f", secondsSince1970));
}

QString SettingsBackup::path() const
{
    return Fs::decode(d->folder);
}

QString SettingsBackup::workSpace() const
{
    return d->workSpaceText;
}

SettingsBackup::State SettingsBackup::state() const
{
    const QMutexLocker lock(&d->mutex);
    return d->state;
}

qint64 SettingsBackup::entryCount() const
{
    const QMutexLocker lock(&d->mutex);
    return d->count;
}

void SettingsBackup::start(std::function<void(State)> finished, std::chrono::milliseconds hold,
                           qint64 entriesBeforeHold)
{
    QMutexLocker lock(&d->mutex);
    if (d->started || d->state != State::Capturing)
        return;
    d->started = true;
    d->finished = std::move(finished);
    d->held = hold.count() > 0;
    d->entriesBeforeHold = entriesBeforeHold;
    d->holdUntil = QDeadlineTimer(hold);
    if (!d->takeRoot()) {
        d->failed = true;
        d->finishLocked();
        const State end = d->state;
        lock.unlock();
        if (d->finished)
            d->finished(end);
        return;
    }
    Private *p = d.get();
    d->guardId = WriteGuard::install([p](const QString &path) { p->preservePath(path); });
    d->worker = std::thread([p] { p->run(); });
}

void SettingsBackup::proceed()
{
    d->endHold();
}

bool SettingsBackup::waitForFinished(int msecs)
{
    d->endHold();
    QMutexLocker lock(&d->mutex);
    if (!d->started)
        return d->state != State::Capturing;
    QDeadlineTimer deadline(msecs < 0 ? QDeadlineTimer::Forever : QDeadlineTimer(msecs));
    while (d->state == State::Capturing) {
        if (!d->stateChanged.wait(&d->mutex, deadline))
            return false;
    }
    return true;
}

void SettingsBackup::preserve(const QString &path)
{
    d->preservePath(path);
}

SettingsBackup::Outcome SettingsBackup::restore(const Progress &progress)
{
    if (!d->started || !waitForFinished() || state() != State::Complete) {
        clear();
        return Outcome::NothingToUndo;
    }
    d->stopWorker();
    d->removeGuard();
    const Outcome outcome =
        BackupRecovery::goBack(d->workSpaceText, Fs::decode(d->folder), progress);
    d->unlock();
    return outcome;
}

void SettingsBackup::clear()
{
    d->stopWorker();
    d->removeGuard();
    if (!d->folder.isEmpty())
        BackupRecovery::discard(Fs::decode(d->folder));
    d->unlock();
}
