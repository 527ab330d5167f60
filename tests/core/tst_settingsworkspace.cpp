#include "settingsworkspace.h"
#include "specialentries.h"
#include "testenv.h"
#include "treesnapshot.h"

#include <QTemporaryDir>
#include <QtTest>

using TreeSnapshot::readFile;
using TreeSnapshot::writeFile;

class TestSettingsWorkspace : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }

    void settingsFileToLoad_data();
    void settingsFileToLoad();
    void specialSettingsFileIsMissing_data();
    void specialSettingsFileIsMissing();
    void previewScriptIsStale_data();
    void previewScriptIsStale();
    void previewPageFollowsTheBundle_data();
    void previewPageFollowsTheBundle();
    void previewPageWithSpecialEntries_data();
    void previewPageWithSpecialEntries();
    void keepListHasTheLocatedFilesThenTheBookFiles();
    void filesListIsOneNamePerLine_data();
    void filesListIsOneNamePerLine();
    void cleanKeepsExactlyTheKeepList_data();
    void cleanKeepsExactlyTheKeepList();
    void emptyWorkspacePathTouchesNothing();
};

void TestSettingsWorkspace::previewScriptIsStale_data()
{
    // Entries and their modification times in seconds since 1970; "fifo" makes a FIFO.
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QList<int>>("times");
    QTest::addColumn<bool>("stale");
    QTest::newRow("a new workspace has no script")
        << QStringList{"defaultsettings.dat"} << QList<int>{100} << true;
    QTest::newRow("a script older than settings.dat")
        << QStringList{"settings.dat", "config.js"} << QList<int>{200, 100} << true;
    QTest::newRow("a script as new as settings.dat")
        << QStringList{"settings.dat", "config.js"} << QList<int>{200, 200} << false;
    QTest::newRow("a script newer than settings.dat")
        << QStringList{"settings.dat", "config.js"} << QList<int>{100, 200} << false;
    QTest::newRow("without settings.dat the defaults count")
        << QStringList{"defaultsettings.dat", "config.js"} << QList<int>{300, 200} << true;
    QTest::newRow("an older defaults file does not count beside settings.dat")
        << QStringList{"settings.dat", "defaultsettings.dat", "config.js"}
        << QList<int>{100, 300, 200} << false;
    QTest::newRow("no position file at all leaves the script alone")
        << QStringList{"config.js"} << QList<int>{100} << false;
    QTest::newRow("a FIFO in the script's place is no script")
        << QStringList{"settings.dat", "fifo:config.js"} << QList<int>{100, 200} << true;
}

void TestSettingsWorkspace::previewScriptIsStale()
{
    QFETCH(QStringList, entries);
    QFETCH(QList<int>, times);
    QFETCH(bool, stale);
    QTemporaryDir dir;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        QString name = entries.at(i);
        const bool fifo = name.startsWith(QLatin1String("fifo:"));
        name.remove(QLatin1String("fifo:"));
        const QString path = dir.filePath(name);
        if (fifo) {
            QVERIFY(SpecialEntries::makeFifo(path));
            continue;
        }
        writeFile(path, "10.0\n20.0\n30.0\n15.0\n0.0\n1");
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(times.at(i)),
                                 QFileDevice::FileModificationTime));
    }
    QCOMPARE(SettingsWorkspace::previewScriptIsStale(dir.path()), stale);
}

void TestSettingsWorkspace::settingsFileToLoad_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("expected");
    QTest::newRow("top-level settings.dat")
        << QStringList{"settings.dat", "defaultsettings.dat"} << "settings.dat";
    QTest::newRow("only in a sub-folder: the defaults")
        << QStringList{"sub/settings.dat", "defaultsettings.dat"} << "defaultsettings.dat";
    QTest::newRow("neither: the defaults path all the same")
        << QStringList{} << "defaultsettings.dat";
    QTest::newRow("other case is another name")
        << QStringList{"Settings.dat"} << "defaultsettings.dat";
}

void TestSettingsWorkspace::settingsFileToLoad()
{
    QFETCH(QStringList, files);
    QFETCH(QString, expected);
    QTemporaryDir tmp;
    QDir().mkpath(tmp.path());
    for (const QString &f : files)
        writeFile(tmp.filePath(f), "1\n2\n3\n4\n5\n6");
    QCOMPARE(SettingsWorkspace::settingsFileToLoad(tmp.path()), tmp.filePath(expected));
}

void TestSettingsWorkspace::specialSettingsFileIsMissing_data()
{
    using namespace SpecialEntries;
    QTest::addColumn<Kind>("kind");
    QTest::newRow("a FIFO: the defaults") << Fifo;
    QTest::newRow("a link to a position file outside: the defaults") << LinkToFile;
    QTest::newRow("a folder: the defaults") << Folder;
    QTest::newRow("a dangling link: the defaults") << DanglingLink;
}

