#include "fuzzsupport.h"

#include "qtopiaipctransport.h"
#include "vodcatalogue.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QList>
#include <QTemporaryDir>

namespace {

QByteArray int32le(quint32 v)
{
    QByteArray b(4, '\0');
    for (int i = 0; i < 4; ++i)
        b[i] = char((v >> (8 * i)) & 0xff);
    return b;
}

void writeFile(const QString &root, const char *devicePath, const QByteArray &bytes)
{
    QFile f(root + QLatin1String(devicePath));
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(bytes);
}

// Two groups of two parts, three titles: enough for every browsing level.
void writeCatalogues(const QString &root)
{
    QByteArray groups = int32le(2);
    for (int g = 0; g < 2; ++g) {
        QByteArray record(VodCatalogue::GroupRecordSize, '\0');
        record.replace(4, 4, int32le(2));
        record.replace(8, 2, QByteArray("g") + char('0' + g));
        for (int p = 0; p < 2; ++p)
            record.replace(92 + VodCatalogue::PartEntrySize * p, 2, QByteArray("p") + char('0' + p));
        groups += record;
    }
    writeFile(root, VodCatalogue::GroupFile, groups);

    QByteArray contents = QByteArray(8, '\0') + int32le(3) + QByteArray(4, '\0');
    for (int t = 0; t < 3; ++t) {
        QByteArray record(VodCatalogue::ContentRecordSize, '\0');
        record.replace(0, 2, QByteArray("t") + char('0' + t));
        contents += record;
    }
    writeFile(root, VodCatalogue::ContentsFile, contents);
}

}

void FuzzSupport::initialise()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The module's debug lines would drown the fuzzer's own output.
    qputenv("QT_LOGGING_RULES", "*.debug=false;*.warning=false");
    static QTemporaryDir root;
    QDir(root.path()).mkpath(QStringLiteral("tmp/status"));
    QDir(root.path()).mkpath(QStringLiteral("tmp/systemdb"));
    qputenv("QPE_ROOT", root.path().toLocal8Bit());
    writeCatalogues(root.path());
    // Real notices, with their own modal loops, gone as soon as they came.
    qputenv("QPE_NOTICE_TIMEOUT", "0");
    // Never destroyed: the fuzzer leaves through exit(), after the platform
    // plugin's own static teardown has begun.
    new QApplication(argc, argv);
}

void FuzzSupport::settle(QWidget *window)
{
    const QPointer<QWidget> owned(window);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    delete owned.data();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QList<QPointer<QWidget>> windows;
    const QList<QWidget *> open = QApplication::topLevelWidgets();
    for (QWidget *w : open)
        windows.append(w);
    for (const QPointer<QWidget> &w : windows)
        delete w.data();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QtopiaIpcTransport::clearTraffic();
}
