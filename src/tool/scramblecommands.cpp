// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// imgbundle scramble | unscramble: the book script's scrambling as a filter from standard input
// to standard output.

#include "toolcommand.h"

#include "inputfile.h"
#include "scrambler.h"
#include "standardoutput.h"

#include <QFile>
#include <QStringDecoder>

namespace {

using namespace ToolCommand;

// Standard input, the filter's only input: no argument, or "-" naming it. nullopt after an
// error, whose exit code is put in *code.
std::optional<QByteArray> readInput(const Command &self, const QStringList &args, int *code)
{
    if (args.size() > 1 || (args.size() == 1 && !InputFile::isStandardInput(args.first()))) {
        *code = usageError(self, QStringLiteral("unexpected argument \"%1\"").arg(args.last()));
        return std::nullopt;
    }
    QByteArray bytes;
    if (const QString why = InputFile::readAll(QStringLiteral("-"), &bytes); !why.isNull()) {
        *code = failure(why);
        return std::nullopt;
    }
    return bytes;
}

int runScramble(const Command &self, const CommandOptions &options)
{
    int code = Success;
    const std::optional<QByteArray> bytes = readInput(self, options.positional, &code);
    if (!bytes)
        return code;
    // A byte-order mark at the start is part of the text: unscramble gives it back.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decode(*bytes);
    if (decode.hasError())
        return failure(QStringLiteral("standard input is not UTF-8 text"));
    StandardOutput::write(scrambleScriptString(text).toLatin1());
    return Success;
}

int runUnscramble(const Command &self, const CommandOptions &options)
{
    int code = Success;
    const std::optional<QByteArray> bytes = readInput(self, options.positional, &code);
    if (!bytes)
        return code;
    // A line break after the text, as an editor or echo leaves it, is not part of it.
    const std::optional<QString> text =
        unscrambleScriptString(QString::fromLatin1(bytes->trimmed()));
    if (!text)
        return failure(QStringLiteral("standard input is not a scrambled script"));
    StandardOutput::write(text->toUtf8());
    return Success;
}

const Registration scrambleRegistration{
    {QStringLiteral("scramble"),
     QStringLiteral("[-]"),
     QStringLiteral("Scramble a script from standard input, as for bookPlugin.js."),
     QStringLiteral("Reads UTF-8 text from standard input and writes its scrambled form (letters,\n"
                    "an eight-digit random key and \"_\", no line break) to standard output.\n"
                    "Every run uses a new key. \"-\" may name standard input."),
     {},
     &runScramble}};

const Registration unscrambleRegistration{
    {QStringLiteral("unscramble"),
     QStringLiteral("[-]"),
     QStringLiteral("Restore a scrambled script from standard input."),
     QStringLiteral("Reads a scrambled script (such as bookPlugin.js) from standard input and\n"
                    "writes the original text to standard output, byte for byte. Fails when the\n"
                    "input is not of the scrambled form. \"-\" may name standard input."),
     {},
     &runUnscramble}};

} // namespace
