// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "aspectbox.h"

#include "editgeometry.h"

AspectBox::AspectBox(QSizeF proportions, QWidget *parent)
    : QWidget(parent)
    , m_proportions(proportions)
{
    setFocusPolicy(Qt::NoFocus);
}

void AspectBox::setContent(QWidget *content)
{
    m_content = content;
    if (!content)
        return;
    content->setParent(this);
    // Keyboard focus and assistive technology go to the content, never to the box around it.
    setFocusProxy(content);
    placeContent();
    content->show();
}

void AspectBox::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeContent();
}

void AspectBox::placeContent()
{
    if (m_content)
        m_content->setGeometry(EditGeometry::fittedRect(size(), m_proportions));
}
