// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "imgpluginfactory.h"

#include <QObject>

// The root object of the bundle's shared library: it hands the host settings window controllers.
class ImgPlugin : public QObject, public ImgPluginFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ImgPluginFactory_iid FILE "imgplugin.json")
    Q_INTERFACES(ImgPluginFactory)

public:
    using QObject::QObject;

    ImgSettingsController *createSettingsDelegate(const QString &languageCode,
                                                  const QString &bundlePath) override;
};
