// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "backuprecovery.h"
#include "backupscene.h"
#include "fileops.h"
#include "filesystem.h"
#include "randomtree.h"
#include "settingsbackup.h"
#include "testenv.h"
#include "tmpfsmount.h"
#include "treestate.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <chrono>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using BackupScene::editAsTheWindowDoes;
using BackupScene::entryPath;
using BackupScene::ProgressLog;
using BackupScene::Scene;
using BackupScene::ScratchDir;
using State = SettingsBackup::State;
using Outcome = SettingsBackup::Outcome;

namespace {

const QStringList WorkspaceOnly{QStringLiteral("ws")};

qint64 microsNow()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

// The backup folder's name without a "-N" that makes it unique.
QString baseName(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    const int dash = int(name.indexOf(QLatin1Char('-')));
    return dash < 0 ? name : name.left(dash);
}

bool isPrivateFolder(const QString &path, QString *why)
{
    struct stat st;
    if (!TreeState::lstatPath(path, &st)) {
        *why = QStringLiteral("nothing at %1").arg(path);
        return false;
    }
    if (!S_ISDIR(st.st_mode)) {
        *why = QStringLiteral("%1 is a %2, not a folder")
                   .arg(path, QLatin1String(TreeState::kindName(TreeState::kindOf(st.st_mode))));
        return false;
    }
    if ((st.st_mode & 07777) != 0700) {
        *why = QStringLiteral("%1 has mode %2")
                   .arg(path)
                   .arg(st.st_mode & 07777, 4, 8, QLatin1Char('0'));
        return false;
    }
    if (st.st_uid != ::geteuid()) {
        *why = QStringLiteral("%1 belongs to uid %2").arg(path).arg(st.st_uid);
        return false;
    }
    return true;
}

// A workspace with hidden files, nested and empty folders, awkward names, links and a FIFO.
void fillWorkspace(const QString &ws, const QString &outside)
{
    QDir().mkpath(ws);
    QDir().mkpath(outside);
    RandomTree::createFile(outside + "/target.dat", "outside, never written");
    RandomTree::createFile(ws + "/settings.dat", "10.0\n20.0\n30.0\n15.0\n0.0\n1");
    RandomTree::createFile(ws + "/img.xml", "<plugin/>");
    RandomTree::createFile(ws + "/.hidden", "secret");
    QDir().mkpath(ws + "/.config");
    RandomTree::createFile(ws + "/.config/state", "hidden folder");
    QDir().mkpath(ws + "/css");
    RandomTree::createFile(ws + "/css/.DS_Store", "nested hidden");
    QDir().mkpath(ws + "/files/plugin/deep");
    RandomTree::createFile(ws + "/files/plugin/deep/pic ture.png", QByteArray("\x89PNG\0\x01", 6));
    RandomTree::createFile(ws + QString::fromUtf8("/Bild äöü 画像.jpg"), "non-ascii");
    RandomTree::createFile(ws + "/" + QString(200, QLatin1Char('x')) + ".txt", "long name");
    QDir().mkpath(ws + "/empty");
    RandomTree::makeLink(ws + "/files/current.png", "plugin/deep/pic ture.png");
    RandomTree::makeLink(ws + "/out.dat", outside + "/target.dat");
    ::mkfifo(TreeState::native(ws + "/pipe").constData(), 0600);
    ::chmod(TreeState::native(ws + "/img.xml").constData(), 0444);
    ::chmod(TreeState::native(ws + "/files/plugin").constData(), 0500);
    QRandomGenerator rng(42);
    const TreeState::Tree tree = TreeState::capture(ws);
    for (auto it = tree.cbegin(); it != tree.cend(); ++it)
        RandomTree::setRandomPastTime(rng, entryPath(ws, it.key()));
}

} // namespace

class TestSettingsBackup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void backupPathIsTheTimeWithSixDecimals_data();
    void backupPathIsTheTimeWithSixDecimals();
    void backupIsPrivate();
    void backupLiesInTheSystemTemporaryFolderByDefault();
    void twoBackupsTakeTwoFolders();
    void aTakenNameIsNeverReused_data();
    void aTakenNameIsNeverReused();

    void randomTreeComesBackExactly_data();
    void randomTreeComesBackExactly();
    void restoreUndoesEachKindOfChange_data();
    void restoreUndoesEachKindOfChange();
    void editsBeforeTheImageIsCompleteAreStillUndone_data();
    void editsBeforeTheImageIsCompleteAreStillUndone();
    void writesThroughLinksStayInside_data();
    void writesThroughLinksStayInside();
    void aHeldImageWaitsUntilItMayGoOn_data();
    void aHeldImageWaitsUntilItMayGoOn();

    void unavailableBackupUndoesNothing_data();
    void unavailableBackupUndoesNothing();
    void fullDiskDuringBackup_data();
    void fullDiskDuringBackup();
    void fullDiskDuringRestore();
    void crossFileSystemRestoreIsExact_data();
    void crossFileSystemRestoreIsExact();

    void clearRemovesTheBackup_data();
    void clearRemovesTheBackup();
    void destructorLeavesTheBackupForRecovery_data();
    void destructorLeavesTheBackupForRecovery();
    void emptyWorkspacePathTouchesNothing();

private:
    void roundTrip(const QString &place, const QString &temp, quint32 seed,
                   const RandomTree::Options &options, int changes, bool mustCopy);
};

// ---- the backup folder

void TestSettingsBackup::backupPathIsTheTimeWithSixDecimals_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("name");
    QTest::newRow("microseconds kept") << 1700000000.123456 << "1700000000.123456";
    QTest::newRow("whole second gets six zeros") << 1700000000.0 << "1700000000.000000";
    QTest::newRow("epoch") << 0.0 << "0.000000";
}

void TestSettingsBackup::backupPathIsTheTimeWithSixDecimals()
{
    QFETCH(double, seconds);
    QFETCH(QString, name);
    QCOMPARE(SettingsBackup::backupPathFor(seconds, "/tmp/x"), "/tmp/x/" + name);
}

