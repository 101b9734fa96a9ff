#include "platform/data_control.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "desk.h"
#include "grid_archive.h"
#include "platform/data_combo.h"
#include "platform/date_box.h"
#include "platform/masked_box.h"
#include "platform/text_box.h"

namespace platform {
namespace {

class DataControlTest : public ::testing::Test {
 protected:
  DataControlTest() {
    year_.SetMask("9999");
    join(*title_.get(), data_, "Titolo");
    join(year_, data_, "Anno");
    join(bought_, data_, "Acquisto");
    refresh();
  }

  static void join(BoundControl& control, DataControl& data, const QString& field) {
    control.SetDataField(field);
    control.SetDataSource(&data);
  }
  void refresh() {
    data_.SetDatabaseName(archive_.database().Name());
    data_.SetRecordSource("SELECT * FROM LIBRO ORDER BY Id");
    data_.Refresh();
  }
  // Types a title and stays in its box.
  void type(const QString& title) {
    title_.enter();
    title_->selectAll();
    title_.type(title);
  }
  store::Recordset& rows() { return *data_.Recordset(); }
  QString title() { return title_->Text(); }
  QString titles() {
    QStringList all;
    for (int i = 0; i < archive_.books()->RecordCount(); ++i) all << archive_.stored(i, "Titolo");
    return all.join('|');
  }

  GridArchive archive_;
  DataControl data_;
  QSignalSpy failed_{&data_, &DataControl::writeFailed};
  Desk<TextBox> title_;
  MaskedBox year_;
  DateBox bought_;
};

TEST_F(DataControlTest, WritesWhatWasTypedBeforeTheRowIsLeft) {
  const std::pair<QString, std::function<void()>> ways[] = {
      {"move", [&] { rows().MoveNext(); }},
      {"refresh", [&] { data_.Refresh(); }},
      {"other file", [&] { data_.SetDatabaseName("altro"); }},
      {"no rows", [&] { data_.SetRecordset(nullptr); }},
      {"other box", [&] { title_.leave(); }},
  };
  for (const auto& [way, leave] : ways) {
    refresh();
    type(way);
    year_.SetValue(way.size());
    leave();
    EXPECT_EQ(titles(), way + "|Libro 2|Libro 3");
    EXPECT_EQ(archive_.stored(0, "Anno"), QString::number(way.size()));
    EXPECT_FALSE(data_.Pending());
  }
  EXPECT_EQ(failed_.count(), 0);
}

TEST_F(DataControlTest, WritesNothingWhileAListIsOpen) {
  Desk<DataCombo> publisher;
  publisher->SetList(archive_.list());
  join(*publisher.get(), data_, "Editore");
  publisher.enter();
  publisher->SetDroppedDown(true);
  publisher.type("ell");
  QFocusEvent list(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QCoreApplication::sendEvent(publisher.get(), &list);
  EXPECT_EQ(archive_.stored(0, "Editore"), "7");
  publisher->SetDroppedDown(false);
  publisher.leave();
  EXPECT_EQ(archive_.stored(0, "Editore"), "5");
}

TEST_F(DataControlTest, WritesNothingWhereNothingChanged) {
  const QSignalSpy updating(&rows(), &store::Recordset::aboutToUpdate);
  title_.fill("Libro 1");
  year_.SetValue(1990LL);
  rows().MoveNext();
  EXPECT_EQ(updating.count(), 0);
}

TEST_F(DataControlTest, KeepsWhatCannotBeWritten) {
  const std::pair<QString, int> cases[] = {
      {QString(21, u'x'), store::failure::kTextTooLong},
      {"Libro 2", store::failure::kDuplicateKey},
  };
  for (const auto& [text, number] : cases) {
    title_.fill(text);
    ASSERT_EQ(failed_.count(), 1);
    EXPECT_EQ(failed_.takeFirst().at(0), number);
    EXPECT_EQ(title(), text);
    EXPECT_EQ(rows().Mode(), store::EditMode::None);
  }
  const std::function<void()> ways[] = {
      [&] { rows().MoveNext(); },
      [&] { rows().AddNew(); },
      [&] { data_.Refresh(); },
      [&] { data_.SetDatabaseName("altro"); },
      [&] { data_.SetRecordset(nullptr); },
  };
  for (const auto& leave : ways) EXPECT_THROW(leave(), store::Failure);
  EXPECT_EQ(failed_.count(), 0);
  EXPECT_EQ(title(), "Libro 2");
  EXPECT_EQ(rows().AbsolutePosition(), 0);
  archive_.rename(1, "Altro");
  rows().MoveNext();
  EXPECT_EQ(titles(), "Libro 2|Altro|Libro 3");
}

TEST_F(DataControlTest, LeavesANewRowToItsUpdate) {
  rows().AddNew();
  EXPECT_EQ(title() + bought_.Text(), "");
  title_.fill("Libro 3");
  EXPECT_THROW(rows().Update(), store::Failure);
  EXPECT_EQ(title(), "Libro 3");
  title_.fill("Libro 4");
  rows().Update();
  EXPECT_EQ(title(), "Libro 1");
  const std::function<void()> ways[] = {[&] { rows().CancelUpdate(); }, [&] { rows().MoveLast(); }};
  for (const auto& giveUp : ways) {
    rows().AddNew();
    title_.fill("Mai");
    giveUp();
    data_.UpdateRecord();
    EXPECT_EQ(titles(), "Libro 1|Libro 2|Libro 3|Libro 4");
  }
  EXPECT_EQ(title(), "Libro 4");
}

TEST_F(DataControlTest, SparesWhatIsBeingTypedWhenTheRowChanges) {
  type("Nuovo");
  bought_.SetRawData("31022000");
  rows().RefreshRow();
  EXPECT_EQ(title(), "Nuovo");
  rows().Edit();
  rows().SetValue("Anno", 1800);
  rows().Update();
  EXPECT_EQ(year_.Text(), "1800");
  EXPECT_EQ(titles(), "Nuovo|Libro 2|Libro 3");
  EXPECT_EQ(title_->cursorPosition(), 5);
  EXPECT_EQ(bought_.Text(), "31-02-2000");
  EXPECT_EQ(archive_.stored(0, "Acquisto"), "36526");
}

TEST_F(DataControlTest, IsEmptyWithoutACurrentRow) {
  const std::function<void()> ways[] = {
      [&] { rows().Delete(); },
      [&] { rows().Close(); },
      [&] { store::CloseWorkspace(); },
  };
  for (const auto& leave : ways) {
    refresh();
    EXPECT_NE(title(), "");
    leave();
    EXPECT_EQ(title(), "");
    title_.fill("x");
  }
  EXPECT_EQ(failed_.count(), 0);
}

}  // namespace
}  // namespace platform
