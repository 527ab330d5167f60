// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "previewtesting.h"
#include "testenv.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

using namespace PreviewTesting;

struct Placement
{
    QString left, top, width, height;
    double opacity;
    int layer;
    QString src;
};
Q_DECLARE_METATYPE(Placement)

namespace {

const QString bundleHtml = QStringLiteral(IMG_BUNDLE_DIR "/Contents/Resources/html");

// "config.js" as the settings store writes it: a byte-order mark, then one line of script.
QByteArray configScript(const Placement &p, bool withBom = true)
{
    const QString json = QStringLiteral("{\"opacity\":%1,\"layout\":%2,\"properties\":{\"basic\":{"
                                        "\"left\":\"%3\",\"top\":\"%4\",\"width\":\"%5\","
                                        "\"height\":\"%6\"},\"extended\":{\"src\":\"%7\"}}}")
                             .arg(QString::number(p.opacity, 'f', 6))
                             .arg(p.layer)
                             .arg(p.left, p.top, p.width, p.height, p.src);
    return (withBom ? QByteArray("\xEF\xBB\xBF") : QByteArray()) +
           QStringLiteral("var config=%1;").arg(json).toUtf8();
}

double percent(const QString &text)
{
    return QString(text).remove(QLatin1Char('%')).toDouble();
}

} // namespace

