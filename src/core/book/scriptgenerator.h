// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "positionrect.h"
#include "xmljson.h"

#include <QDomElement>
#include <QString>
#include <optional>

// The pieces of PluginSettingsInfo::generateJSConfig: the position taken from the workspace's
// position file and copied into the description, and the two script texts.
namespace ScriptGenerator {

// Used when the position file is short: left 10, top 26, right 60, bottom 26, transparency 0,
// layer 1.
PositionRect builtInPosition();

// The position file of a workspace: "settings.dat", else "defaultsettings.dat"; nullopt when
// neither is a regular file (a link, FIFO or folder counts as missing). A short or unreadable
// file gives the built-in position.
std::optional<PositionRect> workspacePosition(const QString &workSpace);

// The text a position gives one of the members it writes: the opacity with six decimals, the
// layer, and the frame's percentages with one decimal and "%".
QString positionText(XmlJson::PositionField field, const PositionRect &position);

// Writes the position into the description held in memory: "opacity" (six decimals), "layout"
// (the layer) and the frame of the last "basic" of every "properties" (one decimal and "%").
void applyPosition(QDomElement &root, const PositionRect &position);

// "var config=<json>;" for the preview and "var bookPlugin=<json>;" for the book.
QString configScript(const QString &json);
QString bookScript(const QString &json);

} // namespace ScriptGenerator
