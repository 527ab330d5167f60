// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "marginroom.h"
#include "positionhistory.h"
#include "positionrect.h"
#include "windowassembly.h"

#include <QString>

// The window's position controls bound to a record: the four margin fields, the transparency
// field and slider, and the layer buttons. It shows a record in them without an edit going out,
// reads what the author typed or slid into a record, and marks a margin pair that leaves the
// image no room. Saving and the history are the controller's.
class PositionForm
{
public:
    explicit PositionForm(const WindowAssembly::Outlets &outlets = {});

    // The keystroke filter of the number fields: a comma just typed is the decimal point, as
    // German or French authors type it; a last character that is neither a digit nor the first
    // point is dropped.
    static QString filteredNumber(const QString &text);

    // The number fields hold digits, a sign and a decimal mark, which need no shaping; a drag
    // sets them on every step. Only the strategy is set: family and size still come from the
    // window.
    void prepareNumberFields();

    // Shows the record's margins; a field's text is set only when it changes (a drag step moves
    // one or two margins by a fraction of a point, and setting it again would cost a relayout
    // and a repaint for nothing). Marks the pairs without room.
    void showMargins(const PositionRect &record);
    void showTransparency(float value);
    // Chooses the record's layer button; a layer no button carries leaves the choice as it was.
    void selectLayer(int layer);
    // True while selectLayer() chooses a button: the choice is shown, not made by the author.
    bool isSelectingLayer() const { return m_selectingLayer; }
    // The layer of the chosen button, as the position file takes it: 0 when none is chosen.
    int chosenLayer() const;

    // The author typed into field: its text is filtered and its value written into record.
    // False when field is none of the form's number fields.
    bool readField(QLineEdit *field, PositionRect *record);
    // The author moved the slider: the field follows and the value goes into record.
    void readSlider(PositionRect *record);
    // The history's kind of a keystroke in field.
    PositionHistory::Edit editOf(const QLineEdit *field) const;

private:
    void showMarginRoom(const PositionRect &record);

    WindowAssembly::Outlets m_outlets;
    bool m_selectingLayer = false;
    // The room the margin fields' marks show; no field is marked before the first check.
    MarginRoom m_shownRoom;
};
