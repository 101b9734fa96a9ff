#pragma once

#include <QString>
#include <QVariant>

namespace tavolix::text_export {

// How a text file of a collection is written.
struct Format {
  QString separator = QStringLiteral(";");   // between fields: a character, or none
  QString delimiter = QStringLiteral("\"");  // around texts: a character, or none
  bool hasHead = true;
  bool doublesDelimiter = true;  // within texts
};

// The titles of a collection's fields, without the line's end. They are never delimited.
QString headLine(int iRac, const Format& format);
// A value of the archive as the file has it, by the type of its field. That of a list is its text,
// none if the list has no such value.
QString fieldText(const QString& sTipo, const QVariant& value, const Format& format);

}  // namespace tavolix::text_export
