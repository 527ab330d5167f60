// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

// What the page canvas tells its owner (the settings window). The canvas holds the owner through
// a plain pointer and never deletes it; the owner must outlive the canvas.
class PostionViewDelete
{
public:
    // After each drag step of the box, once the canvas's record holds the new margins.
    virtual void onChangePositionView() = 0;
    // When the button is released after a press in the box: the moment to save.
    virtual void didChangedPositionView() = 0;

protected:
    ~PostionViewDelete() = default;
};
