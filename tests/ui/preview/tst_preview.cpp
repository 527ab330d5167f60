// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "previewtesting.h"
#include "testenv.h"

#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <QtTest>

using namespace PreviewTesting;

namespace {

// A workspace page that shows where it was loaded from and the value its script read, so that a
// test can tell a fresh load from a cached one.
const QByteArray workspacePage =
    "<!DOCTYPE html>\n"
    "<html><head><meta charset=\"utf-8\"><script src=\"config.js\"></script></head>\n"
    "<body><p id=\"value\"></p>\n"
    "<script>document.getElementById('value').textContent = String(config.value);</script>\n"
    "</body></html>";

QByteArray configScript(int value)
{
    return QByteArray("\xEF\xBB\xBF") + "var config={\"value\":" + QByteArray::number(value) + "};";
}

const QByteArray linkPage =
    "<!DOCTYPE html>\n"
    "<html><head><meta charset=\"utf-8\">\n"
    "<style>a { display: block; height: 24px; margin: 2px; }</style></head>\n"
    "<body>\n"
    "<a id=\"https\" href=\"https://example.invalid/page\">https</a>\n"
    "<a id=\"http\" href=\"http://example.invalid/page\">http</a>\n"
    "<a id=\"mailto\" href=\"mailto:someone@example.invalid\">mailto</a>\n"
    "<a id=\"ftp\" href=\"ftp://example.invalid/file.txt\">ftp</a>\n"
    "<a id=\"file\" href=\"second.html\">file</a>\n"
    "<a id=\"blank-http\" href=\"http://example.invalid/blank\" target=\"_blank\">new window, "
    "http</a>\n"
    "<a id=\"blank-file\" href=\"second.html\" target=\"_blank\">new window, file</a>\n"
    "<a id=\"upper-http\" href=\"HTTP://example.invalid/upper\">HTTP</a>\n"
    "<a id=\"mixed-https\" href=\" Https://example.invalid/mixed\">Https</a>\n"
    "<a id=\"blank-upper-http\" href=\"HTTP://example.invalid/blank-upper\" target=\"_blank\">new "
    "window, HTTP</a>\n"
    "<script>window.marker = 'first';</script>\n"
    "</body></html>";

const QByteArray secondPage =
    "<!DOCTYPE html>\n"
    "<html><body><p>second</p><script>window.marker = 'second';</script></body></html>";

} // namespace

