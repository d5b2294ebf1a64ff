#include "qwaitwidget.h"
#include "testenvironment.h"

#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {
QTimer *expiryTimerOf(QWaitWidget &w)
{
    // The expiry timer is the one with the expiry interval.
    for (QTimer *t : w.findChildren<QTimer *>())
        if (t->interval() == w.expiryTime())
            return t;
    return nullptr;
}
}

class tst_QWaitWidget : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void isTheActiveWindowWhileUp()
    {
        QWidget owner;
        owner.show();
        QWaitWidget w(&owner);
        w.setText("Getting contents");
        w.show();
        QTRY_VERIFY(w.isActiveWindow());
        QCOMPARE(w.findChild<QLabel *>()->text(), QString("Getting contents"));
    }

    void expiresWithTimeOutAndThenShowsItsResult_data()
    {
        QTest::addColumn<bool>("resultOption");
        QTest::addColumn<QString>("resultText");
        QTest::addColumn<bool>("showsResult");
        QTest::newRow("result") << true << "Fail to Get List" << true;
        QTest::newRow("option off") << false << "Fail to Get List" << false;
        QTest::newRow("no result text") << true << QString() << false;
    }
    void expiresWithTimeOutAndThenShowsItsResult()
    {
        QFETCH(bool, resultOption);
        QFETCH(QString, resultText);
        QFETCH(bool, showsResult);
        QWaitWidget w(nullptr);
        w.setResultOption(resultOption);
        w.setResultText(resultText);
        w.setExpiryTime(5000);
        QSignalSpy spy(&w, &QWaitWidget::timeOut);
        w.show();
        QTimer *expiry = expiryTimerOf(w);
        QVERIFY(expiry && expiry->isActive());
        QMetaObject::invokeMethod(expiry, "timeout");
        QCOMPARE(spy.size(), 1);
        QCOMPARE(w.isShowingResult(), showsResult);
        QCOMPARE(w.isVisible(), showsResult);
        if (showsResult)
            QCOMPARE(w.findChild<QLabel *>()->text(), resultText);
    }

    void noTimeOutOnceClosed()
    {
        QWaitWidget w(nullptr);
        w.setExpiryTime(5000);
        QSignalSpy spy(&w, &QWaitWidget::timeOut);
        w.show();
        QTimer *expiry = expiryTimerOf(w);
        w.waitClose(1000);
        QVERIFY(!w.isVisible());
        QVERIFY(!expiry->isActive());
        QMetaObject::invokeMethod(expiry, "timeout");
        QCOMPARE(spy.size(), 0);
    }

    void receiverMayDeleteThePopUp()
    {
        auto *w = new QWaitWidget(nullptr);
        w->setExpiryTime(100);
        w->setResultOption(true);
        w->setResultText("late");
        connect(w, &QWaitWidget::timeOut, this, [w] { delete w; });
        QSignalSpy destroyed(w, &QObject::destroyed);
        w->show();
        QTRY_COMPARE(destroyed.size(), 1);
    }

    void showResultKeepsTheTextForItsTime()
    {
        QWaitWidget w(nullptr);
        w.setExpiryTime(5000);
        w.show();
        w.setResult("Can not be played", 30);
        w.showResult();
        QVERIFY(w.isVisible());
        QCOMPARE(w.findChild<QLabel *>()->text(), QString("Can not be played"));
        QTRY_VERIFY(!w.isVisible());
    }

    void backCancelsOnlyWhenAllowed()
    {
        QWaitWidget w(nullptr);
        w.setCancelEnabled(false);
        w.show();
        pressKey(&w, Qt::Key_Back);
        QVERIFY(w.isVisible());
        w.setCancelEnabled(true);
        pressKey(&w, Qt::Key_Back);
        QVERIFY(!w.isVisible());
    }
};

QTEST_MAIN(tst_QWaitWidget)
#include "tst_qwaitwidget.moc"
