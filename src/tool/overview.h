// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

// The tool's --help: its usage, the commands whose names start with a group word (all of them
// for an empty group) and the rules that every command follows.
void printOverview(const QString &group);
