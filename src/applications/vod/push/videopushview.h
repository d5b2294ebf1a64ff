#pragma once

#include "player/vodplayview.h"

class VideoPushFullView;

// The main window of the push broadcast viewer, the application "videoPush".
// It listens on "QPE/PushApplication" and drives the video manager itself: it
// has no VOD request sender.
class VideoPushView : public VodPlayView
{
    Q_OBJECT

public:
    VideoPushView(QWidget *parent, Qt::WindowFlags flags);
    ~VideoPushView() override;

    // Senders for "QPE/VideoManager" and "QPE/VideoApplication".
    void pushRequestHandle(const QString &message, const QByteArray &data);
    void videoAppRequestHandle(const QString &message, const QByteArray &data);

    void requestPlay();
    void requestPause();
    void requestResume();
    void requestStop();
    void requestStopUI();
    void requestStopMulticast();

    // Asks the video manager to move its picture to the rectangle of that screen
    // type, then marks the play screen ready again after 500 ms.
    void changePushWindow(playScreenType type);

    VideoPushFullView *fullScreenView = nullptr;
    // Whether fullScreenView is still open: from its opening until it hands
    // back or closes. Calls and other screens hide and show only an open one.
    bool fullScreenShown = false;
    QTimer *serverWatchdog = nullptr;
    // The server-loss notice has been shown and no sign of life came since.
    bool serverLost = false;

public slots:
    void close();

private slots:
    void pushMessageHandle(const QString &message, const QByteArray &data);
    void fullScreenCloseSlot(VodPlayView::playScreenStatus pss, ulong ct, int cv, bool isMute);
    void setServerIsDown();

protected:
    void keyPressEvent(QKeyEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    void closeEvent(QCloseEvent *e) override;
    void showEvent(QShowEvent *e) override;

private:
    // Sets the status of this view and of its full-screen view, if any.
    void setPushStatus(playScreenStatus status);
    // Repaints this view and its full-screen view, if any.
    void repaintViews();
    // After a stop key: a broadcast whose server is gone cannot confirm the
    // stop, so the view closes at once.
    void leaveLostBroadcast();
};
