// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The settings window controller in-process: creation, the shared position record, the slider's
// precision, the layer choice, and saving without a workspace.

#include "bundlepaths.h"
#include "imagedroptarget.h"
#include "localisation.h"
#include "pluginsettingsdelegate.h"
#include "positionview.h"
#include "privateview.h"
#include "roommark.h"
#include "settingsbackup.h"
#include "testenv.h"
#include "treesnapshot.h"
#include "veleditview.h"
#include "workspacewriter.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QSet>
#include <QSlider>
#include <QTemporaryDir>
#include <QtTest>

using TreeSnapshot::readFile;
using TreeSnapshot::writeFile;

class TestPluginSettingsDelegate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void nullArgumentsKeepTheLanguageAndUseTheMainBundle();
    void bundleWithoutWindowDescriptionCreatesNothing();
    void languageWithoutItsOwnDescriptionUsesEnglish_data();
    void languageWithoutItsOwnDescriptionUsesEnglish();
    void loadingMakesAPrivateBackupNamedByTheTime();
    void modalModeIsStored();
    void recordIsTheCanvasesOwnAfterLoading();
    void sliderStoresTheUnroundedValue();
    void unknownLayerLeavesTheChoice();
    void saveWithoutWorkspaceFolderWritesNothingButMarksThePreview();
    void loadWithoutWorkspaceCreatesNoCanvas();
    void timerTickConsumesTheChange();
    void timerTicksInsideAModalRun();
    void timerFollowsTheRunLoopMode_data();
    void timerFollowsTheRunLoopMode();
    void canvasSpeaksTheWindowsLanguage_data();
    void canvasSpeaksTheWindowsLanguage();
    void destroyingAnOpenWindowIsSafe();
    void brokenWindowDescriptionGivesNoWindow();
    void layerLineIsReadAsAnInteger();
    void saveReplacesAnEditedPreviewPage();
    void missingPrivateViewDescriptionStillCloses();
    void vanishedWorkspaceWritesNothingAndCancelRestores();
    void dragStepTouchesOnlyTheFieldsThatChange_data();
    void dragStepTouchesOnlyTheFieldsThatChange();
    void dragSnappedToTheCentreSavesEqualMargins();
    void dragStepsShowTheMarginsAndSaveThemOnRelease();
    void numberFieldsSkipShapingAndKeepTheWindowsFont();
    void chosenImageShowsOnTheCanvas();
    void fitToImageIsSavedLikeAnyEdit();
    void marginsWithoutRoomAreMarkedAndStillSaved_data();
    void marginsWithoutRoomAreMarkedAndStillSaved();
    void droppedImageFileIsTakenAsBrowseTakesIt();
    void droppedLinkFillsTheLinkField_data();
    void droppedLinkFillsTheLinkField();
    void refusedDropsShowWhyAndChangeNothing_data();
    void refusedDropsShowWhyAndChangeNothing();
    void pastedLinkFillsTheLinkField();

private:
    static QString bundle() { return QStringLiteral(IMG_BUNDLE_DIR); }
    // A copy of the bundle's resources that a test may break.
    QString copyOfBundle(const QString &name)
    {
        const QString copy = m_tmp.filePath(name);
        QDir().mkpath(copy);
        if (QProcess::execute("cp", {"-R", bundle() + "/Contents", copy}) != 0)
            return QString();
        return copy;
    }
    QTemporaryDir m_tmp;
};

void TestPluginSettingsDelegate::initTestCase()
{
    TestEnv::isolate();
    TreeSnapshot::beforeRead() = &WorkspaceWriter::waitForAllWriters;
    QVERIFY(m_tmp.isValid());
}

void TestPluginSettingsDelegate::nullArgumentsKeepTheLanguageAndUseTheMainBundle()
{
    setDefaultLanguageCode(QStringLiteral("de"));
    PluginSettingsDelegate delegate{QString(), QString()};
    QCOMPARE(defaultLanguageCode(), QStringLiteral("de"));
    QCOMPARE(delegate.bundlePath(), BundlePaths::mainBundlePath());
    QCOMPARE(defaultBundlePath(), BundlePaths::mainBundlePath());
    // The test program's own folder holds no window description.
    QVERIFY(delegate.windowDescriptionPath().isEmpty());
    QVERIFY(!PluginSettingsDelegate::create(QString(), QString()));
    setDefaultLanguageCode(QStringLiteral("en"));
}

void TestPluginSettingsDelegate::bundleWithoutWindowDescriptionCreatesNothing()
{
    const QString empty = m_tmp.filePath("empty.bundle");
    QDir().mkpath(empty + "/Contents/Resources/en.lproj");
    const QDir temp(QDir::tempPath());
    const QStringList before = temp.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QVERIFY(!PluginSettingsDelegate::create(QStringLiteral("en"), empty));
    QCOMPARE(temp.entryList(QDir::Dirs | QDir::NoDotAndDotDot), before); // no backup folder left
}

void TestPluginSettingsDelegate::languageWithoutItsOwnDescriptionUsesEnglish_data()
{
    QTest::addColumn<QString>("language"); // "<unset>": no language code at all
    QTest::addColumn<bool>("englishOnly"); // a bundle whose de.lproj lacks the description
    QTest::addColumn<QString>("folder");
    QTest::newRow("German description present") << "de" << false << "de.lproj";
    QTest::newRow("German folder without the description uses English")
        << "de" << true << "en.lproj";
    QTest::newRow("Swedish falls back to English") << "sv" << false << "en.lproj";
    QTest::newRow("no language code tries English first") << "<unset>" << false << "en.lproj";
}