void TestSettingsBackup::backupIsPrivate()
{
    Scene s;
    fillWorkspace(s.ws(), s.outside());
    // Even with a umask that lets everyone in, the backup is the owner's alone.
    const mode_t previous = ::umask(0);
    SettingsBackup b(s.ws(), s.temp.path());
    ::umask(previous);
    QVERIFY(b.state() != State::Unavailable);
    const QString path = b.path();
    QString why;
    QVERIFY2(isPrivateFolder(path, &why), qPrintable(why));
    QCOMPARE(QFileInfo(path).absolutePath(), s.temp.path());
    const QString name = QFileInfo(path).fileName();
    QVERIFY2(QRegularExpression("^\\d+\\.\\d{6}(-\\d+)?$").match(name).hasMatch(),
             qPrintable(name));
    const double opened = baseName(path).toDouble();
    QVERIFY2(qAbs(opened - microsNow() / 1e6) < 60, qPrintable(name));
    QCOMPARE(SettingsBackup::backupPathFor(opened, s.temp.path()),
             s.temp.path() + QLatin1Char('/') + baseName(path));

    b.start();
    QVERIFY(b.waitForFinished(60000));
    QCOMPARE(b.state(), State::Complete);
    QVERIFY2(isPrivateFolder(path, &why), qPrintable(why));
    b.clear();
}

void TestSettingsBackup::backupLiesInTheSystemTemporaryFolderByDefault()
{
    Scene s;
    fillWorkspace(s.ws(), s.outside());
    SettingsBackup b(s.ws());
    QVERIFY(b.state() != State::Unavailable);
    QCOMPARE(QFileInfo(b.path()).absolutePath(), QDir::tempPath());
    b.clear();
    QVERIFY(!TreeState::existsNoFollow(b.path()));
}

void TestSettingsBackup::twoBackupsTakeTwoFolders()
{
    Scene s;
    Scene other;
    fillWorkspace(s.ws(), s.outside());
    fillWorkspace(other.ws(), other.outside());
    SettingsBackup first(s.ws(), s.temp.path());
    SettingsBackup second(other.ws(), s.temp.path());
    QVERIFY(first.path() != second.path());
    QString why;
    QVERIFY2(isPrivateFolder(first.path(), &why), qPrintable(why));
    QVERIFY2(isPrivateFolder(second.path(), &why), qPrintable(why));
    first.start();
    second.start();
    QVERIFY(first.waitForFinished(60000));
    QVERIFY(second.waitForFinished(60000));
    QCOMPARE(first.state(), State::Complete);
    QCOMPARE(second.state(), State::Complete);
    first.clear();
    second.clear();
}

void TestSettingsBackup::aTakenNameIsNeverReused_data()
{
    QTest::addColumn<QString>("planted");
    QTest::newRow("a link to a folder elsewhere is not followed") << "link";
    QTest::newRow("an empty folder of someone else's is not taken over") << "folder";
    QTest::newRow("a file is neither replaced nor written") << "file";
}

// Every name the backup could take in a short stretch of time is taken beforehand; the backup
// opened in that stretch must make a folder of its own under another name.
void TestSettingsBackup::aTakenNameIsNeverReused()
{
    QFETCH(QString, planted);
    Scene s;
    fillWorkspace(s.ws(), s.outside());
    const TreeState::Tree before = TreeState::capture(s.ws());
    ScratchDir elsewhere;
    // Thousands of names are made quick enough only on a file system in memory: one of our own,
    // or the shared one every user may write.
    const bool inMemory = TmpfsMount::canMount() || TmpfsMount::isMemoryFolder("/dev/shm");
    if (!inMemory)
        QSKIP("planting thousands of names in time needs root or a writable /dev/shm");
    for (int attempt = 0; attempt < 5; ++attempt) {
        ScratchDir temp(TmpfsMount::canMount() ? QDir::tempPath() + "/taken-XXXXXX"
                                               : QStringLiteral("/dev/shm/imgtest-taken-XXXXXX"));
        QVERIFY(temp.isValid());
        std::unique_ptr<TmpfsMount> mount;
        if (TmpfsMount::canMount()) {
            // a page for each planted file
            mount.reset(new TmpfsMount(temp.path(), "size=128m"));
            QVERIFY2(mount->isMounted(), qPrintable(mount->error()));
        }
        int unplanted = 0;
        auto plant = [&](qint64 us) {
            const QString path = SettingsBackup::backupPathFor(double(us) / 1e6, temp.path());
            const QByteArray p = TreeState::native(path);
            bool ok;
            if (planted == "link")
                ok = ::symlink(TreeState::native(elsewhere.path()).constData(), p.constData()) == 0;
            else if (planted == "folder")
                ok = ::mkdir(p.constData(), 0777) == 0;
            else
                ok = RandomTree::createFile(path, "planted", 0666);
            unplanted += ok ? 0 : 1;
            return QFileInfo(path).fileName();
        };
        // How long planting takes here decides how far ahead the stretch must lie.
        const qint64 probeStart = microsNow();
        for (int i = 0; i < 200; ++i)
            plant(1000000 + i);
        const qint64 perName = (microsNow() - probeStart) / 200 + 1;
        // microseconds, each one a name: as many as can be planted in about a second
        const qint64 window = qBound(qint64(2000), qint64(1000000 / perName), qint64(10000));
        const qint64 margin = window / 8;
        const qint64 start = microsNow() + perName * window * 5 / 4 + 50000 * (attempt + 1);
        QSet<QString> names;
        // from a millisecond before: a clock read in milliseconds rounds down
        for (qint64 us = start - 1000; us < start + window; ++us)
            names.insert(plant(us));
        QCOMPARE(unplanted, 0);
        if (microsNow() > start + margin)
            continue; // planting took longer than foreseen: try again further ahead
        while (microsNow() < start + margin) {
        }
        SettingsBackup b(s.ws(), temp.path());
        const qint64 after = microsNow();
        const QString path = b.path();
        QVERIFY2(b.state() != State::Unavailable && !path.isEmpty(),
                 qPrintable("no backup was made when a " + planted +
                            " had the name it would "
                            "take; it should have taken that name with \"-1\""));
        if (!names.contains(baseName(path))) {
            if (after < start + window)
                QFAIL(qPrintable("the backup opened in the stretch of time whose names were all "
                                 "taken, yet its name is not one of them: " +
                                 path));
            continue; // opened too late to meet a taken name
        }
        QVERIFY2(!names.contains(QFileInfo(path).fileName()),
                 qPrintable("the backup took the planted " + planted + " at " + path));
        QVERIFY2(
            QRegularExpression("^\\d+\\.\\d{6}-\\d+$").match(QFileInfo(path).fileName()).hasMatch(),
            qPrintable(path));
        QString why;
        QVERIFY2(isPrivateFolder(path, &why), qPrintable(why));
        b.start();
        QVERIFY(b.waitForFinished(60000));
        QCOMPARE(b.state(), State::Complete);
        // What was planted is as it was.
        const QString taken = temp.path() + QLatin1Char('/') + baseName(path);
        if (planted == "link") {
            QCOMPARE(TreeState::kindAt(taken), TreeState::Kind::Symlink);
            QCOMPARE(TreeState::linkTarget(TreeState::native(taken)),
                     TreeState::native(elsewhere.path()));
        } else if (planted == "folder") {
            QCOMPARE(TreeState::kindAt(taken), TreeState::Kind::Dir);
            QCOMPARE(TreeState::names(taken), QStringList());
        } else {
            QCOMPARE(TreeState::kindAt(taken), TreeState::Kind::File);
            QCOMPARE(TreeState::bytesOf(taken), QByteArray("planted"));
        }
        QCOMPARE(TreeState::names(elsewhere.path()), QStringList());
        QCOMPARE(b.restore(), Outcome::Restored);
        const TreeState::Diff d = TreeState::diff(before, TreeState::capture(s.ws()));
        QVERIFY2(d.isEmpty(), d);
        QCOMPARE(TreeState::names(elsewhere.path()), QStringList());
        return;
    }
    QSKIP("could not open a backup within the stretch of taken names (machine too busy)");
}

