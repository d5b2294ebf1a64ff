#pragma once

#include <QString>

#include <cstdint>
#include <mutex>

namespace VideoPlaneLayout {
struct Header;
}

// The video manager's side of the video plane: creates the shared memory
// object, writes frames into it from any thread and removes it when done.
class VideoPlaneWriter
{
public:
    explicit VideoPlaneWriter(const QString &name);
    ~VideoPlaneWriter();
    VideoPlaneWriter(const VideoPlaneWriter &) = delete;
    VideoPlaneWriter &operator=(const VideoPlaneWriter &) = delete;

    QString name() const { return planeName; }

    // Creates the plane, replacing one left behind by a writer that is gone.
    // Fails when a live process holds a plane of that name.
    bool open(QString *error);
    bool isOpen() const { return header != nullptr; }

    // Copies a frame of 0xffRRGGBB words (BGRx bytes); false when it does not
    // fit the plane or the plane is not open.
    bool write(const std::uint8_t *pixels, int width, int height, int stride);
    // The plane shows no picture (black on the display).
    void clear();

private:
    void close();

    QString planeName;
    std::mutex writing;
    VideoPlaneLayout::Header *header = nullptr;
};
