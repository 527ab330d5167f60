// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The development kit as a host developer meets it: the project installed into a fresh prefix,
// the example host configured against that prefix alone with find_package, built and run; the
// pkg-config file; and the installed programs finding the installed bundle, never the build's.

#include "kitprocess.h"
#include "testenv.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QStandardPaths>
#include <QtTest>

class TestInstalledKit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void installsTheHeadersAndPackageFiles();
    void pkgConfigNamesTheHeadersAndTheBundle();
    void exampleHostBuiltAgainstTheKitPrintsTheStopCode();
    void installedToolFillsTheWorkspaceFromTheInstalledBundle();
    void installedHostWithoutItsBundleNamesTheInstalledPlace();
    void installedPluginExportsOnlyItsEntryPoints();

private:
    QString prefixPath(const QString &relative) const { return m_prefix + '/' + relative; }
    QString bundle() const { return prefixPath(IMG_INSTALL_BUNDLE); }
    static QString canonical(const QString &path) { return QFileInfo(path).canonicalFilePath(); }

    QTemporaryDir m_tmp;
    QString m_prefix;
};

void TestInstalledKit::initTestCase()
{
    TestEnv::isolate();
    QVERIFY(m_tmp.isValid());
    m_prefix = m_tmp.filePath("prefix");
    const KitProcess install = KitProcess::run(
        IMG_CMAKE_COMMAND, {"--install", IMG_BINARY_DIR, "--prefix", m_prefix}, 120000);
    QVERIFY2(install.ok(), install.report().constData());
}

void TestInstalledKit::installsTheHeadersAndPackageFiles()
{
    const QString config = prefixPath(IMG_INSTALL_LIBDIR "/cmake/ImgPlugin/");
    for (const QString &file :
         {prefixPath("include/imgplugin/imgpluginfactory.h"),
          prefixPath("include/imgplugin/imgsettingscontroller.h"),
          prefixPath("include/imgplugin/imgpluginversion.h"), config + "ImgPluginConfig.cmake",
          config + "ImgPluginConfigVersion.cmake", config + "ImgPluginTargets.cmake",
          prefixPath(IMG_INSTALL_LIBDIR "/pkgconfig/imgplugin.pc"),
          bundle() + "/" IMG_BUNDLE_BINARY_SUBDIR "/libimgplugin.so"})
        QVERIFY2(QFileInfo(file).isFile(), qPrintable(file));
    // Only the interface is public: the plugin's own class stays inside the bundle.
    QVERIFY(!QFileInfo::exists(prefixPath("include/imgplugin/imgplugin.h")));
}

void TestInstalledKit::pkgConfigNamesTheHeadersAndTheBundle()
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("PKG_CONFIG_PATH", prefixPath(IMG_INSTALL_LIBDIR "/pkgconfig"));
    const KitProcess dir =
        KitProcess::run("pkg-config", {"--variable=bundledir", "imgplugin"}, 30000, {}, env);
    QVERIFY2(dir.ok(), dir.report().constData());
    QCOMPARE(canonical(QString::fromUtf8(dir.out.trimmed())), canonical(bundle()));
    const KitProcess version =
        KitProcess::run("pkg-config", {"--modversion", "imgplugin"}, 30000, {}, env);
    QCOMPARE(version.out.trimmed(), QByteArray(IMG_PROJECT_VERSION));

    // The cflags alone (with QtCore's, which the file requires) compile a file using both headers.
    const KitProcess cflags =
        KitProcess::run("pkg-config", {"--cflags", "imgplugin"}, 30000, {}, env);
    QVERIFY2(cflags.ok(), cflags.report().constData());
    const QString source = m_tmp.filePath("uses-headers.cpp");
    QFile file(source);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#include <imgpluginfactory.h>\n#include <imgsettingscontroller.h>\n"
               "ImgSettingsController *open(ImgPluginFactory &f)\n"
               "{ return f.createSettingsDelegate(QString(), QString()); }\n");
    file.close();
    const QStringList args = QStringList{"-std=c++17", "-fPIC", "-fsyntax-only"} +
                             QProcess::splitCommand(QString::fromUtf8(cflags.out)) +
                             QStringList{source};
    const KitProcess compile = KitProcess::run(IMG_CXX_COMPILER, args, 60000);
    QVERIFY2(compile.ok(), compile.report().constData());
}

