#pragma once

#include <QDialog>

// The settings window's top-level dialog. A dialog ends itself on its close box and on Escape;
// this one hands both to its controller instead, which asks whether to apply the settings and
// ends the window with done(). reject() is therefore the close box, never the Cancel button.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    using QDialog::QDialog;

    void reject() override;

signals:
    // The user asked to close the window other than by OK or Cancel.
    void closeRequested();

protected:
    void closeEvent(QCloseEvent *event) override;
};
