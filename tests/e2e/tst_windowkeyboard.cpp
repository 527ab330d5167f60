// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The settings window worked from the keyboard alone and heard through assistive technology: the
// tab chain, the canvas's arrow keys saved byte for byte, the mnemonics, and a name and a
// description in the window's language for every control. (The canvas's spoken value in each
// language is checked where the strings table can be reset, in the window controller's suite.)

#include "imgpluginfactory.h"
#include "pluginhost.h"
#include "testenv.h"
#include "treesnapshot.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStyle>
#include <QTemporaryDir>
#include <QWebEngineView>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>

#include <cmath>
#include <memory>

using TreeSnapshot::readFile;
using TreeSnapshot::writeFile;

namespace {

struct Window
{
    std::unique_ptr<ImgSettingsController> controller;
    QDialog *dialog = nullptr;

    QWidget *widget(const QString &name) const
    {
        return dialog ? dialog->findChild<QWidget *>(name) : nullptr;
    }
    QString focusName() const
    {
        QWidget *focus = QApplication::focusWidget();
        return focus ? focus->objectName() : QStringLiteral("<none>");
    }
    // A key as the user types it: to whatever has the focus.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QWidget *focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : dialog, key, modifiers);
    }
    void cancel() const
    {
        if (auto *button = dialog->findChild<QAbstractButton *>("btnCancel"))
            button->click();
    }
};

// The controls a keyboard user works: visible and reached by Tab.
QList<QWidget *> controls(QWidget *window)
{
    QList<QWidget *> out;
    for (QWidget *w : window->findChildren<QWidget *>()) {
        if (w->isVisibleTo(window) && (w->focusPolicy() & Qt::TabFocus) && !w->focusProxy())
            out << w;
    }
    return out;
}

// What a screen reader hears as a widget's name and description.
QString accessibleText(QWidget *w, QAccessible::Text text)
{
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(w);
    return iface ? iface->text(text) : QString();
}

// The mnemonic letter of a text, lower-cased; empty when it has none ("&&" is a plain "&").
QString mnemonicOf(const QString &text)
{
    static const QRegularExpression mnemonic(QStringLiteral("(?<!&)&([^&\\s])"));
    const QRegularExpressionMatch m = mnemonic.match(QString(text).replace("&&", ""));
    return m.hasMatch() ? m.captured(1).toLower() : QString();
}

QString textOf(QWidget *w)
{
    if (auto *label = qobject_cast<QLabel *>(w))
        return label->text();
    if (auto *button = qobject_cast<QAbstractButton *>(w))
        return button->text();
    if (auto *group = qobject_cast<QGroupBox *>(w))
        return group->title();
    return QString();
}

const QStringList kLanguages{"en", "de", "fr", "ja", "zh_CN"};

QPalette paletteNamed(const QString &name)
{
    if (name == "light")
        return QApplication::style()->standardPalette();
    const bool high = name == "high-contrast";
    QPalette p;
    p.setColor(QPalette::Window, high ? Qt::black : QColor(0x2b, 0x2b, 0x2b));
    p.setColor(QPalette::WindowText, Qt::white);
    p.setColor(QPalette::Base, high ? Qt::black : QColor(0x1e, 0x1e, 0x1e));
    p.setColor(QPalette::AlternateBase, QColor(0x35, 0x35, 0x35));
    p.setColor(QPalette::Text, high ? Qt::white : QColor(0xe6, 0xe6, 0xe6));
    p.setColor(QPalette::Button, high ? Qt::black : QColor(0x3a, 0x3a, 0x3a));
    p.setColor(QPalette::ButtonText, Qt::white);
    p.setColor(QPalette::Highlight, high ? QColor(0xff, 0xff, 0x00) : QColor(0x3d, 0x8e, 0xe9));
    p.setColor(QPalette::HighlightedText, Qt::black);
    p.setColor(QPalette::PlaceholderText, QColor(0xa0, 0xa0, 0xa0));
    return p;
}

// The contrast ratio of two colours, as accessibility guidelines measure it (1 to 21).
double contrast(const QColor &a, const QColor &b)
{
    const auto luminance = [](const QColor &c) {
        const auto channel = [](double v) {
            return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) +
               0.0722 * channel(c.blueF());
    };
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

} // namespace

class TestWindowKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY2(m_host.load(QStringLiteral(IMG_BUNDLE_DIR)), qPrintable(m_host.errorString()));
    }

    void tabChainRunsInReadingOrder()
    {
        QTemporaryDir tmp;
        Window w = open(tmp.filePath("ws"));
        QVERIFY(w.dialog);
        w.widget("positionView")->setFocus();
        QStringList chain{w.focusName()};
        for (int i = 0; i < 30; ++i) {
            w.key(Qt::Key_Tab);
            if (w.focusName() == chain.first())
                break;
            chain << w.focusName();
        }
        // Of each group of choices Tab stops at one button; the fields that
        // cannot be typed in (the file's name, the link while the file is chosen) take no stop.
        const QStringList withChoice = chain;
        QVERIFY2(chain.contains("rdoFile") != chain.contains("rdoLink"), qPrintable(chain.join(' ')));
        QVERIFY(!chain.contains("txtLink"));
        QVERIFY(!chain.contains("txtFile"));
        const int choice = std::max(chain.indexOf("rdoFile"), chain.indexOf("rdoLink"));
        QCOMPARE(chain.at(choice - 1), QStringLiteral("radLayerAbove"));
        chain.removeAt(choice);
        const QStringList expected{"positionView", "txtLeft",  "txtTop",          "txtRight",
                                   "txtBottom",    "sldTrans", "txtTransparency", "radLayerAbove",
                                   "btnBrowse",    "btnSave",  "btnDefault",      "btnOK",
                                   "btnCancel"};
        QCOMPARE(chain, expected);
        QVERIFY(!withChoice.contains("radLayerBelow"));
        // Backtab runs the same chain backwards.
        w.key(Qt::Key_Backtab);
        QCOMPARE(w.focusName(), QStringLiteral("btnCancel"));
        w.cancel();
    }

    void arrowKeysOnTheCanvasAreSavedByteForByte_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QString>("left");
        QTest::newRow("right arrow moves the image 1 % right")
            << int(Qt::Key_Right) << int(Qt::NoModifier)
            << QByteArray("11.0\n26.0\n59.0\n26.0\n0.0\n1") << "11.0";
        QTest::newRow("shift+down moves it 10 % down")
            << int(Qt::Key_Down) << int(Qt::ShiftModifier)
            << QByteArray("10.0\n36.0\n60.0\n16.0\n0.0\n1") << "10.0";
        QTest::newRow("alt+left narrows it at its right edge")
            << int(Qt::Key_Left) << int(Qt::AltModifier)
            << QByteArray("10.0\n26.0\n61.0\n26.0\n0.0\n1") << "10.0";
        QTest::newRow("shift+left stops at the page's edge")
            << int(Qt::Key_Left) << int(Qt::ShiftModifier)
            << QByteArray("0.0\n26.0\n70.0\n26.0\n0.0\n1") << "0.0";
    }
    void arrowKeysOnTheCanvasAreSavedByteForByte()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QByteArray, settings);
        QFETCH(QString, left);
        QTemporaryDir tmp;
        const QString ws = tmp.filePath("ws");
        QDir().mkpath(ws);
        writeFile(ws + "/settings.dat", "10.0\n26.0\n60.0\n26.0\n0.0\n1");
        Window w = open(ws);
        QVERIFY(w.dialog);
        // The position group's mnemonic reaches the canvas.
        w.key(Qt::Key_P, Qt::AltModifier);
        QCOMPARE(w.focusName(), QStringLiteral("positionView"));
        w.key(Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(readFile(ws + "/settings.dat"), settings);
        QCOMPARE(qobject_cast<QLineEdit *>(w.widget("txtLeft"))->text(), left);
        w.cancel();
        QCOMPARE(readFile(ws + "/settings.dat"), QByteArray("10.0\n26.0\n60.0\n26.0\n0.0\n1"));
    }

    void mnemonicsReachTheirControls_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("focus");
        QTest::newRow("Alt+L: left margin") << int(Qt::Key_L) << "txtLeft";
        QTest::newRow("Alt+T: top margin") << int(Qt::Key_T) << "txtTop";
        QTest::newRow("Alt+R: right margin") << int(Qt::Key_R) << "txtRight";
        QTest::newRow("Alt+B: bottom margin") << int(Qt::Key_B) << "txtBottom";
        QTest::newRow("Alt+A: the transparency slider") << int(Qt::Key_A) << "sldTrans";
        QTest::newRow("Alt+Y: the chosen layer, unchanged") << int(Qt::Key_Y) << "radLayerAbove";
        QTest::newRow("Alt+P: the canvas") << int(Qt::Key_P) << "positionView";
    }
    void mnemonicsReachTheirControls()
    {
        QFETCH(int, key);
        QFETCH(QString, focus);
        QTemporaryDir tmp;
        const QString ws = tmp.filePath("ws");
        QDir().mkpath(ws);
        writeFile(ws + "/settings.dat", "10.0\n26.0\n60.0\n26.0\n0.0\n1");
        Window w = open(ws);
        QVERIFY(w.dialog);
        w.widget("btnCancel")->setFocus();
        w.key(Qt::Key(key), Qt::AltModifier);
        QCOMPARE(w.focusName(), focus);
        QVERIFY(qobject_cast<QAbstractButton *>(w.widget("radLayerAbove"))->isChecked());
        w.cancel();
    }

    void mnemonicsAreUniqueInEveryLanguage_data() { languageRows(); }
    void mnemonicsAreUniqueInEveryLanguage()
    {
        QFETCH(QString, language);
        QTemporaryDir tmp;
        Window w = open(tmp.filePath("ws"), language);
        QVERIFY(w.dialog);
        QMap<QString, QString> owners;
        for (QWidget *widget : w.dialog->findChildren<QWidget *>()) {
            if (!widget->isVisibleTo(w.dialog))
                continue;
            const QString letter = mnemonicOf(textOf(widget));
            if (letter.isEmpty())
                continue;
            QVERIFY2(
                !owners.contains(letter),
                qPrintable(QStringLiteral("%1: &%2 on both %3 and %4")
                               .arg(language, letter, owners.value(letter), widget->objectName())));
            owners.insert(letter, widget->objectName());
        }
        // Every label that names a control can take the user there.
        for (QLabel *label : w.dialog->findChildren<QLabel *>()) {
            if (label->buddy())
                QVERIFY2(!mnemonicOf(label->text()).isEmpty(),
                         qPrintable(language + ": no mnemonic on " + label->objectName()));
        }
        QVERIFY(owners.size() >= 14);
        w.cancel();
    }

    void keyboardFocusOnTheCanvasShowsInEveryPalette_data()
    {
        QTest::addColumn<QString>("palette");
        QTest::newRow("light palette") << "light";
        QTest::newRow("dark palette") << "dark";
        QTest::newRow("high-contrast palette") << "high-contrast";
    }
    void keyboardFocusOnTheCanvasShowsInEveryPalette()
    {
        QFETCH(QString, palette);
        const QPalette before = QApplication::palette();
        QApplication::setPalette(paletteNamed(palette));
        QTemporaryDir tmp;
        const QString ws = tmp.filePath("ws");
        QDir().mkpath(ws);
        writeFile(ws + "/settings.dat", "10.0\n26.0\n60.0\n26.0\n0.0\n1");
        Window w = open(ws);
        QVERIFY(w.dialog);
        // From the buttons back to the canvas by the position group's mnemonic.
        w.widget("btnCancel")->setFocus();
        w.key(Qt::Key_P, Qt::AltModifier);
        QWidget *canvas = w.widget("positionView");
        QCOMPARE(w.focusName(), QStringLiteral("positionView"));
        const QImage shown = canvas->grab().toImage();
        const QPalette &colours = canvas->palette();
        // The focus ring in the palette's highlight, the page in its base colour.
        QCOMPARE(QColor(shown.pixel(0, shown.height() / 2)), colours.color(QPalette::Highlight));
        QCOMPARE(QColor(shown.pixel(shown.width() - 10, 10)), colours.color(QPalette::Base));
        // The field beside it keeps the palette's text on its base: legible.
        auto *left = qobject_cast<QLineEdit *>(w.widget("txtLeft"));
        QVERIFY(contrast(left->palette().color(QPalette::Text),
                         left->palette().color(QPalette::Base)) > 4.5);
        w.dialog->grab().save(
            QStringLiteral(IMG_BINARY_DIR "/settings-window-focus-%1.png").arg(palette));
        w.cancel();
        QApplication::setPalette(before);
    }

    void labelsNameTheirControls()
    {
        QTemporaryDir tmp;
        Window w = open(tmp.filePath("ws"));
        QVERIFY(w.dialog);
        const QMap<QString, QString> buddies{
            {"lblLeft", "txtLeft"},          {"lblTop", "txtTop"},
            {"lblRight", "txtRight"},        {"lblBottom", "txtBottom"},
            {"lblTransparency", "sldTrans"}, {"lblLayer", "grpLayer"}};
        for (auto it = buddies.cbegin(); it != buddies.cend(); ++it) {
            auto *label = qobject_cast<QLabel *>(w.widget(it.key()));
            QVERIFY(label);
            QCOMPARE(label->buddy() ? label->buddy()->objectName() : QString(), it.value());
        }
        w.cancel();
    }

    void everyControlIsNamedInTheWindowsLanguage_data() { languageRows(); }
    void everyControlIsNamedInTheWindowsLanguage()
    {
        QFETCH(QString, language);
        const QMap<QString, QPair<QString, QString>> english = names("en");
        const QMap<QString, QPair<QString, QString>> local = names(language);
        QVERIFY(english.size() >= 15);
        QCOMPARE(local.keys(), english.keys());
        const QSet<QString> same = sameInLanguage(language);
        for (auto it = local.cbegin(); it != local.cend(); ++it) {
            const QString what = language + " " + it.key();
            QVERIFY2(!it->first.isEmpty(), qPrintable(what + " has no name"));
            QVERIFY2(!it->second.isEmpty(), qPrintable(what + " has no description"));
            if (language == "en")
                continue;
            const auto &en = english.value(it.key());
            QVERIFY2(it->first != en.first || same.contains(en.first),
                     qPrintable(what + " name is untranslated: " + it->first));
            QVERIFY2(it->second != en.second || same.contains(en.second),
                     qPrintable(what + " description is untranslated: " + it->second));
        }
    }

