// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The settings window and its backup: the question about a dead window's backup, the alerts when
// no backup can be made, and Cancel, OK and the close box with a backup still being taken.

#include "backuprecovery.h"
#include "localisation.h"
#include "modalanswer.h"
#include "pluginsettingsdelegate.h"
#include "settingsbackup.h"
#include "testenv.h"
#include "tmpfsmount.h"
#include "treestate.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

QString bundle()
{
    return QStringLiteral(IMG_BUNDLE_DIR);
}

// What the alerts of one stretch of a test said, in order, each answered with the button titled
// answer (or Return when none is).
struct AlertLog
{
    QStringList messages;
    QStringList informative;
    QList<QStringList> buttons;
};

void answerAlerts(const std::shared_ptr<AlertLog> &log, const QString &answer, int count)
{
    if (count <= 0)
        return;
    ModalAnswer::next([log, answer, count](QWidget *modal) {
        auto *box = qobject_cast<QMessageBox *>(modal);
        if (!box)
            return;
        log->messages << box->text();
        log->informative << box->informativeText();
        QStringList titles;
        QAbstractButton *chosen = nullptr;
        for (QAbstractButton *button : box->buttons()) {
            titles << button->text();
            if (button->text() == answer)
                chosen = button;
        }
        log->buttons << titles;
        answerAlerts(log, answer, count - 1);
        if (chosen)
            chosen->click();
        else
            QTest::keyClick(box, Qt::Key_Return);
    });
}

std::unique_ptr<PluginSettingsDelegate>
openWindow(const QString &ws,
           PluginSettingsDelegate::RecoveryAnswer answer = PluginSettingsDelegate::AskAuthor)
{
    auto delegate = PluginSettingsDelegate::create(QStringLiteral("en"), bundle());
    if (!delegate)
        return nullptr;
    delegate->setWorkSpace(ws);
    delegate->setRecoveryAnswer(answer);
    if (!delegate->window())
        return nullptr;
    return delegate;
}

void typeInto(QDialog *window, const char *field, const QString &text)
{
    auto *edit = window->findChild<QLineEdit *>(QString::fromLatin1(field));
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

} // namespace

class TestWindowBackup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void deadWindowsBackupIsOfferedOnce_data();
    void deadWindowsBackupIsOfferedOnce();
    void hostAnswersTheQuestion_data();
    void hostAnswersTheQuestion();
    void noBackupIsSaidAtOnceAndCancelUndoesNothing_data();
    void noBackupIsSaidAtOnceAndCancelUndoesNothing();
    void cancelRightAfterOpeningWaitsForTheImage();
    void backupWaitsForTheFirstPreview();
    void okDiscardsTheBackup();
    void staleSaveTemporariesGoAtOpening();
    void firstPreviewHasThePositionOfTheCanvas();

private:
    // A window that edited the workspace and died (its controller deleted without closing): the
    // workspace as it was before that window, and as the window left it.
    struct DeadWindow
    {
        TreeState::Tree before;
        TreeState::Tree left;
        QString backupPath;
    };
    DeadWindow leaveADeadWindow(const QString &ws);

    QTemporaryDir m_tmp;
    QByteArray m_tempDir;
};

void TestWindowBackup::initTestCase()
{
    TestEnv::isolate();
    m_tempDir = qgetenv("TMPDIR");
    setDefaultLanguageCode(QStringLiteral("en"));
}

void TestWindowBackup::cleanup()
{
    qputenv("TMPDIR", m_tempDir);
    BackupRecovery::waitForCleanUp();
}

TestWindowBackup::DeadWindow TestWindowBackup::leaveADeadWindow(const QString &ws)
{
    DeadWindow dead;
    {
        // The first window fills the workspace from the bundle; it closes normally.
        auto first = openWindow(ws);
        first->onCancel();
    }
    dead.before = TreeState::capture(ws);
    auto window = openWindow(ws);
    window->backup()->waitForFinished(10000);
    dead.backupPath = window->backupSettingPath();
    typeInto(window->window(), "txtLeft", QStringLiteral("42"));
    window.reset(); // dies: neither OK nor Cancel
    dead.left = TreeState::capture(ws);
    return dead;
}

