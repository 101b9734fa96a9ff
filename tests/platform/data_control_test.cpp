#include "platform/data_control.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "desk.h"
#include "grid_archive.h"
#include "platform/check_box.h"
#include "platform/data_combo.h"
#include "platform/date_box.h"
#include "platform/masked_box.h"
#include "platform/text_box.h"

namespace platform {
namespace {

class DataControlTest : public ::testing::Test {
 protected:
  DataControlTest() {
    year_.SetMask(QStringLiteral("9999"));
    join(*title_.get(), data_, "Titolo");
    join(year_, data_, "Anno");
    join(bought_, data_, "Acquisto");
    join(read_, data_, "Letto");
    join(missing_, data_, "Assente");
    data_.SetDatabaseName(archive_.database().Name());
    data_.SetRecordSource(QStringLiteral("SELECT * FROM LIBRO ORDER BY Id"));
    data_.Refresh();
  }

  static void join(BoundControl& control, DataControl& data, const char* field) {
    control.SetDataField(QString::fromLatin1(field));
    control.SetDataSource(&data);
  }
  store::Recordset& rows() { return *data_.Recordset(); }
  QString title() { return title_->Text(); }
  QString stored(int row, const char* field) {
    return archive_.stored(row, QString::fromLatin1(field)).toString();
  }

