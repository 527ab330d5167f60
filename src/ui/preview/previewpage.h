// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QHash>
#include <QUrl>
#include <QWebEnginePage>

#include <functional>

// The page shown in the settings window's preview. Every navigation, including one that asks for a
// new window, is decided by NavigationPolicy: file URLs load here, "http" and "https" links open in
// the default browser, anything else is refused. A link's scheme counts as it is written in the
// page ("HTTP://" is not a web link), not as the engine normalises it.
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
    // Takes the page's reports of links followed, with their schemes as written.
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString &message,
                                  int lineNumber, const QString &sourceID) override;

private:
    // The scheme of url as its link was written, when the page reported that link; otherwise the
    // scheme as the engine gives it.
    QString writtenScheme(const QUrl &url);
    bool decide(const QUrl &url, const QString &scheme);

    std::function<bool()> m_ignoreOpenURL;
    QHash<QUrl, QString> m_writtenSchemes;
    bool m_isPopup = false;
};