// ---- exact round trips

void TestSettingsBackup::randomTreeComesBackExactly_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("folders");
    QTest::addColumn<int>("files");
    QTest::addColumn<int>("links");
    QTest::addColumn<int>("specials");
    QTest::addColumn<int>("changes");

    for (int i = 1; i <= 50; ++i) {
        const quint32 seed = 1000u + quint32(i);
        const int folders = 2 + i % 9;
        const int files = 8 + (i * 7) % 33;
        const int links = i % 11;
        const int specials = i % 4;
        const int changes = 2 + i % 7;
        QTest::addRow("random workspace %02d (seed %u): %d files, %d folders, %d links, %d special "
                      "files, %d changes from outside",
                      i, seed, files, folders, links, specials, changes)
            << seed << folders << files << links << specials << changes;
    }
    QTest::newRow("an empty workspace comes back empty") << 7u << 0 << 0 << 0 << 0 << 3;
    QTest::newRow("a workspace of links and special files only") << 8u << 0 << 0 << 12 << 4 << 4;
    QTest::newRow("a workspace of folders only, many of them empty")
        << 9u << 14 << 0 << 0 << 0 << 4;
}

void TestSettingsBackup::randomTreeComesBackExactly()
{
    QFETCH(quint32, seed);
    QFETCH(int, folders);
    QFETCH(int, files);
    QFETCH(int, links);
    QFETCH(int, specials);
    QFETCH(int, changes);
    RandomTree::Options options;
    options.folders = folders;
    options.files = files;
    options.links = links;
    options.specials = specials;
    options.workspaceFiles = files > 0;
    Scene s;
    roundTrip(s.place.path(), s.temp.path(), seed, options, changes, false);
}

// One workspace "ws" in place, its link targets in place/outside, the backup in temp: the image,
// the window's edits, changes from outside, Cancel; then everything must be as at opening.
void TestSettingsBackup::roundTrip(const QString &place, const QString &temp, quint32 seed,
                                   const RandomTree::Options &baseOptions, int changes,
                                   bool mustCopy)
{
    const QString ws = place + QStringLiteral("/ws");
    RandomTree::Options options = baseOptions;
    options.outside = place + QStringLiteral("/outside");
    const RandomTree::Made made = RandomTree::make(ws, seed, options);
    const TreeState::Tree before = TreeState::capture(ws);
    QCOMPARE(int(before.size()), made.entries());
    const TreeState::Tree outsideBefore = TreeState::captureOutside(place, WorkspaceOnly);
    const QStringList placeNames = TreeState::names(place);
    const QStringList tempNames = TreeState::names(temp);

    SettingsBackup b(ws, temp);
    QVERIFY(b.state() != State::Unavailable);
    QCOMPARE(QDir::cleanPath(b.workSpace()), ws);
    std::atomic<int> finishedCalls{0};
    std::atomic<int> finishedWith{-1};
    b.start([&](State state) {
        finishedWith = int(state);
        ++finishedCalls;
    });
    QVERIFY(b.waitForFinished(120000));
    QCOMPARE(b.state(), State::Complete);
    QTRY_COMPARE_WITH_TIMEOUT(finishedCalls.load(), 1, 5000);
    QCOMPARE(State(finishedWith.load()), State::Complete);
    // Special files a layer cannot recreate are not in the image; the workspace keeps its own.
    const auto special = [](const TreeState::Entry &e) {
        return e.kind != TreeState::Kind::File && e.kind != TreeState::Kind::Dir &&
               e.kind != TreeState::Kind::Symlink;
    };
    const qint64 copyable =
        Fs::supports(Fs::Capability::SpecialFiles)
            ? qint64(before.size())
            : qint64(std::count_if(before.cbegin(), before.cend(),
                                   [&](const TreeState::Entry &e) { return !special(e); }));
    QCOMPARE(b.entryCount(), copyable);
    {
        const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
        QVERIFY2(d.isEmpty(), qPrintable("taking the image changed the workspace:" + QString(d)));
    }

    const QString failed = editAsTheWindowDoes(ws, seed);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    {
        const TreeState::Diff d =
            TreeState::diff(outsideBefore, TreeState::captureOutside(place, WorkspaceOnly));
        QVERIFY2(d.isEmpty(), qPrintable("the window's edits changed what lies outside the "
                                         "workspace:" +
                                         QString(d)));
    }
    const QStringList changed =
        RandomTree::changeOutside(ws, seed, changes, made.outsideFiles + made.outsideFolders);

    ProgressLog progress;
    const QString path = b.path();
    QCOMPARE(b.restore(progress.function()), Outcome::Restored);

    const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), qPrintable("the restored workspace differs from the one at opening "
                                     "(changes from outside: " +
                                     changed.join("; ") + "):" + QString(d)));
    QVERIFY2(!TreeState::existsNoFollow(path), qPrintable("the backup is still there: " + path));
    // What the restore parks beside the workspace may be removed in the background.
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(place), placeNames);
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(temp), tempNames);
    const TreeState::Diff o =
        TreeState::diff(outsideBefore, TreeState::captureOutside(place, WorkspaceOnly));
    QVERIFY2(o.isEmpty(),
             qPrintable("the restore changed what lies outside the workspace:" + QString(o)));
    QVERIFY2(progress.problem().isEmpty(), qPrintable(progress.problem()));
    if (mustCopy)
        QVERIFY2(progress.count() > 0,
                 "a restore across file systems made a copy without progress");
}

