// Edit-to-preview latency of the live preview: an edit rewrites "config.js" and raises the change
// flag, as a save does; the 0.33 s timer rebuilds the preview. Measured until the page reports the
// new position, over 50 edits made at random moments of the tick, and printed beside the floor
// that the design sets: half a tick on average, the 0.1 s pause before the load, and two loads of
// the page (the load and the forced reload).
//   preview_bench [edits]     run under xvfb-run; nothing leaves the machine

#include "previewcontroller.h"
#include "previewpage.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimer>
#include <QWebEngineLoadingInfo>
#include <QWebEngineView>

#include <algorithm>
#include <cstdio>

namespace {

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

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const int edits = argc > 1 ? std::max(1, atoi(argv[1])) : 50;

    QTemporaryDir workspace;
    for (const QString &name : QDir(bundleHtml).entryList(QDir::Files))
        QFile::copy(QDir(bundleHtml).filePath(name), workspace.filePath(name));
    QDir(workspace.path()).mkpath(QStringLiteral("files/plugin"));
    QImage picture(320, 240, QImage::Format_RGB32);
    picture.fill(QColor(40, 120, 200));
    picture.save(workspace.filePath(QStringLiteral("files/plugin/picture.png")));
    writeConfig(workspace.path(), 10);

    QWebEngineView view;
    view.resize(420, 540);
    PreviewController controller(&view);
    controller.setWorkSpace(workspace.path());
    view.show();
    QWebEnginePage *page = controller.page();
    const QUrl index = QUrl::fromLocalFile(workspace.filePath(QStringLiteral("index.html")));

    // One load of the page on its own, for the floor.
    std::vector<double> loads;
    int finished = 0;
    QObject::connect(page, &QWebEnginePage::loadingChanged, [&](const QWebEngineLoadingInfo &info) {
        if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus && info.url() == index)
            ++finished;
    });
    for (int i = 0; i < 21; ++i) {
        const int before = finished;
        QElapsedTimer clock;
        clock.start();
        page->triggerAction(QWebEnginePage::ReloadAndBypassCache);
        if (i == 0)
            page->load(index);
        if (!waitFor([&] { return finished > before; }, 10000))
            qFatal("the page does not load");
        if (i > 0) // the first load warms the engine up
            loads.push_back(double(clock.nsecsElapsed()) / 1e6);
    }

    // The settings window's timer and change flag.
    bool isChange = false;
    QTimer repeatTimer;
    repeatTimer.setInterval(330);
    QObject::connect(&repeatTimer, &QTimer::timeout, [&] { controller.timerRepeat(isChange); });
    repeatTimer.start();

    QElapsedTimer clock;
    double firstReport = -1;
    double afterReload = -1;
    int expectedLeft = 10;
    int loadsSinceEdit = 0;
    QObject::connect(page, &QWebEnginePage::loadingChanged, [&](const QWebEngineLoadingInfo &info) {
        if (info.status() != QWebEngineLoadingInfo::LoadSucceededStatus || info.url() != index ||
            !clock.isValid())
            return;
        ++loadsSinceEdit;
        const double at = double(clock.nsecsElapsed()) / 1e6;
        if (reportedLeft(page) != expectedLeft)
            return;
        if (firstReport < 0)
            firstReport = at;
        if (loadsSinceEdit == 2)
            afterReload = at;
    });

    std::vector<double> first, complete;
    QRandomGenerator random(7);
    for (int i = 0; i < edits; ++i) {
        // Edits fall at any moment of the tick.
        settle(int(random.bounded(330)));
        expectedLeft = 11 + i % 40;
        firstReport = afterReload = -1;
        loadsSinceEdit = 0;
        clock.start();
        writeConfig(workspace.path(), expectedLeft);
        isChange = true;
        if (!waitFor([&] { return afterReload >= 0; }, 10000))
            qFatal("edit %d never reached the page", i);
        first.push_back(firstReport);
        complete.push_back(afterReload);
        clock.invalidate();
        settle(50);
    }

    const double load = median(loads);
    const double floor = 330.0 / 2 + 100.0 + 2 * load;
    std::printf("preview: edit-to-preview latency over %d edits (ms)\n", edits);
    std::printf("  page load on its own            median %7.1f\n", load);
    std::printf("  first report of the new position median %7.1f   p90 %7.1f\n", median(first),
                percentile(first, 0.9));
    std::printf("  rebuild done (after the reload)  median %7.1f   p90 %7.1f\n", median(complete),
                percentile(complete, 0.9));
    std::printf("  floor: half a tick 165.0 + pause 100.0 + two loads %.1f = %7.1f\n", 2 * load,
                floor);
    return 0;
}
