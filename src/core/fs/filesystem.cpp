// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// What every file layer shares.

#include "filesystem.h"

#include <QFile>

namespace Fs {

NativePath encode(const QString &path)
{
    return QFile::encodeName(path);
}

QString decode(const NativePath &path)
{
    return QFile::decodeName(path);
}

} // namespace Fs