class TestPreviewPage : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY2(QFile::exists(bundleHtml + QStringLiteral("/index.html")),
                 "the bundle has no preview page");
        QVERIFY2(QFile::exists(bundleHtml + QStringLiteral("/imgplugin.js")),
                 "the bundle has no copy of the book's loader beside the preview page");
    }

    void init()
    {
        m_workspace = std::make_unique<QTemporaryDir>();
        QVERIFY(m_workspace->isValid());
        const QDir html(bundleHtml);
        for (const QString &name : html.entryList(QDir::Files))
            QVERIFY(QFile::copy(html.filePath(name), m_workspace->filePath(name)));
        QVERIFY(QDir(m_workspace->path()).mkpath(QStringLiteral("files/plugin")));
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(QColor(40, 120, 200));
        QVERIFY(picture.save(m_workspace->filePath(QStringLiteral("files/plugin/picture.png"))));
        QVERIFY(
            picture.save(m_workspace->filePath(QStringLiteral("files/plugin/mon image é.png"))));
        // Legal file names that are URL syntax when taken as they are.
        for (const char *name : {"photo #1.png", "what?.png", "a%20b.png", "a:b.png"})
            QVERIFY(picture.save(
                m_workspace->filePath(QStringLiteral("files/plugin/") + QString::fromUtf8(name))));

        m_preview = std::make_unique<PreviewWindow>();
        m_preview->controller->setWorkSpace(m_workspace->path());
    }
    void cleanup()
    {
        m_preview.reset();
        m_workspace.reset();
    }

    void showsTheConfiguredImage_data()
    {
        QTest::addColumn<Placement>("placement");
        QTest::newRow("workspace file at its margins")
            << Placement{"10.0%", "26.0%", "30.0%", "48.0%", 1.0, 1, "files/plugin/picture.png"};
        QTest::newRow("half transparent on layer 3")
            << Placement{"5.0%", "5.0%", "90.0%", "40.0%", 0.5, 3, "files/plugin/picture.png"};
        QTest::newRow("fully transparent on layer 0")
            << Placement{"0.0%", "0.0%", "100.0%", "100.0%", 0.0, 0, "files/plugin/picture.png"};
        QTest::newRow("file name with a space and non-ASCII") << Placement{
            "20.0%", "30.0%", "25.5%", "12.5%", 0.75, 2, "files/plugin/mon image é.png"};
        for (const char *name : {"photo #1.png", "what?.png", "a%20b.png", "a:b.png"})
            QTest::addRow("file name %s", name)
                << Placement{"20.0%",
                             "30.0%",
                             "25.5%",
                             "12.5%",
                             1.0,
                             1,
                             QStringLiteral("files/plugin/") + QString::fromUtf8(name)};
    }

    void marginsWithoutRoomShowNoImage_data()
    {
        QTest::addColumn<Placement>("placement");
        QTest::newRow("left and right over 100: no width")
            << Placement{"60.0%", "10.0%", "-20.0%", "80.0%", 1.0, 1, "files/plugin/picture.png"};
        QTest::newRow("top and bottom over 100: no height")
            << Placement{"10.0%", "60.0%", "80.0%", "-20.0%", 1.0, 1, "files/plugin/picture.png"};
    }
    void marginsWithoutRoomShowNoImage()
    {
        QFETCH(Placement, placement);
        writeFile(m_workspace->filePath("config.js"), configScript(placement));
        const QVariantMap state = rebuildAndRead();
        QCOMPARE(state.value("status").toString(), QStringLiteral("noroom"));
        // Nothing on the page: no image at its own size, no placeholder.
        QCOMPARE(js("getComputedStyle(document.querySelector('#page img')).display").toString(),
                 QStringLiteral("none"));
        QCOMPARE(js("document.getElementById('placeholder').hidden"), QVariant(true));
    }
    void showsTheConfiguredImage()
    {
        QFETCH(Placement, placement);
        writeFile(m_workspace->filePath("config.js"), configScript(placement));
        const QVariantMap state = rebuildAndRead();
        QCOMPARE(state.value("status").toString(), QStringLiteral("image"));
        verifyPlacement(state, placement);
    }

    void placeholderWhenThereIsNoImage_data()
    {
        QTest::addColumn<QString>("src");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QUrl>("requested");

        QTest::newRow("no image chosen") << ""
                                         << "none"
                                         << "No image chosen" << QUrl();
        QTest::newRow("blank image name counts as none") << "   "
                                                         << "none"
                                                         << "No image chosen" << QUrl();
        QTest::newRow("workspace file gone") << "files/plugin/gone.png"
                                             << "broken"
                                             << "The image cannot be loaded" << QUrl();
        QTest::newRow("file that is not an image") << "config.js"
                                                   << "broken"
                                                   << "The image cannot be loaded" << QUrl();
        // The link is requested and, in this test, stopped before it leaves the machine.
        QTest::newRow("link that cannot be loaded")
            << "https://example.invalid/picture.png"
            << "broken"
            << "The image cannot be loaded" << QUrl("https://example.invalid/picture.png");
    }
    void placeholderWhenThereIsNoImage()
    {
        QFETCH(QString, src);
        QFETCH(QString, reason);
        QFETCH(QString, text);
        QFETCH(QUrl, requested);
        const Placement placement{"15.0%", "20.0%", "50.0%", "30.0%", 0.8, 2, src};
        writeFile(m_workspace->filePath("config.js"), configScript(placement));
        const QVariantMap state = rebuildAndRead();
        QCOMPARE(state.value("status").toString(), QStringLiteral("placeholder"));
        QCOMPARE(state.value("reason").toString(), reason);
        QCOMPARE(state.value("text").toString(), text);
        // The placeholder stands where the image would, on its layer.
        verifyPlacement(state, placement);
        QCOMPARE(js("getComputedStyle(document.getElementById('placeholder')).display"),
                 QVariant(QStringLiteral("flex")));
        QCOMPARE(js("getComputedStyle(document.getElementById('placeholder')).zIndex"),
                 QVariant(QStringLiteral("2")));
        QCOMPARE(js("getComputedStyle(document.querySelector('#page img')).visibility"),
                 QVariant(QStringLiteral("hidden")));
        // Only a link is requested from outside (once per load of the page).
        const QList<QUrl> &blocked = m_preview->interceptor.blocked;
        QCOMPARE(blocked.isEmpty(), requested.isEmpty());
        for (const QUrl &url : blocked)
            QCOMPARE(url, requested);
    }

    void placeholderWithoutSettings_data()
    {
        QTest::addColumn<QByteArray>("config");
        QTest::addColumn<bool>("exists");
        QTest::newRow("no config.js yet") << QByteArray() << false;
        QTest::newRow("empty config.js") << QByteArray() << true;
        QTest::newRow("only the byte-order mark") << QByteArray("\xEF\xBB\xBF") << true;
        QTest::newRow("a number setting left empty breaks the script")
            << QByteArray("\xEF\xBB\xBFvar config={\"opacity\":,\"layout\":1};") << true;
        QTest::newRow("binary garbage") << QByteArray("\x00\xff\xfe\x01var", 8) << true;
    }
    void placeholderWithoutSettings()
    {
        QFETCH(QByteArray, config);
        QFETCH(bool, exists);
        QFile::remove(m_workspace->filePath("config.js"));
        if (exists)
            writeFile(m_workspace->filePath("config.js"), config);
        const QVariantMap state = rebuildAndRead();
        QCOMPARE(state.value("status").toString(), QStringLiteral("placeholder"));
        QCOMPARE(state.value("reason").toString(), QStringLiteral("nosettings"));
        QCOMPARE(state.value("text").toString(), QStringLiteral("No settings to preview yet"));
        QCOMPARE(js("document.getElementById('placeholder').hidden"), QVariant(false));
    }

    void configWithoutByteOrderMarkReadsTheSame()
    {
        const Placement placement{
            "12.0%", "14.0%", "40.0%", "30.0%", 0.6, 1, "files/plugin/picture.png"};
        writeFile(m_workspace->filePath("config.js"), configScript(placement, false));
        const QVariantMap state = rebuildAndRead();
        QCOMPARE(state.value("status").toString(), QStringLiteral("image"));
        verifyPlacement(state, placement);
    }

    void editShowsTheNewPositionAndOpacity()
    {
        const Placement before{
            "10.0%", "26.0%", "30.0%", "48.0%", 1.0, 1, "files/plugin/picture.png"};
        const Placement after{
            "35.0%", "12.0%", "40.0%", "20.0%", 0.25, 2, "files/plugin/picture.png"};
        writeFile(m_workspace->filePath("config.js"), configScript(before));
        verifyPlacement(rebuildAndRead(), before);
        writeFile(m_workspace->filePath("config.js"), configScript(after));
        const QVariantMap state = rebuildAndRead();
        QCOMPARE(state.value("status").toString(), QStringLiteral("image"));
        verifyPlacement(state, after);
    }

    void choosingAnImageReplacesThePlaceholder()
    {
        Placement placement{"10.0%", "10.0%", "50.0%", "50.0%", 1.0, 1, ""};
        writeFile(m_workspace->filePath("config.js"), configScript(placement));
        QCOMPARE(rebuildAndRead().value("status").toString(), QStringLiteral("placeholder"));
        placement.src = QStringLiteral("files/plugin/picture.png");
        writeFile(m_workspace->filePath("config.js"), configScript(placement));
        QCOMPARE(rebuildAndRead().value("status").toString(), QStringLiteral("image"));
        QCOMPARE(js("document.getElementById('placeholder').hidden"), QVariant(true));
    }

    void layerPutsTheImageBelowOrAboveThePageText_data()
    {
        QTest::addColumn<int>("layer");
        QTest::addColumn<QString>("onTop");
        QTest::newRow("layer 0 lies below the page's text") << 0 << "SPAN";
        QTest::newRow("layer 1 lies above the page's text") << 1 << "IMG";
        QTest::newRow("layer 3 lies above the page's text") << 3 << "IMG";
        QTest::newRow("layer -1 lies below the text, still on the paper") << -1 << "SPAN";
    }
    void layerPutsTheImageBelowOrAboveThePageText()
    {
        QFETCH(int, layer);
        QFETCH(QString, onTop);
        writeFile(m_workspace->filePath("config.js"),
                  configScript({"0.0%", "0.0%", "100.0%", "100.0%", 1.0, layer,
                                "files/plugin/picture.png"}));
        QCOMPARE(rebuildAndRead().value("status").toString(), QStringLiteral("image"));
        // What lies on top where a line of the page's text crosses the image. The image takes no
        // pointer input, so hit testing passes it by: it is asked to take it for the look.
        QCOMPARE(
            js("getComputedStyle(document.querySelector('#page img')).pointerEvents").toString(),
            QStringLiteral("none"));
        const QString script = QStringLiteral(
            "(function(){var i=document.querySelector('#page img');i.style.pointerEvents='auto';"
            "var r=document.querySelector('.line').getBoundingClientRect();"
            "var e=document.elementFromPoint(r.left+r.width/2,r.top+r.height/2);"
            "i.style.pointerEvents='none';return e?e.tagName:'';})()");
        QCOMPARE(js(script).toString(), onTop);
        // Below the text is not below the paper: the image still covers the page's middle.
        const QString underPoint = QStringLiteral(
            "(function(){var i=document.querySelector('#page img');i.style.pointerEvents='auto';"
            "var p=document.getElementById('page').getBoundingClientRect();"
            "var e=document.elementsFromPoint(p.left+p.width/2,p.top+p.height*0.9);"
            "i.style.pointerEvents='none';"
            "return e.map(function(x){return x.tagName+'#'+x.id;}).join(' ');})()");
        const QString stack = js(underPoint).toString();
        QVERIFY2(stack.startsWith(QLatin1String("IMG")), qPrintable(stack));
    }

    void pageLooksLikeABookPage()
    {
        writeFile(m_workspace->filePath("config.js"),
                  configScript({"10.0%", "10.0%", "10.0%", "10.0%", 1.0, 1, ""}));
        rebuildAndRead();
        const QVariantList geometry =
            js("(function(){var p=document.getElementById('page').getBoundingClientRect();"
               "return [p.left,p.top,p.width,p.height,innerWidth,innerHeight,"
               "getComputedStyle(document.getElementById('page')).borderTopWidth,"
               "getComputedStyle(document.body).backgroundColor,"
               "getComputedStyle(document.getElementById('page')).backgroundColor];})()")
                .toList();
        QCOMPARE(geometry.size(), 9);
        const double left = geometry.at(0).toDouble(), top = geometry.at(1).toDouble();
        const double width = geometry.at(2).toDouble(), height = geometry.at(3).toDouble();
        const double viewWidth = geometry.at(4).toDouble(), viewHeight = geometry.at(5).toDouble();
        // A 3 : 4 portrait page, centred, with room around it.
        QVERIFY2(qAbs(width / height - 0.75) < 0.01, qPrintable(QString::number(width / height)));
        QVERIFY(left > 0 && top > 0 && left + width < viewWidth && top + height < viewHeight);
        QVERIFY(qAbs(left - (viewWidth - left - width)) < 12);
        QVERIFY(height > viewHeight * 0.8 || width > viewWidth * 0.8);
        // A visible edge, and paper that stands out from the desk.
        QCOMPARE(geometry.at(6).toString(), QStringLiteral("1px"));
        QVERIFY(geometry.at(7).toString() != geometry.at(8).toString());
    }

