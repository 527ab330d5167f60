// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Figures of the settings window, printed; never asserted.
//
//   settingswindow_bench keystrokes [N] [BYTES]  keystroke to disk: N edits of the left margin
//                                         field, each timed from the key event until
//                                         "settings.dat" and "config.js" are written, and each
//                                         paired with its floor in the same run: the two files
//                                         that key wrote, written again with the same durable
//                                         steps (a temporary file, its flush, the rename, the
//                                         folder's flush) and nothing else. The pair alternates
//                                         which goes first. BYTES pads the description to about
//                                         that size. Goal: within 1.1 times the floor. The part
//                                         on the window's thread (the key until the save is
//                                         queued) is printed too. Goal: under half the floor.
//   settingswindow_bench save [N]         the same at descriptions of 1 KB, 100 KB and 5 MB, in
//                                         one process. Goal: within 1.2 times the floor at 5 MB.
//   settingswindow_bench soak [EDITS]     memory over a long session: EDITS keystrokes with the
//                                         preview rebuilding as it does, the process's resident
//                                         and peak memory and the web view's history printed
//                                         along the way. Goal: less than 5 MB of growth.
//   settingswindow_bench start [N]        window start on three workspaces (the bundle's, one
//                                         with 1,000 more files, one with a 5 MB description):
//                                         N starts of imghost each, timed from process start
//                                         until the window is shown and until its preview is
//                                         loaded (the page loaded and reloaded), each paired
//                                         with a bare Qt program that shows a window with a web
//                                         view and then loads the same page twice; the pair
//                                         alternates which goes first. Goals: window shown
//                                         within 1.1 times the bare window; preview loaded
//                                         within 1.05 times the bare window plus one tick, the
//                                         pause and the bare program's two loads. Peak resident
//                                         memory of both.
// Run them under xvfb-run (the window holds a web view).

#include "pluginsettingsdelegate.h"
#include "previewcontroller.h"
#include "previewpage.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QSaveFile>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEngineHistory>
#include <QWebEngineView>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace {

// The settings window's preview timer and the pause before its page loads.
constexpr double kPreviewTickMs = 330;
constexpr double kMainPagePauseMs = 100;

double percentile(std::vector<double> values, double p)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const size_t index = std::min(values.size() - 1, size_t(p * double(values.size() - 1) + 0.5));
    return values[index];
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The floor of one file: what a durable replacement needs and nothing else.
void writeDurably(const QByteArray &folder, const QByteArray &name, const QByteArray &bytes)
{
    const QByteArray temp = folder + "/." + name + ".floor";
    const QByteArray target = folder + "/" + name;
    const int fd = ::open(temp.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        return;
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n <= 0)
            break;
        done += n;
    }
    ::fsync(fd);
    ::close(fd);
    ::rename(temp.constData(), target.constData());
    const int dir = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
}

void printRow(const char *name, const std::vector<double> &ms)
{
    std::printf("%-34s median %8.3f ms   p99 %8.3f ms   worst %8.3f ms   (%zu runs)\n", name,
                percentile(ms, 0.5), percentile(ms, 0.99), percentile(ms, 1.0), ms.size());
}

// The bundle's description with a list of records in its "extended" part, to about bytes.
QByteArray paddedDescription(qint64 bytes)
{
    QByteArray xml = readFile(QStringLiteral(IMG_BUNDLE_DIR "/Contents/Resources/data/img.xml"));
    QByteArray rows;
    const QByteArray end("</extended>");
    for (int k = 0; xml.size() + rows.size() < bytes; ++k)
        rows += "<item><name type=\"text\">row " + QByteArray::number(k) +
                " &amp; more</name><on type=\"bool\">1</on></item>\n";
    if (!rows.isEmpty())
        xml.replace(end, "<rows>\n" + rows + "</rows>\n" + end);
    return xml;
}

struct Window
{
    QTemporaryDir tmp;
    QString ws;
    std::unique_ptr<PluginSettingsDelegate> delegate;
    QLineEdit *left = nullptr;
};

// The real window on a fresh workspace whose description is padded to about descriptionBytes
// (0: the bundle's own), its left margin field focused.
bool openWindow(Window &w, qint64 descriptionBytes)
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(w.tmp.filePath("data")));
    w.ws = w.tmp.filePath("ws");
    if (descriptionBytes > 0) {
        QDir().mkpath(w.ws);
        QFile file(w.ws + "/img.xml");
        if (!file.open(QIODevice::WriteOnly) || file.write(paddedDescription(descriptionBytes)) < 0)
            return false;
    }
    w.delegate =
        PluginSettingsDelegate::create(QStringLiteral("en"), QStringLiteral(IMG_BUNDLE_DIR));
    if (!w.delegate)
        return false;
    w.delegate->setWorkSpace(w.ws);
    QDialog *window = w.delegate->window();
    if (!window)
        return false;
    window->show();
    if (!QTest::qWaitForWindowExposed(window))
        return false;
    w.left = window->findChild<QLineEdit *>(QStringLiteral("txtLeft"));
    w.left->setFocus();
    w.left->selectAll();
    // The keystrokes below turn "1" into "15" and back: margins that leave the image room, as
    // an author's usually do ("105" would mark and unmark the pair on every key).
    QTest::keyClicks(w.left, QStringLiteral("1"));
    return true;
}

