// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "filesystem.h"
#include "specialentries.h"
#include "testenv.h"
#include "treecopy.h"

#include <QTemporaryDir>
#include <QtTest>

// The file layer's promises, asked of whichever layer is built; what a layer cannot do is
// skipped with the capability it lacks.
class TestFileSystem : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }
    void entryTellsTheKind_data();
    void entryTellsTheKind();
    void linksAreFollowedOnlyWhenAsked();
    void missingEntryIsAMissingFailure();
    void writeNewFileNeverReplaces_data();
    void writeNewFileNeverReplaces();
    void writeNewFileSetsTheGivenPermissions();
    void overwriteFileNeverWritesThroughALink();
    void renameNoReplaceRefusesATakenName_data();
    void renameNoReplaceRefusesATakenName();
    void exchangeSwapsTwoEntries();
    void copyEntryKeepsBytesModeAndTime();
    void copyEntryCopiesALinkAsALink();
    void copyOfASpecialFileIsRefusedOrMade();
    void openForReadingRefusesAllButRegularFiles_data();
    void openForReadingRefusesAllButRegularFiles();
    void treeCopyIsExactAndRemovalComplete();
    void namesThatAreNotUtf8SurviveTheRoundTrip();

private:
    static Fs::NativePath at(const QTemporaryDir &dir, const char *name)
    {
        return Fs::encode(dir.filePath(QString::fromUtf8(name)));
    }
    static bool write(const QString &path, const QByteArray &data)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(data) == data.size();
    }
};

void TestFileSystem::entryTellsTheKind_data()
{
    QTest::addColumn<int>("special");
    QTest::addColumn<int>("kind");
    QTest::newRow("a folder is a folder") << int(SpecialEntries::Folder) << int(Fs::Kind::Folder);
    QTest::newRow("a link to a file is a link")
        << int(SpecialEntries::LinkToFile) << int(Fs::Kind::Link);
    QTest::newRow("a dangling link is a link")
        << int(SpecialEntries::DanglingLink) << int(Fs::Kind::Link);
    QTest::newRow("a FIFO is a FIFO") << int(SpecialEntries::Fifo) << int(Fs::Kind::Fifo);
    QTest::newRow("a socket is a socket") << int(SpecialEntries::Socket) << int(Fs::Kind::Socket);
}

void TestFileSystem::entryTellsTheKind()
{
    QFETCH(int, special);
    QFETCH(int, kind);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("entry"));
    QVERIFY(SpecialEntries::make(SpecialEntries::Kind(special), path,
                                 dir.filePath(QStringLiteral("elsewhere"))));
    Fs::Entry entry;
    QVERIFY(Fs::entryAt(Fs::encode(path), &entry));
    QCOMPARE(int(entry.kind), kind);
}

void TestFileSystem::linksAreFollowedOnlyWhenAsked()
{
    QTemporaryDir dir;
    QVERIFY(write(dir.filePath(QStringLiteral("file")), "12345"));
    QVERIFY(QFile::link(QStringLiteral("file"), dir.filePath(QStringLiteral("link"))));
    Fs::Entry itself;
    Fs::Entry target;
    QVERIFY(Fs::entryAt(at(dir, "link"), &itself));
    QVERIFY(Fs::entryAt(at(dir, "link"), &target, Fs::Links::Follow));
    QVERIFY(itself.isLink());
    QCOMPARE(itself.size, qint64(4)); // the target text "file"
    QVERIFY(target.isFile());
    QCOMPARE(target.size, qint64(5));
}

void TestFileSystem::missingEntryIsAMissingFailure()
{
    QTemporaryDir dir;
    Fs::Entry entry;
    QVERIFY(!Fs::entryAt(at(dir, "nothing"), &entry));
    QCOMPARE(Fs::lastFailure(), Fs::Failure::Missing);
    QList<QByteArray> names;
    QVERIFY(!Fs::listFolder(at(dir, "nothing"), &names));
    QCOMPARE(Fs::lastFailure(), Fs::Failure::Missing);
    QVERIFY(!Fs::lastFailureText().isEmpty());
}

