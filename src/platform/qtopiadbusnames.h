#pragma once

#include <QString>

// How a channel and a message signature appear on D-Bus. A message on channel C
// with signature S is the signal S' on the object path PathPrefix + C' of the
// interface Interface, where X' = qtopiaDBusEscape(X). D-Bus allows only
// [A-Za-z0-9_] in path elements and member names, so any D-Bus peer that applies
// the same escaping can talk to the module.
namespace QtopiaDBus {
inline constexpr char PathPrefix[] = "/com/trolltech/qtopia/";
inline constexpr char Interface[] = "com.trolltech.qtopia";
}

// Every character outside [0-9A-Za-z] becomes "_" and two upper-case hex digits
// of its UTF-8 bytes ("/" -> "_2F", "_" -> "_5F"); a leading digit gets "_00" in
// front, because D-Bus member names must not begin with a digit.
QString qtopiaDBusEscape(const QString &text);

// The inverse. Sets *ok to false (and returns a null string) for text that no
// escaping produces: stray characters, a broken "_XX" or bytes that are not UTF-8.
// Hex digits may be given in either case.
QString qtopiaDBusUnescape(const QString &text, bool *ok = nullptr);
