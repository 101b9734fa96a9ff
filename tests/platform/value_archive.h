#pragma once

#include <QTemporaryDir>

#include "platform/lookup_list.h"
#include "store/database.h"

namespace platform {

// An archive that holds the values of one list, and counts how often the list is opened.
class ValueArchive final {
 public:
  using Values = QVector<std::pair<QString, qint64>>;

  explicit ValueArchive(const Values& values)
      : database_(store::CreateDatabase(
            folder_.filePath(QStringLiteral("voci.tvx")),
            "CREATE TABLE VOCE (Id INTEGER PRIMARY KEY, Nome TEXT(20) COLLATE ITALIANO);")) {
    set(values);
  }

  // Replaces all values.
  void set(const Values& values) {
    const auto rows = database_->OpenRecordset(QStringLiteral("VOCE"), store::RecordsetType::Table);
    while (rows->RecordCount() > 0) {
      rows->MoveFirst();
      rows->Delete();
    }
    for (const auto& [text, key] : values) {
      rows->AddNew();
      rows->SetValue(QStringLiteral("Id"), key);
      rows->SetValue(QStringLiteral("Nome"), text);
      rows->Update();
    }
  }

  LookupList::Source source() {
    const auto open = [this] {
      ++loads;
      if (broken) throw store::Failure(store::failure::kDiskError, QStringLiteral("guasto"));
      return database_->OpenRecordset(QStringLiteral("SELECT * FROM VOCE ORDER BY Nome"),
                                      store::RecordsetType::Dynaset);
    };
    const auto textOf = [this](qint64 key) {
      const auto row =
          database_->OpenRecordset(QStringLiteral("SELECT Nome FROM VOCE WHERE Id = %1").arg(key),
                                   store::RecordsetType::Dynaset);
      return row->RecordCount() == 0 ? QString() : row->Value(0).toString();
    };
    return {open, QStringLiteral("Id"), QStringLiteral("Nome"), textOf};
  }
  LookupListPtr list() { return std::make_shared<LookupList>(source()); }

  int loads = 0;
  bool broken = false;

 private:
  QTemporaryDir folder_;
  store::DatabasePtr database_;
};

}  // namespace platform
