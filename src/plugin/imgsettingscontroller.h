// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <functional>

class QDialog;
class QObject;

// The settings window of the image plugin as a host sees it. A pure interface: a host includes
// this header and calls through the object that the plugin's factory returns, without linking
// the plugin. The host owns the object and deletes it after the window has closed; deleting it
// while the window is still open discards the window, as endWindow(0) does. GUI thread only.
//
// Closing the window always ends it with a stop code: QDialog::exec() returns closeMode(), the
// dialog emits QDialog::finished(closeMode()), and object() emits windowClosed(int closeMode).
class ImgSettingsController
{
public:
    virtual ~ImgSettingsController() = default;

    // The stop code: closeMode(), endWindow(), QDialog::exec() and windowClosed() speak in it.
    // The functions take and give int, as hosts built against 1.0 pass plain numbers.
    enum CloseMode { Discard = 0, Apply = 1 };
    // The host's answer for the author when an earlier window on the workspace died.
    enum RecoveryAnswer { AskTheAuthor = 0, GoBack = 1, KeepAsItIs = 2 };

    // Whether the host runs the window modally; call it before window() is first asked for.
    virtual void setModalMode(bool modal) = 0;
    // The workspace folder; set it before window() to override the per-user default.
    virtual void setWorkSpace(const QString &path) = 0;
    virtual QString workSpace() const = 0;
    virtual QString bundlePath() const = 0;

    // The settings window, loaded with the settings on first use; the controller owns it.
    // Null when the window description cannot be loaded.
    virtual QDialog *window() = 0;

    // The outcome, valid once the window has closed: Apply (1) or Discard (0).
    virtual int closeMode() const = 0;
    // True once the window has closed and the host may let the bundle go.
    virtual bool isCloseBundle() const = 0;

    // The QObject behind the controller, for its signals windowClosed(int closeMode) and
    // previewLoaded(), the latter each time the preview has been rebuilt: its page loaded and
    // reloaded once, showing the settings.
    virtual QObject *object() = 0;

    // When an earlier window on the same workspace died, the author is asked while the window
    // loads whether to go back to the workspace as it was before that window or keep it as it
    // is. A host that runs without a person answers for them with a RecoveryAnswer: AskTheAuthor
    // (the default), GoBack or KeepAsItIs. Call it before window().
    virtual void setRecoveryAnswer(int answer) = 0;

    // Ends an open window from code, without asking the author and without alerts (for a host
    // that shuts down): Apply keeps the workspace as saved while editing (as the close box
    // answered with OK does: no book script is written), Discard restores it as it was at
    // opening (as Cancel does). The window then closes as any window does. Does nothing unless the window is open.
    virtual void endWindow(int closeMode) = 0;

    // Called with the stop code once the window has closed, however it closed; for hosts that
    // do not run the window with exec(). Set it before the window closes; an empty function
    // removes it.
    virtual void setClosedHandler(std::function<void(int closeMode)> handler) = 0;

    // Why the window cannot do all of its work, as flags; 0 when nothing is wrong. The author is
    // told each of them in an alert too, except after endWindow().
    enum Problem {
        // No workspace folder that can be written: the window saves nothing.
        WorkspaceUnavailable = 1,
        // No complete backup of the workspace: Cancel cannot undo the changes.
        BackupUnavailable = 2,
        // A restore did not finish; the workspace stays as it was and the backup is kept for
        // the next window on it.
        RestoreFailed = 4,
    };
    virtual int problems() const = 0;
};
