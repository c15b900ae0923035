// Puts a page of charts on paper, into a PDF file or on the clipboard, and keeps the printer that was set up.
#pragma once

#include <QPrinter>
#include <memory>

#include "charts/PageOutput.h"

// The desktop's part of it, so that tests need neither a printer nor a window.
class PrinterDialogs {
 public:
  virtual ~PrinterDialogs() = default;
  virtual bool HasPrinter();
  // Why the last page was not taken by the printer's queue; empty where it was.
  virtual QString Rejection();
  // They change the printer where the user accepts.
  virtual void PrinterSetup(QPrinter& printer, QWidget* parent);
  virtual void PageSetup(QPrinter& printer, QWidget* parent);
};

// One object serves the whole run of the program, so that what was set up lasts from screen to screen. Errors
// are thrown.
class PagePrinting {
 public:
  explicit PagePrinting(std::unique_ptr<PrinterDialogs> dialogs = std::make_unique<PrinterDialogs>());

  // Prints on the printer that was set up. Where that is a file, or no printer is installed and the user
  // agrees to a file instead, it asks for the name, writes a PDF file and returns its name.
  QString PrintPage(const OutputPage& page);
  // Asks for the name of a PDF, PNG or SVG file, writes it and returns the name; empty where the user
  // cancels.
  QString SavePage(const OutputPage& page);
  void PrinterSetup(QWidget* parent);
  void PageSetup(QWidget* parent);

 private:
  QPrinter& Printer();
  QString PrintToFile(const OutputPage& page);

  std::unique_ptr<PrinterDialogs> dialogs_;
  std::unique_ptr<QPrinter> printer_;  // made when first needed: finding the printers takes its time
  QString file_;                       // the last one printed to
  QString saved_;                      // the last one saved to
};

// The page on the clipboard: as a picture, as SVG and as PDF.
void CopyPage(const OutputPage& page);
