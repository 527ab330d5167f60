// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The settings window as a host sees it: the real plugin, loaded from the built bundle through the
// demo host's loading code, driven through its widgets, and judged by its stop code and the
// workspace it leaves behind.

#include "imgpluginfactory.h"
#include "pluginhost.h"
#include "testenv.h"
#include "treesnapshot.h"
#include "windowdriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDomDocument>
#include <QLineEdit>
#include <QProcess>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMessageBox>
#include <QImage>
#include <QTimer>
#include <QUrl>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using TreeSnapshot::readFile;
using TreeSnapshot::Tree;
using TreeSnapshot::writeFile;

namespace {

const QByteArray kBundleDefaults("10.0\n26.0\n60.0\n26.0\n0.0\n1");

QString bundleDir()
{
    return QStringLiteral(IMG_BUNDLE_DIR);
}

// One opening of the settings window.
struct Session
{
    std::unique_ptr<ImgSettingsController> controller;
    QDialog *window = nullptr;

    template<typename T> T *find(const char *name) const
    {
        return window ? window->findChild<T *>(QLatin1String(name)) : nullptr;
    }
    QLineEdit *field(const char *name) const { return find<QLineEdit>(name); }
    QString text(const char *name) const
    {
        QLineEdit *f = field(name);
        return f ? f->text() : QStringLiteral("<no field>");
    }
    void click(const char *name) const
    {
        if (auto *button = find<QAbstractButton>(name))
            QTest::mouseClick(button, Qt::LeftButton);
    }
    // Replaces the field's text keystroke by keystroke, as a user selecting it and typing.
    void type(const char *name, const QString &keys) const
    {
        QLineEdit *f = field(name);
        if (!f)
            return;
        f->setFocus();
        f->selectAll();
        if (keys.isEmpty())
            QTest::keyClick(f, Qt::Key_Backspace);
        else
            QTest::keyClicks(f, keys);
    }
};

QByteArray settingsLine(const QString &ws, int index)
{
    return readFile(ws + "/settings.dat").split('\n').value(index);
}

} // namespace

class TestSettingsWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void okLeavesTheKeepListAndTheBookScript();
    void okWithoutLocatedFilesWritesAnEmptyFilesList();
    void cancelGivesBackTheOpeningTree();
    void closeBoxAnsweredApplyKeepsTheLiveState();
    void closeBoxAnsweredDiscardGivesBackTheOpeningTree();
    void closeBoxWithoutChangesClosesWithoutAsking();
    void okWithoutRoomAsksBeforePublishing_data();
    void okWithoutRoomAsksBeforePublishing();
    void closeBoxKeepEditingLeavesTheWindowOpen_data();
    void closeBoxKeepEditingLeavesTheWindowOpen();
    void closeBoxAsksInTheWindowsLanguage_data();
    void closeBoxAsksInTheWindowsLanguage();
    void escapeIsTheCancelButton_data();
    void escapeIsTheCancelButton();
    void returnInAFieldKeepsTheWindowOpen_data();
    void returnInAFieldKeepsTheWindowOpen();

    void typingIntoAField_data();
    void typingIntoAField();
    void sliderRewritesTheTransparencyField();
    void dragOfTheBoxFollowsInTheFieldsAndSavesOnRelease();
    void layerChosenByHandIsSavedAtOnce();
    void droppedImageIsSavedAtOnceAndKeptByTheCloseBox();
    void linkChoiceWithoutLinkShowsAndShipsNoImage();
    void defaultRestoresTheBundlesPosition();
    void defaultFallsBackToTheWorkspaceDefaults();
    void defaultWithoutDefaultsFileChangesNothing();

    void firstRunBuildsTheWorkspace();
    void firstRunWithoutWorkspaceUsesThePluginSaveFolder();
    void damagedImgXmlStillOpensAndOKRepairsIt();
    void damagedSettingsFileLoadsAsZeros_data();
    void damagedSettingsFileLoadsAsZeros();

    void hostEndsTheWindowWithoutAsking_data();
    void hostEndsTheWindowWithoutAsking();
    void deletingTheControllerDiscardsAnOpenWindow();
    void closedHandlerHearsEveryClose_data();
    void closedHandlerHearsEveryClose();
    void unwritableWorkspaceIsReported();
    void missingBackupIsReported();

private:
    Session open(const QString &ws, const QString &bundle = bundleDir(),
                 const QString &language = "en");
    // A workspace as a previous session left it: filled from the bundle, one edit saved live.
    void prepareWorkspace(const QString &ws);
    void closeByCloseBox(Session &s, const QString &answer, QString *alertText = nullptr);
    QByteArray restoreBookScript(const QString &path);

    PluginHost m_host;
};

void TestSettingsWindow::initTestCase()
{
    TestEnv::isolate();
    QVERIFY2(m_host.load(bundleDir()), qPrintable(m_host.errorString()));
    QVERIFY(m_host.factory());
}

Session TestSettingsWindow::open(const QString &ws, const QString &bundle, const QString &language)
{
    Session s;
    s.controller.reset(m_host.factory()->createSettingsDelegate(language, bundle));
    if (!s.controller)
        return s;
    s.controller->setModalMode(false);
    if (!ws.isEmpty())
        s.controller->setWorkSpace(ws);
    s.window = s.controller->window();
    // Reads of the workspace wait for what the window still writes, as a host would.
    TreeSnapshot::beforeRead() = [object = QPointer<QObject>(s.controller->object())] {
        if (object)
            QMetaObject::invokeMethod(object, "waitForSaves");
    };
    if (s.window) {
        s.window->show();
        if (!QTest::qWaitForWindowExposed(s.window))
            qWarning("window not exposed");
    }
    return s;
}

