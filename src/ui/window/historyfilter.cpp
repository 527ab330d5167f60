// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "historyfilter.h"

#include "positionhistory.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>

HistoryFilter::HistoryFilter(PositionHistory *history, QAction *undo, QAction *redo,
                             QObject *parent)
    : QObject(parent)
    , m_history(history)
    , m_undo(undo)
    , m_redo(redo)
{}

void HistoryFilter::watch(const QList<QWidget *> &widgets)
{
    for (QWidget *widget : widgets) {
        if (widget)
            widget->installEventFilter(this);
    }
}

bool HistoryFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut && m_history) {
        m_history->endBurst();
    } else if (event->type() == QEvent::ShortcutOverride && qobject_cast<QLineEdit *>(watched) &&
               m_undo && m_redo) {
        // Every keystroke in a position field is already a saved step of the window's history,
        // so the field's own undo would only repeat it out of step with the file. Refusing the
        // override lets the window's shortcut have the key.
        const auto *key = static_cast<QKeyEvent *>(event);
        const QKeySequence pressed(
            QKeyCombination(key->modifiers() & ~Qt::KeypadModifier, Qt::Key(key->key())));
        if (m_undo->shortcuts().contains(pressed) || m_redo->shortcuts().contains(pressed))
            return true;
    }
    return QObject::eventFilter(watched, event);
}
