#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class LauncherScreen;
class Storyboard;
class VideoManagerSimulator;
class VideoPushView;
class vod;
class QWidget;

// The scripted session of the storyboard: the push viewer and then the VOD
// browser, driven with the device's keys against the simulated video manager
// in this process, shown on the launcher's device frame. The video manager's
// clock and the play animation are held, so every run draws the same pictures.
class PhoneSession : public QObject
{
    Q_OBJECT

public:
    explicit PhoneSession(QObject *parent = nullptr);
    ~PhoneSession() override;

    LauncherScreen *screen() const { return display; }

    // Adds the session's steps to the storyboard.
    void script(Storyboard *storyboard);

    // Closes what is left of the session.
    void end();

private:
    void press(const QString &keyName);
    // Lets `seconds` of the simulated video manager's time pass.
    void play(int seconds);
    void holdAnimations();

    LauncherScreen *display;
    std::unique_ptr<VideoManagerSimulator> simulator;
    QPointer<VideoPushView> push;
    QPointer<vod> browser;
};