void TestPluginSettingsDelegate::languageWithoutItsOwnDescriptionUsesEnglish()
{
    QFETCH(QString, language);
    QFETCH(bool, englishOnly);
    QFETCH(QString, folder);
    QString bundlePath = bundle();
    if (englishOnly) {
        bundlePath = m_tmp.filePath("english-only.bundle");
        QDir().mkpath(bundlePath + "/Contents/Resources/de.lproj");
        QDir().mkpath(bundlePath + "/Contents/Resources/en.lproj");
        QFile::copy(bundle() + "/Contents/Resources/en.lproj/PluginSettingsDelegate.ui",
                    bundlePath + "/Contents/Resources/en.lproj/PluginSettingsDelegate.ui");
    }
    if (language == "<unset>") {
        setDefaultLanguageCode(QString());
        language = QString();
    }
    auto delegate = PluginSettingsDelegate::create(language, bundlePath);
    QVERIFY(delegate);
    QCOMPARE(delegate->windowDescriptionPath(),
             bundlePath + "/Contents/Resources/" + folder + "/PluginSettingsDelegate.ui");
    setDefaultLanguageCode(QStringLiteral("en"));
}

void TestPluginSettingsDelegate::loadingMakesAPrivateBackupNamedByTheTime()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    QVERIFY(delegate->backupSettingPath().isEmpty()); // the workspace is not known yet
    const QString ws = m_tmp.filePath("private-backup");
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    const QString backup = delegate->backupSettingPath();
    QCOMPARE(QFileInfo(backup).path(), QDir::tempPath());
    QVERIFY(QRegularExpression("^\\d+\\.\\d{6}$").match(QFileInfo(backup).fileName()).hasMatch());
    QVERIFY(QFileInfo(backup).isDir());
    QVERIFY(!QFileInfo(backup).isSymLink());
    QCOMPARE(QFileInfo(backup).permissions() & 0x7777,
             QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                 QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser);
    QCOMPARE(TreeSnapshot::readFile(backup + "/owner"), QFile::encodeName(ws));
    QVERIFY(delegate->backup()->waitForFinished(10000));
    QCOMPARE(delegate->backup()->state(), SettingsBackup::State::Complete);
    delegate->onCancel();
    QVERIFY(!QFileInfo::exists(backup));
}

void TestPluginSettingsDelegate::modalModeIsStored()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    QCOMPARE(delegate->isModalMode(), false);
    delegate->setModalMode(true);
    QCOMPARE(delegate->isModalMode(), true);
    delegate->setIsModalMode(false);
    QCOMPARE(delegate->isModalMode(), false);
}

void TestPluginSettingsDelegate::recordIsTheCanvasesOwnAfterLoading()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(m_tmp.filePath("record"));
    QVERIFY(delegate->window());
    QVERIFY(delegate->positionView());
    QCOMPARE(&delegate->position(), delegate->positionView()->positionRect());
    // A field edit writes straight into the canvas's record.
    auto *left = delegate->window()->findChild<QLineEdit *>("txtLeft");
    left->setFocus();
    left->selectAll();
    QTest::keyClicks(left, "33");
    QCOMPARE(delegate->positionView()->positionRect()->left(), 33.0f);
    delegate->onCancel();
}

void TestPluginSettingsDelegate::sliderStoresTheUnroundedValue()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    const QString ws = m_tmp.filePath("slider");
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    auto *slider = delegate->window()->findChild<QSlider *>("sldTrans");
    slider->setValue(3726);
    QCOMPARE(delegate->position().transparency(), 37.26f);
    QCOMPARE(delegate->window()->findChild<QLineEdit *>("txtTransparency")->text(),
             QStringLiteral("37.3"));
    QCOMPARE(readFile(ws + "/settings.dat").split('\n').value(4), QByteArray("37.3"));
    delegate->onCancel();
}

void TestPluginSettingsDelegate::unknownLayerLeavesTheChoice()
{
    const QString ws = m_tmp.filePath("layer");
    writeFile(ws + "/settings.dat", "1.0\n2.0\n3.0\n4.0\n5.0\n7");
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    QVERIFY(delegate->window()->findChild<QAbstractButton *>("radLayerAbove")->isChecked());
    // The opening save reads the layer back from the choice.
    QCOMPARE(delegate->position().layer(), 1);
    delegate->saveGlobalSettings();
    QCOMPARE(readFile(ws + "/settings.dat"), QByteArray("1.0\n2.0\n3.0\n4.0\n5.0\n1"));
    delegate->onCancel();
    QCOMPARE(readFile(ws + "/settings.dat"), QByteArray("1.0\n2.0\n3.0\n4.0\n5.0\n7"));
}

void TestPluginSettingsDelegate::saveWithoutWorkspaceFolderWritesNothingButMarksThePreview()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    const QString ws = m_tmp.filePath("never-made");
    delegate->setWorkSpace(ws);
    delegate->setChanged(false);
    delegate->saveGlobalSettings();
    QVERIFY(!QFileInfo::exists(ws));
    QCOMPARE(delegate->isChanged(), true);
}

void TestPluginSettingsDelegate::loadWithoutWorkspaceCreatesNoCanvas()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->loadSettings();
    QVERIFY(!delegate->positionView());
    QCOMPARE(delegate->position().left(), 0.0f);
}

void TestPluginSettingsDelegate::timerTickConsumesTheChange()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(m_tmp.filePath("timer"));
    QVERIFY(delegate->window());
    QCOMPARE(delegate->isChanged(), true); // the first tick loads the preview
    QTRY_COMPARE_WITH_TIMEOUT(delegate->isChanged(), false, 2000);
    delegate->saveGlobalSettings();
    QCOMPARE(delegate->isChanged(), true);
    QTRY_COMPARE_WITH_TIMEOUT(delegate->isChanged(), false, 2000);
    delegate->onCancel();
    delegate->setChanged(true);
    QTest::qWait(700); // the timer stopped with the window
    QCOMPARE(delegate->isChanged(), true);
}

