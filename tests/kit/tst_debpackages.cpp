// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The Debian packages as cpack builds them from this build: which files each holds, what each
// depends on, a stripped plugin, and programs that carry no run path and nothing of the build tree.

#include "kitprocess.h"
#include "testenv.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

class TestDebPackages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void eachPackageHasItsName();
    void runtimeHoldsTheBuiltBundleAndTheTool();
    void demoHoldsTheHostAlone();
    void devHoldsTheHeadersAndPackageFiles();
    void dependenciesAreComputed();
    void installedPluginIsStripped();
    void installedProgramsKeepOutOfTheBuildTree();
    void eachPackageCarriesItsLicenceChangelogAndManualPages_data();
    void eachPackageCarriesItsLicenceChangelogAndManualPages();
    void lintianFindsNoErrorsOrWarnings();

private:
    static QSet<QString> filesOf(const QString &deb);
    static QByteArray field(const QString &deb, const char *name);
    static QSet<QString> builtBundleFiles();
    static QSet<QString> debianDocs(const QString &package);
    static QString under(const QString &relative) { return prefix() + '/' + relative; }
    static QString prefix() { return QStringLiteral(IMG_INSTALL_PREFIX).mid(1); }
    QString extracted(const QString &relative) const { return m_root + '/' + relative; }

    QTemporaryDir m_tmp;
    QString m_runtime, m_demo, m_dev, m_root;
};

void TestDebPackages::initTestCase()
{
    TestEnv::isolate();
    QVERIFY(m_tmp.isValid());
    const QString out = m_tmp.filePath("packages");
    const KitProcess cpack =
        KitProcess::run(IMG_CPACK_COMMAND,
                        {"-G", "DEB", "--config", IMG_BINARY_DIR "/CPackConfig.cmake", "-B", out},
                        170000, m_tmp.path());
    QVERIFY2(cpack.ok(), cpack.report().constData());
    const QString version = QStringLiteral("_" IMG_PROJECT_VERSION "-" IMG_DEBIAN_REVISION "_");
    for (const QString &name : QDir(out).entryList({"*.deb"}, QDir::Files)) {
        const QString path = out + '/' + name;
        if (name.startsWith("imgplugin" + version))
            m_runtime = path;
        else if (name.startsWith("imgplugin-demo" + version))
            m_demo = path;
        else if (name.startsWith("imgplugin-dev" + version))
            m_dev = path;
    }
    QVERIFY2(!m_runtime.isEmpty() && !m_demo.isEmpty() && !m_dev.isEmpty(), cpack.out.constData());

    // One folder with all three unpacked, as a machine with the packages installed has them.
    m_root = m_tmp.filePath("root");
    for (const QString &deb : {m_runtime, m_demo, m_dev}) {
        const KitProcess x = KitProcess::run("dpkg-deb", {"-x", deb, m_root}, 60000);
        QVERIFY2(x.ok(), x.report().constData());
    }
}

// The regular files and links of a package, as paths relative to the root.
QSet<QString> TestDebPackages::filesOf(const QString &deb)
{
    QSet<QString> files;
    const KitProcess list = KitProcess::run("dpkg-deb", {"-c", deb}, 60000);
    for (const QByteArray &line : list.out.split('\n')) {
        const QStringList fields = QString::fromUtf8(line).split(' ', Qt::SkipEmptyParts);
        if (fields.size() >= 6 && !fields.first().startsWith('d'))
            files.insert(fields.at(5).mid(2)); // "./usr/..."
    }
    return files;
}

QByteArray TestDebPackages::field(const QString &deb, const char *name)
{
    return KitProcess::run("dpkg-deb", {"-f", deb, QString::fromLatin1(name)}, 30000).out.trimmed();
}

// What the build puts into the bundle, taken from the sources: the resource folders as they are,
// a strings table for every translation, the book's loader beside the preview page, the plugin.
QSet<QString> TestDebPackages::builtBundleFiles()
{
    const QString bundle = under(IMG_INSTALL_BUNDLE);
    const QString resources = bundle + "/Contents/Resources/";
    const QDir source(IMG_SOURCE_DIR "/resources");
    QSet<QString> files{bundle + "/" IMG_BUNDLE_BINARY_SUBDIR "/libimgplugin.so",
                        resources + "html/imgplugin.js"};
    QStringList folders{"html", "data"};
    folders += source.entryList({"*.lproj"}, QDir::Dirs);
    for (const QString &folder : folders) {
        QDirIterator it(source.filePath(folder), QDir::Files | QDir::Hidden,
                        QDirIterator::Subdirectories);
        while (it.hasNext())
            files.insert(resources + source.relativeFilePath(it.next()));
    }
    if (source.exists("product.id"))
        files.insert(resources + "product.id");
    for (const QString &ts : QDir(source.filePath("translations")).entryList({"*.ts"}))
        files.insert(resources + QFileInfo(ts).completeBaseName() + ".lproj/PluginLocale.qm");
    return files;
}

