// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QStringList>

class QMimeData;

// What a drop or a paste onto the settings window gives the image choice: a local image file
// of the kinds the image chooser offers, which is taken as if chosen with Browse; a web link,
// which fills the link field; or nothing, with the reason the author is told.
namespace ImageDrop {

enum class Kind { ImageFile, Link, Refused };

enum class Reason {
    None,           // not refused
    Nothing,        // no file, link or text at all
    SeveralItems,   // more than one file or link: the choice holds one image
    Folder,         // a folder, whatever its name
    NotAnImageType, // a file whose type the image chooser would not offer
    Unreadable,     // a name of an image type that is no regular file (gone, or a device)
    NotAnImage,     // a regular file named as an image whose bytes are no JPEG, GIF or PNG
    OtherLink,      // a link of another scheme than http or https (ftp, mailto, …)
    NotALink,       // text that is no link
};

struct Verdict
{
    Kind kind = Kind::Refused;
    Reason reason = Reason::Nothing;
    QString path; // the local file, for an ImageFile
    QString link; // the link as it is stored, for a Link
};

// The suffixes of the image files the window takes, as the image chooser offers them.
QStringList imageTypes();

// Classifies dragged or pasted data: its URLs when it has any (a file manager's files and a
// browser's links), otherwise its text, read as one link.
Verdict classify(const QMimeData *data);
// Classifies a single link or path given as text (a typed or pasted line).
Verdict classifyText(const QString &text);
// Classifies a local file as the image chooser's answer or a dropped file: only a regular file
// of an image type whose bytes read as JPEG, GIF or PNG is taken (its header is read, no more).
Verdict classifyFile(const QString &path);

// What the author is told about a refusal, in the window's language; empty when not refused.
QString reasonText(Reason reason);

} // namespace ImageDrop