void TestSettingsBackup::restoreUndoesEachKindOfChange_data()
{
    QTest::addColumn<QString>("change");
    QTest::newRow("a file created meanwhile is gone") << "create";
    QTest::newRow("a folder created meanwhile is gone") << "createFolder";
    QTest::newRow("a changed file has its opening bytes and time") << "change";
    QTest::newRow("a file whose time alone changed gets its time back") << "touch";
    QTest::newRow("a file whose mode alone changed gets its mode back") << "chmod";
    QTest::newRow("a deleted hidden file is back") << "deleteHidden";
    QTest::newRow("a deleted read-only sub-folder is back whole") << "deleteFolder";
    QTest::newRow("a vanished workspace is rebuilt") << "deleteWorkspace";
    QTest::newRow("a workspace replaced by a file is a folder again") << "workspaceFile";
    QTest::newRow(
        "a workspace replaced by a link out is a folder again, the link's target untouched")
        << "workspaceLink";
    QTest::newRow("a FIFO replaced by a file is a FIFO again") << "fifoToFile";
    QTest::newRow("a link replaced by a folder is a link again") << "linkToFolder";
    QTest::newRow("a re-pointed link gets its target back") << "relink";
    QTest::newRow("the workspace's own mode and time come back") << "rootMode";
    QTest::newRow("nothing changed, nothing differs") << "none";
}

void TestSettingsBackup::restoreUndoesEachKindOfChange()
{
    if (QByteArray(QTest::currentDataTag()).contains("FIFO") &&
        !Fs::supports(Fs::Capability::SpecialFiles))
        QSKIP("this file layer cannot recreate a FIFO");
    QFETCH(QString, change);
    Scene s;
    const QString ws = s.ws();
    fillWorkspace(ws, s.outside());
    const TreeState::Tree before = TreeState::capture(ws);
    const TreeState::Tree outsideBefore = TreeState::captureOutside(s.place.path(), WorkspaceOnly);

    SettingsBackup b(ws, s.temp.path());
    b.start();
    QVERIFY(b.waitForFinished(60000));
    QCOMPARE(b.state(), State::Complete);

    auto p = [&](const char *rel) {
        return TreeState::native(ws + QLatin1Char('/') + QLatin1String(rel));
    };
    if (change == "create") {
        RandomTree::createFile(ws + "/new.png", "new");
    } else if (change == "createFolder") {
        QDir().mkpath(ws + "/newdir/.x");
        RandomTree::createFile(ws + "/newdir/.x/y", "new");
    } else if (change == "change") {
        RandomTree::overwriteFile(ws + "/settings.dat", "99.0\n20.0\n30.0\n15.0\n0.0\n0");
    } else if (change == "touch") {
        RandomTree::setTime(ws + "/settings.dat", 1000000000, 1);
    } else if (change == "chmod") {
        ::chmod(p("settings.dat"), 0755);
    } else if (change == "deleteHidden") {
        ::unlink(p(".hidden"));
    } else if (change == "deleteFolder") {
        RandomTree::removeAll(ws + "/files");
    } else if (change == "deleteWorkspace") {
        RandomTree::removeAll(ws);
    } else if (change == "workspaceFile") {
        RandomTree::removeAll(ws);
        RandomTree::createFile(ws, "a file where the workspace was");
    } else if (change == "workspaceLink") {
        RandomTree::removeAll(ws);
        RandomTree::makeLink(ws, s.outside());
    } else if (change == "fifoToFile") {
        ::unlink(p("pipe"));
        RandomTree::createFile(ws + "/pipe", "no longer a pipe");
    } else if (change == "linkToFolder") {
        ::unlink(p("out.dat"));
        ::mkdir(p("out.dat"), 0755);
    } else if (change == "relink") {
        ::unlink(p("files/current.png"));
        RandomTree::makeLink(ws + "/files/current.png", s.outside() + "/target.dat");
    } else if (change == "rootMode") {
        ::chmod(TreeState::native(ws).constData(), 0711);
        RandomTree::setTime(ws, 1000000000, 0);
    }

    QCOMPARE(b.restore(), Outcome::Restored);
    const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.place.path()), QStringList({"outside", "ws"}));
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.temp.path()), QStringList());
    const TreeState::Diff o =
        TreeState::diff(outsideBefore, TreeState::captureOutside(s.place.path(), WorkspaceOnly));
    QVERIFY2(o.isEmpty(), o);
}

// ---- edits while the image is being taken

void TestSettingsBackup::editsBeforeTheImageIsCompleteAreStillUndone_data()
{
    QTest::addColumn<QString>("via");
    QTest::addColumn<QStringList>("edits");
    QTest::addColumn<int>("subFolders"); // of each of 20 folders, each with as many files
    const QStringList deepFile{"replace:d19/s4/f4.dat"};
    const QStringList topSettings{"create:settings.dat", "replace:d00/s0/f0.dat"};
    const QStringList deepFolder{"remove:d18/s3"};
    const QStringList topFolder{"remove:d15"};
    const QStringList newInDeepFolder{"create:d19/s4/new image.png"};
    const QStringList twice{"replace:d17/s4/f3.dat", "replace:d17/s4/f3.dat",
                            "remove:d17/s4/f3.dat", "create:d17/s4/f3.dat"};
    const QStringList many{"create:settings.dat",   "create:config.js",    "replace:d19/s9/f9.dat",
                           "replace:d10/s5/f5.dat", "remove:d15",          "create:d16/s1/new.png",
                           "remove:d02/s3/f1.dat",  "sibling:settings.dat"};
    for (const QString &via : {QStringLiteral("FileOps"), QStringLiteral("preserve")}) {
        const char *v = via == "FileOps" ? "FileOps" : "preserve";
        QTest::addRow("%s: a deep file replaced while capturing comes back", v)
            << via << deepFile << 5;
        QTest::addRow("%s: a new file at the top and a first file replaced while capturing, the "
                      "workspace's own time comes back",
                      v)
            << via << topSettings << 5;
        QTest::addRow("%s: a deep folder removed while capturing comes back whole", v)
            << via << deepFolder << 5;
        QTest::addRow("%s: a whole top-level folder removed while capturing comes back whole", v)
            << via << topFolder << 5;
        QTest::addRow("%s: a file created in a deep folder while capturing is gone and the folder "
                      "keeps its time",
                      v)
            << via << newInDeepFolder << 5;
        QTest::addRow("%s: a file written, rewritten, removed and made again keeps its opening "
                      "state",
                      v)
            << via << twice << 5;
        QTest::addRow("%s: many edits at once in 2000 files, and a write into a folder beside the "
                      "workspace stays",
                      v)
            << via << many << 10;
    }
}

