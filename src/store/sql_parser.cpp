#include "store/sql_parser.h"

#include <algorithm>
#include <array>

#include "store/failure.h"
#include "store/sql_tokens.h"

namespace store::sql {
namespace {

constexpr int kDeepest = 150;

using L1 = QLatin1String;

// Words that end an expression or a table's name, so that none of them is taken for an alias.
constexpr std::array kReserved = {"AND",    "AS",  "BETWEEN", "BY",    "FROM", "GROUP",
                                  "HAVING", "IN",  "INNER",   "IS",    "JOIN", "LEFT",
                                  "LIKE",   "NOT", "NULL",    "ON",    "OR",   "ORDER",
                                  "SELECT", "SET", "UNION",   "WHERE", "DESC", "ASC"};

bool isReserved(const Token& token) {
  return std::any_of(kReserved.begin(), kReserved.end(),
                     [&](const char* word) { return token.isWord(L1(word)); });
}

class Parser {
 public:
  explicit Parser(const QString& text) : text_(text), tokens_(tokenize(text)) {}

  Select select() {
    Select result;
    result.cores.push_back(core());
    while (takeWord("UNION")) {
      result.unionAll.push_back(takeWord("ALL"));
      result.cores.push_back(core());
    }
    if (takeWord("ORDER")) {
      expectWord("BY");
      do result.orderBy.push_back(orderTerm());
      while (takeSymbol(","));
    }
    return result;
  }

  UpdateAction action() {
    UpdateAction result;
    expectWord("UPDATE");
    result.table = name();
    expectWord("SET");
    do {
      Assignment assignment;
      assignment.column = qualifiedName().name;
      expectSymbol("=");
      assignment.value = expression();
      result.assignments.push_back(std::move(assignment));
    } while (takeSymbol(","));
    if (takeWord("WHERE")) result.where = expression();
    return result;
  }

  ExprPtr expression() {
    std::vector<ExprPtr> terms;
    do terms.push_back(conjunction());
    while (takeWord("OR"));
    return chain(QStringLiteral("OR"), terms.data(), terms.size());
  }

  void expectEnd() {
    takeSymbol(";");
    if (peek().kind != TokenKind::End) unexpected();
  }

 private:
  struct Depth {
    explicit Depth(int& depth) : depth_(++depth) {
      if (depth_ > kDeepest) {
        --depth_;
        throw Failure(failure::kTooComplex, QStringLiteral("Query troppo complessa"));
      }
    }
    ~Depth() { --depth_; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;
    int& depth_;
  };

  const Token& peek(qsizetype ahead = 0) const {
    return tokens_.at(std::min(at_ + ahead, tokens_.size() - 1));
  }
  Token take() { return tokens_.at(std::min(at_++, tokens_.size() - 1)); }
  bool takeWord(const char* word) {
    const bool found = peek().isWord(L1(word));
    if (found) ++at_;
    return found;
  }
  bool takeSymbol(const char* symbol) {
    const bool found = peek().isSymbol(L1(symbol));
    if (found) ++at_;
    return found;
  }
  void expectWord(const char* word) {
    if (!takeWord(word)) unexpected();
  }
  void expectSymbol(const char* symbol) {
    if (!takeSymbol(symbol)) unexpected();
  }
  [[noreturn]] void unexpected() const {
    const QString rest = text_.mid(peek().place, 40);
    throw Failure(failure::kSyntax,
                  rest.isEmpty()
                      ? QStringLiteral("Errore di sintassi nella query: testo incompleto")
                      : QStringLiteral("Errore di sintassi nella query vicino a \"%1\"").arg(rest));
  }

  bool isName(const Token& token) const {
    return token.kind == TokenKind::Quoted || (token.kind == TokenKind::Name && !isReserved(token));
  }
  QString name() {
    if (!isName(peek())) unexpected();
    return take().text;
  }

  SelectCore core() {
    const Depth depth(depth_);
    SelectCore result;
    expectWord("SELECT");
    result.distinct = takeWord("DISTINCT");
    do result.items.push_back(item());
    while (takeSymbol(","));
    expectWord("FROM");
    do joinInto(result.from);
    while (takeSymbol(","));
    if (takeWord("WHERE")) result.where = expression();
    if (takeWord("GROUP")) {
      expectWord("BY");
      do result.groupBy.push_back(expression());
      while (takeSymbol(","));
    }
    if (takeWord("HAVING")) result.having = expression();
    return result;
  }

