// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "commandoptions.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace {

// QCommandLineParser reads "-5" as an option named "5"; such arguments stand in the parse as
// tokens that cannot be options and are given back afterwards.
class NumberTokens
{
public:
    QStringList hide(const QStringList &args)
    {
        static const QRegularExpression negativeNumber(QStringLiteral("^-\\.?[0-9]"));
        QStringList hidden;
        bool optionsEnded = false;
        for (const QString &arg : args) {
            optionsEnded = optionsEnded || arg == QLatin1String("--");
            if (optionsEnded || !negativeNumber.match(arg).hasMatch()) {
                hidden.append(arg);
                continue;
            }
            const QString token = QChar(0xE000) + QString::number(m_originals.size());
            m_originals.insert(token, arg);
            hidden.append(token);
        }
        return hidden;
    }

    QString restore(const QString &arg) const { return m_originals.value(arg, arg); }

private:
    QHash<QString, QString> m_originals;
};

// The argument as typed for an option that QCommandLineParser names without its dashes.
QString typedOption(const QStringList &args, const QString &name)
{
    for (const QString &arg : args) {
        if (arg == QLatin1String("--"))
            break;
        const QString bare = arg.section(QLatin1Char('='), 0, 0);
        if (bare.startsWith(QLatin1Char('-')) && QStringView(bare).mid(1) == name)
            return bare;
        if (bare.startsWith(QLatin1String("--")) && QStringView(bare).mid(2) == name)
            return bare;
    }
    return QLatin1Char('-') + name;
}

// The one rule for values: a single non-empty value per option.
bool takeValue(const QCommandLineParser &parser, const ValueOption &option,
               const NumberTokens &tokens, CommandOptions *parsed, QString *error)
{
    const QStringList values = parser.values(option.name);
    if (values.isEmpty())
        return true;
    if (values.size() > 1) {
        *error = QStringLiteral("--%1 given twice").arg(option.name);
        return false;
    }
    if (values.first().isEmpty()) {
        *error = QStringLiteral("--%1 needs a value (%2)").arg(option.name, option.valueName);
        return false;
    }
    parsed->values.insert(option.name, tokens.restore(values.first()));
    return true;
}

} // namespace

QString CommandOptions::parseError(const QCommandLineParser &parser, const QStringList &args)
{
    if (!parser.unknownOptionNames().isEmpty())
        return QStringLiteral("unknown option \"%1\"")
            .arg(typedOption(args, parser.unknownOptionNames().first()));
    // Qt's own text, such as "Missing value after '--bundle'.", as one lower-case clause.
    QString text = parser.errorText();
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    if (!text.isEmpty())
        text[0] = text.at(0).toLower();
    return text;
}

std::optional<CommandOptions>
CommandOptions::parse(const QStringList &args, const QList<ValueOption> &options, QString *error)
{
    QCommandLineParser parser;
    // "-workspace" is "--workspace", not seven one-letter options.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption helpOption(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    parser.addOption(helpOption);
    for (const ValueOption &option : options)
        parser.addOption(QCommandLineOption(option.name, QString(), option.valueName));

    NumberTokens tokens;
    // The parser skips the first argument as the program's name.
    if (!parser.parse(QStringList{QString()} + tokens.hide(args))) {
        *error = parseError(parser, args);
        return std::nullopt;
    }
    CommandOptions parsed;
    parsed.help = parser.isSet(helpOption);
    for (const ValueOption &option : options) {
        if (!takeValue(parser, option, tokens, &parsed, error))
            return std::nullopt;
    }
    for (const QString &arg : parser.positionalArguments())
        parsed.positional.append(tokens.restore(arg));
    return parsed;
}
