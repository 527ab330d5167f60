// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QString>

#include <functional>

// A folder tree as data, for comparing workspaces byte for byte: every entry below the root
// (hidden ones included) mapped to its bytes, or to "<dir>" for a folder.
namespace TreeSnapshot {

using Tree = QMap<QString, QByteArray>;

// What a window saves is written off its thread: a test that holds a window sets this to wait for
// the window's saves, and every read below waits for them first.
inline std::function<void()> &beforeRead()
{
    static std::function<void()> hook;
    return hook;
}

inline void waitForWriters()
{
    if (beforeRead())
        beforeRead()();
}

inline Tree take(const QString &root)
{
    waitForWriters();
    Tree tree;
    QDirIterator it(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    const QDir base(root);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString rel = base.relativeFilePath(path);
        if (QFileInfo(path).isDir()) {
            tree.insert(rel, QByteArrayLiteral("<dir>"));
        } else {
            QFile file(path);
            tree.insert(rel, file.open(QIODevice::ReadOnly) ? file.readAll()
                                                            : QByteArrayLiteral("<unreadable>"));
        }
    }
    return tree;
}

inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

inline QByteArray readFile(const QString &path)
{
    waitForWriters();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace TreeSnapshot
