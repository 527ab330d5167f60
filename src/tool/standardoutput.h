// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

// Everything the tool prints on standard output goes through here, so that a full disk or a
// closed pipe is noticed: a command's output is only worth its exit status when it arrived.
namespace StandardOutput {

void write(const QByteArray &bytes);
void writeLine(const QString &text); // text as UTF-8 and "\n"

// The exit status once the output is flushed and closed: code when every write arrived, else
// Failure after one line on standard error saying why.
int finish(int code);

} // namespace StandardOutput
