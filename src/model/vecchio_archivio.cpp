#include "model/vecchio_archivio.h"

#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <QSet>
#include <QTime>
#include <cmath>

#include "model/campi.h"
#include "model/cifratura.h"
#include "model/raccolte.h"
#include "store/archive_filler.h"
#include "store/failure.h"
#include "store/file_failure.h"
#include "store/jet_file.h"
#include "store/unfinished_file.h"
#include "store/value_text.h"

namespace tavolix {
namespace {

using store::JetKind;
using store::JetTable;

constexpr double kMoney = 10000;
constexpr qint64 kRowsPerTold = 200;
constexpr double kSecondsOfDay = 86400;

const QString kConfig = QStringLiteral("CFG");
const QString kGrids = QStringLiteral("GRDCONFIG");
const QString kCounter = QStringLiteral("CONT");

QStringList tablesOfArchive() {
  QStringList tables;
  for (int i = 0; i < kRaccolte; ++i) {
    tables << aRaccolte(i).sTabPrincipale << aRaccolte(i).sTabDettaglio;
  }
  tables.removeAll(QString());
  tables.removeDuplicates();
  return tables << QStringLiteral("TAB") << kConfig << kCounter << kGrids;
}

QString moneyText(qlonglong amount) {
  const quint64 size = amount < 0 ? 0 - static_cast<quint64>(amount) : static_cast<quint64>(amount);
  const QString digits = QString::number(size).rightJustified(5, u'0');
  return (amount < 0 ? QStringLiteral("-") : QString()) + digits.chopped(4) + u',' +
         digits.right(4);
}

QString shown(const QVariant& value, JetKind kind) {
  if (!value.isValid()) return QStringLiteral("(vuoto)");
  if (kind == JetKind::Money) return moneyText(value.toLongLong());
  if (kind != JetKind::Date) return value.toString();
  const double day = value.toDouble();
  constexpr double kFarthest = 1e7;
  if (!(std::abs(day) < kFarthest)) return QString::number(day);
  const double whole = std::floor(day);
  const int seconds = static_cast<int>(std::lround((day - whole) * kSecondsOfDay));
  const QString date = store::dateOfDay(static_cast<qint64>(whole)).toString(Qt::ISODate);
  return seconds == 0 ? date : date + u' ' + QTime(0, 0).addSecs(seconds).toString();
}

// A list shows the text of a value, not its key.
QString shownColumn(const QString& query, const QString& column) {
  for (int i = 0; i < kRaccolte; ++i) {
    if (aRaccolte(i).sQuery.compare(query, Qt::CaseInsensitive) != 0) continue;
    for (int j = 0; j < iNumeroCampi(i); ++j) {
      const tCampo& campo = aCampi(i, j);
      const bool isIt = campo.sCampoDB.compare(column, Qt::CaseInsensitive) == 0;
      if (isIt && campo.sTipo == QLatin1String(CBO)) return sVoceElenco(campo);
    }
  }
  return column;
}

// Brings over one old archive.
class Transport final {
 public:
  Transport(const store::JetFile& old, store::ArchiveFiller& archive,
            const store::Progress& progress)
      : old_(old), archive_(archive), progress_(progress) {}

  Trasporto run() {
    const QStringList tables = tablesOfArchive();
    for (const QString& table : tables) count(table);
    for (const QString& table : tables) result_.tabelle.append(bring(table));
    for (const QString& table : old_.tables()) {
      if (!tables.contains(table, Qt::CaseInsensitive)) bringNothingOf(table);
    }
    store::tell(progress_, total_, total_);
    return result_;
  }
  const QStringList& notes() const { return notes_; }

 private:
  struct Target {
    store::FieldInfo column;
    int source = -1;
  };

  // A table whose page is damaged has no rows; nothing if it is not there at all.
  std::unique_ptr<JetTable> open(const QString& name) const {
    try {
      if (old_.has(name)) return old_.open(name);
    } catch (const store::Failure&) {
      return nullptr;
    }
    return nullptr;
  }

  void count(const QString& name) {
    if (const auto table = open(name)) total_ += table->rowsTold();
  }

  void note(const QString& text) { notes_ << u'[' + place_ + QStringLiteral("] ") + text; }

  void rowRead() {
    if (++done_ % kRowsPerTold == 0) store::tell(progress_, qMin(done_, total_), total_);
  }

  TabellaPortata bring(const QString& name) {
    TabellaPortata result{name};
    place_ = name;
    const auto table = open(name);
    if (!table) {
      note(old_.has(name) ? QStringLiteral("la tabella e' danneggiata: non si legge")
                          : QStringLiteral("la tabella manca nel vecchio archivio"));
      return result;
    }
    result.lDichiarate = table->rowsTold();
    findTargets(*table, name);
    emptied_.clear();
    while (table->next()) {
      ++result.lLette;
      rowRead();
      if (bringRow(*table, name)) ++result.lScritte;
    }
    if (result.lLette != result.lDichiarate) {
      place_ = name;
      note(QStringLiteral("righe dichiarate %1, leggibili %2")
               .arg(result.lDichiarate)
               .arg(result.lLette));
    }
    return result;
  }

