#include "vod.h"

#include "browser/mvodinfoview.h"
#include "browser/mvodlistview.h"
#include "messaging/messagedata.h"
#include "messaging/messagereader.h"
#include "messaging/vodmessages.h"
#include "vodcatalogue.h"
#include "vodplayer/vodplaysmallscreenview.h"

#include "qeuckr.h"
#include "qlogbase.h"
#include "qnoticelistviewitemdelegate.h"
#include "qsoftmenubar.h"
#include "qtopiachannel.h"
#include "qtopiaipcenvelope.h"
#include "qwaitwidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStackedWidget>
#include <QTime>

#include <utility>

namespace {

// The platform is asked once whether the "VOD" lines are wanted.
bool vodLogEnabled()
{
    static const bool enabled = qtopiaLogRequested("VOD");
    return enabled;
}

QString logHeader(const char *file, int line, const char *function)
{
    return QStringLiteral("%1:%2:%3")
        .arg(QString::fromLocal8Bit(file))
        .arg(line)
        .arg(QLatin1String(function));
}


// The widgets that count for the focus procedures: every one not hidden that
// holds the keyboard focus.
QList<QWidget *> focusHolders()
{
    QList<QWidget *> holders;
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *w : widgets)
        if (!w->isHidden() && w->hasFocus())
            holders.append(w);
    return holders;
}

} // namespace

vod::vod()
    : QMainWindow(nullptr)
{
    setWindowIconText(QStringLiteral("title_icon_vod"));
    setWindowTitle(tr("Video Contents"));

    listView = new MVodListView(this);
    // The view does not own its delegate; parent it to the list so that it goes
    // with it.
    listView->setItemDelegate(new QNoticeListViewItemDelegate(listView));
    listView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    viewStack = new QStackedWidget(this);
    setCentralWidget(viewStack);
    viewStack->addWidget(listView);

    auto *channel = new QtopiaChannel(QLatin1String(VodChannel::VideoApplication), this);
    connect(channel, &QtopiaChannel::received, this, &vod::vodMessageHandle);
    connect(listView, &QListWidget::itemPressed, this, &vod::setNextView);

    vodRequestHandle(QLatin1String(VodMessage::RequestGroupList), QByteArray());

    listView->installEventFilter(this);
    // The list's rows are painted by its viewport, which covers it: its paints
    // count as the list's.
    listView->viewport()->installEventFilter(this);
}

vod::~vod()
{
    delete waitWidget;
    waitWidget = nullptr;
    // Widgets being destroyed still send events; this window no longer wants them.
    listView->viewport()->removeEventFilter(this);
    listView->removeEventFilter(this);
    delete listView;
    listView = nullptr;
    if (infoView)
        infoView->removeEventFilter(this);
    delete infoView.data();
    listStrings.clear();
}

bool vod::changeView(int level)
{
    if (uint(level) > uint(MediaInfoLevel) || level == currentLevel)
        return false;

    switch (level) {
    case MediaInfoLevel:
        // The page of an earlier title goes; the new one comes with the answer.
        delete infoView.data();
        infoView = nullptr;
        vodRequestHandle(QLatin1String(VodMessage::SetupVod), messageData(qint32(contentRow + 1)));
        currentLevel = MediaInfoLevel;
        updateSoftKeys();
        updateTitle();
        return true;
    case ContentsLevel:
        // The level changes when the contents arrive.
        vodRequestHandle(QLatin1String(VodMessage::RequestContents),
                         messageData(qint32(groupRow), qint32(partRow)));
        return true;
    case GroupLevel:
        listView->clear();
        vodRequestHandle(QLatin1String(VodMessage::RequestGroupList), QByteArray());
        currentLevel = GroupLevel;
        updateSoftKeys();
        updateTitle();
        return true;
    case PartLevel:
        // The parts come from the group catalogue already loaded.
        listView->clear();
        listStrings = partNames(groupRow);
        fillListWidget();
        currentLevel = PartLevel;
        updateSoftKeys();
        updateTitle();
        return true;
    }
    return false;
}

bool vod::setNextView()
{
    const int level = currentLevel;
    if (level + 1 > MediaInfoLevel)
        return false;
    if (level == GroupLevel)
        groupRow = listView->currentRow();
    else if (level == PartLevel)
        partRow = listView->currentRow();
    contentRow = listView->currentRow();
    if (contentRow < 0)
        return false;
    return changeView(level + 1);
}

bool vod::setPrevView()
{
    const int level = currentLevel;
    if (level > MediaInfoLevel)
        return false;
    if (level - 1 < 0)
        close();
    return changeView(level - 1);
}

