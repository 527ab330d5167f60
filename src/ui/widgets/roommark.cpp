// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "roommark.h"

#include <QWidget>

namespace {

const char *const kMarked = "noRoom";
const char *const kPlainToolTip = "plainToolTip";
// A red that reads as a warning on white and on near-black alike; a third of it is enough to
// stand out without drowning the digits.
const QColor kWarning(220, 50, 47);
constexpr double kTint = 0.3;

QColor mix(const QColor &base, const QColor &tint, double share)
{
    const auto channel = [share](int a, int b) {
        return qRound(a * (1.0 - share) + b * share);
    };
    return QColor(channel(base.red(), tint.red()), channel(base.green(), tint.green()),
                  channel(base.blue(), tint.blue()));
}

} // namespace

namespace RoomMark {

bool isMarked(const QWidget *field)
{
    return field && field->property(kMarked).toBool();
}

QPalette markedPalette(const QPalette &plain)
{
    QPalette marked = plain;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        marked.setColor(group, QPalette::Base,
                        mix(plain.color(group, QPalette::Base), kWarning, kTint));
        marked.setColor(group, QPalette::Text, plain.color(group, QPalette::Text));
    }
    return marked;
}

void setMarked(QWidget *field, bool marked, const QString &why)
{
    if (!field || (isMarked(field) == marked && (!marked || field->toolTip() == why)))
        return;
    if (marked) {
        if (!isMarked(field)) {
            field->setProperty(kPlainToolTip, field->toolTip());
            field->setPalette(markedPalette(field->palette()));
        }
        field->setToolTip(why);
    } else {
        field->setToolTip(field->property(kPlainToolTip).toString());
        // An empty palette resolves nothing: the field inherits its window's palette again.
        field->setPalette(QPalette());
    }
    field->setProperty(kMarked, marked);
}

} // namespace RoomMark
