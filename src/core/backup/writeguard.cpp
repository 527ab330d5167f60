// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "writeguard.h"

#include <QMutex>

#include <map>

namespace WriteGuard {

namespace {

struct Registry
{
    QMutex mutex;
    std::map<int, Hook> hooks;
    int nextId = 1;
};

Registry &registry()
{
    static Registry instance;
    return instance;
}

} // namespace

int install(Hook hook)
{
    Registry &r = registry();
    const QMutexLocker lock(&r.mutex);
    const int id = r.nextId++;
    r.hooks.emplace(id, std::move(hook));
    return id;
}

void remove(int id)
{
    Registry &r = registry();
    const QMutexLocker lock(&r.mutex);
    r.hooks.erase(id);
}

void aboutToChange(const QString &path)
{
    if (path.isEmpty())
        return;
    // The hooks run outside the lock: a backup's preserve() may take a while and must not keep
    // another window's guard from being installed or removed.
    std::map<int, Hook> hooks;
    {
        Registry &r = registry();
        const QMutexLocker lock(&r.mutex);
        hooks = r.hooks;
    }
    for (const auto &entry : hooks)
        entry.second(path);
}

} // namespace WriteGuard