void TestFileSystem::writeNewFileNeverReplaces_data()
{
    QTest::addColumn<int>("special");
    QTest::newRow("a file stays") << -1;
    QTest::newRow("a link to a file stays, its target unwritten")
        << int(SpecialEntries::LinkToFile);
    QTest::newRow("a dangling link stays, nothing made at its target")
        << int(SpecialEntries::DanglingLink);
    QTest::newRow("a folder stays") << int(SpecialEntries::Folder);
}

void TestFileSystem::writeNewFileNeverReplaces()
{
    QFETCH(int, special);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("taken"));
    if (special < 0)
        QVERIFY(write(path, "old"));
    else
        QVERIFY(SpecialEntries::make(SpecialEntries::Kind(special), path,
                                     dir.filePath(QStringLiteral("elsewhere")), "old"));
    Fs::Entry before;
    QVERIFY(Fs::entryAt(Fs::encode(path), &before));
    const QStringList listed =
        QDir(dir.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);

    QVERIFY(!Fs::writeNewFile(Fs::encode(path), "new", 0600, false));
    QCOMPARE(Fs::lastFailure(), Fs::Failure::Exists);
    Fs::Entry after;
    QVERIFY(Fs::entryAt(Fs::encode(path), &after));
    QCOMPARE(int(after.kind), int(before.kind));
    QCOMPARE(after.size, before.size);
    QCOMPARE(QDir(dir.path())
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
             listed);
    if (special == int(SpecialEntries::LinkToFile)) {
        QFile target(QFileInfo(path).symLinkTarget());
        QVERIFY(target.open(QIODevice::ReadOnly));
        QCOMPARE(target.readAll(), QByteArray("old"));
    }
}

void TestFileSystem::writeNewFileSetsTheGivenPermissions()
{
    QTemporaryDir dir;
    QVERIFY(Fs::writeNewFile(at(dir, "private"), "data", 0640, true));
    Fs::Entry entry;
    QVERIFY(Fs::entryAt(at(dir, "private"), &entry));
    QCOMPARE(entry.permissions, std::uint32_t(0640));
    QCOMPARE(entry.size, qint64(4));
}

void TestFileSystem::overwriteFileNeverWritesThroughALink()
{
    QTemporaryDir dir;
    QVERIFY(write(dir.filePath(QStringLiteral("target")), "target"));
    QVERIFY(QFile::link(QStringLiteral("target"), dir.filePath(QStringLiteral("mark"))));
    QVERIFY(!Fs::overwriteFile(at(dir, "mark"), "written", false));
    QFile target(dir.filePath(QStringLiteral("target")));
    QVERIFY(target.open(QIODevice::ReadOnly));
    QCOMPARE(target.readAll(), QByteArray("target"));

    QVERIFY(Fs::overwriteFile(at(dir, "plain"), "one two", false));
    QVERIFY(Fs::overwriteFile(at(dir, "plain"), "three", true));
    QFile plain(dir.filePath(QStringLiteral("plain")));
    QVERIFY(plain.open(QIODevice::ReadOnly));
    QCOMPARE(plain.readAll(), QByteArray("three"));
}

void TestFileSystem::renameNoReplaceRefusesATakenName_data()
{
    QTest::addColumn<int>("special");
    QTest::newRow("onto a file") << -1;
    QTest::newRow("onto a dangling link") << int(SpecialEntries::DanglingLink);
    QTest::newRow("onto an empty folder") << int(SpecialEntries::Folder);
}

void TestFileSystem::renameNoReplaceRefusesATakenName()
{
    QFETCH(int, special);
    QTemporaryDir dir;
    QVERIFY(write(dir.filePath(QStringLiteral("from")), "from"));
    const QString taken = dir.filePath(QStringLiteral("to"));
    if (special < 0)
        QVERIFY(write(taken, "to"));
    else
        QVERIFY(SpecialEntries::make(SpecialEntries::Kind(special), taken,
                                     dir.filePath(QStringLiteral("elsewhere"))));
    QVERIFY(!Fs::renameNoReplace(at(dir, "from"), at(dir, "to")));
    QCOMPARE(Fs::lastFailure(), Fs::Failure::Exists);
    QVERIFY(QFileInfo::exists(dir.filePath(QStringLiteral("from"))));
    QVERIFY(Fs::renameNoReplace(at(dir, "from"), at(dir, "free")));
    QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("from"))));
}

