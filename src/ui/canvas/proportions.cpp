// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "proportions.h"

#include "editgeometry.h"

#include <algorithm>

using namespace EditGeometry;

namespace Proportions {

namespace {

qreal pageAspect(QSizeF canvas, QSizeF page)
{
    return page.isEmpty() ? canvas.width() / canvas.height() : page.width() / page.height();
}

} // namespace

qreal boxAspect(QSizeF image, QSizeF canvas, QSizeF page)
{
    if (image.isEmpty() || canvas.isEmpty())
        return 0;
    const qreal canvasAspect = canvas.width() / canvas.height();
    return image.width() / image.height() * canvasAspect / pageAspect(canvas, page);
}

bool isCornerType(int mouseType)
{
    return mouseType >= MouseTypeTopLeft && mouseType <= MouseTypeBottomRight;
}

QRectF keepAspect(const QRectF &frame, int mouseType, qreal aspect, QSizeF canvas)
{
    if (aspect <= 0 || !isCornerType(mouseType) || frame.height() <= 0)
        return frame;
    const bool leftSide = mouseType == MouseTypeTopLeft || mouseType == MouseTypeBottomLeft;
    const bool bottomSide = mouseType == MouseTypeBottomLeft || mouseType == MouseTypeBottomRight;
    // The corner opposite the dragged one, and the room from it to the page's edges.
    const qreal anchorX = leftSide ? frame.x() + frame.width() : frame.x();
    const qreal anchorY = bottomSide ? frame.y() + frame.height() : frame.y();
    const qreal roomX = leftSide ? anchorX : canvas.width() - anchorX;
    const qreal roomY = bottomSide ? anchorY : canvas.height() - anchorY;

    qreal w = frame.width();
    qreal h = frame.height();
    if (w / h > aspect)
        h = w / aspect;
    else
        w = h * aspect;
    if (w > roomX) {
        w = roomX;
        h = w / aspect;
    }
    if (h > roomY) {
        h = roomY;
        w = h * aspect;
    }
    if (w < minimumBoxSize) {
        w = minimumBoxSize;
        h = w / aspect;
    }
    if (h < minimumBoxSize) {
        h = minimumBoxSize;
        w = h * aspect;
    }
    if (w > roomX || h > roomY)
        return frame; // no box of this shape fits here: the plain drag stands
    return QRectF(leftSide ? anchorX - w : anchorX, bottomSide ? anchorY - h : anchorY, w, h);
}

PositionRect fittedToImage(const PositionRect &margins, QSizeF image, QSizeF canvas, QSizeF page)
{
    float width = 100.0f - margins.left() - margins.right();
    if (image.isEmpty() || canvas.isEmpty() || width <= 0)
        return margins;
    // Percent of the page's height per percent of its width for an undistorted image.
    const qreal heightPerWidth = pageAspect(canvas, page) * image.height() / image.width();
    const float minimumHeight = float(minimumBoxSize * 100.0 / canvas.height());
    float height = std::max(float(width * heightPerWidth), minimumHeight);
    PositionRect fitted = margins;
    if (height > 100.0f) {
        height = 100.0f;
        width = float(100.0 / heightPerWidth);
        fitted.setRight(100.0f - margins.left() - width);
        if (fitted.right() < 0) { // the left side gives way to keep the box on the page
            fitted.setLeft(std::max(0.0f, margins.left() + fitted.right()));
            fitted.setRight(0);
        }
    }
    fitted.setBottom(100.0f - margins.top() - height);
    if (fitted.bottom() < 0) {
        fitted.setTop(std::max(0.0f, margins.top() + fitted.bottom()));
        fitted.setBottom(0);
    }
    return fitted;
}

} // namespace Proportions
