// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "modalanswer.h"
#include "testenv.h"
#include "velpanel.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMutex>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <thread>

// Records every end call it receives: which method, on which thread, with what choice.
class PanelOwner : public QWidget
{
    Q_OBJECT
public:
    std::atomic<int> calls{0};
    QMutex mutex;
    QByteArray method;
    QThread *thread = nullptr;
    QList<QUrl> urls;

    Q_INVOKABLE void endChosen(VelPanel *panel) { record("endChosen", panel); }
    Q_INVOKABLE void endOpenPanel(VelPanel *panel) { record("endOpenPanel", panel); }
    Q_INVOKABLE void endSavePanel(VelPanel *panel) { record("endSavePanel", panel); }

    bool calledOffTheMainThread()
    {
        QMutexLocker lock(&mutex);
        return thread && thread != qApp->thread();
    }

protected:
    void record(const QByteArray &name, VelPanel *panel)
    {
        QMutexLocker lock(&mutex);
        method = name;
        thread = QThread::currentThread();
        urls = panel->urls();
        ++calls;
    }
};

// An owner that has only the save panel's end method.
class SaveOnlyOwner : public QWidget
{
    Q_OBJECT
public:
    std::atomic<int> calls{0};
    Q_INVOKABLE void endSavePanel(VelPanel *) { ++calls; }
};

// An owner that has only the open panel's end method.
class OpenOnlyOwner : public QWidget
{
    Q_OBJECT
public:
    std::atomic<int> calls{0};
    Q_INVOKABLE void endOpenPanel(VelPanel *) { ++calls; }
};

class TestVelPanel : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void typesCanBeSetAddedAndRemoved();
    void openPanelLetsFilesBeChosenThoughCanChooseFilesIsFalse();
    void confirmingCallsTheEndMethodOnceOffTheMainThread();
    void cancellingCallsNothingAndReleasesThePanel();
    void typesDecideWhichFilesCanBeConfirmed_data();
    void typesDecideWhichFilesCanBeConfirmed();
    void emptyTypesAllowEveryFile();
    void missingDirectoryOpensTheDocumentsFolder_data();
    void missingDirectoryOpensTheDocumentsFolder();
    void dialogIsWindowModalOnTheOwnersWindowWithItsTexts();
    void runModelFromAnotherThreadShowsTheDialogOnTheMainThread();
    void defaultEndMethods_data();
    void defaultEndMethods();
    void ownerWithoutTheEndMethodDropsTheConfirmation();
    void savePanelProposesTheNameAndKeepsTheAllowedExtension_data();
    void savePanelProposesTheNameAndKeepsTheAllowedExtension();
    void foldersCanBeChosenOnlyWhenAllowed();
    void closingTheOwnersWindowReleasesThePanel();

private:
    // Waits for the panel's dialog to show as the active modal window.
    QFileDialog *waitForDialog();
    // Types name into the dialog's name field and presses Return, as a user confirms.
    void confirm(QFileDialog *dialog, const QString &name);
    VelPanel *imagePanel(QObject *owner);

    QTemporaryDir *m_dir = nullptr;
};

