// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The demo host as a program: it loads the bundle, shows the window, and prints the stop code and
// isCloseBundle when the window closes.

#include "imgpluginversion.h"
#include "testenv.h"

#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

class TestImgHost : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }
    void screenshotRunPrintsTheStopCode_data();
    void screenshotRunPrintsTheStopCode();
    void quitWhenShownReportsTheWindow();
    void quitWhenPreviewLoadedReportsTheWindowAndThePreview_data();
    void quitWhenPreviewLoadedReportsTheWindowAndThePreview();
    void helpDescribesTheStartOptions();
    void versionIsTheKitsVersion_data();
    void versionIsTheKitsVersion();
    void missingBundleIsReported();
    void windowFitsTheScreenAtScaleFactorTwo();

private:
    static QProcess *run(const QStringList &arguments, QObject *parent);
};

QProcess *TestImgHost::run(const QStringList &arguments, QObject *parent)
{
    auto *host = new QProcess(parent);
    host->setProgram(QStringLiteral(IMG_HOST_EXE));
    host->setArguments(arguments);
    host->start();
    return host;
}

void TestImgHost::screenshotRunPrintsTheStopCode_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("modal") << QStringList{};
    QTest::newRow("modeless") << QStringList{"--modeless"};
    QTest::newRow("German") << QStringList{"--language", "de"};
}

void TestImgHost::screenshotRunPrintsTheStopCode()
{
    QFETCH(QStringList, options);
    QTemporaryDir tmp;
    const QString shot = tmp.filePath("window.png");
    const QString ws = tmp.filePath("ws");
    QProcess *host = run(
        options + QStringList{"--workspace", ws, "--screenshot", shot, "--screenshot-delay", "300"},
        this);
    QVERIFY(host->waitForFinished(120000));
    const QByteArray out = host->readAllStandardOutput();
    QVERIFY2(host->exitCode() == 0, host->readAllStandardError().constData());
    QVERIFY2(out.contains("Screenshot of the settings window saved to " + shot.toUtf8()),
             out.constData());
    QVERIFY2(out.contains("stop code: 0\n"), out.constData());
    QVERIFY2(out.contains("closeMode: 0\nisCloseBundle: true\n"), out.constData());
    const QImage image(shot);
    QVERIFY(!image.isNull());
    QVERIFY(image.width() > 400 && image.height() > 300);
    QVERIFY(QFileInfo::exists(ws + "/img.xml")); // the window filled the workspace it was given
}

void TestImgHost::quitWhenShownReportsTheWindow()
{
    QTemporaryDir tmp;
    QProcess *host = run({"--workspace", tmp.filePath("ws"), "--quit-when-shown"}, this);
    QVERIFY(host->waitForFinished(120000));
    QCOMPARE(host->exitCode(), 0);
    QCOMPARE(host->readAllStandardOutput(),
             QByteArray("window shown\nstop code: 0\ncloseMode: 0\nisCloseBundle: true\n"));
}

void TestImgHost::quitWhenPreviewLoadedReportsTheWindowAndThePreview_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("modal") << QStringList{};
    QTest::newRow("modeless") << QStringList{"--modeless"};
    QTest::newRow("with --quit-when-shown") << QStringList{"--quit-when-shown"};
}

void TestImgHost::quitWhenPreviewLoadedReportsTheWindowAndThePreview()
{
    QFETCH(QStringList, options);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    QProcess *host =
        run(options + QStringList{"--workspace", ws, "--quit-when-preview-loaded"}, this);
    QVERIFY(host->waitForFinished(120000));
    QVERIFY2(host->exitCode() == 0, host->readAllStandardError().constData());
    const QByteArray out = host->readAllStandardOutput();
    // Each once, whatever came first; then the window closes with Cancel.
    QCOMPARE(out.count("window shown\n"), 1);
    QCOMPARE(out.count("preview loaded\n"), 1);
    QVERIFY2(out.endsWith("stop code: 0\ncloseMode: 0\nisCloseBundle: true\n"), out.constData());
    QCOMPARE(out.count('\n'), 5);
    // The preview showed the workspace it was given.
    QVERIFY(QFileInfo::exists(ws + "/index.html"));
}

void TestImgHost::helpDescribesTheStartOptions()
{
    QProcess *host = run({"--help"}, this);
    QVERIFY(host->waitForFinished(60000));
    QCOMPARE(host->exitCode(), 0);
    const QByteArray out = host->readAllStandardOutput();
    QVERIFY2(out.contains("--quit-when-shown"), out.constData());
    QVERIFY2(out.contains("--quit-when-preview-loaded"), out.constData());
    QVERIFY2(out.contains("preview loaded"), out.constData());
}

void TestImgHost::versionIsTheKitsVersion_data()
{
    QTest::addColumn<QString>("option");
    QTest::newRow("--version") << QStringLiteral("--version");
    QTest::newRow("-v") << QStringLiteral("-v");
}

void TestImgHost::versionIsTheKitsVersion()
{
    QFETCH(QString, option);
    // No display is needed: the answer comes before the window's application exists.
    QProcess *host = new QProcess(this);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    env.insert("QT_QPA_PLATFORM", "xcb");
    host->setProcessEnvironment(env);
    host->start(QStringLiteral(IMG_HOST_EXE), {option});
    QVERIFY(host->waitForFinished(60000));
    QCOMPARE(host->exitCode(), 0);
    QCOMPARE(host->readAllStandardOutput(), QByteArray("imghost " IMGPLUGIN_VERSION_STR "\n"));
}

void TestImgHost::windowFitsTheScreenAtScaleFactorTwo()
{
    if (QStandardPaths::findExecutable("xvfb-run").isEmpty())
        QSKIP("xvfb-run is not installed");
    QTemporaryDir tmp;
    const QString shot = tmp.filePath("window.png");
    // A screen of its own: 1920 x 1080 pixels, 960 x 540 points at scale factor 2.
    QProcess host;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_SCALE_FACTOR", "2");
    host.setProcessEnvironment(env);
    host.start("xvfb-run", {"-a", "-s", "-screen 0 1920x1080x24", QStringLiteral(IMG_HOST_EXE),
                            "--workspace", tmp.filePath("ws"), "--screenshot", shot});
    QVERIFY(host.waitForFinished(120000));
    QVERIFY2(host.exitCode() == 0, host.readAllStandardError().constData());
    const QImage image(shot);
    QVERIFY(!image.isNull());
    QVERIFY2(image.width() <= 1920 && image.height() <= 1080,
             qPrintable(QStringLiteral("%1x%2").arg(image.width()).arg(image.height())));
    // It still uses the room it has.
    QVERIFY(image.width() >= 1600 && image.height() >= 900);
}

void TestImgHost::missingBundleIsReported()
{
    QTemporaryDir tmp;
    QProcess *host = run({"--bundle", tmp.filePath("nowhere.bundle")}, this);
    QVERIFY(host->waitForFinished(60000));
    QCOMPARE(host->exitCode(), 2);
    QVERIFY(host->readAllStandardError().contains("imghost: no plugin folder"));
}

QTEST_GUILESS_MAIN(TestImgHost)
#include "tst_imghost.moc"
