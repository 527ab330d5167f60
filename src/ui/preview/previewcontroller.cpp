// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "previewcontroller.h"

#include "previewpage.h"
#include "workspacelayout.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QPointer>
#include <QThread>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <QWebEngineView>

#ifdef __GLIBC__
#include <malloc.h>
#endif

Q_LOGGING_CATEGORY(lcPreview, "img.preview", QtWarningMsg)

namespace {
// The deliberate pause before the main page loads. It blocks the main thread that long and is a
// known part of every rebuild's cost.
constexpr unsigned long mainPagePauseMs = 100;
} // namespace

PreviewController::PreviewController(QWebEngineView *view, QObject *parent)
    : QObject(parent)
    , m_view(view)
    // No storage name: off the record, memory only, nothing shared with the host's profile.
    , m_profile(new QWebEngineProfile(this))
{
    // Every load ignores cached data: the page and "config.js" change between loads under the
    // same URLs, so nothing may be answered from a cache. A profile without an HTTP cache does
    // that for every load; the forced reload after each load also bypasses the page's own.
    m_profile->setHttpCacheType(QWebEngineProfile::NoCache);
    m_page = makePage();
    if (m_view)
        m_view->setPage(m_page);
}

PreviewPage *PreviewController::makePage()
{
    auto *page = new PreviewPage(m_profile, this);
    // The plugin's image may be a web link; the workspace page must be allowed to show it.
    // Navigations away from the page are still decided by PreviewPage.
    page->settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    page->setIgnoreOpenURL(m_ignoreOpenURL);
    if (m_languageScript)
        page->scripts().insert(*m_languageScript);
    connect(page, &QWebEnginePage::loadingChanged, this, &PreviewController::onLoadingChanged);
    return page;
}

// The engine keeps some state of every load a page has had: while an author types, a page grows
// by some 40 KB per rebuild and never gives it back. A new page now and then, put in while the
// view is hidden and before its empty document, holds the process at its size through a long
// session; the heap's freed pages go back to the system with the old page.
void PreviewController::renewPageIfDue()
{
    if (++m_rebuildsOnPage <= m_rebuildsPerPage)
        return;
    m_rebuildsOnPage = 1;
    PreviewPage *old = m_page;
    m_page = makePage();
    if (m_view)
        m_view->setPage(m_page);
    delete old;
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    qCDebug(lcPreview) << "new page";
    emit pageRenewed(m_page);
}

PreviewController::~PreviewController()
{
    m_page->triggerAction(QWebEnginePage::Stop);
    // The page must go before its profile; a view still showing it lets go of it.
    delete m_page;
    m_page = nullptr;
}

void PreviewController::setIgnoreOpenURL(std::function<bool()> provider)
{
    m_ignoreOpenURL = std::move(provider);
    m_page->setIgnoreOpenURL(m_ignoreOpenURL);
}

void PreviewController::setPageLanguage(const QString &languageTag,
                                        const QHash<QString, QString> &texts)
{
    QJsonObject given{{QStringLiteral("lang"), languageTag}};
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        given.insert(it.key(), it.value());
    // Given as data before any of the page's scripts run; the page decides what to do with it.
    QWebEngineScript script;
    script.setName(QStringLiteral("img-preview-language"));
    script.setSourceCode(
        QStringLiteral("window.imgPreviewTexts = %1;")
            .arg(QString::fromUtf8(QJsonDocument(given).toJson(QJsonDocument::Compact))));
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    QWebEngineScriptCollection &scripts = m_page->scripts();
    for (const QWebEngineScript &old : scripts.find(script.name()))
        scripts.remove(old);
    scripts.insert(script);
    m_languageScript = script; // for the pages that follow
}

void PreviewController::timerRepeat(bool &isChange)
{
    if (!isChange)
        return;
    isChange = false;
    refreshPreview();
}

void PreviewController::refreshPreview()
{
    qCDebug(lcPreview) << "rebuild" << m_workSpace;
    if (m_view) {
        m_view->hide();
        m_view->stop();
        renewPageIfDue();
        m_view->show();
    } else {
        m_page->triggerAction(QWebEnginePage::Stop);
        renewPageIfDue();
    }
    m_page->loadEmptyPage();
    // A reload of an earlier rebuild that is still under way no longer ends anything.
    m_isReloading = false;
    // On a later pass of the event loop, never inside this call.
    QMetaObject::invokeMethod(this, &PreviewController::loadMainPage, Qt::QueuedConnection);
    m_isNeedReload = true;
    emit refreshed();
}

void PreviewController::loadMainPage()
{
    QThread::msleep(mainPagePauseMs);
    const QUrl url = QUrl::fromLocalFile(QDir(m_workSpace).filePath(WorkspaceLayout::PreviewPage));
    qCDebug(lcPreview) << "load" << url;
    m_page->load(url);
}

void PreviewController::delayReloadData()
{
    if (!m_isNeedReload)
        return;
    m_isNeedReload = false;
    qCDebug(lcPreview) << "forced reload";
    m_page->runJavaScript(QStringLiteral("location.reload(true);"));
    m_isReloading = true;
    emit reloadForced();
}

void PreviewController::onLoadingChanged(const QWebEngineLoadingInfo &info)
{
    // Every finished load, the empty document's included, offers the rebuild's forced reload;
    // the flag makes it happen once. In a rebuild the workspace page's load usually cuts the
    // empty document short, so that the reload falls to the page itself.
    if (info.status() != QWebEngineLoadingInfo::LoadSucceededStatus)
        return;
    // The first finish after the forced reload was issued is the reload's own: the rebuild is
    // done. Asked before the reload is offered, so that the load taking it does not count.
    if (m_isReloading) {
        m_isReloading = false;
        // A listener may delete the window, and this controller with it, when it hears of the
        // rebuild (a host deleting its controller in previewLoaded()).
        const QPointer<PreviewController> alive(this);
        emit rebuildDone();
        if (!alive)
            return;
    }
    delayReloadData();
}
