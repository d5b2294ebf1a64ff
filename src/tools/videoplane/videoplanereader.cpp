#include "videoplanereader.h"

#include "videoplanelayout.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace VideoPlaneLayout;

VideoPlaneReader::VideoPlaneReader(const QString &name)
    : planeName(name)
{
}

VideoPlaneReader::~VideoPlaneReader()
{
    detach();
}

void VideoPlaneReader::detach()
{
    if (header)
        munmap(const_cast<Header *>(header), mappedSize);
    header = nullptr;
    mappedSize = 0;
    last.reset();
}

bool VideoPlaneReader::attach()
{
    // A plane whose writer has ended (or crashed, leaving the object behind) is
    // no plane: the next writer makes a new one under the same name.
    if (header) {
        const pid_t writer = header->writerPid;
        if (writerAlive(writer))
            return true;
        detach();
    }
    const int fd = shm_open(planeName.toLocal8Bit().constData(), O_RDONLY, 0);
    if (fd < 0)
        return false;
    struct stat info;
    void *map = MAP_FAILED;
    if (fstat(fd, &info) == 0 && std::size_t(info.st_size) >= TotalSize)
        map = mmap(nullptr, TotalSize, PROT_READ, MAP_SHARED, fd, 0);
    ::close(fd);
    if (map == MAP_FAILED)
        return false;
    header = static_cast<const Header *>(map);
    mappedSize = TotalSize;
    std::atomic_thread_fence(std::memory_order_acquire);
    const pid_t writer = header->writerPid;
    if (header->magic != Magic || header->version != Version || header->capacity != Capacity
        || header->format != FormatRgb32 || !writerAlive(writer)) {
        detach();
        return false;
    }
    return true;
}

std::uint32_t VideoPlaneReader::sequence()
{
    return attach() ? header->sequence.load(std::memory_order_acquire) : 0;
}

std::optional<QImage> VideoPlaneReader::frame()
{
    if (!attach())
        return std::nullopt;
    const auto *pixels = reinterpret_cast<const std::uint8_t *>(header) + PixelsOffset;
    if (last && header->sequence.load(std::memory_order_acquire) == lastSequence)
        return last;
    // The writer is quick; a reader that keeps meeting it mid-frame shows the
    // last picture it read rather than wait.
    for (int attempt = 0; attempt < 8; ++attempt) {
        const std::uint32_t before = header->sequence.load(std::memory_order_acquire);
        if (before & 1u)
            continue;
        const std::uint32_t width = header->width;
        const std::uint32_t height = header->height;
        const std::uint32_t stride = header->stride;
        QImage image;
        if (width > 0 && height > 0 && width <= std::uint32_t(MaxWidth) && height <= std::uint32_t(MaxHeight)
            && stride >= width * 4 && std::size_t(stride) * height <= Capacity) {
            image = QImage(int(width), int(height), QImage::Format_RGB32);
            for (std::uint32_t y = 0; y < height; ++y)
                std::memcpy(image.scanLine(int(y)), pixels + std::size_t(stride) * y, std::size_t(width) * 4);
        }
        std::atomic_thread_fence(std::memory_order_acquire);
        if (header->sequence.load(std::memory_order_relaxed) == before) {
            last = image;
            lastSequence = before;
            return image;
        }
    }
    return last ? *last : QImage();
}
