// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "closingquestions.h"

#include "localisation.h"
#include "logalert.h"

namespace ClosingQuestions {

namespace {

QString text(const char *english)
{
    const QString key = QString::fromUtf8(english);
    return loadAppString(key, key);
}

} // namespace

Answer askHowToClose()
{
    enum { ApplyButton, DiscardButton, KeepEditingButton };
    const int answer = LogAlert::AlertWithButtons(
        text("Do you want to apply the settings?"), QString(),
        {text("Apply"), text("Discard Changes"), text("Keep Editing")}, KeepEditingButton);
    switch (answer) {
    case ApplyButton:
        return Answer::Apply;
    case DiscardButton:
        return Answer::Discard;
    default:
        return Answer::KeepEditing;
    }
}

bool publishWithoutRoom(const MarginRoom &room)
{
    if (!room.noRoomAcross && !room.noRoomDown)
        return true;
    const QString why =
        room.noRoomAcross
            ? text("The left and right margins add up to 100 % or more: the image has no width "
                   "left on the page.")
            : text("The top and bottom margins add up to 100 % or more: the image has no height "
                   "left on the page.");
    // Publish is the default only on purpose: Return and Escape both go back to editing.
    enum { KeepEditingButton, PublishButton };
    return LogAlert::AlertWithButtons(text("The book will not show the image. Publish anyway?"),
                                      why, {text("Keep Editing"), text("Publish Anyway")},
                                      KeepEditingButton) == PublishButton;
}

} // namespace ClosingQuestions
