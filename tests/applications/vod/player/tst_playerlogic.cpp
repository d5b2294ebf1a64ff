// The players' arithmetic on the design's examples: where a seek lands, what
// a pause's position resumes at, how far the progress bar reaches.

#include "player/playerlogic.h"

#include <QTest>

#include <limits>

using PlayerLogic::SeekDirection;

Q_DECLARE_METATYPE(SeekDirection)

class tst_PlayerLogic : public QObject
{
    Q_OBJECT

private slots:
    void seekTarget_data();
    void seekTarget();
    void timeSplits();
    void progress_data();
    void progress();
};

void tst_PlayerLogic::seekTarget_data()
{
    QTest::addColumn<SeekDirection>("direction");
    QTest::addColumn<quint32>("current");
    QTest::addColumn<quint32>("seconds");
    QTest::addColumn<quint32>("total");
    QTest::addColumn<qint64>("target"); // -1: no request

    const SeekDirection F = SeekDirection::Forward, R = SeekDirection::Reverse;
    QTest::newRow("three presses forward") << F << 20345u << 15u << 60000u << qint64(35345);
    QTest::newRow("past the end: a second before it") << F << 10000u << 5u << 12000u << qint64(11000);
    QTest::newRow("the unsigned sum wraps") << F << 0xfffffc18u << 5u << 60000u << qint64(4000);
    QTest::newRow("on one second") << F << 0u << 5u << 1000u << qint64(1000);
    QTest::newRow("shorter than a second") << F << 0u << 5u << 500u << qint64(-1);
    QTest::newRow("no length") << F << 0u << 5u << 0u << qint64(-1);
    QTest::newRow("back from 3 s: below 0, then 1 s") << R << 3000u << 5u << 60000u << qint64(1000);
    QTest::newRow("back to exactly 0: 1 s") << R << 5000u << 5u << 60000u << qint64(1000);
    QTest::newRow("back within") << R << 40500u << 10u << 60000u << qint64(30500);
    QTest::newRow("back, no length") << R << 3000u << 5u << 0u << qint64(-1);
}

void tst_PlayerLogic::seekTarget()
{
    QFETCH(SeekDirection, direction);
    QFETCH(quint32, current);
    QFETCH(quint32, seconds);
    QFETCH(quint32, total);
    QFETCH(qint64, target);
    const std::optional<quint32> t = PlayerLogic::seekTarget(direction, current, seconds, total);
    QCOMPARE(t ? qint64(*t) : -1, target);
}

// A report's time in single precision, a pause's position through double:
// 2.3 s is 2299 ms resumed; a day or more is no time; any float is safe.
void tst_PlayerLogic::timeSplits()
{
    QCOMPARE(PlayerLogic::pausedPositionMsecs(3723.25f), 3723250u);
    QCOMPARE(PlayerLogic::pausedPositionMsecs(2.3f), 2299u);
    QCOMPARE(PlayerLogic::reportedTime(59.5f), QTime(0, 0, 59, 500));
    QCOMPARE(PlayerLogic::clockText(PlayerLogic::reportedTime(3723.45f)), QStringLiteral("01:02:03"));
    QVERIFY(!PlayerLogic::reportedTime(86400.0f).isValid());
    QCOMPARE(PlayerLogic::clockText(QTime()), QString());
    QCOMPARE(PlayerLogic::truncated(std::numeric_limits<double>::quiet_NaN()), 0);
    QCOMPARE(PlayerLogic::truncated(1e30), std::numeric_limits<int>::max());
    const PlayerLogic::Clock negative = PlayerLogic::splitClock(-3723, -1500);
    QCOMPARE(negative.hours, -1);
    QCOMPARE(negative.seconds, -3);
    QCOMPARE(negative.msecs, -500);
}

void tst_PlayerLogic::progress_data()
{
    QTest::addColumn<QString>("length");
    QTest::addColumn<quint32>("current");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("width"); // on the first paint after a report

    QTest::newRow("100 s at 10 s") << "00:01:40" << 10000u << 2 << 22;
    QTest::newRow("100 s at 50 s") << "00:01:40" << 50000u << 2 << 105;
    QTest::newRow("an hour: no step") << "01:00:00" << 1800000u << 0 << 103;
    QTest::newRow("no length") << "" << 5000u << 0 << 0;
    QTest::newRow("zero length") << "00:00:00" << 0u << 0 << 0;
}

void tst_PlayerLogic::progress()
{
    QFETCH(QString, length);
    QFETCH(quint32, current);
    QFETCH(int, step);
    QFETCH(int, width);
    const QTime time = QTime::fromString(length, QStringLiteral("hh:mm:ss"));
    QCOMPARE(PlayerLogic::progressStepFor(time, 206), step);
    QCOMPARE(PlayerLogic::progressWidth(step, 206, current, PlayerLogic::totalTimeMsecs(time)), width);
    QCOMPARE(PlayerLogic::nextAnimationFrame(4), 1u);
}

QTEST_APPLESS_MAIN(tst_PlayerLogic)
#include "tst_playerlogic.moc"
