// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "localisation.h"

#include "bundlepaths.h"
#include "fileops.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <QTranslator>
#include <limits>
#include <memory>

Q_LOGGING_CATEGORY(lcLocale, "img.locale", QtWarningMsg)

namespace {

const char TableContext[] = "PluginLocale";
const QLatin1String TableFile("PluginLocale.qm");

struct LocaleState
{
    QString languageCode;
    QString bundlePath;
    // Loaded on first use and deliberately kept for the life of the process: once the texts of a
    // language are shown, a later change of language does not mix in texts of another.
    std::unique_ptr<QTranslator> table;
    // Qt's own texts, installed into the application once and kept likewise.
    std::unique_ptr<QTranslator> qtTexts;
    QString qtTextsLanguage;
};

LocaleState &state()
{
    static LocaleState s;
    return s;
}

// The resource folder of the stored bundle; empty when nothing is there.
QString pluginResourceDir()
{
    const QString bundle = state().bundlePath;
    if (!FileOps::exists(bundle))
        return QString();
    return BundlePaths::resourcePath(bundle);
}

// A strings table loaded from bytes read beforehand, so that nothing but a regular file is ever
// opened. The translator refers to the bytes for its whole life: they sit in a base class, which
// is destroyed after it.
struct TableBytes
{
    QByteArray bytes;
};

class MemoryTable : private TableBytes, public QTranslator
{
public:
    explicit MemoryTable(QByteArray data)
        : TableBytes{std::move(data)}
    {}
    bool loadBytes()
    {
        return bytes.size() <= std::numeric_limits<int>::max() &&
               load(reinterpret_cast<const uchar *>(bytes.constData()), int(bytes.size()));
    }
};

std::unique_ptr<QTranslator> loadTable(const QString &qmPath)
{
    // A file of the bundle: a packager's link is followed, but only to a regular file.
    QByteArray bytes;
    if (!FileOps::readAll(qmPath, &bytes, FileOps::ReadLinks::Follow))
        return nullptr;
    auto table = std::make_unique<MemoryTable>(std::move(bytes));
    if (!table->loadBytes()) {
        qCDebug(lcLocale) << "unreadable strings table" << qmPath;
        return nullptr;
    }
    return table;
}

// The table of the stored language; with no language, the unlocalised table, if any.
std::unique_ptr<QTranslator> loadStoredLanguageTable(const QString &resourceDir)
{
    const QString lang = state().languageCode;
    if (lang.isEmpty())
        return loadTable(resourceDir + QLatin1Char('/') + TableFile);
    return loadTable(resourceDir + QLatin1Char('/') + lang + QLatin1String(".lproj/") + TableFile);
}

// The system's own language choice, used when the stored language has no table: the first of
// the user's languages that the bundle has, else English. Never cached.
std::unique_ptr<QTranslator> loadSystemLanguageTable(const QString &resourceDir)
{
    QStringList candidates;
    for (const QString &name : QLocale::system().uiLanguages()) {
        candidates << name << QString(name).replace(QLatin1Char('-'), QLatin1Char('_'))
                   << name.section(QLatin1Char('-'), 0, 0);
    }
    candidates << QStringLiteral("en");
    candidates.removeDuplicates();
    for (const QString &lang : std::as_const(candidates)) {
        if (auto table = loadTable(resourceDir + QLatin1Char('/') + lang +
                                   QLatin1String(".lproj/") + TableFile))
            return table;
    }
    return nullptr;
}

QString lookUp(const QTranslator &table, const QString &key)
{
    return table.translate(TableContext, key.toUtf8().constData());
}

} // namespace

void setDefaultLanguageCode(const QString &code)
{
    state().languageCode = code;
}

QString defaultLanguageCode()
{
    return state().languageCode;
}

void setDefaultBundlePath(const QString &path)
{
    state().bundlePath = path;
}

QString defaultBundlePath()
{
    return state().bundlePath;
}

QString loadAppString(const QString &key, const QString &defaultText)
{
    const QString resourceDir = pluginResourceDir();
    if (resourceDir.isEmpty())
        return defaultText;
    LocaleState &s = state();
    if (!s.table)
        s.table = loadStoredLanguageTable(resourceDir);
    QString found;
    if (s.table) {
        found = lookUp(*s.table, key);
    } else if (const auto fallback = loadSystemLanguageTable(resourceDir)) {
        found = lookUp(*fallback, key);
    }
    if (found.isEmpty() || found == key)
        return defaultText;
    return found;
}

QString localizedResourcePath(const QString &resourceDir, const QString &fileName)
{
    const QString lang =
        defaultLanguageCode().isEmpty() ? QStringLiteral("en") : defaultLanguageCode();
    const QString candidates[] = {
        resourceDir + QLatin1Char('/') + lang + QLatin1String(".lproj/") + fileName,
        resourceDir + QLatin1String("/en.lproj/") + fileName,
        resourceDir + QLatin1Char('/') + fileName,
    };
    // A FIFO or folder of that name is no description: the next place is asked.
    for (const QString &path : candidates) {
        if (FileOps::isRegularFile(path, FileOps::ReadLinks::Follow))
            return path;
    }
    return QString();
}

QString localizedBundleResourcePath(const QString &bundlePath, const QString &fileName)
{
    const QString bundle = bundlePath.isEmpty() ? BundlePaths::mainBundlePath() : bundlePath;
    return localizedResourcePath(BundlePaths::resourcePath(bundle), fileName);
}

void resetAppStringTableForTesting()
{
    state().table.reset();
}

bool installQtTranslations(const QString &languageCode)
{
    LocaleState &s = state();
    if (s.qtTexts)
        return s.qtTextsLanguage == languageCode;
    if (languageCode.isEmpty() || languageCode == QLatin1String("en"))
        return true;
    auto texts = std::make_unique<QTranslator>();
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    // An exact file only: QTranslator would otherwise fall back from "zh_CN" to "zh" or to
    // another language of the system's locale.
    const QString file = QStringLiteral("qtbase_%1").arg(languageCode);
    if (!QFileInfo(QDir(folder).filePath(file + QLatin1String(".qm"))).isFile() ||
        !texts->load(file, folder)) {
        qCDebug(lcLocale) << "no Qt translations for" << languageCode << "in" << folder;
        return false;
    }
    QCoreApplication::installTranslator(texts.get());
    s.qtTexts = std::move(texts);
    s.qtTextsLanguage = languageCode;
    return true;
}

void resetQtTranslationsForTesting()
{
    LocaleState &s = state();
    if (s.qtTexts)
        QCoreApplication::removeTranslator(s.qtTexts.get());
    s.qtTexts.reset();
    s.qtTextsLanguage.clear();
}