// A workspace of 500 or 2000 files: the edits come right after start(), before the image can
// have reached them; what the image holds must still be the opening state.
void TestSettingsBackup::editsBeforeTheImageIsCompleteAreStillUndone()
{
    QFETCH(QString, via);
    QFETCH(QStringList, edits);
    QFETCH(int, subFolders);
    Scene s;
    const QString ws = s.ws();
    const QString sibling = s.place.path() + QStringLiteral("/ws-other");
    QDir().mkpath(sibling);
    RandomTree::makeWide(ws, 77, 20, subFolders, subFolders, 512);
    const TreeState::Tree before = TreeState::capture(ws);
    QVERIFY(before.size() > 20 * subFolders * subFolders);

    SettingsBackup b(ws, s.temp.path());
    QVERIFY(b.state() != State::Unavailable);
    b.start();
    QRandomGenerator rng(5);
    QStringList failed;
    bool capturingAtFirstEdit = true;
    for (const QString &edit : edits) {
        const QString kind = edit.section(QLatin1Char(':'), 0, 0);
        const QString rel = edit.section(QLatin1Char(':'), 1);
        const QString path = (kind == "sibling" ? sibling : ws) + QLatin1Char('/') + rel;
        const QByteArray bytes = RandomTree::randomBytes(rng, 700, true);
        if (&edit == &edits.first())
            capturingAtFirstEdit = b.state() == State::Capturing;
        bool ok = true;
        if (via == "FileOps" || kind == "sibling") {
            ok = kind == "remove" ? FileOps::removeItem(path)
                                  : FileOps::writeAtomically(path, bytes);
        } else {
            b.preserve(path);
            if (kind == "remove")
                ok = RandomTree::removeAll(path);
            else if (kind == "create")
                ok = RandomTree::createFile(path, bytes);
            else
                ok = RandomTree::overwriteFile(path, bytes);
        }
        if (!ok)
            failed << edit;
    }
    const TreeState::Tree outsideEdited = TreeState::captureOutside(s.place.path(), WorkspaceOnly);
    QVERIFY2(failed.isEmpty(), qPrintable("edits failed: " + failed.join("; ")));
    QVERIFY(b.waitForFinished(120000));
    QCOMPARE(b.state(), State::Complete);
    if (!capturingAtFirstEdit)
        qInfo("the image was complete before the first edit: this run proves less");

    QCOMPARE(b.restore(), Outcome::Restored);
    const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.place.path()), QStringList({"ws", "ws-other"}));
    const TreeState::Diff o =
        TreeState::diff(outsideEdited, TreeState::captureOutside(s.place.path(), WorkspaceOnly));
    QVERIFY2(o.isEmpty(),
             qPrintable("the restore changed what lies beside the workspace:" + QString(o)));
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.temp.path()), QStringList());
}

// ---- a held image

void TestSettingsBackup::aHeldImageWaitsUntilItMayGoOn_data()
{
    QTest::addColumn<QString>("ending");
    QTest::addColumn<int>("spared"); // entries copied before the hold begins
    QTest::newRow("proceed() lets the copy go on") << "proceed" << 0;
    QTest::newRow("the hold runs out by itself") << "deadline" << 0;
    QTest::newRow("waiting for the image ends the hold") << "wait" << 0;
    QTest::newRow("Cancel during the hold restores the edits made during it") << "restore" << 0;
    QTest::newRow("apply during the hold returns at once and removes the backup") << "clear" << 0;
    QTest::newRow("a window gone during the hold leaves an incomplete backup") << "destroy" << 0;
    QTest::newRow("the hold begins once the spared entries are in") << "proceed" << 100;
    QTest::newRow("a workspace no larger than the spared entries is taken at once")
        << "none" << 1000;
}

// Edits made while the image is held still go back to their opening state; the hold never
// outlasts a wait for the image, a Cancel, an apply or the window.
void TestSettingsBackup::aHeldImageWaitsUntilItMayGoOn()
{
    using namespace std::chrono_literals;
    QFETCH(QString, ending);
    QFETCH(int, spared);
    Scene s;
    const QString ws = s.ws();
    const int entries = RandomTree::makeWide(ws, 9, 10, 4, 4, 512);
    const TreeState::Tree before = TreeState::capture(ws);
    auto b = std::make_unique<SettingsBackup>(ws, s.temp.path());
    const QString path = b->path();
    QVERIFY(b->state() != State::Unavailable);
    // A hold far beyond the test's own time limit, except where it is to run out.
    b->start({}, ending == "deadline" ? 1500ms : 24h, spared);
    QVERIFY(FileOps::writeAtomically(ws + "/settings.dat", "edited while held"));
    QVERIFY(FileOps::removeItem(ws + "/d02"));
    if (ending == "none") {
        QTRY_COMPARE_WITH_TIMEOUT(b->state(), State::Complete, 60000);
        QCOMPARE(b->entryCount(), qint64(entries));
        QCOMPARE(b->restore(), Outcome::Restored);
        const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
        QVERIFY2(d.isEmpty(), d);
        return;
    }
    QTest::qWait(300);
    QCOMPARE(b->state(), State::Capturing);
    // The spared entries, and what the two edits preserved (22 of the 211 entries), no more.
    const qint64 held = b->entryCount();
    QVERIFY2(held >= spared && held < spared + 30, qPrintable(QString::number(held)));

    QElapsedTimer clock;
    clock.start();
    if (ending == "proceed" || ending == "deadline") {
        if (ending == "proceed")
            b->proceed();
        QTRY_COMPARE_WITH_TIMEOUT(b->state(), State::Complete, 60000);
        QCOMPARE(b->restore(), Outcome::Restored);
    } else if (ending == "wait") {
        QVERIFY(b->waitForFinished(60000));
        QCOMPARE(b->state(), State::Complete);
        QCOMPARE(b->restore(), Outcome::Restored);
    } else if (ending == "restore") {
        QCOMPARE(b->restore(), Outcome::Restored);
    } else if (ending == "clear") {
        const TreeState::Tree applied = TreeState::capture(ws);
        b->clear();
        QVERIFY2(clock.elapsed() < 30000, "apply waited for the hold");
        QVERIFY(!TreeState::existsNoFollow(path));
        TREE_COMPARE(TreeState::capture(ws), applied);
        return;
    } else {
        b.reset();
        QVERIFY2(clock.elapsed() < 30000, "the window's end waited for the hold");
        QVERIFY(TreeState::existsNoFollow(path));
        QVERIFY(!TreeState::existsNoFollow(path + QStringLiteral("/complete")));
        return;
    }
    const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
}

// ---- links in the workspace are data

