#pragma once

#include <QString>

#include <atomic>
#include <cstddef>
#include <cstdint>

// The video plane is a POSIX shared memory object: this header, then the
// pixels of the latest frame as 32-bit words 0xffRRGGBB (QImage::Format_RGB32),
// `stride` bytes per row. One process writes (the video manager), any number
// read (the display). A frame is consistent when `sequence` is even and the same
// before and after reading it; it is odd while the writer is at work.
namespace VideoPlaneLayout {

inline constexpr std::uint32_t Magic = 0x4e4c5051; // "QPLN" in memory order
inline constexpr std::uint32_t Version = 1;
inline constexpr std::uint32_t FormatRgb32 = 1;

// The largest frame the plane holds; bigger frames are scaled down before.
inline constexpr int MaxWidth = 1920;
inline constexpr int MaxHeight = 1080;

struct Header
{
    std::uint32_t magic;
    std::uint32_t version;
    std::int32_t writerPid;
    std::atomic<std::uint32_t> sequence;
    std::uint32_t width; // 0: the plane shows no picture
    std::uint32_t height;
    std::uint32_t stride;
    std::uint32_t format;
    std::uint32_t capacity; // bytes of pixels after the header
    std::uint32_t reserved[7];
};

inline constexpr std::size_t PixelsOffset = 64;
static_assert(sizeof(Header) == PixelsOffset);
static_assert(std::atomic<std::uint32_t>::is_always_lock_free, "the sequence is shared between processes");

inline constexpr std::size_t Capacity = std::size_t(MaxWidth) * MaxHeight * 4;
inline constexpr std::size_t TotalSize = PixelsOffset + Capacity;

// The plane's name: QPE_VIDEO_PLANE when set, else one per user and device
// root (QPE_ROOT), so that separate runs on one machine never share a plane.
QString nameFromEnvironment();

// Whether the process that wrote a plane still runs (one of another user's
// counts too).
bool writerAlive(std::int32_t pid);

}
