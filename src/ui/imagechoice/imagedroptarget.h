// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "imagedrop.h"

#include <QObject>
#include <QPointer>

class PrivateView;
class QDropEvent;
class QWidget;

// Takes image files and web links dropped onto the settings window, or pasted while no text
// field has the keyboard, and hands them to the image choice: a file as if chosen with Browse,
// a link into the link field. Anything else is refused where the author looks: the pointer
// shows that the drop is not taken, and a tip beside it says why.
//
// Drags that start inside the window (text moved between fields) are left to the fields.
class ImageDropTarget : public QObject
{
    Q_OBJECT
public:
    // Watches window and the widgets in it that take drops themselves (text fields, the
    // preview), which would otherwise swallow a file or link, and the widgets they make later.
    // choice is not owned.
    ImageDropTarget(QWidget *window, PrivateView *choice);

    // Pastes the clipboard's file or link, as a drop would give it.
    void paste();
    // What the author was last told of a refusal; empty after a drop or paste that was taken.
    QString lastRefusal() const { return m_lastRefusal; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watch(QWidget *widget);
    bool isOwnDrag(const QDropEvent *event) const;
    // Takes what the verdict names; false when it is refused.
    bool take(const ImageDrop::Verdict &verdict);
    void refuse(const ImageDrop::Verdict &verdict, QWidget *where, const QPoint &at);

    QPointer<QWidget> m_window;
    QPointer<PrivateView> m_choice;
    QString m_lastRefusal;
};
