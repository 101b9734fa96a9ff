#include "model/raccolte.h"

#include <gtest/gtest.h>

#include <QSet>

#include "model/campi.h"
#include "program_folder.h"
#include "store/database.h"

namespace tavolix {
namespace {

using Kind = store::FieldKind;

// A row of the field table holds together, and with the archive's tables and lists.
class FieldTable : public ::testing::Test {
 protected:
  void expectField(int i, int j) {
    const tCampo& campo = aCampi(i, j);
    SCOPED_TRACE(qPrintable(aRaccolte(i).sNome + ' ' + campo.sTitolo));
    const bool main = i < kRaccoltePrincipali;
    const QString name = (main ? QString::number(i) : "frmSub") + campo.sControllo.toUpper();
    EXPECT_FALSE(campo.sTitolo.isEmpty() || controls_.contains(name));
    controls_.insert(name);
    // A list belongs to all collections (-1), to this one, or to the one whose tracks these are.
    const bool list = campo.sTipo == CBO;
    EXPECT_EQ(campo.sCodTab.isEmpty(), !list);
    EXPECT_TRUE(!list || campo.iRacTab == -1 || campo.iRacTab == (i == 9 ? 2 : i));
    expectColumn(i, campo, sCampoQualificato(i, j));
  }

 private:
  void expectColumn(int i, const tCampo& campo, const QString& qualified) const {
    static const QHash<QString, Kind> kinds = {{TXTSTR, Kind::Text}, {TXTNUM, Kind::Number},
                                               {TXTDTA, Kind::Date}, {TXTTIM, Kind::Time},
                                               {CBO, Kind::Long},    {CHK, Kind::YesNo}};
    const auto rows = db_->OpenRecordset(aRaccolte(i).sQuery, store::RecordsetType::Dynaset);
    const int field = rows->FindField(campo.sCampoDB);
    ASSERT_GE(field, 0);
    EXPECT_EQ(field, rows->FindField(qualified));
    const store::FieldInfo& info = rows->Fields()[field];
    EXPECT_EQ(info.kind, kinds[campo.sTipo]);
    EXPECT_EQ(info.table.toUpper(), qualified.section('.', 0, 0));
    EXPECT_TRUE(info.updatable);
  }

  const ProgramFolder folder_;
  const store::DatabasePtr db_ = store::OpenDatabase(folder_.path("modello.tvx"));
  QSet<QString> controls_;
};

TEST_F(FieldTable, AgreesWithTheArchive) {
  for (int i = 0; i < kRaccolte; ++i) {
    for (int j = 0; j < iNumeroCampi(i); ++j) expectField(i, j);
  }
}

}  // namespace
}  // namespace tavolix
