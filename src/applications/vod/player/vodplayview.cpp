#include "vodplayview.h"

#include "devicekeys.h"
#include "emptybg.h"
#include "devicepath.h"
#include "homekeyblock.h"
#include "messaging/messagedata.h"
#include "messaging/messagereader.h"
#include "messaging/vodmessages.h"
#include "playeraccessibleinterface.h"
#include "playerlogic.h"
#include "playscreen.h"
#include "qdirectpainter.h"
#include "qnoticedialog.h"
#include "qsoftmenubar.h"
#include "qtopiaipcenvelope.h"
#include "qvaluespaceitem.h"
#include "vod.h"

#include "qlogbase.h"

#include <QCloseEvent>
#include <QColor>
#include <QDebug>
#include <QFile>
#include <QFont>
#include <QFontMetrics>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPointer>
#include <QRegion>
#include <QSettings>
#include <QTimer>

namespace {

// Width of the progress bars, in pixels.
constexpr int barWidth = 206;


void stopIfPresent(QTimer *timer)
{
    if (timer)
        timer->stop();
}

void startIfPresent(QTimer *timer)
{
    if (timer)
        timer->start();
}

void deleteTimer(QTimer *&timer)
{
    if (timer) {
        timer->stop();
        delete timer;
        timer = nullptr;
    }
}

} // namespace

VodPlayView::VodPlayView(vod *sender, playScreenType type, QWidget *parent)
    : QDialog(parent), screenType(type), requestSender(sender), videoWindowType(type)
{
    setModal(false);
    setFocusPolicy(Qt::StrongFocus);

    // Every interval the players keep runs on a precise timer: a coarse one
    // may fire up to 5 % early.
    seekTimer = new QTimer(this);
    seekTimer->setTimerType(Qt::PreciseTimer);
    seekTimer->setSingleShot(true);
    seekTimer->setInterval(1000);
    connect(seekTimer, &QTimer::timeout, this, &VodPlayView::doFowardOrReward);

    if (!playScreen)
        playScreen = new PlayScreen(this);

    resize(480, 210);
    installEventFilter(this);

    // The video manager needs a moment to place its window before the area opens.
    QTimer::singleShot(500, Qt::PreciseTimer, this, &VodPlayView::updatePlayScreen);

    setHomeKeyBlocked(this, true);

    // So much of a player is drawn that assistive tools get its state as text,
    // built only when they ask.
    static const bool accessible = (QAccessible::installFactory(&PlayerAccessibleInterface::create), true);
    Q_UNUSED(accessible);
}

VodPlayView::~VodPlayView()
{
    delete volumeRectTimer;
    volumeRectTimer = nullptr;
    stopAllTimers();
}

void VodPlayView::setScreenStatus(playScreenStatus status)
{
    screenStatus = status;
    update();
}

// ---------------------------------------------------------------------------
// Requests

void VodPlayView::sendRequest(const char *message, const QByteArray &data)
{
    if (requestSender)
        requestSender->vodRequestHandle(QString::fromLatin1(message), data);
}

void VodPlayView::togglePlayback()
{
    switch (screenStatus) {
    case Playing:
        playScreen->setShowPlayIcon(true);
        pauseVod(0);
        break;
    case Interrupted:
        resumeVod();
        break;
    case Paused:
        playScreen->setShowPlayIcon(false);
        resumeVod();
        break;
    case Stopped:
        playScreen->setShowPlayIcon(false);
        startVod();
        break;
    default:
        break;
    }
}

void VodPlayView::startVod()
{
    // The start position is the one-character text "0": too short for a float,
    // so the request sender reads 0.
    sendRequest(VodMessage::StartVod, QByteArray("0"));
}

void VodPlayView::playVod()
{
    ignoreNextNotification = false;
    startVod();
}

void VodPlayView::stopVod()
{
    sendRequest(VodMessage::StopVod, QByteArray());
}

