// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "bundlepaths.h"
#include "localisation.h"
#include "specialentries.h"
#include "testenv.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString LocaleFixtures = QStringLiteral(IMG_TEST_LOCALE_DIR);

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestLocalisation : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_root;
    int m_count = 0;

    // A bundle whose "<lang>.lproj" folders hold the compiled fixture tables; "" places the
    // unlocalised table straight in the resource folder.
    QString makeBundle(const QStringList &languages)
    {
        const QString bundle = m_root.filePath(QStringLiteral("b%1.bundle").arg(++m_count));
        const QString res = BundlePaths::resourcePath(bundle);
        QDir().mkpath(res);
        for (const QString &lang : languages)
            addTable(bundle, lang, lang.isEmpty() ? QStringLiteral("unlocalised") : lang);
        return bundle;
    }

    static void addTable(const QString &bundle, const QString &folderLang, const QString &fixture)
    {
        const QString res = BundlePaths::resourcePath(bundle);
        const QString folder = folderLang.isEmpty() ? res : res + "/" + folderLang + ".lproj";
        QDir().mkpath(folder);
        const QString target = folder + "/PluginLocale.qm";
        QFile::remove(target);
        if (!QFile::copy(LocaleFixtures + "/" + fixture + ".qm", target))
            qFatal("missing fixture table %s", qPrintable(fixture));
    }

