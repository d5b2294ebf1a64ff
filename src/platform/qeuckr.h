#pragma once

#include <QByteArray>
#include <QString>

// Decodes a NUL-terminated EUC-KR byte string (the catalogue files' encoding).
QString qEUCKRtoQString(const char *text);
QString qEUCKRtoQString(const QByteArray &text);
