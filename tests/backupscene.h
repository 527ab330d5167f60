// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "fileops.h"
#include "randomtree.h"
#include "settingsbackup.h"
#include "treestate.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <algorithm>
#include <utility>

// What the backup suites share: a place for a workspace with a folder beside it that its links
// point into, the window's edits as the bundle makes them, and a record of restore progress.
// Compares two captured trees and, when they differ, prints what differs.
#define TREE_COMPARE(actual, expected)                                                             \
    do {                                                                                           \
        const TreeState::Diff treeDiff_ = TreeState::diff((expected), (actual));                   \
        QVERIFY2(treeDiff_.isEmpty(), treeDiff_);                                                  \
    } while (false)

namespace BackupScene {

// A temporary folder that is removed even when read-only folders are left in it, and even while
// the bundle is still removing a replaced tree in it in the background.
class ScratchDir : public QTemporaryDir
{
public:
    ScratchDir() = default;
    explicit ScratchDir(const QString &templatePath)
        : QTemporaryDir(templatePath)
    {}
    ~ScratchDir()
    {
        if (path().isEmpty())
            return;
        for (int i = 0; i < 100 && TreeState::existsNoFollow(path()); ++i) {
            if (!RandomTree::removeAll(path()))
                QThread::msleep(50);
        }
    }
};

// "ws" (the workspace) and "outside" (what its links point to) side by side in a folder of their
// own, and a temporary folder of its own for the backup.
struct Scene
{
    ScratchDir place;
    ScratchDir temp;
    QString ws() const { return place.path() + QStringLiteral("/ws"); }
    QString outside() const { return place.path() + QStringLiteral("/outside"); }
};

inline QString entryPath(const QString &root, const QString &rel)
{
    return rel == QLatin1String(".") ? root : root + QLatin1Char('/') + rel;
}

// Relative paths of the entries of one kind in a captured tree ("." for the root).
inline QStringList entriesOf(const TreeState::Tree &tree, TreeState::Kind kind)
{
    QStringList out;
    for (auto it = tree.cbegin(); it != tree.cend(); ++it) {
        if (it->kind == kind)
            out << it.key();
    }
    return out;
}

// The window's edits, made as the bundle makes them (through FileOps): the settings, the
// generated script, the preview page and the description written, a new image saved into some
// folder, and one existing entry removed. Answers what went wrong, empty when all went through.
inline QString editAsTheWindowDoes(const QString &ws, quint32 seed)
{
    QRandomGenerator rng(seed ^ 0xed17ed17u);
    QStringList failed;
    const char *names[] = {"settings.dat", "config.js", "index.html", "img.xml"};
    for (const char *name : names) {
        if (rng.bounded(4) == 0)
            continue;
        const QString path = ws + QLatin1Char('/') + QLatin1String(name);
        if (!FileOps::writeAtomically(path,
                                      RandomTree::randomBytes(rng, 20 + rng.bounded(500), false)))
            failed << QStringLiteral("writing %1").arg(QLatin1String(name));
    }
    const TreeState::Tree tree = TreeState::capture(ws);
    QStringList folders = entriesOf(tree, TreeState::Kind::Dir);
    // Only root writes into a read-only folder; the window would not try elsewhere.
    if (!RandomTree::isRoot()) {
        folders.erase(
            std::remove_if(folders.begin(), folders.end(),
                           [&](const QString &f) { return !(tree.value(f).perms & 0200); }),
            folders.end());
    }
    if (!folders.isEmpty()) {
        const QString folder = folders.at(rng.bounded(int(folders.size())));
        const QString image = entryPath(ws, folder) + QStringLiteral("/new image %1.png").arg(seed);
        if (!FileOps::writeAtomically(image, RandomTree::randomBytes(rng, 5000, true)))
            failed << QStringLiteral("saving %1").arg(image);
    }
    const TreeState::Tree now = TreeState::capture(ws);
    QStringList removable;
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        if (it.key() == QLatin1String("."))
            continue;
        const QString parent = it.key().contains(QLatin1Char('/'))
                                   ? it.key().section(QLatin1Char('/'), 0, -2)
                                   : QStringLiteral(".");
        if (RandomTree::isRoot() ||
            (it->kind != TreeState::Kind::Dir && (now.value(parent).perms & 0200)))
            removable << it.key();
    }
    if (!removable.isEmpty()) {
        const QString rel = removable.at(rng.bounded(int(removable.size())));
        if (!FileOps::removeItem(entryPath(ws, rel)))
            failed << QStringLiteral("removing %1").arg(rel);
    }
    return failed.isEmpty()
               ? QString()
               : QStringLiteral("the window's edits failed: ") + failed.join(QStringLiteral("; "));
}

// The calls a restore makes to its progress function.
class ProgressLog
{
public:
    SettingsBackup::Progress function()
    {
        return [this](qint64 done, qint64 total) {
            if (QThread::currentThread() != m_caller)
                m_offThread = true;
            m_calls.append({done, total});
        };
    }
    int count() const { return int(m_calls.size()); }
    // What is wrong with the calls made, empty when nothing.
    QString problem() const
    {
        if (m_offThread)
            return QStringLiteral("progress was called on another thread than the caller's");
        qint64 last = -1;
        for (const auto &c : m_calls) {
            if (c.first < last)
                return QStringLiteral("progress went back from %1 to %2").arg(last).arg(c.first);
            if (c.first > c.second || c.first < 0)
                return QStringLiteral("progress %1 of %2").arg(c.first).arg(c.second);
            last = c.first;
        }
        return QString();
    }

private:
    QThread *m_caller = QThread::currentThread();
    QList<std::pair<qint64, qint64>> m_calls;
    bool m_offThread = false;
};

} // namespace BackupScene

namespace QTest {
template<> inline char *toString(const SettingsBackup::State &state)
{
    switch (state) {
    case SettingsBackup::State::Unavailable:
        return qstrdup("Unavailable");
    case SettingsBackup::State::Capturing:
        return qstrdup("Capturing");
    case SettingsBackup::State::Complete:
        return qstrdup("Complete");
    case SettingsBackup::State::Incomplete:
        return qstrdup("Incomplete");
    }
    return qstrdup("?");
}
template<> inline char *toString(const SettingsBackup::Outcome &outcome)
{
    switch (outcome) {
    case SettingsBackup::Outcome::Restored:
        return qstrdup("Restored");
    case SettingsBackup::Outcome::NothingToUndo:
        return qstrdup("NothingToUndo");
    case SettingsBackup::Outcome::Failed:
        return qstrdup("Failed");
    }
    return qstrdup("?");
}
} // namespace QTest
