// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "standardoutput.h"

#include "standardstreams.h"
#include "toolcommand.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace StandardOutput {

namespace {

// The first error met; later writes are not attempted, since their bytes would have a gap before
// them.
int firstError = 0;

void check(bool ok)
{
    if (!ok && firstError == 0)
        firstError = errno != 0 ? errno : EIO;
}

} // namespace

void write(const QByteArray &bytes)
{
    if (firstError != 0 || bytes.isEmpty())
        return;
    // The null device stands in for a closed standard output: writing to it is still an error.
    if (StandardStreams::wasClosed(StandardStreams::Output)) {
        firstError = EBADF;
        return;
    }
    errno = 0;
    check(std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) == size_t(bytes.size()));
}

void writeLine(const QString &text)
{
    write(text.toUtf8() + '\n');
}

int finish(int code)
{
    // The buffered bytes meet the disk only here: a full disk reports itself at the flush, some
    // file systems only at the close.
    errno = 0;
    check(std::fflush(stdout) == 0 && !std::ferror(stdout));
    errno = 0;
    check(std::fclose(stdout) == 0);
    if (firstError == 0)
        return code;
    ToolCommand::failure(QStringLiteral("cannot write standard output: %1")
                             .arg(QString::fromLocal8Bit(std::strerror(firstError))));
    return ToolCommand::Failure;
}

} // namespace StandardOutput