void TestSettingsWindow::closeByCloseBox(Session &s, const QString &answer, QString *alertText)
{
    WindowDriver::AlertAnswerer answerer(answer);
    s.window->close();
    QVERIFY(answerer.answered());
    if (alertText)
        *alertText = answerer.alertText();
}

void TestSettingsWindow::prepareWorkspace(const QString &ws)
{
    Session s = open(ws);
    QVERIFY(s.window);
    s.type("txtLeft", "10");
    // The typed value is the bundle's own, so the close box would have nothing to ask: the host
    // keeps what was saved live, as the close box's Apply does.
    s.controller->endWindow(ImgSettingsController::Apply);
    QCOMPARE(s.controller->closeMode(), 1);
    QVERIFY(QFileInfo::exists(ws + "/settings.dat"));
}

// The book's own loader restores the scrambled script; node runs it.
QByteArray TestSettingsWindow::restoreBookScript(const QString &path)
{
    QProcess node;
    const QString loader = QStringLiteral(IMG_SOURCE_DIR "/book/imgplugin.js");
    const QString script = QStringLiteral(
        "const fs = require('fs');"
        "const ImgPlugin = require(process.argv[1]);"
        "const text = ImgPlugin.unscramble(fs.readFileSync(process.argv[2], 'utf8'));"
        "process.stdout.write(JSON.stringify(ImgPlugin.readSettings(text, 'bookPlugin')));");
    node.start(QStringLiteral("node"), {QStringLiteral("-e"), script, loader, path});
    if (!node.waitForFinished(30000) || node.exitCode() != 0)
        return "node failed: " + node.readAllStandardError();
    return node.readAllStandardOutput();
}

// ---- the four ways of closing

void TestSettingsWindow::okLeavesTheKeepListAndTheBookScript()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    writeFile(ws + "/pic.png", QByteArray("\x89PNG\r\n\x1a\n", 8));
    QByteArray xml = readFile(ws + "/img.xml");
    xml.replace("<src type=\"file\"></src>", "<src type=\"file\">pic.png</src>");
    QVERIFY(xml.contains("pic.png"));
    writeFile(ws + "/img.xml", xml);
    writeFile(ws + "/.hidden", "x");
    writeFile(ws + "/old/nested/file.txt", "x");
    writeFile(ws + "/Settings.dat", "other case");

    Session s = open(ws);
    QVERIFY(s.window);
    QSignalSpy finished(s.window, &QDialog::finished);
    QSignalSpy closed(s.controller->object(), SIGNAL(windowClosed(int)));
    QCOMPARE(s.controller->isCloseBundle(), false);
    s.type("txtLeft", "15");
    writeFile(ws + "/created-meanwhile.txt", "x");
    s.click("btnOK");

    QCOMPARE(s.controller->closeMode(), 1);
    QCOMPARE(s.controller->isCloseBundle(), true);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toInt(), 1);
    QCOMPARE(closed.count(), 1);
    QCOMPARE(closed.at(0).at(0).toInt(), 1);
    QVERIFY(!s.window->isVisible());

    const QStringList left =
        QDir(ws).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    QCOMPARE(left, (QStringList{"bookPlugin.js", "defaultsettings.dat", "files", "img.xml",
                                "pic.png", "settings.dat"}));
    QCOMPARE(readFile(ws + "/files"), QByteArray("pic.png"));
    QCOMPARE(readFile(ws + "/settings.dat"), QByteArray("15.0\n26.0\n60.0\n26.0\n0.0\n1"));
    QCOMPARE(readFile(ws + "/pic.png"), QByteArray("\x89PNG\r\n\x1a\n", 8));

    const QByteArray book = readFile(ws + "/bookPlugin.js");
    QVERIFY(!book.isEmpty());
    QVERIFY2(!book.startsWith("\xEF\xBB\xBF"), "the book script has no byte-order mark");
    QVERIFY2(!book.contains("pic.png"), "the book script is scrambled");
    const QByteArray restored = restoreBookScript(ws + "/bookPlugin.js");
    QVERIFY2(restored.contains("files/plugin/pic.png"), restored.constData());
    QVERIFY2(restored.contains("15.0%"), restored.constData());
}

void TestSettingsWindow::okWithoutLocatedFilesWritesAnEmptyFilesList()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    s.click("btnOK");
    QCOMPARE(s.controller->closeMode(), 1);
    QVERIFY(QFileInfo(ws + "/files").isFile());
    QCOMPARE(readFile(ws + "/files"), QByteArray());
    const QStringList left =
        QDir(ws).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    QCOMPARE(left, (QStringList{"bookPlugin.js", "defaultsettings.dat", "files", "img.xml",
                                "settings.dat"}));
}

void TestSettingsWindow::cancelGivesBackTheOpeningTree()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    writeFile(ws + "/.hidden", "hidden at opening");
    writeFile(ws + "/sub/deeper/kept.txt", "nested at opening");
    writeFile(ws + "/doomed.txt", "deleted meanwhile");
    const Tree opening = TreeSnapshot::take(ws);

    Session s = open(ws);
    QVERIFY(s.window);
    s.type("txtLeft", "42");
    s.type("txtTransparency", "80");
    s.find<QSlider>("sldTrans")->setValue(1234);
    QVERIFY(readFile(ws + "/settings.dat") != opening.value("settings.dat"));
    writeFile(ws + "/.new-hidden", "created meanwhile");
    writeFile(ws + "/newdir/inner/file.txt", "created meanwhile");
    writeFile(ws + "/sub/deeper/kept.txt", "changed meanwhile");
    QFile::remove(ws + "/doomed.txt");
    QFile::remove(ws + "/.hidden");
    QSignalSpy finished(s.window, &QDialog::finished);

    s.click("btnCancel");
    QCOMPARE(s.controller->closeMode(), 0);
    QCOMPARE(s.controller->isCloseBundle(), true);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toInt(), 0);
    QCOMPARE(TreeSnapshot::take(ws), opening);
}

