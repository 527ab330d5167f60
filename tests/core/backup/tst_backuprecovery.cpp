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

#include <QLockFile>
#include <QtTest>

#include <algorithm>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using BackupScene::editAsTheWindowDoes;
using BackupScene::Scene;
using BackupScene::ScratchDir;
using State = SettingsBackup::State;
using Outcome = SettingsBackup::Outcome;

namespace {

bool listsBackup(const QList<BackupRecovery::Pending> &pending, const QString &path)
{
    return std::any_of(pending.cbegin(), pending.cend(),
                       [&](const BackupRecovery::Pending &p) { return p.backupPath == path; });
}

QString pendingText(const QList<BackupRecovery::Pending> &pending)
{
    QStringList out;
    for (const BackupRecovery::Pending &p : pending)
        out << p.backupPath;
    return out.join(QStringLiteral(", "));
}

// A complete backup of ws in temp whose window has gone; answers its folder.
QString deadCompleteBackup(const QString &ws, const QString &temp, const QString &edit = QString())
{
    SettingsBackup b(ws, temp);
    b.start();
    if (!b.waitForFinished(60000) || b.state() != State::Complete)
        return QString();
    if (!edit.isEmpty())
        FileOps::writeAtomically(ws + QLatin1Char('/') + edit, "edited by the window that died");
    return b.path();
}

} // namespace

class TestBackupRecovery : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void liveBackupIsNeverPending_data();
    void liveBackupIsNeverPending();
    void deadIncompleteBackupIsRemoved_data();
    void deadIncompleteBackupIsRemoved();
    void goingBackToAnIncompleteBackupUndoesNothing();
    void backupOfAnotherWorkspaceIsLeftAlone_data();
    void backupOfAnotherWorkspaceIsLeftAlone();
    void pendingBackupsComeOldestFirst();
    void aCancelUnderWayIsFinished();
    void leftoversBesideTheWorkspaceGo_data();
    void unfinishedBackupFoldersOfDeadMakersGo_data();
    void unfinishedBackupFoldersOfDeadMakersGo();
    void leftoversBesideTheWorkspaceGo();

    void staleTemporaries_data();
    void staleTemporaries();
    void onlyTheBundlesTemporariesGo();
};

void TestBackupRecovery::leftoversBesideTheWorkspaceGo_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("removed");
    QTest::newRow("a restored copy whose backup is gone goes")
        << ".ws.restore-1700000000.123456" << true;
    QTest::newRow("a parked workspace whose backup is gone goes")
        << ".ws.old-1700000000.123456-2" << true;
    QTest::newRow("a look-alike of another workspace stays")
        << ".ws2.old-1700000000.123456" << false;
    QTest::newRow("a look-alike without a backup's name stays") << ".ws.old-yesterday" << false;
    QTest::newRow("an author's folder stays") << "ws.restore-1700000000.123456" << false;
}

// What a crash left beside the workspace after its backup was already removed.
void TestBackupRecovery::leftoversBesideTheWorkspaceGo()
{
    QFETCH(QString, name);
    QFETCH(bool, removed);
    Scene s;
    QVERIFY(QDir().mkpath(s.ws()));
    const QString leftover = s.place.path() + QLatin1Char('/') + name;
    QVERIFY(QDir().mkpath(leftover + QStringLiteral("/inner")));
    const TreeState::Tree workspace = TreeState::capture(s.ws());
    QVERIFY(BackupRecovery::settle(s.ws(), s.temp.path()).isEmpty());
    BackupRecovery::waitForCleanUp();
    QCOMPARE(QFileInfo::exists(leftover), !removed);
    const TreeState::Diff d = TreeState::diff(workspace, TreeState::capture(s.ws()));
    QVERIFY2(d.isEmpty(), d);
}

void TestBackupRecovery::unfinishedBackupFoldersOfDeadMakersGo_data()
{
    QTest::addColumn<QString>("contents");
    QTest::addColumn<bool>("makerAlive");
    QTest::addColumn<bool>("removed");
    QTest::newRow("empty, its maker dead: goes") << "" << false << true;
    QTest::newRow("a lock alone, its maker dead: goes") << "lock" << false << true;
    QTest::newRow("a lock and an empty owner, its maker dead: goes")
        << "lock owner" << false << true;
    QTest::newRow("empty, its maker alive and about to lock it: stays") << "" << true << false;
    QTest::newRow("its lock held by its maker: stays") << "held" << true << false;
}

