// The commands that show a library: status, report, export.
#include <QDir>
#include <QFutureSynchronizer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QtConcurrentMap>
#include <algorithm>
#include <exception>
#include <functional>
#include <vector>

#include "charts/CsfExport.h"
#include "charts/PageOutput.h"
#include "charts/StatPage.h"
#include "cli/Arguments.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "data/Json.h"
#include "library/Library.h"
#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/DetectionRules.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

// All data sets of a library, with their statistics; the first one that has none is an Error that names it.
std::vector<CDataPtr> Load(const QString& place) {
  std::vector<CDataPtr> dataSets;
  for (const Library::Row& row : Library::Open(place, Console::Warn)->ReadAll()) {
    if (row.failure) throw Error(place + u": "_s + row.failure->Text(), row.failure->GetKind(), place);
    dataSets.push_back(row.data);
  }
  return dataSets;
}

// Those of these descriptions, in their order; all where none is named.
std::vector<CDataPtr> Select(const std::vector<CDataPtr>& all, const QStringList& descriptions,
                             const QString& place) {
  if (descriptions.isEmpty()) return all;
  std::vector<CDataPtr> selected;
  for (const QString& description : descriptions) {
    const auto find = [&](Qt::CaseSensitivity sensitivity) {
      return std::find_if(all.begin(), all.end(), [&](const CDataPtr& data) {
        return data->Description().compare(description, sensitivity) == 0;
      });
    };
    auto found = find(Qt::CaseSensitive);
    if (found == all.end()) found = find(Qt::CaseInsensitive);
    if (found == all.end())
      throw InputError(u"%1 has no data set \"%2\""_s.arg(place, description), description);
    selected.push_back(*found);
  }
  return selected;
}

struct TableColumn {
  QString heading;
  bool isNumber;
  std::function<QString(const CData&)> text;
};

QString InControlText(const CData& data) {
  if (data.NumberOfPlotPoints() == 0) return u"-"_s;
  return data.IsInControl() ? u"yes"_s : u"NO, rule %1"_s.arg(data.RuleViolation());
}

const std::vector<TableColumn>& StatusColumns() {
  auto number = [](double (CData::*read)() const) {
    return [read](const CData& data) { return Conversions::CStr((data.*read)()); };
  };
  static const std::vector<TableColumn> columns = {
      {u"Data description"_s, false, [](const CData& data) { return data.Description(); }},
      {u"State"_s, false, [](const CData& data) { return ProcessState::Name(data.ProcessState()); }},
      {u"In control"_s, false, InControlText},
      {u"Cpk"_s, true, [](const CData& data) { return QString::number(data.CPKValue(), 'f', 2); }},
      {u"Samples"_s, true, [](const CData& data) { return QString::number(data.SampleQty()); }},
      {u"n"_s, true, [](const CData& data) { return QString::number(data.SubGroupSize()); }},
      {u"Mean"_s, true, number(&CData::XBarMean)},
      {u"LCL"_s, true, number(&CData::XBarLCL)},
      {u"UCL"_s, true, number(&CData::XBarUCL)},
      {u"Unit"_s, false, [](const CData& data) { return data.UnitOfMeasurement(); }}};
  return columns;
}

QString Table(const std::vector<CDataPtr>& dataSets) {
  std::vector<QStringList> rows(1);
  for (const TableColumn& column : StatusColumns()) rows[0] << column.heading;
  for (const CDataPtr& data : dataSets) {
    QStringList row;
    for (const TableColumn& column : StatusColumns()) row << column.text(*data);
    rows.push_back(row);
  }
  std::vector<qsizetype> widths(StatusColumns().size(), 0);
  for (const QStringList& row : rows) {
    for (std::size_t i = 0; i < widths.size(); ++i) {
      widths[i] = std::max(widths[i], row[static_cast<qsizetype>(i)].size());
    }
  }
  QString text;
  for (const QStringList& row : rows) {
    QString line;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      const QString& cell = row[static_cast<qsizetype>(i)];
      line += StatusColumns()[i].isNumber ? cell.rightJustified(widths[i]) : cell.leftJustified(widths[i]);
      line += u"  "_s;
    }
    while (line.endsWith(u' ')) line.chop(1);
    text += line + u'\n';
  }
  return text;
}

// A file name from a description: letters, digits and what is harmless stay, and no two are alike.
class FileNames {
 public:
  explicit FileNames(QString folder, QString suffix)
      : folder_(std::move(folder)), suffix_(std::move(suffix)) {}

  QString Next(const CData& data) {
    QString base;
    for (const QChar c : data.Description()) {
      base += c.isLetterOrNumber() || c.isSurrogate() || u"-_+=()[]"_s.contains(c) ? c : QChar(u'_');
    }
    constexpr qsizetype mostBytes = 200;  // file systems take 255, the suffix and a number included
    while (base.toUtf8().size() > mostBytes) base.chop(base.back().isLowSurrogate() ? 2 : 1);
    if (base.isEmpty()) base = u"data-set"_s;
    QString name = base;
    for (int i = 2; used_.contains(name.toCaseFolded()); ++i) name = base + u"-%1"_s.arg(i);
    used_ << name.toCaseFolded();
    return QDir(folder_).filePath(name + u'.' + suffix_);
  }

