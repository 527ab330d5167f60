// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QStringView>

// Numbers read out of text the forgiving way the position file and the fields need: leading
// blanks skipped, the longest numeric prefix taken, 0 when there is none ("2.9" reads as the
// integer 2, "abc" as 0, " 12.5px" as 12.5).
namespace NumberText {

float floatValue(QStringView text);
double doubleValue(QStringView text);
int intValue(QStringView text);

} // namespace NumberText
