// The commands that show a library: status, report, export.
#include <QDir>
#include <QFutureSynchronizer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QtConcurrentMap>
#include <algorithm>
#include <exception>
#include <functional>
#include <vector>

#include "charts/CsfExport.h"
#include "charts/PageOutput.h"
#include "charts/SaveFile.h"
#include "charts/StatPage.h"
#include "cli/Arguments.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/FileNames.h"
#include "cli/SharedOptions.h"
#include "cli/TraceTexts.h"
#include "data/Json.h"
#include "data/Names.h"
#include "library/Library.h"
#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/CommandWords.h"
#include "texts/DetectionRules.h"
#include "texts/LibraryWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

using SharedOptions::libraryFile;

const Option json = Option::Flag(u"json"_s, Words::Command::jsonOption());
const Option check = Option::Flag(u"check"_s, Words::Command::checkOption());
const Option format =
    Option::Choice(u"format"_s, {u"pdf"_s, u"png"_s, u"svg"_s}, Words::Command::formatOption(), 0);
const Option fit = Option::Flag(u"fit"_s, Words::Command::fitOption());
const Option points =
    Option::Text(u"points"_s, Words::Command::pointsValue(), Words::Command::pointsOption());
const Option last = Option::Whole(u"last"_s, Words::Command::lastOption(), 1, engine::maximumSamples);
const Option since = Option::Text(u"since"_s, Words::Command::dayValue(), Words::Command::sinceOption());
const Option until = Option::Text(u"until"_s, Words::Command::dayValue(), Words::Command::untilOption());
const Option csv = Option::Flag(u"csv"_s, Words::Command::csvOption());
const Option date = Option::Flag(u"date"_s, Words::Command::dateOption());

// Data sets with their statistics, and the exit status that those without leave.
struct Loaded {
  std::vector<CDataPtr> dataSets;
  int status = CommandLine::Fine;
};

// The chosen rows; each that is no data set is named and keeps none of the others from being used.
Loaded Load(const std::vector<Library::Row>& rows, const QString& place) {
  Loaded loaded;
  for (const Library::Row& row : rows) {
    if (row.failure) {
      Console::Complain(place + u": "_s + row.failure->Text());
      loaded.status = std::max(loaded.status, CommandLine::StatusOf(*row.failure));
    } else {
      loaded.dataSets.push_back(row.data);
    }
  }
  return loaded;
}