void TestFileSystem::exchangeSwapsTwoEntries()
{
    QTemporaryDir dir;
    QVERIFY(write(dir.filePath(QStringLiteral("a")), "a"));
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("b")));
    if (!Fs::supports(Fs::Capability::AtomicExchange)) {
        QVERIFY(!Fs::exchange(at(dir, "a"), at(dir, "b")));
        QSKIP("this file layer cannot swap two entries in one step");
    }
    QVERIFY(Fs::exchange(at(dir, "a"), at(dir, "b")));
    QVERIFY(QFileInfo(dir.filePath(QStringLiteral("a"))).isDir());
    QVERIFY(QFileInfo(dir.filePath(QStringLiteral("b"))).isFile());
}

void TestFileSystem::copyEntryKeepsBytesModeAndTime()
{
    QTemporaryDir dir;
    const QByteArray data(300 * 1024, 'q');
    QVERIFY(write(dir.filePath(QStringLiteral("file")), data));
    QVERIFY(QFile::setPermissions(dir.filePath(QStringLiteral("file")),
                                  QFile::ReadOwner | QFile::ReadGroup));
    Fs::Entry source;
    QVERIFY(Fs::entryAt(at(dir, "file"), &source));
    source.modifiedNs = 1'500'000'000'123'456'789; // a time the copy can only get from us
    QVERIFY(Fs::applyMetadata(at(dir, "file"), source));
    QVERIFY(Fs::entryAt(at(dir, "file"), &source));

    QCOMPARE(Fs::copyEntry(at(dir, "file"), at(dir, "copy"), source), Fs::CopyResult::Done);
    Fs::Entry copy;
    QVERIFY(Fs::entryAt(at(dir, "copy"), &copy));
    QVERIFY(copy.isFile());
    QCOMPARE(copy.permissions, source.permissions);
    QCOMPARE(copy.modifiedNs, source.modifiedNs);
    QFile file(dir.filePath(QStringLiteral("copy")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), data);
    // The target must not exist: a second copy to it fails and leaves it as it is.
    QCOMPARE(Fs::copyEntry(at(dir, "file"), at(dir, "copy"), source), Fs::CopyResult::Failed);
    QCOMPARE(Fs::copyEntry(at(dir, "gone"), at(dir, "other"), source), Fs::CopyResult::Absent);
}

void TestFileSystem::copyEntryCopiesALinkAsALink()
{
    QTemporaryDir dir;
    QVERIFY(QFile::link(QStringLiteral("../elsewhere"), dir.filePath(QStringLiteral("link"))));
    Fs::Entry link;
    QVERIFY(Fs::entryAt(at(dir, "link"), &link));
    QCOMPARE(Fs::copyEntry(at(dir, "link"), at(dir, "copy"), link), Fs::CopyResult::Done);
    QCOMPARE(QFileInfo(dir.filePath(QStringLiteral("copy"))).symLinkTarget(),
             QFileInfo(dir.filePath(QStringLiteral("link"))).symLinkTarget());
}

void TestFileSystem::copyOfASpecialFileIsRefusedOrMade()
{
    QTemporaryDir dir;
    QVERIFY(SpecialEntries::make(SpecialEntries::Fifo, dir.filePath(QStringLiteral("fifo")),
                                 dir.filePath(QStringLiteral("elsewhere"))));
    Fs::Entry fifo;
    QVERIFY(Fs::entryAt(at(dir, "fifo"), &fifo));
    const Fs::CopyResult result = Fs::copyEntry(at(dir, "fifo"), at(dir, "copy"), fifo);
    Fs::Entry copy;
    if (Fs::supports(Fs::Capability::SpecialFiles)) {
        QCOMPARE(result, Fs::CopyResult::Done);
        QVERIFY(Fs::entryAt(at(dir, "copy"), &copy));
        QCOMPARE(int(copy.kind), int(Fs::Kind::Fifo));
    } else {
        QCOMPARE(result, Fs::CopyResult::NotCopyable);
        QVERIFY(!Fs::entryAt(at(dir, "copy"), &copy));
    }
}