void VodPlayView::pauseVod(int reason)
{
    sendRequest(VodMessage::PauseVod, messageData(reason));
}

void VodPlayView::resumeVod()
{
    const QByteArray data = messageData(pausedTime);
    if (!QFile::exists(devicePath(QStringLiteral("/tmp/status/vod_setup_status")))) {
        sendRequest(VodMessage::ResumeVod, data);
        return;
    }

    // The video manager is still connecting to the server: refuse, and keep a
    // full-screen player out of the way of the notice while it is up.
    const bool hideAroundNotice = screenType != SmallVodScreen;
    if (hideAroundNotice)
        setVisible(false);
    // The notice's modal loop may delete this player.
    const QPointer<VodPlayView> self(this);
    QNoticeDialog::information(this, tr("Now connecting server"), tr("Please try agian"), 2);
    if (self && hideAroundNotice)
        setVisible(true);
}

void VodPlayView::forwardVod()
{
    const auto target = PlayerLogic::seekTarget(PlayerLogic::SeekDirection::Forward, currentMsecs,
                                                quint32(seekSteps), totalTime);
    if (target)
        sendRequest(VodMessage::ForwardVod, messageData(float(double(*target) / 1000.0)));
    update();
    playScreen->update();
    seekSteps = 0;
}

void VodPlayView::reverseVod()
{
    const auto target = PlayerLogic::seekTarget(PlayerLogic::SeekDirection::Reverse, currentMsecs,
                                                quint32(seekSteps), totalTime);
    if (target)
        sendRequest(VodMessage::ReverseVod, messageData(float(double(*target) / 1000.0)));
    update();
    playScreen->update();
    seekSteps = 0;
}

void VodPlayView::doFowardOrReward()
{
    // Each key press stands for five seconds.
    seekSteps *= 5;
    if (seekSteps > 0) {
        forwardVod();
    } else if (seekSteps < 0) {
        seekSteps = -seekSteps;
        reverseVod();
    }
}

// ---------------------------------------------------------------------------
// Timers

void VodPlayView::stopAllTimers()
{
    deleteTimer(frameSliderTimer);
    deleteTimer(animationTimer);
    deleteTimer(seekTimer);
}

void VodPlayView::addSeekStep(int step)
{
    playScreen->setShowPlayIcon(false);
    if (seekTimer) {
        seekTimer->stop();
        seekTimer->start();
    }
    seekSteps += step;
}

void VodPlayView::resumeFrameSlider()
{
    if (screenStatus == Playing)
        startIfPresent(frameSliderTimer);
    ignoreNextNotification = false;
}

void VodPlayView::updateFrameSlider()
{
    sliderTime += 2000;
    if (sliderTime < totalTime)
        return;
    endOfContent();
}

void VodPlayView::endOfContent()
{
    switch (screenType) {
    case SmallVodScreen:
        stopIfPresent(frameSliderTimer);
        playScreen->setShowPlayIcon(true);
        stopVod();
        break;
    case FullVodScreen:
    case WideVodScreen:
        stopIfPresent(frameSliderTimer);
        playScreen->setShowPlayIcon(true);
        emit fullScreenCloseSignal(Stopping, currentMsecs, volume, isMute);
        close();
        break;
    default:
        break;
    }
}

// ---------------------------------------------------------------------------
// Notifications

