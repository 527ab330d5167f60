// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The history of position edits without a window: which edits become one step, where undo stops,
// and what undo and redo hand back to be shown and saved.

#include "positionhistory.h"

#include <QtTest>

using Edit = PositionHistory::Edit;

Q_DECLARE_METATYPE(Edit)

namespace {

PositionRect at(float left, float transparency = 0, int layer = 1)
{
    PositionRect p;
    p.setLeft(left);
    p.setTop(26);
    p.setRight(60);
    p.setBottom(26);
    p.setTransparency(transparency);
    p.setLayer(layer);
    return p;
}

// One recorded edit, or the end of a burst (the focus leaving) when edit is empty.
struct Move
{
    std::optional<Edit> edit;
    float left = 0;
};

} // namespace

Q_DECLARE_METATYPE(QList<Move>)

class TestPositionHistory : public QObject
{
    Q_OBJECT

private slots:
    void editsBecomeSteps_data();
    void editsBecomeSteps();
    void undoAtTheOpeningPositionDoesNothing();
    void undoAndRedoHandBackEachPosition();
    void newEditAfterUndoDropsTheRedoSteps();
    void typingAfterARedoStartsANewStep();
    void editsWhileAStepIsShownAreNotRecorded();
    void resetForgetsEveryStep();

private:
    QList<PositionRect> m_applied;
    PositionHistory::Apply recorder()
    {
        return [this](const PositionRect &p) {
            m_applied.append(p);
        };
    }
};

void TestPositionHistory::editsBecomeSteps_data()
{
    QTest::addColumn<QList<Move>>("moves");
    QTest::addColumn<int>("steps");
    QTest::addColumn<QList<float>>("undoneTo"); // left after each undo, back to the opening 10
    const auto type = [](float left) {
        return Move{Edit::TypeLeft, left};
    };
    const Move leave{std::nullopt, 0};
    QTest::newRow("a typing burst in one field is one step")
        << QList<Move>{type(1), type(15), type(15.5)} << 1 << QList<float>{10};
    QTest::newRow("the focus leaving the field ends the burst")
        << QList<Move>{type(1), type(15), leave, type(150)} << 2 << QList<float>{15, 10};
    QTest::newRow("typing in another field is another step")
        << QList<Move>{type(1), Move{Edit::TypeTop, 2}} << 2 << QList<float>{1, 10};
    QTest::newRow("a burst back where it began leaves no step")
        << QList<Move>{type(1), type(10)} << 0 << QList<float>{};
    QTest::newRow("a run of arrow keys is one step")
        << QList<Move>{{Edit::Keys, 11}, {Edit::Keys, 12}, {Edit::Keys, 13}} << 1
        << QList<float>{10};
    QTest::newRow("two drags are two steps")
        << QList<Move>{{Edit::Gesture, 20}, {Edit::Gesture, 30}} << 2 << QList<float>{20, 10};
    QTest::newRow("a drag between arrow keys splits their run")
        << QList<Move>{{Edit::Keys, 11}, {Edit::Gesture, 30}, {Edit::Keys, 31}} << 3
        << QList<float>{30, 11, 10};
    QTest::newRow("two Defaults in a row are two steps")
        << QList<Move>{{Edit::Default, 10.5f}, {Edit::Default, 11}} << 2 << QList<float>{10.5f, 10};
    QTest::newRow("an edit that changes nothing is no step")
        << QList<Move>{{Edit::Gesture, 10}} << 0 << QList<float>{};
}

void TestPositionHistory::editsBecomeSteps()
{
    QFETCH(QList<Move>, moves);
    QFETCH(int, steps);
    QFETCH(QList<float>, undoneTo);
    m_applied.clear();
    PositionHistory history(recorder());
    history.reset(at(10));
    for (const Move &move : moves) {
        if (move.edit)
            history.record(*move.edit, at(move.left));
        else
            history.endBurst();
    }
    QCOMPARE(history.count(), steps);
    for (float left : undoneTo) {
        history.undo();
        QCOMPARE(m_applied.last(), at(left));
    }
    QVERIFY(!history.canUndo());
    QCOMPARE(history.current(), at(10));
}

