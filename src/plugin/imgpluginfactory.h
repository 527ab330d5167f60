// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "imgpluginversion.h"
#include "imgsettingscontroller.h"

#include <QString>
#include <QtPlugin>

// The entry point of the image plugin bundle for host developers. The bundle's shared library
// (img.bundle/Contents/Linux/ on Linux, Contents/MacOS/ on macOS) is a Qt plugin whose root
// object implements this interface:
//
//     QPluginLoader loader(libraryPath);
//     auto *factory = qobject_cast<ImgPluginFactory *>(loader.instance());
//     std::unique_ptr<ImgSettingsController> settings(
//         factory->createSettingsDelegate(QStringLiteral("de"), bundlePath));
//
// Include only this header; never link the plugin. See docs/embedding.md.
class ImgPluginFactory
{
public:
    virtual ~ImgPluginFactory() = default;

    // A new settings window controller. languageCode (for example "en", "de", "zh_CN") picks the
    // language folder of the bundle, bundlePath the bundle whose resources the window uses; a null
    // code keeps the language set before, a null path falls back to the host's own bundle.
    // Null when bundlePath is no bundle (missing, a file, a folder inside the bundle such as its
    // binary folder, or without window descriptions), or when the host did not set
    // Qt::AA_ShareOpenGLContexts before creating its QApplication (the window's web view needs
    // it). Every refusal comes with a warning of the category "img.plugin" that names the path
    // and what was expected there; so does a bundle without its preview page, whose window opens
    // but shows no preview. The caller owns the result.
    virtual ImgSettingsController *createSettingsDelegate(const QString &languageCode,
                                                          const QString &bundlePath) = 0;
};

// The IID names the interface's MAJOR.MINOR (IMGPLUGIN_VERSION_MAJOR and _MINOR): a new minor
// version only adds to the interface, a new major one changes what exists. See docs/embedding.md.
// 1.1: the controller can end its window from code, report its close and tell its problems.
#define ImgPluginFactory_iid "net.kelvara.img.PluginFactory/1.1"
Q_DECLARE_INTERFACE(ImgPluginFactory, ImgPluginFactory_iid)