// A window killed while it made its backup folder leaves it under its unfinished name.
void TestBackupRecovery::unfinishedBackupFoldersOfDeadMakersGo()
{
    QFETCH(QString, contents);
    QFETCH(bool, makerAlive);
    QFETCH(bool, removed);
    if (!makerAlive && !Fs::supports(Fs::Capability::ProcessIds))
        QSKIP("this file layer cannot tell whether another process runs");
    Scene s;
    QVERIFY(QDir().mkpath(s.ws()));
    // A process id that is not running: one past the kernel's limit.
    const qint64 maker = makerAlive ? qint64(::getpid()) : qint64(4194304 + 1);
    const QString folder = s.temp.path() + QStringLiteral("/.1700000000.123456-%1.new").arg(maker);
    QVERIFY(QDir().mkpath(folder));
    // The maker's lock, held as a live window holds its own.
    QLockFile held(folder + QStringLiteral("/lock"));
    held.setStaleLockTime(0);
    for (const QString &name : contents.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (name == "held") {
            QVERIFY(held.tryLock(0));
            continue;
        }
        QFile file(folder + QLatin1Char('/') + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(BackupRecovery::settle(s.ws(), s.temp.path()).isEmpty());
    BackupRecovery::waitForCleanUp();
    QCOMPARE(QFileInfo::exists(folder), !removed);
}

void TestBackupRecovery::liveBackupIsNeverPending_data()
{
    QTest::addColumn<bool>("waitFirst");
    QTest::newRow("a live, complete backup is not offered and still restores") << true;
    QTest::newRow("a live backup still being taken is neither offered nor removed") << false;
}

void TestBackupRecovery::liveBackupIsNeverPending()
{
    QFETCH(bool, waitFirst);
    Scene s;
    const QString ws = s.ws();
    RandomTree::makeWide(ws, 1, 20, 5, 5, 512);
    const TreeState::Tree before = TreeState::capture(ws);

    SettingsBackup b(ws, s.temp.path());
    b.start();
    if (waitFirst)
        QVERIFY(b.waitForFinished(60000));
    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(ws, s.temp.path());
    QVERIFY2(!listsBackup(pending, b.path()),
             qPrintable("the open window's own backup was offered: " + pendingText(pending)));
    QVERIFY2(TreeState::existsNoFollow(b.path()), "settle removed the open window's backup");
    QVERIFY(b.waitForFinished(120000));
    QCOMPARE(b.state(), State::Complete);

    QVERIFY(FileOps::writeAtomically(ws + "/settings.dat", "edited"));
    QVERIFY(FileOps::removeItem(ws + "/d07"));
    QCOMPARE(b.restore(), Outcome::Restored);
    TREE_COMPARE(TreeState::capture(ws), before);
}

void TestBackupRecovery::deadIncompleteBackupIsRemoved_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("its complete mark is missing") << "noMark";
    QTest::newRow("its window closed while the image was being taken") << "closedEarly";
    QTest::newRow("its image did not fit the temporary folder") << "full";
}

// Nothing may be restored from an incomplete backup: settle removes it and the workspace stays
// as the dead window left it.
void TestBackupRecovery::deadIncompleteBackupIsRemoved()
{
    QFETCH(QString, how);
    Scene s;
    const QString ws = s.ws();
    QString temp = s.temp.path();
    std::unique_ptr<TmpfsMount> mount;
    if (how == "full") {
        if (!TmpfsMount::canMount())
            QSKIP("a full temporary folder of its own needs root (mount -t tmpfs)");
        temp = s.temp.path() + QStringLiteral("/small");
        QDir().mkpath(temp);
        mount.reset(new TmpfsMount(temp, "size=1m"));
        QVERIFY2(mount->isMounted(), qPrintable(mount->error()));
        RandomTree::makeWide(ws, 2, 4, 2, 4, 100 * 1024);
    } else {
        RandomTree::makeWide(ws, 2, 20, 5, 5, 512);
    }

    QString path;
    {
        SettingsBackup b(ws, temp);
        QVERIFY(b.state() != State::Unavailable);
        path = b.path();
        b.start();
        QVERIFY(FileOps::writeAtomically(ws + "/settings.dat", "edited"));
        QVERIFY(FileOps::removeItem(ws + "/d01/s1"));
        if (how != "closedEarly") {
            QVERIFY(b.waitForFinished(120000));
            QCOMPARE(b.state(), how == "full" ? State::Incomplete : State::Complete);
        }
    }
    QVERIFY2(TreeState::existsNoFollow(path), "the backup went with its window");
    if (how == "noMark") {
        QVERIFY(TreeState::existsNoFollow(path + "/complete"));
        QVERIFY(::unlink(TreeState::native(path + "/complete").constData()) == 0);
    } else if (how == "closedEarly" && TreeState::existsNoFollow(path + "/complete")) {
        QSKIP("the image was complete before its window closed");
    }
    const TreeState::Tree edited = TreeState::capture(ws);

    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(ws, temp);
    QVERIFY2(pending.isEmpty(), qPrintable("offered: " + pendingText(pending)));
    QVERIFY2(!TreeState::existsNoFollow(path),
             qPrintable("the incomplete backup is still there: " + path));
    TREE_COMPARE(TreeState::capture(ws), edited);
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(temp), QStringList());
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.place.path()), QStringList{"ws"});
}