void TestSettingsWindow::closeBoxAnsweredApplyKeepsTheLiveState()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    writeFile(ws + "/leftover.txt", "no clean-up");
    Session s = open(ws);
    QVERIFY(s.window);
    s.type("txtLeft", "33");
    const Tree live = TreeSnapshot::take(ws);
    QString alert;
    closeByCloseBox(s, "Apply", &alert);

    QCOMPARE(alert, QStringLiteral("Do you want to apply the settings?"));
    QCOMPARE(s.controller->closeMode(), 1);
    QCOMPARE(s.controller->isCloseBundle(), true);
    QVERIFY(!s.window->isVisible());
    QCOMPARE(TreeSnapshot::take(ws), live);
    QCOMPARE(readFile(ws + "/settings.dat"), QByteArray("33.0\n26.0\n60.0\n26.0\n0.0\n1"));
    QVERIFY(QFileInfo::exists(ws + "/index.html"));
    QVERIFY(QFileInfo::exists(ws + "/config.js"));
    QVERIFY(!QFileInfo::exists(ws + "/bookPlugin.js"));
    QVERIFY(!QFileInfo::exists(ws + "/files"));
}

void TestSettingsWindow::closeBoxAnsweredDiscardGivesBackTheOpeningTree()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    writeFile(ws + "/.hidden/inside", "hidden folder at opening");
    const Tree opening = TreeSnapshot::take(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    s.type("txtBottom", "5");
    writeFile(ws + "/.hidden/new", "created meanwhile");
    writeFile(ws + "/img.xml", "changed meanwhile");
    QString alert;
    closeByCloseBox(s, "Discard Changes", &alert);
    QCOMPARE(alert, QStringLiteral("Do you want to apply the settings?"));
    QCOMPARE(s.controller->closeMode(), 0);
    QCOMPARE(s.controller->isCloseBundle(), true);
    QCOMPARE(TreeSnapshot::take(ws), opening);
}

void TestSettingsWindow::okWithoutRoomAsksBeforePublishing_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("answer");
    QTest::newRow("no width: Keep Editing publishes nothing")
        << "txtLeft" << "40" << "Keep Editing";
    QTest::newRow("no width: Publish Anyway publishes") << "txtLeft" << "40" << "Publish Anyway";
    QTest::newRow("no height: Keep Editing publishes nothing")
        << "txtTop" << "74" << "Keep Editing";
}

// Margins that leave the image no room would publish an image no reader sees: OK asks once.
void TestSettingsWindow::okWithoutRoomAsksBeforePublishing()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(QString, answer);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    s.type(field.toLatin1().constData(), value); // with the bundle's 60 % right or 26 % bottom
    WindowDriver::AlertAnswerer answerer(answer);
    s.click("btnOK");
    QTRY_VERIFY(answerer.answered());
    QCOMPARE(answerer.alertText(), QStringLiteral("The book will not show the image. Publish anyway?"));
    if (answer == QLatin1String("Keep Editing")) {
        QVERIFY(s.window->isVisible());
        QCOMPARE(s.controller->isCloseBundle(), false);
        QVERIFY(!QFileInfo::exists(ws + "/bookPlugin.js"));
        // Asked once: a margin with room publishes without a word.
        s.type(field.toLatin1().constData(), "1");
        s.click("btnOK");
    }
    QCOMPARE(s.controller->isCloseBundle(), true);
    QCOMPARE(s.controller->closeMode(), 1);
    QVERIFY(QFileInfo::exists(ws + "/bookPlugin.js"));
}

void TestSettingsWindow::closeBoxWithoutChangesClosesWithoutAsking()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    const Tree opening = TreeSnapshot::take(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    // An edit taken back is no change either.
    s.type("txtLeft", "12");
    s.type("txtLeft", "10.0");
    WindowDriver::AlertAnswerer answerer("Apply");
    s.window->close();
    QTest::qWait(300); // an alert, if one came, would have been answered by now
    QVERIFY(!answerer.answered());
    QVERIFY(!s.window->isVisible());
    QCOMPARE(s.controller->closeMode(), 0);
    QCOMPARE(s.controller->isCloseBundle(), true);
    QCOMPARE(TreeSnapshot::take(ws), opening);
}

void TestSettingsWindow::closeBoxKeepEditingLeavesTheWindowOpen_data()
{
    QTest::addColumn<int>("how"); // 0 the button, 1 Escape, 2 the question's close box
    QTest::newRow("Keep Editing keeps the window open") << 0;
    QTest::newRow("Escape in the question keeps the window open") << 1;
    QTest::newRow("the question's close box keeps the window open") << 2;
}

void TestSettingsWindow::closeBoxKeepEditingLeavesTheWindowOpen()
{
    QFETCH(int, how);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    s.type("txtLeft", "33");
    QSignalSpy finished(s.window, &QDialog::finished);
    bool asked = false;
    QTimer poll;
    poll.setInterval(20);
    connect(&poll, &QTimer::timeout, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        asked = true;
        poll.stop();
        if (how == 0) {
            for (QAbstractButton *button : box->buttons())
                if (button->text() == QLatin1String("Keep Editing"))
                    button->click();
        } else if (how == 1) {
            QTest::keyClick(box, Qt::Key_Escape);
        } else {
            box->close();
        }
    });
    poll.start();
    s.window->close();
    QTRY_VERIFY(asked);
    QTest::qWait(100);
    QVERIFY(s.window->isVisible());
    QCOMPARE(finished.count(), 0);
    QCOMPARE(s.controller->isCloseBundle(), false);
    // The session's work is all there, and editing goes on.
    QCOMPARE(settingsLine(ws, 0), QByteArray("33.0"));
    s.type("txtTop", "5");
    QCOMPARE(settingsLine(ws, 1), QByteArray("5.0"));
    closeByCloseBox(s, "Apply");
    QCOMPARE(s.controller->closeMode(), 1);
    QCOMPARE(settingsLine(ws, 0), QByteArray("33.0"));
}