// One edit is one keystroke: a digit typed, then taken back, each saved at once.
void typeKey(QLineEdit *field, int i)
{
    QTest::keyClick(field, i % 2 == 0 ? Qt::Key_5 : Qt::Key_Backspace);
}

int keystrokes(int edits, qint64 descriptionBytes)
{
    Window w;
    if (!openWindow(w, descriptionBytes))
        return 1;
    const QByteArray floorDir = QFile::encodeName(w.tmp.filePath("floor"));
    QDir().mkpath(QString::fromLocal8Bit(floorDir));
    std::vector<double> edit, floor, ratio, keyAlone;
    QElapsedTimer clock;
    QByteArray settings, config;
    std::vector<double> windowThread;
    const auto timeKey = [&](int i) {
        clock.start();
        typeKey(w.left, i);
        // The key returns once the save is queued; the writer writes it off the window's thread.
        windowThread.push_back(double(clock.nsecsElapsed()) / 1e6);
        w.delegate->waitForSaves();
        edit.push_back(double(clock.nsecsElapsed()) / 1e6);
        settings = readFile(w.ws + "/settings.dat");
        config = readFile(w.ws + "/config.js");
    };
    const auto timeFloor = [&] {
        clock.start();
        writeDurably(floorDir, "settings.dat", settings);
        writeDurably(floorDir, "config.js", config);
        floor.push_back(double(clock.nsecsElapsed()) / 1e6);
    };
    for (int i = 0; i < edits; ++i) {
        // The floor writes what the key wrote, so the first of a pair is always a key; the pairs
        // alternate whether the floor runs right after its key or after the event loop has run.
        timeKey(i);
        if (i % 2 == 0) {
            timeFloor();
            QCoreApplication::processEvents();
        } else {
            QCoreApplication::processEvents();
            timeFloor();
        }
        ratio.push_back(edit.back() / floor.back());
        // The same two keys with the field's signals blocked: what Qt spends on the key in this
        // window before anything of ours hears of it, and which the floor leaves out.
        if (i % 2 == 1) {
            const QSignalBlocker quiet(w.left);
            for (int k = 0; k < 2; ++k) {
                clock.start();
                typeKey(w.left, k);
                keyAlone.push_back(double(clock.nsecsElapsed()) / 1e6);
            }
            QCoreApplication::processEvents();
        }
    }
    const QByteArray description = readFile(w.ws + "/img.xml");
    w.delegate->onCancel();
    std::printf("keystroke to disk: description %lld bytes, settings.dat %lld bytes, config.js "
                "%lld bytes\n",
                qint64(description.size()), qint64(settings.size()), qint64(config.size()));
    printRow("keystroke on the window's thread", windowThread);
    printRow("keystroke -> both files written", edit);
    printRow("same bytes, same durable steps", floor);
    printRow("the key alone, nothing saved", keyAlone);
    std::printf("ratio: medians %.2f, p99s %.2f, median of the paired ratios %.2f\n",
                percentile(edit, 0.5) / percentile(floor, 0.5),
                percentile(edit, 0.99) / percentile(floor, 0.99), percentile(ratio, 0.5));
    std::printf("window's thread per keystroke to the floor: medians %.2f, p99s %.2f (goal: under "
                "0.5, no flush waits on it)\n",
                percentile(windowThread, 0.5) / percentile(floor, 0.5),
                percentile(windowThread, 0.99) / percentile(floor, 0.99));
    std::printf("keystroke less the key alone, to the floor: medians %.2f\n",
                (percentile(edit, 0.5) - percentile(keyAlone, 0.5)) / percentile(floor, 0.5));
    return 0;
}

int saves(int edits)
{
    for (const qint64 bytes : {qint64(1000), qint64(100000), qint64(5000000)}) {
        if (keystrokes(edits, bytes) != 0)
            return 1;
        std::printf("\n");
    }
    return 0;
}

long statusKiBOf(qint64 pid, const char *field)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray key(field);
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').value(0).toLong();
    }
    return 0;
}

long peakKiBOf(qint64 pid)
{
    return statusKiBOf(pid, "VmHWM:");
}

long residentKiBOf(qint64 pid)
{
    return statusKiBOf(pid, "VmRSS:");
}

