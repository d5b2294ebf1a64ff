#pragma once

#include <QDebug>
#include <QLoggingCategory>

// Category logging of the platform over QLoggingCategory. A named category's
// debug lines are off unless enabled by QT_LOGGING_RULES ("VOD.debug=true").
bool qtopiaLogRequested(const char *category);

// The platform's general debug output: on unless a rule turns it off
// ("default.debug=false").
Q_DECLARE_LOGGING_CATEGORY(lcQtopiaDebug)

class QLogBase
{
public:
    static QDebug log(const char *category);
};
