// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QAccessibleWidget>

class PositionView;

// What assistive technology hears of the page canvas: a canvas whose value is the box's four
// margins in the window's language ("Left 10 %, top 26 %, right 60 %, bottom 26 %").
class CanvasAccessible : public QAccessibleWidget
{
public:
    explicit CanvasAccessible(PositionView *canvas);

    QString text(QAccessible::Text t) const override;

    // The factory QAccessible asks for every object; answers for page canvases only.
    static QAccessibleInterface *factory(const QString &className, QObject *object);
};
