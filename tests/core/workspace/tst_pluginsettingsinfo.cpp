// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "bundlepaths.h"
#include "fileops.h"
#include "localisation.h"
#include "pluginsettingsinfo.h"
#include "specialentries.h"
#include "testenv.h"
#include "xmlhelpers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

// Every path below folder, relative, sorted; folders end in "/".
QStringList tree(const QString &folder)
{
    QStringList out;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        const QString rel = QDir(folder).relativeFilePath(it.filePath());
        out << (it.fileInfo().isDir() ? rel + QLatin1Char('/') : rel);
    }
    out.sort();
    return out;
}

const QByteArray IndexHtml = "<html>preview</html>";
const QByteArray ImgXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<info>\n"
                          "    <opacity type=\"number\">1</opacity>\n"
                          "    <layout type=\"number\">1</layout>\n"
                          "    <properties>\n"
                          "        <basic>\n"
                          "            <left type=\"text\">10.0%</left>\n"
                          "        </basic>\n"
                          "        <extended>\n"
                          "            <src type=\"file\"> a b </src>\n"
                          "        </extended>\n"
                          "    </properties>\n"
                          "</info>\n";
const QByteArray Defaults = "10.0\n26.0\n60.0\n26.0\n0.0\n1";

} // namespace

class TestPluginSettingsInfo : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_root;
    int m_count = 0;

    QString freshDir(const QString &name)
    {
        const QString path = m_root.filePath(QStringLiteral("%1-%2").arg(name).arg(++m_count));
        QDir().mkpath(path);
        return path;
    }

    // A bundle laid out as the build makes it, with the given extra resources.
    QString makeBundle(const QMap<QString, QByteArray> &extra = {})
    {
        const QString bundle = freshDir(QStringLiteral("img.bundle"));
        const QString res = BundlePaths::resourcePath(bundle);
        QMap<QString, QByteArray> files{{QStringLiteral("html/index.html"), IndexHtml},
                                        {QStringLiteral("html/css/style.css"), "body{}"},
                                        {QStringLiteral("data/img.xml"), ImgXml},
                                        {QStringLiteral("data/defaultsettings.dat"), Defaults}};
        for (auto it = extra.begin(); it != extra.end(); ++it)
            files.insert(it.key(), it.value());
        for (auto it = files.begin(); it != files.end(); ++it) {
            if (!writeBytes(res + QLatin1Char('/') + it.key(), it.value()))
                qFatal("cannot write bundle file %s", qPrintable(it.key()));
        }
        return bundle;
    }

    PluginSettingsInfo infoFor(const QString &workspace, const QString &bundle)
    {
        PluginSettingsInfo info;
        info.setWorkSpace(workspace);
        info.setIdentifier(QStringLiteral("img"));
        info.setBundlePath(bundle);
        return info;
    }

    static QString dataBase()
    {
        return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    }

