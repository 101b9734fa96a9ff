#include <gtest/gtest.h>

#include "harm/chance.h"
#include "model/testi.h"
#include "store/text_bytes.h"
#include "victim.h"

namespace store {
namespace {

TEST(Hostile, InputsThatWereFoundOnce) {
  Victim victim;
  for (const QByteArray& line : sourceFile("tests/hostile/inputs.txt").split('\n')) {
    EXPECT_EQ(victim.run(QByteArray::fromPercentEncoding(line)), "") << line.toStdString();
  }
}

// Texts of a megabyte or nearly, made of a beginning, a middle that repeats and an end. Each comes
// to its end by itself: the test's own time is the limit for those that would not.
TEST(Hostile, LongAndDeepTexts) {
  struct Case {
    const char* before;
    const char* repeated;
    int times;
    const char* after;
    int number;
  };
  const std::vector<Case> cases = {
      {"W", "(", 1000000, "", 3360},
      {"W", "ID=1 AND ", 100000, "ID=1", 3360},
      {"WMAIN.ID=1", " AND ID=1", 1, "", 3061},
      {"WMAIN.ID=1", " OR MAIN.ID=1", 4000, "", 0},
      {"WMAIN.ID In (0", ",1", 500000, ")", 3360},
      {"WMAIN.ID=", "-", 1000000, "1", 3360},
      {"WTitolo=''", "&''", 300000, "", 3360},
      {"WTitolo='", "''", 500000, "'", 0},
      {"WTitolo='", "x", 2000000, "'", 3360},
      {"W[", "x", 1000000, "]=1", 3061},
      {"F", "Titolo Like '[' OR ", 4000, "False", 0},
      {"L", "x", 1000000, "", 3078},
      {"LSELECT ", "ID,", 300000, "ID FROM MAIN", 3360},
      {"LSELECT ID FROM MAIN GROUP BY ID", ",ID", 300000, "", 3360},
      {"LSELECT ID FROM MAIN ORDER BY Titolo", ",Anno", 200000, "", 3360},
      {"LSELECT A.ID FROM MAIN AS A", ",MAIN", 100000, "", 3360},
      {"LSELECT ID FROM CFG", " UNION SELECT dsc FROM CFG", 30000, "", 3061},
      {"LSELECT dsc FROM CFG", " UNION SELECT dsc FROM CFG", 30000, "", 3360},
      {"LSELECT Count(*) AS N FROM MAIN AS A", ",MAIN", 9, "", 3360},
      {"LSELECT A.ID FROM MAIN AS A", ",MAIN", 9, "", 3360},
      {"LSELECT A.ID FROM MAIN AS A", ",MAIN", 9, " ORDER BY A.Titolo", 3360},
      {"F(SELECT Count(*) FROM MAIN AS A", ",MAIN", 9, ")=1", 3360},
      {"QUPDATE MAIN SET Anno=0", ",Anno=Anno+1", 60000, "", 3360},
  };
  Victim victim;
  for (const Case& each : cases) {
    const QByteArray middle = QByteArray(each.repeated).repeated(each.times);
    EXPECT_EQ(victim.run(each.before + middle + each.after), "") << each.before << each.repeated;
    EXPECT_EQ(victim.number(), each.number) << each.before << each.repeated;
  }
  // Wide and deep at once: each level brings its own sources, the names lie in the outermost.
  QByteArray nested = "Q1";
  for (int level = 0; level < 30; ++level) {
    nested = "(SELECT Count(*) FROM LIB AS A" + QByteArray(",LIB").repeated(40) + " WHERE " +
             nested + QByteArray("+Valore").repeated(250) + ")";
  }
  EXPECT_EQ(victim.run("W" + nested), "");
  EXPECT_EQ(victim.number(), 3360);
}

// A value of the language, made of all that it knows; deeper parts where `depth` allows.
QString anyValue(std::mt19937& random, int depth) {
  static const QStringList kLeaves =
      QString(
          "Titolo|Anno|MAIN.ID|TipoRac|Autore|DtaAcq|Note|Null|True|1|-2.5|1e300|''|'perché'|"
          "\"l'isola\"|'*r*'|'[!a-e]?#'|(SELECT Max(ID) FROM TAB)")
          .split('|');
  // "@" stands for a value.
  static const QStringList kForms =
      QString(
          "(@ = @)|(@ <> @)|(@ < @)|(@ >= @)|(@ And @)|(@ Or @)|(Not @)|(-@)|(@ + @)|(@ - @)|"
          "(@ * @)|(@ / @)|(@ & @)|(@ Like @)|(@ Not Like @)|(@ Between @ And @)|(@ In (@, @))|"
          "(@ Is Null)|(@ Is Not Null)|IIf(@, @, @)|IsNull(@)|Nz(@, @)|CStr(@)|Len(@)|"
          "Left(@, @)|Mid(@, @)|Mid(@, @, @)|Trim(@)|Abs(@)|Int(@)|Round(@)|Round(@, @)|"
          "(SELECT Count(*) FROM TAB WHERE @)|"
          "(SELECT Sum(RIV.ID) FROM RIV WHERE Numero = @)")
          .split('|');
  const bool isLeaf = depth == 0 || harm::below(random, 4) == 0;
  QString text = harm::anyOf(random, isLeaf ? kLeaves : kForms);
  for (qsizetype at = text.indexOf(u'@'); at >= 0; at = text.indexOf(u'@')) {
    text.replace(at, 1, anyValue(random, depth - 1));
  }
  return text;
}

// What the language allows is never refused by the engine below, and what a list is filtered by
// finds the same rows in it.
TEST(Hostile, AnyValueCanBeAsked) {
  std::mt19937 random(harm::seed());
  const Archive archive;
  const RecordsetPtr books = archive.open("Q_LIB");
  for (int round = 0; round < harm::casesWanted(600); ++round) {
    const QString value = anyValue(random, 4);
    SCOPED_TRACE(value.toStdString());
    const RecordsetPtr list = archive.open("SELECT *, " + value + " AS X FROM Q_LIB WHERE " +
                                           value + " ORDER BY " + value);
    QSet<qint64> listed;
    for (; !list->Eof(); list->MoveNext()) listed.insert(list->Value("MAIN.ID").toLongLong());
    QSet<qint64> found;
    for (books->FindFirst(value); !books->NoMatch(); books->FindNext(value)) {
      found.insert(books->Value("MAIN.ID").toLongLong());
    }
    ASSERT_EQ(listed, found);
  }
}

// What a user may paste: letters of all planes, halves of pairs, what the language or Like reads as
// its own, line ends, the mark of byte order, nothing at all.
QString anyText(std::mt19937& random, int longest) {
  static const QStringList kPieces =
      QString("'|''|\"|[|]|*|?|#|%|_|\\|;|--|\r\n|\n|\t| |e|è|e\u0301|ß|'' OR 1=1|Æ").split('|');
  static constexpr char16_t kUnits[] = {0, 0xD83D, 0xDE00, 0xFEFF, 0xFFFD, 0xFFFF};
  QString text;
  for (const int size = harm::below(random, longest + 1); text.size() < size;) {
    const int what = harm::below(random, 8);
    if (what < 3) text += harm::anyOf(random, kPieces);
    if (what == 3) text += QChar(harm::anyOf(random, kUnits));
    if (what > 3) text += QChar::fromUcs4(harm::below(random, what > 5 ? 0x110000U : 0x250U));
  }
  return text.left(longest);
}

// As a pattern of Like that stands for the text alone.
QString plainPattern(const QString& text) {
  QString pattern;
  for (const QChar each : text) {
    pattern += QStringLiteral("*?#[").contains(each) ? u'[' + QString(each) + u']' : QString(each);
  }
  return pattern;
}

TEST(Hostile, QuotedTextsFindThemselves) {
  std::mt19937 random(harm::seed());
  const Archive archive;
  const Transaction transaction(*archive);
  const RecordsetPtr rows = archive.open("SELECT * FROM MAIN WHERE ID < 3");
  for (int round = 0; round < harm::casesWanted(600); ++round) {
    SCOPED_TRACE(round);
    const bool longOne = round % 50 == 0;
    const char* const column = longOne ? "Note" : "Titolo";
    QString texts[2];
    rows->MoveFirst();
    for (QString& text : texts) {
      text = anyText(random, longOne ? 30000 : random() % 2 == 0 ? 150 : 3);
      rows->Edit();
      rows->SetValue(column, text);
      rows->Update();
      rows->MoveNext();
    }
    for (const QString& text : texts) {
      const QString quoted = tavolix::sApici(text);
      const QString pattern = tavolix::sApici(plainPattern(text));
      for (const QString& condition : {column + ('=' + quoted), column + (" Like " + pattern),
                                       column + (" In ('-'," + quoted + ')')}) {
        rows->FindFirst(condition);
        ASSERT_FALSE(rows->NoMatch());
        // The other text may be equal in the order's eyes.
        if (bytesOf(rows->Value(column).toString()) != bytesOf(text)) rows->FindNext(condition);
        ASSERT_FALSE(rows->NoMatch());
        ASSERT_TRUE(rows->Value(column).toString() == text);
      }
      const RecordsetPtr filtered = archive.open(
          QStringLiteral("SELECT * FROM Q_LIB WHERE (MAIN.%1=").arg(column) + quoted + ')');
      bool found = false;
      for (; !filtered->Eof(); filtered->MoveNext()) found |= filtered->Value(column) == text;
      ASSERT_TRUE(found);
    }
  }
}

}  // namespace
}  // namespace store
