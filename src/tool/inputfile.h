#pragma once

#include <QString>

class QFile;

// A FILE that a command reads: "-" is standard input, anything else must be a regular file or a
// link to one. A FIFO would wait for a writer and a device might never end, so neither is
// opened (a pipe on standard input is the caller's own choice and is read).
namespace InputFile {

bool isStandardInput(const QString &path);

// How messages name the input: "standard input" for "-", else the path.
QString displayName(const QString &path);

// Opens path read-only into file. A null string when done, else one line saying why not.
QString open(const QString &path, QFile *file);

} // namespace InputFile
