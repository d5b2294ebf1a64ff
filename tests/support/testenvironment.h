#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <Qt>

#include "qtopiaipctransport.h"

class QWidget;
class vod;

// The sanitizers' build runs several times slower and keeps freed memory in
// quarantine: time limits stretch by Slowdown, memory is not measured there.
#if defined(__SANITIZE_ADDRESS__)
#define VOD_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VOD_ASAN 1
#endif
#endif
#ifdef VOD_ASAN
inline constexpr int Slowdown = 5;
#else
inline constexpr int Slowdown = 1;
#endif

// Gives a test program its own device root (QPE_ROOT) and its own settings
// location, so that no test touches the user's settings or the real /tmp files.
// Create one in initTestCase() and keep it for the whole program.
class TestEnvironment
{
public:
    TestEnvironment();
    ~TestEnvironment();

    // The device path under this test's root, e.g. "/tmp/status/vod_setup_status".
    QString path(const QString &devicePath) const;
    // Writes a device file (creating its directory); removes it with remove().
    void writeFile(const QString &devicePath, const QByteArray &bytes) const;
    void remove(const QString &devicePath) const;

private:
    QTemporaryDir root;
};

// What the module sent since the traffic log was cleared, one entry per
// message: "signature hexdata" for the video manager's channel, "channel
// signature hexdata" for the others (the hex left out for an empty block).
QStringList sentMessages();

// Delivers a notification to this process's listeners at once, as the transport would.
void deliver(const QString &channel, const QString &message, const QByteArray &data = QByteArray());

// Sends a key press and release straight to a widget, the way the device
// does. QTest::keyClick cannot take the device's own key codes.
void pressKey(QWidget *widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

// The texts of the browser's list rows.
QStringList listRows(const vod &browser);
// Opens a row of the browser's list with the keypad's Select, as the user does.
void openRow(vod &browser, int row);

// Runs the posted events (the in-process transport delivers through them).
void flushEvents();

// Deletes every top-level widget still there and says how many there were, so
// that a cleanup() can report a leak without failing every later test with it.
int deleteLeakedTopLevels();
