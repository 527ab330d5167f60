#include "settingsbackup.h"
#include "testenv.h"
#include "treesnapshot.h"

#include <QTemporaryDir>
#include <QtTest>

using TreeSnapshot::readFile;
using TreeSnapshot::writeFile;

class TestSettingsBackup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void backupPathIsTheTimeWithSixDecimals_data();
    void backupPathIsTheTimeWithSixDecimals();
    void newBackupPathLiesInTheTemporaryFolder();
    void createBackupFolderReplacesWhatIsThere_data();
    void createBackupFolderReplacesWhatIsThere();
    void saveCopiesTheWholeTree();
    void saveWithoutBackupFolderCopiesNothing();
    void undoGivesBackTheTreeOfTheOpening_data();
    void undoGivesBackTheTreeOfTheOpening();
    void undoWithoutBackupLeavesTheWorkspace();
    void clearDeletesTheBackup();
    void emptyWorkspacePathTouchesNothing();

private:
    // A workspace with hidden files, nested and empty folders and awkward names.
    static void fillWorkspace(const QString &ws)
    {
        writeFile(ws + "/settings.dat", "10.0\n20.0\n30.0\n15.0\n0.0\n1");
        writeFile(ws + "/img.xml", "<plugin/>");
        writeFile(ws + "/.hidden", "secret");
        writeFile(ws + "/.config/state", "hidden folder");
        writeFile(ws + "/css/.DS_Store", "nested hidden");
        writeFile(ws + "/files/plugin/deep/pic ture.png", QByteArray("\x89PNG\0\x01", 6));
        writeFile(ws + QString::fromUtf8("/Bild äöü 画像.jpg"), "non-ascii");
        writeFile(ws + "/" + QString(200, QLatin1Char('x')) + ".txt", "long name");
        QDir().mkpath(ws + "/empty");
    }
};

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

void TestSettingsBackup::newBackupPathLiesInTheTemporaryFolder()
{
    const QString path = SettingsBackup::newBackupPath();
    QCOMPARE(QFileInfo(path).path(), QDir::tempPath());
    const QString name = QFileInfo(path).fileName();
    QVERIFY2(QRegularExpression("^\\d+\\.\\d{6}$").match(name).hasMatch(), qPrintable(name));
    const double now = QDateTime::currentMSecsSinceEpoch() / 1000.0;
    QVERIFY(qAbs(name.toDouble() - now) < 60);
}

void TestSettingsBackup::createBackupFolderReplacesWhatIsThere_data()
{
    QTest::addColumn<QString>("existing");
    QTest::newRow("nothing there") << "";
    QTest::newRow("an earlier window's folder of the same name") << "folder";
    QTest::newRow("a file in the way") << "file";
}

void TestSettingsBackup::createBackupFolderReplacesWhatIsThere()
{
    QFETCH(QString, existing);
    QTemporaryDir tmp;
    const QString backup = tmp.filePath("1700000000.000000");
    if (existing == "folder")
        writeFile(backup + "/old/settings.dat", "old");
    else if (existing == "file")
        writeFile(backup, "a file");
    SettingsBackup::createBackupFolder(backup);
    QVERIFY(QFileInfo(backup).isDir());
    QVERIFY(TreeSnapshot::take(backup).isEmpty());
}

void TestSettingsBackup::saveCopiesTheWholeTree()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    const QString backup = tmp.filePath("backup");
    fillWorkspace(ws);
    SettingsBackup::createBackupFolder(backup);
    SettingsBackup::saveInitialSettings(ws, backup);
    QCOMPARE(TreeSnapshot::take(backup), TreeSnapshot::take(ws));
    QVERIFY(TreeSnapshot::take(backup).contains(".config/state"));
    QVERIFY(TreeSnapshot::take(backup).contains("empty"));
}

