// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMetaType>
#include <QString>

#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

// Entries that are not regular files, put where a reader looks for one. Readers treat them as
// missing and never wait on one: a test that regresses hangs on a FIFO until CTest's timeout.
namespace SpecialEntries {

enum Kind {
    Fifo,
    Folder,
    LinkToFile,   // a link to a regular file holding the content given
    LinkToFifo,   // a link to a FIFO
    DanglingLink, // a link to nothing
    Socket,       // a local socket's entry, left behind by a closed server
};

inline bool makeFifo(const QString &path)
{
    return ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
}

inline bool makeSocket(const QString &path)
{
    const QByteArray native = QFile::encodeName(path);
    sockaddr_un address{};
    if (size_t(native.size()) >= sizeof address.sun_path)
        return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, native.constData(), size_t(native.size()));
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (fd < 0)
        return false;
    const bool bound =
        ::bind(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    ::close(fd);
    return bound;
}

// Makes an entry of kind at path. A link's target is made in the folder elsewhere (outside the
// tree that is read), named after path's file name. False when the system refused.
inline bool make(Kind kind, const QString &path, const QString &elsewhere,
                 const QByteArray &content = QByteArray())
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QDir().mkpath(elsewhere);
    const QString target =
        QDir(elsewhere).filePath(QFileInfo(path).fileName() + QStringLiteral(".target"));
    switch (kind) {
    case Fifo:
        return makeFifo(path);
    case Folder:
        return QDir().mkpath(path);
    case LinkToFile: {
        QFile file(target);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
               QFile::link(target, path);
    }
    case LinkToFifo:
        return makeFifo(target) && QFile::link(target, path);
    case DanglingLink:
        return QFile::link(target, path);
    case Socket:
        return makeSocket(path);
    }
    return false;
}

} // namespace SpecialEntries

Q_DECLARE_METATYPE(SpecialEntries::Kind)
