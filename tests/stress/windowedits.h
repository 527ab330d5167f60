// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>

// The saves the settings window makes while the author works, as numbered data: save n writes
// one of the window's files or brings in an image, always with content of its own, so that a
// file found after a crash can be matched to exactly one save (or to none: then it is damaged).
// The driver that makes the saves and the suite that checks what a kill left both read this.
namespace WindowEdits {

enum class Kind { Settings, Script, Description, Page, Image };

// The window saves its files in turn and now and then the author picks an image.
inline Kind kindOf(int save)
{
    static const Kind cycle[] = {Kind::Settings, Kind::Script, Kind::Description, Kind::Page,
                                 Kind::Image};
    return cycle[(save - 1) % 5];
}

// Three images beside the workspace take turns; the first one chosen is already in the
// workspace at opening, so that choosing it moves the old file aside first.
inline int imageOf(int save)
{
    return (save / 5) % 3;
}

inline QString imageName(int image)
{
    return QStringLiteral("pic%1.png").arg(image);
}

// The workspace entry a save makes: the file written, or the image brought in.
inline QString targetOf(int save)
{
    switch (kindOf(save)) {
    case Kind::Settings:
        return QStringLiteral("settings.dat");
    case Kind::Script:
        return QStringLiteral("config.js");
    case Kind::Description:
        return QStringLiteral("img.xml");
    case Kind::Page:
        return QStringLiteral("index.html");
    case Kind::Image:
        break;
    }
    return imageName(imageOf(save));
}

// Where an image already in the workspace under the chosen name goes before the copy, as the
// window keeps an author's file it would otherwise replace.
inline QString asideOf(int save)
{
    return QStringLiteral("pic%1-kept-%2.png").arg(imageOf(save)).arg(save);
}

inline QByteArray bom()
{
    return QByteArray("\xEF\xBB\xBF", 3);
}

// The bytes save n writes (not for images: those are copied).
inline QByteArray contentOf(int save)
{
    switch (kindOf(save)) {
    case Kind::Settings:
        // The position file as the window writes it: four margins, opacity, layer.
        return QString::asprintf("%.1f\n%.1f\n%.1f\n%.1f\n%.1f\n%i", 10.0 + save, 20.0, 30.0, 15.0,
                                 double(save % 100), save % 2)
            .toUtf8();
    case Kind::Script: {
        QByteArray js = bom() + "var imgPluginConfig = {\"save\": " + QByteArray::number(save) +
                        ", \"left\": " + QByteArray::number(10 + save) + "};\n";
        for (int i = 0; i < 40 + save * 7; ++i)
            js += "// save " + QByteArray::number(save) + ", line " + QByteArray::number(i) + "\n";
        return js;
    }
    case Kind::Description: {
        // Large enough that a kill often lands inside its write or flush.
        QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plugin save=\"" +
                         QByteArray::number(save) + "\">\n";
        const int items = 1500 + (save * 997) % 6000;
        for (int i = 0; i < items; ++i)
            xml += "  <item save=\"" + QByteArray::number(save) + "\" index=\"" +
                   QByteArray::number(i) + "\">image " + QByteArray::number(i) + "</item>\n";
        return xml + "</plugin>\n";
    }
    case Kind::Page:
        return "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>Preview, save " +
               QByteArray::number(save) + "</title></head>\n<body>" +
               QByteArray(2000 + save * 13, 'p') + "</body></html>\n";
    case Kind::Image:
        break;
    }
    return {};
}

// The bytes of an image beside the workspace.
inline QByteArray imageBytes(int image)
{
    QRandomGenerator rng(0x1a6e0000u + quint32(image));
    QByteArray bytes(150 * 1024 + image * 100 * 1024, Qt::Uninitialized);
    rng.fillRange(reinterpret_cast<quint32 *>(bytes.data()), bytes.size() / 4);
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + bytes;
}

} // namespace WindowEdits
