#include "videopushview.h"

#include "messaging/messagereader.h"
#include "messaging/vodmessages.h"
#include "player/playerlogic.h"
#include "player/playscreen.h"
#include "videopushfullview.h"

#include "devicekeys.h"
#include "qnoticedialog.h"
#include "qsoftmenubar.h"
#include "qtopiachannel.h"
#include "qtopiaipcenvelope.h"

#include "qlogbase.h"

#include <QCloseEvent>
#include <QDebug>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QPixmap>
#include <QTimer>

namespace {
// Without a sign of life for this long the server is taken to be gone.
constexpr int ServerWatchdogMsecs = 30000;
// The video manager needs this long to move its picture.
constexpr int WindowChangeMsecs = 500;

}

VideoPushView::VideoPushView(QWidget *parent, Qt::WindowFlags flags)
    : VodPlayView(nullptr, SmallPushScreen, parent)
{
    Q_UNUSED(flags);
    setTotalTime(QString());
    startAnimation();

    auto *channel = new QtopiaChannel(QLatin1String(VodChannel::PushApplication), this);
    connect(channel, &QtopiaChannel::received, this, &VideoPushView::pushMessageHandle);

    volume = 1;
    screenStatus = Stopped;

    setWindowIconText(QStringLiteral("title_icon_tv"));
    setWindowTitle(tr("Video Contents") + QLatin1Char(';') + tr("Broadcast"));

    QSoftMenuBar::setLabel(this, Qt::Key_Context2, QString(), QString(), QSoftMenuBar::AnyFocus);
    QSoftMenuBar::setLabel(this, Qt::Key_Select, QString(), QString(), QSoftMenuBar::AnyFocus);
    QSoftMenuBar::setLabel(this, Qt::Key_Context1, QString(), QString(), QSoftMenuBar::AnyFocus);
    QSoftMenuBar::setLabel(this, Qt::Key_Back, QStringLiteral(":image/vod/vod_icon_botton05.png"), QString(),
                           QSoftMenuBar::AnyFocus);

    // The envelope outlives showMaximized(), so the "hideVodFullScreen()" that
    // showing sends reaches a VOD player before the video manager hears of us.
    {
        QtopiaIpcEnvelope executed{QLatin1String(VodChannel::VideoManager),
                                   QLatin1String(VodMessage::PushAppExecuted)};
        showMaximized();
    }
}

VideoPushView::~VideoPushView()
{
    delete fullScreenView;
    fullScreenView = nullptr;
}

void VideoPushView::pushRequestHandle(const QString &message, const QByteArray &data)
{
    const QString channel = QLatin1String(VodChannel::VideoManager);
    if (isMessage(message, VodMessage::PlayPush)) {
        // The video manager takes a C string here, and always from the start.
        QtopiaIpcEnvelope e(channel, message);
        e << "0.0";
    } else if (isMessage(message, VodMessage::PausePush) || isMessage(message, VodMessage::ResumePush)
               || isMessage(message, VodMessage::StopPush) || isMessage(message, VodMessage::StopUIPush)
               || isMessage(message, VodMessage::StopMulticastPush)) {
        QtopiaIpcEnvelope e(channel, message);
    } else if (isMessage(message, VodMessage::ChangeVodWindow)) {
        MessageReader reader(data);
        const int x = reader.readInt();
        const int y = reader.readInt();
        const int w = reader.readInt();
        const int h = reader.readInt();
        QtopiaIpcEnvelope e(channel, message);
        e << x << y << w << h;
    }
}

void VideoPushView::videoAppRequestHandle(const QString &message, const QByteArray &data)
{
    Q_UNUSED(data);
    if (isMessage(message, VodMessage::StartVideoPushApp)) {
        QtopiaIpcEnvelope e(QLatin1String(VodChannel::VideoApplication), message);
    }
}

void VideoPushView::requestPlay()
{
    videoAppRequestHandle(QLatin1String(VodMessage::StartVideoPushApp), QByteArray());
    pushRequestHandle(QLatin1String(VodMessage::PlayPush), QByteArray());
    setPushStatus(Playing);
}

void VideoPushView::requestPause()
{
    pushRequestHandle(QLatin1String(VodMessage::PausePush), QByteArray());
}

