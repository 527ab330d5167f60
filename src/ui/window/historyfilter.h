// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class PositionHistory;
class QAction;
class QWidget;

// Watches the position controls for the window's history: the focus leaving one ends a burst of
// edits, and in a position field the window's undo and redo keys reach the window's history
// rather than the field's own undo of its text.
class HistoryFilter : public QObject
{
    Q_OBJECT

public:
    HistoryFilter(PositionHistory *history, QAction *undo, QAction *redo, QObject *parent);
    void watch(const QList<QWidget *> &widgets);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<PositionHistory> m_history;
    QPointer<QAction> m_undo;
    QPointer<QAction> m_redo;
};
