#pragma once

#include "playbackposition.h"
#include "simulatoroptions.h"
#include "videomanagerendpoint.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

#include <functional>

class QTimer;

// The other side of the module's protocol: listens on "QPE/VideoManager" and
// "QPE/CallManager" through the transport in use and answers on
// "QPE/PushApplication" and "QPE/VideoApplication" as a video manager would,
// with the faults its options ask for. It runs on any transport: in a test
// process on the in-process one next to the module's windows, in the
// videomanager-sim program over D-Bus.
class VideoManagerSimulator : public VideoManagerEndpoint
{
    Q_OBJECT

public:
    explicit VideoManagerSimulator(const SimulatorOptions &options, QObject *parent = nullptr);
    ~VideoManagerSimulator() override;

    // With a manual clock: lets `seconds` simulated seconds pass, one at a
    // time: what falls due in a second happens, then the reports of that second.
    void advance(int seconds);
    // One simulated second, in real milliseconds.
    int secondMs() const;

protected:
    bool answering() const override { return !silent; }
    bool answerPush(const QString &message) override;
    void answerVod(const QString &message, const QByteArray &data) override;
    void onCallManager(const QString &message, const QByteArray &data) override;

private:
    void setupVod(int number);
    void startVod(const QString &position);
    void pauseVod();
    void resumeVod(const QString &position);
    void seekVod(const QString &message, const QString &position);

    void pushTick();
    void vodTick();
    void playbackStarted(bool push);
    void goSilent();
    void serverPause();

    // Runs `action` after `seconds` simulated seconds, unless the simulator falls silent first.
    void after(double seconds, std::function<void()> action);
    // Runs `action` once the answer delay has passed (at once without one).
    void afterAnswerDelay(std::function<void()> action);

    SimulatorOptions settings;
    bool silent = false;

    QTimer *pushTicker;
    double pushSeconds = 0;

    QTimer *vodTicker;
    PlaybackPosition vod;
    bool vodSetUp = false;
    int selectedGroup = 0;
    int selectedPart = 0;

    bool anyPlaybackStarted = false;
    bool pushPlaybackStarted = false;
    bool vodPlaybackStarted = false;
    QList<QTimer *> pending;
    // With a manual clock: the simulated time, and what is due when.
    int now = 0;
    QList<QPair<double, std::function<void()>>> due;

    bool headset = false;
};
