// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "fileops.h"
#include "pluginsettingsinfo.h"
#include "positionfile.h"
#include "settingsworkspace.h"
#include "specialentries.h"
#include "testenv.h"
#include "treesnapshot.h"

#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <fcntl.h>
#include <functional>
#include <sys/stat.h>

using TreeSnapshot::readFile;
using TreeSnapshot::writeFile;

namespace {

// A description with every member a position writes, and a text whose digit the in-place edits
// change, so that its size stays the same.
const QByteArray kDescription =
    "<info>\n"
    "  <opacity type=\"number\">1</opacity>\n"
    "  <layout type=\"number\">1</layout>\n"
    "  <properties>\n"
    "    <basic><left type=\"text\">1%</left><top type=\"text\">2%</top>"
    "<width type=\"text\">3%</width><height type=\"text\">4%</height>"
    "</basic>\n"
    "    <extended><caption type=\"text\">version 1</caption>"
    "<pages><item><page type=\"number\">3</page></item></pages>"
    "</extended>\n"
    "  </properties>\n"
    "</info>\n";

// What is done to a workspace between two saves.
enum Step {
    MovePosition,          // a new "settings.dat"
    EditInPlaceSameTime,   // same size, new bytes, the modification time put back to the nanosecond
    ReplaceDescription,    // a new description written beside it and renamed over it
    RestoreDescription,    // the first description again, written atomically
    DeleteDescription,     // no description
    DescriptionIsFolder,   // a folder in its place
    DescriptionIsFifo,     // a FIFO in its place
    DescriptionIsLink,     // a link to a description outside the workspace
    DescriptionUnreadable, // no read permission (readable all the same for root)
    DescriptionMalformed,  // not well-formed
    DescriptionNotUtf8,    // bytes that are no UTF-8
    DescriptionNeedsTree,  // a shape that only the parsed tree converts
    NoPositionFile,        // neither "settings.dat" nor "defaultsettings.dat"
    EditPageInPlaceSameTime,
    ChangeBundlePage,
    WaitUntilSettled, // longer than the settling time, so that stamps taken next are trusted
};

void putBackModificationTime(const QString &path, const struct stat &before)
{
    const struct timespec times[2] = {before.st_atim, before.st_mtim};
    ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, AT_SYMLINK_NOFOLLOW);
}

// Rewrites the file in place (same inode) with bytes of the same size; the modification time
// comes back to what it was, as when both writes fall into one tick of the file system's clock.
void editInPlaceKeepingTime(const QString &path, const QByteArray &from, const QByteArray &to)
{
    struct stat before;
    if (::lstat(QFile::encodeName(path).constData(), &before) != 0)
        return;
    QByteArray bytes = readFile(path);
    if (bytes.contains(from))
        bytes.replace(from, to);
    else
        bytes.replace(to, from);
    QFile file(path);
    if (file.open(QIODevice::ReadWrite)) // no truncation: the inode stays
        file.write(bytes);
    file.close();
    putBackModificationTime(path, before);
}

void replaceWith(const QString &path, const std::function<void()> &make)
{
    FileOps::removeItem(path);
    make();
}

