#include "output/rubrica.h"

#include <QHash>
#include <array>
#include <optional>

#include "core/modcuore.h"
#include "model/testi.h"
#include "platform/system_path.h"
#include "store/failure.h"
#include "store/jet_file.h"

namespace tavolix {
namespace {

constexpr int kPersone = 7;
constexpr qint64 kRowsPerGroup = 500;
const QString kConfig = QStringLiteral("CFG");
const QString kEntries = QStringLiteral("RUB");
const QString kName = QStringLiteral("dsc");
const QString kVersion = QStringLiteral("VERSIONEDB");
const QString kNumber = QStringLiteral("nVal");

struct Copy {
  const char* from;
  const char* to;
};

constexpr std::array kOfPerson = {
    Copy{"ind", "Indirizzo"}, Copy{"Cap", "cap"},         Copy{"Cit", "Citta"},
    Copy{"Prv", "Provincia"}, Copy{"Tel1", "Tel1"},       Copy{"Tel2", "Tel2"},
    Copy{"Fax", "Tel3"},      Copy{"Rif", "Riferimento"},
};
constexpr std::array kLists = {Copy{"Dsc1", "TABTel1ID"}, Copy{"Dsc2", "TABTel2ID"}};
constexpr const char* kListCodes[] = {"TIPOTEL1", "TIPOTEL2"};
constexpr std::array kOfMain = {Copy{"den", "Titolo"}, Copy{"Lib", "DescLibera"}};

bool isVersion(const QVariant& name) {
  return name.toString().compare(kVersion, Qt::CaseInsensitive) == 0;
}

class OldRubrica final : public Rubrica {
 public:
  explicit OldRubrica(const QString& path) : file_(path) {}

  double versione() override {
    const auto config = file_.open(kConfig);
    while (config->next()) {
      if (isVersion(config->value(kName))) return config->value(kNumber).toDouble();
    }
    return 0;
  }
  void apriVoci() override { rows_ = file_.open(kEntries); }
  qint64 voci() const override { return rows_->rowsTold(); }
  bool prossima() override { return rows_->next(); }
  QVariant valore(const QString& colonna) const override {
    const int column = rows_->findColumn(colonna);
    if (column >= 0) return rows_->value(column);
    throw store::Failure(
        store::failure::kItemNotFound,
        QStringLiteral("La tabella %1 non ha il campo '%2'").arg(kEntries, colonna));
  }

 private:
  store::JetFile file_;
  std::unique_ptr<store::JetTable> rows_;
};

class NewRubrica final : public Rubrica {
 public:
  explicit NewRubrica(const QString& path) : database_(store::OpenDatabase(path)) {}
  ~NewRubrica() override { database_->Close(); }

  double versione() override {
    const auto config = database_->OpenRecordset(kConfig, store::RecordsetType::Table);
    for (; !config->Eof(); config->MoveNext()) {
      if (isVersion(config->Value(kName))) return config->Value(kNumber).toDouble();
    }
    return 0;
  }
  void apriVoci() override {
    rows_ = database_->OpenRecordset(kEntries, store::RecordsetType::Dynaset);
  }
  qint64 voci() const override { return rows_->RecordCount(); }
  bool prossima() override {
    if (isAtStart_) {
      isAtStart_ = false;
    } else {
      rows_->MoveNext();
    }
    return !rows_->Eof();
  }
  QVariant valore(const QString& colonna) const override { return rows_->Value(colonna); }

 private:
  store::DatabasePtr database_;
  store::RecordsetPtr rows_;
  bool isAtStart_ = true;
};

// Writes entries, each of them whole or not at all.
class Writer final {
 public:
  Writer(Rubrica& book, store::Database& archive)
      : book_(book),
        archive_(archive),
        people_(archive.OpenRecordset(QStringLiteral("PER"), store::RecordsetType::Table)),
        main_(archive.OpenRecordset(QStringLiteral("MAIN"), store::RecordsetType::Table)),
        counter_(archive.OpenRecordset(QStringLiteral("CONT"), store::RecordsetType::Table)) {
    people_->SetIndex(QStringLiteral("1u"));
    main_->SetIndex(QStringLiteral("1u"));
    key_ = counter_->Value(QStringLiteral("ID")).toLongLong();
  }

