// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Figures for the book output: the description converted to JSON, and the book script scrambled.
//   bookoutput_bench generate DESCRIPTION.xml SCRIPT.txt   writes the two inputs
//   bookoutput_bench json DESCRIPTION.xml                  parse + convert, and convert alone
//   bookoutput_bench json-sizes                            both paths at 1 KB, 100 KB, 5 MB
//   bookoutput_bench scramble SCRIPT.txt                   scrambleScriptString on the text,
//                                                          beside a bare RC4 loop over the same
//                                                          bytes in the same process; both rates
//                                                          count the script's UTF-8 bytes
// Each run prints one line per figure: name, megabytes per second, peak resident memory.
#include "pluginsettingsinfo.h"
#include "rc4loop.h"
#include "scrambler.h"
#include "xmlhelpers.h"
#include "xmljson.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <sys/resource.h>
#include <utility>

namespace {

// Best of this many rounds; the same count as the references use.
constexpr int kJsonRounds = 5;
constexpr int kScrambleRounds = 20;

long peakKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void report(const char *name, qint64 bytes, qint64 bestNs)
{
    const double seconds = double(bestNs) / 1e9;
    std::printf("%-28s %10.1f MB/s %8.2f ms  peak %7.1f MiB\n", name, double(bytes) / 1e6 / seconds,
                seconds * 1e3, double(peakKiB()) / 1024.0);
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        std::exit(2);
    }
    return file.readAll();
}

bool writeAll(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

// About 5 MB: a description with the usual settings and a list of 50,000 records.
QByteArray makeDescription(int records = 50000)
{
    QByteArray xml(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<info>\n"
        "  <opacity type=\"number\">1</opacity>\n  <layout type=\"number\">1</layout>\n"
        "  <properties>\n    <basic>\n      <left type=\"text\">10.0%</left>\n"
        "      <top type=\"text\">26.0%</top>\n      <width type=\"text\">30.0%</width>\n"
        "      <height type=\"text\">48.0%</height>\n    </basic>\n    <extended>\n"
        "      <src type=\"file\">photo.png</src>\n      <rows>\n");
    for (int k = 0; k < records; ++k) {
        const QByteArray n = QByteArray::number(k);
        xml += "  <item><title type=\"text\">Page " + n + " &amp; x</title><n type=\"number\">" +
               n + "</n><on type=\"bool\">1</on></item>\n";
    }
    xml += "      </rows>\n    </extended>\n  </properties>\n</info>\n";
    return xml;
}

// About 1 MB of book script, with some non-ASCII text.
QByteArray makeScript()
{
    QByteArray text("var bookPlugin={\"rows\":[");
    for (int k = 0; text.size() < 1000000; ++k)
        text += "{\"title\":\"Page " + QByteArray::number(k) + " Grüße\",\"show\":true},";
    text += "{}]};";
    return text;
}

template<typename Work> qint64 bestOf(int rounds, Work work)
{
    qint64 best = std::numeric_limits<qint64>::max();
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, timer.nsecsElapsed());
    }
    return best;
}

int runJson(const QString &path)
{
    const QByteArray xml = readAll(path);
    PluginSettingsInfo info;
    info.setWorkSpace(QStringLiteral("/nonexistent-workspace"));
    qsizetype size = 0;
    const qint64 stream = bestOf(kJsonRounds, [&] {
        size = XmlJson::jsonFromXmlText(xml, QString(), info.workSpace()).size();
    });
    report("text to JSON (ours)", xml.size(), stream);
    const qint64 whole = bestOf(kJsonRounds, [&] {
        const QDomDocument doc = parseDescriptionXml(xml);
        size = info.jsonFromXml(doc.documentElement(), QString()).size();
    });
    report("tree: parse+convert (ours)", xml.size(), whole);
    const QDomDocument doc = parseDescriptionXml(xml);
    const qint64 convert = bestOf(
        kJsonRounds, [&] { size = info.jsonFromXml(doc.documentElement(), QString()).size(); });
    report("tree: convert only (ours)", xml.size(), convert);
    std::printf("json characters %lld\n", static_cast<long long>(size));
    const bool same = XmlJson::jsonFromXmlText(xml, QString(), info.workSpace()) ==
                      info.jsonFromXml(doc.documentElement(), QString());
    std::printf("text and tree give the same JSON: %s\n", same ? "yes" : "NO");
    return 0;
}

