#pragma once

#include <QString>

// The module's own translation. Its texts are written in English; a translation
// for another language is compiled into the library as ":/i18n/vod_<language>.qm".
// At most one module translator is installed in the application at a time.
class ModuleTranslation
{
public:
    // Installs the translation for `locale` ("ko", "ko_KR", "ko_KR.UTF-8", ...),
    // replacing the one installed before. English ("en", "C") needs none: the
    // module's translator is removed and the result is true. A language without
    // a translation, a name that is no locale, or a call before the application
    // object exists leaves the module in English and gives false.
    static bool install(const QString &locale);
    // Back to the English texts.
    static void remove();
    // The language of the installed translation ("ko"), empty for English.
    static QString installedLanguage();
};
