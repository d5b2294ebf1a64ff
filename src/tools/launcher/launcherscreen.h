#pragma once

#include <QRect>
#include <QWidget>

// The stand-in for the device's 480 x 272 display: a fixed-size window. Every
// top-level window that asks to be maximized or full screen is laid over it
// instead of over the desktop.
class LauncherScreen : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Width = 480;
    static constexpr int Height = 272;

    explicit LauncherScreen(QWidget *parent = nullptr);

    // The display in global coordinates.
    QRect area() const;

signals:
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void place(QWidget *window);
};
