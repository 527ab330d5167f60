// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "overview.h"

#include "toolcommand.h"

#include <algorithm>

namespace {

using ToolCommand::Command;

std::vector<const Command *> sortedCommands()
{
    std::vector<const Command *> list;
    for (const Command &command : ToolCommand::commands())
        list.push_back(&command);
    std::sort(list.begin(), list.end(),
              [](const Command *a, const Command *b) { return a->name < b->name; });
    return list;
}

QString commandList(const QString &group)
{
    QString text;
    for (const Command *command : sortedCommands()) {
        if (!group.isEmpty() && !command->name.startsWith(group + QLatin1Char(' ')))
            continue;
        QString line = command->name;
        if (!command->usage.isEmpty())
            line += QLatin1Char(' ') + command->usage;
        text += QLatin1String("  ") + line + QLatin1Char('\n') + QLatin1String("      ") +
                command->summary + QLatin1Char('\n');
    }
    return text;
}

} // namespace

void printOverview(const QString &group)
{
    ToolCommand::out(
        QStringLiteral("Usage: imgbundle COMMAND [ARGUMENTS]\n"
                       "       imgbundle --help | --version\n\n"
                       "Works on the image plugin's bundle and workspace.\n\n"
                       "Commands:\n") +
        commandList(group) +
        QStringLiteral(
            "\nEvery command takes --help. Options may stand before or after the arguments;\n"
            "\"--\" ends them, so that an argument after it may begin with \"-\". An option\n"
            "given twice, or with an empty value, is an error. A FILE that is read may be\n"
            "\"-\" for standard input.\n"
            "\n"
            "Exit status: 0 when done; 1 when the work failed, a failed write to standard\n"
            "output included; 2 for a wrong argument. Errors are one line on standard error,\n"
            "and a command that fails prints nothing on standard output."));
}