void TestPluginSettingsDelegate::timerTicksInsideAModalRun()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setModalMode(true);
    delegate->setWorkSpace(m_tmp.filePath("modal"));
    QDialog *window = delegate->window();
    QVERIFY(window);
    bool consumedInside = false;
    QTimer probe;
    probe.setInterval(50);
    connect(&probe, &QTimer::timeout, window, [&] {
        if (!delegate->isChanged()) {
            consumedInside = true;
            delegate->onCancel();
        }
    });
    probe.start();
    QTimer::singleShot(5000, window, [&] { delegate->onCancel(); }); // never hang the suite
    QCOMPARE(window->exec(), 0);
    QVERIFY(consumedInside);
}

void TestPluginSettingsDelegate::timerFollowsTheRunLoopMode_data()
{
    QTest::addColumn<bool>("modalMode");
    QTest::addColumn<bool>("runModally");
    QTest::addColumn<bool>("alertUp");
    QTest::addColumn<bool>("ticks");
    QTest::newRow("modal mode ticks inside the window's modal run")
        << true << true << false << true;
    QTest::newRow("modal mode ticks under an alert within the modal run")
        << true << true << true << true;
    QTest::newRow("modal mode is silent while no modal run holds the window")
        << true << false << false << false;
    QTest::newRow("modeless window ticks while nothing modal is up")
        << false << false << false << true;
    QTest::newRow("modeless window is silent under an alert") << false << false << true << false;
}

void TestPluginSettingsDelegate::timerFollowsTheRunLoopMode()
{
    QFETCH(bool, modalMode);
    QFETCH(bool, runModally);
    QFETCH(bool, alertUp);
    QFETCH(bool, ticks);
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setModalMode(modalMode);
    delegate->setWorkSpace(m_tmp.filePath(QString::fromLatin1(QTest::currentDataTag())));
    QDialog *window = delegate->window();
    QVERIFY(window);
    QMessageBox alert;
    alert.setWindowModality(Qt::ApplicationModal);
    bool ticked = false;
    const auto watch = [&] {
        if (alertUp)
            alert.show();
        delegate->setChanged(true);
        QTest::qWait(1200); // more than three of the timer's intervals
        ticked = !delegate->isChanged();
        alert.hide();
        delegate->onCancel();
    };
    if (runModally) {
        QTimer::singleShot(0, window, watch);
        QCOMPARE(window->exec(), 0);
    } else {
        window->show();
        watch();
    }
    QCOMPARE(ticked, ticks);
}

void TestPluginSettingsDelegate::canvasSpeaksTheWindowsLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("fit"); // the canvas's context menu
    QTest::addColumn<QString>("undo");
    QTest::addColumn<QString>("redo");
    QTest::newRow("English") << "en"
                             << "Left 10 %, top 26 %, right 60.5 %, bottom 26 %"
                             << "Fit to image"
                             << "Undo"
                             << "Redo";
    QTest::newRow("German, with its decimal comma")
        << "de"
        << "Links 10 %, oben 26 %, rechts 60,5 %, unten 26 %"
        << "An Bild anpassen" << QString::fromUtf8("Rückgängig") << "Wiederholen";
    // Not a bare "Annuler": that is the Cancel button's text, which closes the window.
    QTest::newRow("French, undo distinct from the Cancel button")
        << "fr"
        << "Gauche 10 %, haut 26 %, droite 60,5 %, bas 26 %"
        << QString::fromUtf8("Ajuster à l’image") << "Annuler la modification"
        << QString::fromUtf8("Rétablir la modification");
    QTest::newRow("Japanese") << "ja" << QString::fromUtf8("左 10 %、上 26 %、右 60.5 %、下 26 %")
                              << QString::fromUtf8("画像に合わせる")
                              << QString::fromUtf8("元に戻す") << QString::fromUtf8("やり直し");
    QTest::newRow("Simplified Chinese")
        << "zh_CN" << QString::fromUtf8("左 10 %，上 26 %，右 60.5 %，下 26 %")
        << QString::fromUtf8("适合图像") << QString::fromUtf8("撤销") << QString::fromUtf8("重做");
}

void TestPluginSettingsDelegate::canvasSpeaksTheWindowsLanguage()
{
    QFETCH(QString, language);
    QFETCH(QString, value);
    QFETCH(QString, fit);
    QFETCH(QString, undo);
    QFETCH(QString, redo);
    const QString ws = m_tmp.filePath("spoken-" + language);
    QDir().mkpath(ws);
    writeFile(ws + "/settings.dat", "10.0\n26.0\n60.5\n26.0\n0.0\n1");
    // One strings table per process, as in a host; each row stands for a new host.
    resetAppStringTableForTesting();
    auto delegate = PluginSettingsDelegate::create(language, bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    QAccessibleInterface *canvas = QAccessible::queryAccessibleInterface(delegate->positionView());
    QVERIFY(canvas);
    QCOMPARE(canvas->role(), QAccessible::Canvas);
    QCOMPARE(canvas->text(QAccessible::Value), value);
    std::unique_ptr<QMenu> menu(delegate->positionView()->createContextMenu(nullptr));
    QCOMPARE(menu->findChild<QAction *>("actionFitToImage")->text(), fit);
    const QList<QAction *> entries = menu->actions();
    QVERIFY(entries.contains(delegate->undoAction()));
    QVERIFY(entries.contains(delegate->redoAction()));
    QCOMPARE(delegate->undoAction()->text(), undo);
    QCOMPARE(delegate->redoAction()->text(), redo);
    if (language == QLatin1String("fr"))
        QVERIFY(undo != delegate->window()->findChild<QPushButton *>("btnCancel")->text());
    delegate->onCancel();
    resetAppStringTableForTesting();
}

void TestPluginSettingsDelegate::destroyingAnOpenWindowIsSafe()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(m_tmp.filePath("open"));
    QPointer<QDialog> window = delegate->window();
    QVERIFY(window);
    window->show();
    delegate.reset();
    QVERIFY(window.isNull());
}

