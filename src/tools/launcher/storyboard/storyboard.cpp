#include "storyboard.h"

#include <QApplication>
#include <QDir>
#include <QWidget>
#include <QFile>
#include <QImage>
#include <QTimer>

namespace {
constexpr int PollMsecs = 10;
}

Storyboard::Storyboard(std::function<QImage()> grab, const QString &directory, QObject *parent)
    : QObject(parent)
    , grab(std::move(grab))
    , directory(directory)
    , poll(new QTimer(this))
{
    poll->setInterval(PollMsecs);
    connect(poll, &QTimer::timeout, this, &Storyboard::tick);
}

void Storyboard::add(const Step &step)
{
    steps.append(step);
}

QStringList Storyboard::pictureNames() const
{
    QStringList names;
    for (const Step &step : steps) {
        if (!step.name.isEmpty())
            names.append(step.name);
    }
    return names;
}

void Storyboard::start()
{
    if (!QDir().mkpath(directory)) {
        fail(tr("cannot create %1").arg(directory));
        return;
    }
    current = 0;
    acted = false;
    poll->start();
}

void Storyboard::tick()
{
    // A step's action may open a modal pop-up whose event loop runs this timer
    // again: the step in progress goes on from there.
    if (busy || current >= steps.size())
        return;
    busy = true;
    const Step &step = steps.at(current);
    if (!acted) {
        acted = true;
        sinceAction.start();
        if (step.action)
            step.action();
    }
    if (sinceAction.elapsed() >= step.settleMsecs && (!step.ready || step.ready())) {
        if (!step.name.isEmpty()) {
            const QString file = QDir(directory).filePath(step.name + QLatin1String(".png"));
            if (!grab().save(file, "PNG")) {
                busy = false;
                fail(tr("cannot write %1").arg(file));
                return;
            }
        }
        ++current;
        acted = false;
    } else if (sinceAction.elapsed() > StepTimeoutMsecs) {
        busy = false;
        QStringList shown;
        for (const QWidget *w : QApplication::topLevelWidgets()) {
            if (w->isVisible())
                shown.append(QString::fromLatin1(w->metaObject()->className()));
        }
        fail(tr("step %1 (%2) did not come about within %3 ms; windows shown: %4")
                 .arg(current + 1)
                 .arg(step.name.isEmpty() ? step.caption : step.name)
                 .arg(StepTimeoutMsecs)
                 .arg(shown.join(QLatin1String(", "))));
        return;
    }
    busy = false;
    if (current >= steps.size())
        finish();
}

void Storyboard::fail(const QString &message)
{
    poll->stop();
    current = steps.size();
    error = message;
    emit finished(false);
}

void Storyboard::finish()
{
    poll->stop();
    QList<QPair<QString, QString>> pictures;
    for (const Step &step : std::as_const(steps)) {
        if (!step.name.isEmpty())
            pictures.append({step.name, step.caption});
    }
    QFile index(QDir(directory).filePath(QStringLiteral("index.html")));
    if (!index.open(QIODevice::WriteOnly | QIODevice::Truncate) || index.write(indexHtml(pictures).toUtf8()) < 0) {
        error = tr("cannot write %1").arg(index.fileName());
        emit finished(false);
        return;
    }
    emit finished(true);
}

QString Storyboard::indexHtml(const QList<QPair<QString, QString>> &pictures)
{
    QString html = QStringLiteral(
        "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>Video phone storyboard</title>\n"
        "<style>body{font-family:sans-serif;background:#222;color:#eee;margin:24px}"
        "main{display:flex;flex-wrap:wrap;gap:20px}"
        "figure{margin:0;width:500px}img{width:480px;height:272px;border:10px solid #000;border-radius:14px;"
        "image-rendering:pixelated}figcaption{margin-top:6px;font-size:14px}</style></head>\n"
        "<body><h1>Video phone: push viewer and VOD browser on the 480 &times; 272 display</h1>\n<main>\n");
    int number = 0;
    for (const auto &[name, caption] : pictures) {
        ++number;
        html += QStringLiteral("<figure id=\"%1\"><img src=\"%1.png\" alt=\"%1\"><figcaption><b>%2.</b> %3"
                               "</figcaption></figure>\n")
                    .arg(name.toHtmlEscaped())
                    .arg(number)
                    .arg(caption.toHtmlEscaped());
    }
    html += QStringLiteral("</main></body></html>\n");
    return html;
}

QStringList Storyboard::problems(const QString &directory, const QStringList &names, const QSize &size)
{
    QStringList found;
    QList<QImage> images;
    for (const QString &name : names) {
        const QString file = QDir(directory).filePath(name + QLatin1String(".png"));
        QImage image(file);
        if (image.isNull())
            found.append(tr("%1 is missing or unreadable").arg(file));
        else if (image.size() != size)
            found.append(tr("%1 is %2 x %3, not %4 x %5")
                             .arg(file)
                             .arg(image.width())
                             .arg(image.height())
                             .arg(size.width())
                             .arg(size.height()));
        images.append(image.convertToFormat(QImage::Format_ARGB32));
    }
    for (qsizetype i = 1; i < images.size(); ++i) {
        if (!images.at(i).isNull() && images.at(i) == images.at(i - 1))
            found.append(tr("%1 and %2 show the same picture").arg(names.at(i - 1), names.at(i)));
    }
    if (!QFile::exists(QDir(directory).filePath(QStringLiteral("index.html"))))
        found.append(tr("%1 has no index.html").arg(directory));
    return found;
}

QStringList Storyboard::differences(const QString &directory, const QString &references, const QStringList &names)
{
    QStringList found;
    for (const QString &name : names) {
        const QString file = name + QLatin1String(".png");
        const QImage shown = QImage(QDir(directory).filePath(file)).convertToFormat(QImage::Format_ARGB32);
        const QImage expected = QImage(QDir(references).filePath(file)).convertToFormat(QImage::Format_ARGB32);
        if (expected.isNull()) {
            found.append(tr("no reference picture %1 in %2").arg(file, references));
            continue;
        }
        if (shown.size() != expected.size()) {
            found.append(tr("%1 differs from its reference in size").arg(file));
            continue;
        }
        int differing = 0;
        QPoint first;
        for (int y = 0; y < shown.height(); ++y) {
            const auto *a = reinterpret_cast<const QRgb *>(shown.constScanLine(y));
            const auto *b = reinterpret_cast<const QRgb *>(expected.constScanLine(y));
            for (int x = 0; x < shown.width(); ++x) {
                if (a[x] != b[x] && differing++ == 0)
                    first = QPoint(x, y);
            }
        }
        if (differing)
            found.append(tr("%1 differs from its reference in %2 pixels, the first at (%3, %4)")
                             .arg(file)
                             .arg(differing)
                             .arg(first.x())
                             .arg(first.y()));
    }
    return found;
}
