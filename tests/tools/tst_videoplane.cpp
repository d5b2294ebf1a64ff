#include "videoplanelayout.h"
#include "videoplanereader.h"
#include "videoplanewriter.h"

#include <QImage>
#include <QTest>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>

// The shared frame buffer between the video manager and the display: what one
// process writes, another reads whole, and a plane whose writer is gone is none.
class tst_VideoPlane : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { shm_unlink(name().toLocal8Bit().constData()); }

    void framesArriveWhole_data();
    void framesArriveWhole();
    void crashedWriterLeavesNoPlane();
    void nonsenseSizesAreNoPicture();

private:
    // One name for this test's process and the children it forks.
    QString name() const { return planeName; }
    const QString planeName = QStringLiteral("/tst-videoplane-%1").arg(getpid());
};

namespace {
// A frame of `width` x `height` whose pixels all differ, in rows of `stride` bytes.
QImage pattern(int width, int height, int stride)
{
    QImage rows(stride / 4, height, QImage::Format_RGB32);
    rows.fill(Qt::black);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            rows.setPixel(x, y, qRgb(x * 7 % 256, y * 13 % 256, (x + y) % 256));
    return rows;
}
}

void tst_VideoPlane::framesArriveWhole_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("stride");
    QTest::newRow("packed rows") << 64 << 48 << 256;
    QTest::newRow("padded rows") << 3 << 2 << 32;
}

void tst_VideoPlane::framesArriveWhole()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, stride);

    VideoPlaneWriter writer(name());
    QString error;
    QVERIFY2(writer.open(&error), qPrintable(error));
    VideoPlaneReader reader(name());
    const std::uint32_t before = reader.sequence();

    const QImage frame = pattern(width, height, stride);
    QVERIFY(writer.write(frame.constBits(), width, height, stride));
    QVERIFY(reader.sequence() != before);
    const std::optional<QImage> read = reader.frame();
    QVERIFY(read);
    QCOMPARE(*read, frame.copy(0, 0, width, height));

    // A frame too large for the plane is refused; the last one stays.
    QVERIFY(!writer.write(frame.constBits(), VideoPlaneLayout::MaxWidth + 1, 1, (VideoPlaneLayout::MaxWidth + 1) * 4));
    QCOMPARE(*reader.frame(), frame.copy(0, 0, width, height));
}


void tst_VideoPlane::crashedWriterLeavesNoPlane()
{
    // A video manager that dies leaves its shared memory object behind.
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        VideoPlaneWriter writer(name());
        QString error;
        const QImage frame = pattern(4, 4, 16);
        _exit(writer.open(&error) && writer.write(frame.constBits(), 4, 4, 16) ? 0 : 1);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    const int left = shm_open(name().toLocal8Bit().constData(), O_RDONLY, 0);
    QVERIFY(left >= 0);
    close(left);

    VideoPlaneReader reader(name());
    QVERIFY(!reader.frame());
    // The next video manager takes the name over.
    VideoPlaneWriter next(name());
    QString error;
    QVERIFY2(next.open(&error), qPrintable(error));
    QVERIFY(reader.frame());
}


void tst_VideoPlane::nonsenseSizesAreNoPicture()
{
    // Another process of ours writes a header that promises more than the plane holds.
    VideoPlaneWriter writer(name());
    QString error;
    QVERIFY2(writer.open(&error), qPrintable(error));
    const int fd = shm_open(name().toLocal8Bit().constData(), O_RDWR, 0);
    QVERIFY(fd >= 0);
    void *map = mmap(nullptr, VideoPlaneLayout::TotalSize, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    close(fd);
    QVERIFY(map != MAP_FAILED);
    auto *header = static_cast<VideoPlaneLayout::Header *>(map);
    header->width = 100000;
    header->height = 100000;
    header->stride = 400000;
    header->sequence += 2;

    VideoPlaneReader reader(name());
    QVERIFY(reader.frame());
    QVERIFY(reader.frame()->isNull());
    munmap(map, VideoPlaneLayout::TotalSize);
}


QTEST_GUILESS_MAIN(tst_VideoPlane)
#include "tst_videoplane.moc"
