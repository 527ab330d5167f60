// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "canvasaccessible.h"

#include "positionview.h"

CanvasAccessible::CanvasAccessible(PositionView *canvas)
    : QAccessibleWidget(canvas, QAccessible::Canvas)
{}

QString CanvasAccessible::text(QAccessible::Text t) const
{
    if (t == QAccessible::Value)
        return static_cast<const PositionView *>(object())->marginsText();
    return QAccessibleWidget::text(t);
}

QAccessibleInterface *CanvasAccessible::factory(const QString &className, QObject *object)
{
    if (className == QLatin1String("PositionView") && object && object->isWidgetType())
        return new CanvasAccessible(static_cast<PositionView *>(object));
    return nullptr;
}
