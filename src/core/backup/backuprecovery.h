// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "settingsbackup.h"

#include <QString>
#include <QStringList>

// What a window that died leaves behind, found and settled at the next opening of the same
// workspace, before anything else touches it: a swap of a restored tree that happened is
// completed, half-made restored copies and incomplete backups are removed, a Cancel that was under
// way is finished, and the temporaries of interrupted saves are deleted. What remains is a
// complete backup whose window died before the author decided: the author is asked whether to go
// back to it.
namespace BackupRecovery {

struct Pending
{
    QString backupPath;  // a complete backup of a dead window, not asked about yet
    double openedAt = 0; // its opening time, seconds since 1970
};

// Settles everything that needs no decision and answers the complete backups of dead windows of
// workSpace in tempDir (the system's temporary folder by default), oldest first.
QList<Pending> settle(const QString &workSpace, const QString &tempDir = QString());

// The author's answer for a pending backup: go back to the workspace it holds (the backup is then
// removed), or keep the workspace as it is (the backup is removed).
SettingsBackup::Outcome goBack(const QString &workSpace, const QString &backupPath,
                               const SettingsBackup::Progress &progress = {});
void keep(const QString &backupPath);

// Removes a backup for good. It is first renamed out of the backups' name pattern in one step, so
// that a crash half-way through the removal can never leave a partial backup that looks complete;
// the removal itself goes on in the background (see waitForCleanUp), and what a crash leaves of
// it is removed by the next settle().
void discard(const QString &backupPath);
// Waits until every removal begun in the background has finished; the application object waits
// for them anyway when it is destroyed.
void waitForCleanUp();

// Removes the temporaries of the bundle's interrupted saves at the top level of workSpace: only
// regular files named like the bundle's own (see FileOps::writeAtomically). Answers their names.
QStringList removeStaleTemporaries(const QString &workSpace);

} // namespace BackupRecovery
