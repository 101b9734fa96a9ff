#include "output/print_engine.h"

#include <QFile>
#include <QFileInfo>
#include <QPrinter>

#include "core/errore.h"
#include "output/filter_words.h"
#include "output/pdf_dialog.h"
#include "output/preview_window.h"
#include "output/report_export.h"
#include "output/report_output.h"
#include "output/report_reader.h"
#include "output/work_window.h"
#include "platform/form.h"
#include "platform/system_path.h"

namespace tavolix::report {
namespace {

constexpr qint64 kLongestFile = 1 << 20;
constexpr int kRowsSection = 3;  // of the section codes: the one of the rows
constexpr int kSections = 6;     // heads and feet of report and page, groups, rows
constexpr int kNoLocation = 520;
constexpr int kNoJob = 521;
constexpr int kNoOutput = 522;

// A report file of a size that one can have; nothing for what is no report at all.
QByteArray contentOf(const QString& path) {
  QFile file(platform::systemPath(path));
  if (!QFileInfo(file).isFile() || file.size() > kLongestFile) return {};
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray content = file.readAll();
  return content.contains("<stampa") ? content : QByteArray();
}

// Texts of lookup values by their keys, for fields that hold a key.
std::function<QString(qint64)> listTexts(const store::DatabasePtr& database) {
  const auto rows = database->OpenRecordset(QStringLiteral("TAB"), store::RecordsetType::Table);
  rows->SetIndex(QStringLiteral("1u"));
  return [rows](qint64 key) {
    rows->Seek(QStringLiteral("="), {key});
    return rows->NoMatch() ? QString() : rows->Value(QStringLiteral("Desc")).toString();
  };
}

// What a file's name ends with says what it is to hold.
void exportTo(Document& document, const QString& path, const store::Progress& progress) {
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == QLatin1String("csv") || ending == QLatin1String("txt")) {
    writeRows(document, path, RowFormat::Delimited, progress);
  } else if (ending == QLatin1String("html") || ending == QLatin1String("htm")) {
    writeRows(document, path, RowFormat::Html, progress);
  } else {
    writePdf(document, path, progress);
  }
}

}  // namespace

struct PrintEngine::Job {
  QString path;
  Definition definition;
  QString fault;  // of the definition
  QString location;
  std::shared_ptr<Job> parent;  // of a subreport's job
  int subreport = -1;
  std::vector<QString> subreportLocations;
  std::function<void()> output;
  std::shared_ptr<Document> document;
  int errorCode = 0;
  QString errorText;
};

bool PrintEngine::OpenEngine() {
  return true;
}

void PrintEngine::CloseEngine() {
  jobs_.clear();
  delete window_;
}

PrintEngine::Job* PrintEngine::find(int number) const {
  const auto found = jobs_.find(number);
  return found == jobs_.end() ? nullptr : found->second.get();
}

bool PrintEngine::fail(Job& job, int code, const QString& text) {
  job.errorCode = code;
  job.errorText = text;
  return false;
}

int PrintEngine::OpenPrintJob(const QString& path) {
  const QByteArray content = contentOf(path);
  if (content.isEmpty()) return 0;
  auto job = std::make_shared<Job>();
  job->path = path;
  const QString name = QFileInfo(platform::systemPath(path)).fileName();
  const auto fault = fallimentoDi([&] { job->definition = readDefinition(content, name); });
  if (fault) job->fault = fault->description();
  job->subreportLocations.resize(job->definition.subreports.size());
  jobs_[++lastJob_] = job;
  return lastJob_;
}

void PrintEngine::ClosePrintJob(int job) {
  const auto closed = jobs_.find(job);
  if (closed == jobs_.end()) return;
  const auto parent = closed->second;
  std::erase_if(
      jobs_, [&](const auto& one) { return one.second == parent || one.second->parent == parent; });
}

bool PrintEngine::SetNthTableLocation(int number, int table, const QString& archive) {
  Job* job = find(number);
  if (job == nullptr) return false;
  if (table != 0 || archive.isEmpty()) {
    return fail(*job, kNoLocation, QStringLiteral("Archivio dei dati non indicato"));
  }
  job->location = archive;
  if (job->parent) {
    job->parent->subreportLocations[static_cast<std::size_t>(job->subreport)] = archive;
  }
  return true;
}