  SelectItem item() {
    SelectItem result;
    if (takeSymbol("*")) return result;
    if (isName(peek()) && peek(1).isSymbol(L1(".")) && peek(2).isSymbol(L1("*"))) {
      result.starOf = name();
      at_ += 2;
      return result;
    }
    result.expr = expression();
    if (takeWord("AS")) result.alias = aliasName();
    return result;
  }

  // A column's alias may be a word of the language, as Desc.
  QString aliasName() {
    if (peek().kind != TokenKind::Name && peek().kind != TokenKind::Quoted) unexpected();
    return take().text;
  }

  // table [AS alias] {INNER|LEFT [OUTER] JOIN table ON condition}; joins may stand in brackets.
  void joinInto(std::vector<TableRef>& from) {
    const Depth depth(depth_);
    operandInto(from);
    for (;;) {
      Join join = Join::Inner;
      if (takeWord("LEFT")) {
        takeWord("OUTER");
        join = Join::Left;
      } else if (!peek().isWord(L1("JOIN")) && !takeWord("INNER")) {
        return;
      }
      expectWord("JOIN");
      TableRef right = table();
      right.join = join;
      expectWord("ON");
      right.on = expression();
      from.push_back(std::move(right));
    }
  }

  void operandInto(std::vector<TableRef>& from) {
    if (!takeSymbol("(")) {
      from.push_back(table());
      return;
    }
    joinInto(from);
    expectSymbol(")");
  }

  TableRef table() {
    TableRef result;
    result.name = name();
    if (takeWord("AS") || isName(peek())) result.alias = name();
    return result;
  }

  OrderTerm orderTerm() {
    OrderTerm result;
    result.expr = expression();
    if (takeWord("DESC")) {
      result.descending = true;
    } else {
      takeWord("ASC");
    }
    return result;
  }

  ExprPtr conjunction() {
    std::vector<ExprPtr> terms;
    do terms.push_back(negation());
    while (takeWord("AND"));
    return chain(QStringLiteral("AND"), terms.data(), terms.size());
  }

  // A long chain becomes a tree of little depth.
  static ExprPtr chain(const QString& op, const ExprPtr* terms, std::size_t count) {
    if (count == 1) return *terms;
    const std::size_t half = count / 2;
    return makeBinary(op, chain(op, terms, half), chain(op, terms + half, count - half));
  }

  ExprPtr negation() {
    const Depth depth(depth_);
    if (!takeWord("NOT")) return comparison();
    Expr e;
    e.kind = ExprKind::Unary;
    e.name = QStringLiteral("NOT");
    e.args = {negation()};
    return makeExpr(std::move(e));
  }

  ExprPtr comparison() {
    ExprPtr left = sum();
    for (;;) {
      static constexpr std::array kOperators = {"=", "<>", "<=", ">=", "<", ">"};
      bool found = false;
      for (const char* op : kOperators) {
        if (takeSymbol(op)) {
          left = makeBinary(L1(op), left, sum());
          found = true;
          break;
        }
      }
      if (!found && !test(left)) return left;
    }
  }

  // IS [NOT] NULL, [NOT] LIKE, [NOT] BETWEEN, [NOT] IN behind an operand.
  bool test(ExprPtr& left) {
    Expr e;
    if (takeWord("IS")) {
      e.kind = ExprKind::IsNull;
      e.negated = takeWord("NOT");
      expectWord("NULL");
      e.args = {left};
    } else {
      const bool negated = peek().isWord(L1("NOT"));
      const Token& word = peek(negated ? 1 : 0);
      if (!word.isWord(L1("LIKE")) && !word.isWord(L1("BETWEEN")) && !word.isWord(L1("IN"))) {
        return false;
      }
      e.negated = takeWord("NOT");
      testTail(e, left);
    }
    left = makeExpr(std::move(e));
    return true;
  }

  void testTail(Expr& e, const ExprPtr& left) {
    e.args = {left};
    if (takeWord("LIKE")) {
      e.kind = ExprKind::Like;
      e.args.push_back(sum());
    } else if (takeWord("BETWEEN")) {
      e.kind = ExprKind::Between;
      e.args.push_back(sum());
      expectWord("AND");
      e.args.push_back(sum());
    } else {
      expectWord("IN");
      e.kind = ExprKind::In;
      expectSymbol("(");
      do e.args.push_back(sum());
      while (takeSymbol(","));
      expectSymbol(")");
    }
  }