void TestSettingsWindow::closeBoxAsksInTheWindowsLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("buttons");
    QTest::newRow("English") << "en" << QStringList{"Apply", "Discard Changes", "Keep Editing"};
    QTest::newRow("German") << "de"
                            << QStringList{"Übernehmen", "Änderungen verwerfen", "Weiter bearbeiten"};
    QTest::newRow("French") << "fr"
                            << QStringList{"Appliquer", "Annuler les modifications",
                                           "Continuer la modification"};
    QTest::newRow("Japanese") << "ja" << QStringList{"適用", "変更を破棄", "編集を続ける"};
    QTest::newRow("Chinese") << "zh_CN" << QStringList{"应用", "放弃更改", "继续编辑"};
}

// The question's title is the plugin's name, never the host program's, and every button speaks
// the window's language.
void TestSettingsWindow::closeBoxAsksInTheWindowsLanguage()
{
    QFETCH(QString, language);
    QFETCH(QStringList, buttons);
    // Each language in a process of its own: the strings table of a process is its first one.
    if (qEnvironmentVariable("IMG_WINDOW_LANGUAGE") != language) {
        QProcess child;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("IMG_WINDOW_LANGUAGE", language);
        child.setProcessEnvironment(env);
        child.setProcessChannelMode(QProcess::ForwardedChannels);
        child.start(QCoreApplication::applicationFilePath(),
                    {"closeBoxAsksInTheWindowsLanguage:"
                     + QString::fromLatin1(QTest::currentDataTag())});
        QVERIFY(child.waitForFinished(120000));
        QCOMPARE(child.exitCode(), 0);
        return;
    }
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    Session s = open(ws, bundleDir(), language);
    QVERIFY(s.window);
    s.type("txtLeft", "33");
    QStringList seen;
    QString title;
    QTimer poll;
    poll.setInterval(20);
    connect(&poll, &QTimer::timeout, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        poll.stop();
        title = box->windowTitle();
        for (QAbstractButton *button : box->buttons())
            seen << button->text();
        QTest::keyClick(box, Qt::Key_Escape);
    });
    poll.start();
    s.window->close();
    QTRY_VERIFY(!seen.isEmpty());
    QCOMPARE(title, QStringLiteral("Image Plugin"));
    QCOMPARE(seen, buttons);
    s.click("btnCancel");
}

void TestSettingsWindow::escapeIsTheCancelButton_data()
{
    QTest::addColumn<QString>("focus");
    QTest::newRow("Escape in a margin field cancels") << "txtTop";
    QTest::newRow("Escape on the canvas cancels") << "positionView";
    QTest::newRow("Escape on the transparency slider cancels") << "sldTrans";
}

void TestSettingsWindow::escapeIsTheCancelButton()
{
    QFETCH(QString, focus);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    const Tree opening = TreeSnapshot::take(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    s.type("txtTop", "1");
    QVERIFY(settingsLine(ws, 1) == "1.0");
    QWidget *target = s.window->findChild<QWidget *>(focus);
    QVERIFY(target);
    target->setFocus();
    QSignalSpy finished(s.window, &QDialog::finished);
    WindowDriver::AlertAnswerer answerer("OK");
    QTest::keyClick(target, Qt::Key_Escape);
    QTest::qWait(300); // an alert, if one came, would have been answered by now
    QVERIFY(!answerer.answered());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toInt(), 0);
    QCOMPARE(s.controller->closeMode(), 0);
    QCOMPARE(s.controller->isCloseBundle(), true);
    QVERIFY(!QFileInfo::exists(ws + "/bookPlugin.js"));
    QCOMPARE(TreeSnapshot::take(ws), opening);
}

void TestSettingsWindow::returnInAFieldKeepsTheWindowOpen_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("key");
    for (const char *name :
         {"txtLeft", "txtTop", "txtRight", "txtBottom", "txtTransparency", "txtLink", "txtFile"}) {
        QTest::addRow("Return in %s keeps the window open", name) << name << int(Qt::Key_Return);
        QTest::addRow("Enter in %s keeps the window open", name) << name << int(Qt::Key_Enter);
    }
}

void TestSettingsWindow::returnInAFieldKeepsTheWindowOpen()
{
    QFETCH(QString, field);
    QFETCH(int, key);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    auto *edit = s.window->findChild<QLineEdit *>(field);
    QVERIFY(edit);
    edit->setFocus();
    QSignalSpy finished(s.window, &QDialog::finished);
    WindowDriver::AlertAnswerer answerer("Cancel");
    QTest::keyClick(edit, Qt::Key(key));
    QTest::qWait(200);
    QVERIFY(!answerer.answered());
    QCOMPARE(finished.count(), 0);
    QVERIFY(s.window->isVisible());
    QCOMPARE(s.controller->isCloseBundle(), false);
    s.click("btnCancel");
}

// ---- the fields, the slider, the canvas and the layer

