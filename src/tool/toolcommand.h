// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "commandoptions.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

// The tool's commands. Each command lives in a file of its own and registers itself with a
// static ToolCommand::Registration, so that adding one never touches main.cpp:
//
//     const ToolCommand::Registration registration{
//         {QStringLiteral("position read"), usage, summary, help, options, &runPositionRead}};
//
// The name may have several words ("position read"); the arguments after them are parsed by
// the one rule of CommandOptions (with the command's value options) before they reach run(),
// which also gets its own Command for error messages.
namespace ToolCommand {

// What a command answers: 0 done, UsageError for a wrong argument (after one line on stderr),
// Failure when the work itself failed.
enum ExitCode { Success = 0, Failure = 1, UsageError = 2 };

struct Command;
using Run = std::function<int(const Command &self, const CommandOptions &args)>;

struct Command
{
    QString name;               // "workspace", "position read"
    QString usage;              // the arguments after the name, e.g. "FILE"
    QString summary;            // one line for the overview
    QString help;               // what --help prints after the usage line
    QList<ValueOption> options; // the options that take a value; --help is every command's
    Run run;
};

struct Registration
{
    explicit Registration(Command command);
};

const std::vector<Command> &commands();

// Parses args for command and runs it, or prints its help.
int runCommand(const Command &command, const QStringList &args);

// Output helpers shared by the commands.
void out(const QString &text);                                  // text + "\n" on stdout
int usageError(const Command &command, const QString &message); // one line on stderr
int failure(const QString &message);                            // one line on stderr
void printHelp(const Command &command);

} // namespace ToolCommand