void TestBackupRecovery::goingBackToAnIncompleteBackupUndoesNothing()
{
    Scene s;
    const QString ws = s.ws();
    RandomTree::Options options;
    options.outside = s.outside();
    RandomTree::make(ws, 9, options);
    const QString path = deadCompleteBackup(ws, s.temp.path(), QStringLiteral("settings.dat"));
    QVERIFY(!path.isEmpty());
    QVERIFY(::unlink(TreeState::native(path + "/complete").constData()) == 0);
    const TreeState::Tree edited = TreeState::capture(ws);
    QCOMPARE(BackupRecovery::goBack(ws, path), Outcome::NothingToUndo);
    TREE_COMPARE(TreeState::capture(ws), edited);
}

void TestBackupRecovery::backupOfAnotherWorkspaceIsLeftAlone_data()
{
    QTest::addColumn<QString>("other");
    QTest::newRow("a workspace beside it") << "other";
    QTest::newRow("a workspace whose name begins with its name") << "ws-2";
    QTest::newRow("the folder it lies in") << ".";
    QTest::newRow("a folder inside it") << "ws/d00";
}

void TestBackupRecovery::backupOfAnotherWorkspaceIsLeftAlone()
{
    QFETCH(QString, other);
    Scene s;
    const QString ws = s.ws();
    RandomTree::makeWide(ws, 3, 3, 2, 3, 512);
    const QString otherWs =
        other == "." ? s.place.path() : s.place.path() + QLatin1Char('/') + other;
    QDir().mkpath(otherWs);
    RandomTree::createFile(otherWs + "/settings.dat", "the other workspace's");
    const TreeState::Tree before = TreeState::capture(ws);
    const QString path = deadCompleteBackup(ws, s.temp.path());
    QVERIFY(!path.isEmpty());
    const TreeState::Tree backup = TreeState::capture(path);
    const TreeState::Tree place = TreeState::capture(s.place.path());

    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(otherWs, s.temp.path());
    QVERIFY2(pending.isEmpty(), qPrintable("offered for " + other + ": " + pendingText(pending)));
    TREE_COMPARE(TreeState::capture(path), backup);
    TREE_COMPARE(TreeState::capture(s.place.path()), place);

    const QList<BackupRecovery::Pending> own = BackupRecovery::settle(ws, s.temp.path());
    QCOMPARE(own.size(), 1);
    QCOMPARE(own.first().backupPath, path);
    QCOMPARE(BackupRecovery::goBack(ws, path), Outcome::Restored);
    TREE_COMPARE(TreeState::capture(ws), before);
}