void TestInstalledKit::exampleHostBuiltAgainstTheKitPrintsTheStopCode()
{
    const QString build = m_tmp.filePath("example-build");
    QStringList configure{"-S", IMG_SOURCE_DIR "/examples/host", "-B", build};
    configure << "-G" << IMG_CMAKE_GENERATOR << "-DCMAKE_MAKE_PROGRAM=" IMG_MAKE_PROGRAM
              << "-DCMAKE_CXX_COMPILER=" IMG_CXX_COMPILER << "-DCMAKE_BUILD_TYPE=Release"
              << "-DCMAKE_PREFIX_PATH=" + m_prefix;
    if (!QByteArray(IMG_SANITIZER_FLAGS).isEmpty())
        configure << "-DCMAKE_CXX_FLAGS=" IMG_SANITIZER_FLAGS
                  << "-DCMAKE_EXE_LINKER_FLAGS=" IMG_SANITIZER_FLAGS;
    const KitProcess configured = KitProcess::run(IMG_CMAKE_COMMAND, configure, 120000);
    QVERIFY2(configured.ok(), configured.report().constData());
    QFile cache(build + "/CMakeCache.txt");
    QVERIFY(cache.open(QIODevice::ReadOnly));
    // The package came from the temporary prefix, not from the source or build tree.
    QVERIFY(cache.readAll().contains("ImgPlugin_DIR:PATH=" +
                                     prefixPath(IMG_INSTALL_LIBDIR "/cmake/ImgPlugin").toUtf8()));

    const KitProcess built = KitProcess::run(IMG_CMAKE_COMMAND, {"--build", build}, 180000);
    QVERIFY2(built.ok(), built.report().constData());

    const KitProcess host =
        KitProcess::run(build + "/examplehost",
                        {"--workspace", m_tmp.filePath("example-ws"), "--cancel-when-shown"});
    QVERIFY2(host.ok(), host.report().constData());
    const QByteArray plugin =
        "plugin: " + (bundle() + "/" IMG_BUNDLE_BINARY_SUBDIR "/libimgplugin.so").toUtf8() + '\n';
    QCOMPARE(host.out, plugin + "stop code: 0\nisCloseBundle: true\n");
    QVERIFY(QFileInfo::exists(m_tmp.filePath("example-ws/img.xml")));
}

void TestInstalledKit::installedToolFillsTheWorkspaceFromTheInstalledBundle()
{
    // A file only the installed bundle has shows which bundle filled the workspace.
    QFile marker(bundle() + "/Contents/Resources/html/installed-marker.txt");
    QVERIFY(marker.open(QIODevice::WriteOnly));
    marker.close();
    const QString ws = m_tmp.filePath("tool-ws");
    const KitProcess tool =
        KitProcess::run(prefixPath("bin/imgbundle"), {"workspace", "--workspace", ws}, 60000);
    QVERIFY(QFile::remove(marker.fileName()));
    QVERIFY2(tool.ok(), tool.report().constData());
    QVERIFY(QFileInfo::exists(ws + "/installed-marker.txt"));
}

void TestInstalledKit::installedHostWithoutItsBundleNamesTheInstalledPlace()
{
    // The host's default is the bundle of its own installation; without it the host says so and
    // never turns to the build tree's bundle instead.
    const QString moved = m_tmp.filePath("moved.bundle");
    QVERIFY(QDir().rename(bundle(), moved));
    const KitProcess host = KitProcess::run(prefixPath("bin/imghost"), {"--quit-when-shown"});
    QVERIFY(QDir().rename(moved, bundle()));
    QCOMPARE(host.exitCode, 2);
    QVERIFY2(host.err.contains("no plugin folder " + bundle().toUtf8()), host.report().constData());
}

QTEST_GUILESS_MAIN(TestInstalledKit)

// A host that loads the bundle sees Qt's two plugin entry points and nothing of the bundle's own
// code or of the standard library's templates, which would otherwise bind to the host's copies.
void TestInstalledKit::installedPluginExportsOnlyItsEntryPoints()
{
    if (QStandardPaths::findExecutable("nm").isEmpty())
        QSKIP("nm is not installed");
    const KitProcess nm = KitProcess::run(
        "nm", {"-D", "--defined-only", bundle() + "/" IMG_BUNDLE_BINARY_SUBDIR "/libimgplugin.so"});
    QVERIFY2(nm.ok(), nm.report().constData());
    QStringList exported;
    for (const QByteArray &line : nm.out.split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        // Code and data symbols; the linker's own markers (_edata, _end, __bss_start) are not
        // anything the bundle offers.
        if (fields.size() == 3 && !fields.at(2).startsWith("_edata")
            && !fields.at(2).startsWith("_end") && !fields.at(2).startsWith("__bss_start"))
            exported << QString::fromLatin1(fields.at(2));
    }
    exported.sort();
    QCOMPARE(exported, (QStringList{"qt_plugin_instance", "qt_plugin_query_metadata_v2"}));
}

#include "tst_installedkit.moc"
