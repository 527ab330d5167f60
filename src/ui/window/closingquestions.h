// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "marginroom.h"

// The questions the window asks the author before it closes, in the window's language.
namespace ClosingQuestions {

enum class Answer { Apply, Discard, KeepEditing };

// The close box with changes made: apply them, discard them, or keep editing. Escape and the
// question's own close box keep editing: an author who closes the question has not chosen to
// lose the session's work.
Answer askHowToClose();

// OK with margins that leave the image no room (room says which pair): true when the author
// publishes anyway. True at once when both pairs have room.
bool publishWithoutRoom(const MarginRoom &room);

} // namespace ClosingQuestions
