// imgbundle scramble | unscramble: the book script's scrambling as a filter from a file or
// standard input to standard output.

#include "toolcommand.h"

#include "inputfile.h"
#include "scrambler.h"
#include "standardoutput.h"

#include <QFile>
#include <QStringDecoder>

namespace {

using namespace ToolCommand;

// The bytes of the filter's one optional FILE, standard input when it is absent or "-"; nullopt
// after an error, whose exit code is put in *code. *name is how messages name the input.
std::optional<QByteArray> readInput(const Command &self, const QStringList &args, QString *name,
                                    int *code)
{
    if (args.size() > 1) {
        *code = usageError(self, QStringLiteral("unexpected argument \"%1\"").arg(args.at(1)));
        return std::nullopt;
    }
    const QString path = args.value(0, QStringLiteral("-"));
    *name = InputFile::displayName(path);
    QFile file;
    QString why = InputFile::open(path, &file);
    QByteArray bytes;
    if (why.isNull()) {
        bytes = file.readAll();
        if (file.error() != QFileDevice::NoError)
            why = QStringLiteral("cannot read %1").arg(*name);
    }
    if (!why.isNull()) {
        *code = failure(why);
        return std::nullopt;
    }
    return bytes;
}

int runScramble(const Command &self, const CommandOptions &options)
{
    QString name;
    int code = Success;
    const std::optional<QByteArray> bytes = readInput(self, options.positional, &name, &code);
    if (!bytes)
        return code;
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(*bytes);
    if (decode.hasError())
        return failure(QStringLiteral("%1 is not UTF-8 text").arg(name));
    StandardOutput::write(scrambleScriptString(text).toLatin1());
    return Success;
}

int runUnscramble(const Command &self, const CommandOptions &options)
{
    QString name;
    int code = Success;
    const std::optional<QByteArray> bytes = readInput(self, options.positional, &name, &code);
    if (!bytes)
        return code;
    // A line break after the text, as an editor or echo leaves it, is not part of it.
    const std::optional<QString> text =
        unscrambleScriptString(QString::fromLatin1(bytes->trimmed()));
    if (!text)
        return failure(QStringLiteral("%1 is not a scrambled script").arg(name));
    StandardOutput::write(text->toUtf8());
    return Success;
}

const Registration scrambleRegistration{
    {QStringLiteral("scramble"),
     QStringLiteral("[FILE]"),
     QStringLiteral("Scramble a script from FILE or standard input, as for bookPlugin.js."),
     QStringLiteral("Reads UTF-8 text from FILE, or from standard input when FILE is absent or\n"
                    "\"-\", and writes its scrambled form (letters, an eight-digit random key and\n"
                    "\"_\", no line break) to standard output. Every run uses a new key."),
     {},
     &runScramble}};

const Registration unscrambleRegistration{
    {QStringLiteral("unscramble"),
     QStringLiteral("[FILE]"),
     QStringLiteral("Restore a scrambled script from FILE or standard input."),
     QStringLiteral("Reads a scrambled script (such as bookPlugin.js) from FILE, or from standard\n"
                    "input when FILE is absent or \"-\", and writes the original text to standard\n"
                    "output, byte for byte. Fails when the input is not of the scrambled form."),
     {},
     &runUnscramble}};

} // namespace