// What Debian's policy asks of every package: its licence and its changelog, compressed.
QSet<QString> TestDebPackages::debianDocs(const QString &package)
{
    return {under("share/doc/" + package + "/copyright"),
            under("share/doc/" + package + "/changelog.Debian.gz")};
}

void TestDebPackages::eachPackageHasItsName()
{
    QCOMPARE(field(m_runtime, "Package"), QByteArray("imgplugin"));
    QCOMPARE(field(m_demo, "Package"), QByteArray("imgplugin-demo"));
    QCOMPARE(field(m_dev, "Package"), QByteArray("imgplugin-dev"));
}

void TestDebPackages::runtimeHoldsTheBuiltBundleAndTheTool()
{
    const QSet<QString> files = filesOf(m_runtime);
    QSet<QString> bundle;
    for (const QString &file : files)
        if (file.startsWith(under(IMG_INSTALL_BUNDLE "/")))
            bundle.insert(file);
    const QSet<QString> expected = builtBundleFiles();
    QCOMPARE(bundle.size(), expected.size());
    QCOMPARE(bundle, expected);
    QVERIFY(files.contains(under("bin/imgbundle")));
    QVERIFY(!files.contains(under("bin/imghost")));
    QVERIFY(files.contains(under("share/man/man1/imgbundle.1.gz")));
    QVERIFY(files.contains(under("share/lintian/overrides/imgplugin")));
}

void TestDebPackages::demoHoldsTheHostAlone()
{
    const QSet<QString> expected =
        QSet<QString>{under("bin/imghost"), under("share/man/man1/imghost.1.gz")}
        + debianDocs("imgplugin-demo");
    QCOMPARE(filesOf(m_demo), expected);
}

void TestDebPackages::devHoldsTheHeadersAndPackageFiles()
{
    const QString cmake = under(IMG_INSTALL_LIBDIR "/cmake/ImgPlugin/");
    const QSet<QString> expected{under("include/imgplugin/imgpluginfactory.h"),
                                 under("include/imgplugin/imgsettingscontroller.h"),
                                 under("include/imgplugin/imgpluginversion.h"),
                                 cmake + "ImgPluginConfig.cmake",
                                 cmake + "ImgPluginConfigVersion.cmake",
                                 cmake + "ImgPluginTargets.cmake",
                                 under(IMG_INSTALL_LIBDIR "/pkgconfig/imgplugin.pc")};
    QCOMPARE(filesOf(m_dev), expected + debianDocs("imgplugin-dev"));
}

void TestDebPackages::dependenciesAreComputed()
{
    // The runtime's libraries come from dpkg-shlibdeps, with versions; the web engine's helper
    // process comes with the web engine library's dependencies.
    const QByteArray runtime = field(m_runtime, "Depends");
    for (const char *package : {"libc6 (>=", "libqt6core6", "libqt6webenginewidgets6", "libqt6xml6",
                                "libqt6webenginecore6-bin (>="})
        QVERIFY2(runtime.contains(package), runtime.constData());
    const QByteArray sameRuntime = "imgplugin (= " IMG_PROJECT_VERSION;
    const QByteArray demo = field(m_demo, "Depends");
    QVERIFY2(demo.contains(sameRuntime) && demo.contains("libqt6widgets6"), demo.constData());
    QVERIFY2(!demo.contains("libqt6webengine"), demo.constData()); // the host never links it
    const QByteArray dev = field(m_dev, "Depends");
    QVERIFY2(dev.contains(sameRuntime) && dev.contains("qt6-base-dev"), dev.constData());
}

void TestDebPackages::installedPluginIsStripped()
{
    const QString plugin =
        extracted(under(IMG_INSTALL_BUNDLE "/" IMG_BUNDLE_BINARY_SUBDIR "/libimgplugin.so"));
    const KitProcess sections = KitProcess::run("readelf", {"-S", "--wide", plugin}, 30000);
    QVERIFY2(sections.ok(), sections.report().constData());
    QVERIFY(sections.out.contains(".dynsym")); // it is the library, and a loadable one
    QVERIFY2(!sections.out.contains(".debug_"), sections.out.constData());
    QVERIFY2(!sections.out.contains(".symtab"), sections.out.constData());
}

void TestDebPackages::installedProgramsKeepOutOfTheBuildTree()
{
#ifdef QT_NO_DEBUG
    const QByteArray buildTree = IMG_BINARY_DIR "/";
#else
    // A debug build's assertions name the build tree's generated sources; what must not be
    // there is its bundle.
    const QByteArray buildTree = IMG_BUNDLE_DIR;
#endif
    for (const QString &relative :
         {under("bin/imghost"), under("bin/imgbundle"),
          under(IMG_INSTALL_BUNDLE "/" IMG_BUNDLE_BINARY_SUBDIR "/libimgplugin.so")}) {
        const QString path = extracted(relative);
        const KitProcess dynamic = KitProcess::run("readelf", {"-d", "--wide", path}, 30000);
        QVERIFY2(dynamic.ok(), dynamic.report().constData());
        QVERIFY2(!dynamic.out.contains("RPATH") && !dynamic.out.contains("RUNPATH"),
                 dynamic.out.constData());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY2(!file.readAll().contains(buildTree), qPrintable(relative));
    }
}

