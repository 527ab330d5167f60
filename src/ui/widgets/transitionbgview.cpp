// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "transitionbgview.h"

#include "framepainter.h"

#include <QPainter>

TransitionBGView::TransitionBGView(QWidget *parent)
    : QWidget(parent)
{}

void TransitionBGView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF bounds(rect());
    FramePainter::fillGradient(painter, bounds, 270.0, QColor::fromRgbF(1.0, 1.0, 1.0, 0.5),
                               QColor::fromRgbF(0.8, 0.8, 0.8, 0.5));
    FramePainter::strokeRoundedRect(painter, bounds, 4.0, 1.0, FramePainter::frameGrey());
}
