// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// imgbundle position read|write: the six-line position file, read and written as the window does.

#include "toolcommand.h"

#include "fileops.h"
#include "inputfile.h"
#include "positionfile.h"
#include "positionrect.h"
#include "standardoutput.h"
#include "writetarget.h"

#include <QBuffer>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

using namespace ToolCommand;

// The shortest text that reads back as the same float.
QString floatText(float value)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, int(result.ptr - buffer));
}

int runRead(const Command &self, const CommandOptions &options)
{
    const QStringList &args = options.positional;
    if (args.size() != 1)
        return usageError(self, args.isEmpty() ? QStringLiteral("missing FILE")
                                               : QStringLiteral("expects one FILE"));
    QByteArray bytes;
    if (const QString why = InputFile::readAll(args.first(), &bytes); !why.isNull())
        return failure(why);
    // A short or unreadable file reads as all zeros, as in the settings window.
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const PositionRect rect = PositionFile::read(buffer).value_or(PositionRect());
    out(QStringLiteral("left %1\ntop %2\nright %3\nbottom %4\ntransparency %5\nlayer %6")
            .arg(floatText(rect.left()), floatText(rect.top()), floatText(rect.right()),
                 floatText(rect.bottom()), floatText(rect.transparency()),
                 QString::number(rect.layer())));
    return Success;
}

// Whether text is written as a number (digits, a point, an exponent), whatever its size.
bool looksLikeNumber(const QString &text)
{
    static const QRegularExpression number(
        QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?$"));
    return number.match(text).hasMatch();
}

enum class Parsed { Ok, NotANumber, OutOfRange };

Parsed parseFloat(const QString &text, float *value)
{
    bool ok = false;
    const double wide = QLocale::c().toDouble(text, &ok);
    if (!ok || !std::isfinite(wide))
        return looksLikeNumber(text) ? Parsed::OutOfRange : Parsed::NotANumber;
    if (std::fabs(wide) > double(std::numeric_limits<float>::max()))
        return Parsed::OutOfRange;
    *value = float(wide);
    return Parsed::Ok;
}

// The margins, the transparency and the layer given after FILE; nullopt after a usage error,
// whose exit code is put in *code.
std::optional<PositionRect> rectFromArguments(const Command &self, const QStringList &args,
                                              int *code)
{
    static const char *const names[] = {"LEFT", "TOP", "RIGHT", "BOTTOM", "TRANSPARENCY"};
    float values[5];
    for (int i = 0; i < 5; ++i) {
        switch (parseFloat(args.at(i + 1), &values[i])) {
        case Parsed::Ok:
            continue;
        case Parsed::NotANumber:
            *code = usageError(self, QStringLiteral("%1 is not a number: \"%2\"")
                                         .arg(QLatin1String(names[i]), args.at(i + 1)));
            return std::nullopt;
        case Parsed::OutOfRange:
            *code = usageError(
                self, QStringLiteral("%1 is out of range: \"%2\" (a value holds at most %3)")
                          .arg(QLatin1String(names[i]), args.at(i + 1),
                               QString::number(double(std::numeric_limits<float>::max()), 'g', 3)));
            return std::nullopt;
        }
    }
    bool ok = false;
    const int layer = QLocale::c().toInt(args.at(6), &ok);
    if (!ok) {
        static const QRegularExpression integer(QStringLiteral("^[+-]?\\d+$"));
        *code = usageError(self, integer.match(args.at(6)).hasMatch()
                                     ? QStringLiteral("LAYER is out of range: \"%1\"").arg(args.at(6))
                                     : QStringLiteral("LAYER is not an integer: \"%1\"").arg(args.at(6)));
        return std::nullopt;
    }
    return PositionRect(values[0], values[1], values[2], values[3], values[4], layer);
}

int runWrite(const Command &self, const CommandOptions &options)
{
    const QStringList &args = options.positional;
    if (args.size() != 7)
        return usageError(
            self, QStringLiteral("expects FILE and six values, got %1 arguments").arg(args.size()));
    int code = Success;
    const std::optional<PositionRect> rect = rectFromArguments(self, args, &code);
    if (!rect)
        return code;
    const QString path = args.first();
    if (path == QLatin1String("-")) {
        StandardOutput::write(rect->toText());
        return Success;
    }
    if (const QString why = WriteTarget::refusal(path); !why.isNull())
        return failure(why);
    // What PositionRect::saveToFile does, but the window ignores a failed save and the tool
    // says so.
    errno = 0;
    if (!FileOps::writeAtomically(path, rect->toText())) {
        // The failing call's own reason: the clean-up after it (closing, removing the sibling)
        // succeeds and leaves errno as the failure set it.
        const int reason = errno != 0 ? errno : EIO;
        return failure(QStringLiteral("could not write %1: %2")
                           .arg(path, QString::fromLocal8Bit(std::strerror(reason))));
    }
    return Success;
}

const Registration readRegistration{
    {QStringLiteral("position read"),
     QStringLiteral("FILE"),
     QStringLiteral("Print the six values of a position file as the settings window reads them."),
     QStringLiteral(
         "Reads a six-line position file (\"settings.dat\", \"defaultsettings.dat\") and\n"
         "prints left, top, right, bottom, transparency and layer, one a line.\n"
         "Line ends \"\\r\\n\" read like \"\\n\"; a file of fewer than six lines, or one\n"
         "that is not UTF-8 text, reads as all zeros. FILE may be \"-\" for standard input."),
     {},
     &runRead}};

const Registration writeRegistration{
    {QStringLiteral("position write"),
     QStringLiteral("FILE LEFT TOP RIGHT BOTTOM TRANSPARENCY LAYER"),
     QStringLiteral("Write a position file: five values with one decimal and the layer."),
     QStringLiteral(
         "Writes the six-line position file as the settings window saves it: the margins\n"
         "(percent of the page) and the transparency with one decimal (\"%.1f\"), the\n"
         "layer as an integer, joined by \"\\n\" with no newline at the end.\n"
         "Negative values are written as they are.\n"
         "\n"
         "FILE is replaced as a whole, never written in place: a link at FILE is replaced by\n"
         "the file, never written through; a folder, FIFO, device or socket is refused and\n"
         "left as it is. FILE \"-\" writes the same bytes to standard output."),
     {},
     &runWrite}};

} // namespace
