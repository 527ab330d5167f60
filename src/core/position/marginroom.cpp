// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "marginroom.h"

#include "onedecimal.h"
#include "positionrect.h"

#include <cmath>

namespace {

// A value as its one-decimal text reads, in tenths: the same rounding as the fields and the
// position file, ties included. A value that is not a number reads as none.
long long tenths(float value)
{
    if (!std::isfinite(value))
        return std::isinf(value) && value > 0 ? 1000 : 0;
    // Far beyond any page the count of tenths is kept within what a long long holds.
    constexpr double beyond = 1e15;
    if (std::fabs(value) > beyond)
        return std::llround(std::copysign(beyond, double(value)));
    return OneDecimal::tenths(value);
}

} // namespace

bool MarginRoom::pairHasNoRoom(float first, float second)
{
    return tenths(first) + tenths(second) >= 1000;
}

MarginRoom MarginRoom::of(const PositionRect &rect)
{
    MarginRoom room;
    room.noRoomAcross = pairHasNoRoom(rect.left(), rect.right());
    room.noRoomDown = pairHasNoRoom(rect.top(), rect.bottom());
    return room;
}
