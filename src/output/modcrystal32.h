#pragma once

#include <QString>

class QWidget;

namespace tavolix {

// Where a report goes.
inline constexpr int kReportAnteprima = 0;
inline constexpr int kReportStampante = 1;
inline constexpr int kReportEsporta = 2;

// Runs a report file on an archive; true only if it ran to its end. What goes wrong is told.
bool bEseguiReport(int iModo, const QString& sReport, const QString& sArchivio);
// The preview's window; null if there is none.
QWidget* FinestraAnteprima();
void ChiudiMotoreReport();

}  // namespace tavolix