void TestBackupRecovery::pendingBackupsComeOldestFirst()
{
    Scene s;
    const QString ws = s.ws();
    RandomTree::makeWide(ws, 4, 2, 2, 2, 512);
    const QString first = deadCompleteBackup(ws, s.temp.path(), "settings.dat");
    const QString second = deadCompleteBackup(ws, s.temp.path(), "config.js");
    QVERIFY(!first.isEmpty() && !second.isEmpty() && first != second);
    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(ws, s.temp.path());
    QCOMPARE(pending.size(), 2);
    QCOMPARE(pending.at(0).backupPath, first);
    QCOMPARE(pending.at(1).backupPath, second);
    QVERIFY(pending.at(0).openedAt <= pending.at(1).openedAt);
    QVERIFY(pending.at(0).openedAt > 1.6e9);
    BackupRecovery::keep(first);
    BackupRecovery::keep(second);
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.temp.path()), QStringList());
}

// The author chose Cancel and the window died during the restore: the next opening finishes it
// without asking again.
void TestBackupRecovery::aCancelUnderWayIsFinished()
{
    Scene s;
    const QString ws = s.ws();
    RandomTree::Options options;
    options.outside = s.outside();
    RandomTree::make(ws, 12, options);
    const TreeState::Tree before = TreeState::capture(ws);
    const TreeState::Tree outside = TreeState::captureOutside(s.place.path(), {"ws"});
    const QString path = deadCompleteBackup(ws, s.temp.path(), "settings.dat");
    QVERIFY(!path.isEmpty());
    QVERIFY(RandomTree::createFile(path + "/cancel", QByteArray()));
    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(ws, s.temp.path());
    QVERIFY2(pending.isEmpty(), qPrintable("asked again about: " + pendingText(pending)));
    TREE_COMPARE(TreeState::capture(ws), before);
    QVERIFY(!TreeState::existsNoFollow(path));
    BackupRecovery::waitForCleanUp();
    QCOMPARE(TreeState::names(s.place.path()), QStringList({"outside", "ws"}));
    TREE_COMPARE(TreeState::captureOutside(s.place.path(), {"ws"}), outside);
}

// ---- temporaries of interrupted saves

void TestBackupRecovery::staleTemporaries_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("removed");
    QTest::newRow("a save's temporary of settings.dat goes") << ".settings.dat.imgsave-a1B2c3"
                                                             << "file" << true;
    QTest::newRow("a save's temporary of config.js goes") << ".config.js.imgsave-ZZZZZZ"
                                                          << "file" << true;
    QTest::newRow("a save's temporary with digits only goes") << ".img.xml.imgsave-000000"
                                                              << "file" << true;
    QTest::newRow("a save's temporary of a non-ASCII name goes")
        << QString::fromUtf8(".画像 äöü.png.imgsave-Qx9z0A") << "file" << true;
    QTest::newRow("a user's .bak file stays") << "settings.dat.bak"
                                              << "file" << false;
    QTest::newRow("a longer suffix stays") << ".settings.dat.imgsave-toolongname"
                                           << "file" << false;
    QTest::newRow("five characters stay") << ".settings.dat.imgsave-a1B2c"
                                          << "file" << false;
    QTest::newRow("seven characters stay") << ".settings.dat.imgsave-a1B2c3d"
                                           << "file" << false;
    QTest::newRow("a character that is not a letter or digit stays")
        << ".settings.dat.imgsave-a1B2_3"
        << "file" << false;
    QTest::newRow("without the leading dot it stays") << "settings.dat.imgsave-a1B2c3"
                                                      << "file" << false;
    QTest::newRow("something after the six characters stays") << ".settings.dat.imgsave-a1B2c3.png"
                                                              << "file" << false;
    QTest::newRow("a folder of a matching name stays, with its contents")
        << ".settings.dat.imgsave-a1B2c3"
        << "folder" << false;
    QTest::newRow("a link of a matching name stays, its target too")
        << ".settings.dat.imgsave-a1B2c3"
        << "link" << false;
    QTest::newRow("a FIFO of a matching name stays, never opened") << ".settings.dat.imgsave-a1B2c3"
                                                                   << "fifo" << false;
    QTest::newRow("a match in a sub-folder stays") << "files/.settings.dat.imgsave-a1B2c3"
                                                   << "file" << false;
}

