// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The live preview inside the real settings window: field edits reach the page, edits within one
// tick cost one rebuild, and the window's preview keeps to the navigation policy.

#include "localisation.h"
#include "pluginsettingsdelegate.h"
#include "previewtesting.h"
#include "testenv.h"

#include <QDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

using namespace PreviewTesting;

class TestPreviewWindow : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { TestEnv::isolate(); }

    void init()
    {
        m_workspace = std::make_unique<QTemporaryDir>();
        QVERIFY(m_workspace->isValid());
        m_recorder = std::make_unique<UrlRecorder>();
        m_delegate =
            PluginSettingsDelegate::create(QStringLiteral("en"), QStringLiteral(IMG_BUNDLE_DIR));
        QVERIFY(m_delegate);
        m_delegate->setWorkSpace(m_workspace->filePath(QStringLiteral("img")));
        m_window = m_delegate->window();
        QVERIFY(m_window);
        m_preview = m_delegate->previewController();
        QVERIFY(m_preview);
        m_preview->profile()->setUrlRequestInterceptor(&m_interceptor);
        m_window->show();
        // The window opens with a rebuild due: its first tick shows the page.
        QVERIFY(waitForRebuild());
        QCOMPARE(state().value("status").toString(), QStringLiteral("placeholder"));
    }
    void cleanup()
    {
        m_delegate.reset();
        QCOMPARE(m_interceptor.blocked, QList<QUrl>());
        m_recorder.reset();
        m_workspace.reset();
    }

    void fieldEditShowsTheNewPositionAndOpacity()
    {
        type("txtLeft", "25");
        type("txtTop", "12.5");
        type("txtTransparency", "40");
        QVERIFY(waitForRebuild());
        const QVariantMap shown = state();
        QCOMPARE(shown.value("left").toString(), QStringLiteral("25%"));
        QCOMPARE(shown.value("top").toString(), QStringLiteral("12.5%"));
        QCOMPARE(shown.value("opacity").toDouble(), 0.6);
        QCOMPARE(shown.value("box").toMap().value("left").toDouble(), 25.0);
    }

    void editsWithinOneTickGiveOneRebuild()
    {
        QSignalSpy refreshed(m_preview, &PreviewController::refreshed);
        // Three keystrokes, each an edit that saves, with no tick in between.
        type("txtLeft", "123");
        QCOMPARE(field("txtLeft")->text(), QStringLiteral("123"));
        QVERIFY(m_delegate->isChanged());
        QVERIFY(waitForRebuild());
        settle(3 * 330);
        QCOMPARE(refreshed.count(), 1);
        QCOMPARE(state().value("left").toString(), QStringLiteral("123%"));
    }

    void editsInSeparateTicksGiveOneRebuildEach()
    {
        QSignalSpy refreshed(m_preview, &PreviewController::refreshed);
        type("txtLeft", "20");
        QVERIFY(waitForRebuild());
        type("txtLeft", "30");
        QVERIFY(waitForRebuild());
        settle(2 * 330);
        QCOMPARE(refreshed.count(), 2);
        QCOMPARE(state().value("left").toString(), QStringLiteral("30%"));
    }

    void windowReportsEachRebuildOnceItsReloadHasFinished()
    {
        QSignalSpy loaded(m_delegate.get(), &PluginSettingsDelegate::previewLoaded);
        QSignalSpy forced(m_preview, &PreviewController::reloadForced);
        type("txtLeft", "20");
        QVERIFY(loaded.wait(10000));
        QCOMPARE(forced.count(), 1);
        QCOMPARE(state().value("left").toString(), QStringLiteral("20%"));
        settle(3 * 330); // ticks without edits report nothing
        QCOMPARE(loaded.count(), 1);
    }

    void webLinkOfThePreviewGoesToTheBrowser()
    {
        QSignalSpy refused(m_preview->page(), &PreviewPage::navigationRefused);
        const QUrl page = m_preview->page()->url();
        m_preview->page()->runJavaScript(
            QStringLiteral("location.href = 'https://example.invalid/from-window';"));
        QVERIFY(refused.wait(10000));
        QCOMPARE(m_recorder->urls, QList<QUrl>{QUrl("https://example.invalid/from-window")});
        QCOMPARE(m_preview->page()->url(), page);
    }

    void closingDuringARebuildIsSafe()
    {
        type("txtLeft", "40");
        QVERIFY(waitFor([&] { return m_preview->isNeedReload(); }, 5000));
        m_delegate.reset();
        settle(300);
    }

    void previewSpeaksTheWindowsLanguage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("lang");
        QTest::addColumn<QString>("noImage");
        QTest::newRow("English") << "en"
                                 << "en"
                                 << "No image chosen";
        QTest::newRow("German") << "de"
                                << "de" << QString::fromUtf8("Kein Bild gewählt");
        QTest::newRow("French") << "fr"
                                << "fr"
                                << "Aucune image choisie";
        QTest::newRow("Japanese") << "ja"
                                  << "ja" << QString::fromUtf8("画像が選択されていません");
        QTest::newRow("Simplified Chinese") << "zh_CN"
                                            << "zh-CN" << QString::fromUtf8("未选择图像");
        QTest::newRow("a language the bundle lacks speaks English") << "sv"
                                                                    << "en"
                                                                    << "No image chosen";
    }
    void previewSpeaksTheWindowsLanguage()
    {
        QFETCH(QString, language);
        QFETCH(QString, lang);
        QFETCH(QString, noImage);
        m_delegate.reset();
        // One strings table per process, as in a host; each row is a new host here.
        resetAppStringTableForTesting();
        m_delegate = PluginSettingsDelegate::create(language, QStringLiteral(IMG_BUNDLE_DIR));
        QVERIFY(m_delegate);
        m_delegate->setWorkSpace(m_workspace->filePath(QStringLiteral("img-") + language));
        m_window = m_delegate->window();
        QVERIFY(m_window);
        m_preview = m_delegate->previewController();
        m_preview->profile()->setUrlRequestInterceptor(&m_interceptor);
        m_window->show();
        QVERIFY(waitForRebuild());
        const QVariantMap shown = state();
        QCOMPARE(shown.value("reason").toString(), QStringLiteral("none"));
        QCOMPARE(shown.value("text").toString(), noImage);
        QCOMPARE(js(QStringLiteral("document.documentElement.lang")).toString(), lang);
        resetAppStringTableForTesting();
    }

