#pragma once

#include <QWidget>

class QScrollArea;

namespace platform {
class DataControl;
}

namespace tavolix {

// Builds a collection's form: the page control panRecord with its pages picRecord(0..2), a box
// with its label for each field, the buttons of combos and dates. `dbCurr` is made in it too.
QWidget* buildForm(int iRac, QWidget* parent);

// Puts a page into an area that scrolls where it has to, and follows the focus.
QScrollArea* scrolling(QWidget* page, QWidget* parent);

// How many of a window's numbered controls are named by now.
struct ControlNumbers {
  int lists = 0;   // cmdApriTabella(n)
  int labels = 0;  // Label1(n)
};

// Builds a sub-collection's panel panRecord(iRac), its boxes bound to `source`.
QWidget* buildPanel(int iRac, platform::DataControl& source, ControlNumbers& numbers,
                    QWidget* parent);

}  // namespace tavolix
