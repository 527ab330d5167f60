// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "standardstreams.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#    include <cerrno>
#    include <fcntl.h>
#    include <unistd.h>
#endif

namespace StandardStreams {

namespace {
bool closedAtStart[3] = {false, false, false};
bool reserved = false;
} // namespace

void reserveClosed()
{
    if (reserved)
        return;
    reserved = true;
#ifdef Q_OS_UNIX
    for (int fd = Input; fd <= Error; ++fd) {
        if (::fcntl(fd, F_GETFD) != -1 || errno != EBADF)
            continue;
        closedAtStart[fd] = true;
        // open() gives the lowest free number: this one, as the lower ones are open by now.
        const int reserve = ::open("/dev/null", fd == Input ? O_RDONLY : O_WRONLY);
        if (reserve >= 0 && reserve != fd)
            ::close(reserve);
    }
#endif
}

bool wasClosed(Stream stream)
{
    return closedAtStart[stream];
}

} // namespace StandardStreams
