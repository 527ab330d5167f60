// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Edit-to-preview latency of the live preview: an edit rewrites "config.js" and raises the change
// flag, as a save does; the 0.33 s timer rebuilds the preview. Measured until the page reports the
// new position, over 50 edits made at random moments of the tick, and printed beside the floor
// that the design sets: half a tick on average, the 0.1 s pause before the load, and two loads of
// the page (the load and the forced reload).
// Measured twice: the preview controller alone (a config change and the change flag), and the real
// settings window (the left margin typed into its field).
//   preview_bench [edits] [--controller-only] [--new-page-every N]
//                        run under xvfb-run; nothing leaves the machine. --new-page-every sets
//                        how many rebuilds a page serves before a new one takes over (what a
//                        rebuild that changes pages costs shows with 1).

#include "pluginsettingsdelegate.h"
#include "previewcontroller.h"
#include "previewpage.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWebEngineLoadingInfo>
#include <QWebEngineView>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

// How many rebuilds a preview page serves; 0 keeps the controller's own count.
int rebuildsPerPage = 0;

// Runs a real event loop until pred holds. QTest::qWaitFor sleeps between its passes, which starves
// the web engine's message pump and would add seconds to every load.
template<typename Predicate> bool waitFor(Predicate pred, int timeoutMs)
{
    if (pred())
        return true;
    QEventLoop loop;
    bool busy = false;
    QTimer poll;
    poll.setInterval(1);
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (busy)
            return;
        busy = true;
        if (pred())
            loop.quit();
        busy = false;
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    poll.start();
    loop.exec();
    return pred();
}

void settle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

const QString bundleHtml = QStringLiteral(IMG_BUNDLE_DIR "/Contents/Resources/html");

void writeConfig(const QString &workspace, int left)
{
    QFile file(QDir(workspace).filePath(QStringLiteral("config.js")));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write config.js");
    file.write("\xEF\xBB\xBF");
    file.write(QStringLiteral("var config={\"opacity\":0.800000,\"layout\":1,\"properties\":{"
                              "\"basic\":{\"left\":\"%1.0%\",\"top\":\"20.0%\",\"width\":\"30.0%\","
                              "\"height\":\"40.0%\"},\"extended\":{\"src\":"
                              "\"files/plugin/picture.png\"}}};")
                   .arg(left)
                   .toUtf8());
}

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    const size_t n = v.size();
    return n % 2 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
}

double percentile(std::vector<double> v, double p)
{
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, size_t(p * double(v.size())))];
}

// The page's left margin as it reports it, or -1 while it cannot tell.
double reportedLeft(QWebEnginePage *page)
{
    double left = -1;
    bool done = false;
    page->runJavaScript(
        QStringLiteral("window.previewState ? parseFloat(previewState().left) : -1"),
        [&](const QVariant &v) {
            left = v.isValid() ? v.toDouble() : -1;
            done = true;
        });
    if (!waitFor([&] { return done; }, 5000))
        return -1;
    return left;
}

struct Latency
{
    double load = 0;              // one load of the page on its own (median)
    std::vector<double> first;    // until the first load shows the new position
    std::vector<double> complete; // until the forced reload has shown it too
};

// The median time of one load of the page on its own, for the floor.
double pageLoadMedian(QWebEnginePage *page, const QUrl &index)
{
    std::vector<double> loads;
    int finished = 0;
    QMetaObject::Connection counting = QObject::connect(
        page, &QWebEnginePage::loadingChanged, [&](const QWebEngineLoadingInfo &info) {
            if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus && info.url() == index)
                ++finished;
        });
    for (int i = 0; i < 21; ++i) {
        const int before = finished;
        QElapsedTimer clock;
        clock.start();
        if (page->url() == index)
            page->triggerAction(QWebEnginePage::ReloadAndBypassCache);
        else
            page->load(index);
        if (!waitFor([&] { return finished > before; }, 20000))
            qFatal("the page does not load");
        if (i > 0) // the first load warms the engine up
            loads.push_back(double(clock.nsecsElapsed()) / 1e6);
    }
    QObject::disconnect(counting);
    return median(loads);
}

// Makes edits at random moments of the tick; edit(left) must change the left margin to left and
// let the preview know, as a save does.
Latency measureEdits(PreviewController *controller, const QUrl &index, int edits,
                     const std::function<void(int)> &edit)
{
    Latency result;
    result.load = pageLoadMedian(controller->page(), index);

    // The handler only notes the time: the page is asked afterwards, outside the engine's signal.
    // A page that takes over in a rebuild is watched from then on.
    QElapsedTimer clock;
    std::vector<double> finishes;
    const auto watch = [&](QWebEnginePage *page) {
        return QObject::connect(
            page, &QWebEnginePage::loadingChanged, [&](const QWebEngineLoadingInfo &info) {
                if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus &&
                    info.url() == index && clock.isValid())
                    finishes.push_back(double(clock.nsecsElapsed()) / 1e6);
            });
    };
    QMetaObject::Connection watching = watch(controller->page());
    const QMetaObject::Connection renewing =
        QObject::connect(controller, &PreviewController::pageRenewed,
                         [&](PreviewPage *page) { watching = watch(page); });

    QRandomGenerator random(7);
    for (int i = 0; i < edits; ++i) {
        settle(int(random.bounded(330)));
        const int expectedLeft = 11 + i % 25; // the page keeps a positive width
        double firstReport = -1;
        double afterReload = -1;
        size_t checked = 0;
        finishes.clear();
        clock.start();
        edit(expectedLeft);
        const bool shown = waitFor(
            [&] {
                while (checked < finishes.size()) {
                    const double at = finishes[checked++];
                    if (reportedLeft(controller->page()) != expectedLeft)
                        continue;
                    if (firstReport < 0)
                        firstReport = at;
                    if (checked == 2) // the load and the forced reload
                        afterReload = at;
                }
                return afterReload >= 0;
            },
            30000);
        if (!shown)
            qFatal("edit %d never reached the page", i);
        result.first.push_back(firstReport);
        result.complete.push_back(afterReload);
        clock.invalidate();
        settle(50);
    }
    QObject::disconnect(watching);
    QObject::disconnect(renewing);
    return result;
}