void TestSettingsBackup::writesThroughLinksStayInside_data()
{
    QTest::addColumn<QString>("targets");
    QTest::addColumn<bool>("waitFirst");
    QTest::newRow("absolute links to files outside, image complete") << "absolute" << true;
    QTest::newRow("absolute links to files outside, while capturing") << "absolute" << false;
    QTest::newRow("relative ../ links to files outside") << "relative" << true;
    QTest::newRow("dangling links into the folder outside create nothing there")
        << "dangling" << true;
    QTest::newRow("links to links to files outside") << "chain" << false;
}

void TestSettingsBackup::writesThroughLinksStayInside()
{
    QFETCH(QString, targets);
    QFETCH(bool, waitFirst);
    Scene s;
    const QString ws = s.ws();
    const QString out = s.outside();
    RandomTree::Options options;
    options.files = 10;
    options.links = 3;
    options.workspaceFiles = false;
    RandomTree::make(ws, 31, options);
    QDir().mkpath(out);
    const QStringList names{"settings.dat", "config.js", "files", "img.xml"};
    QRandomGenerator rng(3);
    for (const QString &n : names) {
        const QString target = out + QStringLiteral("/real ") + n;
        if (targets != "dangling")
            RandomTree::createFile(target, RandomTree::randomBytes(rng, 300, false), 0644);
        RandomTree::setRandomPastTime(rng, target);
        QString text = target;
        if (targets == "relative")
            text = QStringLiteral("../outside/real ") + n;
        if (targets == "chain") {
            RandomTree::makeLink(out + QStringLiteral("/via ") + n, target);
            text = out + QStringLiteral("/via ") + n;
        }
        QVERIFY(RandomTree::makeLink(ws + QLatin1Char('/') + n, text));
    }
    RandomTree::setRandomPastTime(rng, out);
    RandomTree::setRandomPastTime(rng, ws);
    const TreeState::Tree before = TreeState::capture(ws);
    const TreeState::Tree outsideBefore = TreeState::captureOutside(s.place.path(), WorkspaceOnly);
    const TreeState::Tree outFolderBefore = TreeState::capture(out);

    SettingsBackup b(ws, s.temp.path());
    b.start();
    if (waitFirst)
        QVERIFY(b.waitForFinished(60000));
    for (const QString &n : names) {
        const QByteArray bytes = "written by the window: " + n.toUtf8();
        QVERIFY2(FileOps::writeAtomically(ws + QLatin1Char('/') + n, bytes), qPrintable(n));
        QCOMPARE(TreeState::kindAt(ws + QLatin1Char('/') + n), TreeState::Kind::File);
        QCOMPARE(TreeState::bytesOf(ws + QLatin1Char('/') + n), bytes);
    }
    // The folder outside, its own time included, is as it was.
    const TreeState::Diff o = TreeState::diff(outFolderBefore, TreeState::capture(out));
    QVERIFY2(o.isEmpty(), qPrintable("writing through the workspace's links changed the folder "
                                     "outside:" +
                                     QString(o)));
    QVERIFY(b.waitForFinished(60000));
    QCOMPARE(b.state(), State::Complete);

    QCOMPARE(b.restore(), Outcome::Restored);
    const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
    for (const QString &n : names)
        QCOMPARE(TreeState::kindAt(ws + QLatin1Char('/') + n), TreeState::Kind::Symlink);
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.place.path()), QStringList({"outside", "ws"}));
    const TreeState::Diff o2 =
        TreeState::diff(outsideBefore, TreeState::captureOutside(s.place.path(), WorkspaceOnly));
    QVERIFY2(o2.isEmpty(), o2);
}

// ---- when there is no backup to go back to

void TestSettingsBackup::unavailableBackupUndoesNothing_data()
{
    QTest::addColumn<QString>("temp");
    QTest::newRow("temporary folder missing") << "missing";
    QTest::newRow("temporary folder read-only") << "readOnly";
    QTest::newRow("temporary folder is a file") << "file";
    QTest::newRow("temporary folder full") << "full";
}

void TestSettingsBackup::unavailableBackupUndoesNothing()
{
    QFETCH(QString, temp);
    Scene s;
    const QString ws = s.ws();
    RandomTree::Options options;
    options.outside = s.outside();
    RandomTree::make(ws, 55, options);

    QString tempDir = s.temp.path() + QStringLiteral("/missing");
    std::unique_ptr<TmpfsMount> mount;
    if (temp == "readOnly") {
        tempDir = s.temp.path() + QStringLiteral("/ro");
        QDir().mkpath(tempDir);
        if (TmpfsMount::canMount()) {
            // root writes through mode bits: only a read-only file system stops it
            mount.reset(new TmpfsMount(tempDir, "size=64k", true));
            QVERIFY2(mount->isMounted(), qPrintable(mount->error()));
        } else {
            ::chmod(TreeState::native(tempDir).constData(), 0555);
        }
    } else if (temp == "file") {
        tempDir = s.temp.path() + QStringLiteral("/a file");
        RandomTree::createFile(tempDir, "not a folder");
    } else if (temp == "full") {
        if (!TmpfsMount::canMount())
            QSKIP("filling a file system of its own needs root (mount -t tmpfs)");
        tempDir = s.temp.path() + QStringLiteral("/full");
        QDir().mkpath(tempDir);
        mount.reset(new TmpfsMount(tempDir, "size=64k,nr_inodes=64"));
        QVERIFY2(mount->isMounted(), qPrintable(mount->error()));
        QByteArray block(4096, 'x');
        const int fd = ::open(TreeState::native(tempDir + "/filler").constData(),
                              O_WRONLY | O_CREAT | O_EXCL, 0600);
        QVERIFY(fd >= 0);
        while (::write(fd, block.constData(), size_t(block.size())) > 0) {
        }
        ::close(fd);
        int n = 0; // and every inode
        while (::mkdir(TreeState::native(tempDir + QStringLiteral("/i%1").arg(n)).constData(),
                       0700) == 0)
            ++n;
    }
    const TreeState::Tree tempBefore = TreeState::capture(tempDir);

    SettingsBackup b(ws, tempDir);
    const State opened = b.state();
    if (temp == "full")
        QVERIFY2(opened != State::Complete, QTest::toString(opened));
    else
        QCOMPARE(opened, State::Unavailable);
    b.start();
    QVERIFY(b.waitForFinished(60000));
    if (temp == "full")
        QVERIFY2(b.state() == State::Unavailable || b.state() == State::Incomplete,
                 QTest::toString(b.state()));
    else
        QCOMPARE(b.state(), State::Unavailable);

    // The window still saves; there is just no going back.
    const QString failed = editAsTheWindowDoes(ws, 55);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    const TreeState::Tree edited = TreeState::capture(ws);
    QCOMPARE(b.restore(), Outcome::NothingToUndo);
    const TreeState::Diff d = TreeState::diff(edited, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(),
             qPrintable("a backup that was never made changed the workspace:" + QString(d)));
    b.clear();
    TREE_COMPARE(TreeState::capture(ws), edited);
    if (temp == "full") {
        QVERIFY2(TreeState::names(tempDir).size() == tempBefore.size() - 1,
                 qPrintable("left in the full temporary folder: " +
                            TreeState::names(tempDir).join(", ")));
    } else {
        const TreeState::Diff t = TreeState::diff(tempBefore, TreeState::capture(tempDir));
        QVERIFY2(t.isEmpty(), qPrintable("the temporary folder changed:" + QString(t)));
    }
}

