#pragma once

#include <QString>

// Paths inside a plugin bundle, which is laid out like a macOS bundle on every platform.
namespace BundlePaths {

// The bundle of the running program (the host's own), standing in when no plugin bundle exists
// at a given path: the folder holding "Contents" above the executable, or the executable's folder.
QString mainBundlePath();
// bundle/Contents/Resources.
QString resourcePath(const QString &bundlePath);
// The resource folder of the bundle at bundlePath if anything exists there, else the main bundle's.
QString resourceDirFor(const QString &bundlePath);

} // namespace BundlePaths
