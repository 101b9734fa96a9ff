#pragma once

#include <QPointer>
#include <QString>
#include <map>
#include <memory>

#include "output/report_document.h"

class QPrinter;
class QWidget;

namespace tavolix::report {

// The report engine as a program drives it: jobs by number, each a report file that gets its data's
// place, an output, and is run. Operations tell by their result whether they succeeded, and
// ErrorText why not.
class PrintEngine final {
 public:
  bool OpenEngine();
  void CloseEngine();

  // A file that can be opened and begins as a report does; 0 for any other. What is wrong inside it
  // is told by StartPrintJob, with file and line.
  int OpenPrintJob(const QString& path);
  void ClosePrintJob(int job);
  // Where the data of a job, or of a subreport's job, are: the path of an archive. There is one
  // table, number 0.
  bool SetNthTableLocation(int job, int table, const QString& archive);

  // Sections are the report's kinds of bands; the one with the rows holds the subreports.
  int GetNSections(int job) const;
  int GetSectionCode(int job, int section) const;
  int GetNSubreportsInSection(int job, int code) const;
  // A handle of a subreport, 0 if there is none; its name; a job for it, 0 on failure.
  int GetNthSubreportInSection(int job, int code, int number);
  QString GetSubreportInfo(int job, int handle) const;
  int OpenSubreport(int job, const QString& name);

  bool OutputToWindow(int job, const QString& title);
  bool OutputToPrinter(int job, std::shared_ptr<QPrinter> printer);
  // Asks for the name of a PDF, or of a file for the rows alone. False if given up.
  bool ExportTo(int job);
  // Runs the job; the window stays when it has ended.
  bool StartPrintJob(int job);
  int GetNPages(int job) const;

  int GetErrorCode(int job) const;
  QString GetErrorText(int job) const;

  // The preview that was opened last; null once it is closed.
  QWidget* Window() const { return window_; }

 private:
  struct Job;
  Job* find(int number) const;
  static bool fail(Job& job, int code, const QString& text);
  static void openDocument(Job& job);

  std::map<int, std::shared_ptr<Job>> jobs_;
  int lastJob_ = 0;
  QPointer<QWidget> window_;
};

}  // namespace tavolix::report
