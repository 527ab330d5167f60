// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

class QCommandLineParser;

// An option that takes a value, such as "--workspace DIR" (also "--workspace=DIR" or
// "-workspace DIR").
struct ValueOption
{
    QString name;      // without dashes: "workspace"
    QString valueName; // "DIR"
};

// The arguments of a command, parsed by one rule for every command: options may stand before,
// between or after the positional arguments; "--" ends the options; "-h"/"--help" asks for help;
// an option given twice, or with an empty value, is an error; "-" and an argument that reads as a
// negative number ("-5", "-.5") are positional arguments, never options.
struct CommandOptions
{
    QHash<QString, QString> values; // by name without dashes
    QStringList positional;
    bool help = false;

    QString value(const QString &name) const { return values.value(name); }
    bool has(const QString &name) const { return values.contains(name); }

    // nullopt after a wrong argument, with a one-line reason in *error.
    static std::optional<CommandOptions> parse(const QStringList &args,
                                               const QList<ValueOption> &options, QString *error);

    // The one-line reason why parser refused args (given without the program's name).
    static QString parseError(const QCommandLineParser &parser, const QStringList &args);
};
