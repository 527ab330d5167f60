// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "filesystem.h"

#include <functional>

// Exact copies and removals of whole file trees for the workspace backup, built on the file
// layer's single-entry calls: every entry is copied as what it is (see Fs::copyEntry), folders
// get their own mode and times once their contents are in, links are never followed and nothing
// is written outside the target given.
namespace TreeCopy {

// Copies the whole tree at from to to (which must not exist), exactly; progress is called with
// the number of entries copied so far. Failed on the first entry that cannot be written; the
// half-made target is then left for the caller to remove.
using Progress = std::function<void(qint64 done)>;
Fs::CopyResult copyTree(const Fs::NativePath &from, const Fs::NativePath &to,
                        const Progress &progress = {});

// Removes the entry at path and, for a real folder, everything in it; links are removed, never
// followed. True when nothing is left at path.
bool removeTree(const Fs::NativePath &path);

// True when a file, folder or (even dangling) link is at path.
bool exists(const Fs::NativePath &path);

} // namespace TreeCopy