void VodPlayView::messageHandle(const QString &message, const QByteArray &data)
{
    MessageReader reader(data);
    const auto repaint = [this]() {
        update();
        playScreen->update();
    };

    if (isMessage(message, VodMessage::StartOKVod)) {
        setScreenStatus(Playing);
        startIfPresent(frameSliderTimer);
        playScreen->setShowPlayIcon(false);
        repaint();
    } else if (isMessage(message, VodMessage::StartFailVod)) {
        reader.readInt();
        if (screenType == SmallVodScreen) {
            stopVod();
        } else if (screenType == FullVodScreen || screenType == WideVodScreen) {
            stopIfPresent(frameSliderTimer);
            emit fullScreenCloseSignal(Stopping, currentMsecs, volume, isMute);
            close();
        }
    } else if (isMessage(message, VodMessage::PauseOKVod) || isMessage(message, VodMessage::PauseVodByServer)) {
        const float position = reader.readFloat();
        // A pause that a call or the push application asked for keeps its reason.
        if (screenStatus != Interrupted && screenStatus != PausedForPush)
            setScreenStatus(Paused);
        pausedTime = position;
        stopIfPresent(frameSliderTimer);
        playScreen->setShowPlayIcon(true);
        repaint();
    } else if (isMessage(message, VodMessage::PauseFailVod)) {
        // Nothing changed on the video manager's side.
    } else if (isMessage(message, VodMessage::EndOKVod)) {
        setScreenStatus(Stopped);
        stopIfPresent(frameSliderTimer);
        currentMsecs = 0;
        playScreen->setShowPlayIcon(true);
        stopAllTimers();
        emit notifyStopPlay();
        close();
    } else if (isMessage(message, VodMessage::ResumedOKVod)) {
        if (callCount > 0) {
            // The call is still on: hold the video again.
            pauseVod(1);
            return;
        }
        setScreenStatus(Playing);
        currentMsecs = PlayerLogic::pausedPositionMsecs(pausedTime);
        startIfPresent(frameSliderTimer);
        playScreen->setShowPlayIcon(false);
        repaint();
    } else if (isMessage(message, VodMessage::Error)) {
        reader.readInt();
    } else if (isMessage(message, VodMessage::StartPush)) {
        playScreen->setShowPlayIcon(false);
    } else if (isMessage(message, VodMessage::PauseOKPush) || isMessage(message, VodMessage::EndOKPush)) {
        playScreen->setShowPlayIcon(true);
    } else if (isMessage(message, VodMessage::StartCall)) {
        ++callCount;
        if (screenStatus == Playing || screenStatus == Paused || screenStatus == Stopped) {
            stopIfPresent(frameSliderTimer);
            setScreenStatus(Interrupted);
            pauseVod(1);
        }
        if (screenType != SmallVodScreen)
            setVisible(false);
    } else if (isMessage(message, VodMessage::StopCall)) {
        // The status stays Interrupted: the user resumes with Select.
        --callCount;
        if (screenType != SmallVodScreen)
            setVisible(true);
    } else if (isMessage(message, VodMessage::HideVodFullScreen)) {
        // The status follows with the pause notification.
        if (screenStatus == Playing)
            pauseVod(0);
        if (screenType != SmallVodScreen)
            setVisible(false);
    } else if (isMessage(message, VodMessage::ShowVodFullScreen)) {
        if (screenType != SmallVodScreen)
            setVisible(true);
    } else if (isMessage(message, VodMessage::StartVideoPushApp)) {
        if (screenStatus == Playing) {
            setScreenStatus(PausedForPush);
            pauseVod(1);
        }
    } else if (isMessage(message, VodMessage::StopVideoPushApp)) {
        if (screenStatus == PausedForPush) {
            // The notice runs a modal loop: the content may end, or its page be
            // replaced with this player, before it returns.
            const QPointer<VodPlayView> self(this);
            QNoticeDialog::information(this, tr("Video will be resumed"), QString(), 3);
            if (self && screenStatus == PausedForPush)
                resumeVod();
        }
    } else if (isMessage(message, VodMessage::CurrentTime)) {
        const float seconds = reader.readFloat();
        // The end guard: once less than a second is left, playback is ended even
        // if the video manager stops reporting the time.
        if (PlayerLogic::lessThanOneSecondLeft(totalTime, seconds) && !frameSliderTimer) {
            frameSliderTimer = new QTimer(this);
            frameSliderTimer->setTimerType(Qt::PreciseTimer);
            frameSliderTimer->setInterval(2000);
            connect(frameSliderTimer, &QTimer::timeout, this, &VodPlayView::updateFrameSlider);
            frameSliderTimer->start();
        }
        updateFlowingTime(PlayerLogic::reportedTime(seconds));
    } else if (isMessage(message, VodMessage::VodSoundMute)) {
        isMute = reader.readInt() == 1;
        if (screenType == SmallVodScreen)
            update();
        else if (screenType == FullVodScreen || screenType == WideVodScreen)
            showVolumeRect();
    }
}