QTEST_GUILESS_MAIN(TestDebPackages)
void TestDebPackages::eachPackageCarriesItsLicenceChangelogAndManualPages_data()
{
    QTest::addColumn<QString>("deb");
    QTest::addColumn<QString>("package");
    QTest::addColumn<QString>("manualPage");
    QTest::newRow("imgplugin: licence, changelog, imgbundle(1)")
        << m_runtime << "imgplugin" << "share/man/man1/imgbundle.1.gz";
    QTest::newRow("imgplugin-demo: licence, changelog, imghost(1)")
        << m_demo << "imgplugin-demo" << "share/man/man1/imghost.1.gz";
    QTest::newRow("imgplugin-dev: licence and changelog") << m_dev << "imgplugin-dev" << QString();
}

void TestDebPackages::eachPackageCarriesItsLicenceChangelogAndManualPages()
{
    QFETCH(QString, deb);
    QFETCH(QString, package);
    QFETCH(QString, manualPage);
    const QSet<QString> files = filesOf(deb);
    for (const QString &doc : debianDocs(package))
        QVERIFY2(files.contains(doc), qPrintable(doc));

    // The licence in the machine-readable form, naming the project's licence.
    QFile copyright(extracted(under("share/doc/" + package + "/copyright")));
    QVERIFY(copyright.open(QIODevice::ReadOnly));
    const QByteArray text = copyright.readAll();
    QVERIFY(text.startsWith("Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\n"));
    QVERIFY(text.contains("\nLicense: BSD-3-Clause\n"));

    // The changelog's newest entry is this version with its revision.
    const KitProcess changelog = KitProcess::run(
        "gzip", {"-dc", extracted(under("share/doc/" + package + "/changelog.Debian.gz"))});
    QVERIFY2(changelog.ok(), changelog.report().constData());
    QVERIFY2(changelog.out.startsWith("imgplugin (" IMG_PROJECT_VERSION "-" IMG_DEBIAN_REVISION ")"),
             changelog.out.left(80).constData());

    if (manualPage.isEmpty())
        return;
    QVERIFY2(files.contains(under(manualPage)), qPrintable(manualPage));
    const KitProcess page = KitProcess::run("gzip", {"-dc", extracted(under(manualPage))});
    QVERIFY2(page.ok(), page.report().constData());
    QVERIFY2(page.out.startsWith(".TH "), page.out.left(80).constData());
    QVERIFY(page.out.contains("\"" IMG_RELEASE_DATE "\""));
    for (const char *section : {".SH NAME", ".SH SYNOPSIS", ".SH DESCRIPTION", ".SH EXIT STATUS",
                                ".SH FILES", ".SH ENVIRONMENT", ".SH EXAMPLES", ".SH SEE ALSO"})
        QVERIFY2(page.out.contains(section), section);
}

// lintian, Debian's package checker, on the packages as a distribution builds them: installed
// under /usr. Informational tags that stay, and why:
// - hardening-no-bindnow, hardening-no-fortify-functions: this build is not given the
//   distribution's flags; scripts/package.sh gives them (dpkg-buildflags) to the packages it makes.
// - binary-has-unneeded-section .comment: the compiler's note, kept by `strip --strip-unneeded`.
void TestDebPackages::lintianFindsNoErrorsOrWarnings()
{
    if (QStandardPaths::findExecutable("lintian").isEmpty())
        QSKIP("lintian is not installed (scripts/install-deps.sh installs it)");
    const QString out = m_tmp.filePath("usr-packages");
    const KitProcess cpack = KitProcess::run(
        IMG_CPACK_COMMAND,
        {"-G", "DEB", "--config", IMG_BINARY_DIR "/CPackConfig.cmake", "-D",
         "CPACK_PACKAGING_INSTALL_PREFIX=/usr", "-B", out},
        170000, m_tmp.path());
    QVERIFY2(cpack.ok(), cpack.report().constData());
    QStringList arguments{"--fail-on", "error,warning", "--no-tag-display-limit"};
    // A build configured with a plain lib folder puts the pkg-config file where a cross build
    // does not look; a distribution's build (scripts/package.sh) uses the multiarch folder.
    if (!QStringLiteral(IMG_INSTALL_LIBDIR).contains(QLatin1Char('/')))
        arguments << "--suppress-tags" << "pkg-config-unavailable-for-cross-compilation";
    const QStringList debs = QDir(out).entryList({"*.deb"}, QDir::Files);
    QCOMPARE(debs.size(), 3);
    for (const QString &deb : debs)
        arguments << out + '/' + deb;
    const KitProcess lintian = KitProcess::run("lintian", arguments, 170000);
    QVERIFY2(lintian.ok(), lintian.report().constData());
    QVERIFY2(!lintian.out.contains("\nE: ") && !lintian.out.startsWith("E: ")
                 && !lintian.out.contains("\nW: ") && !lintian.out.startsWith("W: "),
             lintian.out.constData());
}

#include "tst_debpackages.moc"
