#include "vod.h"
// PLACEHOLDER: replaced by the VOD browser work.
#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
vod::vod() : QMainWindow(nullptr) {}
vod::~vod() = default;
bool vod::changeView(int) { return false; }
void vod::showWaitWidget(int) {}
bool vod::fillListWidget() { return false; }
bool vod::updateTitle() { return false; }
void vod::updateSoftKeys() {}
void vod::refreshView() {}
void vod::vodRequestHandle(const QString &, const QByteArray &) {}
void vod::setVodFocusedWidget(QWidget *) {}
QStringList vod::groupNames() const { return {}; }
QStringList vod::partNames(int) const { return {}; }
QStringList vod::contentTitles() const { return {}; }
void vod::closeWaitWidget() {}
bool vod::setNextView() { return false; }
bool vod::setPrevView() { return false; }
void vod::vodMessageHandle(const QString &, const QByteArray &) {}
void vod::closeInfoWithTimeOut() {}
bool vod::eventFilter(QObject *o, QEvent *e) { return QMainWindow::eventFilter(o, e); }
void vod::keyPressEvent(QKeyEvent *) {}
void vod::checkVodFocus(const QString &) {}
void vod::clearVodFocus(const QString &) {}
