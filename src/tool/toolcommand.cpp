// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "toolcommand.h"

#include "standardoutput.h"

#include <QTextStream>

namespace ToolCommand {

namespace {

std::vector<Command> &registry()
{
    static std::vector<Command> list;
    return list;
}

} // namespace

Registration::Registration(Command command)
{
    registry().push_back(std::move(command));
}

const std::vector<Command> &commands()
{
    return registry();
}

int runCommand(const Command &command, const QStringList &args)
{
    QString error;
    const std::optional<CommandOptions> options =
        CommandOptions::parse(args, command.options, &error);
    if (!options)
        return usageError(command, error);
    if (options->help) {
        printHelp(command);
        return Success;
    }
    return command.run(command, *options);
}

void out(const QString &text)
{
    StandardOutput::writeLine(text);
}

int failure(const QString &message)
{
    QTextStream stream(stderr);
    stream << "imgbundle: " << message << '\n';
    return Failure;
}

int usageError(const Command &command, const QString &message)
{
    QTextStream stream(stderr);
    stream << "imgbundle " << command.name << ": " << message << " (see imgbundle " << command.name
           << " --help)\n";
    return UsageError;
}

void printHelp(const Command &command)
{
    QString usage = QStringLiteral("Usage: imgbundle ") + command.name;
    if (!command.usage.isEmpty())
        usage += QLatin1Char(' ') + command.usage;
    out(usage + QLatin1String("\n\n") + command.help);
}

} // namespace ToolCommand
