// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "positionrect.h"

#include <QRectF>
#include <QSizeF>

// Keeping the image undistorted on the page, as plain functions that need no window. The page
// canvas has the page's proportions, but only to the nearest pixel, so shapes are worked out on
// the page (through its proportions) and then brought to the canvas. Canvas coordinates as in
// EditGeometry: origin at the bottom-left corner, y up.
namespace Proportions {

// The width-to-height ratio a box needs on a canvas of the given size so that an image of the
// given size shows undistorted on a page of the given proportions. An empty page stands for the
// canvas's own proportions. 0 when the image or canvas has no size.
qreal boxAspect(QSizeF image, QSizeF canvas, QSizeF page = QSizeF());

// True for the four corner handles, the only ones that can keep a shape while resizing.
bool isCornerType(int mouseType);

// The frame a corner drag produced, reshaped to the given width-to-height ratio. The opposite
// corner stays where it is; the box grows along whichever side the pointer pulled further, and
// shrinks again where the page ends. The frame comes back unchanged for a side handle, the move
// or a ratio of 0, and when no box of that shape fits between the minimum size and the page.
QRectF keepAspect(const QRectF &frame, int mouseType, qreal aspect, QSizeF canvas);

// The margins with the box's height set from its width so that an image of the given size is
// undistorted on the page. The top margin stays, the bottom one follows; a box that would run
// past the page's bottom moves up, and one taller than the page is as tall as the page with its
// width following instead. The box stays at least the minimum size on the canvas. Transparency
// and layer are kept; margins that leave no width, or an image without size, come back as given.
PositionRect fittedToImage(const PositionRect &margins, QSizeF image, QSizeF canvas,
                           QSizeF page = QSizeF());

} // namespace Proportions
