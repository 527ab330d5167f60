// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "framepainter.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <algorithm>

namespace FramePainter {

QColor frameGrey()
{
    return QColor::fromRgbF(0.5, 0.5, 0.5, 1.0);
}

void strokeRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, qreal lineWidth,
                       const QColor &color)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, lineWidth));
    painter.drawPath(path);
    painter.restore();
}

QLinearGradient gradientAtAngle(const QRectF &rect, qreal angle, const QColor &from,
                                const QColor &to)
{
    // Direction in widget coordinates, where y grows downwards.
    const qreal radians = qDegreesToRadians(angle);
    const QPointF direction(qCos(radians), -qSin(radians));
    const QPointF centre = rect.center();
    // Half the extent of the rectangle along the direction: the gradient spans the whole
    // rectangle, its first stop on the corner furthest back, its last on the corner furthest on.
    const qreal half =
        (std::abs(direction.x()) * rect.width() + std::abs(direction.y()) * rect.height()) / 2.0;
    QLinearGradient gradient(centre - direction * half, centre + direction * half);
    gradient.setColorAt(0.0, from);
    gradient.setColorAt(1.0, to);
    return gradient;
}

void fillGradient(QPainter &painter, const QRectF &rect, qreal angle, const QColor &from,
                  const QColor &to)
{
    painter.save();
    painter.fillRect(rect, gradientAtAngle(rect, angle, from, to));
    painter.restore();
}

} // namespace FramePainter
