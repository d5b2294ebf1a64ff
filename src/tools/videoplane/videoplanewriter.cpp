#include "videoplanewriter.h"

#include "videoplanelayout.h"

#include <cerrno>
#include <cstring>
#include <new>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace VideoPlaneLayout;

namespace {
QString systemError(const QString &what)
{
    return QStringLiteral("%1: %2").arg(what, QString::fromLocal8Bit(std::strerror(errno)));
}

// The pid of a live writer holding a plane of that name, or 0.
pid_t liveOwner(const QByteArray &name)
{
    const int fd = shm_open(name.constData(), O_RDONLY, 0);
    if (fd < 0)
        return 0;
    pid_t owner = 0;
    struct stat info;
    if (fstat(fd, &info) == 0 && std::size_t(info.st_size) >= sizeof(Header)) {
        if (void *map = mmap(nullptr, sizeof(Header), PROT_READ, MAP_SHARED, fd, 0); map != MAP_FAILED) {
            const auto *existing = static_cast<const Header *>(map);
            if (existing->magic == Magic && existing->writerPid != getpid() && writerAlive(existing->writerPid))
                owner = existing->writerPid;
            munmap(map, sizeof(Header));
        }
    }
    ::close(fd);
    return owner;
}
}

VideoPlaneWriter::VideoPlaneWriter(const QString &name)
    : planeName(name)
{
}

VideoPlaneWriter::~VideoPlaneWriter()
{
    close();
}

bool VideoPlaneWriter::open(QString *error)
{
    close();
    const QByteArray name = planeName.toLocal8Bit();
    if (const pid_t owner = liveOwner(name)) {
        *error = QStringLiteral("the video plane %1 belongs to the running process %2").arg(planeName).arg(owner);
        return false;
    }
    shm_unlink(name.constData());
    const int fd = shm_open(name.constData(), O_RDWR | O_CREAT | O_EXCL, 0600);
    if (fd < 0) {
        *error = systemError(planeName);
        return false;
    }
    // The object is sparse: only the pages of the frames written take memory.
    void *map = MAP_FAILED;
    if (ftruncate(fd, off_t(TotalSize)) == 0)
        map = mmap(nullptr, TotalSize, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    if (map == MAP_FAILED) {
        *error = systemError(planeName);
        ::close(fd);
        shm_unlink(name.constData());
        return false;
    }
    ::close(fd);
    header = new (map) Header{};
    header->version = Version;
    header->writerPid = getpid();
    header->format = FormatRgb32;
    header->capacity = std::uint32_t(Capacity);
    // Readers take the plane for one only once the magic is there.
    std::atomic_thread_fence(std::memory_order_release);
    header->magic = Magic;
    return true;
}

void VideoPlaneWriter::close()
{
    std::lock_guard<std::mutex> lock(writing);
    if (!header)
        return;
    header->writerPid = 0;
    munmap(header, TotalSize);
    header = nullptr;
    shm_unlink(planeName.toLocal8Bit().constData());
}

bool VideoPlaneWriter::write(const std::uint8_t *pixels, int width, int height, int stride)
{
    std::lock_guard<std::mutex> lock(writing);
    if (!header || width <= 0 || height <= 0 || width > MaxWidth || height > MaxHeight || stride < width * 4)
        return false;
    const std::uint32_t sequence = header->sequence.load(std::memory_order_relaxed);
    header->sequence.store(sequence + 1, std::memory_order_relaxed);
    std::atomic_thread_fence(std::memory_order_release);
    auto *target = reinterpret_cast<std::uint8_t *>(header) + PixelsOffset;
    const std::size_t row = std::size_t(width) * 4;
    for (int y = 0; y < height; ++y)
        std::memcpy(target + row * y, pixels + std::size_t(stride) * y, row);
    header->width = std::uint32_t(width);
    header->height = std::uint32_t(height);
    header->stride = std::uint32_t(row);
    header->sequence.store(sequence + 2, std::memory_order_release);
    return true;
}

void VideoPlaneWriter::clear()
{
    std::lock_guard<std::mutex> lock(writing);
    if (!header)
        return;
    const std::uint32_t sequence = header->sequence.load(std::memory_order_relaxed);
    header->sequence.store(sequence + 1, std::memory_order_relaxed);
    std::atomic_thread_fence(std::memory_order_release);
    header->width = 0;
    header->height = 0;
    header->stride = 0;
    header->sequence.store(sequence + 2, std::memory_order_release);
}
