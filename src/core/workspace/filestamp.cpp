// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "filestamp.h"

#include "filesystem.h"

#include <QHashFunctions>

#include <algorithm>
#include <chrono>

namespace {

// Longer than the two-second clock of the coarsest file systems, so that a change made within
// one of their ticks is never mistaken for none.
constexpr std::int64_t kSettleNs = 2'000'000'000;

std::int64_t nowNs()
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
}

} // namespace

FileStamp FileStamp::of(const QString &path, FileOps::ReadLinks links)
{
    FileStamp stamp;
    if (path.isEmpty())
        return stamp;
    Fs::Entry entry;
    if (!Fs::entryAt(Fs::encode(path), &entry, links))
        return stamp;
    stamp.m_exists = true;
    stamp.m_device = entry.device;
    stamp.m_inode = entry.inode;
    stamp.m_kind = entry.kind;
    stamp.m_permissions = entry.permissions;
    stamp.m_size = entry.size;
    stamp.m_modifiedNs = entry.modifiedNs;
    stamp.m_changedNs = entry.changedNs;
    // A time in the future (another machine's clock) never settles.
    const std::int64_t last = std::max(stamp.m_modifiedNs, stamp.m_changedNs);
    stamp.m_settled = nowNs() - last >= kSettleNs;
    return stamp;
}

bool FileStamp::isRegularFile() const
{
    return m_exists && m_kind == Fs::Kind::File;
}

bool operator==(const FileStamp &a, const FileStamp &b)
{
    // Whether a stamp is settled depends on when it was taken, not on the file.
    return a.m_exists == b.m_exists && a.m_device == b.m_device && a.m_inode == b.m_inode &&
           a.m_kind == b.m_kind && a.m_permissions == b.m_permissions && a.m_size == b.m_size &&
           a.m_modifiedNs == b.m_modifiedNs && a.m_changedNs == b.m_changedNs;
}

ContentDigest ContentDigest::of(const QByteArray &bytes)
{
    // A fixed seed: digests taken at different moments of one process must compare.
    return ContentDigest{bytes.size(), qHash(QByteArrayView(bytes), size_t(0x5eed))};
}