void print(const char *title, int edits, const Latency &l)
{
    const double floor = 330.0 / 2 + 100.0 + 2 * l.load;
    std::printf("%s: edit-to-preview latency over %d edits (ms)\n", title, edits);
    std::printf("  page load on its own              median %8.1f\n", l.load);
    std::printf("  first report of the new position  median %8.1f   p90 %8.1f\n", median(l.first),
                percentile(l.first, 0.9));
    std::printf("  rebuild done (after the reload)   median %8.1f   p90 %8.1f\n",
                median(l.complete), percentile(l.complete, 0.9));
    std::printf("  floor: half a tick 165.0 + pause 100.0 + two loads %.1f = %8.1f\n", 2 * l.load,
                floor);
    std::fflush(stdout);
}

// The preview controller alone: a config change and the change flag, the window's 0.33 s timer.
Latency controllerAlone(const QString &workspace, int edits)
{
    QDir().mkpath(workspace);
    for (const QString &name : QDir(bundleHtml).entryList(QDir::Files))
        QFile::copy(QDir(bundleHtml).filePath(name), QDir(workspace).filePath(name));
    QDir(workspace).mkpath(QStringLiteral("files/plugin"));
    QImage picture(320, 240, QImage::Format_RGB32);
    picture.fill(QColor(40, 120, 200));
    picture.save(QDir(workspace).filePath(QStringLiteral("files/plugin/picture.png")));
    writeConfig(workspace, 10);

    QWebEngineView view;
    view.resize(420, 540);
    PreviewController controller(&view);
    controller.setWorkSpace(workspace);
    if (rebuildsPerPage > 0)
        controller.setRebuildsPerPage(rebuildsPerPage);
    view.show();

    bool isChange = false;
    QTimer repeatTimer;
    repeatTimer.setInterval(330);
    QObject::connect(&repeatTimer, &QTimer::timeout, [&] { controller.timerRepeat(isChange); });
    repeatTimer.start();

    const QUrl index = QUrl::fromLocalFile(QDir(workspace).filePath(QStringLiteral("index.html")));
    return measureEdits(&controller, index, edits, [&](int left) {
        writeConfig(workspace, left);
        isChange = true;
    });
}

// The settings window: the left margin typed into its field, keystroke by keystroke.
Latency settingsWindow(const QString &workspace, int edits)
{
    auto delegate =
        PluginSettingsDelegate::create(QStringLiteral("en"), QStringLiteral(IMG_BUNDLE_DIR));
    if (!delegate)
        qFatal("the bundle has no settings window");
    delegate->setWorkSpace(workspace);
    QDialog *window = delegate->window();
    PreviewController *preview = delegate ? delegate->previewController() : nullptr;
    QLineEdit *field = window ? window->findChild<QLineEdit *>(QStringLiteral("txtLeft")) : nullptr;
    if (!preview || !field)
        qFatal("the settings window has no preview or no left margin field");
    if (rebuildsPerPage > 0)
        preview->setRebuildsPerPage(rebuildsPerPage);
    window->show();
    const QUrl index = QUrl::fromLocalFile(QDir(workspace).filePath(QStringLiteral("index.html")));
    if (!waitFor([&] { return preview->page()->url() == index && !preview->isNeedReload(); },
                 30000))
        qFatal("the settings window does not show its preview");
    return measureEdits(preview, index, edits, [&](int left) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, QString::number(left));
    });
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int edits = args.size() > 1 && args.at(1).toInt() > 0 ? args.at(1).toInt() : 50;
    const qsizetype every = args.indexOf(QStringLiteral("--new-page-every"));
    if (every > 0)
        rebuildsPerPage = args.value(every + 1).toInt();

    // Backups and workspaces of this run stay inside one temporary folder.
    QTemporaryDir root;
    qputenv("TMPDIR", QFile::encodeName(root.path()));

    print("preview controller", edits,
          controllerAlone(root.filePath(QStringLiteral("controller")), edits));
    if (!args.contains(QStringLiteral("--controller-only")))
        print("settings window", edits,
              settingsWindow(root.filePath(QStringLiteral("img")), edits));
    return 0;
}