void applyStep(Step step, const QString &ws, const QString &bundle, const QString &outside,
               int round)
{
    const QString description = ws + "/img.xml";
    switch (step) {
    case MovePosition:
        writeFile(ws + "/settings.dat", QByteArray::number(10 + round) + ".0\n20.5\n30.0\n15.0\n" +
                                            QByteArray::number(round * 7) + ".0\n" +
                                            QByteArray::number(round % 3));
        break;
    case EditInPlaceSameTime:
        editInPlaceKeepingTime(description, "version 1", "version 2");
        break;
    case ReplaceDescription: {
        QByteArray other = kDescription;
        other.replace("version 1", "a longer caption, number " + QByteArray::number(round));
        FileOps::writeAtomically(description, other);
        break;
    }
    case RestoreDescription:
        FileOps::writeAtomically(description, kDescription);
        break;
    case DeleteDescription:
        FileOps::removeItem(description);
        break;
    case DescriptionIsFolder:
        replaceWith(description, [&] { QDir().mkpath(description); });
        break;
    case DescriptionIsFifo:
        replaceWith(description, [&] { SpecialEntries::makeFifo(description); });
        break;
    case DescriptionIsLink:
        replaceWith(description, [&] {
            SpecialEntries::make(SpecialEntries::LinkToFile, description, outside, kDescription);
        });
        break;
    case DescriptionUnreadable:
        QFile::setPermissions(description, QFileDevice::WriteOwner);
        break;
    case DescriptionMalformed:
        FileOps::writeAtomically(description, "<info><opacity type=\"number\">1</info>");
        break;
    case DescriptionNotUtf8:
        FileOps::writeAtomically(description, "<info><t type=\"text\">caf\xe9</t></info>");
        break;
    case DescriptionNeedsTree:
        FileOps::writeAtomically(
            description, "<!DOCTYPE info [<!ENTITY who \"you\">]>" + kDescription.mid(0, 6) +
                             "<t type=\"text\">hi &who;</t>" + kDescription.mid(6));
        break;
    case NoPositionFile:
        FileOps::removeItem(ws + "/settings.dat");
        FileOps::removeItem(ws + "/defaultsettings.dat");
        break;
    case EditPageInPlaceSameTime:
        editInPlaceKeepingTime(ws + "/index.html", "page 1", "page 2");
        break;
    case ChangeBundlePage:
        // Done once for both workspaces; see the caller.
        Q_UNUSED(bundle);
        break;
    case WaitUntilSettled:
        break;
    }
}

// The two preview files of a workspace, "<none>" for a missing one.
QByteArray previewState(const QString &ws)
{
    QByteArray state;
    for (const char *name : {"config.js", "index.html"}) {
        const QString path = ws + "/" + name;
        state += QByteArray(name) + ": " +
                 (FileOps::isRegularFile(path) ? readFile(path) : QByteArray("<none>")) + "\n";
    }
    return state;
}

void saveFresh(const QString &ws, const QString &bundle)
{
    SettingsWorkspace::refreshPreviewPage(ws, bundle);
    PluginSettingsInfo info;
    info.setWorkSpace(ws);
    info.setIdentifier(QStringLiteral("img"));
    info.setBundlePath(bundle);
    info.generateJSConfig(QString());
}

} // namespace

Q_DECLARE_METATYPE(QList<Step>)

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
    void keptPreviewFilesMatchFreshSaves_data();
    void keptPreviewFilesMatchFreshSaves();
    void savedPositionWritesWhatReadingItBackWrites_data();
    void savedPositionWritesWhatReadingItBackWrites();
    void keptDescriptionIsReadAgainUntilSettled();
    void keptPagesAreComparedAgainUntilSettled();
    void stampsOfASameSizeRewriteDiffer();
};

void TestSettingsWorkspace::keptPreviewFilesMatchFreshSaves_data()
{
    QTest::addColumn<QList<Step>>("steps");
    QTest::newRow("a moved position is written into the kept description")
        << QList<Step>{MovePosition, MovePosition, MovePosition};
    QTest::newRow("a same-size edit in the same tick is seen")
        << QList<Step>{EditInPlaceSameTime, MovePosition, EditInPlaceSameTime};
    QTest::newRow("a same-size edit with the time put back is seen once settled")
        << QList<Step>{WaitUntilSettled, MovePosition, EditInPlaceSameTime, MovePosition};
    QTest::newRow("a replaced description is read again")
        << QList<Step>{ReplaceDescription, MovePosition, RestoreDescription};
    QTest::newRow("a deleted description writes nothing, and its return is read")
        << QList<Step>{DeleteDescription, MovePosition, RestoreDescription, MovePosition};
    QTest::newRow("a folder, FIFO or link in its place writes nothing") << QList<Step>{
        DescriptionIsFolder, MovePosition,      RestoreDescription, DescriptionIsFifo,
        MovePosition,        DescriptionIsLink, MovePosition,       RestoreDescription};
    QTest::newRow("an unreadable description does what a fresh save does")
        << QList<Step>{DescriptionUnreadable, MovePosition, RestoreDescription};
    QTest::newRow("a malformed or non-UTF-8 description writes nothing") << QList<Step>{
        DescriptionMalformed, MovePosition, DescriptionNotUtf8, MovePosition, RestoreDescription};
    QTest::newRow("a description only the tree converts takes each position")
        << QList<Step>{DescriptionNeedsTree, MovePosition, MovePosition, RestoreDescription};
    QTest::newRow("no position file writes nothing") << QList<Step>{NoPositionFile, MovePosition};
    QTest::newRow("a same-size edit of the page in the same tick is overwritten") << QList<Step>{
        EditPageInPlaceSameTime, WaitUntilSettled, MovePosition, EditPageInPlaceSameTime};
    QTest::newRow("a changed bundle page is copied")
        << QList<Step>{WaitUntilSettled, MovePosition, ChangeBundlePage, MovePosition};
}