void TestWindowBackup::deadWindowsBackupIsOfferedOnce_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("wentBack");
    QTest::newRow("Go Back gives the workspace as it was before the dead window")
        << "Go Back" << true;
    QTest::newRow("Keep As It Is leaves the dead window's edits") << "Keep As It Is" << false;
    QTest::newRow("Return keeps, as it changes nothing") << "" << false;
}

void TestWindowBackup::deadWindowsBackupIsOfferedOnce()
{
    QFETCH(QString, answer);
    QFETCH(bool, wentBack);
    const QString ws = m_tmp.filePath(QStringLiteral("dead-%1").arg(QTest::currentDataTag()));
    const DeadWindow dead = leaveADeadWindow(ws);
    QVERIFY(QFileInfo::exists(dead.backupPath));
    QVERIFY(!TreeState::diff(dead.before, dead.left).isEmpty());

    auto log = std::make_shared<AlertLog>();
    answerAlerts(log, answer, 1);
    auto window = openWindow(ws);
    QVERIFY(window);
    QCOMPARE(log->messages, QStringList{"The settings window closed unexpectedly last time."});
    QCOMPARE(log->informative,
             QStringList{"Go back to the workspace as it was before that window opened, or keep "
                         "it as it is now?"});
    QCOMPARE(log->buttons.value(0), QStringList({"Keep As It Is", "Go Back"}));
    BackupRecovery::waitForCleanUp();
    QVERIFY(!QFileInfo::exists(dead.backupPath));
    QCOMPARE(window->position().left(), wentBack ? 10.0f : 42.0f);

    // Asked once: the next window opens without a question.
    window->onCancel();
    window.reset();
    const TreeState::Tree settled = TreeState::capture(ws);
    const TreeState::Diff d = TreeState::diff(wentBack ? dead.before : dead.left, settled);
    QVERIFY2(d.isEmpty(), d);
    auto again = openWindow(ws);
    QVERIFY(again);
    QCOMPARE(log->messages.size(), 1);
    again->onCancel();
}

void TestWindowBackup::hostAnswersTheQuestion_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("go back") << int(PluginSettingsDelegate::GoBack);
    QTest::newRow("keep") << int(PluginSettingsDelegate::KeepAsItIs);
}