void TestPluginSettingsDelegate::layerLineIsReadAsAnInteger()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(m_tmp.filePath("layer-line"));
    QVERIFY(delegate->window());
    const QString file = m_tmp.filePath("layer-line.dat");
    writeFile(file, "1.0\n2.0\n3.0\n4.0\n5.0\n2.9");
    delegate->loadSettingFromFile(file);
    QCOMPARE(delegate->position().layer(), 2);
    writeFile(file, "1.0\n2.0\n3.0\n4.0\n5.0\n0");
    delegate->loadSettingFromFile(file);
    QCOMPARE(delegate->position().layer(), 0);
    QVERIFY(delegate->window()->findChild<QAbstractButton *>("radLayerBelow")->isChecked());
    delegate->onCancel();
}

void TestPluginSettingsDelegate::saveReplacesAnEditedPreviewPage()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    const QString ws = m_tmp.filePath("edited-page");
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    writeFile(ws + "/index.html", "<p>edited locally</p>");
    delegate->saveGlobalSettings();
    QCOMPARE(readFile(ws + "/index.html"),
             readFile(bundle() + "/Contents/Resources/html/index.html"));
    QVERIFY(readFile(ws + "/config.js").startsWith("\xEF\xBB\xBFvar config="));
    delegate->onCancel();
}

void TestPluginSettingsDelegate::brokenWindowDescriptionGivesNoWindow()
{
    const QString copy = copyOfBundle("broken-ui.bundle");
    QVERIFY(!copy.isEmpty());
    for (const char *lang : {"en", "de", "fr", "ja", "zh_CN"})
        writeFile(copy + "/Contents/Resources/" + QLatin1String(lang) +
                      ".lproj/PluginSettingsDelegate.ui",
                  "<ui><widget class=");
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), copy);
    QVERIFY(delegate); // the description exists; only loading it fails
    delegate->setWorkSpace(m_tmp.filePath("broken-ui"));
    QVERIFY(!delegate->window());
    QVERIFY(!delegate->window()); // asked again: still none, and no crash
}

void TestPluginSettingsDelegate::missingPrivateViewDescriptionStillCloses()
{
    const QString copy = copyOfBundle("no-private-view.bundle");
    QVERIFY(!copy.isEmpty());
    for (const char *lang : {"en", "de", "fr", "ja", "zh_CN"})
        QFile::remove(copy + "/Contents/Resources/" + QLatin1String(lang) +
                      ".lproj/PrivateView.ui");
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), copy);
    QVERIFY(delegate);
    const QString ws = m_tmp.filePath("no-private-view");
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    QVERIFY(!delegate->privateView());
    QVERIFY(delegate->positionView());
    // Nothing filled the workspace (the private view does that), so the position is all zeros
    // and nothing is written anywhere; the window still closes normally.
    QCOMPARE(delegate->window()->findChild<QLineEdit *>("txtLeft")->text(), QStringLiteral("0.0"));
    delegate->onOK();
    QCOMPARE(delegate->closeMode(), 1);
    QCOMPARE(delegate->isCloseBundle(), true);
    QVERIFY(!QFileInfo::exists(ws));
}

void TestPluginSettingsDelegate::vanishedWorkspaceWritesNothingAndCancelRestores()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    const QString ws = m_tmp.filePath("vanishing");
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    const TreeSnapshot::Tree opening = TreeSnapshot::take(ws);
    QVERIFY(!opening.isEmpty());
    // The image is taken in the background; what another program deletes before it is complete
    // may be missing from it.
    QVERIFY(delegate->backup()->waitForFinished(10000));
    QVERIFY(QDir(ws).removeRecursively());
    auto *left = delegate->window()->findChild<QLineEdit *>("txtLeft");
    left->setFocus();
    left->selectAll();
    QTest::keyClicks(left, "44");
    QCOMPARE(delegate->position().left(), 44.0f);
    QVERIFY(!QFileInfo::exists(ws));
    delegate->onCancel();
    QCOMPARE(TreeSnapshot::take(ws), opening);
}

void TestPluginSettingsDelegate::dragStepTouchesOnlyTheFieldsThatChange_data()
{
    QTest::addColumn<float>("left");
    QTest::addColumn<QString>("leftText");
    QTest::newRow("a step within the shown decimal keeps every field as it is") << 10.02f << "10.0";
    QTest::newRow("a step past it rewrites the left field alone") << 12.36f << "12.4";
}

// A field whose text stays is not set again: a selection or undo history in it survives the
// step, and no field repaints for nothing.
void TestPluginSettingsDelegate::dragStepTouchesOnlyTheFieldsThatChange()
{
    QFETCH(float, left);
    QFETCH(QString, leftText);
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(m_tmp.filePath("drag"));
    QDialog *window = delegate->window();
    QVERIFY(window);
    PositionRect *record = delegate->positionView()->positionRect();
    record->setLeft(10.0f);
    delegate->onChangePositionView();
    auto *leftField = window->findChild<QLineEdit *>("txtLeft");
    auto *topField = window->findChild<QLineEdit *>("txtTop");
    QCOMPARE(leftField->text(), QStringLiteral("10.0"));
    const QString topText = topField->text();
    topField->selectAll();
    leftField->selectAll();
    QSignalSpy leftChanges(leftField, &QLineEdit::textChanged);
    record->setLeft(left);
    delegate->onChangePositionView();
    const bool leftKept = leftText == QLatin1String("10.0");
    QCOMPARE(leftField->text(), leftText);
    QCOMPARE(leftChanges.count(), leftKept ? 0 : 1);
    QCOMPARE(leftField->hasSelectedText(), leftKept);
    QCOMPARE(topField->text(), topText);
    QVERIFY(topField->hasSelectedText());
    delegate->onCancel();
}

