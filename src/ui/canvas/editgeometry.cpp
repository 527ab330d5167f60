// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "editgeometry.h"

#include <cmath>

#include <algorithm>

namespace EditGeometry {

bool isDragType(int type)
{
    return type >= MouseTypeMove && type <= MouseTypeBottomRight;
}

HitAreas hitAreas(QSizeF boxSize, qreal s)
{
    const qreal w = boxSize.width();
    const qreal h = boxSize.height();
    const qreal midX = (w - s) / 2;
    const qreal midY = (h - s) / 2;
    return {
        QRectF(s, s, w - 2 * s, h - 2 * s), // interior
        QRectF(0, midY, s, s),              // left
        QRectF(w - s, midY, s, s),          // right
        QRectF(midX, h - s, s, s),          // top
        QRectF(midX, 0, s, s),              // bottom
        QRectF(0, h - s, s, s),             // top-left
        QRectF(w - s, h - s, s, s),         // top-right
        QRectF(0, 0, s, s),                 // bottom-left
        QRectF(w - s, 0, s, s),             // bottom-right
    };
}

bool containsPoint(const QRectF &rect, QPointF point)
{
    return point.x() >= rect.x() && point.x() < rect.x() + rect.width() && point.y() >= rect.y() &&
           point.y() < rect.y() + rect.height();
}

int matchAreaIndex(const HitAreas &areas, QPointF point)
{
    for (int i = 0; i < int(areas.size()); ++i) {
        if (containsPoint(areas[i], point))
            return i;
    }
    return -1;
}

// The comparisons are exact on purpose: areas are built from the same numbers they are tested
// against, and the asymmetries this gives (the 21-wide box) are part of the behaviour.
MouseType mouseTypeForArea(const QRectF &area, QSizeF frameSize)
{
    const qreal s = trackBoxSize;
    if (area.x() == s)
        return MouseTypeMove;
    if (area.width() != s)
        return MouseTypeNone;
    const bool bottomRow = area.y() == 0;
    const bool upperHalf = area.y() >= frameSize.height() / 2;
    if (area.x() == 0)
        return bottomRow ? MouseTypeBottomLeft : upperHalf ? MouseTypeTopLeft : MouseTypeLeft;
    if (area.x() >= frameSize.width() / 2)
        return bottomRow ? MouseTypeBottomRight : upperHalf ? MouseTypeTopRight : MouseTypeRight;
    return bottomRow ? MouseTypeBottom : MouseTypeTop;
}

MouseType mouseTypeAt(const HitAreas &areas, QPointF point, QSizeF frameSize)
{
    const int index = matchAreaIndex(areas, point);
    return index < 0 ? MouseTypeNone : mouseTypeForArea(areas[index], frameSize);
}

std::optional<QRectF> shownFrame(const PositionRect &rect, QSizeF canvas)
{
    const auto onPage = [](float percent) {
        return std::isfinite(percent) && percent >= 0.0f && percent <= 100.0f;
    };
    if (onPage(rect.left()) && onPage(rect.top()) && onPage(rect.right()) &&
        onPage(rect.bottom())) {
        const QRectF exact = PositionRect::getObjectFrameWith(rect, canvas);
        if (exact.width() > 0 && exact.height() > 0)
            return exact;
        return std::nullopt;
    }
    const auto toPage = [](float percent) {
        return std::isfinite(percent) ? qBound(0.0, qreal(percent), 100.0) : 0.0;
    };
    const qreal w = canvas.width();
    const qreal h = canvas.height();
    const qreal left = w * toPage(rect.left()) / 100.0;
    const qreal right = w * toPage(rect.right()) / 100.0;
    const qreal bottom = h * toPage(rect.bottom()) / 100.0;
    const qreal top = h * toPage(rect.top()) / 100.0;
    const qreal width = qMin(qMax(w - left - right, minimumBoxSize), w);
    const qreal height = qMin(qMax(h - top - bottom, minimumBoxSize), h);
    return QRectF(qBound(0.0, left, w - width), qBound(0.0, bottom, h - height), width, height);
}

QRectF withMinimumSize(const QRectF &frame)
{
    QRectF result = frame;
    if (result.height() < minimumBoxSize)
        result.setHeight(minimumBoxSize);
    if (result.width() < minimumBoxSize)
        result.setWidth(minimumBoxSize);
    return result;
}

namespace {

// The rules read and write the four numbers independently; a plain struct keeps them in the
// order they are written down and avoids QRectF's edge-keeping setters.
struct Box
{
    qreal x, y, w, h;
    explicit Box(const QRectF &r)
        : x(r.x())
        , y(r.y())
        , w(r.width())
        , h(r.height())
    {}
    QRectF rect() const { return QRectF(x, y, w, h); }
};

} // namespace

QRectF moveFrame(QRectF frame, qreal dx, qreal dy, QSizeF canvas)
{
    Box b(frame);
    b.x += dx;
    b.y += dy;
    if (b.x + b.w > canvas.width())
        b.x = canvas.width() - b.w;
    if (b.y + b.h > canvas.height())
        b.y = canvas.height() - b.h;
    if (b.x < 0)
        b.x = 0;
    if (b.y < 0)
        b.y = 0;
    return b.rect();
}

QRectF dragLeftEdge(QRectF frame, qreal dx, QSizeF canvas)
{
    Box b(frame);
    if (dx <= 0) {
        b.x += dx;
        b.w -= dx;
        if (b.x < 0) { // the right edge stays where it was
            b.w += b.x;
            b.x = 0;
        }
    } else {
        const qreal step = std::min(dx, b.w);
        b.w -= step;
        b.x += step;
        if (b.x > canvas.width() - minimumBoxSize)
            b.x = canvas.width() - minimumBoxSize;
    }
    return b.rect();
}

QRectF dragRightEdge(QRectF frame, qreal dx, QSizeF canvas)
{
    Box b(frame);
    b.w += dx;
    if (dx <= 0) {
        if (b.w < 0)
            b.w = 0;
    } else if (b.x + b.w > canvas.width()) {
        b.w = canvas.width() - b.x;
    }
    return b.rect();
}

QRectF dragTopEdge(QRectF frame, qreal dy, QSizeF canvas)
{
    Box b(frame);
    b.h += dy;
    if (dy <= 0) {
        if (b.h < 0)
            b.h = 0;
    } else {
        if (b.y + b.h > canvas.height())
            b.h = canvas.height() - b.y;
        if (b.y > canvas.height() - minimumBoxSize)
            b.y = canvas.height() - minimumBoxSize;
    }
    return b.rect();
}

QRectF dragBottomEdge(QRectF frame, qreal dy, QSizeF canvas)
{
    Box b(frame);
    b.h -= dy;
    b.y += dy;
    if (dy <= 0) {
        // The height keeps its growth: pushing past the bottom raises the top by the overshoot.
        if (b.y < 0)
            b.y = 0;
    } else {
        if (b.h < 0) {
            b.y += b.h;
            b.h = 0;
        }
        if (b.y > canvas.height() - minimumBoxSize)
            b.y = canvas.height() - minimumBoxSize;
    }
    return b.rect();
}

QRectF normalise(QRectF frame, QSizeF canvas)
{
    Box b(frame);
    if (b.x < 0)
        b.x = 0;
    if (b.y < 0)
        b.y = 0;
    if (b.w < minimumBoxSize)
        b.w = minimumBoxSize;
    if (b.h < minimumBoxSize)
        b.h = minimumBoxSize;
    if (b.x > canvas.width() - minimumBoxSize) {
        b.w = minimumBoxSize;
        b.x = canvas.width() - minimumBoxSize;
    }
    if (b.y > canvas.height()) {
        b.h = minimumBoxSize;
        b.y = canvas.height() - minimumBoxSize;
    }
    return b.rect();
}

std::optional<QRectF> dragStep(const QRectF &frame, int type, qreal dx, qreal dy, QSizeF canvas)
{
    QRectF f = frame;
    switch (type) {
    case MouseTypeMove:
        f = moveFrame(f, dx, dy, canvas);
        break;
    case MouseTypeLeft:
        f = dragLeftEdge(f, dx, canvas);
        break;
    case MouseTypeRight:
        f = dragRightEdge(f, dx, canvas);
        break;
    case MouseTypeTop:
        f = dragTopEdge(f, dy, canvas);
        break;
    case MouseTypeBottom:
        f = dragBottomEdge(f, dy, canvas);
        break;
    case MouseTypeTopLeft:
        f = dragTopEdge(dragLeftEdge(f, dx, canvas), dy, canvas);
        break;
    case MouseTypeTopRight:
        f = dragTopEdge(dragRightEdge(f, dx, canvas), dy, canvas);
        break;
    case MouseTypeBottomLeft:
        f = dragBottomEdge(dragLeftEdge(f, dx, canvas), dy, canvas);
        break;
    case MouseTypeBottomRight:
        f = dragBottomEdge(dragRightEdge(f, dx, canvas), dy, canvas);
        break;
    default:
        return std::nullopt;
    }
    return normalise(f, canvas);
}

QRectF clampFrameForMargins(QRectF frame, QSizeF canvas)
{
    Box b(frame);
    if (b.x < 0)
        b.x = 0;
    if (b.y < 0)
        b.y = 0;
    if (b.w < minimumBoxSize)
        b.w = minimumBoxSize;
    if (b.w > canvas.width())
        b.w = canvas.width();
    if (b.h < minimumBoxSize)
        b.h = minimumBoxSize;
    if (b.h > canvas.height())
        b.h = canvas.height();
    return b.rect();
}

std::optional<KeyStep> keyStepFor(int key, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & (Qt::ControlModifier | Qt::MetaModifier))
        return std::nullopt;
    const float amount = modifiers & Qt::ShiftModifier ? largeKeyStepPercent : keyStepPercent;
    KeyStep step;
    step.resize = modifiers & Qt::AltModifier;
    switch (key) {
    case Qt::Key_Left:
        step.dx = -amount;
        break;
    case Qt::Key_Right:
        step.dx = amount;
        break;
    case Qt::Key_Up:
        step.dy = -amount;
        break;
    case Qt::Key_Down:
        step.dy = amount;
        break;
    default:
        return std::nullopt;
    }
    return step;
}

