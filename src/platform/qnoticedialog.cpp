#include "qnoticedialog.h"

#include <QKeyEvent>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace {
QNoticeDialog::Presenter &presenter()
{
    static QNoticeDialog::Presenter p;
    return p;
}
}

QNoticeDialog::QNoticeDialog(const Notice &notice, QWidget *parent)
    : QDialog(parent), shown(notice)
{
    setObjectName(QStringLiteral("QNoticeDialog"));
    setWindowTitle(notice.kind == Warning ? tr("Warning") : tr("Information"));
    setModal(true);
    auto *layout = new QVBoxLayout(this);
    auto *text = new QLabel(notice.text, this);
    text->setObjectName(QStringLiteral("text"));
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignCenter);
    layout->addWidget(text);
    if (!notice.detail.isEmpty()) {
        auto *detail = new QLabel(notice.detail, this);
        detail->setObjectName(QStringLiteral("detail"));
        detail->setWordWrap(true);
        detail->setAlignment(Qt::AlignCenter);
        layout->addWidget(detail);
    }
    setFixedWidth(400);
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

void QNoticeDialog::setPresenter(Presenter p)
{
    presenter() = std::move(p);
}

int QNoticeDialog::present(const Notice &notice)
{
    if (presenter()) {
        presenter()(notice);
        return QDialog::Accepted;
    }
    QNoticeDialog dialog(notice, notice.parent);
    bool ok = false;
    const int timeout = qEnvironmentVariableIntValue("QPE_NOTICE_TIMEOUT", &ok);
    if (ok && timeout >= 0)
        QTimer::singleShot(timeout, Qt::PreciseTimer, &dialog, &QDialog::accept);
    return dialog.exec();
}

int QNoticeDialog::information(QWidget *parent, const QString &text, const QString &detail, int option)
{
    return present(Notice{Information, parent, text, detail, option});
}

int QNoticeDialog::warning(QWidget *parent, const QString &text, const QString &detail, int option)
{
    return present(Notice{Warning, parent, text, detail, option});
}
