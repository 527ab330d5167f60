// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "descriptiontemplate.h"
#include "filestamp.h"
#include "positionrect.h"
#include "workspacelayout.h"

#include <QString>
#include <QStringList>

#include <optional>

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

// The preview's two files of one workspace, kept current across the window's saves and written
// to the byte as refreshPreviewPage() and PluginSettingsInfo::generateJSConfig(QString()) write
// them. What has not changed since the last save is not read again: the description is parsed
// once and read again only when its stamp moves or had not settled when it was read (then its
// bytes are compared by digest and parsed again only when they differ), and the two pages are
// compared only when one of their stamps moves or had not settled.
class PreviewFiles
{
public:
    PreviewFiles(const QString &workSpace, const QString &bundlePath,
                 const QString &identifier = WorkspaceLayout::Identifier);

    QString workSpace() const { return m_workSpace; }
    QString bundlePath() const { return m_bundlePath; }

    // refreshPreviewPage(), skipped while both pages keep the settled stamps of the last one.
    void refreshPage();
    // Writes "config.js" from the description and the position file; false when nothing was
    // written (no readable description, none that parses, no position file, or the write failed).
    // A save that has just written "settings.dat" passes what it wrote, which is then not read
    // back.
    bool writeScript(const std::optional<PositionRect> &savedPosition = std::nullopt);

    // How often the description's bytes were read and parsed, and the two pages compared, since
    // construction: what the saves cost beside their writes.
    int descriptionReads() const { return m_descriptionReads; }
    int descriptionParses() const { return m_descriptionParses; }
    int pageComparisons() const { return m_pageComparisons; }

private:
    // The template of the description as the file now holds it; null when there is none.
    DescriptionTemplate *currentDescription();
    void forgetDescription();

    QString m_workSpace;
    QString m_bundlePath;
    QString m_descriptionPath;
    QString m_pagePath;
    QString m_bundlePagePath;

    bool m_pagesKnown = false;
    FileStamp m_pageStamp;
    FileStamp m_bundlePageStamp;

    std::optional<DescriptionTemplate> m_description;
    FileStamp m_descriptionStamp;
    ContentDigest m_descriptionDigest;

    int m_descriptionReads = 0;
    int m_descriptionParses = 0;
    int m_pageComparisons = 0;
};

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
