#pragma once

#include <optional>

#include "output/report_definition.h"

namespace tavolix::report {

// Reads a text with its fields: "{Titolo}", "{Valore:lire}", "{@somma Valore}", and "[...]" around
// what is left out where its fields are empty. Names that are new are added to the section. On a
// fault the result is nothing and `fault` says why.
std::optional<std::vector<Run>> readRuns(const QString& text, Section& section, QString& fault);

// Reads a condition: "Campo", "non Campo", "Campo < oggi", "Campo = testo".
std::optional<Condition> readCondition(const QString& text, Section& section, QString& fault);

// The place of a name in a list of names, without case; it is added if it is new.
int placeOf(const QString& name, QStringList& names);

}  // namespace tavolix::report
