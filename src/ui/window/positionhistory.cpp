// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "positionhistory.h"

#include <QAction>
#include <QUndoCommand>
#include <QWidget>

namespace {

// Kinds whose steps run on into one another while the burst lasts.
bool isRun(PositionHistory::Edit edit)
{
    using Edit = PositionHistory::Edit;
    switch (edit) {
    case Edit::Gesture:
    case Edit::Layer:
    case Edit::Default:
        return false;
    default:
        return true;
    }
}

} // namespace

// One settled edit. Pushing it must not apply it again: the edit has already shown and saved
// its position, so the first redo, which the stack runs on push, does nothing.
class PositionStep : public QUndoCommand
{
public:
    PositionStep(PositionHistory *history, PositionHistory::Edit edit, const PositionRect &before,
                 const PositionRect &after, int burst)
        : m_history(history)
        , m_edit(edit)
        , m_before(before)
        , m_after(after)
        , m_burst(burst)
    {}

    int id() const override { return isRun(m_edit) ? int(m_edit) : -1; }

    bool mergeWith(const QUndoCommand *other) override
    {
        const auto *next = static_cast<const PositionStep *>(other);
        if (next->m_burst != m_burst)
            return false;
        m_after = next->m_after;
        // A burst that came back to where it started is no step at all.
        setObsolete(m_after == m_before);
        return true;
    }

    void undo() override { m_history->applyStep(m_before); }

    void redo() override
    {
        if (m_pushed)
            m_history->applyStep(m_after);
        m_pushed = true;
    }

private:
    PositionHistory *m_history;
    PositionHistory::Edit m_edit;
    PositionRect m_before;
    PositionRect m_after;
    int m_burst;
    bool m_pushed = false;
};

PositionHistory::PositionHistory(Apply apply, QObject *parent)
    : QObject(parent)
    , m_apply(std::move(apply))
{
    connect(&m_stack, &QUndoStack::canUndoChanged, this, &PositionHistory::canUndoChanged);
    connect(&m_stack, &QUndoStack::canRedoChanged, this, &PositionHistory::canRedoChanged);
}

void PositionHistory::reset(const PositionRect &position)
{
    m_stack.clear();
    m_current = position;
    endBurst();
}

void PositionHistory::record(Edit edit, const PositionRect &now)
{
    if (m_applying || now == m_current)
        return;
    if (!m_open || edit != m_lastEdit)
        ++m_burst;
    m_open = true;
    m_lastEdit = edit;
    const PositionRect before = m_current;
    m_current = now;
    m_stack.push(new PositionStep(this, edit, before, now, m_burst));
}

void PositionHistory::endBurst()
{
    m_open = false;
}

void PositionHistory::undo()
{
    if (!m_applying)
        m_stack.undo();
}

void PositionHistory::redo()
{
    if (!m_applying)
        m_stack.redo();
}

PositionHistory::Actions PositionHistory::addWindowActions(QWidget *window, const QString &undoText,
                                                           const QString &redoText) const
{
    // The steps carry no text of their own, so the labels stay as they are given.
    Actions actions{m_stack.createUndoAction(window, undoText),
                    m_stack.createRedoAction(window, redoText)};
    actions.undo->setObjectName(QStringLiteral("actionUndo"));
    actions.undo->setShortcuts(QKeySequence::Undo);
    actions.redo->setObjectName(QStringLiteral("actionRedo"));
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    const QKeySequence shiftZ(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    if (!redoKeys.contains(shiftZ))
        redoKeys.append(shiftZ);
    actions.redo->setShortcuts(redoKeys);
    for (QAction *action : {actions.undo, actions.redo}) {
        action->setShortcutContext(Qt::WindowShortcut);
        window->addAction(action);
    }
    return actions;
}

void PositionHistory::applyStep(const PositionRect &position)
{
    endBurst();
    m_current = position;
    m_applying = true;
    if (m_apply)
        m_apply(position);
    m_applying = false;
}
