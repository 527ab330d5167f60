// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// imgbundle config | publish: the scripts that the preview page and the book load.

#include "toolcommand.h"

#include "pluginsettingsinfo.h"
#include "scriptgenerator.h"
#include "workspacelayout.h"
#include "writetarget.h"

#include <QDir>
#include <QFileInfo>

namespace {

using namespace ToolCommand;

// Generates one script of the workspace named by --workspace and prints its path.
int generate(const Command &self, const CommandOptions &options, const QString &relatePath,
             const QString &fileName)
{
    if (!options.positional.isEmpty())
        return usageError(
            self, QStringLiteral("unexpected argument \"%1\"").arg(options.positional.first()));
    const QString workspace = options.value(QStringLiteral("workspace"));
    if (workspace.isEmpty())
        return usageError(self, QStringLiteral("--workspace DIR is required"));
    if (!QFileInfo(workspace).isDir())
        return failure(QStringLiteral("no workspace folder at %1").arg(workspace));

    PluginSettingsInfo info;
    info.setWorkSpace(QDir(workspace).absolutePath());
    info.setIdentifier(WorkspaceLayout::Identifier);
    // The generator itself is quiet; the tool says why nothing was written.
    if (info.getXMLFromWorkspace().isNull())
        return failure(QStringLiteral("no readable img.xml in %1").arg(workspace));
    if (!ScriptGenerator::workspacePosition(info.workSpace()))
        return failure(
            QStringLiteral("no settings.dat or defaultsettings.dat in %1").arg(workspace));

    const QString target = info.workSpace() + QLatin1Char('/') + fileName;
    if (const QString why = WriteTarget::refusal(target); !why.isNull())
        return failure(why);
    if (!info.generateJSConfig(relatePath))
        return failure(QStringLiteral("could not write %1").arg(target));
    out(target);
    return Success;
}

int runConfig(const Command &self, const CommandOptions &args)
{
    return generate(self, args, QString(), WorkspaceLayout::PreviewScript);
}

int runPublish(const Command &self, const CommandOptions &args)
{
    return generate(self, args, WorkspaceLayout::BookFilesFolder, WorkspaceLayout::BookScript);
}

const QString workspaceOption = QStringLiteral(
    "\n\nThe script is replaced as a whole: a link in its place is replaced, a folder,\n"
    "FIFO, device or socket is refused and left as it is.\n"
    "\nOptions:\n"
    "  --workspace DIR  the workspace folder holding img.xml and settings.dat (or\n"
    "                   defaultsettings.dat)");

const ValueOption workspaceValue{QStringLiteral("workspace"), QStringLiteral("DIR")};

const Registration configRegistration{
    {QStringLiteral("config"),
     QStringLiteral("--workspace DIR"),
     QStringLiteral("Write the preview's config.js in a workspace."),
     QStringLiteral(
         "Copies the position file into the description and writes \"config.js\": the\n"
         "byte-order mark and var config={...}; on one line, as the settings window does on\n"
         "every save. Prints the path written.") +
         workspaceOption,
     {workspaceValue},
     &runConfig}};

const Registration publishRegistration{
    {QStringLiteral("publish"),
     QStringLiteral("--workspace DIR"),
     QStringLiteral("Write the book's scrambled bookPlugin.js in a workspace."),
     QStringLiteral("Writes \"bookPlugin.js\" as OK in the settings window does: var\n"
                    "bookPlugin={...}; with files pointing into files/plugin, scrambled, without\n"
                    "byte-order mark. Prints the path written.") +
         workspaceOption,
     {workspaceValue},
     &runPublish}};

} // namespace