private:
    QVariant js(const QString &script) { return m_preview->js(script); }

    // Rebuilds as the settings window does and waits until the page says what it shows.
    QVariantMap rebuildAndRead()
    {
        if (!m_preview->rebuild())
            return {};
        QVariantMap state;
        const bool settled = waitFor(
            [&] {
                state = js("window.previewState ? previewState() : null").toMap();
                return state.value("status").toString() != QLatin1String("loading");
            },
            10000);
        return settled ? state : QVariantMap();
    }

    void verifyPlacement(const QVariantMap &state, const Placement &p)
    {
        // The loader's inline style, as the page reads it back (CSS may shorten "10.0%" to "10%").
        QCOMPARE(percent(state.value("left").toString()), percent(p.left));
        QCOMPARE(percent(state.value("top").toString()), percent(p.top));
        QCOMPARE(percent(state.value("width").toString()), percent(p.width));
        QCOMPARE(percent(state.value("height").toString()), percent(p.height));
        QCOMPARE(state.value("opacity").toDouble(), p.opacity);
        // Layer 0 and below lie beneath the page's content, in the page's own stacking context.
        QCOMPARE(state.value("zIndex").toInt(), p.layer <= 0 ? -1 : p.layer);
        // Measured on screen, in percent of the page, within a pixel or so.
        const QVariantMap box = state.value("box").toMap();
        QVERIFY2(qAbs(box.value("left").toDouble() - percent(p.left)) <= 0.6,
                 qPrintable(box.value("left").toString()));
        QVERIFY2(qAbs(box.value("top").toDouble() - percent(p.top)) <= 0.6,
                 qPrintable(box.value("top").toString()));
        QVERIFY2(qAbs(box.value("width").toDouble() - percent(p.width)) <= 0.6,
                 qPrintable(box.value("width").toString()));
        QVERIFY2(qAbs(box.value("height").toDouble() - percent(p.height)) <= 0.6,
                 qPrintable(box.value("height").toString()));
    }

    std::unique_ptr<QTemporaryDir> m_workspace;
    std::unique_ptr<PreviewWindow> m_preview;
};

QTEST_MAIN(TestPreviewPage)
#include "tst_previewpage.moc"
