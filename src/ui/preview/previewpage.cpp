// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "previewpage.h"

#include "navigationpolicy.h"

#include <QDesktopServices>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

#include <exception>

Q_LOGGING_CATEGORY(lcPreviewPage, "img.preview.page", QtWarningMsg)

namespace {

// The engine hands every navigation over with its scheme in lower case, but a link written
// "HTTP://" is not a web link to the preview. This script, in a world of its own so that page
// scripts cannot reach it, tells the page the scheme of every followed link as it is written,
// before the navigation starts.
const QLatin1String writtenLinkMark("img-written-link ");
const char writtenLinkScript[] = R"js(
(function () {
    var report = console.debug.bind(console);
    function written(event) {
        var path = event.composedPath ? event.composedPath() : [event.target];
        for (var i = 0; i < path.length; ++i) {
            var node = path[i];
            if (!node || !node.getAttribute || !node.hasAttribute || !node.hasAttribute('href'))
                continue;
            var name = node.localName;
            if (name !== 'a' && name !== 'area')
                continue;
            var scheme = /^[\x00-\x20]*([A-Za-z][A-Za-z0-9+.-]*):/.exec(node.getAttribute('href'));
            if (scheme)
                report('%1' + JSON.stringify([scheme[1], node.href]));
            return;
        }
    }
    window.addEventListener('click', written, true);
    window.addEventListener('auxclick', written, true);
})();
)js";

QWebEngineScript writtenLinkReporter()
{
    QWebEngineScript script;
    script.setName(QStringLiteral("img-written-links"));
    script.setSourceCode(QString::fromUtf8(writtenLinkScript).arg(writtenLinkMark));
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    script.setRunsOnSubFrames(true);
    return script;
}

} // namespace

PreviewPage::PreviewPage(QWebEngineProfile *profile, QObject *parent)
    : QWebEnginePage(profile, parent)
{
    scripts().insert(writtenLinkReporter());
    // Reports of links whose navigation never came (a page that cancelled the click) go with the
    // document they came from.
    connect(this, &QWebEnginePage::loadStarted, this, [this] { m_writtenSchemes.clear(); });
}

void PreviewPage::setIgnoreOpenURL(std::function<bool()> provider)
{
    m_ignoreOpenURL = std::move(provider);
}

void PreviewPage::loadEmptyPage()
{
    setHtml(QString(), QUrl());
}

QUrl PreviewPage::emptyPageUrl()
{
    return QUrl(QStringLiteral("data:text/html;charset=UTF-8,"));
}

bool PreviewPage::acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame)
{
    // A request without a URL is not ours to decide; the engine's default stands.
    if (url.isEmpty())
        return QWebEnginePage::acceptNavigationRequest(url, type, isMainFrame);
    // The empty document of a rebuild is typed by the application itself, never by a page.
    if (type == NavigationTypeTyped && url == emptyPageUrl())
        return true;
    const bool use = decide(url, writtenScheme(url));
    qCDebug(lcPreviewPage) << (use ? "use" : "ignore") << url << type << isMainFrame;
    return use;
}

void PreviewPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level,
                                           const QString &message, int lineNumber,
                                           const QString &sourceID)
{
    if (!message.startsWith(writtenLinkMark)) {
        QWebEnginePage::javaScriptConsoleMessage(level, message, lineNumber, sourceID);
        return;
    }
    const QJsonArray link =
        QJsonDocument::fromJson(message.mid(writtenLinkMark.size()).toUtf8()).array();
    const QUrl url(link.at(1).toString());
    if (link.size() == 2 && url.isValid())
        m_writtenSchemes.insert(url, link.at(0).toString());
}

QString PreviewPage::writtenScheme(const QUrl &url)
{
    // A new window's navigation comes from a link of the page that opened it.
    PreviewPage *source = m_isPopup ? qobject_cast<PreviewPage *>(parent()) : this;
    if (source && source->m_writtenSchemes.contains(url))
        return source->m_writtenSchemes.take(url);
    return url.scheme();
}

bool PreviewPage::decide(const QUrl &url, const QString &scheme)
{
    try {
        switch (NavigationPolicy::decide(scheme, m_ignoreOpenURL)) {
        case NavigationPolicy::Decision::Use:
            return true;
        case NavigationPolicy::Decision::IgnoreAndOpenOutside:
            emit navigationRefused(url, true);
            QDesktopServices::openUrl(url);
            break;
        case NavigationPolicy::Decision::Ignore:
            emit navigationRefused(url, false);
            break;
        }
    } catch (const std::exception &e) {
        qWarning().noquote()
            << QStringLiteral("Web action exception: %1").arg(QString::fromLocal8Bit(e.what()));
    }
    // A page made only to decide a new window's navigation has nothing left to show.
    if (m_isPopup)
        deleteLater();
    return false;
}

QWebEnginePage *PreviewPage::createWindow(WebWindowType type)
{
    Q_UNUSED(type);
    // Never shown: it exists so that the new window's navigation meets the same policy.
    auto *popup = new PreviewPage(profile(), this);
    popup->m_isPopup = true;
    popup->m_ignoreOpenURL = m_ignoreOpenURL;
    connect(popup, &PreviewPage::navigationRefused, this, &PreviewPage::navigationRefused);
    return popup;
}
