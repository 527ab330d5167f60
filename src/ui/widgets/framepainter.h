// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QColor>
#include <QLinearGradient>
#include <QRectF>

class QPainter;

// The strokes and fills the drawn widgets share: a rounded frame stroked on a rectangle's edge
// (half of the line falls outside it, as the frames are drawn on the widget's bounds) and
// two-stop gradients given by an angle.
namespace FramePainter {

// The standard grey of the frames: 0.5 grey, opaque.
QColor frameGrey();

// Strokes a rounded rectangle on rect with the same radius in x and y.
void strokeRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, qreal lineWidth,
                       const QColor &color);

// A linear gradient that covers rect along the direction of angle degrees, counted the usual
// mathematical way with y pointing up: 90 runs from the bottom edge (location 0.0) to the top edge
// (location 1.0), 270 from the top edge to the bottom edge.
QLinearGradient gradientAtAngle(const QRectF &rect, qreal angle, const QColor &from,
                                const QColor &to);

// Fills rect with gradientAtAngle, leaving the painter's state as it was.
void fillGradient(QPainter &painter, const QRectF &rect, qreal angle, const QColor &from,
                  const QColor &to);

} // namespace FramePainter