namespace {

// The box widget's pixel whose centre is the given canvas point (y up).
QPoint boxPixel(PositionView *canvas, QPointF canvasPoint)
{
    const QPointF down(canvasPoint.x(), canvas->height() - canvasPoint.y());
    return QPoint(int(std::floor(down.x())), int(std::floor(down.y()))) - canvas->editView()->pos();
}

// The window shown on a workspace whose "settings.dat" holds settings, its canvas drawn so that
// the edit box has its place. Null when any of that fails.
std::unique_ptr<PluginSettingsDelegate> openOnCanvas(const QString &ws, const QByteArray &settings)
{
    writeFile(ws + "/settings.dat", settings);
    auto delegate =
        PluginSettingsDelegate::create(QStringLiteral("en"), QStringLiteral(IMG_BUNDLE_DIR));
    if (!delegate)
        return nullptr;
    delegate->setWorkSpace(ws);
    QDialog *window = delegate->window();
    if (!window)
        return nullptr;
    window->show();
    if (!QTest::qWaitForWindowExposed(window))
        return nullptr;
    delegate->positionView()->repaint();
    if (!delegate->positionView()->editView()->isVisible())
        return nullptr;
    return delegate;
}

// A small picture file outside the workspace, as a user would choose it.
QString writePicture(const QString &path, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    return image.save(path, "PNG") ? path : QString();
}

} // namespace

// The whole path of a snapped drag: the box pulled onto the page's centre line, the fields, and
// on release "settings.dat" with left and right equal to the tenth.
void TestPluginSettingsDelegate::dragSnappedToTheCentreSavesEqualMargins()
{
    const QString ws = m_tmp.filePath("snap");
    auto delegate = openOnCanvas(ws, "21.3\n30.0\n40.0\n30.0\n0.0\n1");
    QVERIFY(delegate);
    QDialog *window = delegate->window();
    PositionView *canvas = delegate->positionView();
    VelEditView *box = canvas->editView();
    const QRectF frame = box->frame();
    // Within the 5-point reach: the box's centre ends 0.5 to 1.5 points from the page's.
    const qreal offCentre = canvas->width() / 2.0 - frame.center().x();
    const int pull = int(std::floor(offCentre)) + 1;
    QVERIFY(qAbs(pull - offCentre) <= 1.5);
    const QPointF inside = frame.center() + QPointF(0.5, 0.5);
    const QByteArray before = readFile(ws + "/settings.dat");
    QTest::mousePress(box, Qt::LeftButton, {}, boxPixel(canvas, inside));
    QTest::mouseMove(box, boxPixel(canvas, inside + QPointF(pull, 0)));
    QCOMPARE(box->frame().center().x(), canvas->width() / 2.0);
    auto *leftField = window->findChild<QLineEdit *>("txtLeft");
    auto *rightField = window->findChild<QLineEdit *>("txtRight");
    QCOMPARE(leftField->text(), rightField->text());
    QCOMPARE(readFile(ws + "/settings.dat"), before); // saved on release only
    QTest::mouseRelease(box, Qt::LeftButton, {}, boxPixel(canvas, inside + QPointF(pull, 0)));
    const QList<QByteArray> saved = readFile(ws + "/settings.dat").split('\n');
    QCOMPARE(saved.value(0), saved.value(2));
    QCOMPARE(saved.value(0), leftField->text().toUtf8());
    QCOMPARE(saved.value(1), QByteArray("30.0"));
    delegate->onCancel();
}

// The number fields are set on every drag step; they spare the text shaping that digits do not
// need, and still take their family and size from the window, also when the window's changes.
void TestPluginSettingsDelegate::numberFieldsSkipShapingAndKeepTheWindowsFont()
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(m_tmp.filePath("fonts"));
    QDialog *window = delegate->window();
    QFont larger = window->font();
    larger.setPointSize(larger.pointSize() + 7);
    window->setFont(larger);
    for (const char *name : {"txtLeft", "txtTop", "txtRight", "txtBottom", "txtTransparency"}) {
        auto *field = window->findChild<QLineEdit *>(name);
        QVERIFY2(field, name);
        QVERIFY2(field->font().styleStrategy() & QFont::PreferNoShaping, name);
        QCOMPARE(field->font().family(), larger.family());
        QCOMPARE(field->font().pointSize(), larger.pointSize());
    }
    delegate->onCancel();
}

