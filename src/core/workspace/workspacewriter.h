// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

// One ordered writer per workspace: the saves a window makes run off its thread, one at a time,
// in the order they were handed in. A save handed in while an earlier one of the same name still
// waits replaces it and takes its place at the end of the queue, so only the newest state of a
// file is written, and always after everything handed in before it. A save is a whole state
// (the position file and the preview script it gives, together), never part of one, so what
// lands on disk is a state the window showed.
//
// Generations count the saves handed in: written() reaches a generation once that save and every
// earlier one have run (a replaced save counts as run with the one that replaced it). A reader
// that must see a state waits for its generation, never for a time.
class WorkspaceWriter : public QObject
{
    Q_OBJECT

public:
    using Save = std::function<void()>;

    explicit WorkspaceWriter(QObject *parent = nullptr);
    // Runs what is still queued, then goes.
    ~WorkspaceWriter() override;

    // Queues save under name; answers its generation.
    quint64 submit(const QString &name, Save save);
    // The generation of the last save handed in, and the one everything up to has run.
    quint64 submitted() const;
    quint64 written() const;
    bool isSettled() const { return written() == submitted(); }
    // Blocks until every save handed in so far has run.
    void waitForAll();

    // Waits for every writer of the process (for tests that read what a window wrote).
    static void waitForAllWriters();

signals:
    // Everything up to generation has been written; emitted on the writer's thread, so a
    // receiver on the window's thread hears of it through its event loop.
    void generationWritten(quint64 generation);

private:
    class Private;
    std::unique_ptr<Private> d;
};
