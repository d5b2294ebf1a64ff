#pragma once

#include <QWidget>

// Fills the layout of the full-screen players and paints nothing.
class EmptyBg : public QWidget
{
    Q_OBJECT

public:
    EmptyBg(QWidget *parent, Qt::WindowFlags flags);

protected:
    void paintEvent(QPaintEvent *e) override;
    void showEvent(QShowEvent *e) override;
};
