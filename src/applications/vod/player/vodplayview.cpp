#include "vodplayview.h"
// PLACEHOLDER: replaced by the player framework work.
#include "playscreen.h"
#include <QColor>
VodPlayView::VodPlayView(vod *rs, playScreenType type, QWidget *parent)
    : QDialog(parent), screenType(type), requestSender(rs), videoWindowType(type) { playScreen = new PlayScreen(this); }
VodPlayView::~VodPlayView() = default;
void VodPlayView::messageHandle(const QString &, const QByteArray &) {}
void VodPlayView::drawVolumeRect(QPainter *) {}
void VodPlayView::startVod() {}
void VodPlayView::playVod() {}
void VodPlayView::stopVod() {}
void VodPlayView::pauseVod(int) {}
void VodPlayView::resumeVod() {}
void VodPlayView::forwardVod() {}
void VodPlayView::reverseVod() {}
void VodPlayView::stopAllTimers() {}
void VodPlayView::restartSeekTimer() {}
void VodPlayView::resumeFrameSlider() {}
void VodPlayView::setTotalTime(const QString &) {}
void VodPlayView::drawFlowingTime(QPainter *) {}
void VodPlayView::drawPanelFlowingTime(QPainter *) {}
QRect VodPlayView::progressRect(const QRect &) { return {}; }
void VodPlayView::startAnimation() {}
void VodPlayView::setVolume(int) {}
QColor VodPlayView::volumeColor(int) { return {}; }
void VodPlayView::updateSoftKeys() {}
void VodPlayView::drawControlPanel(QPainter *) {}
void VodPlayView::drawFullButton(QPainter *, const QString &, int) {}
void VodPlayView::drawMaxButton(QPainter *, const QString &, int) {}
void VodPlayView::changeVideoWindow(playScreenType) {}
void VodPlayView::setContentTitle(const QString &) {}
void VodPlayView::updateWindowTitle() {}
QString VodPlayView::elidedContentTitle() const { return {}; }
void VodPlayView::doVideoScreenSizeChange() {}
void VodPlayView::updateFlowingTime(QTime) {}
void VodPlayView::updatePlayScreen() {}
void VodPlayView::updateFrameSlider() {}
void VodPlayView::updateAnimationImageRect() {}
void VodPlayView::doFowardOrReward() {}
bool VodPlayView::eventFilter(QObject *w, QEvent *e) { return QDialog::eventFilter(w, e); }
void VodPlayView::keyPressEvent(QKeyEvent *) {}
void VodPlayView::focusInEvent(QFocusEvent *) {}
void VodPlayView::focusOutEvent(QFocusEvent *) {}
void VodPlayView::paintEvent(QPaintEvent *) {}
void VodPlayView::closeEvent(QCloseEvent *) {}
void VodPlayView::showEvent(QShowEvent *) {}
void VodPlayView::hideEvent(QHideEvent *) {}
void VodPlayView::sendRequest(const char *, const QByteArray &) {}
void VodPlayView::endOfContent() {}
