// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "closingquestions.h"

#include "localisation.h"
#include "logalert.h"

namespace ClosingQuestions {

namespace {

QString localised(const char *key)
{
    const QString text = QString::fromUtf8(key);
    return loadAppString(text, text);
}

} // namespace

Answer askHowToClose()
{
    enum { ApplyButton, DiscardButton, KeepEditingButton };
    const int answer = LogAlert::AlertWithButtons(
        localised(QT_TRANSLATE_NOOP("PluginLocale", "Do you want to apply the settings?")),
        QString(),
        {localised(QT_TRANSLATE_NOOP("PluginLocale", "Apply")),
         localised(QT_TRANSLATE_NOOP("PluginLocale", "Discard Changes")),
         localised(QT_TRANSLATE_NOOP("PluginLocale", "Keep Editing"))},
        KeepEditingButton);
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
            ? localised(QT_TRANSLATE_NOOP(
                  "PluginLocale",
                  "The left and right margins add up to 100 % or more: the image has no width "
                  "left on the page."))
            : localised(QT_TRANSLATE_NOOP(
                  "PluginLocale",
                  "The top and bottom margins add up to 100 % or more: the image has no height "
                  "left on the page."));
    // Publish is the default only on purpose: Return and Escape both go back to editing.
    enum { KeepEditingButton, PublishButton };
    return LogAlert::AlertWithButtons(
               localised(QT_TRANSLATE_NOOP("PluginLocale",
                                           "The book will not show the image. Publish anyway?")),
               why,
               {localised(QT_TRANSLATE_NOOP("PluginLocale", "Keep Editing")),
                localised(QT_TRANSLATE_NOOP("PluginLocale", "Publish Anyway"))},
               KeepEditingButton) == PublishButton;
}

} // namespace ClosingQuestions
