#pragma once

#include <QImage>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace VideoPlaneLayout {
struct Header;
}

// The display's side of the video plane: finds the plane when a video manager
// has made one, and lets it go when that video manager is gone.
class VideoPlaneReader
{
public:
    explicit VideoPlaneReader(const QString &name);
    ~VideoPlaneReader();
    VideoPlaneReader(const VideoPlaneReader &) = delete;
    VideoPlaneReader &operator=(const VideoPlaneReader &) = delete;

    QString name() const { return planeName; }

    // Whether a live video manager holds the plane now.
    bool attach();
    // The plane's count of changes; 0 without a plane.
    std::uint32_t sequence();
    // The picture the plane shows: none without a plane, a null image while the
    // plane shows no picture.
    std::optional<QImage> frame();

private:
    void detach();

    QString planeName;
    const VideoPlaneLayout::Header *header = nullptr;
    std::size_t mappedSize = 0;
    // The last consistent picture and the sequence it was read at.
    std::optional<QImage> last;
    std::uint32_t lastSequence = 0;
};
