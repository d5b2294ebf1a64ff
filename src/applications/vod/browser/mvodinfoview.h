#pragma once

#include <QFont>
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

    // The title is wrapped over at most four lines of its rectangle.
    static constexpr int TitleWidth = 339;
    static constexpr int TitleElideWidth = 4 * TitleWidth - 10;

    // The title as drawn: cut with an ellipsis where it would not fit.
    static QString elidedTitle(const QString &title, const QFont &font);
    // The fonts the page draws the title and the play time with.
    QFont titleFont() const;
    QFont playTimeFont() const;
    // The play time as shown ("hh:mm:ss"; empty for an invalid time).
    QString playTimeText() const;

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
