#include <QImage>
#include <QPixmap>
#include <QTest>

// The image set compiled into vodcore: every name the players draw resolves,
// without any resource initialisation in the program that links it.
class tst_VodImages : public QObject
{
    Q_OBJECT

private slots:
    void loads_data();
    void loads();
    void volumePointsFollowTheLevelColours();
};

void tst_VodImages::loads_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");

    QTest::newRow("play icon") << ":image/vod/vod_player_botton01.png" << QSize(71, 70);
    for (int i = 1; i <= 5; ++i)
        QTest::addRow("key icon %d", i)
            << QStringLiteral(":image/vod/vod_icon_botton%1.png").arg(i, 2, 10, QLatin1Char('0'))
            << QSize(20, 20);
    QTest::newRow("time icon") << ":image/vod/vod_icon_time.png" << QSize(24, 24);
    QTest::newRow("title icon") << ":image/vod/vod_icon_title.png" << QSize(24, 24);
    QTest::newRow("bar tile") << ":image/vod/vod_bar_bg.png" << QSize(1, 3);
    QTest::newRow("volume icon") << ":image/vod/vod_icon_volume.png" << QSize(24, 22);
    QTest::newRow("mute icon") << ":image/vod/vod_icon_volume_none.png" << QSize(24, 22);
    for (int i = 1; i <= 16; ++i)
        QTest::addRow("volume point %d", i)
            << QStringLiteral(":image/vod/volume_bar_point_%1").arg(i, 2, 10, QLatin1Char('0'))
            << QSize(12, 3);
    QTest::newRow("first point, overlay") << ":image/vod/volume_bar_point_01_full" << QSize(12, 3);
    QTest::newRow("last point, overlay") << ":image/vod/volume_bar_point_16_full" << QSize(12, 3);
    for (int i = 1; i <= 4; ++i)
        QTest::addRow("animation frame %d", i)
            << QStringLiteral(":image/vod/aniicon_vod_0%1.png").arg(i) << QSize(64, 76);
    QTest::newRow("strip tile") << ":image/common/05_Calllog_number_bg01.png" << QSize(4, 41);
    QTest::newRow("strip cell, playing") << ":image/common/05_Calllog_number_bg02.png" << QSize(88, 41);
    QTest::newRow("strip cell, idle") << ":image/common/buddylist_messagebar_bg01.png" << QSize(88, 41);
    QTest::newRow("vertical line") << ":image/vod/line_vertical.png" << QSize(2, 209);
}

void tst_VodImages::loads()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);

    const QPixmap pixmap(name);
    QVERIFY2(!pixmap.isNull(), qPrintable(name));
    QCOMPARE(pixmap.size(), size);
    // Every picture draws something.
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    bool painted = false;
    for (int y = 0; y < image.height() && !painted; ++y)
        for (int x = 0; x < image.width() && !painted; ++x)
            painted = qAlpha(image.pixel(x, y)) != 0;
    QVERIFY(painted);
}

void tst_VodImages::volumePointsFollowTheLevelColours()
{
    // A point shows its level's colour in its middle row.
    const QImage low(QStringLiteral(":image/vod/volume_bar_point_01"));
    const QImage high(QStringLiteral(":image/vod/volume_bar_point_16"));
    QCOMPARE(low.pixelColor(5, 1), QColor(88, 30, 152));
    QCOMPARE(high.pixelColor(5, 1), QColor(255, 255, 63));
}

QTEST_MAIN(tst_VodImages)
#include "tst_vodimages.moc"
