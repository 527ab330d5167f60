// imgbundle: the command-line tool over the core. The commands register themselves (see
// toolcommand.h); this file only finds the one named on the command line and runs it.

#include "toolcommand.h"

#include <QCoreApplication>
#include <QTextStream>
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

// The overview of every command whose name starts with prefix (all of them for an empty one).
void printOverview(const QString &prefix)
{
    QString text = QStringLiteral("Usage: imgbundle COMMAND [ARGUMENTS]\n\n"
                                  "Works on the image plugin's bundle and workspace.\n\n"
                                  "Commands:\n");
    for (const Command *command : sortedCommands()) {
        if (!prefix.isEmpty() && !command->name.startsWith(prefix + QLatin1Char(' ')))
            continue;
        QString line = command->name;
        if (!command->usage.isEmpty())
            line += QLatin1Char(' ') + command->usage;
        text += QLatin1String("  ") + line + QLatin1Char('\n') + QLatin1String("      ") +
                command->summary + QLatin1Char('\n');
    }
    text += QStringLiteral("\nEvery command takes --help.");
    ToolCommand::out(text);
}

bool isGroup(const QString &word)
{
    const QString prefix = word + QLatin1Char(' ');
    return std::any_of(ToolCommand::commands().begin(), ToolCommand::commands().end(),
                       [&](const Command &c) { return c.name.startsWith(prefix); });
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("imgbundle"));
    const QStringList args = app.arguments().mid(1);

    if (args.isEmpty()) {
        printOverview(QString());
        return ToolCommand::UsageError;
    }
    if (args.first() == QLatin1String("--help") || args.first() == QLatin1String("-h") ||
        args.first() == QLatin1String("help")) {
        printOverview(QString());
        return ToolCommand::Success;
    }

    int used = 0;
    if (const Command *command = findCommand(args, &used)) {
        const QStringList rest = args.mid(used);
        if (ToolCommand::wantsHelp(rest)) {
            ToolCommand::printHelp(*command);
            return ToolCommand::Success;
        }
        return command->run(*command, rest);
    }

    // A group word alone or with --help ("position --help") lists its commands.
    if (isGroup(args.first())) {
        const bool help = ToolCommand::wantsHelp(args.mid(1));
        if (help) {
            printOverview(args.first());
            return ToolCommand::Success;
        }
        QTextStream(stderr) << "imgbundle " << args.first() << ": "
                            << (args.size() > 1
                                    ? QStringLiteral("unknown command \"%1\"").arg(args.at(1))
                                    : QStringLiteral("missing command"))
                            << " (see imgbundle " << args.first() << " --help)\n";
        return ToolCommand::UsageError;
    }

    QTextStream(stderr) << "imgbundle: unknown command \"" << args.first()
                        << "\" (see imgbundle --help)\n";
    return ToolCommand::UsageError;
}