  GridArchive archive_;
  DataControl data_;
  QSignalSpy failed_{&data_, &DataControl::writeFailed};
  Desk<TextBox> title_;
  MaskedBox year_;
  DateBox bought_;
  CheckBox read_;
  TextBox missing_;
};

TEST_F(DataControlTest, ShowsTheCurrentRow) {
  EXPECT_EQ(title(), QStringLiteral("Libro 1"));
  EXPECT_EQ(year_.Value().toInt(), 1990);
  EXPECT_EQ(bought_.Text(), QStringLiteral("01-01-2000"));
  EXPECT_EQ(missing_.Text(), QString());
  rows().MoveLast();
  EXPECT_EQ(title(), QStringLiteral("Libro 3"));
  rows().MoveNext();
  EXPECT_EQ(title(), QString());
  rows().Requery();
  EXPECT_EQ(title(), QStringLiteral("Libro 1"));
  EXPECT_FALSE(data_.Pending());
}

TEST_F(DataControlTest, WritesWhatWasTypedBeforeTheRowChanges) {
  title_.enter();
  title_->selectAll();
  title_.type(QStringLiteral("Nuovo"));
  year_.SetValue(2001LL);
  read_.click();
  missing_.SetValue(QStringLiteral("x"));
  EXPECT_TRUE(data_.Pending());
  rows().MoveNext();
  EXPECT_EQ(stored(0, "Titolo"), QStringLiteral("Nuovo"));
  EXPECT_EQ(stored(0, "Anno"), QStringLiteral("2001"));
  EXPECT_EQ(stored(0, "Letto"), QStringLiteral("-1"));
  EXPECT_EQ(stored(1, "Titolo"), QStringLiteral("Libro 2"));
  EXPECT_EQ(title(), QStringLiteral("Libro 2"));
  EXPECT_FALSE(data_.Pending());
  EXPECT_EQ(missing_.Text(), QString());
  EXPECT_EQ(failed_.count(), 0);
}

TEST_F(DataControlTest, WritesAsTheFocusLeaves) {
  title_.fill(QStringLiteral("Nuovo"));
  EXPECT_EQ(stored(0, "Titolo"), QStringLiteral("Nuovo"));
  EXPECT_FALSE(title_->DataChanged());
  title_.fill(QString());
  EXPECT_TRUE(archive_.stored(0, QStringLiteral("Titolo")).isNull());
}

TEST_F(DataControlTest, WritesNothingWhileAListIsOpen) {
  Desk<DataCombo> publisher;
  publisher->SetList(archive_.columns().at(GridArchive::Publisher).setup.list);
  join(*publisher.get(), data_, "Editore");
  publisher.enter();
  publisher->SetDroppedDown(true);
  publisher.type(QStringLiteral("bo"));
  QFocusEvent list(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QCoreApplication::sendEvent(publisher.get(), &list);
  EXPECT_EQ(stored(0, "Editore"), QStringLiteral("7"));
  publisher->SetDroppedDown(false);
  publisher.leave();
  EXPECT_EQ(stored(0, "Editore"), QStringLiteral("8"));
}

TEST_F(DataControlTest, WritesNothingWhereNothingChanged) {
  QSignalSpy updating(&rows(), &store::Recordset::aboutToUpdate);
  title_.enter();
  title_.leave();
  title_.fill(QStringLiteral("Libro 1"));
  year_.SetValue(1990LL);
  data_.UpdateRecord();
  rows().MoveNext();
  EXPECT_EQ(updating.count(), 0);
  EXPECT_FALSE(data_.Pending());
}

TEST_F(DataControlTest, KeepsWhatCannotBeWritten) {
  const struct {
    QString title;
    int number;
  } cases[] = {
      {QString(21, u'x'), store::failure::kTextTooLong},
      {QStringLiteral("Libro 2"), store::failure::kDuplicateKey},
  };
  for (const auto& c : cases) {
    title_.fill(c.title);
    ASSERT_EQ(failed_.count(), 1);
    EXPECT_EQ(failed_.takeFirst().at(0).toInt(), c.number);
    EXPECT_EQ(title(), c.title);
    EXPECT_THROW(data_.UpdateRecord(), store::Failure);
    EXPECT_TRUE(data_.Pending());
    EXPECT_EQ(rows().Mode(), store::EditMode::None);
    EXPECT_EQ(stored(0, "Titolo"), QStringLiteral("Libro 1"));
  }
  rows().MoveNext();
  EXPECT_EQ(failed_.count(), 1);
  EXPECT_EQ(title(), QStringLiteral("Libro 2"));
}

TEST_F(DataControlTest, WritesNoDateThatIsNone) {
  bought_.SetRawData(QStringLiteral("31022000"));
  year_.SetValue(2001LL);
  data_.UpdateRecord();
  EXPECT_EQ(bought_.Text(), QStringLiteral("31-02-2000"));
  EXPECT_TRUE(data_.Pending());
  EXPECT_EQ(stored(0, "Anno"), QStringLiteral("2001"));
  rows().MoveNext();
  rows().MovePrevious();
  EXPECT_EQ(bought_.Text(), QStringLiteral("01-01-2000"));
  EXPECT_EQ(failed_.count(), 0);
}

TEST_F(DataControlTest, LeavesANewRowToUpdate) {
  rows().MoveNext();
  rows().AddNew();
  EXPECT_EQ(title(), QString());
  EXPECT_EQ(bought_.Text(), QString());
  title_.fill(QStringLiteral("Aggiunto"));
  data_.UpdateRecord();
  EXPECT_EQ(rows().Mode(), store::EditMode::Add);
  rows().SetValue(QStringLiteral("Anno"), 1950);
  rows().Update();
  EXPECT_FALSE(data_.Pending());
  EXPECT_EQ(title(), QStringLiteral("Libro 2"));
  rows().SetBookmark(rows().LastModified());
  EXPECT_EQ(title(), QStringLiteral("Aggiunto"));
  EXPECT_EQ(year_.Text(), QStringLiteral("1950"));
  EXPECT_EQ(stored(1, "Titolo"), QStringLiteral("Libro 2"));
}

TEST_F(DataControlTest, KeepsANewRowThatCannotBeWritten) {
  rows().AddNew();
  title_.fill(QStringLiteral("Libro 3"));
  EXPECT_THROW(rows().Update(), store::Failure);
  EXPECT_EQ(title(), QStringLiteral("Libro 3"));
  EXPECT_TRUE(data_.Pending());
  title_.fill(QStringLiteral("Libro 4"));
  rows().Update();
  EXPECT_EQ(stored(3, "Titolo"), QStringLiteral("Libro 4"));
}

TEST_F(DataControlTest, WritesNothingOfARowGivenUpIntoAnother) {
  rows().AddNew();
  title_.fill(QStringLiteral("Mai"));
  rows().CancelUpdate();
  data_.UpdateRecord();
  EXPECT_EQ(title(), QStringLiteral("Libro 1"));
  EXPECT_EQ(stored(0, "Titolo"), QStringLiteral("Libro 1"));
  rows().AddNew();
  title_.fill(QStringLiteral("Mai"));
  rows().MoveLast();
  EXPECT_EQ(rows().RecordCount(), 3);
  EXPECT_EQ(stored(0, "Titolo"), QStringLiteral("Libro 1"));
  EXPECT_EQ(title(), QStringLiteral("Libro 3"));
}

TEST_F(DataControlTest, ShowsFieldsChangedByOthersAndSparesWhatIsBeingTyped) {
  rows().Edit();
  rows().SetValue(QStringLiteral("Anno"), 1800);
  rows().Update();
  EXPECT_EQ(year_.Text(), QStringLiteral("1800"));
  year_.SetValue(1700LL);
  bought_.SetRawData(QStringLiteral("31022000"));
  rows().RefreshRow();
  EXPECT_EQ(year_.Text(), QStringLiteral("1700"));
  EXPECT_EQ(bought_.Text(), QStringLiteral("31-02-2000"));
  EXPECT_TRUE(data_.Pending());
}

TEST_F(DataControlTest, PutsPendingValuesIntoAnEditOfTheProgram) {
  title_.enter();
  title_->selectAll();
  title_.type(QStringLiteral("Nuovo"));
  rows().Edit();
  rows().SetValue(QStringLiteral("Anno"), 1800);
  rows().Update();
  EXPECT_EQ(stored(0, "Titolo"), QStringLiteral("Nuovo"));
  EXPECT_EQ(stored(0, "Anno"), QStringLiteral("1800"));
  EXPECT_FALSE(data_.Pending());
  EXPECT_EQ(title_->cursorPosition(), 5);
}

TEST_F(DataControlTest, IsEmptyWithoutACurrentRow) {
  rows().Delete();
  EXPECT_EQ(title(), QString());
  title_.fill(QStringLiteral("x"));
  EXPECT_EQ(failed_.count(), 0);
  rows().MoveNext();
  EXPECT_EQ(title(), QStringLiteral("Libro 2"));
  rows().Close();
  EXPECT_EQ(title(), QString());
  EXPECT_EQ(bought_.Text(), QString());
  title_.fill(QStringLiteral("x"));
  data_.UpdateRecord();
  data_.SetRecordSource(QStringLiteral("SELECT * FROM LIBRO WHERE Id > 99"));
  data_.Refresh();
  EXPECT_EQ(title(), QString());
  data_.SetRecordset(nullptr);
  EXPECT_EQ(title(), QString());
  EXPECT_FALSE(data_.Pending());
}

TEST_F(DataControlTest, SharesARecordset) {
  DataControl second;
  TextBox copy;
  MaskedBox year;
  year.SetMask(QStringLiteral("9999"));
  join(copy, second, "Titolo");
  join(year, second, "Anno");
  second.SetRecordset(data_.Recordset());
  EXPECT_EQ(copy.Text(), QStringLiteral("Libro 1"));
  title_.fill(QStringLiteral("Nuovo"));
  EXPECT_EQ(copy.Text(), QStringLiteral("Nuovo"));
  year.SetValue(2002LL);
  year_.SetValue(2002LL);
  rows().MoveNext();
  EXPECT_EQ(stored(0, "Anno"), QStringLiteral("2002"));
  EXPECT_EQ(copy.Text(), QStringLiteral("Libro 2"));
  EXPECT_EQ(failed_.count(), 0);
}

TEST_F(DataControlTest, OpensTheArchiveAgainAfterItWasClosed) {
  store::CloseWorkspace();
  EXPECT_EQ(title(), QString());
  data_.Refresh();
  EXPECT_EQ(title(), QStringLiteral("Libro 1"));
}

TEST_F(DataControlTest, KeepsItsRowsWhenRefreshFails) {
  rows().MoveNext();
  data_.SetRecordSource(QStringLiteral("SELECT * FROM NESSUNA"));
  EXPECT_THROW(data_.Refresh(), store::Failure);
  EXPECT_EQ(title(), QStringLiteral("Libro 2"));
  title_.fill(QStringLiteral("Nuovo"));
  EXPECT_EQ(stored(1, "Titolo"), QStringLiteral("Nuovo"));
}

TEST_F(DataControlTest, WritesBeforeItTurnsToOtherRows) {
  year_.SetValue(2003LL);
  data_.Refresh();
  EXPECT_EQ(stored(0, "Anno"), QStringLiteral("2003"));
  year_.SetValue(2004LL);
  data_.SetDatabaseName(QStringLiteral("altro"));
  EXPECT_EQ(stored(0, "Anno"), QStringLiteral("2004"));
  EXPECT_EQ(title(), QString());
}

TEST_F(DataControlTest, OutlivesItsControlsAndTheOtherWayRound) {
  auto* gone = new TextBox;
  join(*gone, data_, "Titolo");
  delete gone;
  rows().MoveNext();
  auto second = std::make_unique<DataControl>();
  TextBox left;
  join(left, *second, "Titolo");
  second->SetRecordset(data_.Recordset());
  second.reset();
  EXPECT_EQ(left.DataSource(), nullptr);
  rows().MoveNext();
  EXPECT_EQ(left.Text(), QStringLiteral("Libro 2"));
  left.SetDataSource(&data_);
  EXPECT_EQ(left.Text(), QStringLiteral("Libro 3"));
  left.SetDataField(QStringLiteral("Id"));
  EXPECT_EQ(left.Text(), QStringLiteral("3"));
}

}  // namespace
}  // namespace platform