// Every step of a drag shows the record's four margins in the fields exactly as the position file
// writes them, and the release saves the record in the file's own form, nothing before it.
void TestPluginSettingsDelegate::dragStepsShowTheMarginsAndSaveThemOnRelease()
{
    const QString ws = m_tmp.filePath("dragsteps");
    auto delegate = openOnCanvas(ws, "21.3\n30.0\n40.0\n30.0\n12.5\n1");
    QVERIFY(delegate);
    QDialog *window = delegate->window();
    PositionView *canvas = delegate->positionView();
    VelEditView *box = canvas->editView();
    const QList<QLineEdit *> fields = {
        window->findChild<QLineEdit *>("txtLeft"), window->findChild<QLineEdit *>("txtTop"),
        window->findChild<QLineEdit *>("txtRight"), window->findChild<QLineEdit *>("txtBottom")};
    const PositionRect *record = canvas->positionRect();
    const auto fileText = [](float value) {
        return QString::asprintf("%.1f", double(value));
    };
    const QByteArray before = readFile(ws + "/settings.dat");
    const QPoint start = box->mapTo(window, box->rect().center());
    QTest::mousePress(box, Qt::LeftButton, {}, box->mapFrom(window, start));
    QPoint pointer = start;
    QSet<QString> leftTexts;
    // Right and down one point a step, then back: the box keeps moving and the shown decimals
    // change on most steps.
    for (int step = 0; step < 60; ++step) {
        const int d = step < 30 ? step + 1 : 59 - step;
        pointer = start + QPoint(d, d / 2);
        QTest::mouseMove(box, box->mapFrom(window, pointer));
        const QList<float> margins = {record->left(), record->top(), record->right(),
                                      record->bottom()};
        for (int i = 0; i < fields.size(); ++i)
            QCOMPARE(fields[i]->text(), fileText(margins[i]));
        leftTexts.insert(fields[0]->text());
    }
    QVERIFY(leftTexts.size() > 10);
    QCOMPARE(readFile(ws + "/settings.dat"), before); // saved on release only
    QTest::mouseRelease(box, Qt::LeftButton, {}, box->mapFrom(window, pointer));
    const QByteArray saved = readFile(ws + "/settings.dat");
    QCOMPARE(saved, QString::asprintf("%.1f\n%.1f\n%.1f\n%.1f\n%.1f\n%i", double(record->left()),
                                      double(record->top()), double(record->right()),
                                      double(record->bottom()), double(record->transparency()),
                                      record->layer())
                        .toUtf8());
    const QList<QByteArray> lines = saved.split('\n');
    for (int i = 0; i < fields.size(); ++i)
        QCOMPARE(fields[i]->text().toUtf8(), lines.value(i));
    QCOMPARE(lines.value(4), QByteArray("12.5"));
    delegate->onCancel();
}

// The canvas shows what the image choice shows: a file chosen now, the same file when the window
// opens again, and a link's host once the link is chosen.
void TestPluginSettingsDelegate::chosenImageShowsOnTheCanvas()
{
    const QString ws = m_tmp.filePath("picture");
    QDir().mkpath(ws);
    const QString chosen = writePicture(m_tmp.filePath("photo.png"), QSize(64, 48));
    QVERIFY(!chosen.isEmpty());
    {
        auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
        QVERIFY(delegate);
        delegate->setWorkSpace(ws);
        QVERIFY(delegate->window());
        PositionView *canvas = delegate->positionView();
        QVERIFY(canvas->imageSize().isEmpty());
        delegate->privateView()->refreshLocateFile(chosen);
        QCOMPARE(canvas->imageSize(), QSize(64, 48));
        QCOMPARE(canvas->editView()->picture().size(), QSize(64, 48));
        QVERIFY(delegate->privateView()->onSave());
        delegate->onOK();
    }
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    PositionView *canvas = delegate->positionView();
    QCOMPARE(canvas->imageSize(), QSize(64, 48));
    QCOMPARE(canvas->pageProportions(), QSizeF(3, 4));

    PrivateView *choice = delegate->privateView();
    choice->mxtChoose()->button(PrivateView::LinkTag)->click();
    QVERIFY(canvas->imageSize().isEmpty());
    choice->txtLink()->setFocus();
    QTest::keyClicks(choice->txtLink(), "https://images.example.org/a.png");
    QCOMPARE(canvas->linkHost(), QStringLiteral("images.example.org"));
    QVERIFY(canvas->editView()->picture().isNull());
    delegate->onCancel();
}

void TestPluginSettingsDelegate::fitToImageIsSavedLikeAnyEdit()
{
    const QString ws = m_tmp.filePath("fit");
    writeFile(ws + "/settings.dat", "10.0\n10.0\n10.0\n10.0\n0.0\n1");
    const QString chosen = writePicture(m_tmp.filePath("wide.png"), QSize(80, 60));
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    delegate->privateView()->refreshLocateFile(chosen);
    delegate->positionView()->fitToImage();
    // 80 % of the 3:4 page's width is 45 % of its height for a 4:3 image.
    QCOMPARE(readFile(ws + "/settings.dat"), QByteArray("10.0\n10.0\n10.0\n45.0\n0.0\n1"));
    QCOMPARE(delegate->window()->findChild<QLineEdit *>("txtBottom")->text(),
             QStringLiteral("45.0"));
    delegate->onCancel();
    QCOMPARE(readFile(ws + "/settings.dat"), QByteArray("10.0\n10.0\n10.0\n10.0\n0.0\n1"));
}

void TestPluginSettingsDelegate::marginsWithoutRoomAreMarkedAndStillSaved_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("marked");
    QTest::addColumn<QByteArray>("saved");
    const QStringList across{"txtLeft", "txtRight"};
    const QStringList down{"txtTop", "txtBottom"};
    QTest::newRow("left 90 fills the width: left and right marked")
        << "txtLeft"
        << "90" << across << QByteArray("90.0\n10.0\n10.0\n10.0\n0.0\n1");
    QTest::newRow("right 95.5 overfills the width: left and right marked")
        << "txtRight"
        << "95.5" << across << QByteArray("10.0\n10.0\n95.5\n10.0\n0.0\n1");
    QTest::newRow("bottom 90 fills the height: top and bottom marked")
        << "txtBottom"
        << "90" << down << QByteArray("10.0\n10.0\n10.0\n90.0\n0.0\n1");
    QTest::newRow("left 89.9 leaves a tenth: nothing marked")
        << "txtLeft"
        << "89.9" << QStringList() << QByteArray("89.9\n10.0\n10.0\n10.0\n0.0\n1");
}

