#pragma once

#include "positionrect.h"

#include <QString>
#include <optional>

// The one reader of the six-line position file ("settings.dat", "defaultsettings.dat").
// Every "\r" is dropped and the text split on "\n"; fewer than six lines is a short file and
// answers nullopt, as does a missing one or one that cannot be read as UTF-8 text. Lines after
// the sixth are ignored (read() does not even read them).
// Each caller keeps its own fallback for a short file.
namespace PositionFile {

std::optional<PositionRect> parse(const QString &text);
std::optional<PositionRect> read(const QString &path);

} // namespace PositionFile