// A workspace saved through the kept preview files and one saved afresh every time go through
// the same steps; after every save their preview files are the same bytes.
void TestSettingsWorkspace::keptPreviewFilesMatchFreshSaves()
{
    QFETCH(QList<Step>, steps);
    QTemporaryDir tmp;
    const QString bundle = tmp.filePath("img.bundle");
    const QString bundlePage = bundle + "/Contents/Resources/html/index.html";
    writeFile(bundlePage, "<p>page 1</p>");
    const QString kept = tmp.filePath("kept");
    const QString fresh = tmp.filePath("fresh");
    for (const QString &ws : {kept, fresh}) {
        writeFile(ws + "/img.xml", kDescription);
        writeFile(ws + "/settings.dat", "10.0\n20.0\n30.0\n15.0\n0.0\n1");
        writeFile(ws + "/defaultsettings.dat", "1.0\n2.0\n3.0\n4.0\n5.0\n2");
        writeFile(ws + "/index.html", "<p>page 1</p>");
    }
    SettingsWorkspace::PreviewFiles files(kept, bundle);
    const auto save = [&] {
        files.refreshPage();
        files.writeScript();
        saveFresh(fresh, bundle);
    };
    save();
    QVERIFY(readFile(kept + "/config.js").startsWith("\xef\xbb\xbfvar config={\"opacity\":1.0"));
    QCOMPARE(previewState(kept), previewState(fresh));
    int round = 0;
    for (const Step step : steps) {
        ++round;
        if (step == WaitUntilSettled)
            QThread::msleep(2100);
        if (step == ChangeBundlePage)
            editInPlaceKeepingTime(bundlePage, "page 1", "page 3");
        applyStep(step, kept, bundle, tmp.filePath("outside-kept"), round);
        applyStep(step, fresh, bundle, tmp.filePath("outside-fresh"), round);
        save();
        const QByteArray keptState = previewState(kept);
        const QByteArray freshState = previewState(fresh);
        if (keptState != freshState)
            QFAIL(
                qPrintable(QStringLiteral("after step %1:\nkept  %2\nfresh %3")
                               .arg(round)
                               .arg(QString::fromUtf8(keptState), QString::fromUtf8(freshState))));
    }
}

void TestSettingsWorkspace::savedPositionWritesWhatReadingItBackWrites_data()
{
    QTest::addColumn<QList<float>>("values"); // left, top, right, bottom, transparency
    QTest::addColumn<int>("layer");
    QTest::newRow("whole tenths") << QList<float>{10, 26, 60, 26, 0} << 1;
    QTest::newRow("hundredths round as the file keeps them")
        << QList<float>{10.04f, 49.95f, 0.25f, 99.75f, 33.35f} << 2;
    QTest::newRow("negative margins and a transparency past 100")
        << QList<float>{-3.35f, -0.04f, 120, 0, 100.05f} << 0;
    QTest::newRow("huge values") << QList<float>{1e7f, 3e9f, 0, 0, 1e30f} << 3;
}

