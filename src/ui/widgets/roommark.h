// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QPalette>
#include <QString>

class QWidget;

// The mark of a margin field whose pair leaves the image no room on the page: a reddened
// background and a tooltip that says why. The field keeps taking input, since an author often
// passes through such values while typing; clearing the mark gives the field back its own
// tooltip and its inherited palette.
namespace RoomMark {

// Marks or clears field; nothing changes when it already shows that state and reason.
void setMarked(QWidget *field, bool marked, const QString &why);
bool isMarked(const QWidget *field);
// plain with its editing background tinted towards red and its text colour kept, in every
// colour group: the tint follows the palette's own background, so a dark palette gets a dark
// red under its light text and a light one a pale red under its dark text.
QPalette markedPalette(const QPalette &plain);

} // namespace RoomMark
