#include "keymap.h"
#include "keytranslator.h"

#include "devicekeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QtTest>

namespace {
class KeyRecorder : public QWidget
{
public:
    struct Record
    {
        QEvent::Type type;
        int key;
        Qt::KeyboardModifiers modifiers;
        QString text;
    };
    QList<Record> records;

protected:
    void keyPressEvent(QKeyEvent *e) override { records.append({e->type(), e->key(), e->modifiers(), e->text()}); }
    void keyReleaseEvent(QKeyEvent *e) override { records.append({e->type(), e->key(), e->modifiers(), e->text()}); }
};
}

class tst_KeyMap : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void translate_data();
    void translate();
    void fromName_data();
    void fromName();
    void keyboardHelp();
    void translatorLeavesProgramKeys();
};

void tst_KeyMap::cleanup()
{
    QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_KeyMap::translate_data()
{
    QTest::addColumn<int>("keyboardKey");
    QTest::addColumn<int>("deviceKey");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");

    const Qt::KeyboardModifiers none = Qt::NoModifier;
    QTest::newRow("Return") << int(Qt::Key_Return) << int(Qt::Key_Select) << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Enter") << int(Qt::Key_Enter) << int(Qt::Key_Select) << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Escape") << int(Qt::Key_Escape) << int(Qt::Key_Back) << none;
    QTest::newRow("Backspace") << int(Qt::Key_Backspace) << int(Qt::Key_Back) << none;
    QTest::newRow("F1") << int(Qt::Key_F1) << int(Qt::Key_Context1) << none;
    QTest::newRow("F2") << int(Qt::Key_F2) << int(Qt::Key_Context2) << none;
    QTest::newRow("End") << int(Qt::Key_End) << int(Qt::Key_Hangup) << none;
    QTest::newRow("+") << int(Qt::Key_Plus) << int(Qt::Key_VolumeUp) << none;
    QTest::newRow("-") << int(Qt::Key_Minus) << int(Qt::Key_VolumeDown) << none;
    QTest::newRow("0") << int(Qt::Key_0) << int(Key_Video0) << none;
    QTest::newRow("1") << int(Qt::Key_1) << int(Key_Video1) << none;
    QTest::newRow("4") << int(Qt::Key_4) << int(Key_Video4) << none;
    QTest::newRow("H") << int(Qt::Key_H) << int(Key_Headset) << none;
    // Pass through: no device key.
    QTest::newRow("Up") << int(Qt::Key_Up) << 0 << none;
    QTest::newRow("Right") << int(Qt::Key_Right) << 0 << none;
    QTest::newRow("5") << int(Qt::Key_5) << 0 << none;
    QTest::newRow("F3") << int(Qt::Key_F3) << 0 << none;
    QTest::newRow("Select itself") << int(Qt::Key_Select) << 0 << none;
}

void tst_KeyMap::fromName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");

    const Qt::KeyboardModifiers none = Qt::NoModifier;
    QTest::newRow("Select") << "Select" << int(Qt::Key_Select) << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Back") << "Back" << int(Qt::Key_Back) << none;
    QTest::newRow("Context1") << "Context1" << int(Qt::Key_Context1) << none;
    QTest::newRow("Hangup") << "Hangup" << int(Qt::Key_Hangup) << none;
    QTest::newRow("VolumeUp") << "VolumeUp" << int(Qt::Key_VolumeUp) << none;
    QTest::newRow("Video0") << "Video0" << 0x01200010 << none;
    QTest::newRow("Video4") << "Video4" << 0x01200014 << none;
    QTest::newRow("Headset") << "Headset" << 0x01200008 << none;
    QTest::newRow("Up") << "Up" << int(Qt::Key_Up) << none;
    QTest::newRow("other case") << "volumeup" << int(Qt::Key_VolumeUp) << none;
    QTest::newRow("unknown") << "Video5" << 0 << none;
    QTest::newRow("empty") << "" << 0 << none;
    QTest::newRow("keyboard name") << "Return" << 0 << none;
}

void tst_KeyMap::fromName()
{
    QFETCH(QString, name);
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);

    const KeyStroke stroke = KeyMap::fromName(name);
    QCOMPARE(stroke.key, key);
    QCOMPARE(stroke.modifiers, modifiers);
}

void tst_KeyMap::keyboardHelp()
{
    // One line per device key that the keyboard gives, plus the arrows.
    const QStringList lines = KeyMap::keyboardHelp();
    QCOMPARE(lines.size(), 14);
    auto lineFor = [&lines](const QString &deviceName) {
        for (const QString &line : lines) {
            if (line.endsWith(QLatin1Char(' ') + deviceName))
                return line.simplified();
        }
        return QString();
    };
    QCOMPARE(lineFor(QStringLiteral("Select")), QStringLiteral("Return, Enter Select"));
    QCOMPARE(lineFor(QStringLiteral("Back")), QStringLiteral("Esc, Backspace Back"));
    QCOMPARE(lineFor(QStringLiteral("Video4")), QStringLiteral("4 Video4"));
    QCOMPARE(lineFor(QStringLiteral("Headset")), QStringLiteral("H Headset"));
}

// The mapping itself, and the event filter delivering it to the focused window.
void tst_KeyMap::translate()
{
    QFETCH(int, keyboardKey);
    QFETCH(int, deviceKey);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const KeyStroke stroke = KeyMap::translate(keyboardKey);
    QCOMPARE(stroke.isValid(), deviceKey != 0);
    QCOMPARE(stroke.key, deviceKey);
    QCOMPARE(stroke.modifiers, modifiers);

    KeyTranslator translator;
    qApp->installEventFilter(&translator);
    KeyRecorder recorder;
    recorder.show();
    QVERIFY(QTest::qWaitForWindowActive(&recorder));
    QTest::keyClick(&recorder, Qt::Key(keyboardKey));

    QCOMPARE(recorder.records.size(), 2);
    const int expected = deviceKey ? deviceKey : keyboardKey;
    QCOMPARE(recorder.records.at(0).type, QEvent::KeyPress);
    QCOMPARE(recorder.records.at(1).type, QEvent::KeyRelease);
    for (const KeyRecorder::Record &record : recorder.records) {
        QCOMPARE(record.key, expected);
        if (deviceKey) {
            QCOMPARE(record.modifiers, modifiers);
            QVERIFY(record.text.isEmpty());
        }
    }
}

void tst_KeyMap::translatorLeavesProgramKeys()
{
    KeyTranslator translator;
    qApp->installEventFilter(&translator);
    KeyRecorder recorder;

    // Keys that the program sends itself are not the keyboard's.
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QApplication::sendEvent(&recorder, &press);
    QCOMPARE(recorder.records.size(), 1);
    QCOMPARE(recorder.records.at(0).key, int(Qt::Key_Return));
}

QTEST_MAIN(tst_KeyMap)
#include "tst_keymap.moc"
