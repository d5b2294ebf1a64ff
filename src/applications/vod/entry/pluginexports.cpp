// The entry points of the plugin library. This file is built into the shared
// library only: the static library that the tests link has no plugin entry.
#include "pluginexports.h"

#include "applicationimpl.h"
#include "moduletranslation.h"
#include "vod.h"

#include <QPointer>
#include <QtPlugin>

// Qt's plugin loader reads this metadata without running any code of the
// library. moc would generate it from Q_PLUGIN_METADATA, but together with a
// qt_plugin_instance() of its own, which must stay ours (one object kept in a
// guarded pointer). The bytes are what moc generates for IID
// QApplicationPlugin_iid, class name "ApplicationImpl" and the metadata
// {"Keys": ["videoPush"]}: a CBOR map with the integer keys 2, 3 and 4.
static_assert(sizeof(QApplicationPlugin_iid) - 1 == 0x2c, "the IID length is encoded below");
static constexpr unsigned char applicationPluginMetaData[] = {
    0xbf,
    // 2 ("IID"): text string of 0x2c bytes
    0x02, 0x78, 0x2c,
    'o', 'r', 'g', '.', 'v', 'i', 'd', 'e', 'o', 'p', 'h', 'o', 'n', 'e', '.',
    'Q', 't', 'o', 'p', 'i', 'a', '.',
    'Q', 'A', 'p', 'p', 'l', 'i', 'c', 'a', 't', 'i', 'o', 'n', 'P', 'l', 'u', 'g', 'i', 'n',
    '/', '1', '.', '0',
    // 3 ("className"): text string of 15 bytes
    0x03, 0x6f,
    'A', 'p', 'p', 'l', 'i', 'c', 'a', 't', 'i', 'o', 'n', 'I', 'm', 'p', 'l',
    // 4 ("MetaData"): map of one entry, "Keys" -> array of one 9-byte text
    0x04, 0xa1, 0x64, 'K', 'e', 'y', 's', 0x81,
    0x69, 'v', 'i', 'd', 'e', 'o', 'P', 'u', 's', 'h',
    0xff,
};

extern "C" Q_DECL_EXPORT QPluginMetaData qt_plugin_query_metadata_v2()
{
    static constexpr QT_PLUGIN_METADATAV2_SECTION QPluginMetaDataV2<applicationPluginMetaData> metaData{};
    return metaData;
}

extern "C" Q_DECL_EXPORT QObject *qt_plugin_instance()
{
    static QPointer<QObject> instance;
    if (!instance)
        instance = new ApplicationImpl;
    return instance;
}

extern "C" Q_DECL_EXPORT const char *qt_plugin_query_verification_data()
{
    // The values of the platform's Qt build, which the launcher compares with its own.
    return "pattern=QT_PLUGIN_VERIFICATION_DATA\n"
           "version=4.2.3\n"
           "debug=false\n"
           "buildkey=i686 Linux no-stl QT_NO_PLUGIN_CHECK";
}

extern "C" Q_DECL_EXPORT QWidget *videophone_create_vod_browser()
{
    return new vod();
}

extern "C" Q_DECL_EXPORT const QList<QtopiaIpcMessage> *videophone_traffic()
{
    return &QtopiaIpcTransport::traffic();
}

extern "C" Q_DECL_EXPORT void videophone_select_transport()
{
    QtopiaIpcTransport::selectDefault();
}

extern "C" Q_DECL_EXPORT bool videophone_install_translation(const char *locale)
{
    return locale && ModuleTranslation::install(QString::fromUtf8(locale));
}