private:
    Window open(const QString &ws, const QString &language = QStringLiteral("en"))
    {
        Window w;
        w.controller.reset(
            m_host.factory()->createSettingsDelegate(language, QStringLiteral(IMG_BUNDLE_DIR)));
        if (!w.controller)
            return w;
        w.controller->setModalMode(false);
        w.controller->setWorkSpace(ws);
        w.dialog = w.controller->window();
        // Reads of the workspace wait for what the window still writes, as a host would.
        TreeSnapshot::beforeRead() = [object = QPointer<QObject>(w.controller->object())] {
            if (object)
                QMetaObject::invokeMethod(object, "waitForSaves");
        };
        if (w.dialog) {
            w.dialog->show();
            w.dialog->activateWindow();
            if (!QTest::qWaitForWindowActive(w.dialog))
                qWarning("the window did not become active; keys go nowhere");
        }
        return w;
    }

    void languageRows()
    {
        QTest::addColumn<QString>("language");
        for (const QString &language : kLanguages)
            QTest::newRow(qPrintable(language)) << language;
    }

    // Every control's name and description, and those of the canvas, the groups and the preview.
    QMap<QString, QPair<QString, QString>> names(const QString &language)
    {
        QTemporaryDir tmp;
        Window w = open(tmp.filePath("ws"), language);
        QMap<QString, QPair<QString, QString>> out;
        if (!w.dialog)
            return out;
        QList<QWidget *> heard = controls(w.dialog);
        heard << w.dialog->findChild<QWebEngineView *>() << w.widget("grpLayer");
        for (QWidget *widget : heard) {
            if (widget)
                out.insert(widget->objectName(),
                           {accessibleText(widget, QAccessible::Name),
                            accessibleText(widget, QAccessible::Description)});
        }
        w.cancel();
        return out;
    }

    // The English texts that the language's table leaves as they are ("OK", "Image" in French).
    QSet<QString> sameInLanguage(const QString &language)
    {
        QSet<QString> same;
        QFile file(QStringLiteral(IMG_SOURCE_DIR "/resources/translations/%1.ts").arg(language));
        if (!file.open(QIODevice::ReadOnly))
            return same;
        QXmlStreamReader xml(&file);
        QString source;
        while (!xml.atEnd()) {
            if (!xml.readNextStartElement())
                continue;
            if (xml.name() == QLatin1String("source"))
                source = xml.readElementText().remove(QLatin1Char('&'));
            else if (xml.name() == QLatin1String("translation") &&
                     xml.readElementText().remove(QLatin1Char('&')) == source)
                same.insert(source);
        }
        return same;
    }

    PluginHost m_host;
};

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestWindowKeyboard suite;
    return QTest::qExec(&suite, argc, argv);
}

#include "tst_windowkeyboard.moc"