// What one start of a program took, from the process start: until it reported its window
// shown, and until it reported its page (imghost: the preview) loaded; its peak memory then.
struct StartTimes
{
    double shown = 0;
    double loaded = 0;
    long peakKiB = 0;
};

// Starts program, waits for its "window shown" line and then for loadedLine; answers when each
// arrived (the web engine's helper processes not included in the memory).
bool timeStart(const QString &program, const QStringList &arguments, const QByteArray &loadedLine,
               StartTimes *times)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    // The run before has just restored a whole workspace (its window closed with Cancel); its
    // writes go to the disk now, so that this start does not pay for them in its own flushes.
    ::sync();
    QElapsedTimer clock;
    clock.start();
    process.start();
    if (!process.waitForStarted(30000))
        return false;
    QByteArray out;
    bool shown = false;
    while (!out.contains(loadedLine)) {
        if (!process.waitForReadyRead(60000))
            return false;
        out += process.readAllStandardOutput();
        const double ms = double(clock.nsecsElapsed()) / 1e6;
        if (!shown && out.contains("window shown")) {
            shown = true;
            times->shown = ms;
        }
        times->loaded = ms;
    }
    times->peakKiB = peakKiBOf(process.processId());
    process.waitForFinished(60000);
    return shown;
}

int soak(int edits)
{
    Window w;
    if (!openWindow(w, 0))
        return 1;
    QWebEngineView *view = w.delegate->webView();
    const qint64 self = QCoreApplication::applicationPid();
    int pages = 0;
    if (PreviewController *preview = w.delegate->previewController())
        QObject::connect(preview, &PreviewController::pageRenewed, [&pages] { ++pages; });
    const auto report = [&](int done, const char *when) {
        std::printf("%6d edits%s: resident %7.1f MiB, peak %7.1f MiB, web view history %d "
                    "entries, %d new pages\n",
                    done, when, double(residentKiBOf(self)) / 1024.0,
                    double(peakKiBOf(self)) / 1024.0, view ? view->history()->count() : -1, pages);
        std::fflush(stdout);
    };
    // Both ends of the count are taken once the typing has paused and the last rebuild has
    // settled: a figure taken amid a rebuild holds its loads.
    const auto settled = [&](int done) {
        QTest::qWait(1500);
        report(done, " (settled)");
        return residentKiBOf(self);
    };
    // A first stretch warms everything up; growth is counted from its end.
    const int warmUp = std::min(500, edits);
    QElapsedTimer clock;
    clock.start();
    long residentAfterWarmUp = 0;
    for (int i = 0; i < edits; ++i) {
        typeKey(w.left, i);
        QCoreApplication::processEvents();
        const int done = i + 1;
        if (done == warmUp)
            residentAfterWarmUp = settled(done);
        else if (done % 1000 == 0 && done != edits)
            report(done, "");
    }
    const long residentAtEnd = settled(edits);
    std::printf("growth after the first %d edits: %.1f MiB resident over %d edits in %.0f s "
                "(goal: less than 5 MB)\n",
                warmUp, double(residentAtEnd - residentAfterWarmUp) / 1024.0, edits - warmUp,
                double(clock.elapsed()) / 1000.0);
    w.delegate->onCancel();
    return 0;
}

// The workspaces the window starts on: the bundle's own, one with 1,000 more files (pictures
// of earlier choices), one whose description is padded to 5 MB.
struct StartWorkspace
{
    const char *name;
    const char *key;
    int extraFiles;
    qint64 descriptionBytes;
};

// Each workspace is one that an earlier window closed with OK: it holds "settings.dat", so the
// window saves its settings once as it opens.
bool prepareWorkspace(const QString &ws, const StartWorkspace &kind)
{
    QDir().mkpath(ws);
    if (!QFile::copy(QStringLiteral(IMG_BUNDLE_DIR "/Contents/Resources/data/defaultsettings.dat"),
                     ws + "/settings.dat"))
        return false;
    if (kind.descriptionBytes > 0) {
        QFile file(ws + "/img.xml");
        if (!file.open(QIODevice::WriteOnly) ||
            file.write(paddedDescription(kind.descriptionBytes)) < 0)
            return false;
    }
    const QByteArray bytes(4096, 'x');
    if (kind.extraFiles > 0)
        QDir().mkpath(ws + "/files/earlier");
    for (int i = 0; i < kind.extraFiles; ++i) {
        QFile file(
            QStringLiteral("%1/files/earlier/%2.png").arg(ws).arg(i, 4, 10, QLatin1Char('0')));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0)
            return false;
    }
    return true;
}

double median(const std::vector<double> &values)
{
    return percentile(values, 0.5);
}

void printStartRow(const char *name, const std::vector<double> &ms)
{
    std::printf("  %-44s median %8.1f ms   worst %8.1f ms\n", name, median(ms),
                percentile(ms, 1.0));
}

