#include "devicepath.h"
#include "homekeyblock.h"
#include "qeuckr.h"
#include "qlogbase.h"
#include "qnoticedialog.h"
#include "qsoftmenubar.h"
#include "qvaluespaceitem.h"
#include "testenvironment.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLoggingCategory>
#include <QTest>
#include <QTimer>

class tst_PlatformServices : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void eucKr_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("hangul syllable") << QByteArray("\xB0\xA1") << QString(QChar(0xAC00));
        QTest::newRow("stops at NUL") << QByteArray("\xB0\xA1\0\xB0\xA1", 5) << QString(QChar(0xAC00));
        QTest::newRow("ascii") << QByteArray("News 9") << QString("News 9");
        QTest::newRow("mixed") << QByteArray("\xC7\xD1 A") << QString::fromUtf8("\xED\x95\x9C A");
        QTest::newRow("empty") << QByteArray() << QString();
    }
    void eucKr()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(qEUCKRtoQString(bytes), text);
        QCOMPARE(qEUCKRtoQString(bytes.constData()), text);
    }

    void softKeyLabelsAreKeptPerWidgetAndKey()
    {
        auto *w = new QWidget;
        QWidget other;
        QSoftMenuBar::setLabel(w, Qt::Key_Back, ":image/back.png", "Back");
        QSoftMenuBar::setLabel(w, Qt::Key_Select, "select", QString(), QSoftMenuBar::EditFocus);
        QSoftMenuBar::setLabel(w, Qt::Key_Back, "back", "Back2");
        QCOMPARE(QSoftMenuBar::labels(w).size(), 2);
        QCOMPARE(QSoftMenuBar::label(w, Qt::Key_Back).pixmap, QString("back"));
        QCOMPARE(QSoftMenuBar::label(w, Qt::Key_Back).text, QString("Back2"));
        QCOMPARE(QSoftMenuBar::label(w, Qt::Key_Select).state, QSoftMenuBar::EditFocus);
        QVERIFY(QSoftMenuBar::labels(&other).isEmpty());
        delete w;
        QVERIFY(QSoftMenuBar::labels(w).isEmpty());
    }

    void valueSpaceItemsShareOneStore()
    {
        QValueSpaceItem writer("/UI/TellNumber");
        QValueSpaceItem reader("/UI/TellNumber");
        QCOMPARE(reader.value("none").toString(), QString("none"));
        writer.setValue("010-1234");
        QCOMPARE(reader.value().toString(), QString("010-1234"));
        QValueSpaceItem::clearAll();
        QVERIFY(!reader.value().isValid());
    }

    void homeKeyBlockMarksTheDialog()
    {
        QDialog d;
        QVERIFY(!isHomeKeyBlocked(&d));
        setHomeKeyBlocked(&d, true);
        QVERIFY(isHomeKeyBlocked(&d));
        setHomeKeyBlocked(&d, false);
        QVERIFY(!isHomeKeyBlocked(&d));
    }

    void categoryLoggingIsOffUntilARuleTurnsItOn()
    {
        QVERIFY(!qtopiaLogRequested("TestCategoryOff"));
        QLoggingCategory::setFilterRules("TestCategoryOn.debug=true");
        QVERIFY(qtopiaLogRequested("TestCategoryOn"));
        QTest::ignoreMessage(QtDebugMsg, "hello 3");
        QLogBase::log("TestCategoryOn") << "hello" << 3;
        QLoggingCategory::setFilterRules(QString());
    }

    void devicePathsResolveUnderTheRoot()
    {
        qunsetenv("QPE_ROOT");
        QCOMPARE(devicePath("/tmp/status/x"), QString("/tmp/status/x"));
        qputenv("QPE_ROOT", "/srv/phone/");
        QCOMPARE(devicePath("/tmp/status/x"), QString("/srv/phone/tmp/status/x"));
        qunsetenv("QPE_ROOT");
    }

    void noticePresenterSeesTheCall()
    {
        NoticeRecorder recorder;
        QWidget parent;
        QNoticeDialog::warning(&parent, "Text", "Detail", 3);
        QNoticeDialog::information(nullptr, "Info", QString(), 2);
        QCOMPARE(recorder.notices.size(), 2);
        QCOMPARE(recorder.notices[0].kind, QNoticeDialog::Warning);
        QCOMPARE(recorder.notices[0].parent, &parent);
        QCOMPARE(recorder.notices[0].text, QString("Text"));
        QCOMPARE(recorder.notices[0].detail, QString("Detail"));
        QCOMPARE(recorder.notices[0].option, 3);
        QCOMPARE(recorder.notices[1].option, 2);
    }

    void realNoticeBlocksUntilDismissedWithSelect()
    {
        bool dismissedFromInside = false;
        QTimer::singleShot(50, this, [&] {
            QWidget *notice = QApplication::activeModalWidget();
            QVERIFY(notice);
            QCOMPARE(notice->findChild<QLabel *>("text")->text(), QString("Now connecting"));
            dismissedFromInside = true;
            pressKey(notice, Qt::Key_Select);
        });
        QNoticeDialog::information(nullptr, "Now connecting", "Please", 2);
        QVERIFY(dismissedFromInside);
    }

    void noticeTimeoutDismissesUnattended()
    {
        qputenv("QPE_NOTICE_TIMEOUT", "10");
        QNoticeDialog::information(nullptr, "Gone soon", QString(), 3);
        qunsetenv("QPE_NOTICE_TIMEOUT");
    }
};

QTEST_MAIN(tst_PlatformServices)
#include "tst_platformservices.moc"
