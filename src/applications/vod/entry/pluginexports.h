#pragma once

#include "qtopiaipctransport.h"

#include <QList>

class QObject;
class QWidget;

// What the plugin library exports under C names. The launcher resolves them by
// name at run time and never links them.
extern "C" {
// Qt's plugin entry: the single plugin object, created when there is none.
QObject *qt_plugin_instance();
// The plugin verification record that the quick-launcher checks before use.
const char *qt_plugin_query_verification_data();
// The VOD browser main window, which has no application key; owned by the caller.
QWidget *videophone_create_vod_browser();
// Every message this library has sent, in sending order.
const QList<QtopiaIpcMessage> *videophone_traffic();
// Picks the library's IPC transport for talking to other processes
// (QtopiaIpcTransport::selectDefault()); a launcher calls it once at start-up.
void videophone_select_transport();
// Installs the module's translation for a locale name ("ko", "ko_KR.UTF-8"),
// replacing the one installed before (ModuleTranslation::install()). True when
// the module's texts are now in that language; English needs no translation.
// Call it once the application object exists, before creating windows.
bool videophone_install_translation(const char *locale);
}
