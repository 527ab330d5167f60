// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "fileops.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

// What the file system says about an entry without reading it: where it lives (device and
// inode), its kind, size, and times of change to the nanosecond. Two equal stamps of a path say
// that its bytes are the ones read before, with one exception: a file rewritten in place with as
// many bytes within one tick of the file system's clock keeps its stamp. settled() tells when
// that can no longer hide a change, so that a reader trusts only settled stamps and reads again
// otherwise.
class FileStamp
{
public:
    // The stamp of the entry at path: of a link itself unless links is Follow, as the file's
    // reader treats it. missing() when there is nothing there or it cannot be looked at.
    static FileStamp of(const QString &path,
                        FileOps::ReadLinks links = FileOps::ReadLinks::NoFollow);

    bool missing() const { return !m_exists; }
    bool isRegularFile() const;
    // True when the entry's last change lies far enough in the past, when the stamp was taken,
    // that a later change must move its times. Two seconds cover the coarsest clocks of the file
    // systems a workspace lives on.
    bool settled() const { return m_settled; }

    friend bool operator==(const FileStamp &a, const FileStamp &b);
    friend bool operator!=(const FileStamp &a, const FileStamp &b) { return !(a == b); }

private:
    bool m_exists = false;
    bool m_settled = false;
    std::uint64_t m_device = 0;
    std::uint64_t m_inode = 0;
    Fs::Kind m_kind = Fs::Kind::Other;
    std::uint32_t m_permissions = 0;
    std::int64_t m_size = 0;
    std::int64_t m_modifiedNs = 0;
    std::int64_t m_changedNs = 0;
};

// A digest of a file's bytes for telling an unsettled file's new bytes from the ones read
// before; the size takes part, so equal digests of unequal sizes cannot happen.
struct ContentDigest
{
    qint64 size = -1;
    size_t hash = 0;
    static ContentDigest of(const QByteArray &bytes);
    friend bool operator==(const ContentDigest &a, const ContentDigest &b)
    {
        return a.size == b.size && a.hash == b.hash;
    }
};
