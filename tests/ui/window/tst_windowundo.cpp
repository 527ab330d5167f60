// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Undo and redo of the settings window's position edits, driven as a user would: typing, dragging,
// arrow keys, the slider, the layer buttons and Default, then Ctrl+Z and Ctrl+Shift+Z (or the
// canvas's menu), with "settings.dat" and "config.js" read back after every step.

#include "pluginsettingsdelegate.h"
#include "positionview.h"
#include "testenv.h"
#include "treesnapshot.h"
#include "veleditview.h"
#include "workspacewriter.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

using TreeSnapshot::readFile;
using TreeSnapshot::writeFile;

namespace {

const QByteArray kOpening = "10.0\n26.0\n60.0\n26.0\n0.0\n1";
// Stands for a position the test cannot know beforehand (a drag in screen points): whatever the
// edit saved, as long as it differs from the step before.
const QByteArray kSaved = "*";

// A point of the canvas (y up) as a pixel of the box widget (y down).
QPoint boxPixel(PositionView *canvas, QPointF canvasPoint)
{
    const QPointF down(canvasPoint.x(), canvas->height() - canvasPoint.y());
    return QPoint(int(std::floor(down.x())), int(std::floor(down.y()))) - canvas->editView()->pos();
}

} // namespace

class TestWindowUndo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void stepsAreUndoneAndRedoneOnDisk_data();
    void stepsAreUndoneAndRedoneOnDisk();
    void undoInAFieldUndoesTheWindowsStepNotTheFieldsText();
    void undoAtTheOpeningChangesNothing();
    void newEditAfterUndoDropsTheRedoSteps();
    void cancelAfterUndoRestoresTheOpeningWorkspace();
    void undoShowsThePositionEverywhere();

private:
    QDialog *open();
    // Does one edit of a step: "type left 15", "leave", "drag 20 -10", "keys Right 3",
    // "slider 1000 3726", "layer 0", "default".
    void perform(const QString &action);
    void undo(bool viaMenu);
    void redo(bool viaMenu);
    QLineEdit *field(const QString &name) const;
    QByteArray settings() const { return readFile(m_ws + "/settings.dat"); }
    QByteArray config() const { return readFile(m_ws + "/config.js"); }

    QTemporaryDir m_tmp;
    QString m_ws;
    std::unique_ptr<PluginSettingsDelegate> m_delegate;
    int m_count = 0;
};

void TestWindowUndo::initTestCase()
{
    TestEnv::isolate();
    TreeSnapshot::beforeRead() = &WorkspaceWriter::waitForAllWriters;
    QVERIFY(m_tmp.isValid());
}

void TestWindowUndo::init()
{
    m_ws = m_tmp.filePath(QStringLiteral("ws%1").arg(++m_count));
    writeFile(m_ws + "/settings.dat", kOpening);
}

void TestWindowUndo::cleanup()
{
    if (m_delegate && m_delegate->isWindowOpen())
        m_delegate->onCancel();
    m_delegate.reset();
}

QDialog *TestWindowUndo::open()
{
    m_delegate =
        PluginSettingsDelegate::create(QStringLiteral("en"), QStringLiteral(IMG_BUNDLE_DIR));
    if (!m_delegate)
        return nullptr;
    m_delegate->setWorkSpace(m_ws);
    QDialog *window = m_delegate->window();
    if (!window)
        return nullptr;
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window))
        return nullptr;
    m_delegate->positionView()->repaint(); // places the box
    return window;
}

QLineEdit *TestWindowUndo::field(const QString &name) const
{
    return m_delegate->window()->findChild<QLineEdit *>(name);
}

