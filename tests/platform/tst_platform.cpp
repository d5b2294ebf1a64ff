// The platform layer the module calls: channels and envelopes on the
// in-process transport, the notice and wait pop-ups, soft-key labels, the
// value space, category logging, device paths. (EUC-KR names show in the
// browser's tests and the storyboard.)

#include "devicepath.h"
#include "noticewatcher.h"
#include "qlogbase.h"
#include "qnoticedialog.h"
#include "qsoftmenubar.h"
#include "qtopiachannel.h"
#include "qtopiaipcenvelope.h"
#include "qvaluespaceitem.h"
#include "qwaitwidget.h"
#include "testenvironment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLoggingCategory>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {
// Counts subscriptions and delivers nothing, to see what the channel layer asks
// of a transport.
class RecordingTransport : public QtopiaIpcTransport
{
public:
    QStringList subscribed;
    QStringList unsubscribed;
    void subscribe(const QString &c) override { subscribed << c; }
    void unsubscribe(const QString &c) override { unsubscribed << c; }

protected:
    void transmit(const QtopiaIpcMessage &) override {}
};

QTimer *activeTimerOf(QWaitWidget &w)
{
    for (QTimer *t : w.findChildren<QTimer *>()) {
        if (t->isActive())
            return t;
    }
    return nullptr;
}
} // namespace

class tst_Platform : public QObject
{
    Q_OBJECT

private slots:
    void init() { QtopiaIpcTransport::clearTraffic(); }
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void envelopesAndChannels();
    void listenersComeAndGo();
    void notices();
    void waitPopUp_data();
    void waitPopUp();
    void smallServices();
};

// A message leaves when its envelope goes, and arrives through the event loop,
// in sending order, at every listener of its channel and no other.
void tst_Platform::envelopesAndChannels()
{
    QtopiaChannel first("QPE/Order", nullptr);
    QtopiaChannel second("QPE/Order", nullptr);
    QtopiaChannel other("QPE/Other", nullptr);
    QStringList seen;
    connect(&first, &QtopiaChannel::received, this, [&](const QString &m, const QByteArray &d) {
        seen << "1:" + m + ' ' + QString::fromLatin1(d.toHex());
    });
    connect(&second, &QtopiaChannel::received, this, [&](const QString &m) { seen << "2:" + m; });
    QSignalSpy elsewhere(&other, &QtopiaChannel::received);
    {
        QtopiaIpcEnvelope e("QPE/Order", "a(int,float,QString)");
        e << 7 << 12.5f << QString("x");
        QVERIFY(QtopiaIpcTransport::traffic().isEmpty());
    }
    QtopiaIpcEnvelope("QPE/Order", "b()");
    QVERIFY(seen.isEmpty());
    QTRY_COMPARE(seen.size(), 4);
    QCOMPARE(seen, (QStringList{"1:a(int,float,QString) 000000074148000000000002" "0078", "2:a(int,float,QString)",
                                "1:b() ", "2:b()"}));
    QCOMPARE(elsewhere.size(), 0);
}

// The transport hears of a channel's first listener and its last; a listener
// deleted by an earlier one in the same delivery is skipped.
void tst_Platform::listenersComeAndGo()
{
    RecordingTransport transport;
    QtopiaIpcTransport::setInstance(&transport);
    {
        QtopiaChannel a("QPE/Sub", nullptr);
        auto *owner = new QObject;
        new QtopiaChannel("QPE/Sub", owner);
        QCOMPARE(transport.subscribed, QStringList{"QPE/Sub"});
        delete owner;
        QVERIFY(transport.unsubscribed.isEmpty());
        QVERIFY(QtopiaChannel::isListening("QPE/Sub"));
    }
    QCOMPARE(transport.unsubscribed, QStringList{"QPE/Sub"});
    QVERIFY(!QtopiaChannel::isListening("QPE/Sub"));
    QtopiaIpcTransport::setInstance(nullptr);

    QtopiaChannel killer("QPE/Del", nullptr);
    QPointer<QtopiaChannel> victim = new QtopiaChannel("QPE/Del", nullptr);
    int victimCalls = 0;
    connect(victim, &QtopiaChannel::received, this, [&] { ++victimCalls; });
    connect(&killer, &QtopiaChannel::received, this, [&] { delete victim; });
    deliver("QPE/Del", "x()");
    QVERIFY(!victim);
    QCOMPARE(victimCalls, 0);
}

