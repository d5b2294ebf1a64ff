// The catalogue readers on arbitrary file contents, as loaded: the bytes plus
// one zero byte.
#include "vodcatalogue.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray buffer(reinterpret_cast<const char *>(data), int(size));
    buffer.append('\0');

    const QStringList groups = VodCatalogue::groupNames(buffer);
    // Every listed group, and the indexes just outside the list.
    for (int g = -1; g <= groups.size(); ++g)
        VodCatalogue::partNames(buffer, g);
    VodCatalogue::partNames(buffer, VodCatalogue::PartSlots);
    VodCatalogue::contentTitles(buffer);
    return 0;
}