// ---------------------------------------------------------------------------
// Time, progress and animation

void VodPlayView::setTotalTime(const QString &text)
{
    totalTimeText = text;
    const QTime length = QTime::fromString(text, QStringLiteral("hh:mm:ss"));
    totalTime = PlayerLogic::totalTimeMsecs(length);
    progressStep = PlayerLogic::progressStepFor(length, barWidth);
}

void VodPlayView::updateFlowingTime(QTime currentTime)
{
    currentMsecs = quint32(QTime(0, 0, 0, 0).msecsTo(currentTime));
    progressOffset = 0;
    flowingTimeText = PlayerLogic::clockText(currentTime);
    sliderTime = currentMsecs;
    if (currentMsecs >= totalTime && !totalTimeText.isEmpty()) {
        stopIfPresent(frameSliderTimer);
        playScreen->setShowPlayIcon(true);
        stopVod();
        return;
    }
    repaintFlowingTime();
}

void VodPlayView::repaintFlowingTime()
{
    // The read-out, and the bar, which moves with every report as well.
    QRegion region(flowingTimeRect);
    if (!totalTimeText.isEmpty())
        region += progressBarRect();
    update(region);
}

QRect VodPlayView::progressBarRect() const
{
    return isSmallKind(screenType) ? QRect(274, 118, barWidth, 3) : QRect(274, 150, barWidth, 3);
}

QRect VodPlayView::progressRect(const QRect &bar)
{
    // Between time reports the bar runs a step ahead of the exact proportion.
    const int lead = progressOffset + progressStep;
    progressOffset = lead;
    if (lead > progressStep)
        progressOffset = lead - progressStep;
    const int width = PlayerLogic::progressWidth(lead, bar.width(), currentMsecs, totalTime);
    return QRect(bar.x(), bar.y(), width, bar.height());
}

namespace {

void drawTimeText(QPainter *painter, const QRect &r, const QString &text)
{
    QFont font;
    font.setPointSize(20);
    painter->setFont(font);
    painter->setPen(QColor(23, 161, 190, 255));
    const QString shown = QFontMetrics(font).elidedText(text, Qt::ElideRight, r.width());
    painter->drawText(r, Qt::AlignLeft, shown);
}

} // namespace

void VodPlayView::drawFlowingTime(QPainter *painter)
{
    painter->drawPixmap(279, 93, QPixmap(QStringLiteral(":image/vod/vod_icon_time.png")));
    const QRect r(398, 91, 100, 40);
    drawTimeText(painter, r, flowingTime());
    flowingTimeRect = r;
    if (!totalTimeText.isEmpty()) {
        const QRect bar = progressBarRect();
        painter->drawTiledPixmap(bar, QPixmap(QStringLiteral(":image/vod/vod_bar_bg.png")));
        const QRect filled = progressRect(bar);
        if (!filled.isEmpty())
            painter->fillRect(filled, QColor(0, 170, 210, 255));
    }
}

void VodPlayView::drawPanelFlowingTime(QPainter *painter)
{
    const QRect r(385, 41, 100, 40);
    drawTimeText(painter, r, flowingTime());
    flowingTimeRect = r;
    if (!totalTimeText.isEmpty()) {
        const QRect bar = progressBarRect();
        painter->drawTiledPixmap(bar, QPixmap(QStringLiteral(":image/vod/vod_bar_bg.png")));
        const QRect filled = progressRect(bar);
        if (!filled.isEmpty())
            painter->fillRect(filled, QColor(0, 170, 210, 255));
    }
}

