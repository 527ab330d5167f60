// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <functional>

// The one place that every change of a file by the bundle announces itself: FileOps calls
// aboutToChange(path) before it creates, replaces, renames or removes the entry at path, so that
// an open window's backup can take that entry's opening state first. Hooks run on the calling
// thread; installing and removing them is thread-safe.
namespace WriteGuard {

using Hook = std::function<void(const QString &absolutePath)>;

// Answers an id for remove().
int install(Hook hook);
void remove(int id);

void aboutToChange(const QString &path);

} // namespace WriteGuard
