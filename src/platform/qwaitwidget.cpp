#include "qwaitwidget.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

QWaitWidget::QWaitWidget(QWidget *parent)
    : QDialog(parent),
      label(new QLabel(this)),
      expiryTimer(new QTimer(this)),
      resultTimer(new QTimer(this))
{
    setObjectName(QStringLiteral("QWaitWidget"));
    setModal(false);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    setFixedSize(360, 100);

    // The expiry is a fixed interval of the design: a coarse timer may fire 5 % early.
    expiryTimer->setTimerType(Qt::PreciseTimer);
    resultTimer->setTimerType(Qt::PreciseTimer);
    expiryTimer->setSingleShot(true);
    connect(expiryTimer, &QTimer::timeout, this, &QWaitWidget::expire);
    resultTimer->setSingleShot(true);
    connect(resultTimer, &QTimer::timeout, this, &QWidget::hide);
}

void QWaitWidget::setText(const QString &text)
{
    textValue = text;
    if (!showingResult)
        label->setText(text);
}

QString QWaitWidget::text() const
{
    return textValue;
}

void QWaitWidget::setResultText(const QString &text)
{
    resultTextValue = text;
}

void QWaitWidget::setResult(const QString &text, int msecs)
{
    resultTextValue = text;
    resultMsecs = msecs;
}

void QWaitWidget::showResult()
{
    presentResult(resultMsecs);
}

void QWaitWidget::presentResult(int msecs)
{
    expiryTimer->stop();
    showingResult = true;
    label->setText(resultTextValue);
    if (!isVisible())
        show();
    resultTimer->start(msecs);
}

void QWaitWidget::waitClose(int msecs)
{
    Q_UNUSED(msecs);
    expiryTimer->stop();
    resultTimer->stop();
    hide();
}

void QWaitWidget::expire()
{
    if (!isVisible())
        return;
    // A receiver of timeOut() may hide or even delete this pop-up.
    const QPointer<QWaitWidget> self(this);
    emit timeOut();
    if (!self || !isVisible())
        return;
    if (resultOption && !resultTextValue.isEmpty())
        presentResult(resultMsecs);
    else
        hide();
}

void QWaitWidget::showEvent(QShowEvent *e)
{
    QDialog::showEvent(e);
    activateWindow();
    if (!showingResult && expiryMsecs > 0)
        expiryTimer->start(expiryMsecs);
}

void QWaitWidget::hideEvent(QHideEvent *e)
{
    expiryTimer->stop();
    QDialog::hideEvent(e);
}

void QWaitWidget::keyPressEvent(QKeyEvent *e)
{
    // Back cancels only when cancelling is enabled; nothing else closes it.
    if (e->key() == Qt::Key_Back || e->key() == Qt::Key_Escape) {
        if (cancelEnabled)
            hide();
        e->accept();
        return;
    }
    QDialog::keyPressEvent(e);
}
