// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "fileops.h"
#include "positionrect.h"

#include <QIODevice>
#include <QString>
#include <optional>

// The one reader of the six-line position file ("settings.dat", "defaultsettings.dat").
// Every "\r" is dropped and the text split on "\n"; fewer than six lines is a short file and
// answers nullopt, as does a missing one or one that cannot be read as UTF-8 text. Lines after
// the sixth are ignored (read() does not even read them). Anything but a regular file (a FIFO,
// a device, a folder) and, unless links is Follow, a symbolic link read as missing.
// Each caller keeps its own fallback for a short file.
namespace PositionFile {

std::optional<PositionRect> parse(const QString &text);
std::optional<PositionRect> read(const QString &path,
                                 FileOps::ReadLinks links = FileOps::ReadLinks::NoFollow);
// The same from a device already open for reading, such as standard input.
std::optional<PositionRect> read(QIODevice &device);

} // namespace PositionFile
