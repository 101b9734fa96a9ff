#include "query/controlli_condizione.h"

#include <QHBoxLayout>
#include <QRegularExpressionValidator>

#include "core/modcuore.h"
#include "model/campi.h"
#include "platform/check_box.h"
#include "platform/data_combo.h"
#include "platform/date_box.h"
#include "platform/drop_down.h"
#include "platform/screen_reader.h"
#include "platform/screen_room.h"
#include "platform/text_box.h"
#include "store/value_text.h"

namespace tavolix {
namespace {

constexpr int kFieldCharacters = 18;
constexpr int kConditionCharacters = 22;

// Whether it is shown or not, it keeps its place: nothing else moves.
template <typename Control>
Control* placed(Control* control, const QString& name, const QString& reader, int characters) {
  control->setObjectName(name);
  platform::nameControl(*control, reader);
  control->setMinimumWidth(platform::widthOfCharacters(control, characters));
  QSizePolicy policy = control->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  control->setSizePolicy(policy);
  return control;
}

template <typename Control>
Control* value(Control* control, const QString& name, const QString& reader) {
  control->setObjectName(name);
  platform::nameControl(*control, reader);
  return control;
}

// What a number may be written with; blanks and letters cannot be typed.
const QValidator* numbers(QObject* parent) {
  return new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9.,+\\-eE]*")),
                                         parent);
}

}  // namespace

ControlliCondizione::ControlliCondizione(const Nomi& nomi, const QString& label, QWidget* window)
    : campo_(placed(new platform::DropDown(window), QString::fromLatin1(nomi.campo) + nomi.suffix,
                    QStringLiteral("Campo") + label, kFieldCharacters)),
      condizione_(placed(new platform::DropDown(window),
                         QStringLiteral("cboCondizione") + nomi.suffix,
                         QStringLiteral("Condizione") + label, kConditionCharacters)),
      voce_(value(new platform::DataCombo(window), QStringLiteral("cboValore") + nomi.suffix,
                  QStringLiteral("Valore") + label)),
      testo_(value(new platform::TextBox(window), QStringLiteral("txtValore") + nomi.suffix,
                   QStringLiteral("Valore") + label)),
      data_(value(new platform::DateBox(window), QStringLiteral("txtDtaValore") + nomi.suffix,
                  QStringLiteral("Valore") + label)),
      spunta_(value(new platform::CheckBox(window), QStringLiteral("chkValore") + nomi.suffix,
                    QStringLiteral("Valore") + label)),
      numeri_(numbers(window)),
      valori_(new QHBoxLayout) {
  voce_->SetEnterStays(true);
  valori_->setSpacing(0);
  for (QWidget* control : std::initializer_list<QWidget*>{voce_, testo_, data_, spunta_}) {
    valori_->addWidget(control);
    control->hide();
  }
  valori_->addStrut(testo_->sizeHint().height());
}

void ControlliCondizione::CaricaCampi(int iRac) const {
  const QSignalBlocker silence(campo_);
  campo_->clear();
  for (int j = 0; j < iNumeroCampi(iRac); ++j) {
    const tCampo& campo = aCampi(iRac, j);
    if (campo.sTipo != QLatin1String(TXTTIM)) campo_->addItem(campo.sTitolo, j);
  }
  campo_->setCurrentIndex(0);
}

int ControlliCondizione::iCampo() const {
  return campo_->currentData().toInt();
}

void ControlliCondizione::Prepara(int iRac, const QStringList& condizioni) const {
  const QSignalBlocker silence(condizione_);
  condizione_->clear();
  condizione_->addItems(condizioni);
  condizione_->setCurrentIndex(0);
  const tCampo& campo = aCampi(iRac, iCampo());
  testo_->clear();
  testo_->setValidator(campo.sTipo == QLatin1String(TXTNUM) ? numeri_ : nullptr);
  data_->ShowValue({});
  spunta_->setChecked(false);
  if (campo.sTipo == QLatin1String(CBO)) CaricaComboCampoIn(iRac, iCampo(), *voce_);
  voce_->ShowValue(0);
}

QWidget* ControlliCondizione::Valore(int iRac) const {
  const QString& sTipo = aCampi(iRac, iCampo()).sTipo;
  if (sTipo == QLatin1String(CBO)) return voce_;
  if (sTipo == QLatin1String(TXTDTA)) return data_;
  if (sTipo == QLatin1String(CHK)) return spunta_;
  return testo_;
}

void ControlliCondizione::RivediVoce() const {
  if (voce_->currentText().isEmpty()) voce_->ShowValue(0);
}

void ControlliCondizione::Mostra(int iRac, bool bAttivi) const {
  campo_->setVisible(bAttivi);
  condizione_->setVisible(bAttivi);
  const QWidget* shown = Valore(iRac);
  for (QWidget* control : std::initializer_list<QWidget*>{voce_, testo_, data_, spunta_}) {
    control->setVisible(bAttivi && control == shown);
  }
}

Condizione ControlliCondizione::Letta() const {
  const QDate date = data_->Date();
  ValoreCondizione valore{testo_->text(), voce_->Value().toLongLong(), std::nullopt,
                          spunta_->isChecked()};
  if (date.isValid()) valore.lGiorno = store::dayOfDate(date);
  return {iCampo(), condizione_->currentText(), valore};
}

}  // namespace tavolix
