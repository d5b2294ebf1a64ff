#include "playscreen.h"
// PLACEHOLDER: replaced by the player framework work.
PlayScreen::PlayScreen(VodPlayView *parent) : QWidget(parent), owner(parent) {}
void PlayScreen::setWideLayout(playScreenType) {}
void PlayScreen::paintEvent(QPaintEvent *) {}
void PlayScreen::showEvent(QShowEvent *) {}
