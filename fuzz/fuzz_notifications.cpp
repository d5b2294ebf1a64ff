// Every notification, with arbitrary argument blocks, delivered to each kind of
// window in each play state: the push viewer through its channel, the browser
// with an open page and player through its channel, and the two VOD players
// directly.
#include "browser/mvodinfoview.h"
#include "fuzzsupport.h"
#include "messaging/messagecatalogue.h"
#include "messaging/messagedata.h"
#include "messaging/vodmessages.h"
#include "push/videopushview.h"
#include "qtopiachannel.h"
#include "vod.h"
#include "vodplayer/vodplayfullscreenview.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include <QApplication>
#include <QCoreApplication>
#include <QPointer>

#include <cstddef>
#include <cstdint>

namespace {

const VodPlayView::playScreenStatus statuses[] = {
    VodPlayView::Stopped,     VodPlayView::Playing,  VodPlayView::Paused,
    VodPlayView::Interrupted, VodPlayView::Stopping, VodPlayView::PausedForPush};

enum WindowKind { PushViewer, Browser, SmallPlayer, FullPlayer, WindowKinds };

}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    FuzzSupport::initialise();
    return 0;
}

// Input: window kind, play state, then up to 16 notifications, each
// "catalogue index, block length, block".
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzSupport::Input in(data, size);
    const int kind = in.byte() % WindowKinds;
    const VodPlayView::playScreenStatus status = statuses[in.byte() % std::size(statuses)];
    const QList<MessageEntry> &catalogue = messageCatalogue();

    QPointer<VodPlayView> player;
    QPointer<vod> browser;
    QString channel;
    switch (kind) {
    case PushViewer:
        player = new VideoPushView(nullptr, Qt::WindowFlags());
        channel = QLatin1String(VodChannel::PushApplication);
        break;
    case Browser: {
        browser = new vod;
        browser->show();
        QtopiaChannel::deliver(QLatin1String(VodChannel::VideoApplication),
                               QLatin1String(VodMessage::GetGroupList), QByteArray());
        browser->contentRow = 1;
        QtopiaChannel::deliver(QLatin1String(VodChannel::VideoApplication),
                               QLatin1String(VodMessage::SetupOKVod),
                               messageData(qint32(0), qint32(0), qint32(0), 0.0f, 95.5f, 0.0f));
        if (browser->infoView)
            player = browser->infoView->playView;
        channel = QLatin1String(VodChannel::VideoApplication);
        break;
    }
    case SmallPlayer:
        player = new VodPlaySmallScreenView(nullptr, nullptr);
        break;
    case FullPlayer:
        player = new VodPlayFullScreenView(nullptr, nullptr);
        break;
    }
    if (player) {
        player->screenStatus = status;
        if (status != VodPlayView::Stopped)
            player->show();
    }

    // Delivered from the event loop, as the transport does: a notification may
    // come while an earlier one's notice is up, and delete the window under it.
    int pending = 0;
    for (int i = 0; i < 16 && !in.atEnd(); ++i) {
        const MessageEntry &entry = catalogue.at(in.byte() % catalogue.size());
        const QByteArray block = in.bytes(in.byte() % 64);
        const QString message = QLatin1String(entry.signature);
        ++pending;
        QMetaObject::invokeMethod(
            qApp,
            [&pending, channel, player, message, block] {
                --pending;
                if (!channel.isEmpty())
                    QtopiaChannel::deliver(channel, message, block);
                else if (player)
                    player->messageHandle(message, block);
            },
            Qt::QueuedConnection);
    }
    while (pending > 0)
        QCoreApplication::processEvents();
    FuzzSupport::settle(browser ? static_cast<QWidget *>(browser.data()) : player.data());
    return 0;
}
