// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "writetarget.h"

#include "filesystem.h"

namespace WriteTarget {

QString refusal(const QString &path)
{
    Fs::Entry entry;
    // The entry itself, not a link's target: what counts is the entry that the rename replaces.
    // An entry that cannot be examined is left to the write, which reports its own failure.
    if (!Fs::entryAt(Fs::encode(path), &entry))
        return QString();
    if (entry.isFile() || entry.isLink())
        return QString();
    if (entry.isFolder())
        return QStringLiteral("cannot write %1: it is a folder, left as it is").arg(path);
    return QStringLiteral("cannot write %1: it is a FIFO, device or socket, left as it is")
        .arg(path);
}

} // namespace WriteTarget
