#pragma once

#include "messaging/messagecatalogue.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

// The argument block of a catalogue message from texts, one per argument: ints
// and floats as decimal numbers, strings as they are. Empty, with *error set, when
// the count or a number does not fit the message.
std::optional<QByteArray> encodeArguments(const MessageEntry &entry, const QStringList &values,
                                          QString *error);

// One readable line for a message, as both video managers log it:
// "<direction> <channel> <signature> <decoded arguments> (<remark>)"; the
// arguments of a message outside the catalogue as hex bytes.
QString messageLogLine(const QString &direction, const QString &channel, const QString &message,
                       const QByteArray &data, const QString &remark = QString());
