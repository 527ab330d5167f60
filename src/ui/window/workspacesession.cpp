// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "workspacesession.h"

#include "backuprecovery.h"
#include "localisation.h"
#include "logalert.h"
#include "pluginsettingsinfo.h"
#include "settingsworkspace.h"
#include "workspacelayout.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QLoggingCategory>
#include <QProgressDialog>
#include <QPromise>
#include <QWidget>
#include <QtConcurrent/QtConcurrentRun>

#include <chrono>
#include <climits>

Q_LOGGING_CATEGORY(lcSession, "img.settings.session", QtWarningMsg)

namespace {

// A workspace's backup copies this many entries at once, the whole of a usual workspace (the
// plugin's few files and some pictures); the rest of a larger one waits for the window's first
// preview, or this long at most.
constexpr qint64 kBackupEntriesBeforeHold = 64;
constexpr std::chrono::milliseconds kBackupHold(2000);

QString localised(const QString &english)
{
    return loadAppString(english, english);
}

int clampedToInt(qint64 value)
{
    return int(qBound(qint64(0), value, qint64(INT_MAX)));
}

} // namespace

WorkspaceSession::WorkspaceSession(QObject *parent)
    : QObject(parent)
{}

WorkspaceSession::~WorkspaceSession() = default;

void WorkspaceSession::recover(Recovery answer)
{
    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(m_workSpace);
    if (pending.isEmpty())
        return;
    bool goBack = answer == Recovery::GoBack;
    if (answer == Recovery::AskAuthor) {
        // Keeping changes nothing, so it is what Return and Escape do.
        goBack = LogAlert::AlertWithButtons(
                     localised(QStringLiteral(QT_TRANSLATE_NOOP(
                         "PluginLocale", "The settings window closed unexpectedly last time."))),
                     localised(QStringLiteral(QT_TRANSLATE_NOOP(
                         "PluginLocale", "Go back to the workspace as it was before that "
                                         "window opened, or keep it as it is now?"))),
                     {localised(QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Keep As It Is"))),
                      localised(QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Go Back")))},
                     0) == 1;
    }
    // The oldest backup holds the workspace as it was before the first window that died; the
    // others go either way, so that none is left behind.
    const QString oldest = pending.first().backupPath;
    for (const BackupRecovery::Pending &entry : pending) {
        if (!goBack || entry.backupPath != oldest)
            BackupRecovery::keep(entry.backupPath);
    }
    if (!goBack)
        return;
    const QString workSpace = m_workSpace;
    const SettingsBackup::Outcome outcome =
        restoreWithProgress([workSpace, oldest](const SettingsBackup::Progress &progress) {
            return BackupRecovery::goBack(workSpace, oldest, progress);
        });
    if (outcome != SettingsBackup::Outcome::Restored)
        reportRestoreFailure();
}

void WorkspaceSession::checkWorkspace()
{
    const QFileInfo folder(m_workSpace);
    if (!m_workSpace.isEmpty() && folder.isDir() && folder.isWritable())
        return;
    m_problems |= WorkspaceUnavailable;
    qCWarning(lcSession) << "the workspace cannot be written; nothing will be saved:"
                         << m_workSpace;
    // Said once the window is up, so that the author sees what it is about.
    QMetaObject::invokeMethod(this, &WorkspaceSession::reportWorkspaceFailure,
                              Qt::QueuedConnection);
}

void WorkspaceSession::reportWorkspaceFailure()
{
    if (m_windowClosed)
        return;
    tell(QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "The workspace could not be created.")),
         QStringLiteral(
             QT_TRANSLATE_NOOP("PluginLocale", "Changes made in this window cannot be saved.")));
}

void WorkspaceSession::takeBackup()
{
    if (m_workSpace.isEmpty() || m_backup)
        return;
    m_backup = std::make_unique<SettingsBackup>(m_workSpace);
    m_backupPath = m_backup->path();
    if (m_backup->state() == SettingsBackup::State::Unavailable) {
        // Said once the window is up, so that the author sees what it is about.
        QMetaObject::invokeMethod(this, &WorkspaceSession::reportBackupFailure,
                                  Qt::QueuedConnection);
        return;
    }
    // The image is taken in the background; the window works meanwhile, and every change it
    // makes to the workspace first puts the entry's opening state into the backup.
    const QPointer<WorkspaceSession> self(this);
    m_backup->start(
        [self](SettingsBackup::State end) {
            if (end != SettingsBackup::State::Complete)
                QMetaObject::invokeMethod(self, &WorkspaceSession::reportBackupFailure,
                                          Qt::QueuedConnection);
        },
        kBackupHold, kBackupEntriesBeforeHold);
}

void WorkspaceSession::letBackupProceed()
{
    if (m_backup)
        m_backup->proceed();
}

void WorkspaceSession::reportBackupFailure()
{
    // Without a workspace there is nothing to back up; the author has heard of the workspace.
    if (m_problems & WorkspaceUnavailable)
        return;
    m_problems |= BackupUnavailable;
    if (m_windowClosed || m_backupFailureShown)
        return;
    qCWarning(lcSession) << "no backup of the workspace:" << m_workSpace;
    m_backupFailureShown = true;
    tell(
        QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "The workspace could not be backed up.")),
        QStringLiteral(QT_TRANSLATE_NOOP(
            "PluginLocale", "Your changes are still saved as you make them, but Cancel will not be "
                            "able to undo them.")));
}

