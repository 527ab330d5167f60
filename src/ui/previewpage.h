#pragma once

#include <QWebEnginePage>

#include <functional>

// The page shown in the settings window's preview. Every navigation, including one that asks for a
// new window, is decided by NavigationPolicy: file URLs load here, "http" and "https" links open in
// the default browser, anything else is refused.
class PreviewPage : public QWebEnginePage
{
    Q_OBJECT
public:
    explicit PreviewPage(QWebEngineProfile *profile, QObject *parent = nullptr);

    // Asked for links that are not files; true lets the preview follow them itself. Without a
    // provider such links are not followed.
    void setIgnoreOpenURL(std::function<bool()> provider);

    // Loads an empty document, dropping the current one and its scripts.
    void loadEmptyPage();
    // The URL under which the engine loads that empty document.
    static QUrl emptyPageUrl();

signals:
    // A navigation was refused; openedOutside is true when its URL went to the default browser.
    void navigationRefused(const QUrl &url, bool openedOutside);

protected:
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage *createWindow(WebWindowType type) override;

private:
    bool decide(const QUrl &url);

    std::function<bool()> m_ignoreOpenURL;
    bool m_isPopup = false;
};
