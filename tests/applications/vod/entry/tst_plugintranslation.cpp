#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QTest>
#include <QWidget>

#include <dlfcn.h>

#include <memory>

// The language switch as a launcher uses it: the library loaded from its file,
// its translation installed through the exported C function. The Korean
// translation must be inside the library itself.
class tst_PluginTranslation : public QObject
{
    Q_OBJECT

    using Install = bool (*)(const char *);
    using CreateBrowser = QWidget *(*)();

    void *handle = nullptr;
    Install install = nullptr;

private slots:
    void initTestCase()
    {
#ifndef MODULE_PATH
        QFAIL("MODULE_PATH is not set: translations/CMakeLists.txt is not part of the build");
#else
        QVERIFY(QFileInfo(QStringLiteral(MODULE_PATH)).isFile());
        handle = dlopen(MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(handle, dlerror());
        install = reinterpret_cast<Install>(dlsym(handle, "videophone_install_translation"));
        QVERIFY2(install, dlerror());
#endif
    }

    void cleanup()
    {
        QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void browserTexts_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<bool>("installed");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("waitText");

        const QString koTitle = QStringLiteral("동영상 콘텐츠");
        const QString koWait = QStringLiteral("콘텐츠를 가져오는 중");
        const QString enTitle = QStringLiteral("Video Contents");
        const QString enWait = QStringLiteral("Getting contents");
        QTest::newRow("ko_KR") << QByteArray("ko_KR") << true << koTitle << koWait;
        QTest::newRow("back to English") << QByteArray("en") << true << enTitle << enWait;
        QTest::newRow("ko") << QByteArray("ko") << true << koTitle << koWait;
        QTest::newRow("unknown falls back") << QByteArray("de") << false << enTitle << enWait;
    }

    // Rows run in order: each switch replaces the language of the row before.
    void browserTexts()
    {
        QFETCH(QByteArray, locale);
        QFETCH(bool, installed);
        QFETCH(QString, title);
        QFETCH(QString, waitText);

        QCOMPARE(install(locale.constData()), installed);
        const auto create = reinterpret_cast<CreateBrowser>(dlsym(handle, "videophone_create_vod_browser"));
        QVERIFY(create);
        // The browser asks for its group list at once, behind a wait pop-up.
        std::unique_ptr<QWidget> browser(create());
        QCOMPARE(browser->windowTitle(), title);
        QStringList labels;
        for (const QLabel *label : browser->findChildren<QLabel *>())
            labels << label->text();
        QVERIFY2(labels.contains(waitText), qPrintable(labels.join(QLatin1String(" | "))));
    }

    void nullLocale() { QVERIFY(!install(nullptr)); }
};

QTEST_MAIN(tst_PluginTranslation)
#include "tst_plugintranslation.moc"