  void findTargets(const JetTable& table, const QString& name) {
    targets_.clear();
    strangers_.clear();
    for (const store::FieldInfo& column : archive_.columns(name)) {
      targets_.append({column, table.findColumn(column.name)});
    }
    for (int i = 0; i < table.columns().size(); ++i) {
      const bool isKnown = std::any_of(targets_.begin(), targets_.end(),
                                       [i](const Target& target) { return target.source == i; });
      if (!isKnown) strangers_.append(i);
    }
  }

  // What the new archive has from its model makes way for the old one's first row.
  void makeRoom(const QString& name, const QString& query) {
    if (emptied_.contains(query)) return;
    emptied_.insert(query);
    if (name == kGrids) {
      archive_.remove(name, QStringLiteral("NomeQuery"), query);
    } else {
      archive_.empty(name);
    }
  }

  bool bringRow(const JetTable& table, const QString& name) {
    const int key = qMax(0, table.findColumn(QStringLiteral("ID")));
    const JetKind kind = table.columns()[key].kind;
    place_ = name + u' ' + table.columns()[key].name + u' ' + shown(table.value(key), kind);
    const QString query =
        name == kGrids ? table.value(QStringLiteral("NomeQuery")).toString() : QString();
    makeRoom(name, query);
    QVector<std::pair<QString, QVariant>> values;
    for (const Target& target : targets_) {
      values.append({target.column.name, valueFor(table, target, name)});
    }
    for (const int i : strangers_) noteStranger(table, i);
    const bool hasKey = table.findColumn(QStringLiteral("ID")) < 0 || table.value(key).isValid();
    if (hasKey && inserted(name, values)) return true;
    noteRow(table);
    return false;
  }

  bool inserted(const QString& name, const QVector<std::pair<QString, QVariant>>& values) {
    try {
      archive_.insert(name, values);
      return true;
    } catch (const store::Failure& failure) {
      if (failure.number() != store::failure::kDuplicateKey) throw;
      return false;
    }
  }

  void noteStranger(const JetTable& table, int column) {
    const store::JetColumn& info = table.columns()[column];
    const QVariant value = table.value(column);
    const bool isNothing = !value.isValid() || (info.kind == JetKind::YesNo && value.toInt() == 0);
    if (isNothing) return;
    note(QStringLiteral("campo %1, che l'archivio non ha: %2")
             .arg(info.name, shown(value, info.kind)));
  }

  void noteRow(const JetTable& table) {
    QStringList fields;
    for (int i = 0; i < table.columns().size(); ++i) {
      const store::JetColumn& column = table.columns()[i];
      if (!table.value(i).isValid()) continue;
      fields << column.name + u'=' + shown(table.value(i), column.kind);
    }
    note(QStringLiteral("riga non portata, senza chiave o con una gia' presente: ") +
         fields.join(QStringLiteral("; ")));
  }

  QVariant valueFor(const JetTable& table, const Target& target, const QString& name) {
    if (target.source < 0) return {};
    const JetKind kind = table.columns()[target.source].kind;
    if (table.isLost(target.source)) {
      note(QStringLiteral("campo %1: il valore e' danneggiato").arg(target.column.name));
      return {};
    }
    QVariant value = table.value(target.source);
    if (!value.isValid()) return {};
    if (name == kGrids && target.column.name == QLatin1String("NomeCampo")) {
      value = shownColumn(table.value(QStringLiteral("NomeQuery")).toString(), value.toString());
    }
    if (name == kConfig && target.column.name == QLatin1String("sVal") &&
        table.value(QStringLiteral("dsc")).toString() == QLatin1String("PWD")) {
      value = sCodiceInLettere(value.toString());
    }
    return fitting(value, kind, target.column);
  }

  QVariant fitting(const QVariant& value, JetKind kind, const store::FieldInfo& column) {
    QVariant wanted = value;
    if (kind == JetKind::Money) {
      const double amount = static_cast<double>(value.toLongLong()) / kMoney;
      // Near the ends of its range money has more digits than a number keeps.
      if (std::abs(amount) > 1e11 && moneyLost(amount, value.toLongLong())) {
        note(QStringLiteral("campo %1: arrotondato, era %2")
                 .arg(column.name, moneyText(value.toLongLong())));
      }
      wanted = amount;
    }
    try {
      return store::ArchiveFiller::convert(wanted, column);
    } catch (const store::Failure& failure) {
      if (failure.number() != store::failure::kTextTooLong) {
        note(QStringLiteral("campo %1: valore non ammesso: %2")
                 .arg(column.name, shown(value, kind)));
        return {};
      }
    }
    note(QStringLiteral("campo %1: tagliato a %2 caratteri, era: %3")
             .arg(column.name)
             .arg(column.size)
             .arg(value.toString()));
    QString text = value.toString().left(column.size);
    if (text.back().isHighSurrogate()) text.chop(1);
    return text;
  }

