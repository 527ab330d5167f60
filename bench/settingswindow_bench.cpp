// Figures of the settings window, printed; never asserted.
//
//   settingswindow_bench keystrokes [N]   keystroke to disk: N edits of the left margin field, each
//                                         timed from the key event until "settings.dat" and
//                                         "config.js" are written, beside writing the same two
//                                         files with QSaveFile alone (the floor). Goal: median
//                                         and 99th percentile within 2 times the floor.
//   settingswindow_bench start [N]        window start: N starts of imghost, timed from process
//                                         start until the window is shown with its settings
//                                         loaded, beside a bare Qt program that shows an empty
//                                         window with a web view. Goal: median within 1.5 times.
//                                         Peak resident memory of both.
// Run both under xvfb-run (the window holds a web view).

#include "pluginsettingsdelegate.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

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

void writeAtomically(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(bytes);
        file.commit();
    }
}

void printRow(const char *name, const std::vector<double> &ms)
{
    std::printf("%-34s median %8.3f ms   p99 %8.3f ms   worst %8.3f ms   (%zu runs)\n", name,
                percentile(ms, 0.5), percentile(ms, 0.99), percentile(ms, 1.0), ms.size());
}

int keystrokes(int edits)
{
    QTemporaryDir tmp;
    qputenv("XDG_DATA_HOME", QFile::encodeName(tmp.filePath("data")));
    const QString ws = tmp.filePath("ws");
    auto delegate =
        PluginSettingsDelegate::create(QStringLiteral("en"), QStringLiteral(IMG_BUNDLE_DIR));
    if (!delegate)
        return 1;
    delegate->setWorkSpace(ws);
    QDialog *window = delegate->window();
    if (!window)
        return 1;
    window->show();
    if (!QTest::qWaitForWindowExposed(window))
        return 1;
    auto *left = window->findChild<QLineEdit *>(QStringLiteral("txtLeft"));
    left->setFocus();
    left->selectAll();
    QTest::keyClicks(left, QStringLiteral("10"));

    // One edit is one keystroke: a digit typed, then taken back, each saved at once.
    std::vector<double> edit;
    edit.reserve(size_t(edits));
    QElapsedTimer clock;
    for (int i = 0; i < edits; ++i) {
        clock.start();
        if (i % 2 == 0)
            QTest::keyClick(left, Qt::Key_5);
        else
            QTest::keyClick(left, Qt::Key_Backspace);
        edit.push_back(double(clock.nsecsElapsed()) / 1e6);
        QCoreApplication::processEvents(); // the preview timer and painting run between keys
    }
    const QByteArray settings = readFile(ws + "/settings.dat");
    const QByteArray config = readFile(ws + "/config.js");
    delegate->onCancel();

    std::vector<double> floor;
    floor.reserve(size_t(edits));
    const QString floorDir = tmp.filePath("floor");
    QDir().mkpath(floorDir);
    for (int i = 0; i < edits; ++i) {
        clock.start();
        writeAtomically(floorDir + "/settings.dat", settings);
        writeAtomically(floorDir + "/config.js", config);
        floor.push_back(double(clock.nsecsElapsed()) / 1e6);
    }
    std::printf("keystroke to disk: settings.dat %lld bytes, config.js %lld bytes\n",
                qint64(settings.size()), qint64(config.size()));
    printRow("keystroke -> both files written", edit);
    printRow("QSaveFile of both files (floor)", floor);
    std::printf("ratio: median %.2f, p99 %.2f (goal: at most 2)\n",
                percentile(edit, 0.5) / percentile(floor, 0.5),
                percentile(edit, 0.99) / percentile(floor, 0.99));
    return 0;
}

long peakKiBOf(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return 0;
}

// Starts program, waits for its "window shown" line; answers the time it took and its peak memory
// at that moment (the web engine's helper processes not included).
bool timeStart(const QString &program, const QStringList &arguments, double *ms, long *peakKiB)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    QElapsedTimer clock;
    clock.start();
    process.start();
    if (!process.waitForStarted(30000))
        return false;
    QByteArray out;
    while (!out.contains("window shown")) {
        if (!process.waitForReadyRead(60000))
            return false;
        out += process.readAllStandardOutput();
    }
    *ms = double(clock.nsecsElapsed()) / 1e6;
    *peakKiB = peakKiBOf(process.processId());
    process.waitForFinished(60000);
    return true;
}

int starts(int runs)
{
    QTemporaryDir tmp;
    const QString host = QStringLiteral(IMG_HOST_EXE);
    const QString bare = QStringLiteral(IMG_BARE_WEBWINDOW_EXE);
    std::vector<double> hostMs, bareMs;
    long hostPeak = 0, barePeak = 0;
    for (int i = 0; i < runs; ++i) {
        double ms = 0;
        long peak = 0;
        // A workspace of a previous session, as a host opens it most of the time.
        if (!timeStart(host, {"--workspace", tmp.filePath("ws"), "--quit-when-shown"}, &ms, &peak))
            return 1;
        hostMs.push_back(ms);
        hostPeak = std::max(hostPeak, peak);
        if (!timeStart(bare, {}, &ms, &peak))
            return 1;
        bareMs.push_back(ms);
        barePeak = std::max(barePeak, peak);
    }
    printRow("imghost: start -> window shown", hostMs);
    printRow("bare window with web view", bareMs);
    std::printf("ratio: median %.2f (goal: at most 1.5)\n",
                percentile(hostMs, 0.5) / percentile(bareMs, 0.5));
    std::printf("peak resident memory: imghost %.1f MiB, bare window %.1f MiB\n",
                double(hostPeak) / 1024.0, double(barePeak) / 1024.0);
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
        return keystrokes(args.value(2, QStringLiteral("1000")).toInt());
    if (mode == QLatin1String("start"))
        return starts(args.value(2, QStringLiteral("10")).toInt());
    std::fputs("usage: settingswindow_bench keystrokes [N] | start [N]   (under xvfb-run)\n",
               stderr);
    return 2;
}
