// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtGlobal>

// Points HOME, the per-user data folder and the temporary folder of a test process at a private
// temporary directory, so that no test reads or writes the real user's files. Call it first in
// initTestCase(); Qt reads these variables on every lookup, so later lookups see the new places.
namespace TestEnv {

inline QString isolate()
{
    static QTemporaryDir root(QDir::tempPath() + QStringLiteral("/imgtest-XXXXXX"));
    const QString base = root.path();
    for (const char *sub : {"home", "tmp", "data", "config", "cache"})
        QDir().mkpath(base + QLatin1Char('/') + QLatin1String(sub));
    qputenv("HOME", QFile::encodeName(base + QStringLiteral("/home")));
    qputenv("TMPDIR", QFile::encodeName(base + QStringLiteral("/tmp")));
    qputenv("XDG_DATA_HOME", QFile::encodeName(base + QStringLiteral("/data")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(base + QStringLiteral("/config")));
    qputenv("XDG_CACHE_HOME", QFile::encodeName(base + QStringLiteral("/cache")));
    QStandardPaths::setTestModeEnabled(true);
    return base;
}

} // namespace TestEnv