private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY(m_root.isValid());
        QVERIFY(QFile::exists(LocaleFixtures + "/de.qm"));
    }

    void init()
    {
        resetAppStringTableForTesting();
        setDefaultLanguageCode(QString());
        setDefaultBundlePath(QString());
    }

    // ---- process-wide state

    void stateStartsUnsetAndStoresCopies()
    {
        QVERIFY(defaultLanguageCode().isNull());
        QVERIFY(defaultBundlePath().isNull());
        QString code = QStringLiteral("de");
        setDefaultLanguageCode(code);
        code[0] = QLatin1Char('x');
        QCOMPARE(defaultLanguageCode(), QStringLiteral("de"));
        setDefaultBundlePath(QStringLiteral("/some/where.bundle"));
        QCOMPARE(defaultBundlePath(), QStringLiteral("/some/where.bundle"));
        setDefaultLanguageCode(QString());
        QVERIFY(defaultLanguageCode().isNull());
    }

    // ---- loadAppString

    void lookUp_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("defaultText");
        QTest::addColumn<QString>("expected");

        QTest::newRow("translated entry")
            << "de"
            << "Do you want to apply the settings?"
            << "Do you want to apply the settings?"
            << QString::fromUtf8("M\xC3\xB6"
                                 "chten Sie die Einstellungen \xC3\xBC"
                                 "bernehmen?");
        QTest::newRow("format keys keep their placeholder") << "de"
                                                            << "Plugin Settings - %@"
                                                            << "Plugin Settings - %@"
                                                            << "Plugin-Einstellungen - %@";
        QTest::newRow("prefixed key of the private view") << "fr"
                                                          << "PrivateV-Copy Failed!"
                                                          << "Copy Failed!"
                                                          << QString::fromUtf8("La copie a \xC3\xA9"
                                                                               "chou\xC3\xA9 !");
        QTest::newRow("entry equal to its key yields the default text") << "de"
                                                                        << "Same"
                                                                        << "The default"
                                                                        << "The default";
        QTest::newRow("missing key yields the default text") << "de"
                                                             << "PrivateV-Select a image file"
                                                             << "Select a image file"
                                                             << "Select a image file";
        QTest::newRow("empty key yields the default text") << "de"
                                                           << ""
                                                           << "dflt"
                                                           << "dflt";
    }

    void lookUp()
    {
        QFETCH(QString, language);
        QFETCH(QString, key);
        QFETCH(QString, defaultText);
        QFETCH(QString, expected);
        setDefaultLanguageCode(language);
        setDefaultBundlePath(makeBundle({"de", "fr", "en"}));
        QCOMPARE(loadAppString(key, defaultText), expected);
    }

    void missingBundleYieldsDefaults()
    {
        setDefaultLanguageCode(QStringLiteral("de"));
        QCOMPARE(loadAppString("Plugin Settings - %@", "Fallback - %@"),
                 QStringLiteral("Fallback - %@"));
        setDefaultBundlePath(m_root.filePath(QStringLiteral("no such bundle")));
        QCOMPARE(loadAppString("Plugin Settings - %@", "Fallback - %@"),
                 QStringLiteral("Fallback - %@"));
        // Nothing was cached: once the bundle is there, its table is used.
        setDefaultBundlePath(makeBundle({"de"}));
        QCOMPARE(loadAppString("Plugin Settings - %@", "Fallback - %@"),
                 QStringLiteral("Plugin-Einstellungen - %@"));
    }

    void tableIsKeptAfterALanguageChange()
    {
        setDefaultBundlePath(makeBundle({"de", "fr"}));
        setDefaultLanguageCode(QStringLiteral("de"));
        QCOMPARE(loadAppString("Plugin Settings - %@", "x"),
                 QStringLiteral("Plugin-Einstellungen - %@"));
        setDefaultLanguageCode(QStringLiteral("fr"));
        QCOMPARE(loadAppString("Plugin Settings - %@", "x"),
                 QStringLiteral("Plugin-Einstellungen - %@"));
        QCOMPARE(loadAppString("PrivateV-Copy Failed!", "x"),
                 QStringLiteral("Kopieren fehlgeschlagen!"));
    }

    void tableIsKeptAfterABundleChange()
    {
        setDefaultBundlePath(makeBundle({"de"}));
        setDefaultLanguageCode(QStringLiteral("de"));
        QCOMPARE(loadAppString("Plugin Settings - %@", "x"),
                 QStringLiteral("Plugin-Einstellungen - %@"));
        setDefaultBundlePath(makeBundle({"fr"}));
        setDefaultLanguageCode(QStringLiteral("fr"));
        QCOMPARE(loadAppString("Plugin Settings - %@", "x"),
                 QStringLiteral("Plugin-Einstellungen - %@"));
    }

    void languageWithoutTableUsesTheSystemChoiceUncached()
    {
        // No "xx" table: the system's choice among the bundle's languages applies (only English
        // here), and is asked again on every call, so a table that appears later is used.
        const QString bundle = makeBundle({"en"});
        setDefaultBundlePath(bundle);
        setDefaultLanguageCode(QStringLiteral("xx"));
        QCOMPARE(loadAppString("Only in English", "dflt"), QStringLiteral("English text"));
        QCOMPARE(loadAppString("Plugin Settings - %@", "dflt"), QStringLiteral("dflt"));
        addTable(bundle, QStringLiteral("xx"), QStringLiteral("fr"));
        QCOMPARE(loadAppString("Plugin Settings - %@", "dflt"),
                 QString::fromUtf8("R\xC3\xA9glages du module - %@"));
        // From now on the xx table is kept.
        QFile::remove(BundlePaths::resourcePath(bundle) + "/xx.lproj/PluginLocale.qm");
        QCOMPARE(loadAppString("Plugin Settings - %@", "dflt"),
                 QString::fromUtf8("R\xC3\xA9glages du module - %@"));
    }

    void noLanguageUsesTheUnlocalisedTable()
    {
        setDefaultBundlePath(makeBundle({"", "de"}));
        QCOMPARE(loadAppString("Plugin Settings - %@", "dflt"),
                 QStringLiteral("Unlocalised title"));
    }

    void noLanguageAndNoUnlocalisedTableUsesTheSystemChoice()
    {
        setDefaultBundlePath(makeBundle({"en"}));
        QCOMPARE(loadAppString("Only in English", "dflt"), QStringLiteral("English text"));
    }

    void noTableAtAllYieldsDefaults()
    {
        setDefaultBundlePath(makeBundle({}));
        setDefaultLanguageCode(QStringLiteral("de"));
        QCOMPARE(loadAppString("Plugin Settings - %@", "dflt"), QStringLiteral("dflt"));
    }

    void corruptTableYieldsDefaults()
    {
        const QString bundle = makeBundle({});
        QVERIFY(writeBytes(BundlePaths::resourcePath(bundle) + "/de.lproj/PluginLocale.qm",
                           QByteArray("\x3c\xb8\x64\x18garbage", 11)));
        setDefaultBundlePath(bundle);
        setDefaultLanguageCode(QStringLiteral("de"));
        QCOMPARE(loadAppString("Plugin Settings - %@", "dflt"), QStringLiteral("dflt"));
    }

    // A table is read without waiting: anything but a regular file (or a packager's link to
    // one) is as good as missing, and the system's choice applies.
    void specialTable_data()
    {
        using namespace SpecialEntries;
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a FIFO reads as missing") << Fifo << "English text";
        QTest::newRow("a packager's link to a table is followed") << LinkToFile << "dflt";
        QTest::newRow("a link to a FIFO reads as missing") << LinkToFifo << "English text";
        QTest::newRow("a folder reads as missing") << Folder << "English text";
    }

    void specialTable()
    {
        QFETCH(SpecialEntries::Kind, kind);
        QFETCH(QString, expected);
        QFile fixture(LocaleFixtures + "/de.qm");
        QVERIFY(fixture.open(QIODevice::ReadOnly));
        const QString bundle = makeBundle({"en"});
        QVERIFY(SpecialEntries::make(
            kind, BundlePaths::resourcePath(bundle) + "/de.lproj/PluginLocale.qm",
            m_root.filePath(QStringLiteral("packaged-%1").arg(++m_count)), fixture.readAll()));
        setDefaultBundlePath(bundle);
        setDefaultLanguageCode(QStringLiteral("de"));
        // "Only in English" is in the English table alone; the German one has the title.
        QCOMPARE(loadAppString("Only in English", "dflt"), expected);
        if (kind == SpecialEntries::LinkToFile)
            QCOMPARE(loadAppString("Plugin Settings - %@", "x"),
                     QStringLiteral("Plugin-Einstellungen - %@"));
    }

    void shippedEnglishTable_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("defaultText");
        QTest::addColumn<QString>("expected");
        QTest::newRow("window title") << "Plugin Settings - %@"
                                      << "Plugin Settings - %@"
                                      << "Plugin Settings - %@";
        QTest::newRow("closing question") << "Do you want to apply the settings?"
                                          << "Do you want to apply the settings?"
                                          << "Do you want to apply the settings?";
        QTest::newRow("open panel message") << "PrivateV-Select a image file"
                                            << "Select a image file"
                                            << "Select a image file";
        QTest::newRow("copy failure") << "PrivateV-Copy Failed!"
                                      << "Copy Failed!"
                                      << "Copy Failed!";
        QTest::newRow("prefixed key is never shown") << "PrivateV-Copy Failed!"
                                                     << "Other"
                                                     << "Copy Failed!";
    }

    void shippedEnglishTable()
    {
        QFETCH(QString, key);
        QFETCH(QString, defaultText);
        QFETCH(QString, expected);
        const QString bundle = QStringLiteral(IMG_BUNDLE_DIR);
        QVERIFY(QFile::exists(BundlePaths::resourcePath(bundle) + "/en.lproj/PluginLocale.qm"));
        setDefaultBundlePath(bundle);
        setDefaultLanguageCode(QStringLiteral("en"));
        QCOMPARE(loadAppString(key, defaultText), expected);
    }

    // ---- localised window descriptions

    void descriptionPath_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QString>("expected");

        QTest::newRow("de with the description only in English uses English")
            << "de" << QStringList{"en.lproj"} << "en.lproj";
        QTest::newRow("de with a German description uses it")
            << "de" << QStringList{"de.lproj", "en.lproj", ""} << "de.lproj";
        QTest::newRow("no language tries en.lproj first")
            << QString() << QStringList{"de.lproj", "en.lproj", ""} << "en.lproj";
        QTest::newRow("empty language counts as none")
            << "" << QStringList{"de.lproj", "en.lproj"} << "en.lproj";
        QTest::newRow("unlocalised when no language folder has it")
            << "de" << QStringList{"fr.lproj", ""} << "";
        QTest::newRow("language folder before the unlocalised one")
            << "fr" << QStringList{"fr.lproj", ""} << "fr.lproj";
        QTest::newRow("found nowhere is empty") << "de" << QStringList{"fr.lproj"} << "<none>";
    }

    void descriptionPath()
    {
        QFETCH(QString, language);
        QFETCH(QStringList, present);
        QFETCH(QString, expected);
        const QString res = BundlePaths::resourcePath(makeBundle({}));
        for (const QString &folder : present) {
            const QString dir = folder.isEmpty() ? res : res + "/" + folder;
            QVERIFY(writeBytes(dir + "/PluginSettingsDelegate.ui", folder.toUtf8()));
        }
        setDefaultLanguageCode(language);
        const QString found =
            localizedResourcePath(res, QStringLiteral("PluginSettingsDelegate.ui"));
        if (expected == QLatin1String("<none>")) {
            QVERIFY(found.isEmpty());
            return;
        }
        const QString dir = expected.isEmpty() ? res : res + "/" + expected;
        QCOMPARE(found, dir + "/PluginSettingsDelegate.ui");
    }

    void descriptionPathPassesOverSpecialEntries_data()
    {
        using namespace SpecialEntries;
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a FIFO is passed over") << Fifo << "en.lproj";
        QTest::newRow("a folder is passed over") << Folder << "en.lproj";
        QTest::newRow("a link to a FIFO is passed over") << LinkToFifo << "en.lproj";
        QTest::newRow("a dangling link is passed over") << DanglingLink << "en.lproj";
        QTest::newRow("a packager's link to a file is taken") << LinkToFile << "de.lproj";
    }

    void descriptionPathPassesOverSpecialEntries()
    {
        QFETCH(SpecialEntries::Kind, kind);
        QFETCH(QString, expected);
        const QString res = BundlePaths::resourcePath(makeBundle({}));
        QVERIFY(writeBytes(res + "/en.lproj/PluginSettingsDelegate.ui", "en"));
        QVERIFY(SpecialEntries::make(kind, res + "/de.lproj/PluginSettingsDelegate.ui",
                                     m_root.filePath(QStringLiteral("packaged-%1").arg(++m_count)),
                                     "de"));
        setDefaultLanguageCode(QStringLiteral("de"));
        QCOMPARE(localizedResourcePath(res, QStringLiteral("PluginSettingsDelegate.ui")),
                 res + "/" + expected + "/PluginSettingsDelegate.ui");
    }

    void descriptionPathInBundle()
    {
        const QString bundle = makeBundle({});
        QVERIFY(writeBytes(BundlePaths::resourcePath(bundle) + "/en.lproj/PrivateView.ui", "en"));
        setDefaultLanguageCode(QStringLiteral("de"));
        QCOMPARE(localizedBundleResourcePath(bundle, QStringLiteral("PrivateView.ui")),
                 BundlePaths::resourcePath(bundle) + "/en.lproj/PrivateView.ui");
    }

    void descriptionPathWithNoBundleSearchesTheMainBundle()
    {
        // The main bundle of a test program is its own folder.
        const QString res = BundlePaths::resourcePath(BundlePaths::mainBundlePath());
        const QString name = QStringLiteral("Probe-%1.ui").arg(QCoreApplication::applicationPid());
        const QString path = res + "/en.lproj/" + name;
        QVERIFY(writeBytes(path, "probe"));
        setDefaultLanguageCode(QStringLiteral("de"));
        const QString found = localizedBundleResourcePath(QString(), name);
        QFile::remove(path);
        QDir().rmpath(res + "/en.lproj");
        QCOMPARE(found, path);
    }

    // ---- Qt's own texts

    void qtTranslations_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<bool>("speaks");
        QTest::addColumn<QString>("lookIn");
        QTest::newRow("German file dialogs say Suchen in") << "de" << true << "Suchen in:";
        QTest::newRow("French file dialogs say Voir dans")
            << "fr" << true << QString::fromUtf8("Voir dans :");
        QTest::newRow("Simplified Chinese has its own file, not plain zh")
            << "zh_CN" << true << QString::fromUtf8("查找范围：");
        QTest::newRow("English needs nothing") << "en" << true << "Look in:";
        QTest::newRow("a language without Qt translations stays English")
            << "xx" << false << "Look in:";
    }
    void qtTranslations()
    {
        QFETCH(QString, language);
        QFETCH(bool, speaks);
        QFETCH(QString, lookIn);
        resetQtTranslationsForTesting();
        const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
        if (speaks && language != "en" && !QFile::exists(folder + "/qtbase_" + language + ".qm"))
            QSKIP("this system has no Qt translations for the language");
        QCOMPARE(installQtTranslations(language), speaks);
        QCOMPARE(QCoreApplication::translate("QFileDialog", "Look in:"), lookIn);
        resetQtTranslationsForTesting();
        QCOMPARE(QCoreApplication::translate("QFileDialog", "Look in:"),
                 QStringLiteral("Look in:"));
    }

    void firstQtLanguageStays()
    {
        resetQtTranslationsForTesting();
        const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
        if (!QFile::exists(folder + "/qtbase_de.qm") || !QFile::exists(folder + "/qtbase_fr.qm"))
            QSKIP("this system has no Qt translations for German and French");
        QVERIFY(installQtTranslations("de"));
        QVERIFY(!installQtTranslations("fr"));
        QVERIFY(installQtTranslations("de"));
        QCOMPARE(QCoreApplication::translate("QFileDialog", "Look in:"),
                 QStringLiteral("Suchen in:"));
        resetQtTranslationsForTesting();
    }
};

QTEST_GUILESS_MAIN(TestLocalisation)
#include "tst_localisation.moc"
