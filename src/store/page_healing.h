#pragma once

#include <QtGlobal>

namespace store {

// These change a page to what its checksum proves to have been written; false, and the page as it
// was, if that is not found. One bit, one byte, or bytes of the checksum itself.
bool healByte(uchar* page, int size, qint64 number);
// Page 1, of which one field of the header is wrong.
bool healHeader(uchar* page, int size, qint64 pages);

}  // namespace store
