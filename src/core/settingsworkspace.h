#pragma once

#include <QString>
#include <QStringList>

// The settings window's rules over the files of the workspace: which position file it loads,
// how it keeps the preview page current, and what OK leaves behind for the published book.
// Every operation ignores file errors; an empty workspace path (which would name the current
// folder) makes them do nothing.
namespace SettingsWorkspace {

// workSpace/"settings.dat" when the workspace has that regular file at its top level (one in a
// sub-folder does not count, nor a link, FIFO or folder of that name), else
// workSpace/"defaultsettings.dat" whether or not it exists.
QString settingsFileToLoad(const QString &workSpace);

// True when the workspace's "config.js" is missing, or older than the position file that
// settingsFileToLoad() names: the preview would then not show the position the canvas shows.
bool previewScriptIsStale(const QString &workSpace);

// The bundle's preview page: <resources of bundlePath>/html/index.html.
QString bundlePreviewPage(const QString &bundlePath);
// Puts the bundle's preview page into the workspace: copied when the workspace has none,
// rewritten when the two texts differ, left alone when equal or when the bundle's page cannot be
// read (it is missing or not a regular file). A workspace page that is not a regular file reads
// as empty, so it is rewritten. Local edits of the workspace page therefore never survive a save.
void refreshPreviewPage(const QString &workSpace, const QString &bundlePath);

// The top-level entries that OK keeps: the located files, then "files", "bookPlugin.js",
// "defaultsettings.dat", "settings.dat" and "<identifier>.xml".
QStringList keepList(const QStringList &locatedFiles, const QString &identifier);
// Writes workSpace/"files": the located files joined by "\n", no trailing newline; empty when
// there are none.
void writeFilesList(const QString &workSpace, const QStringList &locatedFiles);
// Deletes every top-level entry of the workspace (files, folders, hidden ones, links) whose whole
// name is not in keep; names compare case-sensitively.
void cleanToKeepList(const QString &workSpace, const QStringList &keep);

} // namespace SettingsWorkspace