void vod::showWaitWidget(int kind)
{
    delete waitWidget;
    waitWidget = new QWaitWidget(this);
    waitWidget->setResultOption(true);
    waitWidget->setExpiryTime(5000);
    waitWidget->setHomeKeyEnabled(false);
    waitWidget->setCancelEnabled(false);

    switch (kind) {
    case WaitForGroupList:
        waitWidget->setText(tr("Getting contents"));
        connect(waitWidget, &QWaitWidget::timeOut, this, &QWidget::close);
        break;
    case WaitForContents:
        // Nothing waits on this one: it shows its result text when it expires.
        waitWidget->setText(tr("Getting List"));
        waitWidget->setResultText(tr("Fail to Get List"));
        break;
    case WaitForSetup:
        waitWidget->setText(tr("Getting Media Information"));
        connect(waitWidget, &QWaitWidget::timeOut, this, &vod::closeInfoWithTimeOut);
        break;
    default:
        break;
    }

    waitWidget->setWindowIconText(windowIconText());
    waitWidget->setWindowTitle(windowTitle());
    waitWidget->show();
}

void vod::closeWaitWidget()
{
    if (waitWidget && waitWidget->isActiveWindow())
        waitWidget->hide();
}

void vod::closeInfoWithTimeOut()
{
    if (!waitWidget || !waitWidget->isActiveWindow())
        return;
    waitWidget->hide();
    currentLevel = ContentsLevel;
    disconnect(waitWidget, &QWaitWidget::timeOut, this, &vod::closeInfoWithTimeOut);
}

bool vod::fillListWidget()
{
    if (listStrings.isEmpty())
        return false;
    for (const QString &text : std::as_const(listStrings)) {
        // The strings hold the catalogue's raw bytes; decode them for display.
        // The row gets its size before it joins the list: a size given to a
        // listed row makes the list look at all its rows again.
        auto *item = new QListWidgetItem(qEUCKRtoQString(text.toLatin1()), nullptr, QListWidgetItem::Type);
        item->setSizeHint(QSize(480, 42));
        listView->insertItem(listView->count(), item);
    }
    listView->setCurrentRow(0);
    listView->showMaximized();
    return true;
}

bool vod::updateTitle()
{
    const QString head = tr("Video Contents") + QLatin1Char(';');
    switch (currentLevel) {
    case GroupLevel:
        setWindowTitle(head + tr("VOD Contents"));
        return true;
    case PartLevel:
        setWindowTitle(head + tr("VOD List"));
        return true;
    case ContentsLevel:
        setWindowTitle(head + tr("VOD Title"));
        return true;
    case MediaInfoLevel:
        return true;
    default:
        return false;
    }
}

void vod::updateSoftKeys()
{
    QSoftMenuBar::setLabel(this, Qt::Key_Select, QStringLiteral("select"), QString(),
                           QSoftMenuBar::AnyFocus);
    QSoftMenuBar::setLabel(this, Qt::Key_Context1, QStringLiteral("none"), QString(),
                           QSoftMenuBar::AnyFocus);
    QSoftMenuBar::setLabel(this, Qt::Key_Back, QStringLiteral("back"), tr("Back"),
                           QSoftMenuBar::AnyFocus);
}

void vod::refreshView()
{
    fillListWidget();
    updateTitle();
    updateSoftKeys();
}

void vod::keyPressEvent(QKeyEvent *e)
{
    switch (e->key()) {
    case Qt::Key_Back:
        setPrevView();
        break;
    case Qt::Key_Select:
        // Only the device's keypad opens a row with Select; the same key from
        // elsewhere, or at the information level, is swallowed.
        if ((e->modifiers() & Qt::KeypadModifier) && currentLevel >= GroupLevel
            && currentLevel <= ContentsLevel)
            setNextView();
        break;
    default:
        QWidget::keyPressEvent(e);
        break;
    }
}

bool vod::eventFilter(QObject *obj, QEvent *e)
{
    if (obj->isWidgetType()) {
        auto *w = static_cast<QWidget *>(obj);
        if (listView && w == listView->viewport())
            w = listView;
        if ((e->type() == QEvent::Paint && !w->hasFocus()) || e->type() == QEvent::FocusIn)
            setVodFocusedWidget(w);
    }

    if (!listView || obj != listView)
        return false;
    if (e->type() != QEvent::KeyPress)
        return false;

    auto *key = static_cast<QKeyEvent *>(e);
    if (listView->selectRowByKey(key)) {
        setNextView();
        return true;
    }
    switch (key->key()) {
    case Qt::Key_Select:
    case Qt::Key_Back:
    case Qt::Key_Context1:
    case Qt::Key_Context2:
        keyPressEvent(key);
        // Consumed: an ignored key would otherwise travel up from the list and
        // reach this window's handler a second time.
        key->accept();
        break;
    default:
        listView->keyPressEvent(key);
        break;
    }
    return true;
}