void VodPlayView::startAnimation()
{
    animationFrame = 1;
    if (!animationTimer) {
        animationTimer = new QTimer(this);
        animationTimer->setTimerType(Qt::PreciseTimer);
        animationTimer->setInterval(300);
        connect(animationTimer, &QTimer::timeout, this, &VodPlayView::updateAnimationImageRect);
    }
    animationTimer->start();
}

void VodPlayView::updateAnimationImageRect()
{
    animationFrame = PlayerLogic::nextAnimationFrame(animationFrame);
    update(QRegion(QRect(348, 8, 406, 107)));
}

// ---------------------------------------------------------------------------
// Volume

void VodPlayView::stepVolume(int key)
{
    volume = PlayerLogic::steppedVolume(volume, key == Qt::Key_VolumeUp);
    isMute = false;
    setVolume(volume);
}

void VodPlayView::showVolumeRect()
{
    volumeRectShown = true;
    if (!volumeRectTimer) {
        volumeRectTimer = new QTimer(this);
        volumeRectTimer->setTimerType(Qt::PreciseTimer);
        volumeRectTimer->setInterval(1000);
        connect(volumeRectTimer, &QTimer::timeout, this, &VodPlayView::deleteVolumeRect);
    }
    // A running timer starts again: the overlay stays one second after the last change.
    volumeRectTimer->start();
    playScreen->update();
}

void VodPlayView::deleteVolumeRect()
{
    volumeRectShown = false;
    stopIfPresent(volumeRectTimer);
    playScreen->update();
}

void VodPlayView::setVolume(int level)
{
    const int v = level - 1;
    if (isVodKind(screenType)) {
        QSettings settings(QStringLiteral("Trolltech"), QStringLiteral("Sound"));
        settings.beginGroup(QStringLiteral("Volume"));
        settings.setValue(QStringLiteral("VOD"), v);
        settings.endGroup();
        settings.sync();
    }
    QtopiaIpcEnvelope envelope(QString::fromLatin1(VodChannel::CallManager),
                               QString::fromLatin1(VodMessage::SetVolumeVod));
    envelope << v;
}

QColor VodPlayView::volumeColor(int level)
{
    static const QColor colors[16] = {
        QColor(88, 30, 152),  QColor(101, 32, 143), QColor(117, 34, 132), QColor(135, 36, 120),
        QColor(154, 40, 107), QColor(174, 44, 94),  QColor(191, 49, 82),  QColor(207, 56, 72),
        QColor(220, 65, 64),  QColor(231, 79, 61),  QColor(240, 102, 61), QColor(246, 130, 61),
        QColor(249, 158, 61), QColor(251, 186, 61), QColor(253, 209, 62), QColor(255, 255, 63),
    };
    if (level < 1 || level > 16)
        return QColor();
    return colors[level - 1];
}

void VodPlayView::drawVolumeRect(QPainter *painter)
{
    painter->drawPixmap(279, 132,
                        QPixmap(isMute ? QStringLiteral(":image/vod/vod_icon_volume_none.png")
                                       : QStringLiteral(":image/vod/vod_icon_volume.png")));
    const QString label = isMute ? tr("Mute") : QString();

    QFont font;
    font.setPointSize(20);
    painter->setFont(font);
    painter->setPen(volumeColor(volume));
    painter->drawText(QRect(422, 131, 50, 40), Qt::AlignRight, QString::number(volume));
    painter->setPen(QColor(207, 56, 72));
    painter->drawText(QRect(307, 131, 100, 40), Qt::AlignRight, label);

    painter->drawTiledPixmap(QRect(274, 157, barWidth, 3),
                             QPixmap(QStringLiteral(":image/vod/vod_bar_bg.png")));
    for (int i = 1; i <= volume; ++i)
        painter->drawPixmap(PlayerLogic::volumePointX(i), 157,
                            QPixmap(PlayerLogic::volumePointImage(i)));
}

// ---------------------------------------------------------------------------
// Soft keys, control panel and button strips

