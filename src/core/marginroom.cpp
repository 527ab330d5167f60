#include "marginroom.h"

#include "positionrect.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

// A value as its one-decimal text reads, in tenths: the same rounding as the fields and the
// position file, ties included. A value that is not a number reads as none.
long long tenths(float value)
{
    if (!std::isfinite(value))
        return std::isinf(value) && value > 0 ? 1000 : 0;
    // Every drag step and keystroke judges four values: printed on the stack, not through a
    // QString, then read back as whole tenths.
    // Far beyond any page, the count of tenths is kept within what a long long holds.
    constexpr double beyond = 1e15;
    if (std::fabs(value) > beyond)
        return std::llround(std::copysign(beyond, double(value)));
    char text[64]; // the longest float prints 41 characters this way
    std::snprintf(text, sizeof text, "%.1f", double(value));
    return std::llround(std::strtod(text, nullptr) * 10.0);
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
