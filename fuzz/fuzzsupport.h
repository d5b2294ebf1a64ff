#pragma once

#include <QByteArray>
#include <QPointer>
#include <QWidget>

#include <cstddef>
#include <cstdint>

// What every fuzz target needs: an offscreen application, a device root of its
// own (QPE_ROOT) holding valid catalogue files, and notices that return at once.
namespace FuzzSupport {

void initialise();

// Runs what the last input left queued (deliveries, deferred deletes), deletes
// the input's own window (which deletes the windows it owns), then any window
// left without an owner, and forgets the traffic log, so that each input starts
// from the same state and the target does not slow down over time.
void settle(QWidget *window);

// Reads an input front to back; past the end it yields zeros.
class Input
{
public:
    Input(const uint8_t *data, size_t size) : data(data), size(size) {}
    uint8_t byte() { return pos < size ? data[pos++] : 0; }
    QByteArray bytes(size_t n)
    {
        const size_t take = n < size - pos ? n : size - pos;
        QByteArray result(reinterpret_cast<const char *>(data + pos), int(take));
        pos += take;
        return result;
    }
    bool atEnd() const { return pos >= size; }

private:
    const uint8_t *data;
    size_t size;
    size_t pos = 0;
};

}