void VodPlayView::updateSoftKeys()
{
    if (screenStatus == Playing) {
        QSoftMenuBar::setLabel(this, Qt::Key_Context2, QStringLiteral(":image/vod/vod_icon_botton01.png"),
                               QString(), QSoftMenuBar::AnyFocus);
        QSoftMenuBar::setLabel(this, Qt::Key_Select, QStringLiteral(":image/vod/vod_icon_botton04.png"),
                               QString(), QSoftMenuBar::AnyFocus);
        QSoftMenuBar::setLabel(this, Qt::Key_Context1, QStringLiteral(":image/vod/vod_icon_botton03.png"),
                               QString(), QSoftMenuBar::AnyFocus);
    } else {
        QSoftMenuBar::setLabel(this, Qt::Key_Context2, QString(), QString(), QSoftMenuBar::AnyFocus);
        QSoftMenuBar::setLabel(this, Qt::Key_Select, QStringLiteral(":image/vod/vod_icon_botton02.png"),
                               QString(), QSoftMenuBar::AnyFocus);
        QSoftMenuBar::setLabel(this, Qt::Key_Context1, QString(), QString(), QSoftMenuBar::AnyFocus);
    }
    QSoftMenuBar::setLabel(this, Qt::Key_Back, QStringLiteral(":image/vod/vod_icon_botton05.png"),
                           QString(), QSoftMenuBar::AnyFocus);
    repaint();
}

void VodPlayView::drawControlPanel(QPainter *painter)
{
    const bool playing = screenStatus == Playing;
    const QString rowImages[4] = {
        QString(), // the time read-out
        playing ? QStringLiteral(":image/vod/vod_icon_botton01.png") : QString(),
        playing ? QStringLiteral(":image/vod/vod_icon_botton04.png")
                : QStringLiteral(":image/vod/vod_icon_botton02.png"),
        playing ? QStringLiteral(":image/vod/vod_icon_botton03.png")
                : QStringLiteral(":image/vod/vod_icon_botton05.png"),
    };
    for (int row = 0; row < 4; ++row) {
        const int y = 31 + 42 * row;
        painter->fillRect(QRect(364, y, 115, 41), QColor(46, 46, 46));
        if (row == 0)
            drawPanelFlowingTime(painter);
        else if (!rowImages[row].isEmpty())
            painter->drawPixmap(414, y + 11, QPixmap(rowImages[row]));
        painter->fillRect(QRect(364, y + 41, 115, 1), QColor(18, 18, 18));
    }
}

namespace {

// The labelled strip of the small and the full-screen layouts, `top` being the
// top of its 41-pixel cells.
void drawButtonStrip(QPainter *painter, const QString &label, int left, int top, bool playing)
{
    painter->drawTiledPixmap(QRect(left, top, 392 - left, 41),
                             QPixmap(QStringLiteral(":image/common/05_Calllog_number_bg01.png")));
    QColor textColor;
    if (playing) {
        painter->drawPixmap(392, top, QPixmap(QStringLiteral(":image/common/05_Calllog_number_bg02.png")));
        textColor = QColor(255, 255, 255);
    } else {
        painter->drawPixmap(392, top, QPixmap(QStringLiteral(":image/common/buddylist_messagebar_bg01.png")));
        textColor = QColor(79, 79, 79);
    }
    QFont font;
    font.setBold(true);
    font.setPointSize(21);
    painter->setFont(font);
    painter->setPen(textColor);
    painter->drawText(QRect(343, top + 9, 100, 40), Qt::AlignRight, label);
}

} // namespace

void VodPlayView::drawFullButton(QPainter *painter, const QString &label, int left)
{
    painter->setPen(QColor(10, 10, 10));
    painter->drawLine(left, 167, 480, 167);
    drawButtonStrip(painter, label, left, 168, screenStatus == Playing);
    painter->drawPixmap(left - 2, 0, QPixmap(QStringLiteral(":image/vod/line_vertical.png")));
}

