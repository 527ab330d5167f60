// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

// Shared fixtures of the preview suites: a window with the real web view and its controller, a
// recorder that stands in for the default browser, and an interceptor that keeps every request on
// this machine.

#include "previewcontroller.h"
#include "previewpage.h"

#include <QDesktopServices>
#include <QEventLoop>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineView>
#include <QWidget>

#include <memory>

namespace PreviewTesting {

// Runs a real event loop until pred holds or the time is up. QTest::qWaitFor sleeps between its
// passes, which starves the web engine's message pump: a page load then takes seconds, not
// milliseconds. The predicate may itself wait (run a script); it is never entered twice at once.
template<typename Predicate> bool waitFor(Predicate pred, int timeoutMs = 10000)
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
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);
    poll.start();
    deadline.start(timeoutMs);
    loop.exec();
    return pred();
}

// Lets the event loop run for a while, so that anything that would happen has happened.
inline void settle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// Stands in for the default browser and mail client: records what would have been opened.
class UrlRecorder : public QObject
{
    Q_OBJECT
public:
    static constexpr const char *schemes[] = {"http", "https", "mailto", "ftp"};

    UrlRecorder()
    {
        for (const char *scheme : schemes)
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "openUrl");
    }
    ~UrlRecorder() override
    {
        for (const char *scheme : schemes)
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }
    QList<QUrl> urls;

public slots:
    void openUrl(const QUrl &url) { urls.append(url); }
};

// Blocks every request that is not for a local file or an inline document, and remembers it.
class LocalOnly : public QWebEngineUrlRequestInterceptor
{
public:
    void interceptRequest(QWebEngineUrlRequestInfo &info) override
    {
        const QString scheme = info.requestUrl().scheme();
        if (scheme == QLatin1String("file") || scheme == QLatin1String("data"))
            return;
        blocked.append(info.requestUrl());
        info.block(true);
    }
    QList<QUrl> blocked;
};

inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), bytes.size());
}

// A shown window holding the web view, with a controller on it.
struct PreviewWindow
{
    PreviewWindow()
    {
        window.resize(480, 600);
        auto *layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        view = new QWebEngineView(&window);
        layout->addWidget(view);
        controller = std::make_unique<PreviewController>(view);
        controller->profile()->setUrlRequestInterceptor(&interceptor);
        recordLoads(controller->page());
        // A page that takes over is recorded the same way.
        QObject::connect(controller.get(), &PreviewController::pageRenewed,
                         [this](PreviewPage *page) { recordLoads(page); });
        window.show();
    }

    void recordLoads(PreviewPage *page)
    {
        QObject::connect(page, &QWebEnginePage::loadingChanged,
                         [this](const QWebEngineLoadingInfo &info) {
                             if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus)
                                 finishedUrls.append(info.url());
                         });
    }
    ~PreviewWindow() { controller.reset(); }

    PreviewPage *page() const { return controller->page(); }

    // Runs a script in the page and waits for its result.
    QVariant js(const QString &script)
    {
        QVariant result;
        bool done = false;
        page()->runJavaScript(script, [&](const QVariant &value) {
            result = value;
            done = true;
        });
        if (!waitFor([&] { return done; }, 10000))
            qWarning("script timed out: %s", qPrintable(script));
        return result;
    }

    // Loads a page directly (not as a rebuild) and waits for it.
    bool load(const QUrl &url)
    {
        const int before = finishedUrls.size();
        page()->load(url);
        return waitFor([&] { return finishedUrls.size() > before && finishedUrls.last() == url; },
                       15000);
    }

    // Rebuilds through the timer's action and waits until the forced reload has finished too.
    bool rebuild()
    {
        QSignalSpy forced(controller.get(), &PreviewController::reloadForced);
        bool isChange = true;
        controller->timerRepeat(isChange);
        if (isChange || !forced.wait(15000))
            return false;
        const int before = finishedUrls.size();
        return waitFor([&] { return finishedUrls.size() > before; }, 15000);
    }

    // Clicks the middle of the element with the given id, as the user would.
    bool click(const QString &id)
    {
        const QVariantList rect =
            js(QStringLiteral(
                   "(function(){var r=document.getElementById('%1')"
                   ".getBoundingClientRect();return [r.left,r.top,r.width,r.height];})()")
                   .arg(id))
                .toList();
        if (rect.size() != 4 || rect.at(2).toDouble() <= 0)
            return false;
        const QPoint centre(int(rect.at(0).toDouble() + rect.at(2).toDouble() / 2),
                            int(rect.at(1).toDouble() + rect.at(3).toDouble() / 2));
        QWidget *target = view->focusProxy() ? view->focusProxy() : view;
        QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, centre);
        return true;
    }

    QWidget window;
    QWebEngineView *view = nullptr;
    LocalOnly interceptor;
    std::unique_ptr<PreviewController> controller;
    QList<QUrl> finishedUrls;
};

} // namespace PreviewTesting
