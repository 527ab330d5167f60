// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

class QByteArray;

// A FILE that a command reads: "-" is standard input, anything else must be a regular file or a
// link to one. A FIFO would wait for a writer and a device might never end, so neither is
// opened (a pipe on standard input is the caller's own choice and is read).
namespace InputFile {

bool isStandardInput(const QString &path);

// How messages name the input: "standard input" for "-", else the path.
QString displayName(const QString &path);

// Reads the whole of path (or standard input for "-") into bytes. A null string when done, else
// one line saying why not, with the system's reason where it gave one ("standard input is
// closed", "Is a directory").
QString readAll(const QString &path, QByteArray *bytes);

} // namespace InputFile
