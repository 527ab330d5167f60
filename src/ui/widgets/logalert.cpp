// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "logalert.h"

#include "localisation.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QPushButton>

Q_LOGGING_CATEGORY(lcAlert, "img.alert", QtWarningMsg)

namespace {

// A text of the alerts in the window's language. The keys carry a prefix ("Alert-OK"): a table
// may give "OK" as "OK", which a key of its own would read as no translation. Without an entry
// the text after the prefix is shown.
QString localised(const char *key)
{
    const QString text = QString::fromUtf8(key);
    const QLatin1String prefix("Alert-");
    Q_ASSERT(text.startsWith(prefix));
    return loadAppString(text, text.mid(prefix.size()));
}

// Runs an alert with buttons in the given order and answers the index of the button that
// closed it, -1 when none did. The first button is the default (Return); escapeIndex names the
// button that Escape and the window's close box press, -1 for none set.
int runAlert(const QString &message, const QString &text, const QStringList &titles,
             int escapeIndex)
{
    QMessageBox box(QApplication::activeWindow());
    box.setWindowModality(Qt::ApplicationModal);
    // The plugin's name, not the host program's, which Qt would take for a title.
    box.setWindowTitle(localised(QT_TRANSLATE_NOOP("PluginLocale", "Alert-Image Plugin")));
    box.setIcon(QMessageBox::NoIcon);
    box.setText(message);
    box.setInformativeText(text);
    QList<QPushButton *> buttons;
    for (int i = 0; i < titles.size(); ++i) {
        // Roles that keep the buttons in the order given on every platform style: the first is
        // the accepting one, the second the rejecting one.
        const auto role = i == 0 ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
        buttons.append(box.addButton(titles.at(i), role));
    }
    if (!buttons.isEmpty())
        box.setDefaultButton(buttons.first());
    if (escapeIndex >= 0 && escapeIndex < buttons.size())
        box.setEscapeButton(buttons.at(escapeIndex));
    qCDebug(lcAlert) << "alert" << message << titles;
    box.exec();
    return int(buttons.indexOf(qobject_cast<QPushButton *>(box.clickedButton())));
}

} // namespace

void LogAlert::AlertOKWithMessage(const QString &message, const QString &text)
{
    runAlert(message, text, {localised(QT_TRANSLATE_NOOP("PluginLocale", "Alert-OK"))}, 0);
}

bool LogAlert::AlertYesNoWithMessage(const QString &message, const QString &text)
{
    return runAlert(message, text,
                    {localised(QT_TRANSLATE_NOOP("PluginLocale", "Alert-YES")),
                     localised(QT_TRANSLATE_NOOP("PluginLocale", "Alert-NO"))},
                    1) != 1;
}

bool LogAlert::AlertOKCancelWithMessage(const QString &message, const QString &text)
{
    return runAlert(message, text,
                    {localised(QT_TRANSLATE_NOOP("PluginLocale", "Alert-OK")),
                     localised(QT_TRANSLATE_NOOP("PluginLocale", "Alert-Cancel"))},
                    1) != 1;
}

int LogAlert::AlertWithButtons(const QString &message, const QString &text,
                               const QStringList &titles, int escapeIndex)
{
    const int answer = runAlert(message, text, titles, escapeIndex);
    return answer < 0 ? escapeIndex : answer;
}
