#pragma once

#include <QString>

#include "store/database.h"
#include "store/progress.h"

namespace tavolix {

// The address book of a sibling program: a file of the earlier record engine or of our own, told by
// its content. It is read only.
class Rubrica {
 public:
  virtual ~Rubrica() = default;
  // "VERSIONEDB" of its table CFG, 0 if it has none.
  virtual double versione() = 0;
  // The entries, one after the other; fails with 3078 or 3265 where the file has not what is read.
  virtual void apriVoci() = 0;
  virtual qint64 voci() const = 0;
  virtual bool prossima() = 0;
  virtual QVariant valore(const QString& colonna) const = 0;
};

// Fails with what opening the file fails with.
std::unique_ptr<Rubrica> ApriRubrica(const QString& sPath);

struct EsitoImportazione {
  qint64 lVoci = 0;        // entries that the archive now has
  qint64 lAccorciate = 0;  // entries with a text longer than its column
  bool bInterrotta = false;
};

// Adds the entries to "Persone" of an archive. They are written in groups: what was written before
// a failure, or before the work was broken off, stays.
EsitoImportazione ImportaVoci(Rubrica& rubrica, store::Database& archivio,
                              const store::Progress& progress);

}  // namespace tavolix