void TestSettingsWindow::typingIntoAField_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("line");
    QTest::addColumn<QByteArray>("saved");
    QTest::newRow("12a in left leaves 12") << "txtLeft"
                                           << "12a"
                                           << "12" << 0 << QByteArray("12.0");
    QTest::newRow("cleared top stores 0") << "txtTop"
                                          << ""
                                          << "" << 1 << QByteArray("0.0");
    QTest::newRow("second point is removed") << "txtRight"
                                             << "1.2."
                                             << "1.2" << 2 << QByteArray("1.2");
    QTest::newRow("no clamping of a margin") << "txtBottom"
                                             << "150"
                                             << "150" << 3 << QByteArray("150.0");
    QTest::newRow("no sign") << "txtLeft"
                             << "-5"
                             << "5" << 0 << QByteArray("5.0");
    QTest::newRow("lone point stores 0") << "txtTop"
                                         << "."
                                         << "." << 1 << QByteArray("0.0");
    QTest::newRow("a typed comma is the decimal point: 12,5 gives 12.5")
        << "txtLeft" << "12,5" << "12.5" << 0 << QByteArray("12.5");
    QTest::newRow("a comma after a point is dropped like a second point")
        << "txtTop" << "1.2," << "1.2" << 1 << QByteArray("1.2");
    QTest::newRow("a comma in the transparency is its decimal point")
        << "txtTransparency" << "7,5" << "7.5" << 4 << QByteArray("7.5");
    QTest::newRow("transparency typed") << "txtTransparency"
                                        << "45"
                                        << "45" << 4 << QByteArray("45.0");
    QTest::newRow("no clamping of transparency") << "txtTransparency"
                                                 << "400"
                                                 << "400" << 4 << QByteArray("400.0");
}

void TestSettingsWindow::typingIntoAField()
{
    QFETCH(QString, field);
    QFETCH(QString, keys);
    QFETCH(QString, shown);
    QFETCH(int, line);
    QFETCH(QByteArray, saved);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    const QByteArray name = field.toLatin1();
    s.type(name.constData(), keys);
    QCOMPARE(s.text(name.constData()), shown);
    QCOMPARE(settingsLine(ws, line), saved);
    // Every keystroke also refreshes the preview files.
    QVERIFY(QFileInfo::exists(ws + "/config.js"));
    QVERIFY(QFileInfo::exists(ws + "/index.html"));
    auto *slider = s.find<QSlider>("sldTrans");
    if (field == "txtTransparency")
        QCOMPARE(slider->value(), qMin(slider->maximum(), qRound(shown.toDouble() * 100)));
    else
        QCOMPARE(slider->value(), 0);
    s.click("btnCancel");
}

void TestSettingsWindow::sliderRewritesTheTransparencyField()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    auto *slider = s.find<QSlider>("sldTrans");
    QVERIFY(slider);
    QCOMPARE(slider->minimum(), 0);
    QCOMPARE(slider->maximum() / 100, 100); // percent, in hundredths
    slider->setValue(3726);
    QCOMPARE(s.text("txtTransparency"), QStringLiteral("37.3"));
    QCOMPARE(settingsLine(ws, 4), QByteArray("37.3"));
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_End);
    QCOMPARE(s.text("txtTransparency"), QStringLiteral("100.0"));
    QCOMPARE(settingsLine(ws, 4), QByteArray("100.0"));
    s.type("txtTransparency", "12.5");
    QCOMPARE(slider->value(), 1250);
    s.click("btnCancel");
}

void TestSettingsWindow::dragOfTheBoxFollowsInTheFieldsAndSavesOnRelease()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    auto *canvas = s.find<QWidget>("positionView");
    QVERIFY(canvas);
    QTRY_VERIFY(!canvas->findChildren<QWidget *>().isEmpty());
    QWidget *box = canvas->findChildren<QWidget *>().first();
    QTRY_VERIFY(box->isVisible() && box->width() > 30);

    const QByteArray before = readFile(ws + "/settings.dat");
    const char *fields[] = {"txtLeft", "txtTop", "txtRight", "txtBottom"};
    double start[4];
    for (int i = 0; i < 4; ++i)
        start[i] = s.text(fields[i]).toDouble();
    // A move of (dx, dy) pixels on the page shifts the margins by dx and dy in percent of the
    // page: left and bottom grow as right and top shrink (the pointer moves up the page).
    const double perX = 100.0 / canvas->width();
    const double perY = 100.0 / canvas->height();
    const auto expected = [&](int i, int step) {
        const double dx = 6.0 * step * perX;
        const double dy = 4.0 * step * perY;
        const double shift[4] = {dx, -dy, -dx, dy};
        return start[i] + shift[i];
    };

    // The pointer travels in window coordinates; the box moves under it during the drag, so each
    // event is given in the box's coordinates of that moment.
    QWidget *top = box->window();
    const QPoint grip = box->mapTo(top, box->rect().center());
    const auto onBox = [&](QPoint windowPoint) {
        return box->mapFrom(top, windowPoint);
    };
    // Alt held: the box follows the pointer alone, without snapping to the page's centre lines
    // (it starts centred from top to bottom, within reach of the line).
    const auto moveTo = [&](QPoint windowPoint) {
        const QPoint at = onBox(windowPoint);
        QMouseEvent move(QEvent::MouseMove, at, box->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                         Qt::AltModifier);
        QApplication::sendEvent(box, &move);
    };
    QTest::mousePress(box, Qt::LeftButton, Qt::NoModifier, onBox(grip));
    for (int step = 1; step <= 3; ++step) {
        moveTo(grip + QPoint(6 * step, -4 * step));
        for (int i = 0; i < 4; ++i) {
            const QString text = s.text(fields[i]);
            const QString where = QString("step %1 %2 = %3, expected about %4")
                                      .arg(step)
                                      .arg(fields[i])
                                      .arg(text)
                                      .arg(expected(i, step), 0, 'f', 2);
            QVERIFY2(QRegularExpression("^-?\\d+\\.\\d$").match(text).hasMatch(),
                     qPrintable(where));
            QVERIFY2(qAbs(text.toDouble() - expected(i, step)) <= 0.051, qPrintable(where));
        }
        QCOMPARE(readFile(ws + "/settings.dat"), before);
    }
    QTest::mouseRelease(box, Qt::LeftButton, Qt::NoModifier, onBox(grip + QPoint(18, -12)));
    const QByteArray after = readFile(ws + "/settings.dat");
    QVERIFY(after != before);
    const QList<QByteArray> lines = after.split('\n');
    QCOMPARE(lines.size(), 6);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(lines.value(i), s.text(fields[i]).toLatin1());
        QVERIFY2(qAbs(lines.value(i).toDouble() - expected(i, 3)) <= 0.051,
                 lines.value(i).constData());
    }
    QCOMPARE(lines.mid(4), before.split('\n').mid(4)); // transparency and layer untouched
    s.click("btnCancel");
}