int PrintEngine::GetNSections(int job) const {
  const Job* found = find(job);
  return found != nullptr && found->fault.isEmpty() ? kSections : 0;
}

int PrintEngine::GetSectionCode(int, int section) const {
  return section;
}

int PrintEngine::GetNSubreportsInSection(int job, int code) const {
  const Job* found = find(job);
  if (found == nullptr || code != kRowsSection) return 0;
  return static_cast<int>(found->definition.subreports.size());
}

int PrintEngine::GetNthSubreportInSection(int number, int code, int subreport) {
  if (subreport >= 0 && subreport < GetNSubreportsInSection(number, code)) return subreport + 1;
  if (Job* job = find(number)) fail(*job, kNoJob, QStringLiteral("Sottostampa non trovata"));
  return 0;
}

QString PrintEngine::GetSubreportInfo(int job, int handle) const {
  const Job* found = find(job);
  if (found == nullptr || handle < 1) return {};
  return found->definition.subreports.at(static_cast<std::size_t>(handle - 1)).name;
}

int PrintEngine::OpenSubreport(int number, const QString& name) {
  Job* job = find(number);
  if (job == nullptr) return 0;
  const auto& all = job->definition.subreports;
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const Subreport& sub) { return sub.name == name; });
  if (found == all.end()) {
    fail(*job, kNoJob, QStringLiteral("Sottostampa non trovata: ") + name);
    return 0;
  }
  auto subJob = std::make_shared<Job>();
  subJob->parent = jobs_.at(number);
  subJob->subreport = static_cast<int>(found - all.begin());
  jobs_[++lastJob_] = subJob;
  return lastJob_;
}

bool PrintEngine::OutputToWindow(int number, const QString& title) {
  Job* job = find(number);
  if (job == nullptr) return false;
  job->output = [this, job, title] {
    auto* window = new PreviewWindow(job->document, title, platform::windowInFront());
    window_ = window;
    window->showMaximized();
    window->activateWindow();
  };
  return true;
}

bool PrintEngine::OutputToPrinter(int number, std::shared_ptr<QPrinter> printer) {
  Job* job = find(number);
  if (job == nullptr) return false;
  job->output = [job, printer = std::move(printer)] {
    WorkWindow window(QStringLiteral("Stampa in corso..."));
    print(*job->document, *printer, window.progress());
  };
  return true;
}

bool PrintEngine::ExportTo(int number) {
  Job* job = find(number);
  if (job == nullptr) return false;
  const QString path = chooseExport(QStringLiteral("Esporta"));
  if (path.isEmpty()) return false;
  job->output = [job, path] {
    WorkWindow window(QStringLiteral("Esportazione in corso..."));
    exportTo(*job->document, path, window.progress());
  };
  return true;
}

void PrintEngine::openDocument(Job& job) {
  if (!job.fault.isEmpty()) throw store::Failure(kBadDefinition, job.fault);
  for (const QString& location : job.subreportLocations) {
    if (location == job.location) continue;
    throw store::Failure(kNoLocation, QStringLiteral("Archivio di una sottostampa non indicato"));
  }
  const auto database = store::OpenDatabase(platform::systemPath(job.location));
  const Names names{QFileInfo(platform::systemPath(job.location)).fileName(), job.definition.title,
                    filterInWords(*database, job.definition.main.source), listTexts(database)};
  job.document = std::make_shared<Document>(database, job.definition, names);
}

bool PrintEngine::StartPrintJob(int number) {
  Job* job = find(number);
  if (job == nullptr) return false;
  // What windows do meanwhile may close the job.
  const std::shared_ptr<Job> kept = jobs_.at(number);
  if (!job->output) return fail(*job, kNoOutput, QStringLiteral("Destinazione non indicata"));
  const auto fault = fallimentoDi([&] {
    openDocument(*job);
    job->output();
  });
  return !fault || fail(*job, fault->number(), fault->description());
}

int PrintEngine::GetNPages(int job) const {
  const Job* found = find(job);
  return found != nullptr && found->document ? found->document->pages() : 0;
}

int PrintEngine::GetErrorCode(int job) const {
  const Job* found = find(job);
  return found == nullptr ? kNoJob : found->errorCode;
}

QString PrintEngine::GetErrorText(int job) const {
  const Job* found = find(job);
  return found == nullptr ? QStringLiteral("Stampa non aperta") : found->errorText;
}

}  // namespace tavolix::report
