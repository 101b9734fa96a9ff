#include "platform/record_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "grid_archive.h"

namespace platform {
namespace {

using store::FieldKind;

class RecordModelTest : public ::testing::Test {
 protected:
  RecordModelTest() {
    model_.setColumns(archive_.columns());
    model_.setRecordset(books_);
  }

  QString shown(int row, int column) {
    return model_.index(row, column).data(Qt::DisplayRole).toString();
  }

  GridArchive archive_;
  store::RecordsetPtr books_ = archive_.books();
  RecordModel model_;
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(RecordModelTest, ShowsValuesAsTheUserReadsThem) {
  const struct {
    FieldKind kind;
    QVariant value;
    QString text;
  } cases[] = {
      {FieldKind::Text, QStringLiteral("uno\r\ndue\ntre"), QStringLiteral("uno due tre")},
      {FieldKind::Text, QString(5000, u'x'), QString(200, u'x')},
      {FieldKind::Number, 1234.5, QStringLiteral("1234,5")},
      {FieldKind::Number, 3.0, QStringLiteral("3")},
      {FieldKind::Number, 0.1 + 0.2, QStringLiteral("0,3")},
      {FieldKind::Number, 12345678.25, QStringLiteral("12345678,25")},
      {FieldKind::Short, 1994, QStringLiteral("1994")},
      {FieldKind::Long, -5, QStringLiteral("-5")},
      {FieldKind::Date, 0, QStringLiteral("30-12-1899")},
      {FieldKind::Date, 36526, QStringLiteral("01-01-2000")},
      {FieldKind::Time, 59, QStringLiteral("0:00:59")},
      {FieldKind::Time, 90061, QStringLiteral("25:01:01")},
      {FieldKind::YesNo, -1, QStringLiteral("Sì")},
      {FieldKind::YesNo, 0, QString()},
      {FieldKind::Number, QVariant(), QString()},
      {FieldKind::Date, QVariant(), QString()},
  };
  for (const auto& c : cases) EXPECT_EQ(cellText(c.value, c.kind), c.text) << qPrintable(c.text);
}

TEST_F(RecordModelTest, ShowsTheRowsOfTheRecordset) {
  ASSERT_EQ(model_.rowCount(), 3);
  EXPECT_EQ(shown(1, GridArchive::Title), QStringLiteral("Libro 2"));
  EXPECT_EQ(shown(1, GridArchive::Publisher), QStringLiteral("Adelphi"));
  EXPECT_EQ(model_.index(1, GridArchive::Publisher).data(Qt::EditRole).toInt(), 7);
  const auto aligned = [this](int column) {
    return Qt::Alignment(model_.index(0, column).data(Qt::TextAlignmentRole).toInt());
  };
  EXPECT_TRUE(aligned(GridArchive::Price).testFlag(Qt::AlignRight));
  EXPECT_TRUE(aligned(GridArchive::Length).testFlag(Qt::AlignRight));
  EXPECT_TRUE(aligned(GridArchive::Publisher).testFlag(Qt::AlignLeft));
}

TEST_F(RecordModelTest, ShowsNothingForAMissingFieldOrARowThatHasGone) {
  const store::RecordsetPtr other = archive_.books();
  other->SetAbsolutePosition(2);
  other->Delete();
  model_.setColumns({{QStringLiteral("?"), QStringLiteral("Assente"), 0, true, {}},
                     archive_.columns().at(GridArchive::Title)});
  EXPECT_EQ(shown(0, 0), QString());
  EXPECT_EQ(shown(0, 1), QStringLiteral("Libro 1"));
  ASSERT_EQ(model_.rowCount(), 3);
  EXPECT_EQ(shown(2, 1), QString());
}

TEST_F(RecordModelTest, TellsExactlyTheCellsThatHaveChanged) {
  const struct {
    QString field;
    QVariant value;
    QVector<int> columns;
  } cases[] = {
      {QStringLiteral("Titolo"), QStringLiteral("Altro"), {GridArchive::Title}},
      {QStringLiteral("Editore"), 8, {GridArchive::Publisher, GridArchive::Pages + 1}},
  };
  // A text that is not chosen here follows its key all the same.
  auto columns = archive_.columns();
  columns << GridColumn{QStringLiteral("Nome"), QStringLiteral("Nome"), 0, true, {}};
  model_.setColumns(columns);
  books_->SetAbsolutePosition(1);
  for (const auto& c : cases) {
    QSignalSpy spy(&model_, &RecordModel::dataChanged);
    books_->Edit();
    books_->SetValue(c.field, c.value);
    books_->Update();
    ASSERT_EQ(spy.size(), c.columns.size()) << qPrintable(c.field);
    for (int i = 0; i < spy.size(); ++i) {
      const QModelIndex expected = model_.index(1, c.columns.at(i));
      EXPECT_EQ(spy.at(i).at(0).toModelIndex(), expected);
      EXPECT_EQ(spy.at(i).at(1).toModelIndex(), expected);
    }
  }
  EXPECT_EQ(shown(1, GridArchive::Publisher), QStringLiteral("Bompiani"));
}

TEST_F(RecordModelTest, FollowsRowsThatComeAndGo) {
  QSignalSpy resets(&model_, &RecordModel::modelReset);
  books_->AddNew();
  books_->SetValue(QStringLiteral("Titolo"), QStringLiteral("Nuovo"));
  books_->Update();
  ASSERT_EQ(model_.rowCount(), 4);
  EXPECT_EQ(shown(3, GridArchive::Title), QStringLiteral("Nuovo"));
  books_->SetAbsolutePosition(0);
  books_->Delete();
  ASSERT_EQ(model_.rowCount(), 3);
  EXPECT_EQ(shown(0, GridArchive::Title), QStringLiteral("Libro 2"));
  EXPECT_EQ(resets.size(), 0);
  books_->Requery();
  EXPECT_EQ(resets.size(), 1);
  books_->Close();
  EXPECT_EQ(model_.rowCount(), 0);
  EXPECT_EQ(model_.columnCount(), archive_.columns().size());
}

TEST_F(RecordModelTest, LetsGoOfTheFormerRecordset) {
  model_.setRecordset(archive_.books());
  books_->AddNew();
  books_->SetValue(QStringLiteral("Titolo"), QStringLiteral("Nuovo"));
  books_->Update();
  EXPECT_EQ(model_.rowCount(), 3);
}

TEST_F(RecordModelTest, WritesOneValueIntoItsRow) {
  const QModelIndex cell = model_.index(2, GridArchive::Publisher);
  ASSERT_TRUE(model_.setData(cell, 9, Qt::EditRole));
  EXPECT_EQ(books_->AbsolutePosition(), 2);
  EXPECT_EQ(archive_.stored(2, QStringLiteral("Editore")).toInt(), 9);
  EXPECT_EQ(cell.data().toString(), QStringLiteral("Bur"));
}

TEST_F(RecordModelTest, LeavesTheRowAloneIfItCannotBeWritten) {
  const QModelIndex cell = model_.index(1, GridArchive::Title);
  EXPECT_THROW(model_.setData(cell, QStringLiteral("Libro 1"), Qt::EditRole), store::Failure);
  EXPECT_EQ(books_->Mode(), store::EditMode::None);
  EXPECT_EQ(cell.data().toString(), QStringLiteral("Libro 2"));
}

TEST_F(RecordModelTest, LetsOnlyThoseCellsBeEditedThatCanBeWritten) {
  const auto has = [this](int column, Qt::ItemFlag flag) {
    return model_.flags(model_.index(0, column)).testFlag(flag);
  };
  EXPECT_TRUE(has(GridArchive::Title, Qt::ItemIsEditable));
  EXPECT_TRUE(has(GridArchive::Publisher, Qt::ItemIsEditable));
  EXPECT_TRUE(has(GridArchive::Read, Qt::ItemIsUserCheckable));
  EXPECT_FALSE(has(GridArchive::Pages, Qt::ItemIsEditable));
  model_.setRecordset(
      archive_.database().OpenRecordset(QStringLiteral("LIBRO"), store::RecordsetType::Snapshot));
  EXPECT_FALSE(has(GridArchive::Title, Qt::ItemIsEditable));
}

}  // namespace
}  // namespace platform
