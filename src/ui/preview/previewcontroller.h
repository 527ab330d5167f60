// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWebEngineScript>

#include <functional>
#include <optional>

class PreviewPage;
class QWebEngineLoadingInfo;
class QWebEngineProfile;
class QWebEngineView;

// Drives the settings window's live preview: the workspace's "index.html" shown in a web view,
// rebuilt at most once per tick of the owner's timer and reloaded once more after each rebuild so
// that it never shows cached scripts. The preview has its own off-the-record profile, so nothing
// it loads reaches the host's profile or the disk.
class PreviewController : public QObject
{
    Q_OBJECT
public:
    // Puts a PreviewPage into view. The view stays the owner's; it may be destroyed first.
    explicit PreviewController(QWebEngineView *view, QObject *parent = nullptr);
    // Stops the view's loading.
    ~PreviewController() override;

    QString workSpace() const { return m_workSpace; }
    void setWorkSpace(const QString &workSpace) { m_workSpace = workSpace; }
    // See PreviewPage::setIgnoreOpenURL.
    void setIgnoreOpenURL(std::function<bool()> provider);
    // The language the preview page speaks: its lang attribute (a BCP 47 tag such as "zh-CN")
    // and its own messages, keyed "none", "broken" and "nosettings". Applies from the next load.
    void setPageLanguage(const QString &languageTag, const QHash<QString, QString> &texts);

    // The page in the view. Every rebuildsPerPage() rebuilds a rebuild starts on a new one (see
    // renewPageIfDue), so hold it no longer than a rebuild.
    PreviewPage *page() const { return m_page; }
    QWebEngineProfile *profile() const { return m_profile; }
    bool isNeedReload() const { return m_isNeedReload; }
    int rebuildsPerPage() const { return m_rebuildsPerPage; }
    void setRebuildsPerPage(int rebuilds) { m_rebuildsPerPage = qMax(1, rebuilds); }

    // The timer's action: rebuilds once if isChange is set and clears it, so that any number of
    // changes within one tick cost one rebuild.
    void timerRepeat(bool &isChange);

public slots:
    // Hides, stops and shows the view, empties it, queues loadMainPage and marks the forced
    // reload as due.
    void refreshPreview();
    // Pauses 0.1 s, then loads workspace/"index.html".
    void loadMainPage();
    // After a rebuild's load has finished: the one forced reload, bypassing the cache.
    void delayReloadData();

signals:
    // A rebuild has started (refreshPreview ran).
    void refreshed();
    // A rebuild has put a new page into the view; the old one is deleted.
    void pageRenewed(PreviewPage *page);
    // The forced reload of a rebuild has been issued.
    void reloadForced();
    // A rebuild's loads are over: the load that took the forced reload has finished, and so has
    // the reload. The page now shows the workspace as it was at the rebuild.
    void rebuildDone();

private:
    PreviewPage *makePage();
    void renewPageIfDue();
    void onLoadingChanged(const QWebEngineLoadingInfo &info);

    QPointer<QWebEngineView> m_view;
    QWebEngineProfile *m_profile = nullptr;
    PreviewPage *m_page = nullptr;
    std::function<bool()> m_ignoreOpenURL;
    std::optional<QWebEngineScript> m_languageScript;
    int m_rebuildsPerPage = 25;
    int m_rebuildsOnPage = 0;
    QString m_workSpace;
    bool m_isNeedReload = false;
    bool m_isReloading = false; // the forced reload was issued and has not finished yet
};
