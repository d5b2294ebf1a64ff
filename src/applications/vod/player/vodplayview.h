#pragma once

#include <QDialog>
#include <QRect>
#include <QString>
#include <QTime>

class PlayScreen;
class QPainter;
class QTimer;
class vod;

// The kind of a player screen, fixed at construction except for the one switch
// of the full-screen players from 4:3 to wide.
enum playScreenType {
    SmallVodScreen = 0,
    FullVodScreen = 1,
    WideVodScreen = 2,
    SmallPushScreen = 3,
    FullPushScreen = 4,
    WidePushScreen = 5
};

// The dialog every player window derives from. The video itself is drawn by the
// video manager process into the rectangle the player asks for; the player draws
// what lies around and over it, keeps the play state, turns keys into requests
// and follows the video manager's notifications.
//
// The state is public: the player windows hand it to one another (a small player
// and its full-screen player copy status, position, volume and mute) and the play
// screen draws from it.
class VodPlayView : public QDialog
{
    Q_OBJECT

public:
    enum playScreenStatus {
        Stopped = 2,
        Playing = 3,
        Paused = 6,
        Interrupted = 8,
        Stopping = 9,
        PausedForPush = 10
    };
    Q_ENUM(playScreenStatus)

    VodPlayView(vod *requestSender, playScreenType type, QWidget *parent);
    ~VodPlayView() override;

    // Reacts to one notification of the video manager.
    virtual void messageHandle(const QString &message, const QByteArray &data);
    // The volume read-out of the small layouts; the full-screen players draw an
    // overlay instead.
    virtual void drawVolumeRect(QPainter *painter);

    // Moves the player to another state. What a player draws follows its
    // state, so the dialog (and its play screen) is repainted.
    void setScreenStatus(playScreenStatus status);

    // The volume overlay of the full-screen players: drawn by the play screen
    // over the video, it goes 1000 ms after the last volume change.
    void showVolumeRect();

    // Requests to the video manager, sent through requestSender (none without one).
    void startVod();
    void playVod();
    void stopVod();
    void pauseVod(int reason);
    void resumeVod();
    void forwardVod();
    void reverseVod();

    void stopAllTimers();
    // A seek key press: +1 forward, -1 backward. Presses less than a second
    // apart add up into one seek of five seconds each, made a second after the last.
    void addSeekStep(int step);
    // Starts the end-guard timer again if it exists and the player is Playing,
    // and lets the next notification through.
    void resumeFrameSlider();

    // Time and progress.
    void setTotalTime(const QString &text);
    QString flowingTime() const { return flowingTimeText; }
    void drawFlowingTime(QPainter *painter);
    void drawPanelFlowingTime(QPainter *painter);
    QRect progressRect(const QRect &bar);
    // Where the progress bar of this layout lies.
    QRect progressBarRect() const;
    // Repaints what a time report changes: the read-out and the bar.
    void repaintFlowingTime();
    void startAnimation();

    // Volume.
    void setVolume(int level);
    static QColor volumeColor(int level);
    // A volume key: one level up or down within 1 ... 16. Also at a limit the
    // mute goes and the level is sent again.
    void stepVolume(int key);

    // Soft keys, control panel and button strips.
    void updateSoftKeys();
    void drawControlPanel(QPainter *painter);
    void drawFullButton(QPainter *painter, const QString &label, int left);
    void drawMaxButton(QPainter *painter, const QString &label, int left);

    // Video window and title.
    void changeVideoWindow(playScreenType type);
    void setContentTitle(const QString &title);
    void updateWindowTitle();
    QString elidedContentTitle() const;

    static bool isSmallKind(playScreenType type) { return type == SmallVodScreen || type == SmallPushScreen; }
    static bool isFullKind(playScreenType type) { return !isSmallKind(type); }
    static bool isVodKind(playScreenType type)
    {
        return type == SmallVodScreen || type == FullVodScreen || type == WideVodScreen;
    }

    // The player state, shared with the play screen and between the players.
    PlayScreen *playScreen = nullptr;
    playScreenType screenType;
    int callCount = 0;
    playScreenStatus screenStatus = Stopped;
    QTimer *animationTimer = nullptr;
    quint32 animationFrame = 1;
    float pausedTime = 0.0f;
    QString flowingTimeText;
    QRect flowingTimeRect;
    quint32 totalTime = 0;
    int progressStep = 0;
    int progressOffset = 0;
    quint32 sliderTime = 0;
    QString contentTitle;
    QString totalTimeText;
    int volume = 1;
    vod *requestSender = nullptr;
    QTimer *frameSliderTimer = nullptr;
    quint32 currentMsecs = 0;
    bool ignoreNextClose = false;
    bool focusLost = false;
    bool ignoreNextNotification = false;
    bool playScreenReady = false;
    bool isMute = false;
    QTimer *seekTimer = nullptr;
    int seekSteps = 0;
    playScreenType videoWindowType;
    // The full-screen players' volume overlay.
    bool volumeRectShown = false;
    QTimer *volumeRectTimer = nullptr;

signals:
    void notifyStopPlay();
    void fullScreenCloseSignal(VodPlayView::playScreenStatus pss, ulong ct, int cv, bool isMute);

public slots:
    void doVideoScreenSizeChange();
    // Shows the elapsed time of a time report.
    virtual void updateFlowingTime(QTime currentTime);

protected slots:
    void updatePlayScreen();

private slots:
    void updateFrameSlider();
    void updateAnimationImageRect();
    void doFowardOrReward();
    void deleteVolumeRect();

protected:
    bool eventFilter(QObject *watched, QEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;
    void focusInEvent(QFocusEvent *e) override;
    void focusOutEvent(QFocusEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    void closeEvent(QCloseEvent *e) override;
    void showEvent(QShowEvent *e) override;
    void hideEvent(QHideEvent *e) override;

    // Makes this dialog a full-screen player window: the whole display, the
    // panel grey behind it, and an EmptyBg filling its layout.
    void setUpFullScreenWindow();
    // Gives a full-screen player that this player opens its content: length,
    // position, mute, volume, title and state; then shows it on top.
    void handOverTo(VodPlayView *fullScreen);
    // Video4 in a full-screen player, only while playing and once the video
    // window is placed: from 4:3 to the wide picture, and from there back to
    // the small player, which takes the state along.
    void switchWideOrClose();
    // Asks for the wide video window (the VOD players send the request
    // themselves; the push view sends it for its full-screen view).
    virtual void requestWideWindow();
    // The small layouts' right-hand side: animation, time, volume and the
    // "Full" strip with its (translated) label.
    void paintSmallLayout(QPainter *painter, const QString &fullLabel);
    // The volume overlay of the full-screen players, over the video; it moves
    // 58 pixels right under the wide picture.
    void drawVolumeOverlay(QPainter *painter, int backdropAlpha, int numberTop);
    // Select in the players: pause while playing, resume a paused or held
    // video, start a stopped one.
    void togglePlayback();

    // The headset key: the call manager switches the headset; the debug line
    // carries the line number the platform's log expects of each player.
    void toggleHeadset(int logLine);

    // Sends a request through requestSender; nothing without one.
    void sendRequest(const char *message, const QByteArray &data);
    // The end of the content as the player handles it (the small players stop,
    // the full-screen players hand Stopping back and close).
    void endOfContent();
};