// A notice returns when a key or its time dismisses it; one asked for over a
// window that has one up takes that one's place and returns at once; a window
// deleted under its notice closes it.
void tst_Platform::notices()
{
    NoticeWatcher watcher(5000);
    QWidget window;
    QStringList shownTexts;
    QTimer::singleShot(0, this, [&] {
        auto *notice = qobject_cast<QNoticeDialog *>(QApplication::activeModalWidget());
        QVERIFY(notice);
        shownTexts << notice->findChild<QLabel *>("text")->text();
        QCOMPARE(QNoticeDialog::information(&window, "Second", QString(), 3), int(QDialog::Rejected));
        shownTexts << notice->findChild<QLabel *>("text")->text();
        QCOMPARE(notice->windowTitle(), QStringLiteral("Information"));
        QTest::sendKeyEvent(QTest::Click, notice, Qt::Key_Select, QString(), {});
    });
    QCOMPARE(QNoticeDialog::warning(&window, "First", "Detail", 3), int(QDialog::Accepted));
    QCOMPARE(shownTexts, (QStringList{"First", "Second"}));
    QCOMPARE(watcher.deepest, 1);
    QCOMPARE(watcher.seen.constFirst().kind, QNoticeDialog::Warning);
    QCOMPARE(watcher.seen.constFirst().detail, QStringLiteral("Detail"));

    auto *doomed = new QWidget;
    QTimer::singleShot(0, doomed, [doomed] { delete doomed; });
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(QNoticeDialog::information(doomed, "Gone", QString(), 2), int(QDialog::Rejected));
    QVERIFY(clock.elapsed() < 4000);

    qputenv("QPE_NOTICE_TIMEOUT", "10");
    QCOMPARE(QNoticeDialog::information(nullptr, "Unattended", QString(), 3), int(QDialog::Accepted));
}

void tst_Platform::waitPopUp_data()
{
    QTest::addColumn<bool>("resultOption");
    QTest::addColumn<QString>("resultText");
    QTest::addColumn<bool>("showsResult");
    QTest::newRow("result") << true << "Fail to Get List" << true;
    QTest::newRow("option off") << false << "Fail to Get List" << false;
    QTest::newRow("no result text") << true << QString() << false;
}

// Up, the pop-up is the active window; expiring it says timeOut() and then
// shows its result for a while, if it has one; closed, it never expires;
// Back cancels it only when allowed.
void tst_Platform::waitPopUp()
{
    QFETCH(bool, resultOption);
    QFETCH(QString, resultText);
    QFETCH(bool, showsResult);

    QWaitWidget w(nullptr);
    w.setText("Getting contents");
    w.setResultOption(resultOption);
    w.setResultText(resultText);
    w.setExpiryTime(5000);
    w.setCancelEnabled(false);
    QSignalSpy timedOut(&w, &QWaitWidget::timeOut);
    w.show();
    QTRY_VERIFY(w.isActiveWindow());
    pressKey(&w, Qt::Key_Back);
    QVERIFY(w.isVisible());
    QMetaObject::invokeMethod(activeTimerOf(w), "timeout");
    QCOMPARE(timedOut.size(), 1);
    QCOMPARE(w.isShowingResult(), showsResult);
    QCOMPARE(w.isVisible(), showsResult);
    if (showsResult) {
        QCOMPARE(w.findChild<QLabel *>()->text(), resultText);
        QMetaObject::invokeMethod(activeTimerOf(w), "timeout");
        QVERIFY(!w.isVisible());
    }

    w.show();
    QTimer *expiry = activeTimerOf(w);
    w.waitClose(1000);
    QVERIFY(!w.isVisible() && !expiry->isActive());
    w.setCancelEnabled(true);
    w.show();
    pressKey(&w, Qt::Key_Back);
    QVERIFY(!w.isVisible());
}

void tst_Platform::smallServices()
{
    // Soft-key labels, per widget and key, gone with the widget.
    auto *w = new QWidget;
    QSoftMenuBar::setLabel(w, Qt::Key_Back, ":image/back.png", "Back");
    QSoftMenuBar::setLabel(w, Qt::Key_Back, "back", "Back2");
    QSoftMenuBar::setLabel(w, Qt::Key_Select, "select", QString(), QSoftMenuBar::EditFocus);
    QCOMPARE(QSoftMenuBar::labels(w).size(), 2);
    QCOMPARE(QSoftMenuBar::label(w, Qt::Key_Back).pixmap, QString("back"));
    QCOMPARE(QSoftMenuBar::label(w, Qt::Key_Select).state, QSoftMenuBar::EditFocus);
    delete w;
    QVERIFY(QSoftMenuBar::labels(w).isEmpty());

    // One value space for every item of a path.
    QValueSpaceItem writer("/UI/TellNumber");
    QValueSpaceItem reader("/UI/TellNumber");
    QCOMPARE(reader.value("none").toString(), QString("none"));
    writer.setValue("010-1234");
    QCOMPARE(reader.value().toString(), QString("010-1234"));
    QValueSpaceItem::clearAll();

    // A category's lines only once a rule turns it on.
    QVERIFY(!qtopiaLogRequested("TestCategory"));
    QLoggingCategory::setFilterRules("TestCategory.debug=true");
    QVERIFY(qtopiaLogRequested("TestCategory"));
    QTest::ignoreMessage(QtDebugMsg, "hello 3");
    QLogBase::log("TestCategory") << "hello" << 3;
    QLoggingCategory::setFilterRules(QString());

    // Device files under the root the environment names.
    qputenv("QPE_ROOT", "/srv/phone/");
    QCOMPARE(devicePath("/tmp/status/x"), QString("/srv/phone/tmp/status/x"));
    qunsetenv("QPE_ROOT");
    QCOMPARE(devicePath("/tmp/status/x"), QString("/tmp/status/x"));
}

QTEST_MAIN(tst_Platform)
#include "tst_platform.moc"
