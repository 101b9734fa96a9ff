#pragma once

#include <QString>

namespace store {

// Text as the file holds it: UTF-8, any character included. Half of a surrogate pair, as a text
// cut at its limit may end with, is kept as the three bytes of its code.
QByteArray bytesOf(const QString& text);
// The same text again; a byte that another program wrote and that is no UTF-8 becomes U+FFFD.
QString textOf(const char* bytes, qsizetype size);

}  // namespace store
