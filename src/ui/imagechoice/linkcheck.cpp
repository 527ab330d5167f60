// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "linkcheck.h"

#include "localisation.h"

#include <QUrl>

namespace LinkCheck {

Problem check(const QString &link)
{
    if (link.isEmpty())
        return Problem::None;
    for (const QChar c : link) {
        if (c.isSpace())
            return Problem::Blanks;
    }
    const QUrl url(link, QUrl::StrictMode);
    const QString scheme = url.scheme().toLower();
    if (scheme == QLatin1String("file"))
        return Problem::LocalFile;
    if (scheme != QLatin1String("http") && scheme != QLatin1String("https"))
        return Problem::NotWeb;
    if (!url.isValid() || url.host().isEmpty())
        return Problem::NoHost;
    return Problem::None;
}

QString reasonText(Problem problem)
{
    const auto localised = [](const char *key) {
        const QString text = QString::fromUtf8(key);
        return loadAppString(text, text);
    };
    switch (problem) {
    case Problem::None:
        return QString();
    case Problem::NotWeb:
        return localised(QT_TRANSLATE_NOOP(
            "PluginLocale",
            "Readers' books open only http and https links: this link will not show the "
            "image."));
    case Problem::NoHost:
        return localised(QT_TRANSLATE_NOOP(
            "PluginLocale",
            "This link names no web server: readers' books will not find the image."));
    case Problem::Blanks:
        return localised(QT_TRANSLATE_NOOP(
            "PluginLocale", "This link has blanks in it: readers' books will not find the image."));
    case Problem::LocalFile:
        return localised(QT_TRANSLATE_NOOP(
            "PluginLocale",
            "A file: link points to a file on this computer, which readers do not have. "
            "Choose Local file instead."));
    }
    return QString();
}

} // namespace LinkCheck
