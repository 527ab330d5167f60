// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The preview timer's run-loop modes: which mode runs while which windows are up, and a real
// timer that keeps to its mode.

#include "modetimer.h"
#include "testenv.h"

#include <QDialog>
#include <QSignalSpy>
#include <QWidget>
#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(RunLoopMode)

class TestModeTimer : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { TestEnv::isolate(); }

    void modeRunsWhenItsSessionDoes_data()
    {
        QTest::addColumn<RunLoopMode>("mode");
        QTest::addColumn<bool>("modalSession");
        QTest::addColumn<bool>("running");
        QTest::newRow("default mode runs while no modal session does")
            << RunLoopMode::Default << false << true;
        QTest::newRow("default mode stops while a modal session runs")
            << RunLoopMode::Default << true << false;
        QTest::newRow("modal panel mode runs while a modal session does")
            << RunLoopMode::ModalPanel << true << true;
        QTest::newRow("modal panel mode stops while no modal session runs")
            << RunLoopMode::ModalPanel << false << false;
    }
    void modeRunsWhenItsSessionDoes()
    {
        QFETCH(RunLoopMode, mode);
        QFETCH(bool, modalSession);
        QFETCH(bool, running);
        QCOMPARE(RunLoop::isRunning(mode, modalSession), running);
    }

    void sessionFollowsTheWindowsUp_data()
    {
        QTest::addColumn<Qt::WindowModality>("modality");
        QTest::addColumn<bool>("shown");
        QTest::addColumn<bool>("session");
        QTest::newRow("nothing modal up: no session") << Qt::NonModal << true << false;
        QTest::newRow("application-modal window up: a session")
            << Qt::ApplicationModal << true << true;
        QTest::newRow("application-modal window hidden again: no session")
            << Qt::ApplicationModal << false << false;
        QTest::newRow("window-modal sheet up: no session") << Qt::WindowModal << true << false;
    }
    void sessionFollowsTheWindowsUp()
    {
        QFETCH(Qt::WindowModality, modality);
        QFETCH(bool, shown);
        QFETCH(bool, session);
        QWidget owner;
        owner.show();
        QDialog dialog(&owner);
        dialog.setWindowModality(modality);
        dialog.show();
        if (!shown)
            dialog.hide();
        QCOMPARE(RunLoop::modalSessionRuns(), session);
    }

    void timerKeepsToItsMode_data()
    {
        QTest::addColumn<RunLoopMode>("mode");
        QTest::addColumn<bool>("modalUp");
        QTest::addColumn<bool>("fires");
        QTest::newRow("modeless timer fires with no modal window up")
            << RunLoopMode::Default << false << true;
        QTest::newRow("modeless timer is silent under an alert")
            << RunLoopMode::Default << true << false;
        QTest::newRow("modal timer fires inside a modal session")
            << RunLoopMode::ModalPanel << true << true;
        QTest::newRow("modal timer is silent outside any modal session")
            << RunLoopMode::ModalPanel << false << false;
    }
    void timerKeepsToItsMode()
    {
        QFETCH(RunLoopMode, mode);
        QFETCH(bool, modalUp);
        QFETCH(bool, fires);
        QDialog alert;
        alert.setWindowModality(Qt::ApplicationModal);
        if (modalUp)
            alert.show();
        ModeTimer timer(mode, 20);
        QCOMPARE(timer.mode(), mode);
        QSignalSpy timeouts(&timer, &ModeTimer::timeout);
        timer.start();
        QTest::qWait(200); // about ten ticks
        QCOMPARE(timeouts.isEmpty(), !fires);
    }

    void ticksResumeWhenTheModeComesBack()
    {
        QDialog alert;
        alert.setWindowModality(Qt::ApplicationModal);
        alert.show();
        ModeTimer timer(RunLoopMode::Default, 20);
        QSignalSpy timeouts(&timer, &ModeTimer::timeout);
        timer.start();
        QTest::qWait(100);
        QCOMPARE(timeouts.count(), 0);
        alert.hide();
        QVERIFY(timeouts.wait(1000));
        timer.stop();
        QVERIFY(!timer.isActive());
    }
};

QTEST_MAIN(TestModeTimer)
#include "tst_modetimer.moc"
