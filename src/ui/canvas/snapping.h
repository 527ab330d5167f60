// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "positionrect.h"

#include <QList>
#include <QRectF>
#include <QSizeF>

#include <Qt>

#include <optional>

// Snapping of the edit box while it is dragged or resized, as plain functions that need no
// window. The box's moving edges and its centre are pulled onto the page's edges and centre lines,
// and onto the place where the box has equal margins (left = right, bottom = top), when they come
// within a few screen points of it. Like the drag rules, everything is in canvas coordinates
// (origin at the bottom-left corner, y up). The drag rules run first; snapping only adjusts the
// frame they produce, and never takes the box off the page or below its minimum size.
namespace Snapping {

// How close, in screen points (canvas points), an edge or the centre must come to a line to be
// pulled onto it. Five points is near enough to catch a hand aiming at the line and far enough
// from it that a box can still be placed a few points off the centre without holding Alt.
inline constexpr qreal snapDistance = 5.0;

// Which sides of the box a gesture moves along one axis. "Near" is the left or bottom side,
// "far" the right or top side.
enum class Moving { None, Near, Far, Both };
Moving horizontalMoving(int mouseType);
Moving verticalMoving(int mouseType);

// Where snapping left the box along one axis, in the terms of the margins, so that the saved
// margins can be made exact after the frame is turned into percentages.
struct AxisSnap
{
    enum class Equal {
        No,
        Both,           // the box moved so that its margins are equal: both take their mean
        NearFollowsFar, // the near side moved onto the far side's margin
        FarFollowsNear, // the far side moved onto the near side's margin
    };
    std::optional<float> nearMargin; // the near side lies on a page line: its exact margin
    std::optional<float> farMargin;  // the far side lies on a page line: its exact margin
    Equal equal = Equal::No;

    friend bool operator==(const AxisSnap &a, const AxisSnap &b)
    {
        return a.nearMargin == b.nearMargin && a.farMargin == b.farMargin && a.equal == b.equal;
    }
};

// A line the box snapped to, drawn across the page while the gesture lasts: a vertical line at
// x = position, or a horizontal line at y = position.
struct Guide
{
    Qt::Orientation orientation = Qt::Vertical;
    qreal position = 0;

    friend bool operator==(const Guide &a, const Guide &b)
    {
        return a.orientation == b.orientation && a.position == b.position;
    }
};

struct Result
{
    QRectF frame;
    AxisSnap horizontal;
    AxisSnap vertical;
    QList<Guide> guides;

    bool equalHorizontal() const { return horizontal.equal != AxisSnap::Equal::No; }
    bool equalVertical() const { return vertical.equal != AxisSnap::Equal::No; }
};

// The frame a drag step produced, snapped for a gesture of the given mouse type on a canvas of
// the given size. Edges the gesture does not move are never pulled. Without a line in reach the
// frame comes back unchanged (its guides empty).
Result snapFrame(const QRectF &frame, int mouseType, QSizeF canvas, qreal distance = snapDistance);

// The margins a snapped frame converts to, made exact: a side on a page edge is 0, a side on the
// centre line is 50, and equal margins are equal to the last bit, so that they also print the
// same with one decimal.
PositionRect exactMargins(PositionRect margins, const Result &snap);

} // namespace Snapping
