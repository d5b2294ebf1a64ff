#include "player/playerlogic.h"
#include "player/vodplayview.h"

#include <QTest>

using PlayerLogic::SeekDirection;

Q_DECLARE_METATYPE(SeekDirection)
Q_DECLARE_METATYPE(playScreenType)

class tst_PlayerLogic : public QObject
{
    Q_OBJECT

private slots:
    void seekTarget_data();
    void seekTarget();
    void pausedPosition_data();
    void pausedPosition();
    void clockText_data();
    void clockText();
    void videoWindowRect_data();
    void videoWindowRect();
    void volumeColor_data();
    void volumeColor();
    void volumePointImages_data();
    void volumePointImages();
};

void tst_PlayerLogic::seekTarget_data()
{
    QTest::addColumn<SeekDirection>("direction");
    QTest::addColumn<quint32>("current");
    QTest::addColumn<quint32>("seconds");
    QTest::addColumn<quint32>("total");
    QTest::addColumn<bool>("sent");
    QTest::addColumn<quint32>("target");

    const auto F = SeekDirection::Forward;
    const auto R = SeekDirection::Reverse;
    QTest::newRow("forward three presses") << F << 20000u << 15u << 60000u << true << 35000u;
    QTest::newRow("forward keeps milliseconds") << F << 20345u << 5u << 60000u << true << 25345u;
    QTest::newRow("forward past the end") << F << 10000u << 5u << 12000u << true << 11000u;
    QTest::newRow("forward exactly to the end") << F << 55000u << 5u << 60000u << true << 59000u;
    QTest::newRow("forward wraps the unsigned sum")
        << F << 0xFFFFF000u << 5u << 60000u << true << 904u;
    QTest::newRow("forward on one second lands on 1 s") << F << 0u << 5u << 1000u << true << 1000u;
    QTest::newRow("forward on half a second") << F << 0u << 5u << 500u << false << 0u;
    QTest::newRow("forward without a length") << F << 0u << 5u << 0u << false << 0u;
    QTest::newRow("reverse from 3 s") << R << 3000u << 5u << 60000u << true << 1000u;
    QTest::newRow("reverse to exactly 0") << R << 5000u << 5u << 60000u << true << 1000u;
    QTest::newRow("reverse within the content") << R << 40500u << 10u << 60000u << true << 30500u;
    QTest::newRow("reverse from beyond the end") << R << 90000u << 5u << 60000u << true << 1000u;
    QTest::newRow("reverse without a length") << R << 3000u << 5u << 0u << false << 0u;
    QTest::newRow("reverse on half a second") << R << 300u << 5u << 500u << false << 0u;
}

void tst_PlayerLogic::seekTarget()
{
    QFETCH(SeekDirection, direction);
    QFETCH(quint32, current);
    QFETCH(quint32, seconds);
    QFETCH(quint32, total);
    QFETCH(bool, sent);
    QFETCH(quint32, target);

    const std::optional<quint32> result = PlayerLogic::seekTarget(direction, current, seconds, total);
    QCOMPARE(result.has_value(), sent);
    if (sent)
        QCOMPARE(*result, target);
}

void tst_PlayerLogic::pausedPosition_data()
{
    QTest::addColumn<float>("seconds");
    QTest::addColumn<quint32>("msecs");

    QTest::newRow("zero") << 0.0f << 0u;
    QTest::newRow("83.5") << 83.5f << 83500u;
    QTest::newRow("hour minute second") << 3723.25f << 3723250u;
    QTest::newRow("float below its decimal truncates") << 2.3f << 2299u;
}

void tst_PlayerLogic::pausedPosition()
{
    QFETCH(float, seconds);
    QFETCH(quint32, msecs);
    QCOMPARE(PlayerLogic::pausedPositionMsecs(seconds), msecs);
}

void tst_PlayerLogic::clockText_data()
{
    QTest::addColumn<QTime>("time");
    QTest::newRow("milliseconds not shown") << QTime(1, 2, 3, 999);
    QTest::newRow("a day or more is invalid") << PlayerLogic::reportedTime(86400.0f);
    QTest::newRow("null") << QTime();
}

// The read-out is the text that QTime::toString gives for the format.
void tst_PlayerLogic::clockText()
{
    QFETCH(QTime, time);
    QCOMPARE(PlayerLogic::clockText(time), time.toString(QStringLiteral("hh:mm:ss")));
}

void tst_PlayerLogic::videoWindowRect_data()
{
    QTest::addColumn<playScreenType>("type");
    QTest::addColumn<QRect>("rect");

    QTest::newRow("small vod") << SmallVodScreen << QRect(8, 39, 256, 194);
    QTest::newRow("small push") << SmallPushScreen << QRect(8, 39, 256, 194);
    QTest::newRow("full vod") << FullVodScreen << QRect(0, 0, 363, 272);
    QTest::newRow("full push") << FullPushScreen << QRect(0, 0, 363, 272);
    QTest::newRow("wide vod") << WideVodScreen << QRect(0, 0, 480, 271);
    QTest::newRow("wide push") << WidePushScreen << QRect(0, 0, 480, 271);
    QTest::newRow("not a kind") << playScreenType(6) << QRect();
}

void tst_PlayerLogic::videoWindowRect()
{
    QFETCH(playScreenType, type);
    QFETCH(QRect, rect);
    QCOMPARE(PlayerLogic::videoWindowRect(type), rect);
}

void tst_PlayerLogic::volumeColor_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QColor>("color");

    QTest::newRow("1") << 1 << QColor(88, 30, 152);
    QTest::newRow("9") << 9 << QColor(220, 65, 64);
    QTest::newRow("16") << 16 << QColor(255, 255, 63);
    QTest::newRow("0 is invalid") << 0 << QColor();
    QTest::newRow("17 is invalid") << 17 << QColor();
}

void tst_PlayerLogic::volumeColor()
{
    QFETCH(int, level);
    QFETCH(QColor, color);
    QCOMPARE(VodPlayView::volumeColor(level), color);
}

void tst_PlayerLogic::volumePointImages_data()
{
    // The small read-out's bar and the full-screen overlay's differ only at the ends.
    QTest::addColumn<int>("point");
    QTest::addColumn<QString>("small");
    QTest::addColumn<QString>("overlay");
    QTest::newRow("1") << 1 << ":image/vod/volume_bar_point_01" << ":image/vod/volume_bar_point_01_full";
    QTest::newRow("2") << 2 << ":image/vod/volume_bar_point_02" << ":image/vod/volume_bar_point_02";
    QTest::newRow("10") << 10 << ":image/vod/volume_bar_point_10" << ":image/vod/volume_bar_point_10";
    QTest::newRow("16") << 16 << ":image/vod/volume_bar_point_16" << ":image/vod/volume_bar_point_16_full";
}

void tst_PlayerLogic::volumePointImages()
{
    QFETCH(int, point);
    QFETCH(QString, small);
    QFETCH(QString, overlay);
    QCOMPARE(PlayerLogic::volumePointImage(point), small);
    QCOMPARE(PlayerLogic::overlayPointImage(point), overlay);
}

QTEST_GUILESS_MAIN(tst_PlayerLogic)
#include "tst_playerlogic.moc"