void TestSettingsWindow::layerChosenByHandIsSavedAtOnce()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    auto *above = s.find<QRadioButton>("radLayerAbove");
    auto *below = s.find<QRadioButton>("radLayerBelow");
    QVERIFY(above && below);
    QVERIFY(above->isChecked());
    QTest::mouseClick(below, Qt::LeftButton);
    QVERIFY(below->isChecked());
    // Saved with the click, the preview's script too, before any other edit.
    QCOMPARE(settingsLine(ws, 5), QByteArray("0"));
    QVERIFY2(readFile(ws + "/config.js").contains("\"layout\":0,"),
             readFile(ws + "/config.js").constData());
    // The close box's Apply keeps it: the stop code is 1 and the layer is the chosen one.
    closeByCloseBox(s, "Apply");
    QCOMPARE(s.controller->closeMode(), 1);
    QCOMPARE(settingsLine(ws, 5), QByteArray("0"));
}

// An image dropped onto the window, as Browse… or a paste gives it, reaches the description, the
// preview's script and the close box's Apply without the Save button.
void TestSettingsWindow::droppedImageIsSavedAtOnceAndKeptByTheCloseBox()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    const QString picture = tmp.filePath("photo.png");
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QVERIFY(image.save(picture));
    Session s = open(ws);
    QVERIFY(s.window);
    // Dropped on the canvas, as from a file manager.
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(picture)});
    QWidget *canvas = s.find<QWidget>("positionView");
    QVERIFY(canvas);
    const QPoint at = canvas->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(at), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas, &drop);
    QTRY_COMPARE(s.text("txtFile"), QStringLiteral("photo.png"));
    QVERIFY2(readFile(ws + "/img.xml").contains(">photo.png</src>"),
             readFile(ws + "/img.xml").constData());
    QVERIFY2(readFile(ws + "/config.js").contains("photo.png"), readFile(ws + "/config.js").constData());
    closeByCloseBox(s, "Apply");
    QCOMPARE(s.controller->closeMode(), 1);

    // The next opening shows the image.
    Session again = open(ws);
    QVERIFY(again.window);
    QCOMPARE(again.text("txtFile"), QStringLiteral("photo.png"));
    again.click("btnCancel");
}

// With the Link choice and no link, the book has no image: not in the description, the preview
// or the published files, whatever file was chosen before.
void TestSettingsWindow::linkChoiceWithoutLinkShowsAndShipsNoImage()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    writeFile(ws + "/pic.png", QByteArray("\x89PNG\r\n\x1a\n", 8));
    QByteArray xml = readFile(ws + "/img.xml");
    xml.replace("<src type=\"file\"></src>", "<src type=\"file\">pic.png</src>");
    writeFile(ws + "/img.xml", xml);
    Session s = open(ws);
    QVERIFY(s.window);
    QCOMPARE(s.text("txtFile"), QStringLiteral("pic.png"));
    auto *link = s.find<QRadioButton>("rdoLink");
    QVERIFY(link);
    // On the button's circle: a wide radio button takes clicks on its circle and text only.
    QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(8, link->height() / 2));
    QVERIFY(link->isChecked());
    QVERIFY2(readFile(ws + "/img.xml").contains("<src type=\"file\"/>"),
             readFile(ws + "/img.xml").constData());
    QVERIFY(!readFile(ws + "/config.js").contains("pic.png"));
    s.click("btnOK");
    QCOMPARE(readFile(ws + "/files"), QByteArray());
    QVERIFY(!QFileInfo::exists(ws + "/pic.png"));
}

void TestSettingsWindow::defaultRestoresTheBundlesPosition()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    s.type("txtLeft", "77");
    s.type("txtTransparency", "50");
    const QByteArray xml = readFile(ws + "/img.xml");
    s.click("btnDefault");
    QCOMPARE(s.text("txtLeft"), QStringLiteral("10.0"));
    QCOMPARE(s.text("txtTop"), QStringLiteral("26.0"));
    QCOMPARE(s.text("txtRight"), QStringLiteral("60.0"));
    QCOMPARE(s.text("txtBottom"), QStringLiteral("26.0"));
    QCOMPARE(s.text("txtTransparency"), QStringLiteral("0.0"));
    QCOMPARE(s.find<QSlider>("sldTrans")->value(), 0);
    QCOMPARE(readFile(ws + "/settings.dat"), kBundleDefaults);
    QCOMPARE(readFile(ws + "/img.xml"), xml); // the private setting stays
    s.click("btnCancel");
}

