// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The mark of a margin field without room: legible on light and dark palettes, and gone without a
// trace once cleared.

#include "roommark.h"
#include "testenv.h"

#include <QApplication>
#include <QLineEdit>
#include <QtTest>

#include <cmath>

namespace {

// WCAG's relative luminance and contrast ratio.
double luminance(const QColor &color)
{
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double la = luminance(a), lb = luminance(b);
    return (qMax(la, lb) + 0.05) / (qMin(la, lb) + 0.05);
}

QPalette palette(const QColor &base, const QColor &text)
{
    QPalette p;
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::Text, text);
    return p;
}

} // namespace

class TestRoomMark : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestEnv::isolate(); }
    void markIsVisibleAndLegible_data();
    void markIsVisibleAndLegible();
    void clearingGivesTheFieldBackItsOwnTipAndPalette();
    void markFollowsTheReason();
};

void TestRoomMark::markIsVisibleAndLegible_data()
{
    QTest::addColumn<QPalette>("plain");
    QTest::newRow("light palette") << palette(Qt::white, Qt::black);
    QTest::newRow("dark palette") << palette(QColor(30, 30, 30), QColor(240, 240, 240));
    QTest::newRow("grey dark palette") << palette(QColor(53, 53, 53), Qt::white);
    QTest::newRow("warm light palette") << palette(QColor(255, 250, 235), QColor(40, 40, 40));
}

void TestRoomMark::markIsVisibleAndLegible()
{
    QFETCH(QPalette, plain);
    const QPalette marked = RoomMark::markedPalette(plain);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor base = marked.color(group, QPalette::Base);
        QCOMPARE(marked.color(group, QPalette::Text), plain.color(group, QPalette::Text));
        QVERIFY2(base.red() > base.green() + 20, qPrintable(base.name())); // reads as red
        QVERIFY2(contrast(base, plain.color(group, QPalette::Base)) > 1.15,
                 qPrintable(base.name()));
        QVERIFY2(contrast(base, marked.color(group, QPalette::Text)) >= 4.5,
                 qPrintable(base.name()));
    }
}

void TestRoomMark::clearingGivesTheFieldBackItsOwnTipAndPalette()
{
    QWidget window;
    window.setPalette(palette(QColor(30, 30, 30), Qt::white));
    auto *field = new QLineEdit(&window);
    field->setToolTip("own tip");
    RoomMark::setMarked(field, true, "no room");
    QVERIFY(RoomMark::isMarked(field));
    QCOMPARE(field->toolTip(), QStringLiteral("no room"));
    QVERIFY(field->palette().color(QPalette::Base) != window.palette().color(QPalette::Base));
    QTest::keyClicks(field, "55");
    QCOMPARE(field->text(), QStringLiteral("55")); // still takes input

    RoomMark::setMarked(field, false, QString());
    QVERIFY(!RoomMark::isMarked(field));
    QCOMPARE(field->toolTip(), QStringLiteral("own tip"));
    QVERIFY(!field->testAttribute(Qt::WA_SetPalette));
    // Inherited again: a later palette of the window reaches the field.
    window.setPalette(palette(Qt::white, Qt::black));
    QCOMPARE(field->palette().color(QPalette::Base), QColor(Qt::white));
}

void TestRoomMark::markFollowsTheReason()
{
    QLineEdit field;
    RoomMark::setMarked(&field, true, "first");
    const QColor tinted = field.palette().color(QPalette::Base);
    RoomMark::setMarked(&field, true, "second");
    QCOMPARE(field.toolTip(), QStringLiteral("second"));
    // Marking again does not tint the tint.
    QCOMPARE(field.palette().color(QPalette::Base), tinted);
    RoomMark::setMarked(&field, false, QString());
    QVERIFY(field.toolTip().isEmpty());
}

QTEST_MAIN(TestRoomMark)
#include "tst_roommark.moc"