// Those of these descriptions, each once and in their order; all where none is named.
std::vector<Library::Row> Select(const std::vector<Library::Row>& all, const QStringList& descriptions,
                                 const QString& place) {
  if (descriptions.isEmpty()) return all;
  std::vector<Library::Row> selected;
  for (const QString& description : descriptions) {
    const auto found = Names::Find(all.begin(), all.end(), description,
                                   [](const Library::Row& row) { return row.description; });
    if (found == all.end()) throw InputError(Words::Library::notThere(place, description), description);
    const auto isIt = [&](const Library::Row& row) { return row.description == found->description; };
    if (std::ranges::none_of(selected, isIt)) selected.push_back(*found);
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
  return data.IsInControl() ? Words::Command::isControlled()
                            : Words::Command::isNotControlled(data.RuleViolation());
}

const std::vector<TableColumn>& StatusColumns() {
  auto number = [](double (CData::*read)() const) {
    return [read](const CData& data) { return Conversions::CStr((data.*read)()); };
  };
  static const std::vector<TableColumn> columns = {
      {Words::Command::dataDescription(), false, [](const CData& data) { return data.Description(); }},
      {Words::Command::state(), false,
       [](const CData& data) { return ProcessState::Name(data.ProcessState()); }},
      {Words::Command::controlled(), false, InControlText},
      {Words::Figure::cpk(), true,
       [](const CData& data) { return QString::number(data.CPKValue(), 'f', 2); }},
      {Words::Figure::samples(), true, [](const CData& data) { return QString::number(data.SampleQty()); }},
      {Words::Command::subgroupSize(), true,
       [](const CData& data) { return QString::number(data.SubGroupSize()); }},
      {Words::Figure::mean(), true, number(&CData::XBarMean)},
      {Words::Figure::lcl(), true, number(&CData::XBarLCL)},
      {Words::Figure::ucl(), true, number(&CData::XBarUCL)},
      {Words::Command::unit(), false, [](const CData& data) { return data.UnitOfMeasurement(); }}};
  return columns;
}

QString Table(const std::vector<CDataPtr>& dataSets) {
  std::vector<QStringList> rows(1);
  for (const TableColumn& column : StatusColumns()) rows[0] << column.heading;
  for (const CDataPtr& data : dataSets) {
    QStringList row;
    for (const TableColumn& column : StatusColumns()) row << Console::OnOneLine(column.text(*data));
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

QString OutputFolder(const Arguments& arguments) {
  const QString folder = arguments.Text(SharedOptions::out);
  if (!QDir().mkpath(folder)) throw Error(Words::Command::noFolder(folder));
  return folder;
}

// A data set, the file for it and its place among the files that are written, from 1.
struct Output {
  CDataPtr data;
  QString path;
  int number = 0;
  int count = 0;
  std::shared_ptr<const Trace::Record> trace{};  // of its samples
  std::exception_ptr failure{};                  // why there is no file
};

std::vector<Output> Outputs(const std::vector<CDataPtr>& selected, const QString& folder,
                            const QString& ending) {
  FileNames names(folder, ending);
  std::vector<Output> outputs;
  for (const CDataPtr& data : selected) outputs.push_back({data, names.Next(*data)});
  return outputs;
}

using Step = std::function<void(const Output&)>;

// Does it unless the output has failed before.
void Try(Output& output, const Step& step) {
  try {
    if (!output.failure) step(output);
  } catch (const std::exception&) {
    output.failure = std::current_exception();
  }
}

// Writes one file for each selected data set, several at once, and prints in their order where they are. One
// that is refused or cannot be written keeps none of the others from it; it is named, and the exit status
// tells. What is refused is known before the others get their numbers.
int WriteEach(const Arguments& arguments, const QString& ending, const Step& prepare, const Step& write) {
  const QString library = arguments.Operands()[0];
  const auto opened = Library::Open(library, Console::Warn);
  const Loaded loaded = Load(Select(opened->ReadAll(), arguments.Operands().mid(1), library), library);
  std::vector<Output> outputs = Outputs(loaded.dataSets, OutputFolder(arguments), ending);
  for (Output& output : outputs) {
    Try(output, [&](const Output& of) {
      output.trace = std::make_shared<const Trace::Record>(opened->TraceOf(*of.data));
    });
  }
  QtConcurrent::blockingMap(outputs, [&](Output& output) { Try(output, prepare); });
  const auto count = std::ranges::count(outputs, nullptr, &Output::failure);
  int number = 0;
  for (Output& output : outputs) {
    output.number = number += !output.failure;
    output.count = static_cast<int>(count);
  }
  // What is below does not leave before all are written.
  QFutureSynchronizer<std::exception_ptr> failures(QtConcurrent::mapped(outputs, [&write](Output output) {
    Try(output, write);
    return output.failure;
  }));
  int status = loaded.status;
  Console::Progress progress(Words::Command::writing());
  for (int i = 0; i < static_cast<int>(outputs.size()); ++i) {
    const Output& output = outputs[static_cast<size_t>(i)];
    try {
      const std::exception_ptr failure = failures.futures()[0].resultAt(i);
      if (failure) std::rethrow_exception(failure);
      Console::Print(output.path + u'\n');
    } catch (const std::exception& error) {
      const QString name = output.data->Description();
      Console::Complain(Words::Library::refusedValues(library, name, ErrorText(error)));
      status = std::max(status, CommandLine::StatusOf(error));
    }
    progress.Show(i + 1, static_cast<int>(outputs.size()));
  }
  return status;
}

int RunStatus(const Arguments& arguments) {
  const QString& place = arguments.Operands()[0];
  const auto library = Library::Open(place, Console::Warn);
  const auto [dataSets, failed] = Load(library->ReadAll(), place);
  if (arguments.Has(json)) {
    QJsonArray array;
    for (const CDataPtr& data : dataSets) {
      QJsonObject object = Json::ReadProperties(*data);
      TraceTexts::AddTo(object, library->TraceOf(*data));
      array.append(object);
    }
    Console::Print(QString::fromUtf8(QJsonDocument(array).toJson()));
  } else if (!dataSets.empty() || failed == CommandLine::Fine) {
    Console::Print(dataSets.empty() ? Words::Command::noDataSets() + u'\n' : Table(dataSets));
  }
  const bool outOfControl = std::any_of(dataSets.begin(), dataSets.end(),
                                        [](const CDataPtr& data) { return !data->IsInControl(); });
  return std::max<int>(failed,
                       arguments.Has(check) && outOfControl ? CommandLine::OutOfControl : CommandLine::Fine);
}

// The points that the charts of a data set with so many are to show, and what it adds to a file's name: the
// page of a part does not replace that of all points.
struct Stretch {
  std::function<std::optional<PointRange>(int count)> of;
  QString name{};
  std::optional<Period> period{};  // in place of points
};

QDate Day(const Arguments& arguments, const Option& option) {
  if (!arguments.Has(option)) return {};
  const QDate day = QDate::fromString(arguments.Text(option), Qt::ISODate);
  if (!day.isValid()) throw InputError(Words::Command::notADay(option.name, arguments.Text(option)));
  return day;
}

Stretch DaysOf(const Arguments& arguments) {
  const Period days{Day(arguments, since), Day(arguments, until)};
  if (days.since.isValid() && days.until.isValid() && days.since > days.until)
    throw InputError(Words::Command::daysReversed(arguments.Text(since), arguments.Text(until)));
  QString name;
  if (days.since.isValid()) name += u".since-"_s + days.since.toString(Qt::ISODate);
  if (days.until.isValid()) name += u".until-"_s + days.until.toString(Qt::ISODate);
  return {[](int) { return std::nullopt; }, name, days};
}

Stretch StretchOf(const Arguments& arguments) {
  if (arguments.Has(points) && arguments.Has(last)) throw InputError(Words::Command::pointsOrLast());
  if (arguments.Has(since) || arguments.Has(until)) {
    if (arguments.Has(points) || arguments.Has(last)) throw InputError(Words::Command::daysOrPoints());
    return DaysOf(arguments);
  }
  if (arguments.Has(last)) {
    const int most = arguments.Whole(last);
    return {[most](int count) {
              return PointRange{std::max(1, count - most + 1), count};
            },
            u".last-%1"_s.arg(most)};
  }
  if (!arguments.Has(points)) return {[](int) { return std::nullopt; }};
  static const QRegularExpression range(u"^([0-9]{1,5})-([0-9]{1,5})$"_s);
  const auto match = range.match(arguments.Text(points));
  const PointRange wanted{match.captured(1).toInt(), match.captured(2).toInt()};
  if (!match.hasMatch() || wanted.first < 1 || wanted.last < wanted.first)
    throw InputError(Words::Command::notPoints(arguments.Text(points)));
  return {[wanted](int count) {
            if (wanted.first > count) throw InputError(Words::Command::noSuchPoints(wanted.first, count));
            return wanted;
          },
          u".%1-%2"_s.arg(wanted.first).arg(wanted.last)};
}

int RunReport(const Arguments& arguments) {
  const Stretch stretch = StretchOf(arguments);
  StatPageOptions options;
  options.fittedScale = arguments.Has(fit);
  options.printedHead = true;
  options.libraryName = Library::NameOf(arguments.Operands()[0]);
  options.printedAt = QDateTime::currentDateTime();
  const QString day = arguments.Has(date) ? options.printedAt.toString(u".yyyy-MM-dd"_s) : QString();
  const auto page = [&](const Output& output) {
    StatPageOptions own = options;
    own.pageNumber = output.number;
    own.pageCount = output.count;
    own.points = stretch.of(output.data->NumberOfPlotPoints());
    own.period = stretch.period;
    own.trace = output.trace;
    return StatPage(*output.data, own);
  };
  return WriteEach(arguments, stretch.name + day + u'.' + format.choices[arguments.Choice(format)], page,
                   [&](const Output& output) { PageOutput::WritePage(page(output), output.path); });
}

// A line for each sample; what has none any more is only counted.
void WriteSamples(const Output& output) {
  SaveFile(output.path, TraceTexts::Csv(*output.data, *output.trace).toUtf8());
  const auto runs = output.trace->unplacedRuns.size(), notes = output.trace->unplacedNotes.size();
  if (runs + notes > 0)
    Console::Warn(Words::Command::unplaced(Console::OnOneLine(output.data->Description()), runs, notes));
}

int RunExport(const Arguments& arguments) {
  const auto none = [](const Output&) {};
  if (arguments.Has(csv)) return WriteEach(arguments, u".csv"_s, none, WriteSamples);
  return WriteEach(arguments, u".csf"_s, none,
                   [](const Output& output) { CsfExport::WriteCsf(*output.data, output.path); });
}

}  // namespace

const Command& Status() {
  static const Command command = {.name = u"status"_s,
                                  .purpose = Words::Command::statusPurpose(),
                                  .operands = {libraryFile},
                                  .options = {json, check},
                                  .details = {},
                                  .run = RunStatus};
  return command;
}

const Command& Report() {
  static const Command command = {
      .name = u"report"_s,
      .purpose = Words::Command::reportPurpose(),
      .operands = {libraryFile, SharedOptions::descriptions},
      .options = {SharedOptions::out, format, fit, points, last, since, until, date},
      .details = Words::Command::reportDetails(),
      .run = RunReport,
      .needsGraphics = true};
  return command;
}

const Command& Export() {
  static const Command command = {.name = u"export"_s,
                                  .purpose = Words::Command::exportPurpose(),
                                  .operands = {libraryFile, SharedOptions::descriptions},
                                  .options = {SharedOptions::out, csv},
                                  .details = Words::Command::exportDetails(),
                                  .run = RunExport};
  return command;
}

}  // namespace Commands