void vod::vodRequestHandle(const QString &message, const QByteArray &arguments)
{
    MessageReader in(arguments);
    if (vodLogEnabled())
        QLogBase::log("VOD") << logHeader(__FILE__, __LINE__, "vodRequestHandle") << message;

    const QString channel = QLatin1String(VodChannel::VideoManager);
    // Positions travel as text: the float widened, six significant digits.
    const auto positionText = [](float seconds) { return QString::number(double(seconds), 'g', 6); };

    // The wait pop-up of a request opens before its arguments are read.
    if (isMessage(message, VodMessage::SetupVod)) {
        showWaitWidget(WaitForSetup);
        const qint32 content = in.readInt();
        QtopiaIpcEnvelope e(channel, message);
        e << content;
    } else if (isMessage(message, VodMessage::StartVod) || isMessage(message, VodMessage::ResumeVod)) {
        const QString position = positionText(in.readFloat());
        QtopiaIpcEnvelope e(channel, message);
        e << position;
    } else if (isMessage(message, VodMessage::PauseVod)) {
        const qint32 reason = in.readInt();
        QtopiaIpcEnvelope e(channel, message);
        e << reason;
    } else if (isMessage(message, VodMessage::StopVod)) {
        QtopiaIpcEnvelope e(channel, message);
    } else if (isMessage(message, VodMessage::ReverseVod) || isMessage(message, VodMessage::ForwardVod)) {
        const QString position = positionText(in.readFloat());
        QtopiaIpcEnvelope e(channel, message);
        e << position;
    } else if (isMessage(message, VodMessage::RequestGroupList)) {
        showWaitWidget(WaitForGroupList);
        QtopiaIpcEnvelope e(channel, message);
    } else if (isMessage(message, VodMessage::RequestContents)) {
        showWaitWidget(WaitForContents);
        const qint32 group = in.readInt();
        const qint32 part = in.readInt();
        QtopiaIpcEnvelope e(channel, message);
        e << group << part;
    } else if (isMessage(message, VodMessage::RequestContentsPage)) {
        const qint32 first = in.readInt();
        const qint32 second = in.readInt();
        QtopiaIpcEnvelope e(channel, message);
        e << first << second;
    } else if (isMessage(message, VodMessage::PausePush)) {
        QtopiaIpcEnvelope e(channel, message);
    } else if (isMessage(message, VodMessage::ChangeVodWindow)) {
        const qint32 x = in.readInt();
        const qint32 y = in.readInt();
        const qint32 width = in.readInt();
        const qint32 height = in.readInt();
        QtopiaIpcEnvelope e(channel, message);
        e << x << y << width << height;
    }
    // Any other text sends nothing.
}

PlayerLogic::Clock vod::playTimeOf(float start, float end)
{
    const float length = end - start;
    return PlayerLogic::splitClock(PlayerLogic::truncated(length), PlayerLogic::truncated(length * 1000.0f));
}

void vod::vodMessageHandle(const QString &msg, const QByteArray &data)
{
    // The open page's player sees every message first; it may close or even
    // take down the page, which infoView (guarded) then no longer names.
    if (infoView && infoView->playView) {
        const QPointer<VodPlaySmallScreenView> player = infoView->playView;
        player->messageHandle(msg, data);
    }

    if (isMessage(msg, VodMessage::SetupOKVod))
        setupInfoView(data);
    else if (isMessage(msg, VodMessage::SetupFailVod))
        setupFailed(data);
    else if (isMessage(msg, VodMessage::GetGroupList))
        groupListArrived();
    else if (isMessage(msg, VodMessage::GetContentsList))
        contentsListArrived();
    else if (isMessage(msg, VodMessage::CheckFocus))
        checkVodFocus(msg);
    else if (isMessage(msg, VodMessage::ClearFocus))
        clearVodFocus(msg);
    // Everything else was for the player only.
}

