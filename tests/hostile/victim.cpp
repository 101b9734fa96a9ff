#include "victim.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include "store/connection.h"
#include "store/sql_parser.h"
#include "store/text_bytes.h"
#include "store/text_order.h"

namespace store {
namespace {

constexpr qint64 kMostSteps = 2'000'000;
constexpr qsizetype kLongestDescription = 401;

// All that can come of a text: the numbers of a query's own failures.
const QSet<int> kNumbers = {0, 6, 3022, 3061, 3075, 3078, 3163, 3167, 3265, 3360, 3421};

int sign(int number) {
  return number < 0 ? -1 : int(number > 0);
}

// What must hold for any two texts, of their order and as pattern and subject.
QString faultOfTexts(const std::string& left, const std::string& right) {
  std::string leftKey;
  std::string rightKey;
  appendSortKey(left, leftKey);
  appendSortKey(right, rightKey);
  const int order = compareText(left, right);
  if (order != -compareText(right, left)) return "order depends on the side";
  if (order != sign(leftKey.compare(rightKey))) return "order is not that of the keys";
  if (compareText(left, foldCase(left)) != 0) return "small letters are another text";
  const LikePattern pattern(left);
  if (pattern.matches(right) != pattern.matches(foldCase(right))) return "case decides in Like";
  if (LikePattern("*").matches(right) != LikeAnswer::Yes) return "no text for *";
  return {};
}

void lookAt(Recordset& rows) {
  if (rows.RecordCount() == 0) return;
  rows.MoveLast();
  rows.MoveFirst();
  for (int field = 0; field < rows.Fields().size(); ++field) rows.Value(field);
}

}  // namespace

Victim::Victim() : books_(archive_.open("Q_LIB")) {
  mostSteps = kMostSteps;
  QFile file(archive_.path());
  if (file.open(QIODevice::ReadOnly)) file_ = file.readAll();
}

QString Victim::run(const QByteArray& input) {
  number_ = 0;
  fault_.clear();
  const QByteArray text = input.mid(1);
  try {
    take(input.isEmpty() ? 'L' : input.at(0), textOf(text.constData(), text.size()));
  } catch (const Failure& failure) {
    number_ = failure.number();
    const QString& description = failure.description();
    if (description.isEmpty() || description.size() > kLongestDescription) {
      fault_ = QStringLiteral("a description of %1 characters").arg(description.size());
    }
  }
  if (!kNumbers.contains(number_)) fault_ = QStringLiteral("failure %1").arg(number_);
  return fault_.isEmpty() ? faultOfFile() : fault_;
}

void Victim::take(char way, const QString& text) {
  if (way == 'W') return lookAt(*archive_.open("SELECT * FROM Q_LIB WHERE " + text));
  if (way == 'F') return books_->FindFirst(text);
  if (way == 'O') return lookAt(*archive_.open("SELECT * FROM Q_LIB ORDER BY " + text));
  if (way == 'Q') return storeAndRun(text);
  if (way != 'K') return lookAt(*archive_.open(text));
  const qsizetype end = text.indexOf(u'\n');
  const QByteArray pattern = bytesOf(text.left(end));
  const QByteArray subject = bytesOf(text.mid(end + 1));
  fault_ = faultOfTexts(pattern.toStdString(), subject.toStdString());
}

// Both kinds of stored query; what an action changes goes with its transaction.
void Victim::storeAndRun(const QString& sql) const {
  const Transaction transaction(*archive_);
  archive_->CreateQueryDef("Q_X", sql);
  if (sql::looksLikeSelect(sql)) return lookAt(*archive_.open("Q_X"));
  archive_->Execute("Q_X");
}

// No text writes to the file or makes another one.
QString Victim::faultOfFile() const {
  QFile file(archive_.path());
  if (!file.open(QIODevice::ReadOnly) || file.readAll() != file_) return "the file has changed";
  const QStringList files = QDir(archive_.path("")).entryList(QDir::Files);
  return files.size() == 1 ? QString() : "further files: " + files.join(u' ');
}

}  // namespace store
