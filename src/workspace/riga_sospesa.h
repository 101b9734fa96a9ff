#pragma once

#include <QString>

namespace platform {
class DataControl;
class DataGrid;
}  // namespace platform

namespace tavolix {

// The current row in the boxes of a form and in the cells of its list, and what was typed for it.
struct RigaSospesa {
  platform::DataControl& form;
  platform::DataGrid& list;

  // Writes it. A failure is told by form or list, once, and otherwise ignored.
  void Salva() const;
  // True where it could not be written: it still stands in its box or cell.
  bool bResta() const;
  // Writes it for good, as form or program are left. Where that cannot be done, asks whether to
  // wait; true if nothing is left, or it is to be given up.
  bool bLascia() const;
  // Tells that form or list cannot be read: once for both.
  void SegnalaLettura(int numero, const QString& descrizione) const;
};

}  // namespace tavolix
