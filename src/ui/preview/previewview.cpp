// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "previewview.h"

#include <QChildEvent>

PreviewView::PreviewView(QWidget *parent)
    : QWebEngineView(parent)
{
    setFocusPolicy(Qt::ClickFocus);
}

void PreviewView::childEvent(QChildEvent *event)
{
    QWebEngineView::childEvent(event);
    // The engine makes its widget when the first page is shown, long after the window is built.
    if (event->type() == QEvent::ChildPolished || event->type() == QEvent::ChildAdded) {
        if (auto *widget = qobject_cast<QWidget *>(event->child());
            widget && widget->focusPolicy() & Qt::TabFocus)
            widget->setFocusPolicy(Qt::ClickFocus);
    }
}
