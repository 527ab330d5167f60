// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The floor for the settings window's start: a bare Qt program that opens an empty window holding
// a web view. Prints "window shown" once the window is exposed, then quits after 300 ms, as
// imghost --quit-when-shown does.
//
//   bare_webwindow [PAGE]   with a page (a local file): once the window is shown, loads the page,
//                           and when that load has finished reloads it once, bypassing the cache;
//                           prints "page loaded" when the reload has finished, then quits after
//                           300 ms, as imghost --quit-when-preview-loaded does. The two lines
//                           carry the milliseconds since the program's start.

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <QWebEngineView>
#include <QWidget>
#include <QWindow>

#include <cstdio>
#include <memory>

namespace {

QElapsedTimer sinceStart;

void report(const char *what)
{
    std::printf("%s (%.1f ms)\n", what, double(sinceStart.nsecsElapsed()) / 1e6);
    std::fflush(stdout);
}

// The two loads of the page: the load, then one reload of it that bypasses the cache.
void loadTwice(QWebEngineView *view, const QUrl &page)
{
    auto finished = std::make_shared<int>(0);
    QObject::connect(view, &QWebEngineView::loadFinished, view, [view, finished](bool) {
        ++*finished;
        if (*finished == 1) {
            view->triggerPageAction(QWebEnginePage::ReloadAndBypassCache);
        } else if (*finished == 2) {
            report("page loaded");
            QTimer::singleShot(300, qApp, &QCoreApplication::quit);
        }
    });
    view->load(page);
}

} // namespace

int main(int argc, char *argv[])
{
    sinceStart.start();
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const QUrl page =
        args.size() > 1 ? QUrl::fromLocalFile(QFileInfo(args.at(1)).absoluteFilePath()) : QUrl();
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *view = new QWebEngineView(&window);
    layout->addWidget(view);
    window.resize(960, 640);
    window.show();
    QTimer poll;
    poll.setInterval(1);
    QObject::connect(&poll, &QTimer::timeout, &window, [&] {
        if (!window.windowHandle() || !window.windowHandle()->isExposed())
            return;
        poll.stop();
        report("window shown");
        if (page.isEmpty())
            QTimer::singleShot(300, &app, &QCoreApplication::quit);
        else
            loadTwice(view, page);
    });
    poll.start();
    return app.exec();
}
