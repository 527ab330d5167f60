// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

// Process-wide language and bundle of the plugin. The bundle runs inside the host's process, so
// every localised lookup goes to the plugin's own bundle and the language the host passed in.
// A null QString means "not set". Main thread only.
void setDefaultLanguageCode(const QString &code);
QString defaultLanguageCode();
void setDefaultBundlePath(const QString &path);
QString defaultBundlePath();

// The localised text for key from the "PluginLocale" table of the language folder
// ("<lang>.lproj/PluginLocale.qm"), or defaultText when there is no table, no entry, or the entry
// equals the key. The first table found is kept for the life of the process.
QString loadAppString(const QString &key, const QString &defaultText);

// The path of a localised resource file (for example the window description "PrivateView.ui"):
// resourceDir/<lang>.lproj/fileName, else resourceDir/en.lproj/fileName, else resourceDir/fileName,
// the first that is a regular file or a link to one (a FIFO or folder of that name is passed
// over); "en" stands in for an unset language. Empty when there is none.
QString localizedResourcePath(const QString &resourceDir, const QString &fileName);
// The same search in the resource folder of the bundle at bundlePath; an empty bundlePath
// searches the main bundle (the running program's own).
QString localizedBundleResourcePath(const QString &bundlePath, const QString &fileName);

// Installs Qt's own translations (the texts of its file dialog and other standard parts) for
// languageCode ("de", "zh_CN") from the system's Qt translations folder, where the system has
// them. Like the strings table, the first language installed stays for the life of the process.
// Answers whether Qt's texts now speak that language; English needs nothing and answers true.
bool installQtTranslations(const QString &languageCode);

// For tests only: forgets the cached "PluginLocale" table so that one test process can try
// several languages. The bundle itself never calls it; its cache lasts for the whole process.
void resetAppStringTableForTesting();
// For tests only: removes the Qt translations that installQtTranslations installed.
void resetQtTranslationsForTesting();