void VideoPushView::requestResume()
{
    pushRequestHandle(QLatin1String(VodMessage::ResumePush), QByteArray());
}

void VideoPushView::requestStop()
{
    pushRequestHandle(QLatin1String(VodMessage::StopPush), QByteArray());
    setPushStatus(Stopped);
}

void VideoPushView::requestStopUI()
{
    pushRequestHandle(QLatin1String(VodMessage::StopUIPush), QByteArray());
    setPushStatus(Stopped);
}

void VideoPushView::requestStopMulticast()
{
    pushRequestHandle(QLatin1String(VodMessage::StopMulticastPush), QByteArray());
    setPushStatus(Stopped);
}

void VideoPushView::changePushWindow(playScreenType type)
{
    playScreenReady = false;
    // The area goes dark while the video manager moves its picture.
    playScreen->update();
    if (type == SmallPushScreen || type == FullPushScreen || type == WidePushScreen)
        pushRequestHandle(QLatin1String(VodMessage::ChangeVodWindow), PlayerLogic::videoWindowRequest(type));
    QTimer::singleShot(WindowChangeMsecs, Qt::PreciseTimer, this, &VideoPushView::updatePlayScreen);
}

void VideoPushView::setPushStatus(playScreenStatus status)
{
    if (fullScreenView)
        fullScreenView->setScreenStatus(status);
    setScreenStatus(status);
}

void VideoPushView::repaintViews()
{
    if (fullScreenView)
        fullScreenView->update();
    update();
}

void VideoPushView::close()
{
    qCDebug(lcQtopiaDebug) << "VideoPushView::close()";
    QWidget::close();
}

void VideoPushView::pushMessageHandle(const QString &message, const QByteArray &data)
{
    MessageReader reader(data);

    if (isMessage(message, VodMessage::Error)) {
        reader.readInt();
    } else if (isMessage(message, VodMessage::StartPush)) {
        // Leaves last, after the volume: a VOD player gives up the display only
        // once the broadcast is set up.
        QtopiaIpcEnvelope hide{QLatin1String(VodChannel::VideoApplication),
                               QLatin1String(VodMessage::HideVodFullScreen)};
        requestPlay();
        if (!serverWatchdog) {
            serverWatchdog = new QTimer(this);
            serverWatchdog->setTimerType(Qt::PreciseTimer);
            connect(serverWatchdog, &QTimer::timeout, this, &VideoPushView::setServerIsDown);
        }
        serverWatchdog->start(ServerWatchdogMsecs);
        repaintViews();
        setVolume(volume);
    } else if (isMessage(message, VodMessage::PauseOKPush)) {
        if (screenStatus == Playing) {
            setPushStatus(Paused);
            repaintViews();
        }
        if (serverWatchdog)
            serverWatchdog->stop();
    } else if (isMessage(message, VodMessage::EndOKPush)) {
        requestStop();
        close();
        if (fullScreenView)
            fullScreenView->close();
        fullScreenShown = false;
    } else if (isMessage(message, VodMessage::EndOKMulticastPush)) {
        requestStopMulticast();
        close();
        if (fullScreenView)
            fullScreenView->close();
        fullScreenShown = false;
    } else if (isMessage(message, VodMessage::StartCall) || isMessage(message, VodMessage::HideVodFullScreen)) {
        if (screenStatus == Playing) {
            requestPause();
            setPushStatus(Interrupted);
            repaintViews();
        }
        // Only a full-screen view still open: one handed back stays closed.
        if (fullScreenView && fullScreenShown && fullScreenView->isVisible())
            fullScreenView->hide();
    } else if (isMessage(message, VodMessage::StopCall) || isMessage(message, VodMessage::ShowVodFullScreen)) {
        if (screenStatus == Interrupted || screenStatus == Paused) {
            requestResume();
            setPushStatus(Playing);
        }
        if (fullScreenView && fullScreenShown && fullScreenView->isHidden())
            fullScreenView->show();
    } else if (isMessage(message, VodMessage::CurrentTime)) {
        serverLost = false;
        if (serverWatchdog)
            serverWatchdog->start(ServerWatchdogMsecs);
    } else if (isMessage(message, VodMessage::VodSoundMute)) {
        isMute = reader.readInt() == 1;
        if (fullScreenView) {
            fullScreenView->isMute = isMute;
            fullScreenView->showVolumeRect();
        }
        update();
    } else if (isMessage(message, VodMessage::SetupFailPush)) {
        reader.readInt();
        const QPointer<VideoPushView> self(this);
        QNoticeDialog::warning(this, tr("It's not broadcasting time"), QString(), 3);
        if (!self)
            return;
        // A start that came while the notice was up must not leave the
        // watchdog running behind the closed view.
        if (serverWatchdog)
            serverWatchdog->stop();
        setPushStatus(Stopped);
        if (fullScreenView)
            fullScreenView->close();
        fullScreenShown = false;
        close();
    }
}