namespace {

// How far a side may move outwards before it reaches the page's edge: nothing when it is on
// or beyond the edge already.
float roomOutside(float margin)
{
    return std::max(0.0f, margin);
}

// How far the box may shrink along one axis before it is smaller than the minimum size.
float roomToShrink(float nearMargin, float farMargin, qreal pageLength)
{
    const float minimum = float(minimumBoxSize * 100.0 / pageLength);
    return std::max(0.0f, 100.0f - nearMargin - farMargin - minimum);
}

// A move of delta (positive towards the far side) between a near and a far margin.
void moveAlong(float &nearMargin, float &farMargin, float delta)
{
    const float d = delta > 0 ? std::min(delta, roomOutside(farMargin))
                              : -std::min(-delta, roomOutside(nearMargin));
    nearMargin += d;
    farMargin -= d;
}

// The far edge moved by delta (positive outwards, growing the box).
void resizeAlong(float nearMargin, float &farMargin, float delta, qreal pageLength)
{
    if (delta > 0)
        farMargin -= std::min(delta, roomOutside(farMargin));
    else if (delta < 0)
        farMargin += std::min(-delta, roomToShrink(nearMargin, farMargin, pageLength));
}

} // namespace

PositionRect steppedMargins(const PositionRect &margins, const KeyStep &step, QSizeF page)
{
    if (page.width() <= 0 || page.height() <= 0)
        return margins;
    float left = margins.left(), right = margins.right();
    float top = margins.top(), bottom = margins.bottom();
    if (step.resize) {
        resizeAlong(left, right, step.dx, page.width());
        resizeAlong(top, bottom, step.dy, page.height());
    } else {
        moveAlong(left, right, step.dx);
        moveAlong(top, bottom, step.dy);
    }
    PositionRect result = margins;
    result.setLeft(left);
    result.setRight(right);
    result.setTop(top);
    result.setBottom(bottom);
    return result;
}

QRect fittedRect(QSize area, QSizeF proportions)
{
    if (area.isEmpty() || proportions.isEmpty())
        return QRect();
    const qreal scale =
        std::min(area.width() / proportions.width(), area.height() / proportions.height());
    const QSize size(qRound(proportions.width() * scale), qRound(proportions.height() * scale));
    const QSize fitted = size.boundedTo(area);
    return QRect(QPoint((area.width() - fitted.width()) / 2, (area.height() - fitted.height()) / 2),
                 fitted);
}

QPointF flipped(QPointF point, qreal height)
{
    return QPointF(point.x(), height - point.y());
}

QRectF flipped(const QRectF &rect, qreal height)
{
    return QRectF(rect.x(), height - rect.y() - rect.height(), rect.width(), rect.height());
}

QTransform flipTransform(qreal height)
{
    return QTransform(1, 0, 0, -1, 0, height);
}

QPointF pointerPoint(QPointF qtPosition, qreal height)
{
    return flipped(qtPosition + QPointF(0.5, 0.5), height);
}

} // namespace EditGeometry
