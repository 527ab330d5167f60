// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QLatin1String>
#include <QString>
#include <QStringList>

// The names that the workspace, the bundle and the book agree on, spelled once. The book's
// loader and the preview page read these exact names, so none of them may change.
namespace WorkspaceLayout {

// The plugin's identifier: its description is "<identifier>.xml", its scripts carry it.
inline constexpr QLatin1String Identifier("img");
inline QString descriptionFileName(const QString &identifier)
{
    return identifier + QLatin1String(".xml");
}

// The six-line position file, and the bundle's fallback when the workspace has none yet.
inline constexpr QLatin1String PositionFile("settings.dat");
inline constexpr QLatin1String DefaultPositionFile("defaultsettings.dat");
// The preview's script and page.
inline constexpr QLatin1String PreviewScript("config.js");
inline constexpr QLatin1String PreviewPage("index.html");
// The published book's scrambled script, the list of the workspace files the book ships, and
// the folder those files go to inside the published book.
inline constexpr QLatin1String BookScript("bookPlugin.js");
inline constexpr QLatin1String FilesList("files");
inline constexpr QLatin1String BookFilesFolder("files/plugin");

// The bundle's default position file, relative to the bundle.
inline constexpr QLatin1String
    BundleDefaultPositionFile("Contents/Resources/data/defaultsettings.dat");

// The image types a chosen file may have, as file name suffixes and as the formats Qt's image
// reader names them.
inline QStringList imageSuffixes()
{
    return {QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("gif"),
            QStringLiteral("png")};
}
inline bool isImageFormat(const QByteArray &format)
{
    return format == "jpeg" || format == "png" || format == "gif";
}

} // namespace WorkspaceLayout
