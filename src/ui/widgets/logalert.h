// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QStringList>

// The bundle's three modal alerts. Each runs application-modal on the main thread and returns
// once the user has answered; message is the main text, text the smaller informative text (an
// empty text gives an empty line). Callers pass texts already localised; the alerts' own texts
// (the title "Image Plugin" and the buttons' titles) are in the window's language.
class LogAlert
{
public:
    LogAlert() = delete;

    // One "OK" button.
    static void AlertOKWithMessage(const QString &message, const QString &text);
    // "YES" (Return) and "NO" (Escape); false only when "NO" closed the alert.
    static bool AlertYesNoWithMessage(const QString &message, const QString &text);
    // "OK" (Return) and "Cancel" (Escape); false only when "Cancel" closed the alert.
    static bool AlertOKCancelWithMessage(const QString &message, const QString &text);
    // The given buttons in order, the first the default (Return), the one at escapeIndex pressed
    // by Escape and the close box; answers the index of the button pressed.
    static int AlertWithButtons(const QString &message, const QString &text,
                                const QStringList &titles, int escapeIndex);
};
