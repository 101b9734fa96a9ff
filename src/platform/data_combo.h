#pragma once

#include <QComboBox>
#include <QStringListModel>
#include <functional>

#include "platform/bound_control.h"
#include "platform/lookup_list.h"
#include "platform/popup_keys.h"

namespace platform {

// Offers the values of a lookup list; the value is the key of the one chosen, 0 for the blank row.
// Until the list is needed the control holds its present text only. Keys typed build the beginning
// of a text, and select the first value with it at once; where there is none, the value from before
// comes back. A key that is not in the list shows blank and stays until the user chooses.
class DataCombo final : public QComboBox, public BoundControl, private PopupKeys::Box {
  Q_OBJECT
 public:
  explicit DataCombo(QWidget* parent = nullptr);

  void SetList(LookupListPtr list);
  const LookupListPtr& List() const { return list_; }

  QWidget* widget() override { return this; }
  QVariant Value() const override { return key_; }
  QString Text() const override { return currentText(); }

  // Chooses the value with a text (case does not count), as if typed. False if there is none: the
  // blank value is chosen then. Reads the list, and fails as that does.
  bool SelectText(const QString& text);
  // Whether Enter in the open list just takes the row, or goes on to the window as well.
  void SetEnterStays(bool stays) { enterStays_ = stays; }
  // What F2 does: shows the window in which values are added to the list.
  void SetValuesWindow(std::function<void()> open) { openValues_ = std::move(open); }
  // What was typed last and is in no value; until another value is shown or chosen.
  QString MissedText() const { return missedText_; }
  bool DroppedDown() const { return keys_.isOpen(); }
  // Reads the list to drop it down, and fails as that does.
  void SetDroppedDown(bool down);

  void showPopup() override;

 protected:
  void setContent(const QVariant& value) override;
  void initStyleOption(QStyleOptionComboBox* option) const override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool usesList() const { return list_ != nullptr && model() == list_.get(); }
  void open();
  void pressKey(QKeyEvent* event);
  void useList();
  void useOwnText();
  void prepareView();
  void onActivated(int row);
  void choose(int row);
  void remember();
  void putBack();
  bool typeKey(const QKeyEvent& event);
  void search(const QString& text);
  void endSearch();
  void dropSearch();
  void tellMissed(const QString& text);
  bool showValues(int key);
  void takeRow(int key) override;
  void giveUp() override;
  bool enterStays() const override { return enterStays_; }
  bool typed(const QKeyEvent& event) override;

  LookupListPtr list_;
  QStringListModel ownText_;
  QMetaObject::Connection listChanged_;
  qint64 key_ = 0;
  std::function<void()> openValues_;
  QString search_;
  bool missing_ = false;  // no value begins with search_
  QString missedText_;
  PopupKeys keys_{*this, *this};
  bool viewReady_ = false;
  bool enterStays_ = false;
  qint64 keyBefore_ = 0;  // the popup, or the search
  int rowBefore_ = 0;
  bool changedBefore_ = false;
};

}  // namespace platform
