// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "filestamp.h"

#include <QFile>
#include <QHashFunctions>

#include <algorithm>
#include <sys/stat.h>
#include <time.h>

namespace {

// Longer than the two-second clock of the coarsest file systems, so that a change made within
// one of their ticks is never mistaken for none.
constexpr std::int64_t kSettleNs = 2'000'000'000;

std::int64_t nanoseconds(const struct timespec &t)
{
    return std::int64_t(t.tv_sec) * 1'000'000'000 + t.tv_nsec;
}

std::int64_t nowNs()
{
    struct timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return nanoseconds(now);
}

} // namespace

FileStamp FileStamp::of(const QString &path, FileOps::ReadLinks links)
{
    FileStamp stamp;
    if (path.isEmpty())
        return stamp;
    const QByteArray name = QFile::encodeName(path);
    struct stat st;
    const int failed = links == FileOps::ReadLinks::Follow ? ::stat(name.constData(), &st)
                                                           : ::lstat(name.constData(), &st);
    if (failed != 0)
        return stamp;
    stamp.m_exists = true;
    stamp.m_device = std::uint64_t(st.st_dev);
    stamp.m_inode = std::uint64_t(st.st_ino);
    stamp.m_mode = std::uint32_t(st.st_mode);
    stamp.m_size = std::int64_t(st.st_size);
    stamp.m_modifiedNs = nanoseconds(st.st_mtim);
    stamp.m_changedNs = nanoseconds(st.st_ctim);
    // A time in the future (another machine's clock) never settles.
    const std::int64_t last = std::max(stamp.m_modifiedNs, stamp.m_changedNs);
    stamp.m_settled = nowNs() - last >= kSettleNs;
    return stamp;
}

bool FileStamp::isRegularFile() const
{
    return m_exists && S_ISREG(m_mode);
}

bool operator==(const FileStamp &a, const FileStamp &b)
{
    // Whether a stamp is settled depends on when it was taken, not on the file.
    return a.m_exists == b.m_exists && a.m_device == b.m_device && a.m_inode == b.m_inode &&
           a.m_mode == b.m_mode && a.m_size == b.m_size && a.m_modifiedNs == b.m_modifiedNs &&
           a.m_changedNs == b.m_changedNs;
}

ContentDigest ContentDigest::of(const QByteArray &bytes)
{
    // A fixed seed: digests taken at different moments of one process must compare.
    return ContentDigest{bytes.size(), qHash(QByteArrayView(bytes), size_t(0x5eed))};
}