// One workspace: a first opening fills it (a workspace of a previous session, as a host opens it
// most of the time), then runs pairs of imghost and the bare program, alternating which goes
// first. The bare program loads the workspace's own preview page, twice.
int startsOn(const QString &ws, const StartWorkspace &kind, int runs)
{
    const QString host = QStringLiteral(IMG_HOST_EXE);
    const QString bare = QStringLiteral(IMG_BARE_WEBWINDOW_EXE);
    const QStringList hostArgs{"--workspace", ws, "--quit-when-preview-loaded"};
    const QStringList bareArgs{QDir(ws).filePath(QStringLiteral("index.html"))};
    StartTimes t;
    if (!prepareWorkspace(ws, kind) || !timeStart(host, hostArgs, "preview loaded", &t) ||
        !timeStart(bare, bareArgs, "page loaded", &t))
        return 1;
    std::vector<double> hostShown, hostLoaded, bareShown, bareLoaded, floor;
    std::vector<double> shownRatio, loadedRatio;
    long hostPeak = 0, barePeak = 0;
    for (int i = 0; i < runs; ++i) {
        StartTimes h, b;
        const bool hostFirst = i % 2 == 0;
        if (hostFirst && !timeStart(host, hostArgs, "preview loaded", &h))
            return 1;
        if (!timeStart(bare, bareArgs, "page loaded", &b))
            return 1;
        if (!hostFirst && !timeStart(host, hostArgs, "preview loaded", &h))
            return 1;
        hostShown.push_back(h.shown);
        hostLoaded.push_back(h.loaded);
        bareShown.push_back(b.shown);
        bareLoaded.push_back(b.loaded);
        // The window flags a change as it opens, so its first rebuild waits for the timer's first
        // tick, a whole interval after the timer starts; then the pause and the two loads.
        floor.push_back(b.shown + kPreviewTickMs + kMainPagePauseMs + (b.loaded - b.shown));
        shownRatio.push_back(h.shown / b.shown);
        loadedRatio.push_back(h.loaded / floor.back());
        hostPeak = std::max(hostPeak, h.peakKiB);
        barePeak = std::max(barePeak, b.peakKiB);
    }
    qint64 files = 0;
    for (QDirIterator it(ws, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         it.hasNext(); it.next())
        ++files;
    std::printf("%s: %lld files, description %lld bytes, %d runs each\n", kind.name, files,
                qint64(QFileInfo(ws + "/img.xml").size()), runs);
    printStartRow("imghost: start -> window shown", hostShown);
    printStartRow("bare window: start -> window shown", bareShown);
    printStartRow("imghost: start -> preview loaded", hostLoaded);
    printStartRow("bare window: start -> page loaded twice", bareLoaded);
    printStartRow("floor: bare shown + tick + pause + 2 loads", floor);
    std::printf("  window shown:   ratio of medians %.3f, median of paired ratios %.3f (goal: at "
                "most 1.1)\n",
                median(hostShown) / median(bareShown), median(shownRatio));
    std::printf("  preview loaded: ratio of medians %.3f, median of paired ratios %.3f (goal: at "
                "most 1.05)\n",
                median(hostLoaded) / median(floor), median(loadedRatio));
    std::printf("  peak resident memory: imghost %.1f MiB, bare window %.1f MiB\n\n",
                double(hostPeak) / 1024.0, double(barePeak) / 1024.0);
    std::fflush(stdout);
    return 0;
}

// only names one workspace (bundle, files or large) or is empty for all three.
int starts(int runs, const QString &only)
{
    const StartWorkspace kinds[] = {{"bundle's workspace", "bundle", 0, 0},
                                    {"1,000 more files", "files", 1000, 0},
                                    {"5 MB description", "large", 0, 5000000}};
    for (const StartWorkspace &kind : kinds) {
        if (!only.isEmpty() && only != QLatin1String(kind.key))
            continue;
        QTemporaryDir tmp;
        if (startsOn(tmp.filePath("ws"), kind, runs) != 0)
            return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const QString mode = args.value(1);
    if (mode == QLatin1String("keystrokes"))
        return keystrokes(args.value(2, QStringLiteral("1000")).toInt(),
                          args.value(3, QStringLiteral("0")).toLongLong());
    if (mode == QLatin1String("save"))
        return saves(args.value(2, QStringLiteral("200")).toInt());
    if (mode == QLatin1String("soak"))
        return soak(args.value(2, QStringLiteral("10000")).toInt());
    if (mode == QLatin1String("start"))
        return starts(args.value(2, QStringLiteral("10")).toInt(), args.value(3));
    std::fputs("usage: settingswindow_bench keystrokes [N [BYTES]] | save [N] | soak [EDITS] | "
               "start [N [bundle|files|large]]   (under xvfb-run)\n",
               stderr);
    return 2;
}
