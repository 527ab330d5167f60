// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "positionform.h"

#include "localisation.h"
#include "numbertext.h"
#include "onedecimal.h"
#include "roommark.h"
#include "utilityfunction.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QFont>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSlider>

namespace {

// The slider moves in hundredths of a percent when its description says so ("valueScale"), so
// that a position such as 37.26 exists on it.
double sliderScale(const QSlider *slider)
{
    bool ok = false;
    const double scale = slider->property("valueScale").toDouble(&ok);
    return ok && scale > 0 ? scale : 1.0;
}

void showNumber(QLineEdit *field, float value)
{
    if (!field)
        return;
    const QString text = OneDecimal::text(value);
    if (field->text() != text)
        field->setText(text);
}

QString oneDecimal(double value)
{
    return QString::asprintf("%.1f", value);
}

} // namespace

PositionForm::PositionForm(const WindowAssembly::Outlets &outlets)
    : m_outlets(outlets)
{}

QString PositionForm::filteredNumber(const QString &text)
{
    if (text.endsWith(QLatin1Char(',')))
        return UtilityFunction::checkFloatValueStringFrom(text.chopped(1) + QLatin1Char('.'));
    return UtilityFunction::checkFloatValueStringFrom(text);
}

void PositionForm::prepareNumberFields()
{
    for (QLineEdit *field : {m_outlets.left.data(), m_outlets.top.data(), m_outlets.right.data(),
                             m_outlets.bottom.data(), m_outlets.transparency.data()}) {
        if (!field)
            continue;
        QFont digits;
        digits.setStyleStrategy(QFont::PreferNoShaping);
        field->setFont(digits);
    }
}

void PositionForm::showMargins(const PositionRect &record)
{
    showNumber(m_outlets.left, record.left());
    showNumber(m_outlets.top, record.top());
    showNumber(m_outlets.right, record.right());
    showNumber(m_outlets.bottom, record.bottom());
    showMarginRoom(record);
}

void PositionForm::showMarginRoom(const PositionRect &record)
{
    const MarginRoom room = MarginRoom::of(record);
    // Every drag step comes here, and a pair's room seldom changes within one: the marks are
    // touched only when it does.
    if (m_shownRoom == room)
        return;
    m_shownRoom = room;
    const QString across = QStringLiteral(QT_TRANSLATE_NOOP(
        "PluginLocale",
        "The left and right margins add up to 100 % or more: the image has no width left on the "
        "page."));
    const QString down = QStringLiteral(QT_TRANSLATE_NOOP(
        "PluginLocale",
        "The top and bottom margins add up to 100 % or more: the image has no height left on the "
        "page."));
    // The texts are looked up only for a pair that has no room.
    const QString whyAcross = room.noRoomAcross ? loadAppString(across, across) : QString();
    const QString whyDown = room.noRoomDown ? loadAppString(down, down) : QString();
    for (QLineEdit *field : {m_outlets.left.data(), m_outlets.right.data()})
        RoomMark::setMarked(field, room.noRoomAcross, whyAcross);
    for (QLineEdit *field : {m_outlets.top.data(), m_outlets.bottom.data()})
        RoomMark::setMarked(field, room.noRoomDown, whyDown);
}

void PositionForm::showTransparency(float value)
{
    if (QSlider *slider = m_outlets.slider) {
        const QSignalBlocker quiet(slider);
        slider->setValue(qRound(double(value) * sliderScale(slider)));
    }
    if (m_outlets.transparency)
        m_outlets.transparency->setText(oneDecimal(value));
}

void PositionForm::selectLayer(int layer)
{
    if (!m_outlets.layers)
        return;
    m_selectingLayer = true;
    if (QAbstractButton *button = m_outlets.layers->button(layer))
        button->setChecked(true);
    m_selectingLayer = false;
}

int PositionForm::chosenLayer() const
{
    const int layer = m_outlets.layers ? m_outlets.layers->checkedId() : -1;
    return layer < 0 ? 0 : layer;
}

bool PositionForm::readField(QLineEdit *field, PositionRect *record)
{
    if (!field)
        return false;
    void (PositionRect::*setter)(float) = nullptr;
    if (field == m_outlets.left)
        setter = &PositionRect::setLeft;
    else if (field == m_outlets.top)
        setter = &PositionRect::setTop;
    else if (field == m_outlets.right)
        setter = &PositionRect::setRight;
    else if (field == m_outlets.bottom)
        setter = &PositionRect::setBottom;
    else if (field != m_outlets.transparency)
        return false;

    const QString filtered = filteredNumber(field->text());
    if (filtered != field->text())
        field->setText(filtered);
    const float value = NumberText::floatValue(filtered);
    if (setter) {
        (record->*setter)(value);
        showMarginRoom(*record);
    } else {
        record->setTransparency(value);
        if (QSlider *slider = m_outlets.slider) {
            const QSignalBlocker quiet(slider);
            slider->setValue(qRound(NumberText::doubleValue(filtered) * sliderScale(slider)));
        }
    }
    return true;
}

void PositionForm::readSlider(PositionRect *record)
{
    QSlider *slider = m_outlets.slider;
    if (!slider)
        return;
    const double value = slider->value() / sliderScale(slider);
    if (m_outlets.transparency)
        m_outlets.transparency->setText(oneDecimal(value));
    record->setTransparency(float(value));
}

PositionHistory::Edit PositionForm::editOf(const QLineEdit *field) const
{
    if (field == m_outlets.left)
        return PositionHistory::Edit::TypeLeft;
    if (field == m_outlets.top)
        return PositionHistory::Edit::TypeTop;
    if (field == m_outlets.right)
        return PositionHistory::Edit::TypeRight;
    if (field == m_outlets.bottom)
        return PositionHistory::Edit::TypeBottom;
    return PositionHistory::Edit::TypeTransparency;
}
