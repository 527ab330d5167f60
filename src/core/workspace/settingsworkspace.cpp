// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "settingsworkspace.h"

#include "bundlepaths.h"
#include "fileops.h"
#include "scriptgenerator.h"
#include "workspacelayout.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcSettingsWorkspace, "img.settings.workspace", QtWarningMsg)

namespace SettingsWorkspace {

QString settingsFileToLoad(const QString &workSpace)
{
    const QDir dir(workSpace);
    const QString settings = dir.filePath(WorkspaceLayout::PositionFile);
    // A link, FIFO or folder in its place is no position file: as good as missing.
    if (FileOps::isRegularFile(settings))
        return settings;
    return dir.filePath(QStringLiteral("defaultsettings.dat"));
}

bool previewScriptIsStale(const QString &workSpace)
{
    if (workSpace.isEmpty() || !FileOps::isDir(workSpace))
        return false;
    const QFileInfo script(QDir(workSpace).filePath(WorkspaceLayout::PreviewScript));
    if (!FileOps::isRegularFile(script.filePath()))
        return true;
    const QFileInfo position(settingsFileToLoad(workSpace));
    return FileOps::isRegularFile(position.filePath()) &&
           script.lastModified() < position.lastModified();
}

QString bundlePreviewPage(const QString &bundlePath)
{
    return QDir(BundlePaths::resourceDirFor(bundlePath))
        .filePath(QStringLiteral("html/index.html"));
}

void refreshPreviewPage(const QString &workSpace, const QString &bundlePath)
{
    if (workSpace.isEmpty())
        return;
    const QString page = QDir(workSpace).filePath(WorkspaceLayout::PreviewPage);
    const QString bundlePage = bundlePreviewPage(bundlePath);
    // Read before anything is copied: a bundle page that is no regular file (a FIFO would stall
    // the copy) is as unreadable as a missing one. A packager's link to a page is followed.
    QByteArray bundleBytes;
    if (!FileOps::readAll(bundlePage, &bundleBytes, FileOps::ReadLinks::Follow)) {
        qCDebug(lcSettingsWorkspace) << "cannot read the bundle's preview page" << bundlePage;
        return;
    }
    if (!FileOps::exists(page)) {
        FileOps::copyItem(bundlePage, page);
        return;
    }
    QByteArray pageBytes;
    FileOps::readAll(page, &pageBytes);
    const QString bundleText = QString::fromUtf8(bundleBytes);
    if (QString::fromUtf8(pageBytes) != bundleText)
        FileOps::writeAtomically(page, bundleText.toUtf8());
}

PreviewFiles::PreviewFiles(const QString &workSpace, const QString &bundlePath,
                           const QString &identifier)
    : m_workSpace(workSpace)
    , m_bundlePath(bundlePath)
{
    if (workSpace.isEmpty())
        return; // an empty path would name the current folder: nothing is read or written
    const QDir dir(workSpace);
    m_descriptionPath = dir.filePath(identifier + QStringLiteral(".xml"));
    m_pagePath = dir.filePath(WorkspaceLayout::PreviewPage);
    m_bundlePagePath = bundlePreviewPage(bundlePath);
}

void PreviewFiles::refreshPage()
{
    if (m_workSpace.isEmpty())
        return;
    // The bundle's page is read through a packager's link; the workspace's is data.
    const FileStamp page = FileStamp::of(m_pagePath);
    const FileStamp bundlePage = FileStamp::of(m_bundlePagePath, FileOps::ReadLinks::Follow);
    if (m_pagesKnown && page == m_pageStamp && bundlePage == m_bundlePageStamp &&
        m_pageStamp.settled() && m_bundlePageStamp.settled())
        return;
    refreshPreviewPage(m_workSpace, m_bundlePath);
    ++m_pageComparisons;
    // Taken after the comparison and any write: a change made meanwhile is too recent to settle,
    // so the next save compares again.
    m_pageStamp = FileStamp::of(m_pagePath);
    m_bundlePageStamp = FileStamp::of(m_bundlePagePath, FileOps::ReadLinks::Follow);
    m_pagesKnown = !m_pageStamp.missing() && !m_bundlePageStamp.missing();
}

bool PreviewFiles::writeScript(const std::optional<PositionRect> &savedPosition)
{
    if (m_workSpace.isEmpty())
        return false;
    DescriptionTemplate *description = currentDescription();
    if (!description)
        return false;
    const std::optional<PositionRect> position =
        savedPosition ? savedPosition : ScriptGenerator::workspacePosition(m_workSpace);
    if (!position)
        return false;
    return FileOps::writeAtomically(QDir(m_workSpace).filePath(WorkspaceLayout::PreviewScript),
                                    description->configScript(*position));
}

DescriptionTemplate *PreviewFiles::currentDescription()
{
    // Taken before the bytes are read: a change made while they are read moves the stamp.
    const FileStamp stamp = FileStamp::of(m_descriptionPath);
    if (!stamp.isRegularFile()) {
        forgetDescription(); // a link, FIFO or folder in its place is no description
        return nullptr;
    }
    const bool trusted =
        m_description && stamp == m_descriptionStamp && m_descriptionStamp.settled();
    if (!trusted) {
        QByteArray bytes;
        ++m_descriptionReads;
        if (!FileOps::readAll(m_descriptionPath, &bytes)) {
            forgetDescription();
            return nullptr;
        }
        const ContentDigest digest = ContentDigest::of(bytes);
        if (!m_description || !(digest == m_descriptionDigest)) {
            m_description = DescriptionTemplate::fromBytes(bytes);
            ++m_descriptionParses;
            m_descriptionDigest = digest;
        }
        m_descriptionStamp = stamp;
    }
    return m_description->isNull() ? nullptr : &*m_description;
}

void PreviewFiles::forgetDescription()
{
    m_description.reset();
    m_descriptionStamp = FileStamp();
    m_descriptionDigest = ContentDigest();
}

QStringList keepList(const QStringList &locatedFiles, const QString &identifier)
{
    QStringList keep = locatedFiles;
    keep << WorkspaceLayout::FilesList << WorkspaceLayout::BookScript
         << WorkspaceLayout::DefaultPositionFile << WorkspaceLayout::PositionFile
         << WorkspaceLayout::descriptionFileName(identifier);
    return keep;
}

void writeFilesList(const QString &workSpace, const QStringList &locatedFiles)
{
    if (workSpace.isEmpty())
        return;
    const QString path = QDir(workSpace).filePath(WorkspaceLayout::FilesList);
    if (!FileOps::writeAtomically(path, locatedFiles.join(QLatin1Char('\n')).toUtf8()))
        qCDebug(lcSettingsWorkspace) << "cannot write" << path;
}

void cleanToKeepList(const QString &workSpace, const QStringList &keep)
{
    // An empty path would name the current folder.
    if (workSpace.isEmpty() || !FileOps::isDir(workSpace))
        return;
    const QDir dir(workSpace);
    const QStringList entries =
        dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &name : entries) {
        if (!keep.contains(name, Qt::CaseSensitive))
            FileOps::removeItem(dir.filePath(name));
    }
}

} // namespace SettingsWorkspace
