// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// imgbundle workspace: loads the plugin's workspace, creating it or topping it up from a bundle.

#include "toolcommand.h"

#include "bundlepaths.h"
#include "localisation.h"
#include "pluginsettingsinfo.h"
#include "workspacelayout.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

using namespace ToolCommand;

// The bundle at its installed place relative to the tool (in the build tree a link there leads to
// the assembled bundle), else at the place the build was configured to install it.
QString defaultBundle()
{
    const QString installed = QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                              QLatin1String("/" IMG_INSTALLED_BUNDLE_FROM_BIN));
    if (QFileInfo(installed).isDir())
        return installed;
    return QStringLiteral(IMG_DEFAULT_BUNDLE);
}

// The folder an option names, made absolute; empty when the option was not given.
QString absoluteOption(const CommandOptions &options, const QString &name)
{
    return options.has(name) ? QFileInfo(options.value(name)).absoluteFilePath() : QString();
}

int run(const Command &self, const CommandOptions &options)
{
    if (!options.positional.isEmpty())
        return usageError(
            self, QStringLiteral("unexpected argument \"%1\"").arg(options.positional.first()));
    const QString workspace = absoluteOption(options, QStringLiteral("workspace"));
    QString bundle = absoluteOption(options, QStringLiteral("bundle"));
    bundle = QDir::cleanPath(bundle.isEmpty() ? defaultBundle() : bundle);
    if (!QFileInfo(BundlePaths::resourcePath(bundle)).isDir())
        return failure(QStringLiteral("no bundle at %1 (it needs Contents/Resources)").arg(bundle));
    if (!workspace.isEmpty() && QFileInfo::exists(workspace) && !QFileInfo(workspace).isDir())
        return failure(QStringLiteral("the workspace %1 is a file, not a folder").arg(workspace));

    // The save folder depends on the bundle's product id, as it does inside the host.
    setDefaultBundlePath(bundle);
    PluginSettingsInfo info;
    info.setWorkSpace(workspace);
    info.setIdentifier(WorkspaceLayout::Identifier);
    info.setBundlePath(bundle);
    info.loadWorkspace();
    if (!QFileInfo(info.workSpace()).isDir())
        return failure(QStringLiteral("could not create the workspace %1").arg(info.workSpace()));
    out(info.workSpace());
    return Success;
}

const Registration registration{
    {QStringLiteral("workspace"),
     QStringLiteral("[--bundle DIR] [--workspace DIR]"),
     QStringLiteral(
         "Load the workspace, creating it or topping it up from the bundle; print its path."),
     QStringLiteral(
         "Loads the plugin's workspace the way the settings window does: a missing workspace is\n"
         "built from the bundle's \"html\" and \"data\" resources, an existing one only gets the\n"
         "files it lacks (files already there, changed or not, are kept). Prints the workspace "
         "path.\n"
         "\n"
         "Options:\n"
         "  --bundle DIR     the plugin bundle (the folder holding Contents/Resources);\n"
         "                   default: the installed or freshly built img.bundle\n"
         "  --workspace DIR  the workspace folder; default: the host's plugin save folder + "
         "\"img\""),
     {{QStringLiteral("bundle"), QStringLiteral("DIR")},
      {QStringLiteral("workspace"), QStringLiteral("DIR")}},
     &run}};

} // namespace
