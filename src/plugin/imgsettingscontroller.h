#pragma once

#include <QString>

class QDialog;
class QObject;

// The settings window of the image plugin as a host sees it. A pure interface: a host includes
// this header and calls through the object that the plugin's factory returns, without linking
// the plugin. The host owns the object and deletes it after the window has closed.
//
// Closing the window always ends it with a stop code: QDialog::exec() returns closeMode(), the
// dialog emits QDialog::finished(closeMode()), and object() emits windowClosed(int closeMode).
class ImgSettingsController
{
public:
    virtual ~ImgSettingsController() = default;

    // Whether the host runs the window modally; call it before window() is first asked for.
    virtual void setModalMode(bool modal) = 0;
    // The workspace folder; set it before window() to override the per-user default.
    virtual void setWorkSpace(const QString &path) = 0;
    virtual QString workSpace() const = 0;
    virtual QString bundlePath() const = 0;

    // The settings window, loaded with the settings on first use; the controller owns it.
    // Null when the window description cannot be loaded.
    virtual QDialog *window() = 0;

    // The outcome, valid once the window has closed: 1 = apply, 0 = discard.
    virtual int closeMode() const = 0;
    // True once the window has closed and the host may let the bundle go.
    virtual bool isCloseBundle() const = 0;

    // The QObject behind the controller, for its signal windowClosed(int closeMode).
    virtual QObject *object() = 0;

    // When an earlier window on the same workspace died, the author is asked while the window
    // loads whether to go back to the workspace as it was before that window or keep it as it
    // is. A host that runs without a person answers for them: 0 asks (the default), 1 goes back,
    // 2 keeps. Call it before window().
    virtual void setRecoveryAnswer(int answer) = 0;
};