// A save hands the script the position it has just written instead of reading the file back;
// the script's bytes are the same either way.
void TestSettingsWorkspace::savedPositionWritesWhatReadingItBackWrites()
{
    QFETCH(QList<float>, values);
    QFETCH(int, layer);
    QTemporaryDir tmp;
    const QString bundle = tmp.filePath("img.bundle");
    PositionRect rect;
    rect.setLeft(values[0]);
    rect.setTop(values[1]);
    rect.setRight(values[2]);
    rect.setBottom(values[3]);
    rect.setTransparency(values[4]);
    rect.setLayer(layer);
    QByteArray scripts[2];
    for (int passed = 0; passed < 2; ++passed) {
        const QString ws = tmp.filePath(passed ? "passed" : "read");
        writeFile(ws + "/img.xml", kDescription);
        QVERIFY(rect.saveToFile(ws + "/settings.dat"));
        SettingsWorkspace::PreviewFiles files(ws, bundle);
        QVERIFY(passed ? files.writeScript(PositionFile::parse(QString::fromUtf8(rect.toText())))
                       : files.writeScript());
        scripts[passed] = readFile(ws + "/config.js");
    }
    QVERIFY(scripts[0].startsWith("\xef\xbb\xbfvar config={"));
    QCOMPARE(scripts[1], scripts[0]);

    // The position handed over is the one written: the file is not read when one is given.
    const QString ws = tmp.filePath("passed");
    writeFile(ws + "/settings.dat", "1.0\n2.0\n3.0\n4.0\n5.0\n2");
    SettingsWorkspace::PreviewFiles files(ws, bundle);
    QVERIFY(files.writeScript(PositionFile::parse(QString::fromUtf8(rect.toText()))));
    QCOMPARE(readFile(ws + "/config.js"), scripts[0]);
}

void TestSettingsWorkspace::keptDescriptionIsReadAgainUntilSettled()
{
    QTemporaryDir tmp;
    const QString ws = tmp.path();
    writeFile(ws + "/img.xml", kDescription);
    writeFile(ws + "/settings.dat", "10.0\n20.0\n30.0\n15.0\n0.0\n1");
    SettingsWorkspace::PreviewFiles files(ws, tmp.filePath("img.bundle"));
    QVERIFY(files.writeScript());
    QVERIFY(files.writeScript());
    // Written just now, the description could change again without its stamp showing it.
    QCOMPARE(files.descriptionReads(), 2);
    QCOMPARE(files.descriptionParses(), 1);
    QThread::msleep(2100);
    QVERIFY(files.writeScript());
    QCOMPARE(files.descriptionReads(), 3);
    QVERIFY(files.writeScript());
    QVERIFY(files.writeScript());
    QCOMPARE(files.descriptionReads(), 3);
    QCOMPARE(files.descriptionParses(), 1);
    FileOps::writeAtomically(ws + "/img.xml", kDescription + "<!-- changed -->");
    QVERIFY(files.writeScript());
    QCOMPARE(files.descriptionReads(), 4);
    QCOMPARE(files.descriptionParses(), 2);
}

void TestSettingsWorkspace::keptPagesAreComparedAgainUntilSettled()
{
    QTemporaryDir tmp;
    const QString bundle = tmp.filePath("img.bundle");
    const QString ws = tmp.filePath("ws");
    writeFile(bundle + "/Contents/Resources/html/index.html", "<p>page</p>");
    QDir().mkpath(ws);
    SettingsWorkspace::PreviewFiles files(ws, bundle);
    files.refreshPage(); // copies the page
    files.refreshPage();
    QCOMPARE(files.pageComparisons(), 2);
    QThread::msleep(2100);
    files.refreshPage();
    QCOMPARE(files.pageComparisons(), 3);
    files.refreshPage();
    files.refreshPage();
    QCOMPARE(files.pageComparisons(), 3);
    QCOMPARE(readFile(ws + "/index.html"), QByteArray("<p>page</p>"));
}

void TestSettingsWorkspace::stampsOfASameSizeRewriteDiffer()
{
    if (!Fs::supports(Fs::Capability::ChangeTimes))
        QSKIP("this file layer tells an entry's change time to the millisecond only");
    QTemporaryDir tmp;
    const QString path = tmp.filePath("file");
    writeFile(path, "version 1");
    const FileStamp before = FileStamp::of(path);
    QVERIFY(before.isRegularFile());
    QVERIFY(!before.settled());
    editInPlaceKeepingTime(path, "version 1", "version 2");
    QCOMPARE(readFile(path), QByteArray("version 2"));
    // Same inode, size and modification time: the time of the inode's change tells them apart.
    QVERIFY(FileStamp::of(path) != before);
    QVERIFY(FileStamp::of(tmp.filePath("none")).missing());
}

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