void TestSettingsWorkspace::specialSettingsFileIsMissing()
{
    QFETCH(SpecialEntries::Kind, kind);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    writeFile(ws + "/defaultsettings.dat", "1\n2\n3\n4\n5\n6");
    QVERIFY(SpecialEntries::make(kind, ws + "/settings.dat", tmp.filePath("outside"),
                                 "7\n7\n7\n7\n7\n7"));
    QCOMPARE(SettingsWorkspace::settingsFileToLoad(ws), ws + "/defaultsettings.dat");
}

void TestSettingsWorkspace::previewPageFollowsTheBundle_data()
{
    QTest::addColumn<QByteArray>("bundlePage");    // "<none>": the bundle has no page
    QTest::addColumn<QByteArray>("workspacePage"); // "<none>": the workspace has no page
    QTest::addColumn<QByteArray>("expected");      // "<none>": still no page
    QTest::newRow("missing page is copied")
        << QByteArray("<p>bundle</p>") << QByteArray("<none>") << QByteArray("<p>bundle</p>");
    QTest::newRow("local edits are overwritten")
        << QByteArray("<p>bundle</p>") << QByteArray("<p>edited</p>")
        << QByteArray("<p>bundle</p>");
    QTest::newRow("equal page stays")
        << QByteArray("<p>same</p>") << QByteArray("<p>same</p>") << QByteArray("<p>same</p>");
    QTest::newRow("unreadable bundle page writes nothing")
        << QByteArray("<none>") << QByteArray("<p>edited</p>") << QByteArray("<p>edited</p>");
    QTest::newRow("no page anywhere stays so")
        << QByteArray("<none>") << QByteArray("<none>") << QByteArray("<none>");
}

void TestSettingsWorkspace::previewPageFollowsTheBundle()
{
    QFETCH(QByteArray, bundlePage);
    QFETCH(QByteArray, workspacePage);
    QFETCH(QByteArray, expected);
    QTemporaryDir tmp;
    const QString bundle = tmp.filePath("img.bundle");
    const QString ws = tmp.filePath("ws");
    QDir().mkpath(bundle + "/Contents/Resources/html");
    QDir().mkpath(ws);
    if (bundlePage != "<none>")
        writeFile(bundle + "/Contents/Resources/html/index.html", bundlePage);
    if (workspacePage != "<none>")
        writeFile(ws + "/index.html", workspacePage);
    SettingsWorkspace::refreshPreviewPage(ws, bundle);
    if (expected == "<none>")
        QVERIFY(!QFileInfo::exists(ws + "/index.html"));
    else
        QCOMPARE(readFile(ws + "/index.html"), expected);
}

// Kind -1 is a plain file (or none when the bytes are "<none>"); the other kinds are the
// special entries, a link's target holding the bytes.
void TestSettingsWorkspace::previewPageWithSpecialEntries_data()
{
    using namespace SpecialEntries;
    const int plain = -1;
    QTest::addColumn<int>("bundleKind");
    QTest::addColumn<QByteArray>("bundlePage");
    QTest::addColumn<int>("workspaceKind");
    QTest::addColumn<QByteArray>("workspacePage");
    QTest::addColumn<QByteArray>("expected"); // "<none>": still no page
    QTest::newRow("a FIFO as the bundle's page copies nothing, without waiting")
        << int(Fifo) << QByteArray() << plain << QByteArray("<none>") << QByteArray("<none>");
    QTest::newRow("a FIFO as the bundle's page leaves the workspace page alone")
        << int(Fifo) << QByteArray() << plain << QByteArray("<p>edited</p>")
        << QByteArray("<p>edited</p>");
    QTest::newRow("a packager's link as the bundle's page is followed")
        << int(LinkToFile) << QByteArray("<p>bundle</p>") << plain << QByteArray("<none>")
        << QByteArray("<p>bundle</p>");
    QTest::newRow("a bundle page linked to a FIFO copies nothing")
        << int(LinkToFifo) << QByteArray() << plain << QByteArray("<none>") << QByteArray("<none>");
    QTest::newRow("a FIFO as the workspace page reads as empty and is replaced")
        << plain << QByteArray("<p>bundle</p>") << int(Fifo) << QByteArray()
        << QByteArray("<p>bundle</p>");
    QTest::newRow("a link as the workspace page is not read through and is replaced")
        << plain << QByteArray("<p>bundle</p>") << int(LinkToFile) << QByteArray("<p>bundle</p>")
        << QByteArray("<p>bundle</p>");
}

