// Every translated text that the design draws into a box of fixed size fits
// that box with the phone's face at the display's 72 dots per inch, in English
// and in Korean: nothing is cut at a box's edge. (Digits, the same in both,
// show in the storyboard's pictures.)

#include "moduletranslation.h"
#include "phonetheme.h"
#include "testdisplay.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QTest>

class tst_TextFit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        usePhoneResolution();
        PhoneTheme::install();
        // The face is installed by scripts/setup.sh; without it the rows below
        // would measure whatever face stands in.
        QCOMPARE(QFontInfo(QApplication::font()).family(), QLatin1String(PhoneTheme::FontFamily));
    }
    void cleanupTestCase() { ModuleTranslation::remove(); }

    void fits_data();
    void fits();
};

void tst_TextFit::fits_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pointSize"); // at 72 dpi, pixels
    QTest::addColumn<bool>("pixelSize"); // a pixel size rather than a point size
    QTest::addColumn<bool>("bold");
    QTest::addColumn<int>("room");

    for (const QString &language : {QStringLiteral("en"), QStringLiteral("ko")}) {
        const auto row = [&](const char *name) -> QTestData & { return QTest::addRow("%s %s", qPrintable(language), name); };
        // The strips' labels end at x 442, inside the image cell from x 392.
        row("Full") << language << QStringLiteral("VodPlaySmallScreenView") << QStringLiteral("Full") << 21 << false
                    << true << 50;
        row("Full (push)") << language << QStringLiteral("VideoPushView") << QStringLiteral("Full") << 21 << false
                           << true << 50;
        row("Max") << language << QStringLiteral("VodPlayFullScreenView") << QStringLiteral("Max") << 21 << false
                   << true << 50;
        row("Max (push)") << language << QStringLiteral("VideoPushFullView") << QStringLiteral("Max") << 21 << false
                          << true << 50;
        row("Mute") << language << QStringLiteral("VodPlayView") << QStringLiteral("Mute") << 20 << false << false
                    << 100;
        // The information page's labels, 70 pixels wide.
        row("Title") << language << QStringLiteral("MVodInfoView") << QStringLiteral("Title") << 17 << true << false
                     << 70;
        row("PlayTime") << language << QStringLiteral("MVodInfoView") << QStringLiteral("PlayTime") << 17 << true
                        << false << 70;
    }
}

void tst_TextFit::fits()
{
    QFETCH(QString, language);
    QFETCH(QString, context);
    QFETCH(QString, text);
    QFETCH(int, pointSize);
    QFETCH(bool, pixelSize);
    QFETCH(bool, bold);
    QFETCH(int, room);

    QVERIFY(ModuleTranslation::install(language));
    const QString shown = QCoreApplication::translate(qPrintable(context), qPrintable(text));
    QCOMPARE(shown == text, language == QLatin1String("en"));

    QFont font;
    if (pixelSize)
        font.setPixelSize(pointSize);
    else
        font.setPointSize(pointSize);
    font.setBold(bold);
    const QFontMetrics metrics(font);
    // Neither the ink nor the advance may run past the room.
    const QRect ink = metrics.boundingRect(shown);
    QVERIFY2(ink.right() < room && metrics.horizontalAdvance(shown) <= room,
             qPrintable(QStringLiteral("\"%1\" in %2: ink %3..%4, advance %5, room %6")
                            .arg(shown, font.family())
                            .arg(ink.left())
                            .arg(ink.right())
                            .arg(metrics.horizontalAdvance(shown))
                            .arg(room)));
}

QTEST_MAIN(tst_TextFit)
#include "tst_textfit.moc"
