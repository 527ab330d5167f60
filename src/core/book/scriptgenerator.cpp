// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "scriptgenerator.h"

#include "fileops.h"
#include "pluginsettingsinfo.h"
#include "positionfile.h"
#include "scrambler.h"
#include "utilityfunction.h"
#include "workspacelayout.h"

#include <algorithm>

namespace ScriptGenerator {

namespace {

// Replaces the element's content with one text node, as a setting's value is stored.
void setStringValue(QDomElement element, const QString &value)
{
    while (!element.firstChild().isNull())
        element.removeChild(element.firstChild());
    QDomDocument doc = element.ownerDocument();
    element.appendChild(doc.createTextNode(value));
}

QString percentText(double value)
{
    return QString::asprintf("%.1f%%", value);
}

void applyFrame(QDomElement basic, const PositionRect &position)
{
    using XmlJson::PositionField;
    for (QDomElement child = basic.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString name = child.tagName();
        if (name == QLatin1String("left"))
            setStringValue(child, positionText(PositionField::Left, position));
        else if (name == QLatin1String("top"))
            setStringValue(child, positionText(PositionField::Top, position));
        else if (name == QLatin1String("width"))
            setStringValue(child, positionText(PositionField::Width, position));
        else if (name == QLatin1String("height"))
            setStringValue(child, positionText(PositionField::Height, position));
    }
}

} // namespace

PositionRect builtInPosition()
{
    PositionRect position;
    position.setLeft(10.0f);
    position.setTop(26.0f);
    position.setRight(60.0f);
    position.setBottom(26.0f);
    position.setTransparency(0.0f);
    position.setLayer(1);
    return position;
}

std::optional<PositionRect> workspacePosition(const QString &workSpace)
{
    // A link, FIFO or folder in place of a position file is as good as missing.
    QString path = workSpace + QLatin1Char('/') + WorkspaceLayout::PositionFile;
    if (!FileOps::isRegularFile(path))
        path = workSpace + QLatin1Char('/') + WorkspaceLayout::DefaultPositionFile;
    if (!FileOps::isRegularFile(path))
        return std::nullopt;
    return PositionFile::read(path).value_or(builtInPosition());
}

QString positionText(XmlJson::PositionField field, const PositionRect &position)
{
    using XmlJson::PositionField;
    // Percentages of the page; width and height follow from the margins.
    const double left = position.left();
    const double top = position.top();
    switch (field) {
    case PositionField::Opacity: {
        // The transparency is a percentage; past 100 the plugin is simply invisible, while a
        // negative one passes through as it is.
        const float transparency = std::min(position.transparency() / 100.0f, 1.0f);
        return QString::asprintf("%f", 1.0 - double(transparency));
    }
    case PositionField::Layout:
        return QString::number(position.layer());
    case PositionField::Left:
        return percentText(left);
    case PositionField::Top:
        return percentText(top);
    case PositionField::Width:
        return percentText(100.0 - double(position.right()) - left);
    case PositionField::Height:
        return percentText(100.0 - top - double(position.bottom()));
    }
    return QString();
}

void applyPosition(QDomElement &root, const PositionRect &position)
{
    using XmlJson::PositionField;
    for (QDomElement child = root.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString name = child.tagName();
        if (name == QLatin1String("opacity")) {
            setStringValue(child, positionText(PositionField::Opacity, position));
        } else if (name == QLatin1String("layout")) {
            setStringValue(child, positionText(PositionField::Layout, position));
        } else if (name == QLatin1String("properties")) {
            const QDomElement basic = child.lastChildElement(QStringLiteral("basic"));
            if (!basic.isNull())
                applyFrame(basic, position);
        }
    }
}

QString configScript(const QString &json)
{
    return QStringLiteral("var config=") + json + u';';
}

QString bookScript(const QString &json)
{
    return QStringLiteral("var bookPlugin=") + json + u';';
}

} // namespace ScriptGenerator

bool PluginSettingsInfo::generateJSConfig(const QString &relatePath)
{
    QDomElement root = getXMLFromWorkspace();
    if (root.isNull())
        return false;
    const std::optional<PositionRect> position = ScriptGenerator::workspacePosition(m_workSpace);
    if (!position)
        return false;
    ScriptGenerator::applyPosition(root, *position);

    if (!relatePath.isEmpty()) {
        const QString script = ScriptGenerator::bookScript(jsonFromXml(root, relatePath));
        // The book's script has no byte-order mark, unlike the preview's.
        return FileOps::writeAtomically(m_workSpace + QLatin1Char('/') +
                                            WorkspaceLayout::BookScript,
                                        scrambleScriptString(script).toUtf8());
    }
    return UtilityFunction::writeString(ScriptGenerator::configScript(jsonFromXml(root, QString())),
                                        m_workSpace + QLatin1Char('/') +
                                            WorkspaceLayout::PreviewScript);
}
