#pragma once

#include <QString>
#include <QStringList>

// File-tree operations shared by the workspace, the logs and the backups. Like the rest of the
// core they never raise: a failure is a false result or an empty list.
namespace FileOps {

// Every path below folder, relative to it, recursively: folders and files, hidden ones included,
// each folder before its contents, siblings in name order. Symbolic links are listed but not
// followed. Empty when folder is not a folder.
QStringList subpaths(const QString &folder);

// True when a file, folder or (even dangling) symbolic link is at path.
bool exists(const QString &path);
bool isDir(const QString &path);

// Removes whatever is at path: a file or link, or a folder with everything in it.
bool removeItem(const QString &path);

// Copies a file, or a folder with everything in it, to a target that must not exist yet.
bool copyItem(const QString &from, const QString &to);

// Reads the whole file into data; false when it cannot be read (missing, a folder, no access).
bool readAll(const QString &path, QByteArray *data);

// Writes data to path atomically through QSaveFile; false when it could not be written.
bool writeAtomically(const QString &path, const QByteArray &data);

} // namespace FileOps