void vod::setupInfoView(const QByteArray &data)
{
    MessageReader in(data);
    in.readInt();
    in.readInt();
    in.readInt();
    const float start = in.readFloat();
    const float end = in.readFloat();
    in.readFloat();

    const PlayerLogic::Clock time = playTimeOf(start, end);
    playHours = time.hours;
    playMinutes = time.minutes;
    playSeconds = time.seconds;
    playMsecs = time.msecs;

    delete infoView.data();
    infoView = nullptr;

    // The list may have changed since the request: never read outside it.
    const QString title = contentRow >= 0 && contentRow < listStrings.size()
                              ? listStrings.at(contentRow)
                              : QString();
    // A day or more, or a negative length, gives an invalid QTime: the page then
    // shows no play time.
    infoView = new MVodInfoView(title, QTime(playHours, playMinutes, playSeconds, playMsecs), this,
                                nullptr);
    infoView->installEventFilter(this);
    connect(infoView, &MVodInfoView::showFinished, this, &vod::closeWaitWidget);
    infoView->showMaximized();
}

void vod::setupFailed(const QByteArray &data)
{
    MessageReader in(data);
    in.readInt();
    if (!waitWidget || !waitWidget->isActiveWindow())
        return;
    disconnect(waitWidget, &QWaitWidget::timeOut, this, &vod::closeInfoWithTimeOut);
    waitWidget->setResult(tr("Can not be played"), 3000);
    waitWidget->showResult();
    currentLevel = ContentsLevel;
}

void vod::groupListArrived()
{
    // The answer came: from now on the pop-up's expiry leaves the window open.
    if (waitWidget)
        disconnect(waitWidget, &QWaitWidget::timeOut, this, &QWidget::close);

    groupCatalogue.clear();
    if (!VodCatalogue::load(QLatin1String(VodCatalogue::GroupFile), groupBuffer, groupStamp))
        return;
    groupCatalogue = groupBuffer;

    listStrings = groupNames();
    currentLevel = GroupLevel;
    if (waitWidget)
        waitWidget->waitClose(1000);
    // An unasked-for list must not be appended to what is shown.
    listView->clear();
    refreshView();
}

void vod::contentsListArrived()
{
    listView->clear();
    contentsCatalogue.clear();
    if (!VodCatalogue::load(QLatin1String(VodCatalogue::ContentsFile), contentsBuffer, contentsStamp))
        return;
    contentsCatalogue = contentsBuffer;

    listStrings = contentTitles();
    currentLevel = ContentsLevel;
    if (waitWidget)
        waitWidget->waitClose(1000);
    refreshView();
}

QStringList vod::groupNames() const
{
    return VodCatalogue::groupNames(groupCatalogue);
}

QStringList vod::partNames(int group) const
{
    return VodCatalogue::partNames(groupCatalogue, group);
}

QStringList vod::contentTitles() const
{
    return VodCatalogue::contentTitles(contentsCatalogue);
}

void vod::setVodFocusedWidget(QWidget *w)
{
    focusedWidget = w;
    if (vodLogEnabled() && w)
        QLogBase::log("VOD") << logHeader(__FILE__, __LINE__, "setVodFocusedWidget")
                             << " : VOD Focus In Widget Class[" << w->metaObject()->className()
                             << "]";
}

void vod::checkVodFocus(const QString &msg)
{
    if (vodLogEnabled())
        QLogBase::log("VOD") << logHeader(__FILE__, __LINE__, "vodMessageHandle") << " : message["
                             << msg << "] received";

    bool found = false;
    const QList<QWidget *> holders = focusHolders();
    for (QWidget *w : holders) {
        found = true;
        if (vodLogEnabled())
            QLogBase::log("VOD") << logHeader(__FILE__, __LINE__, "vodMessageHandle")
                                 << " : Find VOD Focus Widget[" << w->metaObject()->className()
                                 << "]";
    }
    if (found)
        return;

    // focusedWidget is guarded: a recorded page that was deleted counts as none.
    if (!focusedWidget) {
        qCWarning(lcQtopiaDebug, "VOD is processing, but Focus widget isn't Founded !!");
        return;
    }
    if (vodLogEnabled())
        QLogBase::log("VOD") << logHeader(__FILE__, __LINE__, "vodMessageHandle")
                             << " : Find VOD Focus Widget Failed, Set Previous known widget ["
                             << focusedWidget->metaObject()->className() << "]";
    focusedWidget->setFocus(Qt::OtherFocusReason);
    focusedWidget->activateWindow();
}

void vod::clearVodFocus(const QString &msg)
{
    if (vodLogEnabled())
        QLogBase::log("VOD") << logHeader(__FILE__, __LINE__, "vodMessageHandle") << " : message["
                             << msg << "] received";

    const QList<QWidget *> holders = focusHolders();
    for (QWidget *w : holders) {
        if (vodLogEnabled())
            QLogBase::log("VOD") << logHeader(__FILE__, __LINE__, "vodMessageHandle")
                                 << " : Current Focus Widget[" << w->metaObject()->className()
                                 << "] will be lost Focus !!";
        w->clearFocus();
    }
}
