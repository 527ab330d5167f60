// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QPluginLoader>
#include <QString>

class ImgPluginFactory;

// Finds and loads the image plugin of a bundle the way a host does: the shared library in the
// bundle's binary folder whose Qt plugin metadata names the factory interface. Shared by the
// demo host and the end-to-end tests. The library stays loaded for the rest of the process,
// since widgets and the web engine may still reference its code when a window has closed.
class PluginHost
{
public:
    // bundle/Contents/Linux on Linux (Contents/MacOS, Contents/Windows elsewhere).
    static QString binaryFolder(const QString &bundlePath);
    // The installed bundle as seen from the host's own folder (../lib/imgplugin/img.bundle, or
    // ../lib/<multiarch>/imgplugin/img.bundle on Debian with the prefix /usr). The build tree
    // has a link to its bundle at that place.
    static QString defaultBundlePath();

    // Loads the plugin of bundlePath; false, with errorString() set, when there is none.
    bool load(const QString &bundlePath);
    ImgPluginFactory *factory() const { return m_factory; }
    QString libraryPath() const { return m_loader.fileName(); }
    QString errorString() const { return m_error; }

private:
    QPluginLoader m_loader;
    ImgPluginFactory *m_factory = nullptr;
    QString m_error;
};
