// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// imgbundle: the command-line tool over the core. The commands register themselves (see
// toolcommand.h); this file only finds the one named on the command line and runs it.

#include "overview.h"
#include "standardoutput.h"
#include "standardstreams.h"
#include "toolcommand.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>
#include <algorithm>

namespace {

using ToolCommand::Command;

// The command whose words begin args, the longest such name winning; *used is its word count.
const Command *findCommand(const QStringList &args, int *used)
{
    const Command *best = nullptr;
    *used = 0;
    for (const Command &command : ToolCommand::commands()) {
        const QStringList words = command.name.split(QLatin1Char(' '));
        if (words.size() <= *used || words.size() > args.size())
            continue;
        if (std::equal(words.begin(), words.end(), args.begin())) {
            best = &command;
            *used = int(words.size());
        }
    }
    return best;
}

bool isGroup(const QString &word)
{
    const QString prefix = word + QLatin1Char(' ');
    return std::any_of(ToolCommand::commands().begin(), ToolCommand::commands().end(),
                       [&](const Command &c) { return c.name.startsWith(prefix); });
}

// One line on stderr for a wrong argument outside any command; where names the group, if any.
int usageError(const QString &where, const QString &message)
{
    const QString prefix = where.isEmpty() ? QStringLiteral("imgbundle") : "imgbundle " + where;
    QTextStream(stderr) << prefix << ": " << message << " (see " << prefix << " --help)\n";
    return ToolCommand::UsageError;
}

// A group word without a command of it ("position --help") lists the group's commands.
int runGroup(const QString &group, const QStringList &args)
{
    QString error;
    const std::optional<CommandOptions> options = CommandOptions::parse(args, {}, &error);
    if (!options)
        return usageError(group, error);
    if (!options->positional.isEmpty())
        return usageError(
            group, QStringLiteral("unknown command \"%1\"").arg(options->positional.first()));
    if (!options->help)
        return usageError(group, QStringLiteral("missing command"));
    printOverview(group);
    return ToolCommand::Success;
}

int runWords(const QStringList &words)
{
    if (words.isEmpty())
        return usageError(QString(), QStringLiteral("missing command"));
    if (words.first() == QLatin1String("help")) {
        printOverview(QString());
        return ToolCommand::Success;
    }
    int used = 0;
    if (const Command *command = findCommand(words, &used))
        return ToolCommand::runCommand(*command, words.mid(used));
    if (isGroup(words.first()))
        return runGroup(words.first(), words.mid(1));
    return usageError(QString(), QStringLiteral("unknown command \"%1\"").arg(words.first()));
}

// The tool's own options stand before the command; everything from the command on is the
// command's.
int run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption version(QStringLiteral("version"));
    parser.addOptions({help, version});
    if (!parser.parse(arguments))
        return usageError(QString(), CommandOptions::parseError(parser, arguments.mid(1)));
    if (parser.isSet(help)) {
        printOverview(QString());
        return ToolCommand::Success;
    }
    if (parser.isSet(version)) {
        ToolCommand::out(QStringLiteral("imgbundle " IMG_VERSION));
        return ToolCommand::Success;
    }
    return runWords(parser.positionalArguments());
}

} // namespace

int main(int argc, char *argv[])
{
    StandardStreams::reserveClosed();
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("imgbundle"));
    QCoreApplication::setApplicationVersion(QStringLiteral(IMG_VERSION));
    return StandardOutput::finish(run(app.arguments()));
}
