// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Every text of the window descriptions and the strings table exists in every language the bundle
// ships, and each language's window description is the English one with exactly those texts
// translated (scripts/localise-ui.py writes them).

#include "testenv.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QtTest>

namespace {

const QString kResources = QStringLiteral(IMG_SOURCE_DIR "/resources");
const QStringList kLanguages{"de", "fr", "ja", "zh_CN"};

QDomDocument readXml(const QString &path)
{
    QDomDocument doc;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        doc.setContent(&file);
    return doc;
}

// context -> source -> translation
QMap<QString, QMap<QString, QString>> readTable(const QString &path)
{
    QMap<QString, QMap<QString, QString>> table;
    const QDomNodeList contexts = readXml(path).elementsByTagName("context");
    for (int i = 0; i < contexts.size(); ++i) {
        const QDomElement context = contexts.at(i).toElement();
        const QString name = context.firstChildElement("name").text();
        const QDomNodeList messages = context.elementsByTagName("message");
        for (int j = 0; j < messages.size(); ++j) {
            const QDomElement m = messages.at(j).toElement();
            table[name][m.firstChildElement("source").text()] =
                m.firstChildElement("translation").text();
        }
    }
    return table;
}

// The translatable texts of a window description, in document order.
QStringList uiTexts(const QDomDocument &ui)
{
    QStringList texts;
    const QDomNodeList strings = ui.elementsByTagName("string");
    for (int i = 0; i < strings.size(); ++i) {
        const QDomElement s = strings.at(i).toElement();
        if (s.attribute("notr") != "true" && !s.text().isEmpty())
            texts << s.text();
    }
    return texts;
}

} // namespace

class TestWindowTranslations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }
    void everyTextIsTranslated_data();
    void everyTextIsTranslated();
    void stringsTableIsComplete_data();
    void stringsTableIsComplete();
};

void TestWindowTranslations::everyTextIsTranslated_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("description");
    for (const QString &lang : kLanguages) {
        for (const QString &ui :
             {QStringLiteral("PluginSettingsDelegate.ui"), QStringLiteral("PrivateView.ui")})
            QTest::newRow(qPrintable(lang + " " + ui)) << lang << ui;
    }
}

void TestWindowTranslations::everyTextIsTranslated()
{
    QFETCH(QString, language);
    QFETCH(QString, description);
    const QDomDocument english = readXml(kResources + "/en.lproj/" + description);
    const QDomDocument localised = readXml(kResources + "/" + language + ".lproj/" + description);
    QVERIFY(!english.isNull());
    QVERIFY2(!localised.isNull(),
             qPrintable(language + ".lproj/" + description + " is missing or broken"));
    const QString context = english.documentElement().firstChildElement("class").text();
    const auto table = readTable(kResources + "/translations/" + language + ".ts").value(context);
    const auto englishTable = readTable(kResources + "/translations/en.ts").value(context);

    const QStringList sources = uiTexts(english);
    const QStringList shown = uiTexts(localised);
    QVERIFY(!sources.isEmpty());
    QCOMPARE(shown.size(), sources.size());
    for (int i = 0; i < sources.size(); ++i) {
        QVERIFY2(table.contains(sources[i]),
                 qPrintable(language + ": no translation of " + sources[i]));
        QVERIFY2(!table.value(sources[i]).isEmpty(),
                 qPrintable(language + ": empty translation of " + sources[i]));
        QVERIFY2(englishTable.contains(sources[i]), qPrintable("en.ts lacks " + sources[i]));
        QCOMPARE(shown[i], table.value(sources[i]));
    }
}

void TestWindowTranslations::stringsTableIsComplete_data()
{
    QTest::addColumn<QString>("language");
    for (const QString &lang : kLanguages)
        QTest::newRow(qPrintable(lang)) << lang;
}

void TestWindowTranslations::stringsTableIsComplete()
{
    QFETCH(QString, language);
    const auto english = readTable(kResources + "/translations/en.ts").value("PluginLocale");
    const auto table =
        readTable(kResources + "/translations/" + language + ".ts").value("PluginLocale");
    QVERIFY(!english.isEmpty());
    for (auto it = english.cbegin(); it != english.cend(); ++it) {
        QVERIFY2(!table.value(it.key()).isEmpty(),
                 qPrintable(language + ": no text for " + it.key()));
        // A translation equal to its key would read as "no translation" at run time.
        QVERIFY2(table.value(it.key()) != it.key() || language == "en", qPrintable(it.key()));
    }
    QVERIFY(table.value("Plugin Settings - %@").contains("%@"));
}

QTEST_GUILESS_MAIN(TestWindowTranslations)
#include "tst_windowtranslations.moc"
