#include "qnoticedialog.h"

#include <QKeyEvent>
#include <QLabel>
#include <QList>
#include <QTimer>
#include <QVBoxLayout>

namespace {
// The notices up now, outermost first.
QList<QNoticeDialog *> &openNotices()
{
    static QList<QNoticeDialog *> notices;
    return notices;
}
}

QNoticeDialog::QNoticeDialog(const Notice &notice)
    : QDialog(nullptr),
      text(new QLabel(this)),
      detail(new QLabel(this))
{
    setObjectName(QStringLiteral("QNoticeDialog"));
    setModal(true);
    auto *layout = new QVBoxLayout(this);
    for (QLabel *label : {text, detail}) {
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignCenter);
        layout->addWidget(label);
    }
    text->setObjectName(QStringLiteral("text"));
    detail->setObjectName(QStringLiteral("detail"));
    setFixedWidth(400);
    say(notice);
}

void QNoticeDialog::say(const Notice &notice)
{
    shown = notice;
    setWindowTitle(notice.kind == Warning ? tr("Warning") : tr("Information"));
    text->setText(notice.text);
    detail->setText(notice.detail);
    detail->setVisible(!notice.detail.isEmpty());
}

void QNoticeDialog::keyPressEvent(QKeyEvent *e)
{
    // The device has no Escape or Return: Select and Back dismiss a notice.
    switch (e->key()) {
    case Qt::Key_Select:
    case Qt::Key_Back:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        accept();
        break;
    default:
        QDialog::keyPressEvent(e);
    }
}

int QNoticeDialog::present(const Notice &notice)
{
    QWidget *window = notice.parent ? notice.parent->window() : nullptr;
    for (QNoticeDialog *open : std::as_const(openNotices())) {
        if (open->over == window) {
            open->say(notice);
            return QDialog::Rejected;
        }
    }

    // Not a child of the window: only this call frees the notice.
    QNoticeDialog dialog(notice);
    dialog.over = window;
    if (window)
        connect(window, &QObject::destroyed, &dialog, &QDialog::reject);
    bool ok = false;
    const int timeout = qEnvironmentVariableIntValue("QPE_NOTICE_TIMEOUT", &ok);
    if (ok && timeout >= 0)
        QTimer::singleShot(timeout, Qt::PreciseTimer, &dialog, &QDialog::accept);
    openNotices().append(&dialog);
    const int result = dialog.exec();
    openNotices().removeOne(&dialog);
    return result;
}

int QNoticeDialog::information(QWidget *parent, const QString &text, const QString &detail, int option)
{
    return present(Notice{Information, parent, text, detail, option});
}

int QNoticeDialog::warning(QWidget *parent, const QString &text, const QString &detail, int option)
{
    return present(Notice{Warning, parent, text, detail, option});
}
