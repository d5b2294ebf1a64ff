#include "vodcatalogue.h"
// PLACEHOLDER: replaced by the VOD browser work.
namespace VodCatalogue {
bool load(const QString &, QByteArray &) { return false; }
QStringList groupNames(const QByteArray &) { return {}; }
QStringList partNames(const QByteArray &, int) { return {}; }
QStringList contentTitles(const QByteArray &) { return {}; }
}
