// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Which pairs of margins leave the image no room on the page, judged as the fields read.

#include "marginroom.h"
#include "positionrect.h"

#include <QtTest>

#include <limits>

class TestMarginRoom : public QObject
{
    Q_OBJECT

private slots:
    void pairs_data();
    void pairs();
    void eachPairIsJudgedAlone_data();
    void eachPairIsJudgedAlone();
};

void TestMarginRoom::pairs_data()
{
    QTest::addColumn<float>("first");
    QTest::addColumn<float>("second");
    QTest::addColumn<bool>("noRoom");
    const float inf = std::numeric_limits<float>::infinity();
    QTest::newRow("zero margins leave the whole page") << 0.0f << 0.0f << false;
    QTest::newRow("99.9 leaves a tenth") << 49.9f << 50.0f << false;
    QTest::newRow("exactly 100 leaves none") << 50.0f << 50.0f << true;
    QTest::newRow("one margin of 100 leaves none") << 100.0f << 0.0f << true;
    QTest::newRow("more than 100 leaves none") << 70.0f << 45.5f << true;
    QTest::newRow("values reading 50.0 twice leave none") << 49.96f << 50.0f << true;
    QTest::newRow("values reading 49.9 and 50.0 leave a tenth") << 49.94f << 50.04f << false;
    QTest::newRow("a negative margin gives room back") << -10.0f << 105.0f << false;
    QTest::newRow("an endless margin leaves none") << inf << 0.0f << true;
    // 0.25 is exact in binary; the fields and the position file show it as 0.3, halves rounded
    // away from zero: with 99.7 it leaves no room, with 99.6 a tenth.
    QTest::newRow("an exact tie reads as the fields show it") << 0.25f << 99.7f << true;
    QTest::newRow("an exact tie with a tenth to spare") << 0.25f << 99.6f << false;
    QTest::newRow("a negative exact tie reads away from zero") << -0.25f << 100.2f << false;
    QTest::newRow("a huge margin leaves none") << 1e30f << 0.0f << true;
    QTest::newRow("the largest margin leaves none")
        << std::numeric_limits<float>::max() << 0.0f << true;
    QTest::newRow("a huge negative margin gives room back") << -1e30f << 99.0f << false;
    QTest::newRow("a margin that is no number counts as none")
        << std::numeric_limits<float>::quiet_NaN() << 99.0f << false;
}

void TestMarginRoom::pairs()
{
    QFETCH(float, first);
    QFETCH(float, second);
    QFETCH(bool, noRoom);
    QCOMPARE(MarginRoom::pairHasNoRoom(first, second), noRoom);
    QCOMPARE(MarginRoom::pairHasNoRoom(second, first), noRoom);
}

void TestMarginRoom::eachPairIsJudgedAlone_data()
{
    QTest::addColumn<QList<float>>("ltrb");
    QTest::addColumn<bool>("across");
    QTest::addColumn<bool>("down");
    QTest::newRow("room both ways") << QList<float>{10, 10, 10, 10} << false << false;
    QTest::newRow("left and right fill the width") << QList<float>{60, 10, 40, 10} << true << false;
    QTest::newRow("top and bottom fill the height")
        << QList<float>{10, 80, 10, 20} << false << true;
    QTest::newRow("no room either way") << QList<float>{50, 50, 50, 50} << true << true;
    QTest::newRow("left and top do not make a pair")
        << QList<float>{90, 90, 5, 5} << false << false;
}

void TestMarginRoom::eachPairIsJudgedAlone()
{
    QFETCH(QList<float>, ltrb);
    QFETCH(bool, across);
    QFETCH(bool, down);
    PositionRect rect;
    rect.setLeft(ltrb[0]);
    rect.setTop(ltrb[1]);
    rect.setRight(ltrb[2]);
    rect.setBottom(ltrb[3]);
    const MarginRoom room = MarginRoom::of(rect);
    QCOMPARE(room.noRoomAcross, across);
    QCOMPARE(room.noRoomDown, down);
}

QTEST_GUILESS_MAIN(TestMarginRoom)
#include "tst_marginroom.moc"