// ---- full disks

void TestSettingsBackup::fullDiskDuringBackup_data()
{
    QTest::addColumn<bool>("editWhileCapturing");
    QTest::newRow("edits after the image failed") << false;
    QTest::newRow("edits while the image is being taken") << true;
}

void TestSettingsBackup::fullDiskDuringBackup()
{
    QFETCH(bool, editWhileCapturing);
    if (!TmpfsMount::canMount())
        QSKIP("a full temporary folder of its own needs root (mount -t tmpfs)");
    Scene s;
    const QString ws = s.ws();
    const QString tempDir = s.temp.path() + QStringLiteral("/small");
    QDir().mkpath(tempDir);
    RandomTree::makeWide(ws, 99, 5, 2, 5, 100 * 1024); // about 5 MiB
    const TreeState::Tree before = TreeState::capture(ws);
    TmpfsMount mount(tempDir, "size=2m");
    QVERIFY2(mount.isMounted(), qPrintable(mount.error()));
    QString path;
    {
        SettingsBackup b(ws, tempDir);
        QVERIFY(b.state() != State::Unavailable);
        path = b.path();
        std::atomic<int> finishedWith{-1};
        b.start([&](State state) { finishedWith = int(state); });
        if (!editWhileCapturing) {
            QVERIFY(b.waitForFinished(120000));
            const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
            QVERIFY2(d.isEmpty(),
                     qPrintable("a failing image changed the workspace:" + QString(d)));
        }
        QVERIFY(FileOps::writeAtomically(ws + "/settings.dat", "edited"));
        QVERIFY(FileOps::writeAtomically(ws + "/d01/s1/f1.dat", "edited deep"));
        QVERIFY(FileOps::removeItem(ws + "/d02"));
        QVERIFY(b.waitForFinished(120000));
        QCOMPARE(b.state(), State::Incomplete);
        QTRY_COMPARE_WITH_TIMEOUT(State(finishedWith.load()), State::Incomplete, 5000);
        const TreeState::Tree edited = TreeState::capture(ws);
        QCOMPARE(b.restore(), Outcome::NothingToUndo);
        const TreeState::Diff d = TreeState::diff(edited, TreeState::capture(ws));
        QVERIFY2(
            d.isEmpty(),
            qPrintable("restoring from an incomplete image changed the workspace:" + QString(d)));
        QVERIFY2(!TreeState::existsNoFollow(path),
                 qPrintable("an incomplete backup is left in the temporary folder after Cancel: " +
                            path));
    }
    QCOMPARE(BackupRecovery::settle(ws, tempDir).size(), 0);
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(tempDir), QStringList());
}

// The workspace on a small file system of its own, nearly full after the window's edits: the
// restored copy cannot be made beside it. Nothing may be lost, and the backup must stay complete
// for the next opening.
void TestSettingsBackup::fullDiskDuringRestore()
{
    if (!TmpfsMount::canMount())
        QSKIP("a full file system for the workspace needs root (mount -t tmpfs)");
    Scene s;
    const QString mountPoint = s.place.path() + QStringLiteral("/disk");
    QDir().mkpath(mountPoint);
    TmpfsMount mount(mountPoint, "size=4m");
    QVERIFY2(mount.isMounted(), qPrintable(mount.error()));
    const QString ws = mountPoint + QStringLiteral("/ws");
    RandomTree::makeWide(ws, 12, 3, 2, 2, 100 * 1024); // 12 files, about 1.2 MiB
    const TreeState::Tree before = TreeState::capture(ws);

    QString path;
    QStringList added;
    TreeState::Tree edited;
    {
        SettingsBackup b(ws, s.temp.path());
        b.start();
        QVERIFY(b.waitForFinished(60000));
        QCOMPARE(b.state(), State::Complete);
        QRandomGenerator rng(8);
        for (int i = 0; i < 3; ++i) {
            added << ws + QStringLiteral("/big image %1.png").arg(i);
            QVERIFY2(FileOps::writeAtomically(added.last(),
                                              RandomTree::randomBytes(rng, 700 * 1024, true)),
                     "the edit itself did not fit; the file system is too small for this test");
        }
        QVERIFY(TmpfsMount::freeBytes(mountPoint) < 1100 * 1024);
        edited = TreeState::capture(ws);
        path = b.path();
        QCOMPARE(b.restore(), Outcome::Failed);
        const TreeState::Diff d = TreeState::diff(edited, TreeState::capture(ws));
        QVERIFY2(d.isEmpty(), qPrintable("a failed restore changed the workspace:" + QString(d)));
        BackupRecovery::waitForCleanUp();
        QCOMPARE(TreeState::names(mountPoint), QStringList{"ws"});
        QVERIFY2(TreeState::existsNoFollow(path), "a failed restore removed the backup");
    }
    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(ws, s.temp.path());
    QCOMPARE(pending.size(), 1);
    QCOMPARE(pending.first().backupPath, path);
    TREE_COMPARE(TreeState::capture(ws), edited);

    for (const QString &file : added)
        QVERIFY(::unlink(TreeState::native(file).constData()) == 0);
    QCOMPARE(BackupRecovery::goBack(ws, path), Outcome::Restored);
    const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
    QVERIFY(!TreeState::existsNoFollow(path));
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(mountPoint), QStringList{"ws"});
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.temp.path()), QStringList());
}

// ---- across file systems

void TestSettingsBackup::crossFileSystemRestoreIsExact_data()
{
    QTest::addColumn<bool>("workspaceOnTmpfs");
    QTest::addColumn<quint32>("seed");
    for (quint32 seed : {301u, 302u, 303u}) {
        QTest::addRow("temporary folder on a file system of its own (seed %u)", seed)
            << false << seed;
        QTest::addRow("workspace on a file system of its own (seed %u)", seed) << true << seed;
    }
}

