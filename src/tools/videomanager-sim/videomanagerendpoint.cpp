#include "videomanagerendpoint.h"

#include "cataloguewriter.h"
#include "devicepath.h"
#include "messagetext.h"
#include "messaging/messagecatalogue.h"
#include "messaging/messagereader.h"
#include "messaging/vodmessages.h"
#include "qtopiachannel.h"
#include "qtopiadbustransport.h"
#include "qtopiaipctransport.h"
#include "stopsignals.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

using namespace VodMessage;

VideoManagerEndpoint::VideoManagerEndpoint(QObject *parent)
    : QObject(parent)
{
    auto *requests = new QtopiaChannel(QLatin1String(VodChannel::VideoManager), this);
    connect(requests, &QtopiaChannel::received, this, &VideoManagerEndpoint::onVideoManager);
    auto *calls = new QtopiaChannel(QLatin1String(VodChannel::CallManager), this);
    connect(calls, &QtopiaChannel::received, this, &VideoManagerEndpoint::onCallManager);
}

VideoManagerEndpoint::~VideoManagerEndpoint() = default;

int VideoManagerEndpoint::serve(const QString &ready)
{
    QElapsedTimer clock;
    clock.start();
    QTextStream out(stdout);
    const auto stamp = [&clock] { return QStringLiteral("[%1] ").arg(clock.elapsed() / 1000.0, 9, 'f', 3); };
    // The printing goes with this call: it uses its locals.
    QObject scope;
    connect(this, &VideoManagerEndpoint::logLine, &scope,
            [&out, &stamp](const QString &line) { out << stamp() << line << Qt::endl; });

    // Listen before saying so, so that a peer that starts now is heard.
    if (auto *bus = dynamic_cast<QtopiaDBusTransport *>(QtopiaIpcTransport::instance()))
        bus->sync();
    note(QStringLiteral("ready: ") + ready);
    // Told to stop, it ends as it does normally.
    StopSignals stop;
    connect(&stop, &StopSignals::stopRequested, QCoreApplication::instance(), &QCoreApplication::quit);
    return QCoreApplication::exec();
}

void VideoManagerEndpoint::onVideoManager(const QString &message, const QByteArray &data)
{
    const QString channel = QLatin1String(VodChannel::VideoManager);
    if (!answering()) {
        log(QStringLiteral("<-"), channel, message, data, QStringLiteral("silent: not answered"));
        return;
    }
    if (!findMessage(channel, message)) {
        log(QStringLiteral("<-"), channel, message, data, QStringLiteral("unknown: not answered"));
        return;
    }
    log(QStringLiteral("<-"), channel, message, data);

    if (isMessage(message, ChangeVodWindow)) {
        // The display places the pictures there: the video manager only says so.
        MessageReader in(data);
        const int x = in.readInt();
        const int y = in.readInt();
        const int width = in.readInt();
        const int height = in.readInt();
        note(QStringLiteral("video window now %1,%2 %3x%4").arg(x).arg(y).arg(width).arg(height));
    } else if (isMessage(message, RequestContentsPage)) {
        note(QStringLiteral("paged contents are not offered: not answered"));
    } else if (!answerPush(message)) {
        answerVod(message, data);
    }
}

void VideoManagerEndpoint::writeGroupList(const SimCatalogue &catalogue)
{
    writeCatalogue(QLatin1String(CatalogueLayout::GroupFile), groupCatalogueBytes(catalogue), GetGroupList,
                   QStringLiteral("%1 group(s)").arg(catalogue.groups.size()));
}

void VideoManagerEndpoint::writeContents(const SimCatalogue &catalogue, int group, int part)
{
    const SimPart *titles = catalogue.part(group, part);
    writeCatalogue(QLatin1String(CatalogueLayout::ContentsFile), contentsCatalogueBytes(catalogue, group, part),
                   GetContentsList,
                   QStringLiteral("%1 title(s) of group %2 part %3")
                       .arg(titles ? titles->titles.size() : 0)
                       .arg(group)
                       .arg(part));
}

void VideoManagerEndpoint::writeCatalogue(const QString &file, const QByteArray &bytes, const char *announce,
                                          const QString &what)
{
    const QString path = devicePath(file);
    QString error;
    if (!writeFileAtomically(path, bytes, &error)) {
        note(QStringLiteral("%1: not answered").arg(error));
        return;
    }
    note(QStringLiteral("wrote %1 (%2, %3 bytes)").arg(path, what).arg(bytes.size()));
    send(VodChannel::VideoApplication, announce);
}

void VideoManagerEndpoint::send(const char *channel, const char *message, const QByteArray &data)
{
    sendRaw(QLatin1String(channel), QLatin1String(message), data);
}

void VideoManagerEndpoint::sendRaw(const QString &channel, const QString &message, const QByteArray &data)
{
    log(QStringLiteral("->"), channel, message, data);
    QtopiaIpcTransport::instance()->send(channel, message, data);
}

void VideoManagerEndpoint::log(const QString &direction, const QString &channel, const QString &message,
                               const QByteArray &data, const QString &remark)
{
    emit logLine(messageLogLine(direction, channel, message, data, remark));
}

void VideoManagerEndpoint::note(const QString &text)
{
    emit logLine(QLatin1String("-- ") + text);
}