void TestSettingsBackup::saveWithoutBackupFolderCopiesNothing()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    fillWorkspace(ws);
    SettingsBackup::saveInitialSettings(ws, tmp.filePath("missing"));
    QVERIFY(!QFileInfo::exists(tmp.filePath("missing")));
}

void TestSettingsBackup::undoGivesBackTheTreeOfTheOpening_data()
{
    QTest::addColumn<QString>("change");
    QTest::newRow("a file created meanwhile is gone") << "create";
    QTest::newRow("a folder created meanwhile is gone") << "createFolder";
    QTest::newRow("a changed file has its opening bytes") << "change";
    QTest::newRow("a deleted hidden file is back") << "deleteHidden";
    QTest::newRow("a deleted sub-folder is back") << "deleteFolder";
    QTest::newRow("a vanished workspace is rebuilt") << "deleteWorkspace";
    QTest::newRow("nothing changed") << "none";
}

void TestSettingsBackup::undoGivesBackTheTreeOfTheOpening()
{
    QFETCH(QString, change);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    const QString backup = tmp.filePath("backup");
    fillWorkspace(ws);
    SettingsBackup::createBackupFolder(backup);
    SettingsBackup::saveInitialSettings(ws, backup);
    const TreeSnapshot::Tree opening = TreeSnapshot::take(ws);

    if (change == "create")
        writeFile(ws + "/new.png", "new");
    else if (change == "createFolder")
        writeFile(ws + "/newdir/.x/y", "new");
    else if (change == "change")
        writeFile(ws + "/settings.dat", "99.0\n20.0\n30.0\n15.0\n0.0\n0");
    else if (change == "deleteHidden")
        QFile::remove(ws + "/.hidden");
    else if (change == "deleteFolder")
        QDir(ws + "/files").removeRecursively();
    else if (change == "deleteWorkspace")
        QDir(ws).removeRecursively();

    SettingsBackup::undoSettings(ws, backup);
    QCOMPARE(TreeSnapshot::take(ws), opening);
    QVERIFY(!QFileInfo::exists(backup));
}

void TestSettingsBackup::undoWithoutBackupLeavesTheWorkspace()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    fillWorkspace(ws);
    writeFile(ws + "/edited", "kept");
    const TreeSnapshot::Tree before = TreeSnapshot::take(ws);
    SettingsBackup::undoSettings(ws, tmp.filePath("missing"));
    QCOMPARE(TreeSnapshot::take(ws), before);
}

void TestSettingsBackup::clearDeletesTheBackup()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    const QString backup = tmp.filePath("backup");
    fillWorkspace(ws);
    SettingsBackup::createBackupFolder(backup);
    SettingsBackup::saveInitialSettings(ws, backup);
    const TreeSnapshot::Tree live = TreeSnapshot::take(ws);
    SettingsBackup::clearBackupSettings(backup);
    QVERIFY(!QFileInfo::exists(backup));
    QCOMPARE(TreeSnapshot::take(ws), live);
    SettingsBackup::clearBackupSettings(backup); // a second clear finds nothing and is harmless
    QVERIFY(!QFileInfo::exists(backup));
}

void TestSettingsBackup::emptyWorkspacePathTouchesNothing()
{
    QTemporaryDir tmp;
    const QString backup = tmp.filePath("backup");
    writeFile(backup + "/stray", "would land in the current folder");
    QTemporaryDir cwd;
    const QString previous = QDir::currentPath();
    QDir::setCurrent(cwd.path());
    SettingsBackup::saveInitialSettings(QString(), backup);
    SettingsBackup::undoSettings(QString(), backup);
    QDir::setCurrent(previous);
    QVERIFY(TreeSnapshot::take(cwd.path()).isEmpty());
    QCOMPARE(readFile(backup + "/stray"), QByteArray()); // the backup is cleared all the same
    QVERIFY(!QFileInfo::exists(backup));
}

QTEST_GUILESS_MAIN(TestSettingsBackup)
#include "tst_settingsbackup.moc"