void TestSettingsWindow::defaultFallsBackToTheWorkspaceDefaults()
{
    QTemporaryDir tmp;
    const QString bundle = tmp.filePath("img.bundle");
    QVERIFY(QDir().mkpath(bundle));
    QVERIFY(QProcess::execute("cp", {"-R", bundleDir() + "/Contents", bundle}) == 0);
    QVERIFY(QFile::remove(bundle + "/Contents/Resources/data/defaultsettings.dat"));
    const QString ws = tmp.filePath("ws");
    writeFile(ws + "/defaultsettings.dat", "5.0\n6.0\n7.0\n8.0\n50.0\n0");
    writeFile(ws + "/settings.dat", "1.0\n2.0\n3.0\n4.0\n0.0\n1");
    Session s = open(ws, bundle);
    QVERIFY(s.window);
    QCOMPARE(s.text("txtLeft"), QStringLiteral("1.0"));
    s.click("btnDefault");
    QCOMPARE(s.text("txtLeft"), QStringLiteral("5.0"));
    QCOMPARE(s.text("txtTransparency"), QStringLiteral("50.0"));
    QVERIFY(s.find<QRadioButton>("radLayerBelow")->isChecked());
    QCOMPARE(readFile(ws + "/settings.dat"), QByteArray("5.0\n6.0\n7.0\n8.0\n50.0\n0"));
    s.click("btnCancel");
}

void TestSettingsWindow::defaultWithoutDefaultsFileChangesNothing()
{
    QTemporaryDir tmp;
    const QString bundle = tmp.filePath("img.bundle");
    QVERIFY(QDir().mkpath(bundle));
    QVERIFY(QProcess::execute("cp", {"-R", bundleDir() + "/Contents", bundle}) == 0);
    QVERIFY(QFile::remove(bundle + "/Contents/Resources/data/defaultsettings.dat"));
    const QString ws = tmp.filePath("ws");
    writeFile(ws + "/settings.dat", "1.0\n2.0\n3.0\n4.0\n9.0\n1");
    Session s = open(ws, bundle);
    QVERIFY(s.window);
    QVERIFY(!QFileInfo::exists(ws + "/defaultsettings.dat"));
    const Tree before = TreeSnapshot::take(ws);
    WindowDriver::StdoutCapture capture;
    s.click("btnDefault");
    const QByteArray out = capture.text();
    QCOMPARE(out, QByteArray("defaultsettings.dat not found!\n"));
    QCOMPARE(s.text("txtLeft"), QStringLiteral("1.0"));
    QCOMPARE(s.text("txtTransparency"), QStringLiteral("9.0"));
    QCOMPARE(TreeSnapshot::take(ws), before);
    s.click("btnCancel");
}

// ---- unusual workspaces

void TestSettingsWindow::firstRunBuildsTheWorkspace()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("deep/er/ws");
    Session s = open(ws);
    QVERIFY(s.window);
    QVERIFY(QFileInfo::exists(ws + "/index.html"));
    QVERIFY(QFileInfo::exists(ws + "/img.xml"));
    QCOMPARE(readFile(ws + "/defaultsettings.dat"), kBundleDefaults);
    QVERIFY(!QFileInfo::exists(ws + "/settings.dat"));
    QCOMPARE(s.text("txtLeft"), QStringLiteral("10.0"));
    QCOMPARE(s.text("txtTop"), QStringLiteral("26.0"));
    QCOMPARE(s.text("txtRight"), QStringLiteral("60.0"));
    QCOMPARE(s.text("txtBottom"), QStringLiteral("26.0"));
    QCOMPARE(s.text("txtTransparency"), QStringLiteral("0.0"));
    QVERIFY(s.find<QRadioButton>("radLayerAbove")->isChecked());
    QCOMPARE(s.window->windowTitle(), QStringLiteral("Plugin Settings - Image Plugin"));
    const Tree opening = TreeSnapshot::take(ws);
    s.type("txtLeft", "20");
    s.click("btnCancel");
    QCOMPARE(TreeSnapshot::take(ws), opening);
}

void TestSettingsWindow::firstRunWithoutWorkspaceUsesThePluginSaveFolder()
{
    const QString expected = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                             "/Kelvara/quillamy_resource/Plugin/Save/img";
    QDir(expected).removeRecursively();
    Session s = open(QString());
    QVERIFY(s.window);
    QCOMPARE(s.controller->workSpace(), expected);
    QVERIFY(QFileInfo::exists(expected + "/img.xml"));
    s.click("btnCancel");
    QCOMPARE(s.controller->closeMode(), 0);
}

void TestSettingsWindow::damagedImgXmlStillOpensAndOKRepairsIt()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    writeFile(ws + "/img.xml", "<info><properties><extended><src type=\"file\">pic");
    Session s = open(ws);
    QVERIFY(s.window);
    QCOMPARE(s.text("txtLeft"), QStringLiteral("10.0"));
    s.type("txtLeft", "12");
    QCOMPARE(settingsLine(ws, 0), QByteArray("12.0"));
    s.click("btnOK");
    QCOMPARE(s.controller->closeMode(), 1);
    QDomDocument doc;
    QVERIFY2(bool(doc.setContent(readFile(ws + "/img.xml"))),
             readFile(ws + "/img.xml").constData());
    QVERIFY(QFileInfo::exists(ws + "/bookPlugin.js"));
}

void TestSettingsWindow::damagedSettingsFileLoadsAsZeros_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("fields"); // left, top, right, bottom, transparency
    const QStringList zeros{"0.0", "0.0", "0.0", "0.0", "0.0"};
    QTest::newRow("binary bytes") << QByteArray("\x00\xff\xfe\x01\x02garbage", 12) << zeros;
    QTest::newRow("empty file") << QByteArray() << zeros;
    QTest::newRow("five lines") << QByteArray("1\n2\n3\n4\n5") << zeros;
    QTest::newRow("letters in a margin line read 0")
        << QByteArray("abc\n2\n3\n4\n5\n1") << QStringList{"0.0", "2.0", "3.0", "4.0", "5.0"};
    QTest::newRow("windows line ends read the same")
        << QByteArray("10.0\r\n20.0\r\n30.0\r\n15.0\r\n0.0\r\n1")
        << QStringList{"10.0", "20.0", "30.0", "15.0", "0.0"};
    QTest::newRow("a seventh line is ignored")
        << QByteArray("1\n2\n3\n4\n5\n1\n99") << QStringList{"1.0", "2.0", "3.0", "4.0", "5.0"};
}

