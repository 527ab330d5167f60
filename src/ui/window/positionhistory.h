// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "positionrect.h"

#include <QObject>
#include <QUndoStack>

#include <functional>

class QAction;
class QWidget;

// The window's undo and redo of the position: each settled edit is one step holding the position
// before and after it. Steps of one burst merge: keystrokes in one field until the focus leaves
// it, a run of arrow keys on the canvas, the moves of one slider drag. A burst ends when another
// kind of edit comes, when endBurst() is called, and at every undo or redo, so that a step once
// stepped over is never extended. Nothing undoes past the position given to reset().
//
// Undo and redo hand the stored position to the apply function, which shows and saves it as an
// edit would; edits recorded while it runs are ignored.
class PositionHistory : public QObject
{
    Q_OBJECT

public:
    enum class Edit {
        TypeLeft,
        TypeTop,
        TypeRight,
        TypeBottom,
        TypeTransparency,
        Gesture, // one drag, one resize, Fit to image
        Keys,
        Slider,
        Layer,
        Default,
    };
    using Apply = std::function<void(const PositionRect &)>;

    explicit PositionHistory(Apply apply, QObject *parent = nullptr);

    // Forgets every step; position is where undo stops.
    void reset(const PositionRect &position);
    // The edit has left the position at now; nothing is recorded when it did not move.
    void record(Edit edit, const PositionRect &now);
    void endBurst();

    // The position after the last recorded, undone or redone step.
    PositionRect current() const { return m_current; }
    bool canUndo() const { return m_stack.canUndo(); }
    bool canRedo() const { return m_stack.canRedo(); }
    int count() const { return m_stack.count(); }
    int index() const { return m_stack.index(); }

    // Undo and redo actions of window, enabled while there is a step, with the window-wide
    // shortcuts: the platform's own keys, and Ctrl+Shift+Z for redo also where the platform's
    // is Ctrl+Y.
    struct Actions
    {
        QAction *undo = nullptr;
        QAction *redo = nullptr;
    };
    Actions addWindowActions(QWidget *window, const QString &undoText,
                             const QString &redoText) const;

public slots:
    void undo();
    void redo();

signals:
    void canUndoChanged(bool canUndo);
    void canRedoChanged(bool canRedo);

private:
    friend class PositionStep;
    void applyStep(const PositionRect &position);

    Apply m_apply;
    QUndoStack m_stack;
    PositionRect m_current;
    int m_burst = 0;
    bool m_open = false; // the last step may take more of its burst
    Edit m_lastEdit = Edit::Default;
    bool m_applying = false;
};
