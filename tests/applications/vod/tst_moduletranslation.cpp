#include "moduletranslation.h"
#include "player/vodplayview.h"
#include "push/videopushview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "testenvironment.h"

#include "qnoticedialog.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QTest>

#include <memory>

namespace {
QString spoken(QWidget *w, QAccessible::Text t)
{
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(w);
    return iface ? iface->text(t) : QString();
}

const QString PushApp = QLatin1String(VodChannel::PushApplication);
}

// The module's Korean translation, compiled into the library, as a user who
// switches the language sees it: window titles, notices and player texts.
class tst_ModuleTranslation : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }
    void cleanup()
    {
        ModuleTranslation::remove();
        QCOMPARE(deleteLeakedTopLevels(), 0);
    }

    void install_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<bool>("installed");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("title");

        const QString korean = QStringLiteral("동영상 콘텐츠;방송");
        const QString english = QStringLiteral("Video Contents;Broadcast");
        QTest::newRow("ko") << "ko" << true << "ko" << korean;
        QTest::newRow("ko_KR") << "ko_KR" << true << "ko" << korean;
        QTest::newRow("ko_KR.UTF-8") << "ko_KR.UTF-8" << true << "ko" << korean;
        QTest::newRow("en") << "en" << true << "" << english;
        QTest::newRow("C") << "C" << true << "" << english;
        QTest::newRow("no translation") << "fr_FR" << false << "" << english;
        QTest::newRow("no locale") << "klingon" << false << "" << english;
    }

    // Each case starts from Korean, so a failed or English install must also
    // take the Korean translation away.
    void install()
    {
        QFETCH(QString, locale);
        QFETCH(bool, installed);
        QFETCH(QString, language);
        QFETCH(QString, title);

        QVERIFY(ModuleTranslation::install(QStringLiteral("ko")));
        QCOMPARE(ModuleTranslation::install(locale), installed);
        QCOMPARE(ModuleTranslation::installedLanguage(), language);

        VideoPushView view(nullptr, Qt::WindowFlags());
        QCOMPARE(view.windowTitle(), title);
    }

    void noticesInKorean()
    {
        QVERIFY(ModuleTranslation::install(QStringLiteral("ko")));
        NoticeRecorder recorder;
        auto *view = new VideoPushView(nullptr, Qt::WindowFlags());
        const QPointer<VideoPushView> guard(view);
        // The broadcast has no slot now: a warning, and the window closes.
        view->setAttribute(Qt::WA_DeleteOnClose);
        deliver(PushApp, QLatin1String(VodMessage::SetupFailPush), messageData(1));
        QCOMPARE(recorder.notices.size(), 1);
        QCOMPARE(recorder.notices.at(0).text, QStringLiteral("방송 시간이 아닙니다"));
        QTRY_VERIFY(!guard);

        // The pop-up's own title.
        QNoticeDialog dialog(QNoticeDialog::Notice{QNoticeDialog::Warning, nullptr, QStringLiteral("x"), {}, 3});
        QCOMPARE(dialog.windowTitle(), QStringLiteral("경고"));
    }

    // A player that is already open follows the switch with its spoken texts.
    void openPlayerFollowsSwitch()
    {
        VodPlaySmallScreenView player(nullptr, nullptr);
        player.show();
        QVERIFY(QTest::qWaitForWindowExposed(&player));
        QCOMPARE(spoken(&player, QAccessible::Name), QStringLiteral("Video: Stopped"));

        QVERIFY(ModuleTranslation::install(QStringLiteral("ko")));
        QTRY_COMPARE(spoken(&player, QAccessible::Name), QStringLiteral("동영상: 정지됨"));
        QVERIFY(spoken(&player, QAccessible::Description).startsWith(QStringLiteral("음량 ")));

        ModuleTranslation::remove();
        QTRY_COMPARE(spoken(&player, QAccessible::Name), QStringLiteral("Video: Stopped"));
    }
};

QTEST_MAIN(tst_ModuleTranslation)
#include "tst_moduletranslation.moc"