void TestWindowUndo::perform(const QString &action)
{
    const QStringList words = action.split(QLatin1Char(' '));
    const QString verb = words.value(0);
    QDialog *window = m_delegate->window();
    PositionView *canvas = m_delegate->positionView();
    if (verb == QLatin1String("type")) {
        const QString names[] = {"left", "top", "right", "bottom", "transparency"};
        const QString objects[] = {"txtLeft", "txtTop", "txtRight", "txtBottom", "txtTransparency"};
        QLineEdit *target = nullptr;
        for (int i = 0; i < 5; ++i) {
            if (words.value(1) == names[i])
                target = field(objects[i]);
        }
        QVERIFY(target);
        target->setFocus(Qt::TabFocusReason);
        target->selectAll();
        QTest::keyClicks(target, words.value(2));
    } else if (verb == QLatin1String("leave")) {
        window->findChild<QPushButton *>("btnDefault")->setFocus(Qt::TabFocusReason);
    } else if (verb == QLatin1String("drag")) {
        VelEditView *box = canvas->editView();
        const QPointF from = box->frame().center();
        const QPointF to = from + QPointF(words.value(1).toDouble(), words.value(2).toDouble());
        // Alt keeps snapping out of the way: the box follows the pointer alone.
        QTest::mousePress(box, Qt::LeftButton, Qt::AltModifier, boxPixel(canvas, from));
        QTest::mouseMove(box, boxPixel(canvas, to));
        QTest::mouseRelease(box, Qt::LeftButton, Qt::AltModifier, boxPixel(canvas, to));
    } else if (verb == QLatin1String("keys")) {
        canvas->setFocus(Qt::TabFocusReason);
        const int key = words.value(1) == QLatin1String("Right") ? Qt::Key_Right : Qt::Key_Down;
        for (int i = words.value(2).toInt(); i > 0; --i)
            QTest::keyClick(canvas, Qt::Key(key));
    } else if (verb == QLatin1String("slider")) {
        auto *slider = window->findChild<QSlider *>("sldTrans");
        slider->setSliderDown(true);
        for (const QString &value : words.mid(1))
            slider->setSliderPosition(value.toInt());
        slider->setSliderDown(false);
    } else if (verb == QLatin1String("layer")) {
        window->findChild<QButtonGroup *>("matLayer")->button(words.value(1).toInt())->click();
    } else if (verb == QLatin1String("default")) {
        window->findChild<QPushButton *>("btnDefault")->click();
    } else {
        QFAIL(qPrintable("unknown action " + action));
    }
}

// Ctrl+Z where the focus is (Cmd+Z on macOS), or Undo in the canvas's context menu.
void TestWindowUndo::undo(bool viaMenu)
{
    if (viaMenu) {
        std::unique_ptr<QMenu> menu(m_delegate->positionView()->createContextMenu(nullptr));
        for (QAction *action : menu->actions()) {
            if (action->objectName() == QLatin1String("actionUndo") && action->isEnabled())
                action->trigger();
        }
        return;
    }
    QWidget *focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : m_delegate->window(), Qt::Key_Z, Qt::ControlModifier);
}

void TestWindowUndo::redo(bool viaMenu)
{
    if (viaMenu) {
        std::unique_ptr<QMenu> menu(m_delegate->positionView()->createContextMenu(nullptr));
        for (QAction *action : menu->actions()) {
            if (action->objectName() == QLatin1String("actionRedo") && action->isEnabled())
                action->trigger();
        }
        return;
    }
    QWidget *focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : m_delegate->window(), Qt::Key_Z,
                    Qt::ControlModifier | Qt::ShiftModifier);
}

