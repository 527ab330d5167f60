// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <optional>

// Paths inside a plugin bundle, which is laid out like a macOS bundle on every platform.
namespace BundlePaths {

// The bundle of the running program (the host's own), standing in when no plugin bundle exists
// at a given path: the folder holding "Contents" above the executable, or the executable's folder.
QString mainBundlePath();
// bundle/Contents/Resources.
QString resourcePath(const QString &bundlePath);
// The resource folder of the bundle at bundlePath if anything exists there, else the main bundle's.
QString resourceDirFor(const QString &bundlePath);

// What is wrong with bundlePath as a plugin bundle, in one line for a host developer who passed
// it; a null string when it is one: a folder with Contents/Resources, the English window
// description en.lproj/PluginSettingsDelegate.ui and the preview's html/index.html. Names the
// usual mistakes: an empty or missing path, a file, the bundle's binary or resource folder
// instead of the bundle itself.
QString problemWith(const QString &bundlePath);

// The host's product id from resourceDir/"product.id", the whole file as UTF-8 and verbatim (a
// trailing line break stays part of it); "quillamy" when there is no such file. nullopt when the
// file is there but cannot be read as UTF-8 text (a link is followed, but only to a regular
// file), or when the id is no single folder name: it holds a "/", a backslash or a NUL, or is "."
// or "..".
std::optional<QString> readProductId(const QString &resourceDir);

} // namespace BundlePaths
