#include "previewpage.h"

#include "navigationpolicy.h"

#include <QDesktopServices>
#include <QLoggingCategory>

#include <exception>

Q_LOGGING_CATEGORY(lcPreviewPage, "img.preview.page", QtWarningMsg)

PreviewPage::PreviewPage(QWebEngineProfile *profile, QObject *parent)
    : QWebEnginePage(profile, parent)
{}

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
    const bool use = decide(url);
    qCDebug(lcPreviewPage) << (use ? "use" : "ignore") << url << type << isMainFrame;
    return use;
}

bool PreviewPage::decide(const QUrl &url)
{
    try {
        switch (NavigationPolicy::decide(url.scheme(), m_ignoreOpenURL)) {
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