void TestWindowUndo::stepsAreUndoneAndRedoneOnDisk_data()
{
    QTest::addColumn<QStringList>("steps"); // each step: edits separated by ";"
    // What each step leaves in "settings.dat" when undo or redo brings it back.
    QTest::addColumn<QList<QByteArray>>("saved");
    QTest::addColumn<bool>("viaMenu");

    QTest::newRow("a typing burst is one step, undone to the opening file")
        << QStringList{"type left 1;type left 15"}
        << QList<QByteArray>{"15.0\n26.0\n60.0\n26.0\n0.0\n1"} << false;
    QTest::newRow("keystrokes of one burst in one field merge; leaving the field ends it")
        << QStringList{"type left 1;type left 12.5;leave", "type left 7"}
        << QList<QByteArray>{"12.5\n26.0\n60.0\n26.0\n0.0\n1", "7.0\n26.0\n60.0\n26.0\n0.0\n1"}
        << false;
    QTest::newRow("fields, a drag and arrow keys are one step each")
        << QStringList{"type top 30", "drag 20 -10", "keys Right 3"}
        << QList<QByteArray>{"10.0\n30.0\n60.0\n26.0\n0.0\n1", kSaved, kSaved} << false;
    QTest::newRow("a run of arrow keys is one step")
        << QStringList{"keys Right 3"} << QList<QByteArray>{"13.0\n26.0\n57.0\n26.0\n0.0\n1"}
        << false;
    QTest::newRow("a slider drag is one transparency change, unrounded in the record")
        << QStringList{"slider 1000 2000 3726"}
        << QList<QByteArray>{"10.0\n26.0\n60.0\n26.0\n37.3\n1"} << false;
    QTest::newRow("typed transparency then a slider drag are two steps")
        << QStringList{"type transparency 40", "slider 5000"}
        << QList<QByteArray>{"10.0\n26.0\n60.0\n26.0\n40.0\n1", "10.0\n26.0\n60.0\n26.0\n50.0\n1"}
        << false;
    QTest::newRow("a layer choice is a step; undo and redo write the layer they restore")
        << QStringList{"type right 50", "layer 0", "type bottom 5"}
        << QList<QByteArray>{"10.0\n26.0\n50.0\n26.0\n0.0\n1", "10.0\n26.0\n50.0\n26.0\n0.0\n0",
                             "10.0\n26.0\n50.0\n5.0\n0.0\n0"}
        << false;
    QTest::newRow("Default is one step back to the defaults")
        << QStringList{"type left 2;type left 25;leave", "slider 8000", "default"}
        << QList<QByteArray>{"25.0\n26.0\n60.0\n26.0\n0.0\n1", "25.0\n26.0\n60.0\n26.0\n80.0\n1",
                             "10.0\n26.0\n60.0\n26.0\n0.0\n1"}
        << false;
    QTest::newRow("the canvas's menu undoes and redoes as the keys do")
        << QStringList{"keys Down 2", "type left 3"}
        << QList<QByteArray>{"10.0\n28.0\n60.0\n24.0\n0.0\n1", "3.0\n28.0\n60.0\n24.0\n0.0\n1"}
        << true;
}

void TestWindowUndo::stepsAreUndoneAndRedoneOnDisk()
{
    QFETCH(QStringList, steps);
    QFETCH(QList<QByteArray>, saved);
    QFETCH(bool, viaMenu);
    QVERIFY(open());
    QCOMPARE(settings(), kOpening);
    // The preview script of each position file seen, to check "config.js" after undo and redo.
    QHash<QByteArray, QByteArray> scriptFor{{settings(), config()}};
    QList<QByteArray> states{settings()};
    for (int i = 0; i < steps.size(); ++i) {
        const QByteArray before = settings();
        for (const QString &action : steps.at(i).split(QLatin1Char(';')))
            perform(action);
        QByteArray expected = saved.at(i);
        if (expected == kSaved) {
            expected = settings();
            QVERIFY2(expected != before, qPrintable(steps.at(i)));
        }
        // Choosing a layer alone is saved with the next save; undo and redo save at once.
        if (!steps.at(i).startsWith(QLatin1String("layer"))) {
            QCOMPARE(settings(), expected);
            scriptFor.insert(settings(), config());
        }
        states.append(expected);
    }
    const auto checkState = [&](int step) {
        QCOMPARE(settings(), states.at(step));
        // The preview script follows the position: the one it had there, or a new one.
        if (scriptFor.contains(settings()))
            QCOMPARE(config(), scriptFor.value(settings()));
        else
            QVERIFY(!scriptFor.values().contains(config()));
        scriptFor.insert(settings(), config());
        QVERIFY(m_delegate->isChanged()); // the preview is rebuilt
    };
    for (int step = steps.size() - 1; step >= 0; --step) {
        undo(viaMenu);
        checkState(step);
        if (QTest::currentTestFailed())
            return;
    }
    undo(viaMenu); // nothing before the opening
    checkState(0);
    QVERIFY(!m_delegate->undoAction()->isEnabled());
    for (int step = 1; step <= steps.size(); ++step) {
        redo(viaMenu);
        checkState(step);
        if (QTest::currentTestFailed())
            return;
    }
    redo(viaMenu);
    checkState(steps.size());
    QVERIFY(!m_delegate->redoAction()->isEnabled());
}

