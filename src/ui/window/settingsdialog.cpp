// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "settingsdialog.h"

#include <QCloseEvent>
#include <QKeyEvent>

void SettingsDialog::reject()
{
    emit closeRequested();
}

void SettingsDialog::closeEvent(QCloseEvent *event)
{
    emit closeRequested();
    // The controller has ended the window by now, or kept it open; a still visible window stays.
    if (isVisible())
        event->ignore();
    else
        event->accept();
}

void SettingsDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel)) {
        event->accept();
        emit cancelRequested();
        return;
    }
    QDialog::keyPressEvent(event);
}
