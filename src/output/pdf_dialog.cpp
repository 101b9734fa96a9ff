#include "output/pdf_dialog.h"

#include "platform/common_dialogs.h"

namespace tavolix::report {

QString choosePdf(const QString& title) {
  platform::FileRequest request;
  request.title = title;
  request.kinds = {{QStringLiteral("Documenti PDF"), QStringLiteral("*.pdf")}};
  return platform::saveFile(request);
}

QString chooseExport(const QString& title) {
  platform::FileRequest request;
  request.title = title;
  request.kinds = {{QStringLiteral("Documenti PDF"), QStringLiteral("*.pdf")},
                   {QStringLiteral("Testo delimitato"), QStringLiteral("*.csv")},
                   {QStringLiteral("Pagine HTML"), QStringLiteral("*.html")}};
  return platform::saveFile(request);
}

}  // namespace tavolix::report
