// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The settings window in each language the bundle ships: its texts come from that language's
// window description, and no text is clipped or overlaps another, at the window's opening size and
// at its smallest size.

#include "imgpluginfactory.h"
#include "pluginhost.h"
#include "testenv.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class TestWindowLanguages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void textsAreTranslatedAndFit_data();
    void textsAreTranslatedAndFit();

private:
    PluginHost m_host;
};

namespace {

// The widgets that show text or take input, each with its rectangle in window coordinates.
QList<QPair<QWidget *, QRect>> leafWidgets(QWidget *window)
{
    QList<QPair<QWidget *, QRect>> out;
    const QList<QWidget *> all = window->findChildren<QWidget *>();
    for (QWidget *w : all) {
        if (!w->isVisibleTo(window))
            continue;
        // What shows of it: the settings column scrolls, and a control scrolled out of view
        // overlaps nothing.
        const QRect shown = w->visibleRegion().boundingRect();
        if (shown.isEmpty())
            continue;
        if (qobject_cast<QLabel *>(w) || qobject_cast<QAbstractButton *>(w) ||
            qobject_cast<QLineEdit *>(w) || qobject_cast<QSlider *>(w))
            out.append({w, QRect(w->mapTo(window, shown.topLeft()), shown.size())});
    }
    return out;
}

QString describe(const QWidget *w)
{
    return QStringLiteral("%1 \"%2\"")
        .arg(w->objectName(), qobject_cast<const QAbstractButton *>(w)
                                  ? static_cast<const QAbstractButton *>(w)->text()
                              : qobject_cast<const QLabel *>(w)
                                  ? static_cast<const QLabel *>(w)->text()
                                  : QString());
}

// Every text-bearing widget at least as large as its smallest useful size, and no two of them
// overlapping.
void checkFits(QWidget *window, const QString &when)
{
    const QList<QWidget *> all = window->findChildren<QWidget *>();
    for (QWidget *w : all) {
        if (!w->isVisibleTo(window))
            continue;
        if (!qobject_cast<QLabel *>(w) && !qobject_cast<QAbstractButton *>(w) &&
            !qobject_cast<QGroupBox *>(w))
            continue;
        const QSize need = w->minimumSizeHint();
        QVERIFY2(w->width() >= need.width() && w->height() >= need.height(),
                 qPrintable(QStringLiteral("%1: %2 is %3x%4, needs %5x%6")
                                .arg(when, describe(w))
                                .arg(w->width())
                                .arg(w->height())
                                .arg(need.width())
                                .arg(need.height())));
    }
    const auto leaves = leafWidgets(window);
    for (int i = 0; i < leaves.size(); ++i) {
        for (int j = i + 1; j < leaves.size(); ++j) {
            if (leaves[i].first->isAncestorOf(leaves[j].first) ||
                leaves[j].first->isAncestorOf(leaves[i].first))
                continue;
            QVERIFY2(
                !leaves[i].second.intersects(leaves[j].second),
                qPrintable(QStringLiteral("%1: %2 overlaps %3")
                               .arg(when, describe(leaves[i].first), describe(leaves[j].first))));
        }
    }
}

// The canvas has the preview page's proportions, 3 : 4, to the pixel, so that the box has the
// same shape on it as the image on the preview's page.
void checkPageProportions(QWidget *window)
{
    QWidget *canvas = window->findChild<QWidget *>(QStringLiteral("positionView"));
    QVERIFY(canvas);
    QVERIFY(canvas->width() >= 150);
    QVERIFY2(
        qAbs(canvas->width() * 4 - canvas->height() * 3) <= 4,
        qPrintable(QStringLiteral("canvas is %1x%2").arg(canvas->width()).arg(canvas->height())));
}

} // namespace

void TestWindowLanguages::initTestCase()
{
    TestEnv::isolate();
    QVERIFY2(m_host.load(QStringLiteral(IMG_BUNDLE_DIR)), qPrintable(m_host.errorString()));
}

void TestWindowLanguages::textsAreTranslatedAndFit_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("cancel");
    QTest::addColumn<QString>("position");
    QTest::addColumn<QString>("above");
    QTest::newRow("English") << "en"
                             << "Cancel"
                             << "&Position on the page"
                             << "Abo&ve the page content";
    QTest::newRow("German") << "de"
                            << "Abbrechen"
                            << "&Position auf der Seite"
                            << QString::fromUtf8("Über dem Seiten&inhalt");
    QTest::newRow("French") << "fr"
                            << "Annuler"
                            << "&Position sur la page"
                            << QString::fromUtf8("A&u-dessus du contenu de la page");
    QTest::newRow("Japanese") << "ja" << QString::fromUtf8("キャンセル")
                              << QString::fromUtf8("ページ上の位置(&P)")
                              << QString::fromUtf8("ページの内容の前面(&V)");
    QTest::newRow("Simplified Chinese")
        << "zh_CN" << QString::fromUtf8("取消") << QString::fromUtf8("页面上的位置(&P)")
        << QString::fromUtf8("位于页面内容之上(&V)");
    QTest::newRow("a language the bundle lacks falls back to English") << "sv"
                                                                       << "Cancel"
                                                                       << "&Position on the page"
                                                                       << "Abo&ve the page content";
}

void TestWindowLanguages::textsAreTranslatedAndFit()
{
    QFETCH(QString, language);
    QFETCH(QString, cancel);
    QFETCH(QString, position);
    QFETCH(QString, above);
    QTemporaryDir tmp;
    std::unique_ptr<ImgSettingsController> settings(
        m_host.factory()->createSettingsDelegate(language, QStringLiteral(IMG_BUNDLE_DIR)));
    QVERIFY(settings);
    settings->setModalMode(false);
    settings->setWorkSpace(tmp.filePath("ws"));
    QDialog *window = settings->window();
    QVERIFY(window);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));

    QCOMPARE(window->findChild<QAbstractButton *>("btnCancel")->text(), cancel);
    // The strings table of the first language a process looks up is kept for the process: the
    // English row runs first, so every later window keeps the English title.
    QCOMPARE(window->windowTitle(), QStringLiteral("Plugin Settings - Image Plugin"));
    QCOMPARE(window->findChild<QGroupBox *>("grpPosition")->title(), position);
    QCOMPARE(window->findChild<QAbstractButton *>("radLayerAbove")->text(), above);

    checkFits(window, QStringLiteral("opening size"));
    checkPageProportions(window);
    window->grab().save(QStringLiteral(IMG_BINARY_DIR "/settings-window-%1.png").arg(language));
    window->resize(window->minimumSizeHint());
    QTest::qWait(50);
    checkFits(window, QStringLiteral("smallest size"));
    checkPageProportions(window);

    window->findChild<QAbstractButton *>("btnCancel")->click();
    QCOMPARE(settings->closeMode(), 0);
}

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestWindowLanguages suite;
    return QTest::qExec(&suite, argc, argv);
}

#include "tst_windowlanguages.moc"
