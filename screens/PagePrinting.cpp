#include "screens/PagePrinting.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLibrary>
#include <QMimeData>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRegularExpression>

#include "core/Messages.h"
#include "platform/error/Error.h"
#include "platform/ui/FileDialog.h"
#include "texts/ChartWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QSize pictureSize(2400, 1500);
constexpr QSize drawingSize(1600, 1000);

QString FileName(QString description) {
  description.replace(QRegularExpression(uR"([\\/:*?"<>|\x00-\x1f])"_s), u"_"_s);
  return description.trimmed().isEmpty() ? Words::Chart::fileName() : description.trimmed();
}

}  // namespace

bool PrinterDialogs::HasPrinter() { return !QPrinterInfo::availablePrinterNames().isEmpty(); }

// The printing of Qt does not tell what became of the job; the client library of the print server does, where
// there is one.
QString PrinterDialogs::Rejection() {
  constexpr int lastGoodStatus = 0x00ff;
  const auto status = reinterpret_cast<int (*)()>(QLibrary::resolve(u"cups"_s, 2, "cupsLastError"));
  const auto text =
      reinterpret_cast<const char* (*)()>(QLibrary::resolve(u"cups"_s, 2, "cupsLastErrorString"));
  if (!status || !text || (status() >= 0 && status() <= lastGoodStatus)) return {};
  return QString::fromUtf8(text());
}

void PrinterDialogs::PrinterSetup(QPrinter& printer, QWidget* parent) {
  QPrintDialog dialog(&printer, parent);
  dialog.setObjectName(u"PrinterSetup"_s);
  dialog.setWindowTitle(LoadResText(u"Printer Setup;208"));
  // The dialog only chooses here: its button must not promise to print.
  if (auto* buttons = dialog.findChild<QDialogButtonBox*>()) {
    if (QPushButton* accept = buttons->button(QDialogButtonBox::Ok)) accept->setText(Words::ok());
  }
  dialog.exec();
}

void PrinterDialogs::PageSetup(QPrinter& printer, QWidget* parent) {
  QPageSetupDialog dialog(&printer, parent);
  dialog.setObjectName(u"PageSetup"_s);
  dialog.setWindowTitle(LoadResText(u"Page Setup;209"));
  dialog.exec();
}

PagePrinting::PagePrinting(std::unique_ptr<PrinterDialogs> dialogs) : dialogs_(std::move(dialogs)) {}

QPrinter& PagePrinting::Printer() {
  if (!printer_) {
    printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer_->setPageOrientation(QPageLayout::Landscape);
    printer_->setPageMargins(PageOutput::Margins, QPageLayout::Millimeter);
  }
  return *printer_;
}

QString PagePrinting::PrintPage(const OutputPage& page) {
  QPrinter& printer = Printer();
  if (!file_.isEmpty() || !printer.outputFileName().isEmpty()) return PrintToFile(page);
  if (dialogs_->HasPrinter()) {
    printer.setDocName(page.Description());
    PageOutput::PaintOn(printer, page, QRectF(0, 0, printer.width(), printer.height()));
    if (const QString reason = dialogs_->Rejection(); !reason.isEmpty())
      throw Error(Words::Chart::printRejected(printer.printerName(), reason));
    return {};
  }
  const bool isWanted = ShowSystemMessage(Words::Chart::printToFile(), MessageBox::Icon::Question,
                                          MessageBox::Buttons::YesNo) == MessageBox::Answer::Yes;
  return isWanted ? PrintToFile(page) : QString();
}

QString PagePrinting::PrintToFile(const OutputPage& page) {
  const QString last = file_.isEmpty() ? Printer().outputFileName() : file_;
  const QDir folder = last.isEmpty() ? QDir::home() : QFileInfo(last).dir();
  const QString file =
      FileDialog::Ask({FileDialog::Kind::Save, Words::Chart::printToFileTitle(), Words::Chart::pdfFiles(),
                       folder.filePath(FileName(page.Description()) + u".pdf"_s), u"pdf"_s});
  if (file.isEmpty()) return {};
  PageOutput::WritePdf(page, file, Printer().pageLayout());
  file_ = file;
  return QDir::toNativeSeparators(file);
}

QString PagePrinting::SavePage(const OutputPage& page) {
  const QDir folder = saved_.isEmpty() ? QDir::home() : QFileInfo(saved_).dir();
  const QString file =
      FileDialog::Ask({FileDialog::Kind::Save, Words::Chart::savePageTitle(), Words::Chart::pageFiles(),
                       folder.filePath(FileName(page.Description()) + u".pdf"_s), u"pdf"_s});
  if (file.isEmpty()) return {};
  PageOutput::WritePage(page, file);
  saved_ = file;
  return QDir::toNativeSeparators(file);
}

void PagePrinting::PrinterSetup(QWidget* parent) {
  if (!dialogs_->HasPrinter()) {
    ShowSystemMessage(Words::Chart::noPrinter(), MessageBox::Icon::Exclamation);
    return;
  }
  file_.clear();
  dialogs_->PrinterSetup(Printer(), parent);
}

void PagePrinting::PageSetup(QWidget* parent) { dialogs_->PageSetup(Printer(), parent); }

void CopyPage(const OutputPage& page) {
  auto formats = std::make_unique<QMimeData>();
  formats->setImageData(PageOutput::Picture(page, pictureSize));
  formats->setData(u"image/svg+xml"_s, PageOutput::Svg(page, drawingSize));
  formats->setData(u"application/pdf"_s, PageOutput::Pdf(page));
  QGuiApplication::clipboard()->setMimeData(formats.release());
}
