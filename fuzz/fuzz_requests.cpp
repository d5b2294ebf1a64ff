// vod::vodRequestHandle with every request signature (and some unknown text)
// and arbitrary argument blocks.
#include "fuzzsupport.h"
#include "messaging/messagecatalogue.h"
#include "vod.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    FuzzSupport::initialise();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzSupport::Input in(data, size);
    const QList<MessageEntry> &catalogue = messageCatalogue();
    vod *browser = new vod;
    // A few requests per input, each "index, length, block".
    for (int i = 0; i < 8 && !in.atEnd(); ++i) {
        const int index = in.byte();
        const QByteArray block = in.bytes(in.byte() % 64);
        const QString message = index < catalogue.size() ? QLatin1String(catalogue.at(index).signature)
                                                         : QString::fromLatin1(block.left(index % 16));
        browser->vodRequestHandle(message, block);
    }
    FuzzSupport::settle(browser);
    return 0;
}
