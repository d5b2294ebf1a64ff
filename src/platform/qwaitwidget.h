#pragma once

#include <QDialog>
#include <QString>

class QLabel;
class QTimer;

// The device's busy pop-up. While shown it is the active window. If it is still
// up when the expiry time has passed it emits timeOut() and then shows its result
// text (when it has one and the result option is on) before it goes.
class QWaitWidget : public QDialog
{
    Q_OBJECT

public:
    explicit QWaitWidget(QWidget *parent);

    void setText(const QString &text);
    QString text() const;
    void setResultText(const QString &text);
    QString resultText() const { return resultTextValue; }
    void setResultOption(bool on) { resultOption = on; }
    void setExpiryTime(int msecs) { expiryMsecs = msecs; }
    int expiryTime() const { return expiryMsecs; }
    void setHomeKeyEnabled(bool enabled) { homeKeyEnabled = enabled; }
    bool isHomeKeyEnabled() const { return homeKeyEnabled; }
    void setCancelEnabled(bool enabled) { cancelEnabled = enabled; }
    bool isCancelEnabled() const { return cancelEnabled; }

    // Sets the result text and how long showResult() keeps it up.
    void setResult(const QString &text, int msecs);
    // Shows the result text for the time given to setResult(), then hides.
    void showResult();
    // Closes the pop-up; it has nothing to finish, so it closes at once and
    // msecs is only the longest it may take.
    void waitClose(int msecs);

    // Whether the result text is what the pop-up shows now.
    bool isShowingResult() const { return showingResult; }

signals:
    void timeOut();

protected:
    void showEvent(QShowEvent *e) override;
    void hideEvent(QHideEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;

private:
    void expire();
    void presentResult(int msecs);

    QLabel *label;
    QTimer *expiryTimer;
    QTimer *resultTimer;
    QString textValue;
    QString resultTextValue;
    int expiryMsecs = 0;
    int resultMsecs = 2000;
    bool resultOption = false;
    bool homeKeyEnabled = true;
    bool cancelEnabled = true;
    bool showingResult = false;
};
