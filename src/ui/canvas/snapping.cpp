// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "snapping.h"

#include "editgeometry.h"

#include <array>
#include <cmath>

using namespace EditGeometry;

namespace Snapping {

Moving horizontalMoving(int mouseType)
{
    switch (mouseType) {
    case MouseTypeMove:
        return Moving::Both;
    case MouseTypeLeft:
    case MouseTypeTopLeft:
    case MouseTypeBottomLeft:
        return Moving::Near;
    case MouseTypeRight:
    case MouseTypeTopRight:
    case MouseTypeBottomRight:
        return Moving::Far;
    default:
        return Moving::None;
    }
}

Moving verticalMoving(int mouseType)
{
    switch (mouseType) {
    case MouseTypeMove:
        return Moving::Both;
    case MouseTypeBottom:
    case MouseTypeBottomLeft:
    case MouseTypeBottomRight:
        return Moving::Near;
    case MouseTypeTop:
    case MouseTypeTopLeft:
    case MouseTypeTopRight:
        return Moving::Far;
    default:
        return Moving::None;
    }
}

namespace {

// Frames come from sums of reals; a side this close to a line lies on it.
constexpr qreal onLineTolerance = 1e-6;

bool onLine(qreal value, qreal line)
{
    return std::abs(value - line) <= onLineTolerance;
}

// One axis of the box: where its near side starts and how long it is.
struct Span
{
    qreal start;
    qreal length;
    qreal end() const { return start + length; }
};

// Picks the nearest of a gesture's candidate spans within the snapping distance. Candidates come
// in order of preference: on a tie the earlier one wins, so equal margins win over an edge.
class Nearest
{
public:
    Nearest(Span current, qreal page, qreal distance)
        : m_current(current)
        , m_page(page)
        , m_best(current)
        , m_bestDistance(distance)
    {}

    void consider(Span candidate, qreal distance)
    {
        const bool onPage = candidate.start >= -onLineTolerance &&
                            candidate.end() <= m_page + onLineTolerance &&
                            candidate.length >= minimumBoxSize - onLineTolerance;
        if (!onPage || distance > m_bestDistance || (m_found && distance == m_bestDistance))
            return;
        m_best = candidate;
        m_bestDistance = distance;
        m_found = true;
    }
    Span best() const { return m_found ? m_best : m_current; }

private:
    Span m_current;
    qreal m_page;
    Span m_best;
    qreal m_bestDistance;
    bool m_found = false;
};

Span snapSpan(Span span, Moving moving, qreal page, qreal distance)
{
    const std::array<qreal, 3> lines{0, page / 2, page};
    Nearest nearest(span, page, distance);
    switch (moving) {
    case Moving::Both: {
        const qreal centred = page / 2 - span.length / 2;
        nearest.consider({centred, span.length}, std::abs(centred - span.start));
        for (qreal line : lines) {
            nearest.consider({line, span.length}, std::abs(line - span.start));
            nearest.consider({line - span.length, span.length}, std::abs(line - span.end()));
        }
        break;
    }
    case Moving::Near: {
        const qreal end = span.end();
        const qreal mirrored = page - end; // the near margin equal to the far one
        nearest.consider({mirrored, end - mirrored}, std::abs(mirrored - span.start));
        for (qreal line : lines)
            nearest.consider({line, end - line}, std::abs(line - span.start));
        break;
    }
    case Moving::Far: {
        const qreal mirrored = page - span.start;
        nearest.consider({span.start, mirrored - span.start}, std::abs(mirrored - span.end()));
        for (qreal line : lines)
            nearest.consider({span.start, line - span.start}, std::abs(line - span.end()));
        break;
    }
    case Moving::None:
        break;
    }
    return nearest.best();
}

// What a span's moving sides lie on, as margins and guide lines.
struct Outcome
{
    AxisSnap snap;
    QList<qreal> lines;

    void addLine(qreal line)
    {
        if (!lines.contains(line))
            lines << line;
    }
};

Outcome describe(Span span, Moving moving, qreal page)
{
    Outcome out;
    if (moving == Moving::None)
        return out;
    const qreal centre = page / 2;
    if (moving != Moving::Far) {
        if (onLine(span.start, 0)) {
            out.snap.nearMargin = 0.0f;
            out.addLine(0);
        } else if (onLine(span.start, centre)) {
            out.snap.nearMargin = 50.0f;
            out.addLine(centre);
        }
    }
    if (moving != Moving::Near) {
        if (onLine(span.end(), page)) {
            out.snap.farMargin = 0.0f;
            out.addLine(page);
        } else if (onLine(span.end(), centre)) {
            out.snap.farMargin = 50.0f;
            out.addLine(centre);
        }
    }
    if (onLine(span.start, page - span.end())) {
        out.snap.equal = moving == Moving::Both   ? AxisSnap::Equal::Both
                         : moving == Moving::Near ? AxisSnap::Equal::NearFollowsFar
                                                  : AxisSnap::Equal::FarFollowsNear;
        out.addLine(centre); // a box with equal margins is centred on the page
    }
    return out;
}

void applyAxis(const AxisSnap &snap, float &nearMargin, float &farMargin)
{
    if (snap.nearMargin)
        nearMargin = *snap.nearMargin;
    if (snap.farMargin)
        farMargin = *snap.farMargin;
    switch (snap.equal) {
    case AxisSnap::Equal::Both:
        nearMargin = farMargin = (nearMargin + farMargin) / 2;
        break;
    case AxisSnap::Equal::NearFollowsFar:
        nearMargin = farMargin;
        break;
    case AxisSnap::Equal::FarFollowsNear:
        farMargin = nearMargin;
        break;
    case AxisSnap::Equal::No:
        break;
    }
}

} // namespace

Result snapFrame(const QRectF &frame, int mouseType, QSizeF canvas, qreal distance)
{
    const Moving across = horizontalMoving(mouseType);
    const Moving upDown = verticalMoving(mouseType);
    const Span x = snapSpan({frame.x(), frame.width()}, across, canvas.width(), distance);
    const Span y = snapSpan({frame.y(), frame.height()}, upDown, canvas.height(), distance);
    const Outcome xOut = describe(x, across, canvas.width());
    const Outcome yOut = describe(y, upDown, canvas.height());

    Result result;
    result.frame = QRectF(x.start, y.start, x.length, y.length);
    result.horizontal = xOut.snap;
    result.vertical = yOut.snap;
    for (qreal line : xOut.lines)
        result.guides << Guide{Qt::Vertical, line};
    for (qreal line : yOut.lines)
        result.guides << Guide{Qt::Horizontal, line};
    return result;
}

PositionRect exactMargins(PositionRect margins, const Result &snap)
{
    float left = margins.left(), right = margins.right();
    float bottom = margins.bottom(), top = margins.top();
    applyAxis(snap.horizontal, left, right);
    applyAxis(snap.vertical, bottom, top);
    margins.setLeft(left);
    margins.setRight(right);
    margins.setBottom(bottom);
    margins.setTop(top);
    return margins;
}

} // namespace Snapping