// Values that leave the image no room are typed and saved as any others; the pair's fields say
// why, and lose the mark, tooltip and palette included, once room comes back.
void TestPluginSettingsDelegate::marginsWithoutRoomAreMarkedAndStillSaved()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QStringList, marked);
    QFETCH(QByteArray, saved);
    const QString ws = m_tmp.filePath("room-" + field + typed);
    writeFile(ws + "/settings.dat", "10.0\n10.0\n10.0\n10.0\n0.0\n1");
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(ws);
    QDialog *window = delegate->window();
    QVERIFY(window);
    const QStringList fields{"txtLeft", "txtTop", "txtRight", "txtBottom"};
    QMap<QString, QString> plainTips;
    for (const QString &name : fields) {
        auto *edit = window->findChild<QLineEdit *>(name);
        QVERIFY(!RoomMark::isMarked(edit));
        plainTips[name] = edit->toolTip();
    }
    auto *edit = window->findChild<QLineEdit *>(field);
    const QString before = edit->text();
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, typed);
    QCOMPARE(edit->text(), typed); // nothing refused
    QCOMPARE(readFile(ws + "/settings.dat"), saved);

    const QColor plainBase = window->palette().color(QPalette::Base);
    for (const QString &name : fields) {
        auto *other = window->findChild<QLineEdit *>(name);
        const bool expected = marked.contains(name);
        QCOMPARE(RoomMark::isMarked(other), expected);
        QCOMPARE(other->palette().color(QPalette::Base) != plainBase, expected);
        if (expected)
            QVERIFY2(other->toolTip().contains("100 %"), qPrintable(other->toolTip()));
        else
            QCOMPARE(other->toolTip(), plainTips[name]);
    }

    edit->selectAll();
    QTest::keyClicks(edit, before);
    for (const QString &name : fields) {
        auto *other = window->findChild<QLineEdit *>(name);
        QVERIFY(!RoomMark::isMarked(other));
        QCOMPARE(other->toolTip(), plainTips[name]);
        QVERIFY(!other->testAttribute(Qt::WA_SetPalette));
    }
    QCOMPARE(readFile(ws + "/settings.dat"), QByteArray("10.0\n10.0\n10.0\n10.0\n0.0\n1"));
    delegate->onCancel();
}

namespace {

// Drags data from outside the window over widget and, when it is taken, moves it and drops it
// there; answers whether the drag was taken and the drop action the pointer showed. A drag that
// is refused on entering gets no moves, as with a real drag.
QPair<bool, Qt::DropAction> dragAndDrop(QWidget *widget, QMimeData *data)
{
    const QPoint at = widget->rect().center();
    const Qt::DropActions offered = Qt::CopyAction | Qt::LinkAction;
    QDragEnterEvent enter(at, offered, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &enter);
    if (!enter.isAccepted())
        return {false, enter.dropAction()};
    QDragMoveEvent move(at, offered, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
    QDropEvent drop(QPointF(at), offered, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &drop);
    return {drop.isAccepted(), drop.dropAction()};
}

QMimeData *urlData(const QUrl &url)
{
    auto *data = new QMimeData;
    data->setUrls({url});
    return data;
}

} // namespace

// A file dropped from a file manager, even with the link chosen, ends as a file confirmed in the
// image chooser does: the same copy in the workspace, the older file of that name kept aside.
void TestPluginSettingsDelegate::droppedImageFileIsTakenAsBrowseTakesIt()
{
    const QString chosen = writePicture(m_tmp.filePath("dropped.png"), QSize(40, 30));
    QVERIFY(!chosen.isEmpty());
    QMap<QString, TreeSnapshot::Tree> trees;
    for (const QString way : {"drop", "browse"}) {
        const QString ws = m_tmp.filePath("take-" + way);
        writeFile(ws + "/dropped.png", "an older file of the same name");
        auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
        QVERIFY(delegate);
        delegate->setWorkSpace(ws);
        QDialog *window = delegate->window();
        QVERIFY(window);
        PrivateView *choice = delegate->privateView();
        QSignalSpy refreshed(choice, &PrivateView::locateFileRefreshed);
        if (way == "drop") {
            choice->mxtChoose()->button(PrivateView::LinkTag)->click();
            std::unique_ptr<QMimeData> data(urlData(QUrl::fromLocalFile(chosen)));
            data->setText(chosen); // file managers add the path as text
            const auto [taken, action] = dragAndDrop(window, data.get());
            QVERIFY(taken);
            QCOMPARE(action, Qt::CopyAction);
            QVERIFY(delegate->dropTarget()->lastRefusal().isEmpty());
        } else {
            choice->refreshLocateFile(chosen); // where the image chooser's answer arrives
        }
        QCOMPARE(refreshed.size(), 1);
        QCOMPARE(refreshed.first().value(0).toString(), chosen);
        QCOMPARE(choice->selectedTag(), int(PrivateView::FileTag));
        QVERIFY(choice->btnBrowse()->isEnabled());
        QCOMPARE(choice->txtFile()->text(), QStringLiteral("dropped.png"));
        QCOMPARE(choice->locateFiles(), QStringList{"dropped.png"});
        QCOMPARE(delegate->positionView()->imageSize(), QSize(40, 30));
        QCOMPARE(readFile(ws + "/dropped.png"), readFile(chosen));
        TreeSnapshot::Tree tree = TreeSnapshot::take(ws);
        // The older file's time-stamp name differs from run to run; its bytes must not.
        for (auto it = tree.begin(); it != tree.end();) {
            if (QRegularExpression("^\\d+\\.\\d{6}$").match(it.key()).hasMatch()) {
                tree.insert("<time stamp>", it.value());
                it = tree.erase(it);
            } else {
                ++it;
            }
        }
        trees[way] = tree;
        delegate->onCancel();
    }
    QCOMPARE(trees["drop"].value("<time stamp>"), QByteArray("an older file of the same name"));
    QCOMPARE(trees["drop"].keys(), trees["browse"].keys());
    QCOMPARE(trees["drop"], trees["browse"]);
}

void TestPluginSettingsDelegate::droppedLinkFillsTheLinkField_data()
{
    QTest::addColumn<QString>("onto"); // the widget that gets the drop
    QTest::addColumn<bool>("asText");
    QTest::newRow("https link from a browser onto the window") << "" << false;
    QTest::newRow("https link as text onto the window") << "" << true;
    QTest::newRow("https link onto a margin field goes to the link field") << "txtLeft" << false;
    QTest::newRow("https link onto a field made after the window opened") << "lateField" << false;
}

void TestPluginSettingsDelegate::droppedLinkFillsTheLinkField()
{
    QFETCH(QString, onto);
    QFETCH(bool, asText);
    const QString ws = m_tmp.filePath("droplink-" + onto + QString::number(asText));
    writeFile(ws + "/settings.dat", "10.0\n10.0\n10.0\n10.0\n0.0\n1");
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(ws);
    QDialog *window = delegate->window();
    QVERIFY(window);
    const QString link = "https://images.example.org/dropped.png";
    auto data = std::make_unique<QMimeData>();
    if (asText)
        data->setText(link);
    else
        data->setUrls({QUrl(link)});
    if (onto == "lateField") {
        // As the preview makes the widget that shows its page, inside a widget taking drops.
        auto *late = new QLineEdit(window->findChild<QWidget *>("txtTop"));
        late->setObjectName(onto);
    }
    QWidget *target = onto.isEmpty() ? window : window->findChild<QWidget *>(onto);
    QVERIFY(target);
    const auto [taken, action] = dragAndDrop(target, data.get());
    QVERIFY(taken);
    QCOMPARE(action, Qt::CopyAction);
    PrivateView *choice = delegate->privateView();
    QCOMPARE(choice->selectedTag(), int(PrivateView::LinkTag));
    QCOMPARE(choice->txtLink()->text(), link);
    QVERIFY(!choice->txtLink()->isReadOnly());
    QCOMPARE(delegate->positionView()->linkHost(), QStringLiteral("images.example.org"));
    // Saved as a typed link is.
    QVERIFY(readFile(ws + "/img.xml").contains(link.toUtf8()));
    QCOMPARE(window->findChild<QLineEdit *>("txtLeft")->text(), QStringLiteral("10.0"));
    delegate->onCancel();
}

void TestPluginSettingsDelegate::refusedDropsShowWhyAndChangeNothing_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("why");
    QTest::newRow("text file")
        << "txt"
        << "Only JPEG, GIF and PNG image files (.jpg, .jpeg, .gif, .png) can be used.";
    QTest::newRow("folder") << "folder"
                            << "A folder cannot be used: drop one image file.";
    QTest::newRow("ftp link") << "ftp"
                              << "Only http and https links can be used.";
    QTest::newRow("words") << "words"
                           << "Only an image file or an http or https link can be dropped here.";
}