private:
    QVariant js(const QString &script)
    {
        QVariant result;
        bool done = false;
        m_preview->page()->runJavaScript(script, [&](const QVariant &v) {
            result = v;
            done = true;
        });
        waitFor([&] { return done; }, 5000);
        return result;
    }

    QLineEdit *field(const char *name) const
    {
        return m_window->findChild<QLineEdit *>(QLatin1String(name));
    }

    // Replaces the field's text keystroke by keystroke, as a user selecting it and typing.
    void type(const char *name, const QString &keys)
    {
        QLineEdit *f = field(name);
        QVERIFY2(f, name);
        f->setFocus();
        f->selectAll();
        QTest::keyClicks(f, keys);
    }

    // Waits for the next rebuild to finish: its forced reload issued and loaded.
    bool waitForRebuild()
    {
        QSignalSpy forced(m_preview, &PreviewController::reloadForced);
        if (!forced.wait(10000))
            return false;
        QSignalSpy finished(m_preview->page(), &QWebEnginePage::loadFinished);
        return finished.wait(10000) && finished.at(0).at(0).toBool();
    }

    QVariantMap state()
    {
        QVariantMap result;
        bool done = false;
        waitFor(
            [&] {
                done = false;
                m_preview->page()->runJavaScript(
                    QStringLiteral("window.previewState ? previewState() : null"),
                    [&](const QVariant &v) {
                        result = v.toMap();
                        done = true;
                    });
                waitFor([&] { return done; }, 5000);
                return result.value("status").toString() != QLatin1String("loading");
            },
            10000);
        return result;
    }

    std::unique_ptr<QTemporaryDir> m_workspace;
    std::unique_ptr<UrlRecorder> m_recorder;
    LocalOnly m_interceptor;
    std::unique_ptr<PluginSettingsDelegate> m_delegate;
    QDialog *m_window = nullptr;
    PreviewController *m_preview = nullptr;
};

QTEST_MAIN(TestPreviewWindow)
#include "tst_previewwindow.moc"
