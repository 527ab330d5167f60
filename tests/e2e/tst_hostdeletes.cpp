// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// A host may delete the controller from inside any of its signals or callbacks: previewLoaded(),
// windowClosed(), the dialog's finished() and the closed handler. Each is tried 20 times; a use
// of the deleted controller shows up as a crash, or under the sanitizer build as a use after
// free.

#include "imgpluginfactory.h"
#include "pluginhost.h"
#include "testenv.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTemporaryDir>
#include <QtTest>

// The host's slot: deletes the controller the first time it is called.
class Deleter : public QObject
{
    Q_OBJECT

public:
    explicit Deleter(ImgSettingsController *settings)
        : m_settings(settings)
    {
    }
    bool done() const { return m_settings == nullptr; }

public slots:
    void deleteController()
    {
        delete m_settings;
        m_settings = nullptr;
    }

private:
    ImgSettingsController *m_settings;
};

class TestHostDeletes : public QObject
{
    Q_OBJECT

public:
    enum Moment { PreviewLoaded, WindowClosed, DialogFinished, ClosedHandler };
    Q_ENUM(Moment)

private slots:
    void initTestCase();
    void hostDeletesTheControllerInsideASignal_data();
    void hostDeletesTheControllerInsideASignal();
    void hostDeletesTheControllerWhenAButtonClosesIt_data();
    void hostDeletesTheControllerWhenAButtonClosesIt();

private:
    PluginHost m_host;
    QTemporaryDir m_tmp;
};

void TestHostDeletes::initTestCase()
{
    TestEnv::isolate();
    QVERIFY2(m_host.load(QStringLiteral(IMG_BUNDLE_DIR)), qPrintable(m_host.errorString()));
}

void TestHostDeletes::hostDeletesTheControllerInsideASignal_data()
{
    QTest::addColumn<Moment>("moment");
    QTest::newRow("inside previewLoaded()") << PreviewLoaded;
    QTest::newRow("inside windowClosed()") << WindowClosed;
    QTest::newRow("inside the dialog's finished()") << DialogFinished;
    QTest::newRow("inside the closed handler") << ClosedHandler;
}

void TestHostDeletes::hostDeletesTheControllerInsideASignal()
{
    QFETCH(Moment, moment);
    for (int run = 0; run < 20; ++run) {
        ImgSettingsController *settings = m_host.factory()->createSettingsDelegate(
            QStringLiteral("en"), QStringLiteral(IMG_BUNDLE_DIR));
        QVERIFY(settings);
        settings->setModalMode(false);
        settings->setRecoveryAnswer(ImgSettingsController::KeepAsItIs);
        settings->setWorkSpace(m_tmp.filePath(QStringLiteral("ws%1-%2").arg(int(moment)).arg(run)));
        QDialog *window = settings->window();
        QVERIFY(window);
        Deleter host(settings);
        switch (moment) {
        case PreviewLoaded:
            // The host knows the controller's signals by name, as the interface documents them.
            QVERIFY(QObject::connect(settings->object(), SIGNAL(previewLoaded()), &host,
                                     SLOT(deleteController())));
            break;
        case WindowClosed:
            QVERIFY(QObject::connect(settings->object(), SIGNAL(windowClosed(int)), &host,
                                     SLOT(deleteController())));
            break;
        case DialogFinished:
            QObject::connect(window, &QDialog::finished, &host, &Deleter::deleteController);
            break;
        case ClosedHandler:
            settings->setClosedHandler([&host](int) { host.deleteController(); });
            break;
        }
        window->show();
        if (moment != PreviewLoaded) {
            // Closed from code at once, as a host that shuts down does, or after a first event
            // loop pass: every other run, so that both the opening and the open window are met.
            if (run % 2 == 1)
                QCoreApplication::processEvents();
            settings->endWindow(run % 4 < 2 ? ImgSettingsController::Discard
                                            : ImgSettingsController::Apply);
        }
        QTRY_VERIFY_WITH_TIMEOUT(host.done(), 30000);
        // The events the deleted controller left behind (timers, queued calls, the preview's
        // loads) come and go without it.
        QTest::qWait(run % 5 == 0 ? 200 : 10);
    }
}

void TestHostDeletes::hostDeletesTheControllerWhenAButtonClosesIt_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<Moment>("moment");
    QTest::newRow("Cancel clicked, deleted inside finished()") << "btnCancel" << DialogFinished;
    QTest::newRow("Cancel clicked, deleted inside windowClosed()") << "btnCancel" << WindowClosed;
    QTest::newRow("OK clicked, deleted inside finished()") << "btnOK" << DialogFinished;
    QTest::newRow("OK clicked, deleted inside the closed handler") << "btnOK" << ClosedHandler;
}

// The author's click is still on the stack of the button, inside the window that the host
// deletes with the controller.
void TestHostDeletes::hostDeletesTheControllerWhenAButtonClosesIt()
{
    QFETCH(QString, button);
    QFETCH(Moment, moment);
    for (int run = 0; run < 5; ++run) {
        ImgSettingsController *settings = m_host.factory()->createSettingsDelegate(
            QStringLiteral("en"), QStringLiteral(IMG_BUNDLE_DIR));
        QVERIFY(settings);
        settings->setModalMode(false);
        settings->setRecoveryAnswer(ImgSettingsController::KeepAsItIs);
        settings->setWorkSpace(
            m_tmp.filePath(QStringLiteral("click-%1-%2-%3").arg(button).arg(int(moment)).arg(run)));
        QDialog *window = settings->window();
        QVERIFY(window);
        Deleter host(settings);
        if (moment == DialogFinished)
            QObject::connect(window, &QDialog::finished, &host, &Deleter::deleteController);
        else if (moment == WindowClosed)
            QVERIFY(QObject::connect(settings->object(), SIGNAL(windowClosed(int)), &host,
                                     SLOT(deleteController())));
        else
            settings->setClosedHandler([&host](int) { host.deleteController(); });
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        auto *target = window->findChild<QAbstractButton *>(button);
        QVERIFY(target);
        QTest::mouseClick(target, Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(host.done(), 30000);
        QTest::qWait(50);
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestHostDeletes test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hostdeletes.moc"
