#include "qapplicationplugin.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <QPointer>
#include <QtTest>

#include <dlfcn.h>

// The plugin library as the launcher sees it: loaded from its file, never
// linked. The path comes from the build (MODULE_PATH).
class tst_PluginExports : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();

    void exportedNames_data();
    void exportedNames();
    void verificationData();
    void pluginLoader();
    void metaData();
    void singleInstance();
    void wholeModuleInside_data();
    void wholeModuleInside();
    void vodBrowser();

private:
    void *handle = nullptr;
    QPluginLoader loader{QStringLiteral(MODULE_PATH)};
};

void tst_PluginExports::initTestCase()
{
    QVERIFY(QFileInfo(QStringLiteral(MODULE_PATH)).isFile());
    handle = dlopen(MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    QVERIFY2(handle, dlerror());
}

void tst_PluginExports::cleanupTestCase()
{
    // The library stays loaded: Qt keeps type registrations of it to the end.
    handle = nullptr;
}

void tst_PluginExports::cleanup()
{
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_PluginExports::exportedNames_data()
{
    QTest::addColumn<QByteArray>("name");
    // The others are called by the tests below.
    QTest::newRow("Qt 6 metadata") << QByteArray("qt_plugin_query_metadata_v2");
    QTest::newRow("traffic") << QByteArray("videophone_traffic");
    QTest::newRow("transport") << QByteArray("videophone_select_transport");
}

void tst_PluginExports::exportedNames()
{
    QFETCH(QByteArray, name);
    QVERIFY2(dlsym(handle, name.constData()), dlerror());
}

void tst_PluginExports::verificationData()
{
    using Function = const char *(*)();
    const auto verification = reinterpret_cast<Function>(dlsym(handle, "qt_plugin_query_verification_data"));
    QVERIFY(verification);
    const char *text = verification();
    QVERIFY(text);
    const QByteArray expected("pattern=QT_PLUGIN_VERIFICATION_DATA\n"
                              "version=4.2.3\n"
                              "debug=false\n"
                              "buildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK");
    QCOMPARE(QByteArray(text), expected);
}

void tst_PluginExports::pluginLoader()
{
    QVERIFY2(loader.load(), qPrintable(loader.errorString()));
    QObject *instance = loader.instance();
    auto *plugin = qobject_cast<QApplicationPlugin *>(instance);
    QVERIFY(plugin);
    QCOMPARE(plugin->keys(), QStringList{QStringLiteral("videoPush")});

    // Both roads lead to the one object.
    using Function = QObject *(*)();
    const auto pluginInstance = reinterpret_cast<Function>(dlsym(handle, "qt_plugin_instance"));
    QCOMPARE(pluginInstance(), instance);

    // The plugin's own table, not this program's copy: no key but videoPush.
    QVERIFY(!plugin->createMainWindow(QStringLiteral("vod"), nullptr, Qt::WindowFlags()));
    QVERIFY(!plugin->createMainWindow(QString(), nullptr, Qt::WindowFlags()));
}

void tst_PluginExports::metaData()
{
    const QJsonObject metaData = loader.metaData();
    QCOMPARE(metaData.value(QLatin1String("IID")).toString(), QStringLiteral(QApplicationPlugin_iid));
    QCOMPARE(metaData.value(QLatin1String("className")).toString(), QStringLiteral("ApplicationImpl"));
    QCOMPARE(metaData.value(QLatin1String("MetaData")).toObject().value(QLatin1String("Keys")).toArray(),
             QJsonArray{QStringLiteral("videoPush")});
}

void tst_PluginExports::singleInstance()
{
    using Function = QObject *(*)();
    const auto pluginInstance = reinterpret_cast<Function>(dlsym(handle, "qt_plugin_instance"));
    QVERIFY(pluginInstance);

    QPointer<QObject> first = pluginInstance();
    QVERIFY(first && !first->parent());
    delete first;
    QVERIFY(!first);
    QPointer<QObject> second = pluginInstance();
    QVERIFY(qobject_cast<QApplicationPlugin *>(second));
    QCOMPARE(pluginInstance(), second.data());
}

void tst_PluginExports::wholeModuleInside_data()
{
    QTest::addColumn<QByteArray>("symbol");
    // The Itanium name of <class>::staticMetaObject, for every class of the module.
    for (const char *name : {"VideoPushView", "VideoPushFullView", "VodPlayView", "VodPlaySmallScreenView",
                             "VodPlayFullScreenView", "MVodListView", "MVodInfoView", "PlayScreen", "EmptyBg", "vod"}) {
        QTest::newRow(name) << "_ZN" + QByteArray::number(qstrlen(name)) + name + "16staticMetaObjectE";
    }
    // Nothing that the entry points use reaches the message catalogue: it is in
    // the library only because the whole static library went in.
    QTest::newRow("messageCatalogue()") << QByteArray("_Z16messageCataloguev");
    // The images, which the plugin has to bring: the launcher has none.
    QTest::newRow("image resources") << QByteArray("_Z24qInitResources_vodimagesv");
}

void tst_PluginExports::wholeModuleInside()
{
    QFETCH(QByteArray, symbol);
    QVERIFY2(dlsym(handle, symbol.constData()), symbol.constData());
}

void tst_PluginExports::vodBrowser()
{
    using Function = QWidget *(*)();
    const auto createBrowser = reinterpret_cast<Function>(dlsym(handle, "videophone_create_vod_browser"));
    QVERIFY(createBrowser);
    std::unique_ptr<QWidget> browser(createBrowser());
    QCOMPARE(browser->metaObject()->className(), "vod");
    QVERIFY(browser->isWindow());
}

QTEST_MAIN(tst_PluginExports)
#include "tst_pluginexports.moc"
