// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "pluginhost.h"

#include "imgpluginfactory.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonObject>
#include <QLibrary>

QString PluginHost::binaryFolder(const QString &bundlePath)
{
    return QDir(bundlePath).filePath(QStringLiteral(IMG_BUNDLE_BINARY_SUBDIR));
}

QString PluginHost::defaultBundlePath()
{
    // Only a path relative to the program is compiled in: a moved installation still finds its
    // bundle, and no installed program ever reaches into the tree it was built in.
    return QDir::cleanPath(QDir(QCoreApplication::applicationDirPath())
                               .filePath(QStringLiteral(IMG_BUNDLE_FROM_BINDIR)));
}

bool PluginHost::load(const QString &bundlePath)
{
    m_factory = nullptr;
    const QDir folder(binaryFolder(bundlePath));
    if (!folder.exists()) {
        m_error = QStringLiteral("no plugin folder %1").arg(folder.path());
        return false;
    }
    m_error = QStringLiteral("no image plugin in %1").arg(folder.path());
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        const QString path = folder.filePath(name);
        if (!QLibrary::isLibrary(path))
            continue;
        m_loader.setFileName(path);
        // The metadata is read without loading the library, so foreign libraries stay unloaded.
        if (m_loader.metaData().value(QStringLiteral("IID")).toString() !=
            QLatin1String(ImgPluginFactory_iid))
            continue;
        m_factory = qobject_cast<ImgPluginFactory *>(m_loader.instance());
        if (m_factory) {
            m_error.clear();
            return true;
        }
        m_error = m_loader.errorString();
    }
    return false;
}
