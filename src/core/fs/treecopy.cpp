// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "treecopy.h"

#include <utility>
#include <vector>

namespace TreeCopy {

namespace {

Fs::NativePath join(const Fs::NativePath &folder, const QByteArray &name)
{
    return folder + '/' + name;
}

} // namespace

Fs::CopyResult copyTree(const Fs::NativePath &from, const Fs::NativePath &to,
                        const Progress &progress)
{
    Fs::Entry root;
    if (!Fs::entryAt(from, &root))
        return Fs::CopyResult::Absent;
    std::vector<std::pair<Fs::NativePath, Fs::Entry>> folders;
    std::vector<std::pair<QByteArray, Fs::Entry>> pending{{QByteArray(), root}};
    qint64 done = 0;
    while (!pending.empty()) {
        const auto [rel, entry] = pending.back();
        pending.pop_back();
        const Fs::NativePath source = rel.isEmpty() ? from : join(from, rel);
        const Fs::NativePath target = rel.isEmpty() ? to : join(to, rel);
        const Fs::CopyResult result = Fs::copyEntry(source, target, entry);
        if (result == Fs::CopyResult::Failed)
            return Fs::CopyResult::Failed;
        if (progress)
            progress(++done);
        if (result != Fs::CopyResult::Done || !entry.isFolder())
            continue;
        folders.emplace_back(target, entry);
        QList<QByteArray> names;
        if (!Fs::listFolder(source, &names))
            return Fs::CopyResult::Failed;
        for (const QByteArray &name : std::as_const(names)) {
            const QByteArray child = rel.isEmpty() ? name : join(rel, name);
            Fs::Entry childEntry;
            if (Fs::entryAt(join(from, child), &childEntry))
                pending.emplace_back(child, childEntry);
        }
    }
    // Contents first: adding them changed each folder's times.
    for (auto it = folders.rbegin(); it != folders.rend(); ++it) {
        if (!Fs::applyMetadata(it->first, it->second))
            return Fs::CopyResult::Failed;
    }
    return Fs::CopyResult::Done;
}

bool removeTree(const Fs::NativePath &path)
{
    Fs::Entry entry;
    if (!Fs::entryAt(path, &entry))
        return Fs::lastFailure() == Fs::Failure::Missing;
    if (!entry.isFolder())
        return Fs::removeFile(path) || Fs::lastFailure() == Fs::Failure::Missing;
    // A read-only folder of our own tree is opened up to be emptied; it is never a link here.
    Fs::openUpFolder(path, entry);
    QList<QByteArray> names;
    Fs::listFolder(path, &names);
    for (const QByteArray &name : std::as_const(names))
        removeTree(join(path, name));
    return Fs::removeEmptyFolder(path) || Fs::lastFailure() == Fs::Failure::Missing;
}

bool exists(const Fs::NativePath &path)
{
    Fs::Entry entry;
    return Fs::entryAt(path, &entry);
}

} // namespace TreeCopy
