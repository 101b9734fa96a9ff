#include "assist/pagine_guida.h"

#include <QFile>
#include <QTextDocumentFragment>
#include <algorithm>

namespace tavolix {
namespace {

enum Colonna { kCapitolo, kNome, kTitolo, kContesti, kNomi, kParole, kColonne };

QString contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList split(const QString& text, QChar by) {
  QStringList parts;
  for (const QString& part : text.split(by, Qt::SkipEmptyParts)) parts << part.trimmed();
  return parts;
}

PaginaGuida pageOf(const QStringList& cells, const QString& folder) {
  PaginaGuida page;
  page.sCapitolo = cells[kCapitolo];
  page.sNome = cells[kNome];
  page.sTitolo = cells[kTitolo];
  for (const QString& number : split(cells[kContesti], u' ')) page.contesti << number.toInt();
  page.nomi = split(cells[kNomi], u' ');
  page.parole = split(cells[kParole], u';');
  const QString html = contentOf(folder + u'/' + page.sNome + QStringLiteral(".html"));
  page.sTesto = sSenzaAccenti(QTextDocumentFragment::fromHtml(html).toPlainText());
  return page;
}

// How well a page answers the words; 0 if one of them is not in it.
int worthOf(const PaginaGuida& page, const QStringList& words) {
  const QString head =
      sSenzaAccenti(page.sTitolo + u' ' + page.parole.join(u' ') + u' ' + page.sNome);
  int worth = 0;
  for (const QString& word : words) {
    const int hits = static_cast<int>(page.sTesto.count(word));
    const bool inHead = head.contains(word);
    if (hits == 0 && !inHead) return 0;
    worth += std::min(hits, 50) + (inHead ? 100 : 0);
  }
  return worth;
}

}  // namespace

QString sSenzaAccenti(const QString& sTesto) {
  QString folded = sTesto.normalized(QString::NormalizationForm_KD).toCaseFolded();
  folded.removeIf([](QChar letter) { return letter.isMark(); });
  return folded;
}

PagineGuida::PagineGuida(const QString& sCartella) {
  const QStringList lines =
      contentOf(sCartella + QStringLiteral("/sommario.tsv")).split(u'\n', Qt::SkipEmptyParts);
  for (const QString& line : lines.mid(1)) {
    const QStringList cells = line.split(u'\t');
    if (cells.size() == kColonne) pagine_ << pageOf(cells, sCartella);
  }
}

QString PagineGuida::PerContesto(int iContesto) const {
  const auto page = std::find_if(pagine_.begin(), pagine_.end(), [&](const PaginaGuida& one) {
    return one.contesti.contains(iContesto);
  });
  return page == pagine_.end() ? QString() : page->sNome;
}

QString PagineGuida::PerNome(const QString& sNome) const {
  const auto page = std::find_if(pagine_.begin(), pagine_.end(),
                                 [&](const PaginaGuida& one) { return one.nomi.contains(sNome); });
  return page == pagine_.end() ? QString() : page->sNome;
}

QVector<std::pair<QString, QString>> PagineGuida::Indice() const {
  QVector<std::pair<QString, QString>> words;
  for (const PaginaGuida& page : pagine_) {
    for (const QString& word : page.parole) words.append({word, page.sNome});
  }
  std::stable_sort(words.begin(), words.end(), [](const auto& one, const auto& other) {
    return sSenzaAccenti(one.first) < sSenzaAccenti(other.first);
  });
  return words;
}

QVector<const PaginaGuida*> PagineGuida::Cerca(const QString& sTesto) const {
  const QStringList words = sSenzaAccenti(sTesto).split(u' ', Qt::SkipEmptyParts);
  QVector<std::pair<int, const PaginaGuida*>> found;
  for (const PaginaGuida& page : pagine_) {
    const int worth = worthOf(page, words);
    if (worth > 0) found.append({worth, &page});
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& one, const auto& other) { return one.first > other.first; });
  QVector<const PaginaGuida*> pages;
  for (const auto& [worth, page] : found) pages << page;
  return pages;
}

}  // namespace tavolix