 private:
  QString folder_;
  QString suffix_;
  QSet<QString> used_;
};

QString OutputFolder(const Arguments& arguments) {
  const QString folder = arguments.Required(u"out"_s);
  if (!QDir().mkpath(folder)) throw Error(u"%1: the folder cannot be made"_s.arg(folder));
  return folder;
}

// A data set, the file for it and its place among all files, from 1.
struct Output {
  CDataPtr data;
  QString path;
  int number;
  int count;
};

std::vector<Output> Outputs(const std::vector<CDataPtr>& selected, const QString& folder,
                            const QString& suffix) {
  FileNames names(folder, suffix);
  std::vector<Output> outputs;
  for (const CDataPtr& data : selected) {
    const int number = static_cast<int>(outputs.size()) + 1;
    outputs.push_back({data, names.Next(*data), number, static_cast<int>(selected.size())});
  }
  return outputs;
}

// Writes one file for each selected data set, several at once, and prints in their order where they are. One
// that cannot be written keeps none of the others from it; it is named, and the exit status tells.
template <class Write>
int WriteEach(const Arguments& arguments, const QString& suffix, Write&& write) {
  const QString library = arguments.Positional()[0];
  const std::vector<CDataPtr> selected = Select(Load(library), arguments.Positional().mid(1), library);
  const std::vector<Output> outputs = Outputs(selected, OutputFolder(arguments), suffix);
  // The failure of each, null for none. What is below does not leave before all are written.
  QFutureSynchronizer<std::exception_ptr> failures(
      QtConcurrent::mapped(outputs, [&write](const Output& output) -> std::exception_ptr {
        try {
          write(output);
          return nullptr;
        } catch (const std::exception&) {
          return std::current_exception();
        }
      }));
  int status = CommandLine::Fine;
  Console::Progress progress(u"writing"_s);
  for (const Output& output : outputs) {
    try {
      const std::exception_ptr failure = failures.futures()[0].resultAt(output.number - 1);
      if (failure) std::rethrow_exception(failure);
      Console::Print(output.path + u'\n');
    } catch (const std::exception& error) {
      const QString name = output.data->Description();
      Console::Complain(u"%1: data set \"%2\": %3"_s.arg(library, name, ErrorText(error)));
      status = std::max(status, CommandLine::StatusOf(error));
    }
    progress.Show(output.number, output.count);
  }
  return status;
}

}  // namespace

int Status(const QStringList& words) {
  const Arguments arguments(words, {}, {u"json"_s, u"check"_s});
  arguments.RequirePositional(1, u"the library's file"_s);
  const std::vector<CDataPtr> dataSets = Load(arguments.Positional()[0]);
  if (arguments.Has(u"json"_s)) {
    QJsonArray array;
    for (const CDataPtr& data : dataSets) array.append(Json::ReadProperties(*data));
    Console::Print(QString::fromUtf8(QJsonDocument(array).toJson()));
  } else {
    Console::Print(dataSets.empty() ? u"The library holds no data sets.\n"_s : Table(dataSets));
  }
  const bool outOfControl = std::any_of(dataSets.begin(), dataSets.end(),
                                        [](const CDataPtr& data) { return !data->IsInControl(); });
  return arguments.Has(u"check"_s) && outOfControl ? CommandLine::OutOfControl : CommandLine::Fine;
}

int Report(const QStringList& words) {
  const Arguments arguments(words, {u"out"_s, u"format"_s}, {u"fit"_s});
  arguments.RequirePositional(1, u"the library's file"_s, true);
  const QStringList formats{u"pdf"_s, u"png"_s, u"svg"_s};
  const int format = arguments.Choice(u"format"_s, formats, 0);
  StatPageOptions options;
  options.fittedScale = arguments.Has(u"fit"_s);
  options.printedHead = true;
  options.printedAt = QDateTime::currentDateTime();
  return WriteEach(arguments, formats[format], [&](const Output& output) {
    StatPageOptions own = options;
    own.pageNumber = output.number;
    own.pageCount = output.count;
    const StatPage page(*output.data, own);
    switch (format) {
      case 0:
        return PageOutput::WritePdf(page, output.path);
      case 1:
        return PageOutput::WritePng(page, output.path);
      default:
        return PageOutput::WriteSvg(page, output.path);
    }
  });
}

int Export(const QStringList& words) {
  const Arguments arguments(words, {u"out"_s}, {});
  arguments.RequirePositional(1, u"the library's file"_s, true);
  return WriteEach(arguments, u"csf"_s,
                   [](const Output& output) { CsfExport::WriteCsf(*output.data, output.path); });
}

}  // namespace Commands
