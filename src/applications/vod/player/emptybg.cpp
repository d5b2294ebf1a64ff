#include "emptybg.h"

EmptyBg::EmptyBg(QWidget *parent, Qt::WindowFlags flags)
    : QWidget(parent, flags)
{
    setObjectName(QStringLiteral("_fullscreen_"));
    setGeometry(0, 0, 480, 272);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowState(Qt::WindowFullScreen);
}

void EmptyBg::paintEvent(QPaintEvent *)
{
}

void EmptyBg::showEvent(QShowEvent *)
{
    showFullScreen();
}
