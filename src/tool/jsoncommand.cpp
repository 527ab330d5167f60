// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// imgbundle json: the JSON that the page reads, made from a description XML file.

#include "toolcommand.h"

#include "inputfile.h"
#include "xmlhelpers.h"
#include "xmljson.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

using namespace ToolCommand;

// Files named in the description are looked for beside it, or in the current folder when it
// comes from standard input.
QString defaultWorkspace(const QString &path)
{
    return InputFile::isStandardInput(path) ? QDir::currentPath() : QFileInfo(path).absolutePath();
}

int run(const Command &self, const CommandOptions &options)
{
    if (options.positional.size() != 1)
        return usageError(self, options.positional.isEmpty()
                                    ? QStringLiteral("missing FILE.xml")
                                    : QStringLiteral("expects one FILE.xml"));
    const QString path = options.positional.first();
    QByteArray xml;
    if (const QString why = InputFile::readAll(path, &xml); !why.isNull())
        return failure(why);

    const QString workspace = options.has(QStringLiteral("workspace"))
                                  ? options.value(QStringLiteral("workspace"))
                                  : defaultWorkspace(path);
    const QString json =
        XmlJson::jsonFromXmlText(xml, options.value(QStringLiteral("relate")), workspace);
    if (json.isNull())
        return failure(
            QStringLiteral("%1 is not well-formed XML or nests elements deeper than %2")
                .arg(InputFile::displayName(path), QString::number(MaxDescriptionDepth)));
    out(json);
    return Success;
}

const Registration registration{
    {QStringLiteral("json"),
     QStringLiteral("FILE.xml [--relate PATH] [--workspace DIR]"),
     QStringLiteral("Print the JSON of a description XML file's root element."),
     QStringLiteral(
         "Prints, on one line, the JSON that the preview and the book read: members in document\n"
         "order, no spaces; an \"info\" root is an anonymous object. The position file is not\n"
         "applied (see imgbundle config). A description that nests elements more than\n"
         "%1 levels deep counts as damaged, like one that is not well-formed XML.\n"
         "FILE.xml may be \"-\" for standard input.\n"
         "\n"
         "Options:\n"
         "  --relate PATH    folder under which existing files of type \"file\" are written,\n"
         "                   e.g. files/plugin as in the book; default: none\n"
         "  --workspace DIR  where files of type \"file\" are looked for; default: the folder\n"
         "                   holding FILE.xml, the current folder when FILE.xml is \"-\"")
         .arg(MaxDescriptionDepth),
     {{QStringLiteral("relate"), QStringLiteral("PATH")},
      {QStringLiteral("workspace"), QStringLiteral("DIR")}},
     &run}};

} // namespace
