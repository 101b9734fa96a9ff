#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <utility>

namespace tavolix {

// A page of the guide, as the table of contents has it.
struct PaginaGuida {
  QString sCapitolo;
  QString sNome;  // of its file, without extension
  QString sTitolo;
  QVector<int> contesti;  // numbers of the commands that it tells about
  QStringList nomi;       // of the windows and controls
  QStringList parole;     // what the index has it under
  QString sTesto;         // what it says, folded for the search
};

// The pages of the guide: its contents, its index, and what is found in them.
class PagineGuida final {
 public:
  // Reads sommario.tsv and the pages of a folder. What cannot be read has no pages.
  explicit PagineGuida(const QString& sCartella);

  const QVector<PaginaGuida>& Pagine() const { return pagine_; }
  // The name of the page; empty if there is none.
  QString PerContesto(int iContesto) const;
  QString PerNome(const QString& sNome) const;
  // Words of the index with the names of their pages, in alphabetical order.
  QVector<std::pair<QString, QString>> Indice() const;
  // The pages that hold all words of a text, or parts of them, without regard to case and accents:
  // those with a word in their title or index first, then by how often.
  QVector<const PaginaGuida*> Cerca(const QString& sTesto) const;

 private:
  QVector<PaginaGuida> pagine_;
};

// Without case and accents.
QString sSenzaAccenti(const QString& sTesto);

}  // namespace tavolix
