#include "settingsworkspace.h"

#include "bundlepaths.h"
#include "fileops.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcSettingsWorkspace, "img.settings.workspace", QtWarningMsg)

namespace SettingsWorkspace {

QString settingsFileToLoad(const QString &workSpace)
{
    const QDir dir(workSpace);
    const QString settings = dir.filePath(QStringLiteral("settings.dat"));
    // A link, FIFO or folder in its place is no position file: as good as missing.
    if (FileOps::isRegularFile(settings))
        return settings;
    return dir.filePath(QStringLiteral("defaultsettings.dat"));
}

bool previewScriptIsStale(const QString &workSpace)
{
    if (workSpace.isEmpty() || !FileOps::isDir(workSpace))
        return false;
    const QFileInfo script(QDir(workSpace).filePath(QStringLiteral("config.js")));
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
    const QString page = QDir(workSpace).filePath(QStringLiteral("index.html"));
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

QStringList keepList(const QStringList &locatedFiles, const QString &identifier)
{
    QStringList keep = locatedFiles;
    keep << QStringLiteral("files") << QStringLiteral("bookPlugin.js")
         << QStringLiteral("defaultsettings.dat") << QStringLiteral("settings.dat")
         << identifier + QStringLiteral(".xml");
    return keep;
}

void writeFilesList(const QString &workSpace, const QStringList &locatedFiles)
{
    if (workSpace.isEmpty())
        return;
    const QString path = QDir(workSpace).filePath(QStringLiteral("files"));
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
