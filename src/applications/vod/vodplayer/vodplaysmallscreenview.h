#pragma once

#include "player/vodplayview.h"

class VodPlayFullScreenView;

// The player of the VOD browser: the video in the framed area at the left of a
// 480 × 210 dialog. It filters the notifications the browser hands it, passes
// them to its full-screen player while that is shown, and watches for a silent
// server.
class VodPlaySmallScreenView : public VodPlayView
{
    Q_OBJECT

public:
    // What a notification does to the server watchdog.
    enum WatchdogAction { WatchdogCreate, WatchdogStop, WatchdogRestart, WatchdogKeep };

    static constexpr int ServerWatchdogInterval = 10000;

    VodPlaySmallScreenView(vod *requestSender, QWidget *parent);
    ~VodPlaySmallScreenView() override;

    void messageHandle(const QString &message, const QByteArray &data) override;

    static WatchdogAction watchdogAction(const QString &message);

    VodPlayFullScreenView *fullScreenView = nullptr;
    bool fullScreenShown = false;
    QTimer *serverWatchdog = nullptr;

private slots:
    void setServerIsDown();
    void finishedVod();
    void fullScreenCloseSlot(VodPlayView::playScreenStatus pss, ulong ct, int cv, bool isMute);

protected:
    void keyPressEvent(QKeyEvent *e) override;
    void focusInEvent(QFocusEvent *e) override;
    void focusOutEvent(QFocusEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    void showEvent(QShowEvent *e) override;

private:
    void followWatchdog(const QString &message);
    void hangUp(QKeyEvent *e);
    void openFullScreen();
};
