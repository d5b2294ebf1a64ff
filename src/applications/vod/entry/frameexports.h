#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class QObject;
class QWidget;

// What the plugin library exports for the launcher's device frame: the frame
// draws the platform's soft-key bar and the video manager's picture, whose
// state lives in the plugin's own copy of the platform layer.
extern "C" {
// Receives one message of a channel opened with videophone_listen().
typedef void (*VideophoneMessageHandler)(void *context, const QString &message, const QByteArray &data);

// The soft-key labels set on the widget with QSoftMenuBar, in ascending key
// order: the key codes, the image names and the texts. Returns how many.
int videophone_soft_keys(const QWidget *widget, QList<int> *keys, QStringList *images, QStringList *texts);

// Listens on an IPC channel through the plugin's transport and calls the
// handler with every message sent on it. Deleting the returned object stops it.
QObject *videophone_listen(const char *channel, VideophoneMessageHandler handler, void *context);
}