void TestVelPanel::initTestCase()
{
    TestEnv::isolate();
    // Qt's own dialog, the one a test can drive.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

void TestVelPanel::init()
{
    m_dir = new QTemporaryDir;
    for (const char *name : {"photo.jpg", "PHOTO2.PNG", "notes.txt", "anim.gif"}) {
        QFile file(m_dir->filePath(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("x");
    }
    QDir(m_dir->path()).mkdir(QStringLiteral("folder"));
}

void TestVelPanel::cleanup()
{
    // A dialog a failed test left open must not block the next one.
    while (QWidget *modal = QApplication::activeModalWidget()) {
        if (auto *dialog = qobject_cast<QDialog *>(modal))
            dialog->reject();
        else
            break;
        QCoreApplication::processEvents();
    }
    delete m_dir;
    m_dir = nullptr;
}

QFileDialog *TestVelPanel::waitForDialog()
{
    QFileDialog *dialog = nullptr;
    QElapsedTimer clock;
    clock.start();
    while (!dialog && clock.elapsed() < 5000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        auto *modal = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (modal && modal->isVisible())
            dialog = modal;
    }
    return dialog;
}

void TestVelPanel::confirm(QFileDialog *dialog, const QString &name)
{
    auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QVERIFY(field);
    field->setText(name);
    QTest::keyClick(field, Qt::Key_Return);
}

VelPanel *TestVelPanel::imagePanel(QObject *owner)
{
    auto *panel = new VelPanel;
    panel->setIsOpenPanel(true);
    panel->setDirectory(m_dir->path());
    panel->setOwer(owner);
    panel->setTypes({"jpg", "jpeg", "gif", "png"});
    panel->setEndPanelSelector("endChosen");
    return panel;
}

void TestVelPanel::typesCanBeSetAddedAndRemoved()
{
    VelPanel panel;
    QVERIFY(panel.types().isEmpty());
    QStringList given{"jpg", "png"};
    panel.setTypes(given);
    given.append("gif");
    QCOMPARE(panel.types(), QStringList({"jpg", "png"}));
    panel.addType("png");
    panel.addType("gif");
    QCOMPARE(panel.panelTypes(), QStringList({"jpg", "png", "png", "gif"}));
    panel.removeType("png");
    QCOMPARE(panel.types(), QStringList({"jpg", "gif"}));
    panel.setTypes({});
    QVERIFY(panel.types().isEmpty());
}

void TestVelPanel::openPanelLetsFilesBeChosenThoughCanChooseFilesIsFalse()
{
    PanelOwner owner;
    owner.show();
    VelPanel *panel = imagePanel(&owner);
    panel->setCanChooseFiles(false);
    panel->setCanChooseDirectories(false);
    panel->runModel();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    QVERIFY(dialog->fileMode() == QFileDialog::ExistingFile);
    confirm(dialog, "photo.jpg");
    QTRY_COMPARE(owner.calls.load(), 1);
    QCOMPARE(owner.urls, QList<QUrl>{QUrl::fromLocalFile(m_dir->filePath("photo.jpg"))});
}

void TestVelPanel::confirmingCallsTheEndMethodOnceOffTheMainThread()
{
    PanelOwner owner;
    owner.show();
    QPointer<VelPanel> panel = imagePanel(&owner);
    panel->runModel();
    // runModel only schedules: nothing is shown before the event loop runs.
    QVERIFY(!QApplication::activeModalWidget());
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    QCOMPARE(dialog->thread(), qApp->thread());
    confirm(dialog, "anim.gif");
    QTRY_COMPARE(owner.calls.load(), 1);
    QVERIFY(owner.calledOffTheMainThread());
    QCOMPARE(owner.method, QByteArray("endChosen"));
    // The panel lets itself go once the call has returned; no second call comes.
    QTRY_VERIFY(panel.isNull());
    QTest::qWait(50);
    QCOMPARE(owner.calls.load(), 1);
}

void TestVelPanel::cancellingCallsNothingAndReleasesThePanel()
{
    PanelOwner owner;
    owner.show();
    QPointer<VelPanel> panel = imagePanel(&owner);
    panel->runModel();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    QTest::keyClick(dialog, Qt::Key_Escape);
    QTRY_VERIFY(panel.isNull());
    QTest::qWait(50);
    QCOMPARE(owner.calls.load(), 0);
}

void TestVelPanel::typesDecideWhichFilesCanBeConfirmed_data()
{
    QTest::addColumn<bool>("allowsOtherFileTypes");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("confirmed");
    QTest::newRow("an image type is confirmed") << false << "photo.jpg" << true;
    QTest::newRow("types match whatever the letter case") << false << "PHOTO2.PNG" << true;
    QTest::newRow("another type is refused") << false << "notes.txt" << false;
    QTest::newRow("another type is confirmed when other types are allowed")
        << true << "notes.txt" << true;
}

void TestVelPanel::typesDecideWhichFilesCanBeConfirmed()
{
    QFETCH(bool, allowsOtherFileTypes);
    QFETCH(QString, name);
    QFETCH(bool, confirmed);
    PanelOwner owner;
    owner.show();
    VelPanel *panel = imagePanel(&owner);
    panel->setAllowsOtherFileTypes(allowsOtherFileTypes);
    panel->runModel();
    QPointer<QFileDialog> dialog = waitForDialog();
    QVERIFY(dialog);
    confirm(dialog, name);
    if (confirmed) {
        QTRY_COMPARE(owner.calls.load(), 1);
        QCOMPARE(owner.urls.value(0).fileName(), name);
    } else {
        QTest::qWait(100);
        QVERIFY(dialog && dialog->isVisible());
        QCOMPARE(owner.calls.load(), 0);
        dialog->reject();
        QTest::qWait(50);
        QCOMPARE(owner.calls.load(), 0);
    }
}

void TestVelPanel::emptyTypesAllowEveryFile()
{
    PanelOwner owner;
    owner.show();
    VelPanel *panel = imagePanel(&owner);
    panel->setTypes({});
    QVERIFY(panel->types().isEmpty());
    panel->runModel();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    const QStringList filters = dialog->nameFilters();
    QVERIFY2(filters.size() == 1 && filters.first().contains(QStringLiteral("(*)")),
             qPrintable(filters.join(QLatin1Char('|'))));
    confirm(dialog, "notes.txt");
    QTRY_COMPARE(owner.calls.load(), 1);
    QCOMPARE(owner.urls.value(0).fileName(), QStringLiteral("notes.txt"));
}

void TestVelPanel::missingDirectoryOpensTheDocumentsFolder_data()
{
    QTest::addColumn<QString>("directory");
    QTest::addColumn<bool>("usesDocuments");
    QTest::newRow("an existing folder is used") << QString() << false;
    QTest::newRow("a folder that does not exist falls back to the documents folder")
        << QStringLiteral("/no/such/folder") << true;
    QTest::newRow("no folder given falls back to the documents folder")
        << QStringLiteral("<null>") << true;
}

void TestVelPanel::missingDirectoryOpensTheDocumentsFolder()
{
    QFETCH(QString, directory);
    QFETCH(bool, usesDocuments);
    PanelOwner owner;
    owner.show();
    VelPanel *panel = imagePanel(&owner);
    if (directory == QLatin1String("<null>"))
        panel->setDirectory(QString());
    else if (!directory.isEmpty())
        panel->setDirectory(directory);
    panel->runModel();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    const QString documents =
        QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const QString expected = usesDocuments ? documents : QDir(m_dir->path()).canonicalPath();
    QCOMPARE(QDir(dialog->directory()).canonicalPath(), QDir(expected).canonicalPath());
    dialog->reject();
}

void TestVelPanel::dialogIsWindowModalOnTheOwnersWindowWithItsTexts()
{
    QWidget window;
    auto *owner = new PanelOwner;
    owner->setParent(&window);
    window.show();
    VelPanel *panel = imagePanel(owner);
    panel->setTitle(QStringLiteral("Select a image file"));
    panel->setPrompt(QStringLiteral("Choose"));
    panel->setNameFieldLabel(QStringLiteral("Picture:"));
    panel->setMessage(QStringLiteral("Pick the picture the page shows."));
    panel->runModel();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    QCOMPARE(dialog->windowModality(), Qt::WindowModal);
    QCOMPARE(dialog->parentWidget(), &window);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Select a image file"));
    QCOMPARE(dialog->labelText(QFileDialog::Accept), QStringLiteral("Choose"));
    QCOMPARE(dialog->labelText(QFileDialog::FileName), QStringLiteral("Picture:"));
    auto *message = dialog->findChild<QLabel *>(QStringLiteral("velPanelMessage"));
    QVERIFY(message);
    QCOMPARE(message->text(), QStringLiteral("Pick the picture the page shows."));
    dialog->reject();
}

void TestVelPanel::runModelFromAnotherThreadShowsTheDialogOnTheMainThread()
{
    PanelOwner owner;
    owner.show();
    VelPanel *panel = nullptr;
    std::thread worker([&] {
        panel = imagePanel(&owner);
        panel->runModel();
    });
    worker.join();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    QCOMPARE(dialog->thread(), qApp->thread());
    QCOMPARE(panel->thread(), qApp->thread());
    confirm(dialog, "photo.jpg");
    QTRY_COMPARE(owner.calls.load(), 1);
}

void TestVelPanel::defaultEndMethods_data()
{
    QTest::addColumn<bool>("openPanel");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("an open panel calls endOpenPanel") << true << QByteArray("endOpenPanel");
    QTest::newRow("a save panel calls endSavePanel of an owner that has endOpenPanel")
        << false << QByteArray("endSavePanel");
}

void TestVelPanel::defaultEndMethods()
{
    QFETCH(bool, openPanel);
    QFETCH(QByteArray, expected);
    PanelOwner owner;
    owner.show();
    VelPanel *panel = imagePanel(&owner);
    panel->setEndPanelSelector(QByteArray());
    panel->setIsOpenPanel(openPanel);
    panel->runModel();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    confirm(dialog, openPanel ? "photo.jpg" : "new.png");
    QTRY_COMPARE(owner.calls.load(), 1);
    QCOMPARE(owner.method, expected);
    QVERIFY(owner.calledOffTheMainThread());
}

void TestVelPanel::ownerWithoutTheEndMethodDropsTheConfirmation()
{
    // A save panel asks for endOpenPanel before it sends endSavePanel: an owner with only
    // endSavePanel is not called, and one with only endOpenPanel cannot take endSavePanel.
    SaveOnlyOwner saveOnly;
    saveOnly.show();
    QPointer<VelPanel> panel = imagePanel(&saveOnly);
    panel->setEndPanelSelector(QByteArray());
    panel->setIsOpenPanel(false);
    panel->runModel();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    confirm(dialog, "new.png");
    QTRY_VERIFY(panel.isNull());
    QCOMPARE(saveOnly.calls.load(), 0);

    OpenOnlyOwner openOnly;
    openOnly.show();
    panel = imagePanel(&openOnly);
    panel->setEndPanelSelector(QByteArray());
    panel->setIsOpenPanel(false);
    panel->runModel();
    dialog = waitForDialog();
    QVERIFY(dialog);
    confirm(dialog, "new.png");
    QTRY_VERIFY(panel.isNull());
    QCOMPARE(openOnly.calls.load(), 0);

    // An explicit method the owner lacks is dropped too.
    panel = imagePanel(&openOnly);
    panel->setEndPanelSelector("noSuchMethod");
    panel->runModel();
    dialog = waitForDialog();
    QVERIFY(dialog);
    confirm(dialog, "photo.jpg");
    QTRY_VERIFY(panel.isNull());
    QCOMPARE(openOnly.calls.load(), 0);
}

void TestVelPanel::savePanelProposesTheNameAndKeepsTheAllowedExtension_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("allowsOtherFileTypes");
    QTest::addColumn<QString>("saved");
    QTest::newRow("the proposed name is saved as it is") << QString() << false << "cover.png";
    QTest::newRow("a name without extension gets the first type")
        << "picture" << false << "picture.png";
    QTest::newRow("another extension gets the first type added")
        << "picture.txt" << false << "picture.txt.png";
    QTest::newRow("another extension stays when other types are allowed")
        << "picture.txt" << true << "picture.txt";
}

void TestVelPanel::savePanelProposesTheNameAndKeepsTheAllowedExtension()
{
    QFETCH(QString, typed);
    QFETCH(bool, allowsOtherFileTypes);
    QFETCH(QString, saved);
    PanelOwner owner;
    owner.show();
    auto *panel = new VelPanel;
    panel->setOwer(&owner);
    panel->setDirectory(m_dir->path());
    panel->setTypes({"png"});
    panel->setAllowsOtherFileTypes(allowsOtherFileTypes);
    panel->setNameFieldStringValue(QStringLiteral("cover.png"));
    panel->setEndPanelSelector("endChosen");
    panel->runModel();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
    auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QVERIFY(field);
    QCOMPARE(field->text(), QStringLiteral("cover.png"));
    if (typed.isEmpty())
        QTest::keyClick(field, Qt::Key_Return);
    else
        confirm(dialog, typed);
    QTRY_COMPARE(owner.calls.load(), 1);
    QCOMPARE(owner.urls.value(0).toLocalFile(), QDir(m_dir->path()).filePath(saved));
}

void TestVelPanel::foldersCanBeChosenOnlyWhenAllowed()
{
    PanelOwner owner;
    owner.show();
    VelPanel *panel = imagePanel(&owner);
    panel->setCanChooseDirectories(true);
    panel->runModel();
    QFileDialog *dialog = waitForDialog();
    QVERIFY(dialog);
    confirm(dialog, m_dir->filePath("folder"));
    QTRY_COMPARE(owner.calls.load(), 1);
    QCOMPARE(owner.urls.value(0).toLocalFile(), m_dir->filePath("folder"));

    // Without the flag a folder is opened, not chosen.
    PanelOwner other;
    other.show();
    panel = imagePanel(&other);
    panel->runModel();
    QPointer<QFileDialog> second = waitForDialog();
    QVERIFY(second);
    confirm(second, m_dir->filePath("folder"));
    QTest::qWait(100);
    QVERIFY(second && second->isVisible());
    QCOMPARE(other.calls.load(), 0);
    second->reject();
}

void TestVelPanel::closingTheOwnersWindowReleasesThePanel()
{
    auto *owner = new PanelOwner;
    owner->show();
    QPointer<VelPanel> panel = imagePanel(owner);
    panel->runModel();
    QPointer<QFileDialog> dialog = waitForDialog();
    QVERIFY(dialog);
    delete owner;
    QVERIFY(dialog.isNull());
    QTRY_VERIFY(panel.isNull());
}

QTEST_MAIN(TestVelPanel)
#include "tst_velpanel.moc"
