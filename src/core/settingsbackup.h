#pragma once

#include <QString>

// The whole-workspace backup that makes Cancel possible: a folder in the temporary folder, named
// by the time the window opened, filled with a copy of the workspace tree when the window has
// loaded, restored over the workspace on discard and deleted on apply. Every operation ignores
// file errors; a backup folder that is not there makes them do nothing.
namespace SettingsBackup {

// tempDir joined with the seconds since 1970 written "%f" (six decimals).
QString backupPathFor(double secondsSince1970, const QString &tempDir);
// The backup path for a window opening now, in the system temporary folder.
QString newBackupPath();
// Deletes whatever is at path (a window opened in the same microsecond shares the name) and
// creates the folder with its parents.
void createBackupFolder(const QString &path);

// Copies every subpath of the workspace, hidden ones included, into the backup, a folder before
// its contents; only when the backup folder exists.
void saveInitialSettings(const QString &workSpace, const QString &backup);
// Replaces the workspace by the backup's tree, then deletes the backup. Without a backup the
// workspace is left alone and only the (absent) backup is cleared.
void undoSettings(const QString &workSpace, const QString &backup);
// Deletes the backup folder with everything in it.
void clearBackupSettings(const QString &backup);

} // namespace SettingsBackup