class TestPreview : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY(m_dir.isValid());
        writeFile(m_dir.filePath("index.html"), workspacePage);
        writeFile(m_dir.filePath("config.js"), configScript(1));
        writeFile(m_dir.filePath("links.html"), linkPage);
        writeFile(m_dir.filePath("second.html"), secondPage);
    }

    void init()
    {
        m_preview = std::make_unique<PreviewWindow>();
        m_preview->controller->setWorkSpace(m_dir.path());
        m_recorder = std::make_unique<UrlRecorder>();
    }
    void cleanup()
    {
        // Nothing any test did may have tried to leave the machine.
        if (m_preview)
            QCOMPARE(m_preview->interceptor.blocked, QList<QUrl>());
        m_recorder.reset();
        m_preview.reset();
    }

    // ---- refresh

    void previewHasAProfileOfItsOwn()
    {
        QWebEngineProfile *profile = m_preview->controller->profile();
        QVERIFY(profile != QWebEngineProfile::defaultProfile());
        QVERIFY(profile->isOffTheRecord());
        QCOMPARE(profile->httpCacheType(), QWebEngineProfile::NoCache);
        QCOMPARE(m_preview->page()->profile(), profile);
        QCOMPARE(m_preview->view->page(), m_preview->page());
    }

    void rebuildLoadsTheWorkspacePageThenReloadsItOnce()
    {
        const QUrl index = QUrl::fromLocalFile(m_dir.filePath("index.html"));
        QVERIFY(m_preview->rebuild());
        QVERIFY(!m_preview->controller->isNeedReload());
        settle(300); // a second reload would have finished by now
        QCOMPARE(m_preview->finishedUrls, QList<QUrl>({index, index}));
        QCOMPARE(m_preview->page()->url(), index);
    }

    void rebuildIsDoneWhenItsForcedReloadHasFinished()
    {
        const QUrl index = QUrl::fromLocalFile(m_dir.filePath("index.html"));
        QSignalSpy forced(m_preview->controller.get(), &PreviewController::reloadForced);
        QSignalSpy done(m_preview->controller.get(), &PreviewController::rebuildDone);
        m_preview->finishedUrls.clear();
        bool isChange = true;
        m_preview->controller->timerRepeat(isChange);
        QVERIFY(done.wait(15000));
        QCOMPARE(forced.count(), 1);
        QVERIFY(!m_preview->controller->isNeedReload());
        // Both loads have finished: the page's and the reload's.
        QCOMPARE(m_preview->finishedUrls.count(index), 2);
        settle(300); // nothing more comes
        QCOMPARE(m_preview->finishedUrls.count(index), 2);
        QCOMPARE(done.count(), 1);
    }

    void rebuildStartedDuringAReloadIsDoneOnlyAfterItsOwn()
    {
        QSignalSpy forced(m_preview->controller.get(), &PreviewController::reloadForced);
        QSignalSpy done(m_preview->controller.get(), &PreviewController::rebuildDone);
        bool isChange = true;
        m_preview->controller->timerRepeat(isChange);
        QVERIFY(forced.wait(15000));
        // The first rebuild's reload is under way; a second rebuild takes over.
        writeFile(m_dir.filePath("config.js"), configScript(77));
        isChange = true;
        m_preview->controller->timerRepeat(isChange);
        QVERIFY(waitFor([&] { return forced.count() == 2 && done.count() >= 1; }, 15000));
        settle(300);
        QCOMPARE(done.count(), 1);
        QCOMPARE(m_preview->js("document.getElementById('value').textContent").toString(),
                 QStringLiteral("77"));
    }

    // Every few rebuilds a new page takes over, as the old one would keep growing; the new one
    // must be the old one again in everything but its history.
    void newPageTakesOverWithEverythingTheOldOneHad()
    {
        PreviewController &controller = *m_preview->controller;
        QCOMPARE(controller.rebuildsPerPage(), 25);
        controller.setRebuildsPerPage(2);
        controller.setPageLanguage(QStringLiteral("de"), {{QStringLiteral("none"), "Kein Bild"}});
        int asked = 0;
        controller.setIgnoreOpenURL([&] {
            ++asked;
            return false;
        });
        qRegisterMetaType<PreviewPage *>();
        QSignalSpy renewed(&controller, &PreviewController::pageRenewed);
        QPointer<PreviewPage> first = controller.page();
        QVERIFY(m_preview->rebuild());
        QVERIFY(m_preview->rebuild());
        QCOMPARE(renewed.count(), 0);
        QCOMPARE(controller.page(), first.data());

        writeFile(m_dir.filePath("config.js"), configScript(42));
        QVERIFY(m_preview->rebuild());
        QCOMPARE(renewed.count(), 1);
        QVERIFY(first.isNull()); // the old page is gone, its loads with it
        PreviewPage *page = controller.page();
        QCOMPARE(renewed.at(0).at(0).value<PreviewPage *>(), page);
        QCOMPARE(m_preview->view->page(), page);
        QCOMPARE(page->profile(), controller.profile());
        QVERIFY(
            page->settings()->testAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls));
        QCOMPARE(page->scripts().find(QStringLiteral("img-preview-language")).size(), 1);
        QCOMPARE(page->scripts().find(QStringLiteral("img-written-links")).size(), 1);
        const QUrl index = QUrl::fromLocalFile(m_dir.filePath("index.html"));
        QCOMPARE(page->url(), index);
        QCOMPARE(m_preview->js("document.getElementById('value').textContent").toString(),
                 QStringLiteral("42"));
        QCOMPARE(m_preview->js("window.imgPreviewTexts.lang").toString(), QStringLiteral("de"));

        // The owner's answer still decides where the page's links go.
        QSignalSpy refused(page, &PreviewPage::navigationRefused);
        page->runJavaScript("location.href = 'https://example.invalid/renewed';");
        QVERIFY(refused.wait(10000));
        QCOMPARE(asked, 1);
        QCOMPARE(m_recorder->urls, QList<QUrl>{QUrl("https://example.invalid/renewed")});

        // The new page serves its own count of rebuilds.
        QVERIFY(m_preview->rebuild());
        QCOMPARE(renewed.count(), 1);
        QVERIFY(m_preview->rebuild());
        QCOMPARE(renewed.count(), 2);
    }

    void tickWithoutChangeDoesNothing()
    {
        QSignalSpy refreshed(m_preview->controller.get(), &PreviewController::refreshed);
        bool isChange = false;
        m_preview->controller->timerRepeat(isChange);
        QVERIFY(!isChange);
        QCOMPARE(refreshed.count(), 0);
        QVERIFY(!m_preview->controller->isNeedReload());
    }

    void editsWithinOneTickGiveOneRebuild_data()
    {
        QTest::addColumn<int>("edits");
        QTest::newRow("one edit, one rebuild") << 1;
        QTest::newRow("three edits within one tick, one rebuild") << 3;
        QTest::newRow("ten edits within one tick, one rebuild") << 10;
    }
    void editsWithinOneTickGiveOneRebuild()
    {
        QFETCH(int, edits);
        bool isChange = false;
        QTimer repeatTimer;
        repeatTimer.setInterval(330);
        connect(&repeatTimer, &QTimer::timeout, m_preview->controller.get(),
                [&] { m_preview->controller->timerRepeat(isChange); });
        QSignalSpy refreshed(m_preview->controller.get(), &PreviewController::refreshed);
        QSignalSpy forced(m_preview->controller.get(), &PreviewController::reloadForced);
        repeatTimer.start();
        // Right after a tick, so that every edit falls within the same one.
        QSignalSpy ticks(&repeatTimer, &QTimer::timeout);
        QVERIFY(ticks.wait(2000));
        for (int i = 0; i < edits; ++i) {
            writeFile(m_dir.filePath("config.js"), configScript(100 + i));
            isChange = true;
        }
        QVERIFY(waitFor([&] { return forced.count() == 1; }, 15000));
        QCOMPARE(forced.count(), 1);
        settle(3 * 330); // three more ticks without edits
        QCOMPARE(refreshed.count(), 1);
        QCOMPARE(forced.count(), 1);
        const QUrl index = QUrl::fromLocalFile(m_dir.filePath("index.html"));
        QCOMPARE(m_preview->finishedUrls, QList<QUrl>({index, index}));
        QCOMPARE(m_preview->js("document.getElementById('value').textContent").toString(),
                 QString::number(100 + edits - 1));
    }

    void editsInSeparateTicksGiveOneRebuildEach()
    {
        QSignalSpy refreshed(m_preview->controller.get(), &PreviewController::refreshed);
        for (int value : {7, 8}) {
            writeFile(m_dir.filePath("config.js"), configScript(value));
            QVERIFY(m_preview->rebuild());
            QCOMPARE(m_preview->js("document.getElementById('value').textContent").toString(),
                     QString::number(value));
        }
        QCOMPARE(refreshed.count(), 2);
    }

    void rebuildDoesNotShowTheOldScript()
    {
        writeFile(m_dir.filePath("config.js"), configScript(41));
        QVERIFY(m_preview->rebuild());
        QCOMPARE(m_preview->js("document.getElementById('value').textContent").toString(),
                 QStringLiteral("41"));
        writeFile(m_dir.filePath("config.js"), configScript(42));
        QVERIFY(m_preview->rebuild());
        QCOMPARE(m_preview->js("document.getElementById('value').textContent").toString(),
                 QStringLiteral("42"));
    }

    void mainPageIsLoadedOnALaterPass()
    {
        bool isChange = true;
        m_preview->controller->timerRepeat(isChange);
        // Nothing of the workspace page has been asked for yet inside the call.
        QVERIFY(m_preview->controller->isNeedReload());
        QVERIFY(m_preview->page()->requestedUrl() !=
                QUrl::fromLocalFile(m_dir.filePath("index.html")));
        QSignalSpy forced(m_preview->controller.get(), &PreviewController::reloadForced);
        QVERIFY(forced.wait(15000));
    }

    void emptyDocumentFinishingFirstTakesTheForcedReload()
    {
        QSignalSpy forced(m_preview->controller.get(), &PreviewController::reloadForced);
        m_preview->controller->refreshPreview();
        // Hold back the queued main-page load, so that the empty document is the one that
        // finishes while the reload is due.
        QCoreApplication::removePostedEvents(m_preview->controller.get(), QEvent::MetaCall);
        QVERIFY(waitFor(
            [&] { return m_preview->finishedUrls.contains(PreviewPage::emptyPageUrl()); }, 15000));
        QCOMPARE(forced.count(), 1);
        QVERIFY(!m_preview->controller->isNeedReload());
        // Its own finish, and any later one, finds the flag spent.
        settle(500);
        QCOMPARE(forced.count(), 1);
    }

    void missingPageIsLoadedQuietly()
    {
        QTemporaryDir empty;
        m_preview->controller->setWorkSpace(empty.path());
        bool isChange = true;
        m_preview->controller->timerRepeat(isChange);
        settle(1000);
        QVERIFY(!isChange);
        QCOMPARE(m_preview->page()->requestedUrl(),
                 QUrl::fromLocalFile(empty.filePath("index.html")));
    }

    void destructionDuringARebuildIsSafe()
    {
        bool isChange = true;
        m_preview->controller->timerRepeat(isChange);
        // The queued load must not reach the destroyed controller.
        m_preview->controller.reset();
        settle(300);
        m_preview.reset();
    }

    // ---- navigation

    void decisionOfThePage_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QUrl>("handedOn");
        QTest::addColumn<QString>("writtenScheme");
        QTest::addColumn<QUrl>("reportedUrl");

        const int link = QWebEnginePage::NavigationTypeLinkClicked;
        const int typed = QWebEnginePage::NavigationTypeTyped;
        QTest::newRow("empty request is left to the engine")
            << QUrl() << link << true << QUrl() << QString() << QUrl();
        QTest::newRow("file is used")
            << QUrl("file:///tmp/x.html") << link << true << QUrl() << QString() << QUrl();
        QTest::newRow("https is refused and handed on")
            << QUrl("https://example.invalid/") << link << false << QUrl("https://example.invalid/")
            << QString() << QUrl();
        QTest::newRow("http typed by a script is refused and handed on")
            << QUrl("http://example.invalid/") << typed << false << QUrl("http://example.invalid/")
            << QString() << QUrl();
        QTest::newRow("mailto is refused")
            << QUrl("mailto:a@example.invalid") << link << false << QUrl() << QString() << QUrl();
        QTest::newRow("ftp is refused")
            << QUrl("ftp://example.invalid/f") << link << false << QUrl() << QString() << QUrl();
        QTest::newRow("the rebuild's empty page, typed by the application, is used")
            << PreviewPage::emptyPageUrl() << typed << true << QUrl() << QString() << QUrl();
        QTest::newRow("the same empty page from a link is refused")
            << PreviewPage::emptyPageUrl() << link << false << QUrl() << QString() << QUrl();
        // The engine hands over every scheme in lower case; without the page's report of how
        // the link was written, that is the scheme decided on.
        QTest::newRow("unreported HTTP:// reaches the page as http and is handed on")
            << QUrl("HTTP://example.invalid/upper") << link << false
            << QUrl("http://example.invalid/upper") << QString() << QUrl();
        QTest::newRow("link reported as written HTTP:// is refused, not handed on")
            << QUrl("http://example.invalid/upper") << link << false << QUrl() << "HTTP"
            << QUrl("http://example.invalid/upper");
        QTest::newRow("link reported as written https is handed on")
            << QUrl("https://example.invalid/") << link << false << QUrl("https://example.invalid/")
            << "https" << QUrl("https://example.invalid/");
        QTest::newRow("link reported as written FILE:// is refused")
            << QUrl("file:///tmp/x.html") << link << false << QUrl() << "FILE"
            << QUrl("file:///tmp/x.html");
        QTest::newRow("a report about another link leaves the scheme as given")
            << QUrl("http://example.invalid/a") << link << false << QUrl("http://example.invalid/a")
            << "HTTP" << QUrl("http://example.invalid/b");
    }
    void decisionOfThePage()
    {
        QFETCH(QUrl, url);
        QFETCH(int, type);
        QFETCH(bool, accepted);
        QFETCH(QUrl, handedOn);
        QFETCH(QString, writtenScheme);
        QFETCH(QUrl, reportedUrl);
        struct OpenPage : PreviewPage
        {
            using PreviewPage::acceptNavigationRequest;
            using PreviewPage::javaScriptConsoleMessage;
            using PreviewPage::PreviewPage;
        };
        OpenPage page(m_preview->controller->profile());
        if (!writtenScheme.isEmpty())
            page.javaScriptConsoleMessage(QWebEnginePage::InfoMessageLevel,
                                          QStringLiteral("img-written-link [\"%1\",\"%2\"]")
                                              .arg(writtenScheme, reportedUrl.toString()),
                                          1, QString());
        QSignalSpy refused(&page, &PreviewPage::navigationRefused);
        QCOMPARE(page.acceptNavigationRequest(url, QWebEnginePage::NavigationType(type), true),
                 accepted);
        QCOMPARE(refused.count(), accepted ? 0 : 1);
        QCOMPARE(m_recorder->urls, handedOn.isEmpty() ? QList<QUrl>() : QList<QUrl>{handedOn});
    }

    void linkClick_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<QUrl>("handedOn");

        QTest::newRow("https opens in the browser, preview unchanged")
            << "https" << QUrl("https://example.invalid/page");
        QTest::newRow("http opens in the browser, preview unchanged")
            << "http" << QUrl("http://example.invalid/page");
        QTest::newRow("mailto does nothing") << "mailto" << QUrl();
        QTest::newRow("ftp does nothing") << "ftp" << QUrl();
        QTest::newRow("new window for http opens in the browser")
            << "blank-http" << QUrl("http://example.invalid/blank");
        QTest::newRow("link written HTTP:// is refused, not opened") << "upper-http" << QUrl();
        QTest::newRow("link written Https:// after a blank is refused, not opened")
            << "mixed-https" << QUrl();
        QTest::newRow("new window for a link written HTTP:// is refused, not opened")
            << "blank-upper-http" << QUrl();
    }
    void linkClick()
    {
        QFETCH(QString, link);
        QFETCH(QUrl, handedOn);
        const QUrl links = QUrl::fromLocalFile(m_dir.filePath("links.html"));
        QVERIFY(m_preview->load(links));
        QSignalSpy refused(m_preview->page(), &PreviewPage::navigationRefused);

        QVERIFY(m_preview->click(link));
        QVERIFY(refused.wait(10000));
        QCOMPARE(refused.count(), 1);
        QCOMPARE(refused.at(0).at(1).toBool(), !handedOn.isEmpty());
        settle(200);

        QCOMPARE(m_recorder->urls, handedOn.isEmpty() ? QList<QUrl>() : QList<QUrl>{handedOn});
        QCOMPARE(m_preview->page()->url(), links);
        QCOMPARE(m_preview->js("window.marker").toString(), QStringLiteral("first"));
    }

    void fileLinkIsFollowedInside()
    {
        const QUrl links = QUrl::fromLocalFile(m_dir.filePath("links.html"));
        const QUrl second = QUrl::fromLocalFile(m_dir.filePath("second.html"));
        QVERIFY(m_preview->load(links));
        QSignalSpy refused(m_preview->page(), &PreviewPage::navigationRefused);
        QVERIFY(m_preview->click("file"));
        QVERIFY(waitFor([&] { return m_preview->finishedUrls.last() == second; }, 10000));
        QCOMPARE(m_preview->finishedUrls.last(), second);
        QCOMPARE(m_preview->js("window.marker").toString(), QStringLiteral("second"));
        QCOMPARE(refused.count(), 0);
        QCOMPARE(m_recorder->urls, QList<QUrl>());
    }

    void pagesOwnNavigationToAFileIsFollowed()
    {
        const QUrl links = QUrl::fromLocalFile(m_dir.filePath("links.html"));
        const QUrl second = QUrl::fromLocalFile(m_dir.filePath("second.html"));
        QVERIFY(m_preview->load(links));
        m_preview->page()->runJavaScript("location.href = 'second.html';");
        QVERIFY(waitFor([&] { return m_preview->finishedUrls.last() == second; }, 10000));
        QCOMPARE(m_preview->finishedUrls.last(), second);
        QCOMPARE(m_recorder->urls, QList<QUrl>());
    }

    void pagesOwnNavigationToTheWebLeavesThePreview()
    {
        const QUrl links = QUrl::fromLocalFile(m_dir.filePath("links.html"));
        QVERIFY(m_preview->load(links));
        QSignalSpy refused(m_preview->page(), &PreviewPage::navigationRefused);
        m_preview->page()->runJavaScript("location.href = 'https://example.invalid/script';");
        QVERIFY(refused.wait(10000));
        QCOMPARE(m_recorder->urls, QList<QUrl>{QUrl("https://example.invalid/script")});
        QCOMPARE(m_preview->js("window.marker").toString(), QStringLiteral("first"));
    }

    void scriptOpeningAWindowForHttpEndsInTheBrowser()
    {
        const QUrl links = QUrl::fromLocalFile(m_dir.filePath("links.html"));
        QVERIFY(m_preview->load(links));
        m_preview->page()->runJavaScript("window.open('http://example.invalid/popup');");
        QVERIFY(waitFor(
            [&] { return m_recorder->urls == QList<QUrl>{QUrl("http://example.invalid/popup")}; },
            10000));
        QCOMPARE(m_recorder->urls, QList<QUrl>{QUrl("http://example.invalid/popup")});
        QCOMPARE(m_preview->page()->url(), links);
        QCOMPARE(m_preview->js("window.marker").toString(), QStringLiteral("first"));
    }

    void newWindowForAFileStaysHidden()
    {
        const QUrl links = QUrl::fromLocalFile(m_dir.filePath("links.html"));
        QVERIFY(m_preview->load(links));
        const int topLevels = QApplication::topLevelWidgets().size();
        QVERIFY(m_preview->click("blank-file"));
        settle(500);
        QCOMPARE(QApplication::topLevelWidgets().size(), topLevels);
        QCOMPARE(m_preview->page()->url(), links);
        QCOMPARE(m_recorder->urls, QList<QUrl>());
    }

    void viewThatIgnoresOpenURLFollowsWebLinksItself()
    {
        m_preview->controller->setIgnoreOpenURL([] { return true; });
        const QUrl links = QUrl::fromLocalFile(m_dir.filePath("links.html"));
        QVERIFY(m_preview->load(links));
        QVERIFY(m_preview->click("https"));
        // Followed inside: the request is made (and stopped here by the test's interceptor).
        QVERIFY(waitFor(
            [&] {
                return m_preview->interceptor.blocked ==
                       QList<QUrl>{QUrl("https://example.invalid/page")};
            },
            10000));
        QCOMPARE(m_preview->interceptor.blocked, QList<QUrl>{QUrl("https://example.invalid/page")});
        QCOMPARE(m_recorder->urls, QList<QUrl>());
        m_preview->interceptor.blocked.clear();
    }

    void viewThatDoesNotIgnoreOpenURLIsAsked()
    {
        int asked = 0;
        m_preview->controller->setIgnoreOpenURL([&] {
            ++asked;
            return false;
        });
        const QUrl links = QUrl::fromLocalFile(m_dir.filePath("links.html"));
        QVERIFY(m_preview->load(links));
        QCOMPARE(asked, 0); // file URLs need no answer
        QVERIFY(m_preview->click("https"));
        QVERIFY(waitFor([&] { return m_recorder->urls.size() == 1; }, 10000));
        QCOMPARE(m_recorder->urls.size(), 1);
        QCOMPARE(asked, 1);
    }

    void exceptionWhileDecidingIsLoggedAndRefused()
    {
        m_preview->controller->setIgnoreOpenURL([]() -> bool { throw std::runtime_error("boom"); });
        const QUrl links = QUrl::fromLocalFile(m_dir.filePath("links.html"));
        QVERIFY(m_preview->load(links));
        QTest::ignoreMessage(QtWarningMsg, "Web action exception: boom");
        QVERIFY(m_preview->click("https"));
        settle(1000);
        QCOMPARE(m_recorder->urls, QList<QUrl>());
        QCOMPARE(m_preview->page()->url(), links);
        QCOMPARE(m_preview->js("window.marker").toString(), QStringLiteral("first"));
    }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<PreviewWindow> m_preview;
    std::unique_ptr<UrlRecorder> m_recorder;
};

QTEST_MAIN(TestPreview)
#include "tst_preview.moc"
