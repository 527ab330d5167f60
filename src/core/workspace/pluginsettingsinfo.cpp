// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "pluginsettingsinfo.h"

#include "bundlepaths.h"
#include "fileops.h"
#include "localisation.h"
#include "workspacelayout.h"
#include "xmlhelpers.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QStringDecoder>

Q_LOGGING_CATEGORY(lcWorkspace, "img.workspace", QtWarningMsg)

namespace {

const QLatin1String DefaultIdentifier = WorkspaceLayout::Identifier;
const QLatin1String SourceFolders[] = {QLatin1String("html"), QLatin1String("data")};

QString join(const QString &folder, const QString &rel)
{
    return folder + QLatin1Char('/') + rel;
}

QString resolved(const QString &path)
{
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(info.absoluteFilePath()) : canonical;
}

// True when inner is folder itself or lies somewhere below it.
bool contains(const QString &folder, const QString &inner)
{
    const QString outer = resolved(folder);
    const QString target = resolved(inner);
    return target == outer ||
           target.startsWith(outer.endsWith(QLatin1Char('/')) ? outer : outer + QLatin1Char('/'));
}

// QFile::copy reads its source and would wait forever on a FIFO or read a device without end.
// A link is copied as the file it leads to, as packagers link the bundle's files.
bool isCopyableFile(const QString &source)
{
    return FileOps::isRegularFile(source, FileOps::ReadLinks::Follow);
}

} // namespace

QString PluginSettingsInfo::getSavePluginPath()
{
    const QString resourceDir = BundlePaths::resourceDirFor(defaultBundlePath());
    // An unreadable "product.id" leaves the id missing; the folder name then carries the
    // platform's text for a missing string rather than silently borrowing another product's.
    const QString productId =
        BundlePaths::readProductId(resourceDir).value_or(QStringLiteral("(null)"));
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty())
        base = QDir::homePath() + QLatin1String("/Library/Application Support");
    base = QDir::cleanPath(base);
    return base + QLatin1String("/Kelvara/") + productId + QLatin1String("_resource/Plugin/Save");
}

void PluginSettingsInfo::copyFromPath(const QString &from, const QString &to, bool withHiddenFiles)
{
    // An unset target would turn every relative path into one at the root of the file system.
    if (to.isEmpty())
        return;
    for (const QString &rel : FileOps::subpaths(from)) {
        // Only the first character of the relative path counts: a hidden top-level folder is
        // skipped with all it holds, a hidden file inside a visible folder is copied.
        if (!withHiddenFiles && rel.startsWith(QLatin1Char('.')))
            continue;
        const QString source = join(from, rel);
        const QString target = join(to, rel);
        if (!FileOps::exists(source))
            continue;
        if (!FileOps::isDir(source)) {
            if (isCopyableFile(source))
                QFile::copy(source, target); // an existing target stays as it is
        } else if (!FileOps::isDir(target)) {
            QDir().mkpath(target); // fails quietly when a file is in the way
        }
    }
}

bool PluginSettingsInfo::resetWorkspace()
{
    ensureIdentifier();
    if (m_workSpace.isEmpty())
        return true;
    // A mistaken workspace path must not wipe the user's home or the whole disk.
    if (contains(m_workSpace, QDir::homePath()) || resolved(m_workSpace) == QDir::rootPath())
        return true;
    if (FileOps::exists(m_workSpace))
        FileOps::removeItem(m_workSpace);
    const QString resourceDir = BundlePaths::resourceDirFor(m_bundlePath);
    QDir().mkpath(m_workSpace);
    // "data" comes second: for files of the same relative path, its copy wins only where "html"
    // left nothing, and QFile::copy never overwrites.
    for (const QLatin1String folder : SourceFolders)
        copyFromPath(join(resourceDir, folder), m_workSpace, false);
    // Inside the workspace a link is data, not a file to copy.
    const QString swf = join(m_workSpace, m_identifier + QLatin1String(".swf"));
    if (FileOps::isRegularFile(swf))
        QFile::copy(swf, join(m_workSpace, QStringLiteral("book.swf")));
    return true;
}

bool PluginSettingsInfo::loadWorkspace()
{
    if (m_workSpace.isEmpty())
        m_workSpace = join(getSavePluginPath(), DefaultIdentifier);
    if (!FileOps::exists(m_workSpace))
        return resetWorkspace();
    // Top up only: files the user changed are never replaced, so an update of the bundle
    // reaches an existing workspace for new files alone. Hidden files are included here.
    const QString resourceDir = BundlePaths::resourceDirFor(m_bundlePath);
    for (const QLatin1String folder : SourceFolders) {
        const QString sourceRoot = join(resourceDir, folder);
        for (const QString &rel : FileOps::subpaths(sourceRoot)) {
            const QString target = join(m_workSpace, rel);
            if (FileOps::exists(target))
                continue;
            const QString source = join(sourceRoot, rel);
            if (FileOps::isDir(source))
                QDir().mkpath(target);
            else if (isCopyableFile(source))
                QFile::copy(source, target);
        }
    }
    return true;
}

QDomElement PluginSettingsInfo::getXMLFromWorkspace()
{
    ensureIdentifier();
    m_documentBytes.clear();
    if (m_workSpace.isEmpty())
        return QDomElement();
    const QString path = join(m_workSpace, m_identifier + QLatin1String(".xml"));
    QByteArray bytes;
    if (!FileOps::readAll(path, &bytes))
        return QDomElement();
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(bytes);
    if (decode.hasError())
        return QDomElement();
    QString error;
    int line = 0;
    const QDomDocument document = parseDescriptionXml(text, &error, &line);
    if (document.isNull()) {
        qCDebug(lcWorkspace) << "unreadable" << path << "line" << line << error;
        return QDomElement();
    }
    m_document = document;
    m_documentBytes = bytes;
    return m_document.documentElement();
}

bool PluginSettingsInfo::convertPluginToPath(const QString &path)
{
    if (!FileOps::exists(m_workSpace))
        return false;
    // Replacing the target must never delete the workspace that is about to be copied into it.
    if (path.isEmpty() || contains(path, m_workSpace))
        return false;
    if (FileOps::exists(path))
        FileOps::removeItem(path);
    QDir().mkpath(path);
    copyFromPath(m_workSpace, path, false);
    return true;
}

void PluginSettingsInfo::ensureIdentifier()
{
    if (m_identifier.isEmpty())
        m_identifier = DefaultIdentifier;
}
