// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "writetarget.h"

#include <QFile>
#include <sys/stat.h>

namespace WriteTarget {

QString refusal(const QString &path)
{
    struct stat st;
    // lstat, not stat: what counts is the entry that the rename replaces, not a link's target.
    // An entry that cannot be examined is left to the write, which reports its own failure.
    if (::lstat(QFile::encodeName(path).constData(), &st) != 0)
        return QString();
    if (S_ISREG(st.st_mode) || S_ISLNK(st.st_mode))
        return QString();
    if (S_ISDIR(st.st_mode))
        return QStringLiteral("cannot write %1: it is a folder, left as it is").arg(path);
    return QStringLiteral("cannot write %1: it is a FIFO, device or socket, left as it is")
        .arg(path);
}

} // namespace WriteTarget
