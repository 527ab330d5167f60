// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "roundview.h"

#include "framepainter.h"

#include <QPainter>

RoundView::RoundView(QWidget *parent)
    : QWidget(parent)
{}

void RoundView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    FramePainter::strokeRoundedRect(painter, QRectF(rect()), 4.0, 1.0, FramePainter::frameGrey());
}
