#pragma once

#include <QString>

// The device's files ("/tmp/systemdb/...", "/tmp/status/...") keep their paths;
// they are looked up under the directory named by QPE_ROOT (default "/"), so that
// tests and demos never share the real /tmp files of other runs.
QString devicePath(const QString &path);