int runJsonSizes()
{
    PluginSettingsInfo info;
    info.setWorkSpace(QStringLiteral("/nonexistent-workspace"));
    // About 100 bytes a record: 1 KB, 100 KB and 5 MB descriptions.
    for (const int records : {3, 1000, 50000}) {
        const QByteArray xml = makeDescription(records);
        // Small inputs repeat within one timed round so that the clock's grain does not count.
        const int repeat = std::max(1, int(5000000 / xml.size()));
        qsizetype size = 0;
        const qint64 stream = bestOf(kJsonRounds, [&] {
            for (int k = 0; k < repeat; ++k)
                size = XmlJson::jsonFromXmlText(xml, QString(), info.workSpace()).size();
        });
        const qint64 tree = bestOf(kJsonRounds, [&] {
            for (int k = 0; k < repeat; ++k)
                size =
                    info.jsonFromXml(parseDescriptionXml(xml).documentElement(), QString()).size();
        });
        std::printf("%8lld bytes: one pass %7.1f MB/s, tree parse+convert %7.1f MB/s, "
                    "one pass %.1f times the tree (%lld json chars)\n",
                    static_cast<long long>(xml.size()),
                    double(xml.size()) * repeat / 1e6 / (double(stream) / 1e9),
                    double(xml.size()) * repeat / 1e6 / (double(tree) / 1e9),
                    double(tree) / double(stream), static_cast<long long>(size));
    }
    return 0;
}

int runScramble(const QString &path)
{
    const QByteArray utf8 = readAll(path);
    const QString text = QString::fromUtf8(utf8);
    // Both rates count the same unit: the script's bytes as the book stores it.
    const qint64 bytes = utf8.size();
    qsizetype size = 0;
    QByteArray out(utf8.size(), Qt::Uninitialized);
    const unsigned char key[] = "0a1B2c3D";
    unsigned checksum = 0;
    qint64 ours = std::numeric_limits<qint64>::max();
    qint64 bare = std::numeric_limits<qint64>::max();
    // Interleaved rounds: both see the same machine at the same moments.
    for (int round = 0; round < kScrambleRounds; ++round) {
        ours = std::min(ours, bestOf(1, [&] { size = scrambleScriptString(text).size(); }));
        bare = std::min(bare, bestOf(1, [&] {
                            Rc4Loop::run(
                                key, 8, reinterpret_cast<const unsigned char *>(utf8.constData()),
                                reinterpret_cast<unsigned char *>(out.data()), size_t(out.size()));
                        }));
        checksum += static_cast<unsigned char>(out.at(out.size() / 2));
    }
    report("scramble (ours)", bytes, ours);
    report("bare RC4 loop (same run)", bytes, bare);
    std::printf("scrambled chars %lld, checksum %u\n", static_cast<long long>(size), checksum);
    std::printf("scrambling: %.2f of the bare loop\n", double(bare) / double(ours));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.size() == 3 && args[0] == QLatin1String("generate"))
        return writeAll(args[1], makeDescription()) && writeAll(args[2], makeScript()) ? 0 : 1;
    if (args.size() == 2 && args[0] == QLatin1String("json"))
        return runJson(args[1]);
    if (args.size() == 1 && args[0] == QLatin1String("json-sizes"))
        return runJsonSizes();
    if (args.size() == 2 && args[0] == QLatin1String("scramble"))
        return runScramble(args[1]);
    std::fprintf(
        stderr,
        "usage: bookoutput_bench generate XML TEXT | json XML | json-sizes | scramble TEXT\n");
    return 2;
}
