#include "emptybg.h"
// PLACEHOLDER: replaced by the player framework work.
EmptyBg::EmptyBg(QWidget *parent, Qt::WindowFlags flags) : QWidget(parent, flags) {}
void EmptyBg::paintEvent(QPaintEvent *) {}
void EmptyBg::showEvent(QShowEvent *) {}
