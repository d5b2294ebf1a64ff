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

    // Whether the full-screen volume overlay is up (the play screen draws it).
    virtual bool isVolumeRectShown() const { return false; }
    // Shows the full-screen volume overlay; the small layouts have none.
    virtual void showVolumeRect() {}

    // Requests to the video manager, sent through requestSender (none without one).
    void startVod();
    void playVod();
    void stopVod();
    void pauseVod(int reason);
    void resumeVod();
    void forwardVod();
    void reverseVod();

    void stopAllTimers();
    // Restarts the seek timer after a seek key press.
    void restartSeekTimer();
    // Starts the end-guard timer again if it exists and the player is Playing,
    // and lets the next notification through.
    void resumeFrameSlider();

    // Time and progress.
    void setTotalTime(const QString &text);
    QString flowingTime() const { return flowingTimeText; }
    void drawFlowingTime(QPainter *painter);
    void drawPanelFlowingTime(QPainter *painter);
    QRect progressRect(const QRect &bar);
    void startAnimation();

    // Volume.
    void setVolume(int level);
    static QColor volumeColor(int level);

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
    // The volume overlay of the full-screen players, over the video; it moves
    // 58 pixels right under the wide picture.
    void drawVolumeOverlay(QPainter *painter, int backdropAlpha, int numberTop);
    // Select in the players: pause while playing, resume a paused or held
    // video, start a stopped one.
    void togglePlayback();

    // Sends a request through requestSender; nothing without one.
    void sendRequest(const char *message, const QByteArray &data);
    // The end of the content as the player handles it (the small players stop,
    // the full-screen players hand Stopping back and close).
    void endOfContent();
};
