// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "columnfit.h"

#include <QEvent>
#include <QScrollArea>
#include <QStyle>

ColumnFit *ColumnFit::keep(QScrollArea *area)
{
    if (!area || !area->widget())
        return nullptr;
    auto *fit = new ColumnFit(area);
    fit->fit();
    return fit;
}

ColumnFit::ColumnFit(QScrollArea *area)
    : QObject(area)
    , m_area(area)
{
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->widget()->installEventFilter(this);
}

int ColumnFit::neededWidth(const QScrollArea *area)
{
    if (!area || !area->widget())
        return 0;
    const int bar = area->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, area);
    const QMargins frame = area->contentsMargins();
    return area->widget()->minimumSizeHint().width() + bar + frame.left() + frame.right();
}

QScrollArea *ColumnFit::area() const
{
    return qobject_cast<QScrollArea *>(m_area.data());
}

bool ColumnFit::eventFilter(QObject *watched, QEvent *event)
{
    // A layout request is the content telling that its sizes changed; it comes once per change,
    // after the texts and pictures are set, never during a drag.
    if (event->type() == QEvent::LayoutRequest) {
        QScrollArea *column = area();
        if (column && watched == column->widget())
            fit();
    }
    return QObject::eventFilter(watched, event);
}

void ColumnFit::fit()
{
    QScrollArea *column = area();
    if (!column)
        return;
    const int needed = neededWidth(column);
    if (column->minimumWidth() != needed)
        column->setMinimumWidth(needed);
}