void TestSettingsWindow::damagedSettingsFileLoadsAsZeros()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, fields);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    writeFile(ws + "/settings.dat", content);
    const Tree opening = TreeSnapshot::take(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    QCOMPARE((QStringList{s.text("txtLeft"), s.text("txtTop"), s.text("txtRight"),
                          s.text("txtBottom"), s.text("txtTransparency")}),
             fields);
    s.click("btnCancel");
    // The preview script older than the edited position file was written anew while the window
    // opened, before its backup, so that the first preview showed this position; Cancel keeps it.
    Tree closed = TreeSnapshot::take(ws);
    QVERIFY(closed.take("config.js").startsWith("\xEF\xBB\xBFvar config={"));
    Tree before = opening;
    before.remove("config.js");
    QCOMPARE(closed, before);
}

void TestSettingsWindow::hostEndsTheWindowWithoutAsking_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("0 restores the opening state, as Cancel") << 0;
    QTest::newRow("1 keeps the state saved live, as the close box answered Apply") << 1;
}

void TestSettingsWindow::hostEndsTheWindowWithoutAsking()
{
    QFETCH(int, mode);
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    const Tree opening = TreeSnapshot::take(ws);
    Session s = open(ws);
    QVERIFY(s.window);
    s.type("txtTop", "7");
    const Tree edited = TreeSnapshot::take(ws);
    QVERIFY(edited != opening);
    QSignalSpy finished(s.window, &QDialog::finished);
    WindowDriver::AlertAnswerer answerer("Cancel");
    s.controller->endWindow(mode);
    QVERIFY(!answerer.answered());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toInt(), mode);
    QCOMPARE(s.controller->closeMode(), mode);
    QCOMPARE(s.controller->isCloseBundle(), true);
    QCOMPARE(TreeSnapshot::take(ws), mode == 1 ? edited : opening);
    QVERIFY(!QFileInfo::exists(ws + "/bookPlugin.js"));
    // A closed window stays closed.
    s.controller->endWindow(1 - mode);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(s.controller->closeMode(), mode);
}

void TestSettingsWindow::deletingTheControllerDiscardsAnOpenWindow()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    const Tree opening = TreeSnapshot::take(ws);
    const QStringList tempBefore =
        QDir::temp().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    {
        Session s = open(ws);
        QVERIFY(s.window);
        s.type("txtRight", "3");
        QVERIFY(TreeSnapshot::take(ws) != opening);
        WindowDriver::AlertAnswerer answerer("Cancel");
        s.controller.reset();
        QVERIFY(!answerer.answered());
    }
    QCOMPARE(TreeSnapshot::take(ws), opening);
    // No backup is left behind.
    QTRY_COMPARE(QDir::temp().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 tempBefore);
}

void TestSettingsWindow::closedHandlerHearsEveryClose_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<int>("code");
    QTest::newRow("OK button") << "btnOK" << 1;
    QTest::newRow("Cancel button") << "btnCancel" << 0;
    QTest::newRow("host applies") << "end 1" << 1;
    QTest::newRow("host discards") << "end 0" << 0;
    QTest::newRow("host deletes the controller") << "delete" << 0;
}

void TestSettingsWindow::closedHandlerHearsEveryClose()
{
    QFETCH(QString, how);
    QFETCH(int, code);
    QTemporaryDir tmp;
    Session s = open(tmp.filePath("ws"));
    QVERIFY(s.window);
    QList<int> heard;
    s.controller->setClosedHandler([&heard](int closeMode) { heard << closeMode; });
    if (how.startsWith("btn"))
        s.click(qPrintable(how));
    else if (how == "delete")
        s.controller.reset();
    else
        s.controller->endWindow(how.back().digitValue());
    QCOMPARE(heard, QList<int>{code});
}

void TestSettingsWindow::unwritableWorkspaceIsReported()
{
    QTemporaryDir tmp;
    // A file stands where the workspace's folder should be made.
    writeFile(tmp.filePath("blocked"), "a file, not a folder");
    const QString ws = tmp.filePath("blocked/ws");
    WindowDriver::AlertAnswerer answerer("OK");
    Session s = open(ws);
    QVERIFY(s.window);
    QTRY_VERIFY(answerer.answered());
    QCOMPARE(answerer.alertText(), QStringLiteral("The workspace could not be created."));
    QVERIFY(s.controller->problems() & ImgSettingsController::WorkspaceUnavailable);
    QCOMPARE(readFile(tmp.filePath("blocked")), QByteArray("a file, not a folder"));
    s.click("btnCancel");
    QCOMPARE(s.controller->closeMode(), 0);
}

void TestSettingsWindow::missingBackupIsReported()
{
    QTemporaryDir tmp;
    const QString ws = tmp.filePath("ws");
    prepareWorkspace(ws);
    const QByteArray temp = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(tmp.filePath("no-such-folder")));
    WindowDriver::AlertAnswerer answerer("OK");
    Session s = open(ws);
    qputenv("TMPDIR", temp);
    QVERIFY(s.window);
    QTRY_VERIFY(answerer.answered());
    QCOMPARE(answerer.alertText(), QStringLiteral("The workspace could not be backed up."));
    QCOMPARE(s.controller->problems(), int(ImgSettingsController::BackupUnavailable));
    s.controller->endWindow(0);
    QCOMPARE(s.controller->isCloseBundle(), true);
}

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestSettingsWindow suite;
    return QTest::qExec(&suite, argc, argv);
}

#include "tst_settingswindow.moc"
