#pragma once

#include <QWidget>

#include "model/condizione.h"

class QHBoxLayout;
class QValidator;

namespace platform {
class CheckBox;
class DataCombo;
class DateBox;
class DropDown;
class TextBox;
}  // namespace platform

namespace tavolix {

// The controls by which a condition is entered: field, condition, and one value control for each
// kind of field, of which the one that suits is shown.
class ControlliCondizione final {
 public:
  // Names of the controls; `suffix` is what stands behind each, as "(2)".
  struct Nomi {
    const char* campo;
    QString suffix;
  };
  // Makes them as children of a window; `label` tells screen readers what they belong to.
  ControlliCondizione(const Nomi& nomi, const QString& label, QWidget* window);

  platform::DropDown* Campo() const { return campo_; }
  platform::DropDown* Condizioni() const { return condizione_; }
  // The value controls side by side.
  QHBoxLayout* Valori() const { return valori_; }

  // Offers the fields of a collection, all but the times, and empties the values.
  void CaricaCampi(int iRac) const;
  int iCampo() const;
  // Makes ready for the chosen field: its conditions, of which the first is chosen, no value.
  void Prepara(int iRac, const QStringList& condizioni) const;
  // A value that has gone from its list is none.
  void RivediVoce() const;
  // Shows field, condition and the value control of the field's type, or none of them.
  void Mostra(int iRac, bool bAttivi) const;
  // The value control of the chosen field.
  QWidget* Valore(int iRac) const;
  Condizione Letta() const;

 private:
  platform::DropDown* campo_;
  platform::DropDown* condizione_;
  platform::DataCombo* voce_;
  platform::TextBox* testo_;
  platform::DateBox* data_;
  platform::CheckBox* spunta_;
  const QValidator* numeri_;
  QHBoxLayout* valori_;
};

}  // namespace tavolix
