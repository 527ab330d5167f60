// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "logalert.h"
#include "modalanswer.h"
#include "testenv.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

namespace {

enum class Alert { OK, YesNo, OKCancel };

struct Seen
{
    bool found = false;
    Qt::WindowModality modality = Qt::NonModal;
    QString title;
    QString text;
    QString informativeText;
    QStringList buttons;
    QString defaultButton;
    QString escapeButton;
};

// Opens the alert, and from inside its modal loop records what it shows and answers it with a
// click on the button titled clickTitle or, when that is empty, with the key.
bool runAndAnswer(Alert alert, const QString &clickTitle, int key, Seen *seen)
{
    ModalAnswer::next([=](QWidget *modal) {
        auto *box = qobject_cast<QMessageBox *>(modal);
        if (!box)
            return;
        seen->found = true;
        seen->modality = box->windowModality();
        seen->title = box->windowTitle();
        seen->text = box->text();
        seen->informativeText = box->informativeText();
        const auto buttons = box->buttons();
        for (QAbstractButton *button : buttons)
            seen->buttons << button->text();
        if (box->defaultButton())
            seen->defaultButton = box->defaultButton()->text();
        if (box->escapeButton())
            seen->escapeButton = box->escapeButton()->text();
        if (!clickTitle.isEmpty()) {
            if (QAbstractButton *button = ModalAnswer::buttonTitled(box, clickTitle))
                QTest::mouseClick(button, Qt::LeftButton);
        } else {
            QTest::keyClick(box, Qt::Key(key));
        }
    });
    switch (alert) {
    case Alert::OK:
        LogAlert::AlertOKWithMessage(QStringLiteral("Message"), QStringLiteral("Details"));
        return true;
    case Alert::YesNo:
        return LogAlert::AlertYesNoWithMessage(QStringLiteral("Message"),
                                               QStringLiteral("Details"));
    case Alert::OKCancel:
        return LogAlert::AlertOKCancelWithMessage(QStringLiteral("Message"),
                                                  QStringLiteral("Details"));
    }
    return false;
}

} // namespace

Q_DECLARE_METATYPE(Alert)

class TestLogAlert : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { TestEnv::isolate(); }

    void answers_data();
    void answers();
    void alertsShowTheirButtonsInOrderWithTheirKeys_data();
    void alertsShowTheirButtonsInOrderWithTheirKeys();
    void okAlertShowsItsTextsAndClosesWithOK();
    void emptyInformativeTextIsShownAsGiven();
};

void TestLogAlert::answers_data()
{
    QTest::addColumn<Alert>("alert");
    QTest::addColumn<QString>("click");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("expected");

    QTest::newRow("YES/NO: clicking YES answers true") << Alert::YesNo << "YES" << 0 << true;
    QTest::newRow("YES/NO: Return answers true")
        << Alert::YesNo << "" << int(Qt::Key_Return) << true;
    QTest::newRow("YES/NO: Enter answers true") << Alert::YesNo << "" << int(Qt::Key_Enter) << true;
    QTest::newRow("YES/NO: clicking NO answers false") << Alert::YesNo << "NO" << 0 << false;
    QTest::newRow("YES/NO: Escape answers false")
        << Alert::YesNo << "" << int(Qt::Key_Escape) << false;
    QTest::newRow("OK/Cancel: clicking OK answers true") << Alert::OKCancel << "OK" << 0 << true;
    QTest::newRow("OK/Cancel: Return answers true")
        << Alert::OKCancel << "" << int(Qt::Key_Return) << true;
    QTest::newRow("OK/Cancel: clicking Cancel answers false")
        << Alert::OKCancel << "Cancel" << 0 << false;
    QTest::newRow("OK/Cancel: Escape answers false")
        << Alert::OKCancel << "" << int(Qt::Key_Escape) << false;
}

void TestLogAlert::answers()
{
    QFETCH(Alert, alert);
    QFETCH(QString, click);
    QFETCH(int, key);
    QFETCH(bool, expected);
    Seen seen;
    const bool answer = runAndAnswer(alert, click, key, &seen);
    QVERIFY2(seen.found, "no alert was shown");
    QCOMPARE(answer, expected);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestLogAlert::alertsShowTheirButtonsInOrderWithTheirKeys_data()
{
    QTest::addColumn<Alert>("alert");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<QString>("returnButton");
    QTest::addColumn<QString>("escapeButton");
    QTest::newRow("OK alert: one OK button") << Alert::OK << QStringList{"OK"} << "OK"
                                             << "OK";
    QTest::newRow("YES/NO: YES takes Return, NO takes Escape")
        << Alert::YesNo << QStringList{"YES", "NO"} << "YES"
        << "NO";
    QTest::newRow("OK/Cancel: OK takes Return, Cancel takes Escape")
        << Alert::OKCancel << QStringList{"OK", "Cancel"} << "OK"
        << "Cancel";
}

void TestLogAlert::alertsShowTheirButtonsInOrderWithTheirKeys()
{
    QFETCH(Alert, alert);
    QFETCH(QStringList, buttons);
    QFETCH(QString, returnButton);
    QFETCH(QString, escapeButton);
    Seen seen;
    runAndAnswer(alert, buttons.first(), 0, &seen);
    QVERIFY(seen.found);
    QCOMPARE(seen.modality, Qt::ApplicationModal);
    // The plugin's name, never the host program's file name that Qt would put there.
    QCOMPARE(seen.title, QStringLiteral("Image Plugin"));
    QVERIFY(QCoreApplication::applicationName() != seen.title);
    QCOMPARE(seen.buttons, buttons);
    QCOMPARE(seen.defaultButton, returnButton);
    if (alert != Alert::OK)
        QCOMPARE(seen.escapeButton, escapeButton);
}

void TestLogAlert::okAlertShowsItsTextsAndClosesWithOK()
{
    Seen seen;
    runAndAnswer(Alert::OK, QString(), Qt::Key_Return, &seen);
    QVERIFY(seen.found);
    QCOMPARE(seen.text, QStringLiteral("Message"));
    QCOMPARE(seen.informativeText, QStringLiteral("Details"));
    QVERIFY(!QApplication::activeModalWidget());
    // Escape closes it too.
    runAndAnswer(Alert::OK, QString(), Qt::Key_Escape, &seen);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestLogAlert::emptyInformativeTextIsShownAsGiven()
{
    QString text = QStringLiteral("unset");
    ModalAnswer::next([&text](QWidget *modal) {
        auto *box = qobject_cast<QMessageBox *>(modal);
        if (!box)
            return;
        text = box->informativeText();
        QTest::keyClick(box, Qt::Key_Return);
    });
    LogAlert::AlertOKWithMessage(QStringLiteral("Copy Failed!"), QString());
    QCOMPARE(text, QString());
}

QTEST_MAIN(TestLogAlert)
#include "tst_logalert.moc"
