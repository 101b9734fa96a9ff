#include "model/condizione.h"

#include <QLocale>
#include <QRegularExpression>

#include "model/campi.h"
#include "model/testi.h"
#include "store/value_text.h"

namespace tavolix {
namespace {

struct Operatore {
  const char* condizione;
  const char* sql;
};

constexpr Operatore kOperatori[] = {
    {"Uguale", " = "},           {"Diverso", " <> "},           {"Contiene", " Like "},
    {"Maggiore", " > "},         {"Maggiore o uguale", " >= "}, {"Minore", " < "},
    {"Minore o uguale", " <= "}, {"uguale a", " = "},           {"contiene", " Like "},
    {"inizia per", " Like "},
};

QString operatore(const QString& sCondizione) {
  for (const Operatore& o : kOperatori) {
    if (sCondizione == QLatin1String(o.condizione)) return QString::fromLatin1(o.sql);
  }
  return {};
}

Esito testo(const QString& sSql) {
  return {sSql, {}, 0};
}

Esito rifiuto(const QString& sMessaggio) {
  return {{}, sMessaggio, 0};
}

bool isPattern(const QString& sCondizione) {
  return operatore(sCondizione) == QLatin1String(" Like ");
}

Esito patternOf(const Condizione& c) {
  if (c.valore.sTesto.isEmpty()) {
    return rifiuto(QStringLiteral("Non e' possibile usare un valore vuoto per la condizione '%1'!")
                       .arg(c.sCondizione));
  }
  const bool begins = c.sCondizione == QLatin1String("inizia per");
  return testo(sApici((begins ? QString() : QStringLiteral("*")) + c.valore.sTesto + u'*'));
}

// A number that SQL reads stays as it was typed, one with the system's signs gets SQL's.
QString sNumeroSql(const QString& sTesto) {
  static const QRegularExpression sql(
      QStringLiteral("^\\s*[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?\\s*$"));
  if (sql.match(sTesto).hasMatch()) return sTesto;
  return QString::number(*store::numberIn(sTesto), 'g', QLocale::FloatingPointShortest);
}

// The value as SQL; texts with an empty value are the caller's.
Esito valueOf(const tCampo& campo, const Condizione& c) {
  const QString& sTipo = campo.sTipo;
  if (sTipo == QLatin1String(CBO)) return testo(QString::number(c.valore.lVoce));
  if (sTipo == QLatin1String(CHK)) return testo(c.valore.bSpunta ? "-1" : "0");
  if (sTipo == QLatin1String(TXTNUM)) {
    if (bNumerico(c.valore.sTesto)) return testo(sNumeroSql(c.valore.sTesto));
    return rifiuto(QStringLiteral("Specificare un valore numerico per il campo ") + campo.sTitolo);
  }
  if (sTipo == QLatin1String(TXTDTA)) {
    if (c.valore.lGiorno) return testo(QString::number(*c.valore.lGiorno));
    return rifiuto(QStringLiteral("Specificare una data valida per il campo ") + campo.sTitolo);
  }
  return isPattern(c.sCondizione) ? patternOf(c) : testo(sApici(c.valore.sTesto));
}

bool isEmptyText(const tCampo& campo, const Condizione& c) {
  return campo.sTipo == QLatin1String(TXTSTR) && c.valore.sTesto.isEmpty() &&
         !isPattern(c.sCondizione);
}

// What an empty text adds, so that fields without any value count as empty.
QString nullTest(const QString& sNome, const Condizione& c) {
  return c.sCondizione == QLatin1String("Diverso")
             ? QStringLiteral(" and ") + sNome + QStringLiteral(" Is Not Null")
             : QStringLiteral(" or ") + sNome + QStringLiteral(" Is Null");
}

Esito rowOf(int iRac, const Condizione& c) {
  const tCampo& campo = aCampi(iRac, c.iCampo);
  const QString sNome = sCampoQualificato(iRac, c.iCampo);
  Esito esito = valueOf(campo, c);
  if (!esito.sRifiuto.isEmpty()) return esito;
  const QString sTest = sNome + operatore(c.sCondizione) + esito.sTesto;
  if (!isEmptyText(campo, c)) return testo(sTest);
  return testo(u'(' + sTest + nullTest(sNome, c) + QStringLiteral(") "));
}

}  // namespace

bool bNumerico(const QString& sTesto) {
  static const QRegularExpression letters(
      QStringLiteral("^\\s*[+-]?[0-9.,]+([eE][+-]?[0-9]+)?\\s*$"));
  return letters.match(sTesto).hasMatch() && store::numberIn(sTesto);
}

QStringList sCondizioniFiltro(const QString& sTipo) {
  QStringList all = {"Uguale", "Diverso"};
  if (sTipo == QLatin1String(TXTSTR)) all.prepend("Contiene");
  if (sTipo == QLatin1String(TXTNUM) || sTipo == QLatin1String(TXTDTA)) {
    all << "Minore"
        << "Minore o uguale"
        << "Maggiore"
        << "Maggiore o uguale";
  }
  return all;
}

QStringList sCondizioniTrova(const QString& sTipo) {
  QStringList all = {"uguale a"};
  if (sTipo == QLatin1String(TXTSTR)) all = {"contiene", "inizia per", "uguale a"};
  return all;
}

Esito ClausolaFiltro(int iRac, std::span<const RigaFiltro> righe) {
  QString sClausola;
  int iRiga = 0;
  for (const RigaFiltro& riga : righe) {
    Esito esito = rowOf(iRac, riga.condizione);
    if (!esito.sRifiuto.isEmpty()) {
      esito.iRiga = iRiga;
      return esito;
    }
    if (!sClausola.isEmpty()) {
      sClausola +=
          riga.sConnettore.startsWith(u'e') ? QStringLiteral(" AND ") : QStringLiteral(" OR ");
    }
    sClausola = u'(' + sClausola + esito.sTesto + u')';
    ++iRiga;
  }
  return testo(sClausola.isEmpty() ? QString() : QStringLiteral(" WHERE ") + sClausola);
}

Esito ClausolaValore(int iRac, int iCampo, const QVariant& valore) {
  const QString& sTipo = aCampi(iRac, iCampo).sTipo;
  const bool none = valore.isNull() && sTipo != QLatin1String(TXTSTR);
  if (none || sTipo == QLatin1String(TXTTIM)) {
    return rifiuto(QStringLiteral("Il filtro non ha condizioni per questo valore."));
  }
  const RigaFiltro riga{
      QStringLiteral("e.."),
      {iCampo,
       QStringLiteral("Uguale"),
       {valore.toString(), valore.toLongLong(), valore.toLongLong(), valore.toBool()}}};
  return ClausolaFiltro(iRac, {&riga, 1});
}

Esito CondizioneTrova(int iRac, const Condizione& condizione) {
  const tCampo& campo = aCampi(iRac, condizione.iCampo);
  const QString sNome = sCampoQualificato(iRac, condizione.iCampo);
  Esito esito = valueOf(campo, condizione);
  if (!esito.sRifiuto.isEmpty()) return esito;
  QString sTest = sNome + operatore(condizione.sCondizione) + esito.sTesto;
  if (isEmptyText(campo, condizione)) sTest += nullTest(sNome, condizione) + u' ';
  return testo(sTest);
}

}  // namespace tavolix