// A refused drag shows the pointer that takes nothing and a tip saying why; neither the choice
// nor the workspace changes, and a drop that arrives all the same is refused too.
void TestPluginSettingsDelegate::refusedDropsShowWhyAndChangeNothing()
{
    QFETCH(QString, kind);
    QFETCH(QString, why);
    const QString ws = m_tmp.filePath("refuse-" + kind);
    writeFile(ws + "/settings.dat", "10.0\n10.0\n10.0\n10.0\n0.0\n1");
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(ws);
    QDialog *window = delegate->window();
    QVERIFY(window);
    PrivateView *choice = delegate->privateView();
    QVERIFY(choice->onSave());
    const TreeSnapshot::Tree before = TreeSnapshot::take(ws);

    auto data = std::make_unique<QMimeData>();
    if (kind == "txt") {
        writeFile(m_tmp.filePath("notes.txt"), "words");
        data->setUrls({QUrl::fromLocalFile(m_tmp.filePath("notes.txt"))});
    } else if (kind == "folder") {
        QDir().mkpath(m_tmp.filePath("album.png"));
        data->setUrls({QUrl::fromLocalFile(m_tmp.filePath("album.png"))});
    } else if (kind == "ftp") {
        data->setUrls({QUrl("ftp://example.org/a.png")});
    } else {
        data->setText("a picture of the sea");
    }
    const auto [taken, action] = dragAndDrop(window, data.get());
    QVERIFY(!taken);
    QCOMPARE(action, Qt::IgnoreAction);
    QCOMPARE(delegate->dropTarget()->lastRefusal(), why);

    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &drop);
    QVERIFY(!drop.isAccepted());
    QCOMPARE(delegate->dropTarget()->lastRefusal(), why);
    QCOMPARE(choice->selectedTag(), int(PrivateView::FileTag));
    QVERIFY(choice->txtFile()->text().isEmpty());
    QVERIFY(choice->txtLink()->text().isEmpty());
    QCOMPARE(TreeSnapshot::take(ws), before);
    delegate->onCancel();
}

void TestPluginSettingsDelegate::pastedLinkFillsTheLinkField()
{
    const QString ws = m_tmp.filePath("paste");
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    QVERIFY(delegate);
    delegate->setWorkSpace(ws);
    QVERIFY(delegate->window());
    PrivateView *choice = delegate->privateView();

    QApplication::clipboard()->setText("ftp://example.org/no.png");
    delegate->dropTarget()->paste();
    QCOMPARE(delegate->dropTarget()->lastRefusal(),
             QStringLiteral("Only http and https links can be used."));
    QVERIFY(choice->txtLink()->text().isEmpty());

    const QString link = "http://example.org/pasted.gif";
    QApplication::clipboard()->setText(link);
    delegate->dropTarget()->paste();
    QVERIFY(delegate->dropTarget()->lastRefusal().isEmpty());
    QCOMPARE(choice->selectedTag(), int(PrivateView::LinkTag));
    QCOMPARE(choice->txtLink()->text(), link);
    QVERIFY(readFile(ws + "/img.xml").contains(link.toUtf8()));
    delegate->onCancel();
}

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestPluginSettingsDelegate suite;
    return QTest::qExec(&suite, argc, argv);
}

#include "tst_pluginsettingsdelegate.moc"
