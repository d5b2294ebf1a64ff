#pragma once

#include <QByteArray>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>

#include "devicefile.h"
#include "player/playerlogic.h"

class MVodInfoView;
class MVodListView;
class QStackedWidget;
class QWaitWidget;

// The browsing level of the VOD browser.
enum vodViewLevel { GroupLevel = 0, PartLevel = 1, ContentsLevel = 2, MediaInfoLevel = 3 };

// The main window of the video-on-demand browser: groups, their parts and the
// titles of a part, then the information page of a title. Every request to the
// video manager leaves through vodRequestHandle(); every notification arrives at
// vodMessageHandle() and is handed first to the player of the open page.
class vod : public QMainWindow
{
    Q_OBJECT

public:
    enum waitKind { WaitForGroupList = 0, WaitForContents = 1, WaitForSetup = 2 };

    vod();
    ~vod() override;

    bool changeView(int level);
    void showWaitWidget(int kind);
    bool fillListWidget();
    bool updateTitle();
    void updateSoftKeys();
    void refreshView();

    // Sends one request to the video manager.
    void vodRequestHandle(const QString &message, const QByteArray &arguments);
    // Records the last widget worth giving the focus back to.
    void setVodFocusedWidget(QWidget *w);

    QStringList groupNames() const;
    QStringList partNames(int group) const;
    QStringList contentTitles() const;

    // The play time of a title from the two positions (seconds) of its set-up
    // notification: the whole seconds of end - start split into hours, minutes
    // and seconds, and the milliseconds (single precision). A day or more, or a
    // negative length, gives parts that make no valid QTime.
    static PlayerLogic::Clock playTimeOf(float start, float end);

    int currentLevel = GroupLevel;
    int playHours = 0;
    int playMinutes = 0;
    int playSeconds = 0;
    int playMsecs = 0;
    int groupRow = 0;
    int partRow = 0;
    int contentRow = 0;
    MVodListView *listView = nullptr;
    // Guarded: a handler run from this window may delete the page.
    QPointer<MVodInfoView> infoView;
    QStringList listStrings;
    QStackedWidget *viewStack = nullptr;
    QByteArray groupCatalogue;
    QByteArray contentsCatalogue;
    QByteArray groupBuffer;
    QByteArray contentsBuffer;
    // The versions of the files in the buffers.
    DeviceFile::Stamp groupStamp;
    DeviceFile::Stamp contentsStamp;
    QWaitWidget *waitWidget = nullptr;
    // Guarded: a recorded page may be deleted later and must never get the focus.
    QPointer<QWidget> focusedWidget;

private slots:
    void closeWaitWidget();
    bool setNextView();
    bool setPrevView();
    void vodMessageHandle(const QString &msg, const QByteArray &data);
    void closeInfoWithTimeOut();

protected:
    bool eventFilter(QObject *obj, QEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;

private:
    void checkVodFocus(const QString &msg);
    void clearVodFocus(const QString &msg);
    void setupInfoView(const QByteArray &data);
    void setupFailed(const QByteArray &data);
    void groupListArrived();
    void contentsListArrived();
};
