// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "positionrect.h"

#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <QTransform>

#include <Qt>

#include <array>
#include <optional>

// Geometry of the edit box and of the page canvas that hosts it, as plain functions that need no
// window. Everything here works in canvas coordinates: origin at the bottom-left corner, y growing
// upwards, the way margins map onto the page. Qt widgets have y growing downwards; the "Coordinate
// flip" section below is the only place that turns one into the other.
namespace EditGeometry {

// Side of a square handle, and so the width of the border band in which handles sit.
inline constexpr float trackBoxSize = 7.0f;
// Smallest width and height of the box: two handles and one point between them.
inline constexpr qreal minimumBoxSize = 15.0;

// What the pointer is over, and so what a drag does. The values are stable: they are what the box
// keeps in its mouse type while hovering and freezes while a button is held.
enum MouseType : int {
    MouseTypeNone = 0,
    MouseTypeMove = 1,
    MouseTypeLeft = 2,
    MouseTypeRight = 3,
    MouseTypeTop = 4,
    MouseTypeBottom = 5,
    MouseTypeTopLeft = 6,
    MouseTypeTopRight = 7,
    MouseTypeBottomLeft = 8,
    MouseTypeBottomRight = 9,
};

// True for the types that move or resize the box (1 to 9).
bool isDragType(int type);

// The nine hit areas of a box, in the order they are created and hit-tested: interior, left,
// right, top, bottom, top-left, top-right, bottom-left, bottom-right. Box-local coordinates.
using HitAreas = std::array<QRectF, 9>;
HitAreas hitAreas(QSizeF boxSize, qreal handleSize = trackBoxSize);

// Half-open containment: the left and bottom edges belong to the rectangle, the right and top
// edges do not, so adjacent areas never both claim a point.
bool containsPoint(const QRectF &rect, QPointF point);

// Index of the first area containing the point, or -1. Where areas overlap (small boxes) the
// earlier one wins: edge handles before corners.
int matchAreaIndex(const HitAreas &areas, QPointF point);

// Classifies an area by exact comparisons on its origin and width against the box's frame size.
// An area at x = 7 is the interior, even the top or bottom handle of a box exactly 21 wide.
MouseType mouseTypeForArea(const QRectF &area, QSizeF frameSize);

// The mouse type at a box-local point: that of the first area containing it, else none.
MouseType mouseTypeAt(const HitAreas &areas, QPointF point, QSizeF frameSize);

// A frame grown to the minimum size where it is smaller; the origin stays.
QRectF withMinimumSize(const QRectF &frame);

// The box as the canvas shows a record (y up). Margins on the page (0 to 100) give the record's
// exact frame, or none when a pair leaves no room: the box then stays where it was. A margin
// beyond the page (150, 100000, below 0, not a number) is taken at the page's edge, and a pair
// that then leaves no room gives the box its minimum size at the near margin, inside the page:
// such values show as far as they can, never as the box of an earlier value.
std::optional<QRectF> shownFrame(const PositionRect &rect, QSizeF canvas);

// The drag rules, each on a frame in canvas coordinates (y up) for a canvas of the given size.
QRectF moveFrame(QRectF frame, qreal dx, qreal dy, QSizeF canvas);
QRectF dragLeftEdge(QRectF frame, qreal dx, QSizeF canvas);
QRectF dragRightEdge(QRectF frame, qreal dx, QSizeF canvas);
QRectF dragTopEdge(QRectF frame, qreal dy, QSizeF canvas);
QRectF dragBottomEdge(QRectF frame, qreal dy, QSizeF canvas);
// Puts the box back inside the canvas at its minimum size after an edge rule. The right test
// allows for the box's width but the top test compares with the full height; both are kept so.
QRectF normalise(QRectF frame, QSizeF canvas);

// One drag step: the frame after the pointer moved by (dx, dy) with the given mouse type held,
// normalised. No frame for types outside 1 to 9 (nothing moves).
std::optional<QRectF> dragStep(const QRectF &frame, int type, qreal dx, qreal dy, QSizeF canvas);

// The frame the canvas turns into margins: the box's frame pulled to the canvas's origin and
// bounded to between the minimum size and the canvas's size. The box itself is not changed.
QRectF clampFrameForMargins(QRectF frame, QSizeF canvas);

// ---- Keyboard steps
// Arrow keys move the box by 1 % of the page, 10 % with Shift; with Alt (Option on macOS) they
// move the right or bottom edge instead, resizing the box by the same steps. Steps are taken on
// the margins, so that ten steps of 1 % are exactly 10 % in the saved settings.
inline constexpr float keyStepPercent = 1.0f;
inline constexpr float largeKeyStepPercent = 10.0f;

struct KeyStep
{
    float dx = 0;        // percent of the page's width, positive to the right
    float dy = 0;        // percent of the page's height, positive downwards
    bool resize = false; // the right or bottom edge moves, the left and top stay
};

// The step an arrow key asks for; none for other keys, or with Control or Meta held (those
// combinations belong to the window).
std::optional<KeyStep> keyStepFor(int key, Qt::KeyboardModifiers modifiers);

// The margins after a key step on a page of the given size, under the drag rules: a move stops
// where an edge reaches the page's edge, an edge stops at the page's edge or where the box would
// be smaller than the minimum size. An edge already beyond the page is not pushed further out.
// Transparency and layer are kept.
PositionRect steppedMargins(const PositionRect &margins, const KeyStep &step, QSizeF page);

// ---- Canvas placement
// The largest rectangle of the given proportions that fits the area, centred in it, in whole
// pixels. The canvas keeps the preview page's proportions this way, so that the box has the same
// shape on the canvas as the image on the preview's page. Empty for an empty area or ratio.
QRect fittedRect(QSize area, QSizeF proportions);

// ---- Coordinate flip
// Canvas and box coordinates have y up from the bottom-left corner; Qt widget and window
// coordinates have y down from the top-left corner. Flipping within a container of height h maps
// y to h - y (a rectangle's top-left corner to its bottom-left corner), and is its own inverse.
QPointF flipped(QPointF point, qreal height);
QRectF flipped(const QRectF &rect, qreal height);
// The painter transform that lets drawing code use y-up coordinates in a widget of this height.
QTransform flipTransform(qreal height);
// A pointer position as Qt reports it (the top-left corner of the pixel under the pointer, y
// down) to a y-up point at the centre of that pixel, so that the half-open hit tests cover the
// same pixels as the drawing of each area.
QPointF pointerPoint(QPointF qtPosition, qreal height);

} // namespace EditGeometry
