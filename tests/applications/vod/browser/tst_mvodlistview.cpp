#include "browser/mvodlistview.h"

#include "devicekeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>

class tst_MVodListView : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void selectRowByKey_data();
    void selectRowByKey();
};

namespace {

// The list as the browser fills it: rows of 480 × 42 in a list of the
// display's size.
void fill(MVodListView &list, int rows)
{
    for (int i = 0; i < rows; ++i) {
        auto *item = new QListWidgetItem(QStringLiteral("row %1").arg(i), &list);
        item->setSizeHint(QSize(480, 42));
    }
    list.resize(480, 272);
}

}

void tst_MVodListView::cleanup()
{
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_MVodListView::selectRowByKey_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("topRow");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<int>("currentRow");

    // The list starts with row 1 current, so that a miss is visible.
    QTest::newRow("first key") << 10 << 0 << int(Key_Video0) << true << 0;
    QTest::newRow("second key") << 10 << 0 << int(Key_Video1) << true << 1;
    QTest::newRow("third key") << 10 << 0 << int(Key_Video2) << true << 2;
    QTest::newRow("fourth key") << 10 << 0 << int(Key_Video3) << true << 3;
    QTest::newRow("fifth key") << 10 << 0 << int(Key_Video4) << true << 4;
    QTest::newRow("three rows, third key") << 3 << 0 << int(Key_Video2) << true << 2;
    QTest::newRow("three rows, fourth key") << 3 << 0 << int(Key_Video3) << false << 1;
    QTest::newRow("three rows, fifth key") << 3 << 0 << int(Key_Video4) << false << 1;
    QTest::newRow("empty list") << 0 << 0 << int(Key_Video0) << false << -1;
    QTest::newRow("row 7 on top, first key") << 20 << 7 << int(Key_Video0) << true << 7;
    QTest::newRow("row 7 on top, fifth key") << 20 << 7 << int(Key_Video4) << true << 11;
    QTest::newRow("headset key") << 10 << 0 << int(Key_Headset) << false << 1;
    QTest::newRow("select") << 10 << 0 << int(Qt::Key_Select) << false << 1;
    QTest::newRow("back") << 10 << 0 << int(Qt::Key_Back) << false << 1;
    QTest::newRow("down") << 10 << 0 << int(Qt::Key_Down) << false << 1;
}

void tst_MVodListView::selectRowByKey()
{
    QFETCH(int, rows);
    QFETCH(int, topRow);
    QFETCH(int, key);
    QFETCH(bool, taken);
    QFETCH(int, currentRow);

    MVodListView list(nullptr);
    fill(list, rows);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    if (rows > 1)
        list.setCurrentRow(1);
    if (topRow > 0) {
        list.scrollToItem(list.item(topRow), QAbstractItemView::PositionAtTop);
        QCOMPARE(list.indexAt(QPoint(0, 0)).row(), topRow);
    }

    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCOMPARE(list.selectRowByKey(&press), taken);
    QCOMPARE(list.currentRow(), currentRow);
}

QTEST_MAIN(tst_MVodListView)
#include "tst_mvodlistview.moc"
