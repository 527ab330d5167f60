// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

// The layout of one backup folder, shared by the live backup and the recovery of a dead
// window's backup (see SettingsBackup for what each entry means). Paths are in the file system's
// own encoding.
namespace BackupFolder {

inline constexpr char Owner[] = "/owner";
inline constexpr char Tree[] = "/tree";
inline constexpr char Complete[] = "/complete";
inline constexpr char Kept[] = "/kept";
inline constexpr char Cancel[] = "/cancel";
inline constexpr char Restored[] = "/restored";
// Beside the folder, not in it: "<backup>.lock", so that the lock keeps its path while the
// folder is renamed into place.
inline constexpr char LockSuffix[] = ".lock";

// The absolute, clean path of path, as the owner mark records a workspace.
QByteArray nativeAbsolute(const QString &path);

// A mark is a small file of the folder's own: written whole (flushed when it must outlive a
// crash of the machine, not only of the process), read only when it is a regular file.
bool writeMark(const QByteArray &path, const QByteArray &data, bool flush = false);
QByteArray readMark(const QByteArray &path);

} // namespace BackupFolder
