#pragma once

#include <QMap>
#include <QObject>
#include <QString>

class QWidget;

// The platform's soft-key bar. Widgets set the label of a key (an image name and
// a text); the bar that draws them (the launcher's frame) reads them back.
class QSoftMenuBar : public QObject
{
    Q_OBJECT

public:
    enum FocusState { EditFocus = 1, NavigationFocus = 2, AnyFocus = 3 };

    struct Label
    {
        QString pixmap;
        QString text;
        FocusState state = AnyFocus;
        bool operator==(const Label &o) const
        {
            return pixmap == o.pixmap && text == o.text && state == o.state;
        }
    };

    static void setLabel(QWidget *widget, int key, const QString &pixmap, const QString &text,
                         FocusState state = AnyFocus);

    // The labels set on a widget, by key; empty for a widget that set none or
    // that has been destroyed.
    static QMap<int, Label> labels(const QWidget *widget);
    static Label label(const QWidget *widget, int key);

    // Emits labelsChanged() whenever a widget's labels change.
    static QSoftMenuBar *instance();

signals:
    void labelsChanged(QWidget *widget);

private:
    QSoftMenuBar() = default;
};
