#pragma once

#include <QTime>
#include <QWidget>

class VodPlaySmallScreenView;
class vod;

// The media information page of a title: its title and play time, and the Play
// key that starts the small player it owns.
class MVodInfoView : public QWidget
{
    Q_OBJECT

public:
    MVodInfoView(const QString &title, const QTime &playTime, vod *owner, QWidget *parent);
    ~MVodInfoView() override;

    VodPlaySmallScreenView *playView = nullptr;
    QString title;
    QTime playTime;
    vod *owner;

public slots:
    void showMaximized();

signals:
    void showFinished();

private slots:
    void finishedVod();

protected:
    void keyPressEvent(QKeyEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
};
