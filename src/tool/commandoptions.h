#pragma once

#include "toolcommand.h"

#include <QHash>
#include <QStringList>
#include <optional>

// The arguments of a command split into "--name VALUE" (or "--name=VALUE") options and
// positional arguments. Only the given option names are accepted.
struct CommandOptions
{
    QHash<QString, QString> values;
    QStringList positional;

    QString value(const QString &name) const { return values.value(name); }
    bool has(const QString &name) const { return values.contains(name); }

    // nullopt after a one-line usage error (written by ToolCommand::usageError), whose exit
    // code is put in *exitCode.
    static std::optional<CommandOptions> parse(const ToolCommand::Command &command,
                                               const QStringList &args,
                                               const QStringList &optionNames, int *exitCode);
};
