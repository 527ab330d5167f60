// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

// Whether a typed link will show the image in a reader's book. The window saves the link as
// typed whatever this says; it only marks the field, as it marks margins that leave no room.
namespace LinkCheck {

enum class Problem {
    None,      // an http or https link with a host, or nothing typed yet
    NotWeb,    // another scheme (javascript:, ftp:, mailto:) or none at all (www.example.com/a.png)
    NoHost,    // http or https without a server to ask
    Blanks,    // blanks before, inside or after it: the book takes the text as it stands
    LocalFile, // a file: link, to a file on the author's computer that no reader has
};

Problem check(const QString &link);

// Why the link will not work, in the window's language; empty for None.
QString reasonText(Problem problem);

} // namespace LinkCheck
