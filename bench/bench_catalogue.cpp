// Loading and reading the two catalogue files at growing sizes, against a plain
// read of the same file, and the peak memory that loading and reading take.

#include "devicepath.h"
#include "testenvironment.h"
#include "browser/mvodlistview.h"
#include "vod.h"
#include "vodcatalogue.h"

#include <QFile>
#include <QtTest>

#include <cstring>
#include <malloc.h>
#include <memory>

namespace {

enum Kind { Groups, Contents };

// Record counts per kind, up to the largest catalogue the browser reads
// (VodCatalogue::MaxFileBytes, 64 MiB): 10^4 group records of 1772 bytes, 10^5
// contents records of 240 bytes.
QList<int> counts(Kind kind)
{
    return kind == Groups ? QList<int>{1000, 10000} : QList<int>{1000, 10000, 100000};
}

QString fileOf(Kind kind)
{
    return QLatin1String(kind == Groups ? VodCatalogue::GroupFile : VodCatalogue::ContentsFile);
}

void putInt(QByteArray &bytes, qsizetype offset, qint32 value)
{
    const quint32 v = quint32(value);
    const char le[4] = {char(v & 0xff), char(v >> 8 & 0xff), char(v >> 16 & 0xff), char(v >> 24 & 0xff)};
    std::memcpy(bytes.data() + offset, le, 4);
}

void putName(QByteArray &bytes, qsizetype offset, const QByteArray &name)
{
    std::memcpy(bytes.data() + offset, name.constData(), size_t(name.size()));
}

// A file as the video manager writes it, with names of 10 to 16 bytes.
QByteArray catalogueBytes(Kind kind, int count)
{
    if (kind == Groups) {
        QByteArray bytes(4 + qsizetype(VodCatalogue::GroupRecordSize) * count, '\0');
        putInt(bytes, 0, count);
        for (int g = 0; g < count; ++g) {
            const qsizetype record = 4 + qsizetype(VodCatalogue::GroupRecordSize) * g;
            putInt(bytes, record + 4, 2);
            putName(bytes, record + 8, "Group " + QByteArray::number(g));
            putName(bytes, record + 92, "Part A");
            putName(bytes, record + 92 + VodCatalogue::PartEntrySize, "Part B");
        }
        return bytes;
    }
    QByteArray bytes(16 + qsizetype(VodCatalogue::ContentRecordSize) * count, '\0');
    putInt(bytes, 8, count);
    for (int i = 0; i < count; ++i)
        putName(bytes, 16 + qsizetype(VodCatalogue::ContentRecordSize) * i, "Title " + QByteArray::number(i));
    return bytes;
}

QStringList readerOf(Kind kind, const QByteArray &catalogue)
{
    return kind == Groups ? VodCatalogue::groupNames(catalogue) : VodCatalogue::contentTitles(catalogue);
}

// kB from a line of /proc/self/status.
qint64 statusKb(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray key = QByteArray(field) + ':';
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

// Resets the peak resident size to the current one (Linux 4.0 and later).
bool resetPeak()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    return clear.open(QIODevice::WriteOnly) && clear.write("5") == 1;
}

// What the strings of a list occupy: each QString's array header, UTF-16 text
// and terminator, and its slot in the list.
qint64 stringBytes(const QStringList &list)
{
    qint64 bytes = 0;
    for (const QString &s : list)
        bytes += qint64(sizeof(QString)) + 16 + 2 * (s.size() + 1);
    return bytes;
}

} // namespace

Q_DECLARE_METATYPE(Kind)

class BenchCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        environment = std::make_unique<TestEnvironment>();
        QDir().mkpath(environment->path(QStringLiteral("/tmp/systemdb")));
    }

    void load_data() { rows(); }
    // VodCatalogue::load and the reader of the file's list.
    void load()
    {
        QFETCH(Kind, kind);
        QFETCH(int, count);
        const QString file = fileOf(kind);
        write(kind, count);
        QByteArray buffer;
        QStringList list;
        QBENCHMARK {
            // A new stamp each time: an unchanged file is not read again otherwise.
            DeviceFile::Stamp stamp;
            QVERIFY(VodCatalogue::load(file, buffer, stamp));
            list = readerOf(kind, buffer);
        }
        QCOMPARE(list.size(), count);
    }

    void plainRead_data() { rows(); }
    // Reference: QFile::readAll of the same file.
    void plainRead()
    {
        QFETCH(Kind, kind);
        QFETCH(int, count);
        write(kind, count);
        const QString path = devicePath(fileOf(kind));
        qint64 size = 0;
        QBENCHMARK {
            // Each copy goes before the next is read, as load() releases its buffer
            // first: the allocator can then hand out the same memory again.
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            size = bytes.size();
        }
        QCOMPARE(size, QFileInfo(path).size());
    }

    void peakMemory_data() { rows(); }
    // Peak resident growth of one load and read.
    void peakMemory()
    {
        QFETCH(Kind, kind);
        QFETCH(int, count);
        write(kind, count);
        // Memory freed by earlier rows would hide the growth if it stayed mapped.
        malloc_trim(0);
        if (!resetPeak())
            QSKIP("the peak resident size cannot be reset here");
        const qint64 before = statusKb("VmRSS");
        {
            QByteArray buffer;
            DeviceFile::Stamp stamp;
            QVERIFY(VodCatalogue::load(fileOf(kind), buffer, stamp));
            const QStringList list = readerOf(kind, buffer);
            QCOMPARE(list.size(), count);
        }
        const qint64 peak = statusKb("VmHWM");
        QTest::setBenchmarkResult(qreal(peak - before) * 1024, QTest::BytesAllocated);
    }

    void listFill_data()
    {
        QTest::addColumn<int>("count");
        for (int count : {1000, 10000, 100000, 1000000})
            QTest::addRow("%d titles", count) << count;
    }
    // The browser's list filled with that many titles (vod::fillListWidget).
    void listFill()
    {
        QFETCH(int, count);
        vod browser;
        QStringList titles;
        titles.reserve(count);
        for (int i = 0; i < count; ++i)
            titles.append(QStringLiteral("Title %1").arg(i));
        // Repeated until the wall clock (whole milliseconds) has enough to count.
        QBENCHMARK {
            browser.listView->clear();
            browser.listStrings = titles;
            QVERIFY(browser.fillListWidget());
        }
        QCOMPARE(browser.listView->count(), count);
    }

    void expectedMemory_data() { rows(); }
    // What the peak should be near: the loaded file and the strings of its list.
    void expectedMemory()
    {
        QFETCH(Kind, kind);
        QFETCH(int, count);
        write(kind, count);
        QByteArray buffer;
        DeviceFile::Stamp stamp;
        QVERIFY(VodCatalogue::load(fileOf(kind), buffer, stamp));
        QTest::setBenchmarkResult(qreal(buffer.size() + stringBytes(readerOf(kind, buffer))), QTest::BytesAllocated);
    }

private:
    static void rows()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<int>("count");
        for (Kind kind : {Groups, Contents}) {
            for (int count : counts(kind)) {
                const QString name = QStringLiteral("%1 %2").arg(kind == Groups ? "groups" : "contents").arg(count);
                QTest::newRow(qPrintable(name)) << kind << count;
            }
        }
    }

    // Writes the file once per kind and size; the rows of the three benchmarks share it.
    void write(Kind kind, int count)
    {
        if (written.value(kind) == count)
            return;
        environment->writeFile(fileOf(kind), catalogueBytes(kind, count));
        written[kind] = count;
    }

    std::unique_ptr<TestEnvironment> environment;
    QHash<int, int> written;
};

QTEST_MAIN(BenchCatalogue)
#include "bench_catalogue.moc"
