#pragma once

#include <QDebug>

// Category logging of the platform over QLoggingCategory. A category's debug
// lines are off unless enabled by QT_LOGGING_RULES ("VOD.debug=true").
bool qtopiaLogRequested(const char *category);

class QLogBase
{
public:
    static QDebug log(const char *category);
};