void TestWindowBackup::hostAnswersTheQuestion()
{
    QFETCH(int, answer);
    const QString ws = m_tmp.filePath(QStringLiteral("host-%1").arg(answer));
    const DeadWindow dead = leaveADeadWindow(ws);
    // Nobody is asked: any modal window that shows meanwhile is noted and closed.
    bool asked = false;
    QTimer watch;
    watch.setInterval(5);
    connect(&watch, &QTimer::timeout, this, [&asked] {
        if (auto *modal = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
            asked = true;
            modal->reject();
        }
    });
    watch.start();
    auto window = openWindow(ws, PluginSettingsDelegate::RecoveryAnswer(answer));
    QVERIFY(window);
    QTRY_VERIFY_WITH_TIMEOUT(window->backup()->waitForFinished(0), 10000);
    QTest::qWait(50);
    watch.stop();
    QVERIFY(!asked);
    window->onCancel();
    BackupRecovery::waitForCleanUp();
    QVERIFY(!QFileInfo::exists(dead.backupPath));
    const bool back = answer == PluginSettingsDelegate::GoBack;
    const TreeState::Diff d =
        TreeState::diff(back ? dead.before : dead.left, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
}

void TestWindowBackup::noBackupIsSaidAtOnceAndCancelUndoesNothing_data()
{
    QTest::addColumn<QString>("temp");
    QTest::newRow("a missing temporary folder") << "missing";
    QTest::newRow("a read-only temporary folder") << "read-only";
}

void TestWindowBackup::noBackupIsSaidAtOnceAndCancelUndoesNothing()
{
    QFETCH(QString, temp);
    const QString ws = m_tmp.filePath(QStringLiteral("nobackup-") + temp);
    const QString tempDir = m_tmp.filePath(QStringLiteral("temp-") + temp);
    std::unique_ptr<TmpfsMount> readOnly;
    if (temp == QLatin1String("read-only")) {
        QDir().mkpath(tempDir);
        if (TmpfsMount::canMount()) {
            // Root writes into any folder whatever its mode; a read-only file system stops it.
            readOnly = std::make_unique<TmpfsMount>(tempDir, "size=64k", true);
            QVERIFY2(readOnly->isMounted(), qPrintable(readOnly->error()));
        } else {
            QVERIFY(QFile::setPermissions(tempDir, QFile::ReadOwner | QFile::ExeOwner));
        }
    }
    {
        auto first = openWindow(ws);
        first->onCancel();
    }
    qputenv("TMPDIR", QFile::encodeName(tempDir));

    auto log = std::make_shared<AlertLog>();
    answerAlerts(log, QStringLiteral("OK"), 2);
    auto window = openWindow(ws);
    QVERIFY(window);
    QTRY_COMPARE_WITH_TIMEOUT(log->messages.size(), 1, 10000);
    QCOMPARE(log->messages.value(0), "The workspace could not be backed up.");
    QCOMPARE(log->informative.value(0), "Your changes are still saved as you make them, but "
                                        "Cancel will not be able to undo them.");
    typeInto(window->window(), "txtTop", QStringLiteral("33"));
    window->waitForSaves();
    const TreeState::Tree edited = TreeState::capture(ws);

    QSignalSpy closed(window.get(), &PluginSettingsDelegate::windowClosed);
    window->onCancel();
    QCOMPARE(log->messages.value(1), "Nothing could be undone.");
    QCOMPARE(log->informative.value(1),
             "There is no complete backup of the workspace, so it stays as it is.");
    QCOMPARE(closed.size(), 1);
    QCOMPARE(closed.first().first().toInt(), 0);
    QCOMPARE(window->closeMode(), 0);
    const TreeState::Diff d = TreeState::diff(edited, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
    if (!readOnly)
        QFile::setPermissions(tempDir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void TestWindowBackup::cancelRightAfterOpeningWaitsForTheImage()
{
    // A workspace big enough that the image is still being taken when Cancel comes.
    const QString ws = m_tmp.filePath(QStringLiteral("busy"));
    {
        auto first = openWindow(ws);
        first->onCancel();
    }
    const QByteArray block(256 * 1024, 'x');
    for (int i = 0; i < 400; ++i) {
        QDir().mkpath(ws + QStringLiteral("/pictures/%1").arg(i / 50));
        QFile file(ws + QStringLiteral("/pictures/%1/p%2.png").arg(i / 50).arg(i));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(block);
    }
    const TreeState::Tree before = TreeState::capture(ws);
    auto window = openWindow(ws);
    typeInto(window->window(), "txtRight", QStringLiteral("12"));
    window->onCancel();
    QCOMPARE(window->closeMode(), 0);
    const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
}

void TestWindowBackup::backupWaitsForTheFirstPreview()
{
    // A workspace an earlier window applied and a later one left as it found it: it holds
    // "settings.dat", so the opening saves, and its preview files, so nothing else is written.
    const QString ws = m_tmp.filePath(QStringLiteral("held"));
    openWindow(ws)->onOK();
    openWindow(ws)->onCancel();
    // More entries than a usual workspace has, all of which are copied at once.
    const int pictures = 400;
    QVERIFY(QDir().mkpath(ws + QStringLiteral("/pictures")));
    for (int i = 0; i < pictures; ++i) {
        QFile file(ws + QStringLiteral("/pictures/p%1.png").arg(i));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(1024, char('a' + i % 26)));
    }
    const TreeState::Tree before = TreeState::capture(ws);
    auto window = openWindow(ws);
    QSignalSpy loaded(window.get(), &PluginSettingsDelegate::previewLoaded);
    const QString backup = window->backupSettingPath();
    // The window opens without the whole copy beside it: what its opening save changed is in
    // once that save is written, and not all the pictures.
    window->waitForSaves();
    QVERIFY(QFileInfo::exists(backup + QStringLiteral("/tree/settings.dat")));
    const auto copiedPictures = [&] {
        return QDir(backup + QStringLiteral("/tree/pictures")).entryList(QDir::Files).size();
    };
    QVERIFY2(copiedPictures() < pictures, qPrintable(QString::number(copiedPictures())));
    QVERIFY(!QFileInfo::exists(backup + QStringLiteral("/complete")));

    // Once the first preview is loaded the copy goes on at once, well before its hold ends.
    QVERIFY(loaded.wait(30000));
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(backup + QStringLiteral("/complete")), 1000);
    QCOMPARE(copiedPictures(), pictures);
    typeInto(window->window(), "txtTop", QStringLiteral("7"));
    window->onCancel();
    const TreeState::Diff d = TreeState::diff(before, TreeState::capture(ws));
    QVERIFY2(d.isEmpty(), d);
}

void TestWindowBackup::okDiscardsTheBackup()
{
    const QString ws = m_tmp.filePath(QStringLiteral("ok"));
    auto window = openWindow(ws);
    const QString backup = window->backupSettingPath();
    QVERIFY(QFileInfo::exists(backup));
    typeInto(window->window(), "txtLeft", QStringLiteral("20"));
    window->onOK();
    QCOMPARE(window->closeMode(), 1);
    BackupRecovery::waitForCleanUp();
    QVERIFY(!QFileInfo::exists(backup));
    QCOMPARE(QDir::temp()
                 .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
                 .filter(QRegularExpression(QStringLiteral("^\\d+\\.\\d{6}"))),
             QStringList());
    QVERIFY(QFileInfo::exists(ws + QStringLiteral("/bookPlugin.js")));
}

void TestWindowBackup::staleSaveTemporariesGoAtOpening()
{
    const QString ws = m_tmp.filePath(QStringLiteral("stale"));
    {
        auto first = openWindow(ws);
        first->onCancel();
    }
    // What a save that was cut short leaves, beside files of the author's that look alike.
    const QStringList stale{".settings.dat.imgsave-Ab12Cd", ".config.js.imgsave-000000"};
    const QStringList kept{"settings.dat.imgsave-Ab12Cd", ".notes.txt", "photo.imgsave-Ab12Cd"};
    for (const QString &name : stale + kept) {
        QFile file(ws + QLatin1Char('/') + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("partial");
    }
    auto window = openWindow(ws);
    for (const QString &name : stale)
        QVERIFY2(!QFileInfo::exists(ws + QLatin1Char('/') + name), qPrintable(name));
    for (const QString &name : kept)
        QVERIFY2(QFileInfo::exists(ws + QLatin1Char('/') + name), qPrintable(name));
    window->onCancel();
}

// A new workspace has no "config.js" and OK removes it: the window writes it while it opens,
// before the backup, so that the first preview shows the canvas's position and Cancel keeps it.
void TestWindowBackup::firstPreviewHasThePositionOfTheCanvas()
{
    const QString ws = m_tmp.filePath(QStringLiteral("first-preview"));
    const QString script = ws + QStringLiteral("/config.js");
    auto window = openWindow(ws);
    QVERIFY(!QFileInfo::exists(ws + QStringLiteral("/settings.dat")));
    const QByteArray opened = TreeState::bytesOf(script);
    QVERIFY2(opened.contains("\"left\":\"10.0%\""), opened.constData());
    window->onCancel();
    QCOMPARE(TreeState::bytesOf(script), opened);

    window = openWindow(ws);
    typeInto(window->window(), "txtLeft", QStringLiteral("20"));
    window->onOK();
    QVERIFY(!QFileInfo::exists(script)); // the book does not need it
    window = openWindow(ws);
    QVERIFY2(TreeState::bytesOf(script).contains("\"left\":\"20.0%\""),
             TreeState::bytesOf(script).constData());
    window->onCancel();
}

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestWindowBackup suite;
    return QTest::qExec(&suite, argc, argv);
}

#include "tst_windowbackup.moc"
