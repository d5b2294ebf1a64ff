#include "player/playeraccessibility.h"
#include "vodplayer/vodplayfullscreenview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include "devicekeys.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "testenvironment.h"

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QSettings>
#include <QTest>

#include <memory>

namespace {

// What assistive tools hear through Qt's accessibility layer.
QString spoken(QWidget *w, QAccessible::Text t)
{
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(w);
    return iface ? iface->text(t) : QString();
}

} // namespace

Q_DECLARE_METATYPE(playScreenType)
Q_DECLARE_METATYPE(VodPlayView::playScreenStatus)

class tst_PlayerAccessibility : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void init() { QSettings(QStringLiteral("Trolltech"), QStringLiteral("Sound")).clear(); }
    void cleanup()
    {
        QCOMPARE(deleteLeakedTopLevels(), 0);
    }

    void texts_data()
    {
        QTest::addColumn<playScreenType>("type");
        QTest::addColumn<VodPlayView::playScreenStatus>("status");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("elapsed");
        QTest::addColumn<QString>("total");
        QTest::addColumn<int>("volume");
        QTest::addColumn<bool>("mute");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("description");

        const QString t = QStringLiteral("00:01:05");
        const QString len = QStringLiteral("00:10:00");
        QTest::newRow("small stopped") << SmallVodScreen << VodPlayView::Stopped << "" << "" << "" << 9 << false
                                       << "Video: Stopped" << "Volume 9 of 16. Select: play, Back: close.";
        QTest::newRow("small playing") << SmallVodScreen << VodPlayView::Playing << "News" << t << len << 8 << false
                                       << "News: Playing"
                                       << "Time 00:01:05 of 00:10:00. Volume 8 of 16. Select: pause, "
                                          "Context 1: forward, Context 2: rewind, Back: stop, Full: full screen.";
        QTest::newRow("small paused, muted") << SmallVodScreen << VodPlayView::Paused << "News" << t << len << 8 << true
                                             << "News: Paused"
                                             << "Time 00:01:05 of 00:10:00. Volume 8 of 16, muted. "
                                                "Select: resume, Back: stop.";
        QTest::newRow("full playing") << FullVodScreen << VodPlayView::Playing << "" << t << len << 3 << false
                                      << "Video: Playing"
                                      << "Time 00:01:05 of 00:10:00. Volume 3 of 16. Key 1: rewind, Key 2: pause, "
                                         "Key 3: forward, Max: wide picture.";
        QTest::newRow("full paused") << FullVodScreen << VodPlayView::Paused << "" << "" << "" << 3 << true
                                     << "Video: Paused" << "Volume 3 of 16, muted. Key 2: resume, Key 3: stop.";
        QTest::newRow("push playing") << SmallPushScreen << VodPlayView::Playing << "" << "" << "" << 1 << false
                                      << "Broadcast: Playing" << "Volume 1 of 16. Back: stop, Full: full screen.";
        QTest::newRow("push wide paused") << WidePushScreen << VodPlayView::Paused << "" << "" << "" << 2 << true
                                          << "Broadcast: Paused" << "Volume 2 of 16, muted. Key 3: stop.";
    }

    void texts()
    {
        QFETCH(playScreenType, type);
        QFETCH(VodPlayView::playScreenStatus, status);
        QFETCH(QString, title);
        QFETCH(QString, elapsed);
        QFETCH(QString, total);
        QFETCH(int, volume);
        QFETCH(bool, mute);
        QFETCH(QString, name);
        QFETCH(QString, description);

        PlayerAccessibility::State state;
        state.type = type;
        state.status = status;
        state.title = title;
        state.elapsed = elapsed;
        state.total = total;
        state.volume = volume;
        state.mute = mute;
        QCOMPARE(PlayerAccessibility::name(state), name);
        QCOMPARE(PlayerAccessibility::description(state), description);
    }

    // The small VOD player and the full-screen player it opens follow the
    // notifications, time reports and volume keys.
    void vodPlayersFollow()
    {
        VodPlaySmallScreenView player(nullptr, nullptr);
        player.setTotalTime(QStringLiteral("00:10:00"));
        player.setContentTitle(QStringLiteral("News"));
        player.show();
        QVERIFY(QTest::qWaitForWindowExposed(&player));
        QCOMPARE(spoken(&player, QAccessible::Name), QStringLiteral("News: Stopped"));

        const auto notify = [&player](const char *message, const QByteArray &data = QByteArray()) {
            player.messageHandle(QLatin1String(message), data);
        };
        notify(VodMessage::StartOKVod);
        QCOMPARE(spoken(&player, QAccessible::Name), QStringLiteral("News: Playing"));

        notify(VodMessage::CurrentTime, messageData(65.4f));
        QVERIFY2(spoken(&player, QAccessible::Description).startsWith(QStringLiteral("Time 00:01:05 of 00:10:00. Volume 9 of 16. ")),
                 qPrintable(spoken(&player, QAccessible::Description)));

        notify(VodMessage::VodSoundMute, messageData(1));
        QVERIFY(spoken(&player, QAccessible::Description).contains(QStringLiteral("Volume 9 of 16, muted.")));
        pressKey(&player, Qt::Key_VolumeUp);
        QVERIFY2(spoken(&player, QAccessible::Description).contains(QStringLiteral("Volume 10 of 16. ")),
                 qPrintable(spoken(&player, QAccessible::Description)));

        // The full-screen player starts with the state it is handed.
        player.playScreenReady = true;
        pressKey(&player, Key_Video4);
        VodPlayFullScreenView *full = player.fullScreenView;
        QVERIFY(full);
        QCOMPARE(spoken(full, QAccessible::Name), QStringLiteral("News: Playing"));
        QVERIFY(spoken(full, QAccessible::Description).contains(QStringLiteral("Key 2: pause")));
        pressKey(full, Qt::Key_VolumeDown);
        QVERIFY(spoken(full, QAccessible::Description).contains(QStringLiteral("Volume 9 of 16. ")));
        // While it is shown the notifications reach it through the small player.
        notify(VodMessage::PauseOKVod, messageData(70.0f));
        QCOMPARE(spoken(full, QAccessible::Name), QStringLiteral("News: Paused"));
        QVERIFY(spoken(full, QAccessible::Description).endsWith(QStringLiteral("Key 2: resume, Key 3: stop.")));

        // Back in the small player, with the state handed back.
        pressKey(full, Key_Video3);
        QCOMPARE(spoken(&player, QAccessible::Name), QStringLiteral("News: Stopping"));
        notify(VodMessage::EndOKVod);
    }
};

QTEST_MAIN(tst_PlayerAccessibility)
#include "tst_playeraccessibility.moc"
