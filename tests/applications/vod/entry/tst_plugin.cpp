// The plugin as the launcher sees it, loaded from its file: its entry points,
// its one plugin object and application key, the windows it creates, and its
// Korean translation.

#include "entry/applicationimpl.h"
#include "qapplicationplugin.h"
#include "qnoticedialog.h"
#include "testenvironment.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QPluginLoader>
#include <QPointer>
#include <QtTest>

#include <dlfcn.h>
#include <memory>

namespace {
template <typename Function>
Function entry(void *handle, const char *name)
{
    return reinterpret_cast<Function>(dlsym(handle, name));
}
}

class tst_Plugin : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;
    void *handle = nullptr;
    QApplicationPlugin *plugin = nullptr;

private slots:
    void initTestCase();
    void cleanup() { QCOMPARE(deleteLeakedTopLevels(), 0); }

    void entryPoints();
    void windows_data();
    void windows();
    void translation_data();
    void translation();
};

void tst_Plugin::initTestCase()
{
    env = std::make_unique<TestEnvironment>();
    // The entry asks once whether its category is on: before anything asks.
    QLoggingCategory::setFilterRules(QStringLiteral("Quicklauncher.debug=true"));
    handle = dlopen(MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    QVERIFY2(handle, dlerror());
    const auto instance = entry<QObject *(*)()>(handle, "qt_plugin_instance");
    QVERIFY(instance);
    plugin = qobject_cast<QApplicationPlugin *>(instance());
    QVERIFY(plugin);
}

void tst_Plugin::entryPoints()
{
    const auto verification = entry<const char *(*)()>(handle, "qt_plugin_query_verification_data");
    QVERIFY(verification);
    QCOMPARE(QByteArray(verification()), QByteArray("pattern=QT_PLUGIN_VERIFICATION_DATA\n"
                                                    "version=4.2.3\n"
                                                    "debug=false\n"
                                                    "buildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK"));
    QCOMPARE(plugin->keys(), QStringList{QStringLiteral("videoPush")});

    // One plugin object, through either road; a new one after it went.
    const auto instance = entry<QObject *(*)()>(handle, "qt_plugin_instance");
    QPluginLoader loader{QStringLiteral(MODULE_PATH)};
    QCOMPARE(loader.instance(), static_cast<QObject *>(plugin));
    QPointer<QObject> first = instance();
    delete first;
    QVERIFY(!first);
    plugin = qobject_cast<QApplicationPlugin *>(instance());
    QVERIFY(plugin && !plugin->parent());
    QCOMPARE(instance(), static_cast<QObject *>(plugin));
}

void tst_Plugin::windows_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("created");
    QTest::newRow("the broadcast viewer") << "videoPush" << true;
    QTest::newRow("the browser has no key") << "vod" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("case differs") << "VideoPush" << false;
}

// The window the plugin creates belongs to the caller and shows itself; the
// log line comes before the lookup, for unknown keys too.
void tst_Plugin::windows()
{
    QFETCH(QString, key);
    QFETCH(bool, created);
    QWidget owner;
    QTest::ignoreMessage(QtDebugMsg, qPrintable(QStringLiteral("created main window for quicklaunched ") + key));
    QPointer<QWidget> window = plugin->createMainWindow(key, &owner, Qt::WindowFlags());
    QCOMPARE(bool(window), created);
    if (window) {
        QCOMPARE(window->metaObject()->className(), "VideoPushView");
        QCOMPARE(window->parentWidget(), &owner);
        QVERIFY(window->isVisible());
    }
    // The browser comes from an export of its own.
    const auto browser = entry<QWidget *(*)()>(handle, "videophone_create_vod_browser");
    std::unique_ptr<QWidget> vod(browser());
    QCOMPARE(vod->metaObject()->className(), "vod");
}

void tst_Plugin::translation_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<bool>("installed");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("notice");

    QTest::newRow("ko_KR.UTF-8") << QByteArray("ko_KR.UTF-8") << true << "동영상 콘텐츠" << "경고";
    QTest::newRow("C: English") << QByteArray("C") << true << "Video Contents" << "Warning";
    QTest::newRow("no translation: English") << QByteArray("fr") << false << "Video Contents" << "Warning";
    QTest::newRow("no locale") << QByteArray("no such thing") << false << "Video Contents" << "Warning";
}

// Each row starts from Korean: a failed or English install must also take it away.
void tst_Plugin::translation()
{
    QFETCH(QByteArray, locale);
    QFETCH(bool, installed);
    QFETCH(QString, title);
    QFETCH(QString, notice);

    const auto install = entry<bool (*)(const char *)>(handle, "videophone_install_translation");
    QVERIFY(install && install("ko") && !install(nullptr));
    QCOMPARE(install(locale.constData()), installed);
    const auto browser = entry<QWidget *(*)()>(handle, "videophone_create_vod_browser");
    std::unique_ptr<QWidget> vod(browser());
    QCOMPARE(vod->windowTitle(), title);
    const QNoticeDialog dialog(QNoticeDialog::Notice{QNoticeDialog::Warning, nullptr, QString(), QString(), 3});
    QCOMPARE(dialog.windowTitle(), notice);
}

QTEST_MAIN(tst_Plugin)
#include "tst_plugin.moc"
