// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

// A position value as the fields, the position file and the room check write it: one decimal,
// a point as the decimal mark, halves rounded away from zero, "%.1f" as QString::asprintf writes
// it. A drag shows four margins on every step, so the common case is worked out with integer
// arithmetic rather than through a formatter; the result is the same to the character.
namespace OneDecimal {

// The number the text shows, in tenths ("12.4" is 124). Only for finite values whose tenths fit
// in a long long (below about 9.2e17 either way); the room check caps larger ones first.
long long tenths(float value);
// The text itself, as QString::asprintf("%.1f", double(value)) gives it.
QString text(float value);

} // namespace OneDecimal
