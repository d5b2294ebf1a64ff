#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class QTimer;

// Runs a scripted session one step at a time and writes a picture of the
// display after each step that has a name, then an index.html that lays the
// pictures out with their captions. Steps wait on conditions, never on fixed
// sleeps alone, and keep running inside the module's modal pop-ups.
class Storyboard : public QObject
{
    Q_OBJECT

public:
    struct Step
    {
        QString name; // the picture's file name without ".png"; empty: no picture
        QString caption;
        std::function<void()> action; // must not block: a modal pop-up is opened by a posted call
        std::function<bool()> ready; // null: ready at once
        int settleMsecs = 0; // the least time between the action and the picture
    };

    // Longest wait for a step's condition.
    static constexpr int StepTimeoutMsecs = 10000;

    Storyboard(std::function<QImage()> grab, const QString &directory, QObject *parent = nullptr);

    void add(const Step &step);
    // The picture names of the steps, in order.
    QStringList pictureNames() const;

    // Starts the steps; finished() follows.
    void start();
    QString errorString() const { return error; }

    // The page that shows the pictures (file stem, caption) in order.
    static QString indexHtml(const QList<QPair<QString, QString>> &pictures);
    // What is wrong with a folder of pictures: a missing or unreadable picture,
    // one of another size than the display's, or one equal to its neighbour.
    static QStringList problems(const QString &directory, const QStringList &names, const QSize &size);
    // How the pictures differ from the reference pictures of the same names:
    // for each that differs, how many pixels and the first one. The reference
    // must be met exactly: the session and its fonts are the same every run.
    static QStringList differences(const QString &directory, const QString &references, const QStringList &names);

signals:
    void finished(bool ok);

private:
    void tick();
    void fail(const QString &message);
    void finish();

    std::function<QImage()> grab;
    QString directory;
    QList<Step> steps;
    qsizetype current = 0;
    bool acted = false;
    bool busy = false;
    QElapsedTimer sinceAction;
    QTimer *poll;
    QString error;
};