  ExprPtr sum() {
    ExprPtr left = product();
    for (;;) {
      if (takeSymbol("+")) {
        left = makeBinary(QStringLiteral("+"), left, product());
      } else if (takeSymbol("-")) {
        left = makeBinary(QStringLiteral("-"), left, product());
      } else if (takeSymbol("&")) {
        left = makeBinary(QStringLiteral("&"), left, product());
      } else {
        return left;
      }
    }
  }

  ExprPtr product() {
    ExprPtr left = sign();
    for (;;) {
      if (takeSymbol("*")) {
        left = makeBinary(QStringLiteral("*"), left, sign());
      } else if (takeSymbol("/")) {
        left = makeBinary(QStringLiteral("/"), left, sign());
      } else {
        return left;
      }
    }
  }

  ExprPtr sign() {
    const Depth depth(depth_);
    if (takeSymbol("+")) return sign();
    if (!takeSymbol("-")) return primary();
    Expr e;
    e.kind = ExprKind::Unary;
    e.name = QStringLiteral("-");
    e.args = {sign()};
    return makeExpr(std::move(e));
  }

  ExprPtr primary() {
    const Token& token = peek();
    if (token.kind == TokenKind::Number) return literal(take().value);
    if (token.kind == TokenKind::Text) return literal(take().text);
    if (token.isWord(L1("NULL"))) return take(), literal(QVariant());
    if (token.isWord(L1("TRUE"))) return take(), literal(-1LL);
    if (token.isWord(L1("FALSE"))) return take(), literal(0LL);
    if (token.isSymbol(L1("("))) return bracketed();
    if (token.kind == TokenKind::Name && peek(1).isSymbol(L1("("))) return call();
    return makeExpr(qualifiedName());
  }

  static ExprPtr literal(const QVariant& value) {
    Expr e;
    e.value = value;
    return makeExpr(std::move(e));
  }

  ExprPtr bracketed() {
    expectSymbol("(");
    ExprPtr inner;
    if (peek().isWord(L1("SELECT"))) {
      Expr e;
      e.kind = ExprKind::Subquery;
      e.select = std::make_shared<const Select>(select());
      inner = makeExpr(std::move(e));
    } else {
      inner = expression();
    }
    expectSymbol(")");
    return inner;
  }

  ExprPtr call() {
    Expr e;
    e.kind = ExprKind::Call;
    e.name = take().text;
    expectSymbol("(");
    if (takeSymbol("*")) {
      Expr star;
      star.kind = ExprKind::Star;
      e.args.push_back(makeExpr(std::move(star)));
    } else if (!peek().isSymbol(L1(")"))) {
      do e.args.push_back(expression());
      while (takeSymbol(","));
    }
    expectSymbol(")");
    return makeExpr(std::move(e));
  }

  // A column's name may be a word of the language where a qualifier stands before it.
  Expr qualifiedName() {
    Expr e;
    e.kind = ExprKind::Name;
    const bool columnWord = peek().isWord(L1("DESC")) || peek().isWord(L1("ASC"));
    if (!isName(peek()) && !columnWord) unexpected();
    e.name = take().text;
    if (takeSymbol(".")) {
      if (peek().kind != TokenKind::Name && peek().kind != TokenKind::Quoted) unexpected();
      e.qualifier = e.name;
      e.name = take().text;
    }
    return e;
  }

  const QString text_;
  QVector<Token> tokens_;
  qsizetype at_ = 0;
  int depth_ = 0;
};

}  // namespace

std::shared_ptr<const Select> parseSelect(const QString& text) {
  Parser parser(text);
  auto result = std::make_shared<const Select>(parser.select());
  parser.expectEnd();
  return result;
}

ExprPtr parseCondition(const QString& text) {
  Parser parser(text);
  ExprPtr result = parser.expression();
  parser.expectEnd();
  return result;
}

UpdateAction parseAction(const QString& text) {
  Parser parser(text);
  UpdateAction result = parser.action();
  parser.expectEnd();
  return result;
}

bool looksLikeSelect(const QString& text) {
  const QString trimmed = text.trimmed();
  return trimmed.startsWith(L1("SELECT"), Qt::CaseInsensitive) && trimmed.size() > 6 &&
         !trimmed.at(6).isLetterOrNumber() && trimmed.at(6) != u'_';
}

}  // namespace store::sql