  static bool moneyLost(double amount, qlonglong exact) {
    const double back = amount * kMoney;
    return std::abs(back) >= 9.2233720368547e18 || static_cast<qlonglong>(std::rint(back)) != exact;
  }

  void bringNothingOf(const QString& name) {
    place_ = name;
    const auto table = open(name);
    note(QStringLiteral("la tabella non fa parte di un archivio: %1 righe non portate")
             .arg(table ? table->rowsTold() : 0));
  }

  const store::JetFile& old_;
  store::ArchiveFiller& archive_;
  const store::Progress& progress_;
  Trasporto result_;
  QStringList notes_;
  QString place_;
  QVector<Target> targets_;
  QVector<int> strangers_;
  QSet<QString> emptied_;
  qint64 total_ = 0;
  qint64 done_ = 0;
};

void requireArchive(const store::JetFile& old, const QString& path) {
  if (old.has(QStringLiteral("MAIN")) && old.has(QStringLiteral("TAB")) && old.has(kConfig)) return;
  throw store::Failure(
      store::failure::kUnknownFormat,
      QStringLiteral("Il file %1 non contiene le tabelle di un archivio").arg(path));
}

// Control characters would make one line two.
QByteArray lineOf(QString text) {
  text.replace(u'\\', QLatin1String("\\\\"))
      .replace(u'\n', QLatin1String("\\n"))
      .replace(u'\r', QLatin1String("\\r"));
  return text.toUtf8() + '\n';
}

QString writeNotes(const QString& archive, const QStringList& notes) {
  const QFileInfo info(archive);
  const QString path =
      info.path() + u'/' + info.completeBaseName() + QStringLiteral(" (non portato).txt");
  QSaveFile file(path);
  bool isWritten = file.open(QIODevice::WriteOnly);
  for (const QString& note : notes) isWritten = isWritten && file.write(lineOf(note)) > 0;
  if (!isWritten || !file.commit()) store::failAtFile(store::file_failure::kDenied, path);
  return path;
}

}  // namespace

bool bVecchioArchivio(const QString& sPath) {
  return store::JetFile::isJet(sPath);
}

QString sCodiceVecchioArchivio(const QString& sPath) {
  const store::JetFile old(sPath);
  requireArchive(old, sPath);
  const auto config = old.open(kConfig);
  while (config->next()) {
    if (config->value(QStringLiteral("dsc"))
            .toString()
            .compare(QLatin1String("PWD"), Qt::CaseInsensitive) == 0) {
      return sCodiceDecifrato(sCodiceInLettere(config->value(QStringLiteral("sVal")).toString()));
    }
  }
  return {};
}

Trasporto PortaVecchioArchivio(const QString& sVecchio, const QString& sModello,
                               const QString& sNuovo, const store::Progress& progress) {
  const store::JetFile old(sVecchio);
  requireArchive(old, sVecchio);
  if (QFileInfo::exists(sNuovo)) store::failAtFile(store::file_failure::kExists, sNuovo);
  store::UnfinishedFile file(sNuovo);
  Trasporto result;
  QStringList notes;
  {
    store::ArchiveFiller archive(sModello, file.path());
    Transport transport(old, archive, progress);
    result = transport.run();
    notes = transport.notes();
    archive.commit();
  }
  file.sync();
  if (!notes.isEmpty()) result.sElenco = writeNotes(sNuovo, notes);
  result.nAnnotazioni = notes.size();
  file.putInPlace();
  return result;
}

QString sEsitoTrasporto(const QString& sVecchio, const QString& sNuovo, const Trasporto& esito) {
  const QLocale locale;
  QStringList tables;
  for (const TabellaPortata& table : esito.tabelle) {
    tables << QStringLiteral("%1: %2 di %3")
                  .arg(table.sNome, locale.toString(table.lScritte),
                       locale.toString(qMax(table.lDichiarate, table.lLette)));
  }
  QString text = QStringLiteral(
                     "L'archivio %1 e' stato portato in %2, che ora viene usato al suo "
                     "posto. Il vecchio archivio non e' stato modificato.\n\n"
                     "Righe portate, tabella per tabella:\n%3")
                     .arg(QFileInfo(sVecchio).fileName(), QFileInfo(sNuovo).fileName(),
                          tables.join(QStringLiteral("\n")));
  if (!esito.sElenco.isEmpty()) {
    text += QStringLiteral(
                "\n\nCio' che non si e' potuto portare cosi' com'era (%1) e' elencato nel "
                "file %2")
                .arg(locale.toString(qlonglong{esito.nAnnotazioni}), esito.sElenco);
  }
  return text;
}

}  // namespace tavolix
