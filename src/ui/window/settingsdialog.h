// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDialog>

// The settings window's top-level dialog. A dialog ends itself on its close box and on Escape;
// this one hands both to its controller instead. The close box (and reject()) asks whether to
// apply the settings; Escape is the Cancel button, as in any dialog with one, and asks nothing.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    using QDialog::QDialog;

    void reject() override;

signals:
    // The user asked to close the window other than by OK, Cancel or Escape.
    void closeRequested();
    // The user pressed Escape: the same as the Cancel button.
    void cancelRequested();

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