void WorkspaceSession::keepChanges()
{
    if (m_backup)
        m_backup->clear();
    m_backup.reset();
}

void WorkspaceSession::undoChanges()
{
    if (!m_backup)
        return;
    SettingsBackup *backup = m_backup.get();
    const SettingsBackup::Outcome outcome = restoreWithProgress(
        [backup](const SettingsBackup::Progress &progress) { return backup->restore(progress); });
    m_backup.reset();
    // A window without a workspace saved nothing, so there is nothing to miss.
    if (outcome == SettingsBackup::Outcome::NothingToUndo && !(m_problems & WorkspaceUnavailable))
        tell(QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Nothing could be undone.")),
             QStringLiteral(QT_TRANSLATE_NOOP(
                 "PluginLocale",
                 "There is no complete backup of the workspace, so it stays as it is.")));
    else if (outcome == SettingsBackup::Outcome::Failed)
        reportRestoreFailure();
}

void WorkspaceSession::reportRestoreFailure()
{
    m_problems |= RestoreFailed;
    qCWarning(lcSession) << "the workspace could not be restored:" << m_workSpace;
    tell(
        QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "The workspace could not be restored.")),
        QStringLiteral(QT_TRANSLATE_NOOP(
            "PluginLocale", "It stays as it is. The backup is kept and offered again the next time "
                            "the window opens.")));
}

void WorkspaceSession::publish(const QString &bundlePath, const QString &identifier,
                               const QStringList &locatedFiles)
{
    if (m_workSpace.isEmpty())
        return;
    PluginSettingsInfo info;
    info.setWorkSpace(m_workSpace);
    info.setIdentifier(identifier);
    info.setBundlePath(bundlePath);
    info.generateJSConfig(WorkspaceLayout::BookFilesFolder);
    SettingsWorkspace::writeFilesList(m_workSpace, locatedFiles);
    // The published book needs nothing else: the preview files go too.
    SettingsWorkspace::cleanToKeepList(m_workSpace,
                                       SettingsWorkspace::keepList(locatedFiles, identifier));
}

SettingsBackup::Outcome WorkspaceSession::restoreWithProgress(const RestoreWork &work)
{
    const QString label =
        QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Restoring the workspace…"));
    QProgressDialog dialog(localised(label), QString(), 0, 0,
                           m_window && m_window->isVisible() ? m_window.data() : nullptr);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setCancelButton(nullptr);
    dialog.setMinimumDuration(500);
    dialog.setAutoClose(false);
    dialog.setAutoReset(false);

    QFutureWatcher<SettingsBackup::Outcome> watcher;
    connect(&watcher, &QFutureWatcherBase::progressRangeChanged, &dialog,
            &QProgressDialog::setRange);
    connect(&watcher, &QFutureWatcherBase::progressValueChanged, &dialog,
            &QProgressDialog::setValue);
    // Closing waits for the restore: the loop keeps the window painting but takes no input.
    QEventLoop loop;
    connect(&watcher, &QFutureWatcherBase::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run([work](QPromise<SettingsBackup::Outcome> &promise) {
        promise.addResult(work([&promise](qint64 done, qint64 total) {
            promise.setProgressRange(0, clampedToInt(total));
            promise.setProgressValue(clampedToInt(qMin(done, total)));
        }));
    }));
    if (!watcher.isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    watcher.waitForFinished();
    return watcher.future().resultCount() > 0 ? watcher.result() : SettingsBackup::Outcome::Failed;
}

void WorkspaceSession::tell(const QString &message, const QString &text)
{
    if (!m_quiet)
        LogAlert::AlertOKWithMessage(localised(message), localised(text));
}
