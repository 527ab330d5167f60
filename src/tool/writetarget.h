// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

// Where the tool may put a file. It writes as the core does (FileOps::writeAtomically): a
// sibling renamed over the target. A rename would silently put a regular file in place of a
// FIFO, device or socket (as root even of /dev/full), and a folder cannot take a file at all,
// so such targets are refused and left as they are. A link is replaced by the file, never
// written through, as everywhere in the workspace; a missing target is created.
namespace WriteTarget {

// A null string when path may be written, else one line saying why not.
QString refusal(const QString &path);

} // namespace WriteTarget