  // Up to so many entries; false behind the last one. What a failure leaves whole is written.
  bool group(qint64 most, EsitoImportazione& result) {
    std::optional<store::Failure> failure;
    store::Transaction transaction(archive_);
    // Another program may have given out keys meanwhile.
    counter_->MoveFirst();
    key_ = counter_->Value(QStringLiteral("ID")).toLongLong();
    qint64 written = 0;
    qint64 shortened = 0;
    bool isMore = true;
    try {
      while (written < most && (isMore = book_.prossima())) {
        shortened += entry() ? 1 : 0;
        ++written;
      }
    } catch (const store::Failure& met) {
      failure = met;
      people_->CancelUpdate();
      main_->CancelUpdate();
    }
    counter_->Edit();
    counter_->SetValue(QStringLiteral("ID"), key_);
    counter_->Update();
    transaction.Commit();
    result.lVoci += written;
    result.lAccorciate += shortened;
    if (failure) throw *failure;
    return isMore;
  }

 private:
  // True if a text had to be shortened.
  bool entry() {
    store::Transaction whole(archive_);
    tooLong_.clear();
    people_->AddNew();
    for (const Copy& copy : kOfPerson) set(*people_, copy);
    for (std::size_t i = 0; i < kLists.size(); ++i) {
      people_->SetValue(
          QString::fromLatin1(kLists[i].to),
          listKey(QString::fromLatin1(kListCodes[i]), NullAStringa(valueOf(kLists[i].from))));
    }
    people_->SetValue(QStringLiteral("ID"), key_ + 1);
    people_->Update();
    main_->AddNew();
    main_->SetValue(QStringLiteral("TipoRac"), kPersone);
    main_->SetValue(QStringLiteral("RacID"), key_ + 1);
    main_->SetValue(QStringLiteral("Cod"), QString());
    for (const Copy& copy : kOfMain) set(*main_, copy);
    setNote();
    main_->Update();
    whole.Commit();
    ++key_;
    return !tooLong_.isEmpty();
  }

  QVariant valueOf(const char* column) const { return book_.valore(QString::fromLatin1(column)); }

  // What is longer than its column goes whole into the note.
  void set(store::Recordset& rows, const Copy& copy) {
    const int field = rows.FieldIndex(QString::fromLatin1(copy.to));
    const QVariant value = valueOf(copy.from);
    const int size = rows.Fields()[field].size;
    const QString text = value.toString();
    const bool isTooLong = value.isValid() && size > 0 && text.size() > size;
    if (isTooLong) tooLong_ += u'\n' + QString::fromLatin1(copy.to) + QStringLiteral(": ") + text;
    rows.SetValue(field, isTooLong ? QVariant(cut(text, size)) : value);
  }

  void setNote() {
    const int field = main_->FieldIndex(QStringLiteral("Note"));
    const int size = main_->Fields()[field].size;
    const QVariant note = valueOf("nte");
    if (tooLong_.isEmpty() && note.toString().size() <= size) return main_->SetValue(field, note);
    const QString whole = note.toString() + tooLong_;
    if (whole.size() > size) tooLong_ += u' ';
    main_->SetValue(field, cut(note.isNull() ? whole.mid(1) : whole, size));
  }

  static QString cut(const QString& text, int size) {
    QString part = text.left(size);
    if (!part.isEmpty() && part.back().isHighSurrogate()) part.chop(1);
    return part;
  }

  int listKey(const QString& code, const QString& text) {
    if (text.isEmpty()) return 0;
    const auto known = keys_.constFind({code, text});
    if (known != keys_.constEnd()) return *known;
    const int key = lNuovaVoceTab(code, kPersone, text);
    return *keys_.insert({code, text}, key);
  }

  Rubrica& book_;
  store::Database& archive_;
  store::RecordsetPtr people_;
  store::RecordsetPtr main_;
  store::RecordsetPtr counter_;
  qint64 key_ = 0;
  QString tooLong_;
  QHash<std::pair<QString, QString>, int> keys_;
};

}  // namespace

std::unique_ptr<Rubrica> ApriRubrica(const QString& sPath) {
  const QString path = platform::systemPath(sPath);
  if (store::JetFile::isJet(path)) return std::make_unique<OldRubrica>(path);
  return std::make_unique<NewRubrica>(path);
}

EsitoImportazione ImportaVoci(Rubrica& rubrica, store::Database& archivio,
                              const store::Progress& progress) {
  EsitoImportazione result;
  Writer writer(rubrica, archivio);
  while (writer.group(kRowsPerGroup, result)) {
    result.bInterrotta = progress && !progress(result.lVoci, qMax(rubrica.voci(), result.lVoci));
    if (result.bInterrotta) break;
  }
  return result;
}

}  // namespace tavolix