void TestPositionHistory::undoAtTheOpeningPositionDoesNothing()
{
    m_applied.clear();
    PositionHistory history(recorder());
    history.reset(at(10));
    QVERIFY(!history.canUndo());
    history.undo();
    history.redo();
    QVERIFY(m_applied.isEmpty());
    QCOMPARE(history.current(), at(10));
}

void TestPositionHistory::undoAndRedoHandBackEachPosition()
{
    m_applied.clear();
    PositionHistory history(recorder());
    history.reset(at(10));
    QSignalSpy canUndo(&history, &PositionHistory::canUndoChanged);
    history.record(Edit::TypeLeft, at(15));
    history.record(Edit::Slider, at(15, 37.26f));
    history.record(Edit::Layer, at(15, 37.26f, 0));
    QVERIFY(m_applied.isEmpty()); // an edit has shown and saved itself already
    QVERIFY(!canUndo.isEmpty());
    QCOMPARE(canUndo.last().at(0).toBool(), true);
    history.undo();
    history.undo();
    history.undo();
    history.undo(); // past the opening position: nothing
    QCOMPARE(m_applied, (QList<PositionRect>{at(15, 37.26f), at(15), at(10)}));
    QVERIFY(history.canRedo());
    m_applied.clear();
    history.redo();
    history.redo();
    history.redo();
    history.redo();
    QCOMPARE(m_applied, (QList<PositionRect>{at(15), at(15, 37.26f), at(15, 37.26f, 0)}));
    QCOMPARE(history.current(), at(15, 37.26f, 0));
}

void TestPositionHistory::newEditAfterUndoDropsTheRedoSteps()
{
    PositionHistory history(recorder());
    history.reset(at(10));
    history.record(Edit::Gesture, at(20));
    history.record(Edit::Gesture, at(30));
    history.undo();
    QVERIFY(history.canRedo());
    history.record(Edit::Keys, at(21));
    QVERIFY(!history.canRedo());
    QCOMPARE(history.count(), 2);
    m_applied.clear();
    history.undo();
    QCOMPARE(m_applied.last(), at(20));
}

// A step stepped over by undo or redo is settled: typing on in the same field does not stretch it.
void TestPositionHistory::typingAfterARedoStartsANewStep()
{
    PositionHistory history(recorder());
    history.reset(at(10));
    history.record(Edit::TypeLeft, at(1));
    history.record(Edit::TypeLeft, at(12));
    history.undo();
    history.redo();
    history.record(Edit::TypeLeft, at(123));
    QCOMPARE(history.count(), 2);
    m_applied.clear();
    history.undo();
    QCOMPARE(m_applied.last(), at(12));
}

void TestPositionHistory::editsWhileAStepIsShownAreNotRecorded()
{
    PositionHistory *self = nullptr;
    int applied = 0;
    PositionHistory history([&](const PositionRect &p) {
        ++applied;
        self->record(Edit::TypeLeft, at(p.left() + 1)); // a field echoing the shown value
    });
    self = &history;
    history.reset(at(10));
    history.record(Edit::Gesture, at(20));
    history.undo();
    QCOMPARE(applied, 1);
    QCOMPARE(history.count(), 1);
    QCOMPARE(history.current(), at(10));
}

void TestPositionHistory::resetForgetsEveryStep()
{
    PositionHistory history(recorder());
    history.reset(at(10));
    history.record(Edit::Gesture, at(20));
    history.reset(at(50));
    QVERIFY(!history.canUndo());
    QCOMPARE(history.current(), at(50));
}

QTEST_GUILESS_MAIN(TestPositionHistory)
#include "tst_positionhistory.moc"