void TestSettingsBackup::crossFileSystemRestoreIsExact()
{
    QFETCH(bool, workspaceOnTmpfs);
    QFETCH(quint32, seed);
    if (!TmpfsMount::canMount())
        QSKIP("a second file system needs root (mount -t tmpfs)");
    Scene s;
    const QString mountPoint =
        (workspaceOnTmpfs ? s.place.path() : s.temp.path()) + QStringLiteral("/fs");
    QDir().mkpath(mountPoint);
    TmpfsMount mount(mountPoint, "size=64m");
    QVERIFY2(mount.isMounted(), qPrintable(mount.error()));
    const QString place = workspaceOnTmpfs ? mountPoint : s.place.path();
    const QString temp = workspaceOnTmpfs ? s.temp.path() : mountPoint;
    RandomTree::Options options;
    options.folders = 8;
    options.files = 30;
    options.links = 10;
    options.specials = 3;
    roundTrip(place, temp, seed, options, 6, true);
}

// ---- apply, and windows that go away

void TestSettingsBackup::clearRemovesTheBackup_data()
{
    QTest::addColumn<bool>("waitFirst");
    QTest::newRow("after the image is complete") << true;
    QTest::newRow("while the image is being taken") << false;
}

void TestSettingsBackup::clearRemovesTheBackup()
{
    QFETCH(bool, waitFirst);
    Scene s;
    const QString ws = s.ws();
    RandomTree::makeWide(ws, 4, 10, 5, 10, 512);
    SettingsBackup b(ws, s.temp.path());
    const QString path = b.path();
    b.start();
    if (waitFirst) {
        QVERIFY(b.waitForFinished(60000));
        QCOMPARE(b.state(), State::Complete);
    }
    QVERIFY(FileOps::writeAtomically(ws + "/settings.dat", "applied"));
    QVERIFY(FileOps::removeItem(ws + "/d03"));
    const TreeState::Tree applied = TreeState::capture(ws);
    b.clear();
    QVERIFY2(!TreeState::existsNoFollow(path), qPrintable("still there: " + path));
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.temp.path()), QStringList());
    TREE_COMPARE(TreeState::capture(ws), applied);

    // Later writes do not bring the backup back, and nothing is undone any more.
    QVERIFY(FileOps::writeAtomically(ws + "/d04/s1/f1.dat", "after apply"));
    const TreeState::Tree later = TreeState::capture(ws);
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.temp.path()), QStringList());
    QVERIFY(b.restore() != Outcome::Restored);
    const TreeState::Diff d = TreeState::diff(later, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
    b.clear(); // a second clear is harmless
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.temp.path()), QStringList());
}

void TestSettingsBackup::destructorLeavesTheBackupForRecovery_data()
{
    QTest::addColumn<bool>("goBack");
    QTest::newRow("the author goes back: the opening state returns") << true;
    QTest::newRow("the author keeps the workspace: only the backup goes") << false;
}

void TestSettingsBackup::destructorLeavesTheBackupForRecovery()
{
    QFETCH(bool, goBack);
    Scene s;
    const QString ws = s.ws();
    RandomTree::Options options;
    options.outside = s.outside();
    const RandomTree::Made made = RandomTree::make(ws, 404, options);
    const TreeState::Tree before = TreeState::capture(ws);
    const TreeState::Tree outsideBefore = TreeState::captureOutside(s.place.path(), WorkspaceOnly);

    QString path;
    {
        SettingsBackup b(ws, s.temp.path());
        path = b.path();
        b.start();
        QVERIFY(b.waitForFinished(60000));
        QCOMPARE(b.state(), State::Complete);
        const QString failed = editAsTheWindowDoes(ws, 404);
        QVERIFY2(failed.isEmpty(), qPrintable(failed));
    }
    QVERIFY2(TreeState::existsNoFollow(path), "the backup went with its window");
    // The window is gone: a save now must neither reach it nor crash.
    QVERIFY(FileOps::writeAtomically(ws + "/settings.dat", "after the window"));
    RandomTree::changeOutside(ws, 404, 4, made.outsideFiles);
    const TreeState::Tree edited = TreeState::capture(ws);

    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(ws, s.temp.path());
    QCOMPARE(pending.size(), 1);
    QCOMPARE(pending.first().backupPath, path);
    QVERIFY2(qAbs(pending.first().openedAt - baseName(path).toDouble()) < 1e-5,
             qPrintable(QString::number(pending.first().openedAt, 'f', 6)));
    const TreeState::Diff unchanged = TreeState::diff(edited, TreeState::capture(ws));
    QVERIFY2(unchanged.isEmpty(), qPrintable("settle changed the workspace before the author "
                                             "answered:" +
                                             QString(unchanged)));

    if (goBack) {
        ProgressLog progress;
        QCOMPARE(BackupRecovery::goBack(ws, path, progress.function()), Outcome::Restored);
        const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
        QVERIFY2(d.isEmpty(), d);
        QVERIFY2(progress.problem().isEmpty(), qPrintable(progress.problem()));
    } else {
        BackupRecovery::keep(path);
        const TreeState::Diff d = TreeState::diff(edited, TreeState::capture(ws));
        QVERIFY2(d.isEmpty(), d);
    }
    QVERIFY(!TreeState::existsNoFollow(path));
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.temp.path()), QStringList());
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.place.path()), QStringList({"outside", "ws"}));
    const TreeState::Diff o =
        TreeState::diff(outsideBefore, TreeState::captureOutside(s.place.path(), WorkspaceOnly));
    QVERIFY2(o.isEmpty(), o);
    QCOMPARE(BackupRecovery::settle(ws, s.temp.path()).size(), 0);
}

void TestSettingsBackup::emptyWorkspacePathTouchesNothing()
{
    Scene s;
    ScratchDir cwd;
    RandomTree::createFile(cwd.path() + "/bystander", "would be lost if the empty path meant here");
    const TreeState::Tree cwdBefore = TreeState::capture(cwd.path());
    const QString previous = QDir::currentPath();
    QDir::setCurrent(cwd.path());
    {
        SettingsBackup b{QString(), s.temp.path()};
        b.start();
        b.waitForFinished(60000);
        RandomTree::createFile(cwd.path() + "/made meanwhile", "must stay");
        QVERIFY(b.restore() != Outcome::Restored);
        b.clear();
    }
    QDir::setCurrent(previous);
    TreeState::Tree expected = cwdBefore;
    TreeState::Tree now = TreeState::capture(cwd.path());
    QVERIFY(now.contains("bystander"));
    QVERIFY(now.contains("made meanwhile"));
    now.remove("made meanwhile");
    now.remove(".");
    expected.remove(".");
    TREE_COMPARE(now, expected);
}

QTEST_GUILESS_MAIN(TestSettingsBackup)
#include "tst_settingsbackup.moc"