void VodPlayView::drawMaxButton(QPainter *painter, const QString &label, int left)
{
    drawButtonStrip(painter, label, left, 199, screenStatus == Playing);
}

// ---------------------------------------------------------------------------
// Video window and title

void VodPlayView::changeVideoWindow(playScreenType type)
{
    videoWindowType = type;
    playScreenReady = false;
    // The area goes dark while the video manager moves its picture.
    playScreen->update();
    QTimer::singleShot(0, this, &VodPlayView::doVideoScreenSizeChange);
}

void VodPlayView::doVideoScreenSizeChange()
{
    const QByteArray request = PlayerLogic::videoWindowRequest(videoWindowType);
    if (!request.isEmpty())
        sendRequest(VodMessage::ChangeVodWindow, request);
    QTimer::singleShot(100, Qt::PreciseTimer, this, &VodPlayView::updatePlayScreen);
}

void VodPlayView::updatePlayScreen()
{
    playScreenReady = true;
    playScreen->update();
}

void VodPlayView::setContentTitle(const QString &title)
{
    contentTitle = title;
    updateWindowTitle();
}

void VodPlayView::updateWindowTitle()
{
    if (screenType == SmallVodScreen)
        setWindowTitle(tr("Video Contents") + QLatin1Char(';') + elidedContentTitle());
}

QString VodPlayView::elidedContentTitle() const
{
    if (contentTitle.isEmpty())
        return QString();
    // The title shares the title bar with the number of a call in progress.
    const QString tellNumber = QValueSpaceItem(QStringLiteral("/UI/TellNumber")).value().toString();
    const QFontMetrics metrics = fontMetrics();
    return metrics.elidedText(contentTitle, Qt::ElideRight, 180 - metrics.horizontalAdvance(tellNumber));
}

void VodPlayView::drawVolumeOverlay(QPainter *painter, int backdropAlpha, int numberTop)
{
    const int dx = (screenType == WideVodScreen || screenType == WidePushScreen) ? 58 : 0;
    painter->save();
    painter->fillRect(QRect(dx + 27, 207, 309, 34), QColor(10, 10, 10, backdropAlpha));
    painter->drawPixmap(dx + 43, 214,
                        QPixmap(isMute ? QStringLiteral(":image/vod/vod_icon_volume_none.png")
                                       : QStringLiteral(":image/vod/vod_icon_volume.png")));
    QFont font;
    font.setPointSize(24);
    painter->setFont(font);
    painter->setPen(volumeColor(volume));
    painter->drawText(QRect(dx + 298, numberTop, 50, 50), Qt::AlignLeft, QString::number(volume));
    painter->fillRect(QRect(dx + 73, 221, 210, 5), QColor(10, 10, 10, 255));
    painter->drawTiledPixmap(QRect(dx + 74, 222, 208, 3), QPixmap(QStringLiteral(":image/vod/vod_bar_bg.png")));
    for (int i = 1; i <= volume; ++i)
        painter->drawPixmap(dx + 74 + 13 * (i - 1), 222, QPixmap(PlayerLogic::overlayPointImage(i)));
    painter->restore();
}

void VodPlayView::handOverTo(VodPlayView *fullScreen)
{
    fullScreen->setTotalTime(totalTimeText);
    fullScreen->currentMsecs = currentMsecs;
    fullScreen->isMute = isMute;
    fullScreen->volume = volume;
    fullScreen->setContentTitle(contentTitle);
    fullScreen->setScreenStatus(screenStatus);
    fullScreen->showFullScreen();
    fullScreen->raise();
}

