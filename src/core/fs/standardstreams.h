// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

// A program started with one of its standard streams closed gets that number back from the
// first file it opens: Qt's own start-up files would then take the place of standard output and
// a filter's text would land in them. reserveClosed() fills each closed one with the null
// device first and remembers it, so that the program can say that the stream was closed.
namespace StandardStreams {

enum Stream { Input = 0, Output = 1, Error = 2 };

// Call first thing in main(), before anything opens a file. Safe to call more than once.
void reserveClosed();

// Whether stream was closed when the program started (false before reserveClosed() and where
// the system cannot tell).
bool wasClosed(Stream stream);

} // namespace StandardStreams
