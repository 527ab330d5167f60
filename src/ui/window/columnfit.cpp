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

bool ColumnFit::eventFilter(QObject *watched, QEvent *event)
{
    // A layout request is the content telling that its sizes changed; it comes once per change,
    // after the texts and pictures are set, never during a drag.
    if (m_area && watched == m_area->widget() && event->type() == QEvent::LayoutRequest)
        fit();
    return QObject::eventFilter(watched, event);
}

void ColumnFit::fit()
{
    if (!m_area)
        return;
    const int needed = neededWidth(m_area);
    if (m_area->minimumWidth() != needed)
        m_area->setMinimumWidth(needed);
}
