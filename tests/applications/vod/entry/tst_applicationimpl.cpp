#include "entry/applicationimpl.h"
#include "entry/applicationtable.h"
#include "push/videopushview.h"

#include "testenvironment.h"

#include <QApplication>
#include <QLabel>
#include <QLoggingCategory>
#include <QPointer>
#include <QtTest>

#include <memory>

class tst_ApplicationImpl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void unknownKey_data();
    void unknownKey();
    void videoPush();
    void registrationReplacesCreator();

private:
    std::unique_ptr<TestEnvironment> environment;
    std::unique_ptr<NoticeRecorder> notices;
};

void tst_ApplicationImpl::initTestCase()
{
    environment = std::make_unique<TestEnvironment>();
    notices = std::make_unique<NoticeRecorder>();
    // The entry asks once whether the category is on: before anything asks.
    QLoggingCategory::setFilterRules(QStringLiteral("Quicklauncher.debug=true"));
}

void tst_ApplicationImpl::cleanup()
{
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_ApplicationImpl::unknownKey_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("browser") << QStringLiteral("vod");
    QTest::newRow("empty") << QString();
    QTest::newRow("case differs") << QStringLiteral("VideoPush");
    QTest::newRow("trailing blank") << QStringLiteral("videoPush ");
}

void tst_ApplicationImpl::unknownKey()
{
    QFETCH(QString, key);
    ApplicationImpl plugin;
    const qsizetype widgetsBefore = QApplication::allWidgets().size();

    // The line comes before the lookup, for keys the table does not know too.
    QTest::ignoreMessage(QtDebugMsg,
                         qPrintable(QStringLiteral("created main window for quicklaunched ") + key));
    QWidget parent;
    QCOMPARE(plugin.createMainWindow(key, &parent, Qt::WindowFlags()), nullptr);
    QCOMPARE(QApplication::allWidgets().size(), widgetsBefore + 1);
    QVERIFY(parent.children().isEmpty());
}

void tst_ApplicationImpl::videoPush()
{
    ApplicationImpl plugin;
    QWidget owner;
    QTest::ignoreMessage(QtDebugMsg, "created main window for quicklaunched videoPush");
    QPointer<QWidget> window = plugin.createMainWindow(QStringLiteral("videoPush"), &owner, Qt::Window);
    QVERIFY(window);
    QVERIFY(qobject_cast<VideoPushView *>(window));
    QCOMPARE(window->parentWidget(), &owner);
    // The main window shows itself; the launcher does not.
    QVERIFY(window->isVisible());

    // Each call builds a new window.
    std::unique_ptr<QWidget> second(plugin.createMainWindow(QStringLiteral("videoPush"), nullptr, Qt::WindowFlags()));
    QVERIFY(second && second.get() != window);
    delete window;
}

namespace {
QWidget *createLabel(QWidget *parent, Qt::WindowFlags flags)
{
    auto *label = new QLabel(parent, flags);
    label->setObjectName(QStringLiteral("replacement"));
    return label;
}
}

void tst_ApplicationImpl::registrationReplacesCreator()
{
    const ApplicationTable::Creator original = ApplicationTable::creator(QStringLiteral("videoPush"));
    QVERIFY(original);

    ApplicationTable::registerApplication(QStringLiteral("videoPush"), createLabel);
    ApplicationImpl plugin;
    QTest::ignoreMessage(QtDebugMsg, "created main window for quicklaunched videoPush");
    std::unique_ptr<QWidget> window(plugin.createMainWindow(QStringLiteral("videoPush"), nullptr, Qt::Tool));
    ApplicationTable::registerApplication(QStringLiteral("videoPush"), original);

    QVERIFY(window);
    QCOMPARE(window->objectName(), QStringLiteral("replacement"));
    QCOMPARE(window->windowType(), Qt::Tool);
    QCOMPARE(plugin.keys(), QStringList{QStringLiteral("videoPush")});
    QVERIFY(ApplicationTable::creator(QStringLiteral("videoPush")) == original);
}

QTEST_MAIN(tst_ApplicationImpl)
#include "tst_applicationimpl.moc"
