// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

class PositionRect;

// Whether the margins leave the image any room on the page. Margins are percent of the page,
// so left + right (or top + bottom) of 100 or more leave the image no width (or height). Such
// values are still legal and saved as typed; the window only marks the fields of the pair.
struct MarginRoom
{
    bool noRoomAcross = false; // left + right reach the page's width
    bool noRoomDown = false;   // top + bottom reach the page's height

    // Judged on the values as the fields show and the position file keeps them, to the tenth:
    // 49.96 + 50.0 reads "50.0" twice and has no room, although its exact sum is below 100.
    static MarginRoom of(const PositionRect &rect);
    static bool pairHasNoRoom(float first, float second);

    friend bool operator==(const MarginRoom &a, const MarginRoom &b)
    {
        return a.noRoomAcross == b.noRoomAcross && a.noRoomDown == b.noRoomDown;
    }
};
