#include "toolcommand.h"

#include <QTextStream>
#include <cstdio>

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

void out(const QString &text)
{
    QTextStream stream(stdout);
    stream << text << '\n';
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

bool wantsHelp(const QStringList &args)
{
    return args.contains(QLatin1String("--help")) || args.contains(QLatin1String("-h"));
}

void printHelp(const Command &command)
{
    QString usage = QStringLiteral("Usage: imgbundle ") + command.name;
    if (!command.usage.isEmpty())
        usage += QLatin1Char(' ') + command.usage;
    out(usage + QLatin1String("\n\n") + command.help);
}

} // namespace ToolCommand
