#include "videopushview.h"
// PLACEHOLDER: replaced by the push viewer work.
#include "videopushfullview.h"
VideoPushView::VideoPushView(QWidget *parent, Qt::WindowFlags) : VodPlayView(nullptr, SmallPushScreen, parent) {}
VideoPushView::~VideoPushView() = default;
void VideoPushView::pushRequestHandle(const QString &, const QByteArray &) {}
void VideoPushView::videoAppRequestHandle(const QString &, const QByteArray &) {}
void VideoPushView::requestPlay() {}
void VideoPushView::requestPause() {}
void VideoPushView::requestResume() {}
void VideoPushView::requestStop() {}
void VideoPushView::requestStopUI() {}
void VideoPushView::requestStopMulticast() {}
void VideoPushView::changePushWindow(playScreenType) {}
void VideoPushView::close() {}
void VideoPushView::pushMessageHandle(const QString &, const QByteArray &) {}
void VideoPushView::fullScreenCloseSlot(VodPlayView::playScreenStatus, ulong, int, bool) {}
void VideoPushView::setServerIsDown() {}
void VideoPushView::keyPressEvent(QKeyEvent *) {}
void VideoPushView::paintEvent(QPaintEvent *) {}
void VideoPushView::closeEvent(QCloseEvent *) {}
void VideoPushView::showEvent(QShowEvent *) {}
void VideoPushView::setPushStatus(playScreenStatus) {}
