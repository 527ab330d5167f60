#include "commandoptions.h"

std::optional<CommandOptions> CommandOptions::parse(const ToolCommand::Command &command,
                                                    const QStringList &args,
                                                    const QStringList &optionNames, int *exitCode)
{
    CommandOptions options;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString &arg = args.at(i);
        if (!arg.startsWith(QLatin1Char('-')) || arg == QLatin1String("-")) {
            options.positional.append(arg);
            continue;
        }
        QString name = arg;
        QString value;
        const qsizetype eq = arg.indexOf(QLatin1Char('='));
        if (arg.startsWith(QLatin1String("--")) && eq > 0) {
            name = arg.left(eq);
            value = arg.mid(eq + 1);
        } else if (optionNames.contains(name)) {
            if (i + 1 >= args.size()) {
                *exitCode =
                    ToolCommand::usageError(command, QStringLiteral("%1 needs a value").arg(name));
                return std::nullopt;
            }
            value = args.at(++i);
        }
        if (!optionNames.contains(name)) {
            *exitCode =
                ToolCommand::usageError(command, QStringLiteral("unknown option \"%1\"").arg(arg));
            return std::nullopt;
        }
        if (options.values.contains(name)) {
            *exitCode =
                ToolCommand::usageError(command, QStringLiteral("%1 given twice").arg(name));
            return std::nullopt;
        }
        options.values.insert(name, value);
    }
    return options;
}