namespace {

void plant(const QString &ws, const QString &outsideFile, const QString &name, const QString &kind)
{
    const QString path = ws + QLatin1Char('/') + name;
    QDir().mkpath(QFileInfo(path).path());
    if (kind == "file") {
        RandomTree::createFile(path, "half a save");
    } else if (kind == "folder") {
        ::mkdir(TreeState::native(path).constData(), 0755);
        RandomTree::createFile(path + "/inside", "a user's");
    } else if (kind == "link") {
        RandomTree::makeLink(path, outsideFile);
    } else {
        ::mkfifo(TreeState::native(path).constData(), 0600);
    }
}

bool answered(const QStringList &names, const QString &name)
{
    const QString file = QFileInfo(name).fileName();
    return std::any_of(names.cbegin(), names.cend(), [&](const QString &n) {
        return n == name || n == file || n.endsWith(QLatin1Char('/') + name);
    });
}

} // namespace

void TestBackupRecovery::staleTemporaries()
{
    QFETCH(QString, name);
    QFETCH(QString, kind);
    QFETCH(bool, removed);
    for (const bool throughSettle : {false, true}) {
        Scene s;
        const QString ws = s.ws();
        RandomTree::makeWide(ws, 6, 2, 1, 2, 256);
        QDir().mkpath(ws + "/files");
        QDir().mkpath(s.outside());
        const QString outsideFile = s.outside() + "/target.dat";
        RandomTree::createFile(outsideFile, "outside");
        plant(ws, outsideFile, name, kind);
        RandomTree::setTime(ws, 1000000000, 5);
        const TreeState::Tree before = TreeState::capture(ws);
        const TreeState::Tree outside = TreeState::capture(s.outside());

        QStringList answer;
        if (throughSettle)
            QCOMPARE(BackupRecovery::settle(ws, s.temp.path()).size(), 0);
        else
            answer = BackupRecovery::removeStaleTemporaries(ws);

        const bool gone = !TreeState::existsNoFollow(ws + QLatin1Char('/') + name);
        QVERIFY2(gone == removed, qPrintable(QStringLiteral("%1 %2 %3 %4")
                                                 .arg(kind, name, gone ? "was removed" : "stayed",
                                                      throughSettle ? "by settle" : "")));
        if (!throughSettle)
            QVERIFY2(answered(answer, name) == removed,
                     qPrintable("answered: " + answer.join(", ")));
        TreeState::Tree expected = before;
        TreeState::Tree now = TreeState::capture(ws);
        if (removed) {
            expected.remove(name);
            expected.remove(".");
            now.remove(".");
        }
        TREE_COMPARE(now, expected);
        TREE_COMPARE(TreeState::capture(s.outside()), outside);
    }
}

void TestBackupRecovery::onlyTheBundlesTemporariesGo()
{
    Scene s;
    const QString ws = s.ws();
    RandomTree::Options options;
    options.outside = s.outside();
    RandomTree::make(ws, 21, options);
    QDir().mkpath(ws + "/files");
    const QString outsideFile = s.outside() + "/target.dat";
    RandomTree::createFile(outsideFile, "outside");
    const QList<std::tuple<QString, QString, bool>> rows = {
        {".settings.dat.imgsave-a1B2c3", "file", true},
        {".config.js.imgsave-ZZZZZZ", "file", true},
        {".index.html.imgsave-9q8W7e", "file", true},
        {"settings.dat.bak", "file", false},
        {".settings.dat.imgsave-toolongname", "file", false},
        {".img.xml.imgsave-a1B2c3", "folder", false},
        {".other.imgsave-a1B2c3", "link", false},
        {".pipe.imgsave-a1B2c3", "fifo", false},
        {"files/.settings.dat.imgsave-a1B2c3", "file", false},
    };
    QStringList expected;
    for (const auto &[name, kind, removed] : rows) {
        plant(ws, outsideFile, name, kind);
        if (removed)
            expected << name;
    }
    const TreeState::Tree before = TreeState::capture(ws);
    QStringList answer = BackupRecovery::removeStaleTemporaries(ws);
    for (QString &n : answer)
        n = QFileInfo(n).fileName();
    answer.sort();
    expected.sort();
    QCOMPARE(answer, expected);
    TreeState::Tree now = TreeState::capture(ws);
    TreeState::Tree rest = before;
    for (const QString &n : expected)
        rest.remove(n);
    rest.remove(".");
    now.remove(".");
    TREE_COMPARE(now, rest);
    QCOMPARE(BackupRecovery::removeStaleTemporaries(ws), QStringList());
}

QTEST_GUILESS_MAIN(TestBackupRecovery)
#include "tst_backuprecovery.moc"
