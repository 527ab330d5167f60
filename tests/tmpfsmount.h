// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cerrno>
#include <cstring>
#include <linux/magic.h>
#include <sys/mount.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>
#include <unistd.h>

// A small file system of its own (tmpfs) mounted on a folder for the life of the object, for
// tests that need a full disk, a read-only folder that root cannot write either, or two file
// systems. Only root can mount; canMount() says whether the tests that need it can run.
class TmpfsMount
{
public:
    static bool canMount() { return ::geteuid() == 0; }

    // options as for mount -o, for example "size=2m" or "ro,size=64k".
    TmpfsMount(const QString &folder, const QByteArray &options, bool readOnly = false)
        : m_folder(folder)
    {
        const unsigned long flags = MS_NOSUID | (readOnly ? MS_RDONLY : 0);
        if (::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", flags,
                    options.constData()) == 0)
            m_mounted = true;
        else
            m_error = QString::fromLocal8Bit(std::strerror(errno));
    }
    ~TmpfsMount() { unmount(); }
    TmpfsMount(const TmpfsMount &) = delete;
    TmpfsMount &operator=(const TmpfsMount &) = delete;

    bool isMounted() const { return m_mounted; }
    QString error() const { return m_error; }
    QString path() const { return m_folder; }

    // Unmounts; a file system still in use is detached and goes once the last user lets go.
    void unmount()
    {
        if (!m_mounted)
            return;
        const QByteArray p = QFile::encodeName(m_folder);
        if (::umount2(p.constData(), 0) != 0)
            ::umount2(p.constData(), MNT_DETACH);
        m_mounted = false;
    }

    // True when folder is a writable folder on a file system in memory (tmpfs).
    static bool isMemoryFolder(const QString &folder)
    {
        struct statfs fs;
        const QByteArray p = QFile::encodeName(folder);
        return ::statfs(p.constData(), &fs) == 0 && fs.f_type == TMPFS_MAGIC &&
               ::access(p.constData(), W_OK | X_OK) == 0;
    }

    // Bytes still free for files.
    static qint64 freeBytes(const QString &folder)
    {
        struct statvfs vfs;
        if (::statvfs(QFile::encodeName(folder).constData(), &vfs) != 0)
            return -1;
        return qint64(vfs.f_bavail) * qint64(vfs.f_frsize);
    }

private:
    QString m_folder;
    QString m_error;
    bool m_mounted = false;
};
