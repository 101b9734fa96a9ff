#pragma once

#include <QWidget>
#include <functional>

#include "workspace/moduli.h"

namespace platform {
class DataControl;
}

namespace tavolix {

// What the buttons beside the boxes of a form do; each is told the field's row, or the box.
struct FormHandlers {
  std::function<void(int campo)> openList;
  std::function<void(QWidget* dateBox)> openCalendar;
};

// Builds a collection's form: the page control panRecord with its pages picRecord(0..2), a box
// with its label for each field, the buttons of combos and dates. `dbCurr` is made in it too.
QWidget* buildForm(const Module& module, int iRac, const FormHandlers& handlers, QWidget* parent);

}  // namespace tavolix