private slots:
    void initTestCase()
    {
        const QString isolated = TestEnv::isolate();
        QVERIFY(m_root.isValid());
        // Every save folder below must lie in the isolated test area, never the real home.
        QVERIFY(!dataBase().isEmpty());
        QVERIFY2(dataBase().startsWith(isolated) || dataBase().startsWith(QDir::homePath()),
                 qPrintable(dataBase()));
        QVERIFY(QDir::homePath().startsWith(isolated));
    }

    void cleanup() { setDefaultBundlePath(QString()); }

    // ---- save folder and product id

    void savePluginPath_data()
    {
        QTest::addColumn<bool>("hasFile");
        QTest::addColumn<QByteArray>("productId");
        QTest::addColumn<QString>("folderName");

        QTest::newRow("no product.id is quillamy") << false << QByteArray() << "quillamy";
        QTest::newRow("product.id read verbatim") << true << QByteArray("abc") << "abc";
        QTest::newRow("trailing line break stays in the folder name")
            << true << QByteArray("abc\n") << "abc\n";
        QTest::newRow("blanks are not trimmed") << true << QByteArray(" my app ") << " my app ";
        QTest::newRow("non-ASCII id") << true
                                      << QByteArray("Pr\xC3\xB6"
                                                    "dukt")
                                      << QString::fromUtf8("Pr\xC3\xB6"
                                                           "dukt");
        QTest::newRow("empty product.id is an empty id") << true << QByteArray() << "";
        QTest::newRow("product.id that is not UTF-8 is unreadable")
            << true << QByteArray("ab\xFF\xFE") << "(null)";
        QTest::newRow("a slash leading up and out is unreadable")
            << true << QByteArray("x/../../etc") << "(null)";
        QTest::newRow("a slash between names is unreadable")
            << true << QByteArray("a/b") << "(null)";
        QTest::newRow("a backslash is unreadable") << true << QByteArray("..\\x") << "(null)";
        QTest::newRow("a NUL is unreadable") << true << QByteArray("a\0b", 3) << "(null)";
        QTest::newRow("\"..\" alone is unreadable") << true << QByteArray("..") << "(null)";
        QTest::newRow("\".\" alone is unreadable") << true << QByteArray(".") << "(null)";
        QTest::newRow("dots with more are a name of their own")
            << true << QByteArray("...") << "...";
        QTest::newRow("\"..\" with a line break is a name of its own")
            << true << QByteArray("..\n") << "..\n";
    }

    void savePluginPath()
    {
        QFETCH(bool, hasFile);
        QFETCH(QByteArray, productId);
        QFETCH(QString, folderName);
        const QString bundle = makeBundle();
        if (hasFile)
            QVERIFY(writeBytes(BundlePaths::resourcePath(bundle) + "/product.id", productId));
        setDefaultBundlePath(bundle);
        QCOMPARE(PluginSettingsInfo::getSavePluginPath(),
                 dataBase() + "/Kelvara/" + folderName + "_resource/Plugin/Save");
    }

    void productIdFolderCountsAsNoFile()
    {
        // Only a regular file is read; a folder in its place is no product id at all.
        const QString bundle = makeBundle();
        QVERIFY(QDir().mkpath(BundlePaths::resourcePath(bundle) + "/product.id"));
        setDefaultBundlePath(bundle);
        QCOMPARE(PluginSettingsInfo::getSavePluginPath(),
                 dataBase() + "/Kelvara/quillamy_resource/Plugin/Save");
    }

    void specialProductId_data()
    {
        using namespace SpecialEntries;
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("folderName");
        QTest::newRow("a FIFO counts as no file, without waiting for a writer")
            << Fifo << "quillamy";
        QTest::newRow("a packager's link to a regular file is followed") << LinkToFile << "linked";
        QTest::newRow("a link to a FIFO counts as no file") << LinkToFifo << "quillamy";
        QTest::newRow("a dangling link counts as no file") << DanglingLink << "quillamy";
    }

    void specialProductId()
    {
        QFETCH(SpecialEntries::Kind, kind);
        QFETCH(QString, folderName);
        const QString bundle = makeBundle();
        QVERIFY(SpecialEntries::make(kind, BundlePaths::resourcePath(bundle) + "/product.id",
                                     freshDir(QStringLiteral("elsewhere")), "linked"));
        setDefaultBundlePath(bundle);
        QCOMPARE(PluginSettingsInfo::getSavePluginPath(),
                 dataBase() + "/Kelvara/" + folderName + "_resource/Plugin/Save");
    }

    void missingBundleFallsBackToMainBundle()
    {
        // Nothing at the bundle path: the running program's own resources are asked, and they
        // hold no product.id.
        setDefaultBundlePath(m_root.filePath(QStringLiteral("no such bundle")));
        QVERIFY(!QFile::exists(BundlePaths::resourcePath(BundlePaths::mainBundlePath()) +
                               "/product.id"));
        QCOMPARE(PluginSettingsInfo::getSavePluginPath(),
                 dataBase() + "/Kelvara/quillamy_resource/Plugin/Save");
        setDefaultBundlePath(QString());
        QCOMPARE(PluginSettingsInfo::getSavePluginPath(),
                 dataBase() + "/Kelvara/quillamy_resource/Plugin/Save");
    }

    void resourceDirChoice()
    {
        const QString bundle = makeBundle();
        QCOMPARE(BundlePaths::resourceDirFor(bundle), bundle + "/Contents/Resources");
        const QString missing = m_root.filePath(QStringLiteral("gone.bundle"));
        QCOMPARE(BundlePaths::resourceDirFor(missing),
                 BundlePaths::mainBundlePath() + "/Contents/Resources");
        QCOMPARE(BundlePaths::mainBundlePath(), QCoreApplication::applicationDirPath());
    }

    // ---- copyFromPath

    void copyHiddenRule_data()
    {
        QTest::addColumn<bool>("withHidden");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("hidden top level skipped with all it holds, nested hidden copied")
            << false << QStringList{"css/", "css/.hidden", "css/a b.css", "index.html"};
        QTest::newRow("with hidden files everything is copied")
            << true << QStringList{".DS_Store",   ".svn/",       ".svn/entries", "css/",
                                   "css/.hidden", "css/a b.css", "index.html"};
    }

    void copyHiddenRule()
    {
        QFETCH(bool, withHidden);
        QFETCH(QStringList, expected);
        const QString from = freshDir(QStringLiteral("from"));
        const QString to = freshDir(QStringLiteral("to"));
        for (const char *rel :
             {"index.html", "css/.hidden", "css/a b.css", ".svn/entries", ".DS_Store"})
            QVERIFY(writeBytes(from + "/" + rel, rel));
        PluginSettingsInfo::copyFromPath(from, to, withHidden);
        QCOMPARE(tree(to), expected);
        QCOMPARE(readBytes(to + "/css/.hidden"), QByteArray("css/.hidden"));
    }

    void copyKeepsExistingTargets()
    {
        const QString from = freshDir(QStringLiteral("from"));
        const QString to = freshDir(QStringLiteral("to"));
        QVERIFY(writeBytes(from + "/index.html", "new"));
        QVERIFY(writeBytes(from + "/sub/file.txt", "new sub"));
        QVERIFY(writeBytes(to + "/index.html", "user's"));
        PluginSettingsInfo::copyFromPath(from, to, false);
        QCOMPARE(readBytes(to + "/index.html"), QByteArray("user's"));
        QCOMPARE(readBytes(to + "/sub/file.txt"), QByteArray("new sub"));
    }

    void copyWithFileInTheWayOfAFolder()
    {
        const QString from = freshDir(QStringLiteral("from"));
        const QString to = freshDir(QStringLiteral("to"));
        QVERIFY(writeBytes(from + "/css/style.css", "css"));
        QVERIFY(writeBytes(from + "/other.txt", "other"));
        QVERIFY(writeBytes(to + "/css", "a file"));
        PluginSettingsInfo::copyFromPath(from, to, false);
        QCOMPARE(readBytes(to + "/css"), QByteArray("a file"));
        QCOMPARE(readBytes(to + "/other.txt"), QByteArray("other"));
    }

    void copyFromMissingSourceCopiesNothing()
    {
        const QString to = freshDir(QStringLiteral("to"));
        PluginSettingsInfo::copyFromPath(m_root.filePath(QStringLiteral("missing")), to, true);
        QVERIFY(tree(to).isEmpty());
    }

    void copyOddNames()
    {
        const QString from = freshDir(QStringLiteral("from"));
        const QString to = freshDir(QStringLiteral("to"));
        const QString longName = QString(200, QLatin1Char('n')) + ".png";
        const QStringList names{"with space.png",
                                QString::fromUtf8("\xC3\xA9t\xC3\xA9 \xE6\x97\xA5.png"), longName,
                                "sub dir/..two dots.txt"};
        for (const QString &name : names)
            QVERIFY(writeBytes(from + "/" + name, name.toUtf8()));
        PluginSettingsInfo::copyFromPath(from, to, false);
        for (const QString &name : names)
            QCOMPARE(readBytes(to + "/" + name), name.toUtf8());
    }

    void copySkipsWhatIsNoRegularFile()
    {
        using namespace SpecialEntries;
        const QString from = freshDir(QStringLiteral("from"));
        const QString to = freshDir(QStringLiteral("to"));
        const QString elsewhere = freshDir(QStringLiteral("elsewhere"));
        QVERIFY(writeBytes(from + "/index.html", "page"));
        QVERIFY(make(Fifo, from + "/fifo.html", elsewhere));
        QVERIFY(make(LinkToFifo, from + "/sub/fifo-link.js", elsewhere));
        QVERIFY(make(DanglingLink, from + "/dangling.css", elsewhere));
        QVERIFY(make(LinkToFile, from + "/linked.css", elsewhere, "linked"));
        PluginSettingsInfo::copyFromPath(from, to, false);
        QCOMPARE(tree(to), (QStringList{"index.html", "linked.css", "sub/"}));
        QCOMPARE(readBytes(to + "/linked.css"), QByteArray("linked"));
    }

    // ---- resetWorkspace

    void resetBuildsFromHtmlAndData()
    {
        const QString bundle = makeBundle({{"data/img.swf", "SWF"},
                                           {"html/css/.hidden", "h"},
                                           {"html/.svn/entries", "svn"},
                                           {"data/.git/config", "git"}});
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, bundle);
        QVERIFY(info.resetWorkspace());
        QCOMPARE(tree(ws),
                 (QStringList{"book.swf", "css/", "css/.hidden", "css/style.css",
                              "defaultsettings.dat", "img.swf", "img.xml", "index.html"}));
        QCOMPARE(readBytes(ws + "/book.swf"), QByteArray("SWF"));
        QCOMPARE(readBytes(ws + "/img.xml"), ImgXml);
        QCOMPARE(readBytes(ws + "/defaultsettings.dat"), Defaults);
    }

    // A FIFO among the bundle's files would stall the copy; it is left out, the rest is copied.
    void bundleFifoIsSkipped_data()
    {
        QTest::addColumn<QString>("rel");
        QTest::newRow("html/index.html") << "html/index.html";
        QTest::newRow("data/img.xml") << "data/img.xml";
        QTest::newRow("data/defaultsettings.dat") << "data/defaultsettings.dat";
        QTest::newRow("data/img.swf, which would become book.swf") << "data/img.swf";
    }

    void bundleFifoIsSkipped()
    {
        QFETCH(QString, rel);
        const QString bundle = makeBundle();
        const QString source = BundlePaths::resourcePath(bundle) + "/" + rel;
        QFile::remove(source);
        QVERIFY(SpecialEntries::makeFifo(source));
        const QString name = QFileInfo(rel).fileName();
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        QVERIFY(infoFor(ws, bundle).resetWorkspace());
        QVERIFY(!FileOps::exists(ws + "/" + name));
        QVERIFY(!FileOps::exists(ws + "/book.swf"));
        QVERIFY(QFileInfo(ws + "/css/style.css").isFile());
        // The top-up of an existing workspace skips it the same way.
        QVERIFY(infoFor(ws, bundle).loadWorkspace());
        QVERIFY(!FileOps::exists(ws + "/" + name));
        QVERIFY(QFileInfo(ws + "/css/style.css").isFile());
    }

    void bundleLinksToRegularFilesAreCopied()
    {
        const QString bundle = makeBundle();
        const QString res = BundlePaths::resourcePath(bundle);
        QFile::remove(res + "/data/img.xml");
        QVERIFY(SpecialEntries::make(SpecialEntries::LinkToFile, res + "/data/img.xml",
                                     freshDir(QStringLiteral("packaged")), ImgXml));
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        QVERIFY(infoFor(ws, bundle).resetWorkspace());
        QVERIFY(!QFileInfo(ws + "/img.xml").isSymLink());
        QCOMPARE(readBytes(ws + "/img.xml"), ImgXml);
    }

    void resetWithoutSwfMakesNoBookSwf()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.resetWorkspace());
        QVERIFY(!QFile::exists(ws + "/book.swf"));
        QVERIFY(QFile::exists(ws + "/index.html"));
    }

    void resetStartsAfresh()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(writeBytes(ws + "/settings.dat", "1\n2\n3\n4\n5\n6"));
        QVERIFY(writeBytes(ws + "/index.html", "changed"));
        QVERIFY(info.resetWorkspace());
        QVERIFY(!QFile::exists(ws + "/settings.dat"));
        QCOMPARE(readBytes(ws + "/index.html"), IndexHtml);
    }

    void resetKeepsTheHtmlCopyOfAFileInBoth()
    {
        // "data" is copied second, and a copy never replaces an existing file.
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(
            ws, makeBundle({{"html/shared.txt", "from html"}, {"data/shared.txt", "from data"}}));
        QVERIFY(info.resetWorkspace());
        QCOMPARE(readBytes(ws + "/shared.txt"), QByteArray("from html"));
    }

    void resetDefaultsIdentifier()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle({{"data/img.swf", "SWF"}}));
        info.setIdentifier(QString());
        QVERIFY(info.resetWorkspace());
        QCOMPARE(info.identifier(), QStringLiteral("img"));
        QCOMPARE(readBytes(ws + "/book.swf"), QByteArray("SWF"));
    }

    void resetWithMissingBundleMakesAnEmptyWorkspace()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, m_root.filePath(QStringLiteral("no bundle")));
        QVERIFY(info.resetWorkspace());
        QVERIFY(QFileInfo(ws).isDir());
        QVERIFY(tree(ws).isEmpty());
    }

    void resetReplacesAFileAtTheWorkspacePath()
    {
        // Reset starts the workspace afresh whatever is in the way; loading never gets here for
        // a file, as it only resets a workspace that does not exist.
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        QVERIFY(writeBytes(ws, "in the way"));
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.resetWorkspace());
        QVERIFY(QFileInfo(ws).isDir());
        QCOMPARE(readBytes(ws + "/index.html"), IndexHtml);
    }

    void resetNeverWipesTheHomeFolder()
    {
        // The isolated test home stands in for the user's.
        const QString home = QDir::homePath();
        QVERIFY(writeBytes(home + "/precious.txt", "keep"));
        for (const QString &ws : {home, home + "/", QFileInfo(home).absolutePath()}) {
            PluginSettingsInfo info = infoFor(ws, makeBundle());
            QVERIFY(info.resetWorkspace());
            QCOMPARE(readBytes(home + "/precious.txt"), QByteArray("keep"));
        }
        QVERIFY(!QFile::exists(home + "/index.html"));
    }

    void resetWithoutWorkspaceDoesNothing()
    {
        // An unset workspace must not turn the bundle's relative paths into absolute ones.
        QVERIFY(!QFile::exists(QStringLiteral("/index.html")));
        PluginSettingsInfo info = infoFor(QString(), makeBundle());
        QVERIFY(info.resetWorkspace());
        QVERIFY(!QFile::exists(QStringLiteral("/index.html")));
        QVERIFY(!QFile::exists(QStringLiteral("/defaultsettings.dat")));
    }

    // ---- loadWorkspace

    void firstLoadBuildsTheWorkspace()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/deep/er/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle({{"data/img.swf", "SWF"}}));
        QVERIFY(!QFile::exists(ws));
        QVERIFY(info.loadWorkspace());
        QCOMPARE(tree(ws), (QStringList{"book.swf", "css/", "css/style.css", "defaultsettings.dat",
                                        "img.swf", "img.xml", "index.html"}));
    }

    void loadTopsUpWithoutReplacing()
    {
        const QString bundle = makeBundle({{"data/img.swf", "SWF"}});
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, bundle);
        QVERIFY(info.loadWorkspace());

        QVERIFY(QFile::remove(ws + "/defaultsettings.dat"));
        QVERIFY(QDir(ws + "/css").removeRecursively());
        QVERIFY(QFile::remove(ws + "/book.swf"));
        QVERIFY(writeBytes(ws + "/img.xml", "<info>changed</info>"));
        QVERIFY(writeBytes(ws + "/settings.dat", "mine"));
        QVERIFY(writeBytes(BundlePaths::resourcePath(bundle) + "/html/new.js", "new"));

        QVERIFY(infoFor(ws, bundle).loadWorkspace());
        QCOMPARE(readBytes(ws + "/defaultsettings.dat"), Defaults); // deleted: back
        QCOMPARE(readBytes(ws + "/css/style.css"), QByteArray("body{}"));
        QCOMPARE(readBytes(ws + "/img.xml"), QByteArray("<info>changed</info>")); // changed: kept
        QCOMPARE(readBytes(ws + "/settings.dat"), QByteArray("mine"));
        QCOMPARE(readBytes(ws + "/new.js"), QByteArray("new")); // new in bundle
        QVERIFY(!QFile::exists(ws + "/book.swf"));              // not on top-up
    }

    void loadTopUpIncludesHiddenFiles()
    {
        const QString bundle = makeBundle({{"html/.svn/entries", "svn"}});
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        QVERIFY(infoFor(ws, bundle).loadWorkspace()); // first run: reset, hidden skipped
        QVERIFY(!QFile::exists(ws + "/.svn"));
        QVERIFY(infoFor(ws, bundle).loadWorkspace()); // top-up: no hidden-file test
        QCOMPARE(readBytes(ws + "/.svn/entries"), QByteArray("svn"));
    }

    void loadWithoutWorkspaceUsesSaveFolder()
    {
        const QString bundle = makeBundle({{"product.id", "loadtest"}});
        setDefaultBundlePath(bundle);
        PluginSettingsInfo info;
        info.setBundlePath(bundle);
        info.setIdentifier(QStringLiteral("other"));
        QVERIFY(info.loadWorkspace());
        const QString expected = dataBase() + "/Kelvara/loadtest_resource/Plugin/Save/img";
        QCOMPARE(info.workSpace(), expected);
        QVERIFY(QFile::exists(expected + "/index.html"));
    }

    void loadOnAFileLeavesItAlone()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        QVERIFY(writeBytes(ws, "a file where the workspace should be"));
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.loadWorkspace());
        QCOMPARE(readBytes(ws), QByteArray("a file where the workspace should be"));
        QVERIFY(info.getXMLFromWorkspace().isNull());
    }

    void loadWithMissingBundleKeepsTheWorkspace()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        QVERIFY(infoFor(ws, makeBundle()).loadWorkspace());
        const QStringList before = tree(ws);
        QVERIFY(infoFor(ws, m_root.filePath(QStringLiteral("vanished"))).loadWorkspace());
        QCOMPARE(tree(ws), before);
    }

    // ---- getXMLFromWorkspace

    void xmlWithEmptyIdentifierReadsImgXml()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.loadWorkspace());
        info.setIdentifier(QString());
        const QDomElement root = info.getXMLFromWorkspace();
        QCOMPARE(info.identifier(), QStringLiteral("img"));
        QVERIFY(!root.isNull());
        QCOMPARE(root.tagName(), QStringLiteral("info"));
    }

    void xmlHasNoWhitespaceOnlyTextNodes()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.loadWorkspace());
        const QDomElement root = info.getXMLFromWorkspace();
        QCOMPARE(root.childNodes().count(), 3);
        for (int i = 0; i < root.childNodes().count(); ++i)
            QVERIFY(root.childNodes().at(i).isElement());
        const QDomElement props = root.lastChildElement(QStringLiteral("properties"));
        QCOMPARE(props.childNodes().count(), 2);
        const QDomElement src = props.lastChildElement(QStringLiteral("extended"))
                                    .firstChildElement(QStringLiteral("src"));
        QCOMPARE(src.text(), QStringLiteral(" a b ")); // text with content keeps its blanks
        QCOMPARE(src.attribute(QStringLiteral("type")), QStringLiteral("file"));
    }

    void xmlRootStaysEditable()
    {
        // Callers add elements and text to the root (the private setting, the position), which
        // needs the root's document alive after the call.
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.loadWorkspace());
        QDomElement root = info.getXMLFromWorkspace();
        QDomDocument document = root.ownerDocument();
        QVERIFY(!document.isNull());
        QDomElement added = document.createElement(QStringLiteral("added"));
        added.appendChild(document.createTextNode(QStringLiteral("kept")));
        root.appendChild(added);
        QCOMPARE(root.lastChildElement(QStringLiteral("added")).text(), QStringLiteral("kept"));
    }

    void xmlNamedByIdentifier()
    {
        const QString ws = freshDir(QStringLiteral("ws"));
        QVERIFY(writeBytes(ws + "/other.xml", "<info><x type=\"text\">1</x></info>"));
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        info.setIdentifier(QStringLiteral("other"));
        QCOMPARE(info.getXMLFromWorkspace().firstChildElement().text(), QStringLiteral("1"));
    }

    void xmlFailures_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("broken XML") << QByteArray("<info><opacity>1</info>");
        QTest::newRow("not UTF-8") << QByteArray("<info>\xFF\xFE</info>");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("binary") << QByteArray("\x00\x01\x02\x03", 4);
        QTest::newRow("text, not XML") << QByteArray("just words");
    }

    void xmlFailures()
    {
        QFETCH(QByteArray, bytes);
        const QString ws = freshDir(QStringLiteral("ws"));
        QVERIFY(writeBytes(ws + "/img.xml", bytes));
        PluginSettingsInfo info = infoFor(ws, QString());
        QVERIFY(info.getXMLFromWorkspace().isNull());
    }

    void xmlThatIsNoRegularFile_data()
    {
        using namespace SpecialEntries;
        QTest::addColumn<Kind>("kind");
        QTest::newRow("a FIFO reads as missing, without waiting for a writer") << Fifo;
        QTest::newRow("a link to a well-formed file outside is data: missing") << LinkToFile;
        QTest::newRow("a link to a FIFO reads as missing") << LinkToFifo;
        QTest::newRow("a folder reads as missing") << Folder;
        QTest::newRow("a socket reads as missing") << Socket;
    }

    void xmlThatIsNoRegularFile()
    {
        QFETCH(SpecialEntries::Kind, kind);
        const QString ws = freshDir(QStringLiteral("ws"));
        QVERIFY(SpecialEntries::make(kind, ws + "/img.xml", freshDir(QStringLiteral("outside")),
                                     ImgXml));
        PluginSettingsInfo info = infoFor(ws, QString());
        QVERIFY(info.getXMLFromWorkspace().isNull());
    }

    void xmlDepth_data()
    {
        QTest::addColumn<int>("levels");
        QTest::addColumn<bool>("reads");
        QTest::newRow("nested exactly to the limit reads") << MaxDescriptionDepth << true;
        QTest::newRow("one level deeper is damaged") << MaxDescriptionDepth + 1 << false;
        QTest::newRow("200,000 levels are damaged") << 200000 << false;
    }

    void xmlDepth()
    {
        QFETCH(int, levels);
        QFETCH(bool, reads);
        const QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" +
                               QByteArray("<d>").repeated(levels) +
                               QByteArray("</d>").repeated(levels);
        const QString ws = freshDir(QStringLiteral("ws"));
        QVERIFY(writeBytes(ws + "/img.xml", xml));
        PluginSettingsInfo info = infoFor(ws, QString());
        QCOMPARE(!info.getXMLFromWorkspace().isNull(), reads);
    }

    void xmlMissing()
    {
        PluginSettingsInfo info = infoFor(freshDir(QStringLiteral("ws")), QString());
        QVERIFY(info.getXMLFromWorkspace().isNull());
        PluginSettingsInfo none;
        QVERIFY(none.getXMLFromWorkspace().isNull());
        QCOMPARE(none.identifier(), QStringLiteral("img"));
    }

    // ---- convertPluginToPath

    void convertReplacesTargetEntirely()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.loadWorkspace());
        QVERIFY(writeBytes(ws + "/.hidden/secret", "s"));
        const QString target = freshDir(QStringLiteral("target"));
        QVERIFY(writeBytes(target + "/stale.txt", "old"));
        QVERIFY(writeBytes(target + "/index.html", "old index"));
        QVERIFY(info.convertPluginToPath(target));
        QCOMPARE(tree(target), (QStringList{"css/", "css/style.css", "defaultsettings.dat",
                                            "img.xml", "index.html"}));
        QCOMPARE(readBytes(target + "/index.html"), IndexHtml);
    }

    void convertOntoAFileReplacesIt()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.loadWorkspace());
        const QString target = freshDir(QStringLiteral("target")) + "/out";
        QVERIFY(writeBytes(target, "file"));
        QVERIFY(info.convertPluginToPath(target));
        QVERIFY(QFileInfo(target).isDir());
        QCOMPARE(readBytes(target + "/img.xml"), ImgXml);
    }

    void convertOntoTheWorkspaceOrAFolderAboveItIsRefused()
    {
        const QString parent = freshDir(QStringLiteral("ws"));
        const QString ws = parent + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.loadWorkspace());
        const QStringList before = tree(ws);
        QVERIFY(!info.convertPluginToPath(ws));
        QVERIFY(!info.convertPluginToPath(ws + "/"));
        QVERIFY(!info.convertPluginToPath(parent));
        QVERIFY(!info.convertPluginToPath(ws + "/css/.."));
        QCOMPARE(tree(ws), before);
    }

    void convertSkipsAFifoInTheWorkspace()
    {
        const QString ws = freshDir(QStringLiteral("ws")) + "/img";
        PluginSettingsInfo info = infoFor(ws, makeBundle());
        QVERIFY(info.loadWorkspace());
        QVERIFY(SpecialEntries::makeFifo(ws + "/pipe.png"));
        const QString target = freshDir(QStringLiteral("target"));
        QVERIFY(info.convertPluginToPath(target));
        QCOMPARE(tree(target), (QStringList{"css/", "css/style.css", "defaultsettings.dat",
                                            "img.xml", "index.html"}));
    }

    void convertWithoutWorkspaceFails()
    {
        const QString target = freshDir(QStringLiteral("target"));
        QVERIFY(writeBytes(target + "/keep.txt", "keep"));
        PluginSettingsInfo info =
            infoFor(m_root.filePath(QStringLiteral("no workspace")), QString());
        QVERIFY(!info.convertPluginToPath(target));
        QCOMPARE(readBytes(target + "/keep.txt"), QByteArray("keep"));
    }
};

QTEST_GUILESS_MAIN(TestPluginSettingsInfo)
#include "tst_pluginsettingsinfo.moc"
