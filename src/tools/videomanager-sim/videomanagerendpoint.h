#pragma once

#include "simcatalogue.h"

#include <QByteArray>
#include <QObject>
#include <QString>

// What the simulated and the real video manager do alike: hear the module's
// requests on "QPE/VideoManager" and "QPE/CallManager", log every message in
// and out as one readable line, write the catalogue
// files and announce them. What a request does is the subclass's business.
class VideoManagerEndpoint : public QObject
{
    Q_OBJECT

public:
    // Failure codes of "setupFailVod(int)", "startFailVod(int)" and "error(int)"
    // that no fault option chooses.
    enum FailureCode { NoContentSetUp = 1, NoSuchTitle = 2, NoMediaFile = 3, MediaError = 4 };

    // The first float of "setupOKVod(...)"; the second is this plus the length.
    static constexpr float SetupStartMark = 100.0f;

    explicit VideoManagerEndpoint(QObject *parent = nullptr);
    ~VideoManagerEndpoint() override;

    // Logs on stdout with time stamps, says `ready` once the requests can
    // arrive and runs until the program is told to stop (SIGINT, SIGTERM).
    int serve(const QString &ready);

signals:
    // One readable line per message received ("<- "), sent ("-> ") or event
    // ("-- "), without time stamp.
    void logLine(const QString &line);

protected:
    // Whether requests are answered at all; those that are not are logged so.
    virtual bool answering() const { return true; }
    virtual bool answerPush(const QString &message) = 0; // false: no push request
    virtual void answerVod(const QString &message, const QByteArray &data) = 0;
    virtual void onCallManager(const QString &message, const QByteArray &data) = 0;

    void writeGroupList(const SimCatalogue &catalogue);
    void writeContents(const SimCatalogue &catalogue, int group, int part);
    void send(const char *channel, const char *message, const QByteArray &data = QByteArray());
    void sendRaw(const QString &channel, const QString &message, const QByteArray &data);
    void log(const QString &direction, const QString &channel, const QString &message, const QByteArray &data,
             const QString &remark = QString());
    void note(const QString &text);

private:
    void onVideoManager(const QString &message, const QByteArray &data);
    void writeCatalogue(const QString &file, const QByteArray &bytes, const char *announce, const QString &what);
};