void TestFileSystem::openForReadingRefusesAllButRegularFiles_data()
{
    QTest::addColumn<int>("special");
    QTest::addColumn<int>("links");
    QTest::addColumn<bool>("opens");
    const int noFollow = int(Fs::Links::NoFollow);
    const int follow = int(Fs::Links::Follow);
    QTest::newRow("a file opens") << -1 << noFollow << true;
    QTest::newRow("a FIFO is refused, never waited on")
        << int(SpecialEntries::Fifo) << follow << false;
    QTest::newRow("a folder is refused") << int(SpecialEntries::Folder) << follow << false;
    QTest::newRow("a link is refused when links are data")
        << int(SpecialEntries::LinkToFile) << noFollow << false;
    QTest::newRow("a link to a file opens when followed")
        << int(SpecialEntries::LinkToFile) << follow << true;
    QTest::newRow("a link to a FIFO is refused when followed")
        << int(SpecialEntries::LinkToFifo) << follow << false;
}

void TestFileSystem::openForReadingRefusesAllButRegularFiles()
{
    QFETCH(int, special);
    QFETCH(int, links);
    QFETCH(bool, opens);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("entry"));
    if (special < 0)
        QVERIFY(write(path, "content"));
    else
        QVERIFY(SpecialEntries::make(SpecialEntries::Kind(special), path,
                                     dir.filePath(QStringLiteral("elsewhere")), "content"));
    QFile file;
    QCOMPARE(Fs::openForReading(&file, Fs::encode(path), Fs::Links(links)), opens);
    QCOMPARE(file.isOpen(), opens);
    if (opens)
        QCOMPARE(file.readAll(), QByteArray("content"));
}

void TestFileSystem::treeCopyIsExactAndRemovalComplete()
{
    QTemporaryDir dir;
    const QString tree = dir.filePath(QStringLiteral("tree"));
    QVERIFY(QDir().mkpath(tree + QStringLiteral("/a/b")));
    QVERIFY(write(tree + QStringLiteral("/a/b/file"), "deep"));
    QVERIFY(write(tree + QStringLiteral("/.hidden"), "hidden"));
    QVERIFY(QFile::link(QStringLiteral("a/b/file"), tree + QStringLiteral("/link")));
    QVERIFY(QFile::setPermissions(tree + QStringLiteral("/a"), QFile::ReadOwner | QFile::ExeOwner));
    qint64 progress = 0;
    QCOMPARE(TreeCopy::copyTree(Fs::encode(tree), at(dir, "copy"),
                                [&progress](qint64 done) { progress = done; }),
             Fs::CopyResult::Done);
    QCOMPARE(progress, qint64(6)); // the root, a, a/b, a/b/file, .hidden, link
    Fs::Entry a;
    QVERIFY(Fs::entryAt(at(dir, "copy/a"), &a));
    QCOMPARE(a.permissions, std::uint32_t(0500));
    QCOMPARE(QFileInfo(dir.filePath(QStringLiteral("copy/link"))).symLinkTarget(),
             dir.filePath(QStringLiteral("copy/a/b/file")));
    // The read-only folder is opened up to be emptied; nothing is left.
    QVERIFY(TreeCopy::removeTree(at(dir, "copy")));
    QVERIFY(!TreeCopy::exists(at(dir, "copy")));
    QVERIFY(TreeCopy::removeTree(at(dir, "copy"))); // nothing there is nothing left
    QVERIFY(QFileInfo::exists(tree + QStringLiteral("/a/b/file")));
    QVERIFY(QFile::setPermissions(tree + QStringLiteral("/a"),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void TestFileSystem::namesThatAreNotUtf8SurviveTheRoundTrip()
{
    if (!Fs::supports(Fs::Capability::ByteNames))
        QSKIP("this file layer writes files through text names");
    QTemporaryDir dir;
    const Fs::NativePath name = "caf\xe9"; // Latin-1, not valid UTF-8
    QVERIFY(Fs::writeNewFile(Fs::encode(dir.path()) + '/' + name, "x", -1, false));
    QList<QByteArray> names;
    QVERIFY(Fs::listFolder(Fs::encode(dir.path()), &names));
    QCOMPARE(names, QList<QByteArray>{name});
    // The listed bytes name the entry again; text made of them would not.
    Fs::Entry entry;
    QVERIFY(Fs::entryAt(Fs::encode(dir.path()) + '/' + names.first(), &entry));
    QVERIFY(entry.isFile());
    // Qt's own removal goes by text and would leave it behind.
    QVERIFY(Fs::removeFile(Fs::encode(dir.path()) + '/' + names.first()));
}

QTEST_GUILESS_MAIN(TestFileSystem)
#include "tst_filesystem.moc"