void TestWindowUndo::undoInAFieldUndoesTheWindowsStepNotTheFieldsText()
{
    QVERIFY(open());
    perform("type top 3");
    perform("leave");
    perform("type left 1");
    perform("type left 15");
    QLineEdit *left = field("txtLeft");
    QCOMPARE(QApplication::focusWidget(), left);
    // The field's own undo would give back "1"; the window's step gives back the opening 10.
    QTest::keyClick(left, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(left->text(), QStringLiteral("10.0"));
    QCOMPARE(settings(), QByteArray("10.0\n3.0\n60.0\n26.0\n0.0\n1"));
    QTest::keyClick(left, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(field("txtTop")->text(), QStringLiteral("26.0"));
    QCOMPARE(settings(), kOpening);
    QTest::keyClick(left, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(left, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(left->text(), QStringLiteral("15.0"));
    QCOMPARE(settings(), QByteArray("15.0\n3.0\n60.0\n26.0\n0.0\n1"));
}

void TestWindowUndo::undoAtTheOpeningChangesNothing()
{
    QVERIFY(open());
    const TreeSnapshot::Tree opening = TreeSnapshot::take(m_ws);
    QVERIFY(!m_delegate->undoAction()->isEnabled());
    QVERIFY(!m_delegate->redoAction()->isEnabled());
    QTest::keyClick(m_delegate->window(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(m_delegate->window(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(TreeSnapshot::take(m_ws), opening);
    QCOMPARE(field("txtLeft")->text(), QStringLiteral("10.0"));
}

void TestWindowUndo::newEditAfterUndoDropsTheRedoSteps()
{
    QVERIFY(open());
    perform("type left 20");
    perform("leave");
    perform("type top 30");
    undo(false);
    QVERIFY(m_delegate->redoAction()->isEnabled());
    perform("keys Right 1");
    QCOMPARE(settings(), QByteArray("21.0\n26.0\n59.0\n26.0\n0.0\n1"));
    QVERIFY(!m_delegate->redoAction()->isEnabled());
    redo(false); // nothing to redo: the top field's step is gone
    QCOMPARE(settings(), QByteArray("21.0\n26.0\n59.0\n26.0\n0.0\n1"));
    undo(false);
    QCOMPARE(settings(), QByteArray("20.0\n26.0\n60.0\n26.0\n0.0\n1"));
}

void TestWindowUndo::cancelAfterUndoRestoresTheOpeningWorkspace()
{
    // The opening workspace, as a window that is cancelled at once leaves it.
    QVERIFY(open());
    m_delegate->onCancel();
    const TreeSnapshot::Tree opening = TreeSnapshot::take(m_ws);
    QCOMPARE(opening.value("settings.dat"), kOpening);
    QVERIFY(open());
    perform("type left 20");
    perform("drag 15 5");
    perform("layer 0");
    perform("slider 2500");
    undo(false);
    undo(false);
    redo(false);
    QVERIFY(settings() != kOpening);
    m_delegate->onCancel();
    QCOMPARE(m_delegate->closeMode(), 0);
    QCOMPARE(TreeSnapshot::take(m_ws), opening);
}

// Undo shows the step in the fields, on the slider, on the canvas and in the layer buttons.
void TestWindowUndo::undoShowsThePositionEverywhere()
{
    QVERIFY(open());
    perform("type right 40");
    perform("slider 3726");
    perform("layer 0");
    perform("type bottom 12");
    QDialog *window = m_delegate->window();
    auto *slider = window->findChild<QSlider *>("sldTrans");
    auto *layers = window->findChild<QButtonGroup *>("matLayer");
    undo(false);
    undo(false);
    QCOMPARE(field("txtBottom")->text(), QStringLiteral("26.0"));
    QCOMPARE(layers->checkedId(), 1);
    QCOMPARE(slider->value(), 3726);
    QCOMPARE(field("txtTransparency")->text(), QStringLiteral("37.3"));
    QCOMPARE(m_delegate->positionView()->positionRect()->transparency(), 37.26f);
    QCOMPARE(m_delegate->positionView()->positionRect()->right(), 40.0f);
    undo(false);
    QCOMPARE(slider->value(), 0);
    QCOMPARE(field("txtTransparency")->text(), QStringLiteral("0.0"));
    redo(false);
    redo(false);
    QCOMPARE(layers->checkedId(), 0);
    QCOMPARE(settings(), QByteArray("10.0\n26.0\n40.0\n26.0\n37.3\n0"));
}

QTEST_MAIN(TestWindowUndo)
#include "tst_windowundo.moc"
