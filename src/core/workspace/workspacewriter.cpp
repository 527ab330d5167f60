// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "workspacewriter.h"

#include <QLoggingCategory>
#include <QMutex>
#include <QSet>
#include <QThreadPool>
#include <QWaitCondition>

#include <deque>

Q_LOGGING_CATEGORY(lcWriter, "img.workspace.writer", QtWarningMsg)

namespace {

// Every writer of the process, for waitForAllWriters().
QMutex registryMutex;
QSet<WorkspaceWriter *> &registry()
{
    static QSet<WorkspaceWriter *> writers;
    return writers;
}

} // namespace

class WorkspaceWriter::Private
{
public:
    struct Pending
    {
        QString name;
        Save save;
        quint64 generation;
    };

    mutable QMutex mutex;
    QWaitCondition settled;
    std::deque<Pending> queue;
    quint64 submitted = 0;
    quint64 written = 0;
    bool running = false;
    // One thread, so that saves never overtake one another.
    QThreadPool pool;
};

WorkspaceWriter::WorkspaceWriter(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->pool.setMaxThreadCount(1);
    d->pool.setObjectName(QStringLiteral("img.workspace.writer"));
    const QMutexLocker lock(&registryMutex);
    registry().insert(this);
}

WorkspaceWriter::~WorkspaceWriter()
{
    {
        const QMutexLocker lock(&registryMutex);
        registry().remove(this);
    }
    waitForAll();
    d->pool.waitForDone();
}

quint64 WorkspaceWriter::submit(const QString &name, Save save)
{
    QMutexLocker lock(&d->mutex);
    const quint64 generation = ++d->submitted;
    for (auto it = d->queue.begin(); it != d->queue.end(); ++it) {
        if (it->name == name) {
            d->queue.erase(it); // only the newest state of a file is written
            break;
        }
    }
    d->queue.push_back({name, std::move(save), generation});
    if (d->running)
        return generation;
    d->running = true;
    lock.unlock();
    d->pool.start([this] {
        QMutexLocker runLock(&d->mutex);
        while (!d->queue.empty()) {
            Private::Pending next = std::move(d->queue.front());
            d->queue.pop_front();
            runLock.unlock();
            next.save();
            runLock.relock();
            d->written = next.generation;
            const quint64 reached = d->written;
            runLock.unlock();
            qCDebug(lcWriter) << "written" << next.name << reached;
            emit generationWritten(reached);
            runLock.relock();
        }
        d->running = false;
        d->settled.wakeAll();
    });
    return generation;
}

quint64 WorkspaceWriter::submitted() const
{
    const QMutexLocker lock(&d->mutex);
    return d->submitted;
}

quint64 WorkspaceWriter::written() const
{
    const QMutexLocker lock(&d->mutex);
    return d->written;
}

void WorkspaceWriter::waitForAll()
{
    QMutexLocker lock(&d->mutex);
    while (d->running || !d->queue.empty())
        d->settled.wait(&d->mutex);
}

void WorkspaceWriter::waitForAllWriters()
{
    const QMutexLocker lock(&registryMutex);
    for (WorkspaceWriter *writer : std::as_const(registry()))
        writer->waitForAll();
}