void VodPlayView::switchWideOrClose()
{
    if (screenStatus != Playing || !playScreenReady)
        return;
    if (screenType == FullVodScreen || screenType == FullPushScreen) {
        screenType = screenType == FullVodScreen ? WideVodScreen : WidePushScreen;
        playScreen->setWideLayout(screenType);
        // The play screen stays ready: the next Video4 is taken at once.
        requestWideWindow();
    } else if (screenType == WideVodScreen || screenType == WidePushScreen) {
        // There is no way back to 4:3: the small player takes over again.
        stopIfPresent(frameSliderTimer);
        if (hasFocus())
            update();
        emit fullScreenCloseSignal(screenStatus, currentMsecs, volume, isMute);
        close();
    }
}

void VodPlayView::requestWideWindow()
{
    videoWindowType = screenType;
    doVideoScreenSizeChange();
}

void VodPlayView::paintSmallLayout(QPainter *painter, const QString &fullLabel)
{
    painter->fillRect(QRect(274, 0, 206, 209), QColor(35, 35, 35, 255));
    painter->drawPixmap(348, 8, QPixmap(QStringLiteral(":image/vod/aniicon_vod_0%1.png").arg(animationFrame)));
    drawFlowingTime(painter);
    drawVolumeRect(painter);
    drawFullButton(painter, fullLabel, 274);
}

void VodPlayView::setUpFullScreenWindow()
{
    setModal(false);
    setObjectName(QStringLiteral("_fullscreen_"));
    setGeometry(0, 0, 480, 272);
    setWindowState(Qt::WindowFullScreen);

    QPalette pal;
    pal.setColor(backgroundRole(), QColor(46, 46, 46, 255));
    setPalette(pal);

    auto *grid = new QGridLayout(this);
    auto *background = new EmptyBg(nullptr, Qt::WindowFlags());
    grid->addWidget(background, 0, 0);
    // The filler would otherwise take the keyboard focus from the dialog, whose
    // focus handling (focusLost, the direct-painting reserve, focus recording)
    // must see it. A proxy must live in the same window, so after the layout
    // has adopted it.
    background->setFocusProxy(this);
}

// ---------------------------------------------------------------------------
// Events

bool VodPlayView::eventFilter(QObject *watched, QEvent *e)
{
    if (e->type() == QEvent::FocusIn) {
        focusLost = false;
        if (isFullKind(screenType) && callCount != 0 && screenStatus == Interrupted) {
            playScreen->setShowPlayIcon(true);
            update();
        }
        playScreen->update();
        return false;
    }
    if (e->type() == QEvent::FocusOut) {
        focusLost = true;
        // Give the display back to the video manager's direct painting.
        if (isFullKind(screenType))
            QDirectPainter::reserveRegion(QRegion(QRect(0, 0, 0, 0)));
        playScreen->update();
        return false;
    }
    return QDialog::eventFilter(watched, e);
}

void VodPlayView::keyPressEvent(QKeyEvent *e)
{
    switch (e->key()) {
    case Qt::Key_VolumeUp:
    case Qt::Key_VolumeDown:
        stepVolume(e->key());
        // The read-out: speaker, mute label, level and bar.
        update(QRect(274, 131, 206, 53));
        break;
    case Key_Headset:
        toggleHeadset(1543);
        break;
    default:
        // Every other key is swallowed.
        break;
    }
}

void VodPlayView::toggleHeadset(int logLine)
{
    qCDebug(lcQtopiaDebug) << "keyPressEvent" << logLine << "Headset pressed";
    QtopiaIpcEnvelope envelope(QString::fromLatin1(VodChannel::CallManager),
                               QString::fromLatin1(VodMessage::SetHeadsetOnOff));
}

void VodPlayView::focusInEvent(QFocusEvent *)
{
}

void VodPlayView::focusOutEvent(QFocusEvent *)
{
}

void VodPlayView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
}

void VodPlayView::closeEvent(QCloseEvent *e)
{
    if (ignoreNextClose)
        e->ignore();
    else
        QWidget::closeEvent(e); // accepts; QDialog's handling would reject the dialog
    ignoreNextClose = false;
}

void VodPlayView::showEvent(QShowEvent *)
{
}

void VodPlayView::hideEvent(QHideEvent *)
{
}
