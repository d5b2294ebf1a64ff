#include "moduletranslation.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

namespace {

// Owned by the application object, so it goes with it.
QPointer<QTranslator> &installedTranslator()
{
    static QPointer<QTranslator> translator;
    return translator;
}

QString &installedLanguageName()
{
    static QString name;
    return name;
}

} // namespace

bool ModuleTranslation::install(const QString &locale)
{
    remove();
    // A translator is installed into the running application.
    if (!QCoreApplication::instance())
        return false;
    if (locale == QLatin1String("C") || locale == QLatin1String("POSIX"))
        return true;
    const QLocale wanted(locale);
    if (wanted.language() == QLocale::English)
        return true;
    // QLocale gives C for a name it cannot read.
    if (wanted.language() == QLocale::C)
        return false;

    auto *translator = new QTranslator(QCoreApplication::instance());
    // Tries the locale's UI languages in turn: "ko_KR" finds vod_ko.qm.
    if (!translator->load(wanted, QStringLiteral("vod"), QStringLiteral("_"), QStringLiteral(":/i18n"))) {
        delete translator;
        return false;
    }
    QCoreApplication::installTranslator(translator);
    installedTranslator() = translator;
    installedLanguageName() = translator->language();
    return true;
}

void ModuleTranslation::remove()
{
    installedLanguageName().clear();
    QPointer<QTranslator> &translator = installedTranslator();
    if (!translator)
        return;
    QCoreApplication::removeTranslator(translator);
    delete translator;
}

QString ModuleTranslation::installedLanguage()
{
    return installedLanguageName();
}
