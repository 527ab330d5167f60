// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "settingsbackup.h"

#include <QFlags>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QWidget;

// The settings window's work on its workspace as a whole: what an earlier window that died left
// is settled first, the backup that makes Cancel possible is taken while the window opens, and
// at closing the workspace is kept, restored from the backup, or prepared for the book. The
// problems met on the way are told to the author in alerts (unless the host closes the window
// itself) and kept as flags for the host.
class WorkspaceSession : public QObject
{
    Q_OBJECT

public:
    enum Problem {
        NoProblem = 0,
        WorkspaceUnavailable = 1, // no workspace folder that can be written: nothing is saved
        BackupUnavailable = 2,    // no complete backup: Cancel cannot undo the changes
        RestoreFailed = 4, // the last restore did not finish; the backup is kept for next time
    };
    Q_DECLARE_FLAGS(Problems, Problem)
    // The answer for an earlier window's backup: ask the author, or answer without asking.
    enum class Recovery { AskAuthor, GoBack, KeepAsItIs };

    explicit WorkspaceSession(QObject *parent = nullptr);
    ~WorkspaceSession() override;

    void setWorkSpace(const QString &path) { m_workSpace = path; }
    QString workSpace() const { return m_workSpace; }
    // The window that progress dialogs belong to while it is shown.
    void setWindow(QWidget *window) { m_window = window; }
    // No alerts from now on: the host closes the window itself.
    void setQuiet(bool quiet) { m_quiet = quiet; }
    // The window has closed: what is found later is only kept as a flag.
    void setWindowClosed(bool closed) { m_windowClosed = closed; }

    // Settles what an earlier window left half-done, before anything touches the workspace; a
    // complete backup of a window that died is restored or let go as answer says.
    void recover(Recovery answer);
    // A workspace that cannot be written saves nothing: the author and the host hear so.
    void checkWorkspace();
    // Makes the backup of this opening and starts taking its image in the background; the copy
    // of a large workspace waits for letBackupProceed() (the window's first preview) a while.
    void takeBackup();
    void letBackupProceed();
    // Apply: the workspace stays as saved; the backup goes.
    void keepChanges();
    // Discard: the workspace goes back to the backup, with progress while the window waits.
    void undoChanges();
    // OK: writes the book's script and the list of its files, and removes what the book does
    // not need.
    void publish(const QString &bundlePath, const QString &identifier,
                 const QStringList &locatedFiles);

    SettingsBackup *backup() const { return m_backup.get(); }
    QString backupPath() const { return m_backupPath; }
    Problems problems() const { return m_problems; }

private:
    void reportBackupFailure();
    void reportRestoreFailure();
    void reportWorkspaceFailure();
    // Runs a restore in the background while the window waits without taking input; a progress
    // dialog appears when it takes more than half a second.
    using RestoreWork = std::function<SettingsBackup::Outcome(const SettingsBackup::Progress &)>;
    SettingsBackup::Outcome restoreWithProgress(const RestoreWork &work);
    // An alert for the author, unless the host is closing the window.
    void tell(const QString &message, const QString &text);

    QString m_workSpace;
    QPointer<QWidget> m_window;
    std::unique_ptr<SettingsBackup> m_backup;
    QString m_backupPath;
    Problems m_problems;
    bool m_quiet = false;
    bool m_windowClosed = false;
    bool m_backupFailureShown = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(WorkspaceSession::Problems)