void TestSettingsWorkspace::previewPageWithSpecialEntries()
{
    QFETCH(int, bundleKind);
    QFETCH(QByteArray, bundlePage);
    QFETCH(int, workspaceKind);
    QFETCH(QByteArray, workspacePage);
    QFETCH(QByteArray, expected);
    QTemporaryDir tmp;
    const QString bundle = tmp.filePath("img.bundle");
    const QString bundleFile = bundle + "/Contents/Resources/html/index.html";
    const QString ws = tmp.filePath("ws");
    QDir().mkpath(ws);
    const auto put = [&](int kind, const QString &path, const QByteArray &bytes) {
        if (kind >= 0)
            return SpecialEntries::make(SpecialEntries::Kind(kind), path, tmp.filePath("outside"),
                                        bytes);
        if (bytes != "<none>")
            writeFile(path, bytes);
        return true;
    };
    QVERIFY(put(bundleKind, bundleFile, bundlePage));
    QVERIFY(put(workspaceKind, ws + "/index.html", workspacePage));
    SettingsWorkspace::refreshPreviewPage(ws, bundle);
    const QString page = ws + "/index.html";
    if (expected == "<none>") {
        QVERIFY(!QFileInfo::exists(page));
        return;
    }
    // A link that read through would have matched the bundle's text and stayed.
    QVERIFY(QFileInfo(page).isFile() && !QFileInfo(page).isSymLink());
    QCOMPARE(readFile(page), expected);
}

void TestSettingsWorkspace::keepListHasTheLocatedFilesThenTheBookFiles()
{
    QCOMPARE(SettingsWorkspace::keepList({"pic.png"}, "img"),
             (QStringList{"pic.png", "files", "bookPlugin.js", "defaultsettings.dat",
                          "settings.dat", "img.xml"}));
    QCOMPARE(
        SettingsWorkspace::keepList({}, "img"),
        (QStringList{"files", "bookPlugin.js", "defaultsettings.dat", "settings.dat", "img.xml"}));
}

void TestSettingsWorkspace::filesListIsOneNamePerLine_data()
{
    QTest::addColumn<QStringList>("located");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no located files: an empty file") << QStringList{} << QByteArray("");
    QTest::newRow("one name, no newline") << QStringList{"pic.png"} << QByteArray("pic.png");
    QTest::newRow("two names joined by a newline")
        << QStringList{"a.png", "b b.jpg"} << QByteArray("a.png\nb b.jpg");
    QTest::newRow("non-ASCII written as UTF-8")
        << QStringList{QString::fromUtf8("画像.png")} << QByteArray("\xe7\x94\xbb\xe5\x83\x8f.png");
}

void TestSettingsWorkspace::filesListIsOneNamePerLine()
{
    QFETCH(QStringList, located);
    QFETCH(QByteArray, bytes);
    QTemporaryDir tmp;
    writeFile(tmp.filePath("files"), "old contents that must go");
    SettingsWorkspace::writeFilesList(tmp.path(), located);
    QVERIFY(QFileInfo(tmp.filePath("files")).isFile());
    QCOMPARE(readFile(tmp.filePath("files")), bytes);
}

void TestSettingsWorkspace::cleanKeepsExactlyTheKeepList_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QStringList>("kept");
    const QStringList book{"files", "bookPlugin.js", "defaultsettings.dat", "settings.dat",
                           "img.xml"};
    QTest::newRow("preview files go") << (book + QStringList{"index.html", "config.js", "pic.png"})
                                      << (book + QStringList{"pic.png"});
    QTest::newRow("sub-folders go with their contents")
        << (book + QStringList{"css/a.css", "files2/plugin/x.png"}) << book;
    QTest::newRow("hidden entries go") << (book + QStringList{".hidden", ".svn/entries"}) << book;
    QTest::newRow("names compare case-sensitively")
        << QStringList{"Settings.dat", "settings.dat", "IMG.xml"} << QStringList{"settings.dat"};
    QTest::newRow("a nested name is not a top-level name")
        << QStringList{"sub/settings.dat", "pic.png"} << QStringList{"pic.png"};
}

void TestSettingsWorkspace::cleanKeepsExactlyTheKeepList()
{
    QFETCH(QStringList, entries);
    QFETCH(QStringList, kept);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    for (const QString &e : entries)
        writeFile(ws + "/" + e, e.toUtf8());
    SettingsWorkspace::cleanToKeepList(ws, SettingsWorkspace::keepList({"pic.png"}, "img"));
    QStringList left =
        QDir(ws).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    kept.sort();
    QCOMPARE(left, kept);
    for (const QString &k : kept)
        QCOMPARE(readFile(ws + "/" + k), k.toUtf8());
}

void TestSettingsWorkspace::emptyWorkspacePathTouchesNothing()
{
    QVERIFY(!SettingsWorkspace::previewScriptIsStale(QString()));
    QTemporaryDir cwd;
    writeFile(cwd.filePath("index.html"), "mine");
    const QString previous = QDir::currentPath();
    QDir::setCurrent(cwd.path());
    SettingsWorkspace::writeFilesList(QString(), {"a"});
    SettingsWorkspace::cleanToKeepList(QString(), {});
    SettingsWorkspace::refreshPreviewPage(QString(), QString());
    QDir::setCurrent(previous);
    QCOMPARE(TreeSnapshot::take(cwd.path()), (TreeSnapshot::Tree{{"index.html", "mine"}}));
}

QTEST_GUILESS_MAIN(TestSettingsWorkspace)
#include "tst_settingsworkspace.moc"