void VideoPushView::fullScreenCloseSlot(VodPlayView::playScreenStatus pss, ulong ct, int cv, bool isMute)
{
    Q_UNUSED(pss);
    fullScreenShown = false;
    currentMsecs = quint32(ct);
    volume = cv;
    this->isMute = isMute;
    if (frameSliderTimer)
        frameSliderTimer->start();
    changePushWindow(SmallPushScreen);
    if (isHidden())
        show();
    update();
    playScreen->update();
}

void VideoPushView::setServerIsDown()
{
    // The broadcast is left running: only the user knows whether to give up.
    // Should they, nobody is left to confirm the stop: the view closes at once.
    serverLost = true;
    const QPointer<VideoPushView> self(this);
    QNoticeDialog::information(this, tr("Temporary disconnection from VCS server"),
                               tr("If you want to quit this broadcast, Please push 'stop' button"), 3);
    if (!self)
        return;
    if (fullScreenView)
        fullScreenView->update();
    if (serverWatchdog)
        serverWatchdog->stop();
}

void VideoPushView::leaveLostBroadcast()
{
    if (!serverLost)
        return;
    if (fullScreenView)
        fullScreenView->close();
    fullScreenShown = false;
    close();
}

void VideoPushView::keyPressEvent(QKeyEvent *e)
{
    switch (e->key()) {
    case Qt::Key_Hangup:
        requestStopUI();
        // Ignored here, so that the platform sees the hang-up as well.
        QWidget::keyPressEvent(e);
        qCDebug(lcQtopiaDebug) << "VideoPushView::keyPressEvent" << "HangUp";
        leaveLostBroadcast();
        break;
    case Key_Video4:
        if (screenStatus == Playing && playScreenReady) {
            if (frameSliderTimer)
                frameSliderTimer->stop();
            delete fullScreenView;
            fullScreenView = new VideoPushFullView(this, nullptr);
            connect(fullScreenView, &VodPlayView::fullScreenCloseSignal, this, &VideoPushView::fullScreenCloseSlot);
            connect(fullScreenView, &QDialog::rejected, this, &VideoPushView::close);
            fullScreenView->resumeFrameSlider();
            fullScreenShown = true;
            handOverTo(fullScreenView);
            changePushWindow(FullPushScreen);
        }
        break;
    case Qt::Key_Back:
        requestStopUI();
        qCDebug(lcQtopiaDebug) << "VideoPushView::keyPressEvent" << "Back";
        leaveLostBroadcast();
        break;
    default:
        break;
    }
    VodPlayView::keyPressEvent(e);
}

void VideoPushView::paintEvent(QPaintEvent *e)
{
    Q_UNUSED(e);
    QPainter painter(this);
    paintSmallLayout(&painter, tr("Full"));
}

void VideoPushView::closeEvent(QCloseEvent *e)
{
    Q_UNUSED(e);
    // Leaves the event accepted: a VOD player may take the display back.
    QtopiaIpcEnvelope show{QLatin1String(VodChannel::VideoApplication),
                           QLatin1String(VodMessage::ShowVodFullScreen)};
}

void VideoPushView::showEvent(QShowEvent *e)
{
    Q_UNUSED(e);
    showMaximized();
    QtopiaIpcEnvelope hide{QLatin1String(VodChannel::VideoApplication),
                           QLatin1String(VodMessage::HideVodFullScreen)};
}
