#pragma once

#include <QString>

// Checks a plugin's verification record against the platform's Qt build, as
// the device's plugin loader does: the record is "key=value" lines, with the
// pattern line first; version, debug flag and build key must match.
class PluginVerification
{
public:
    static const char *const expectedVersion;
    static const char *const expectedDebug;
    static const char *const expectedBuildKey;

    // Empty when the record is acceptable, else what is wrong with it.
    static QString problem(const char *record);
};
