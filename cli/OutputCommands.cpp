// The commands that write a file for each data set: report, export.
#include <QDir>
#include <QFutureSynchronizer>
#include <QRegularExpression>
#include <QtConcurrentMap>
#include <algorithm>
#include <exception>
#include <functional>
#include <map>
#include <vector>

#include "charts/CsfExport.h"
#include "charts/PageOutput.h"
#include "charts/SaveFile.h"
#include "charts/StatPage.h"
#include "cli/Arguments.h"
#include "cli/ChosenDataSets.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/FileNames.h"
#include "cli/SharedOptions.h"
#include "cli/TraceTexts.h"
#include "data/WrittenTimes.h"
#include "platform/error/Error.h"
#include "texts/CommandWords.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

using SharedOptions::libraryFile;

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

QString OutputFolder(const Arguments& arguments) {
  const QString folder = arguments.Text(SharedOptions::out);
  if (!QDir().mkpath(folder)) throw Error(Words::Command::noFolder(folder));
  return folder;
}

// A data set, the file for it and its place among the files that are written, from 1.
struct Output {
  qint64 id = 0;
  CDataPtr data;
  QString path{};
  int number = 0;
  int count = 0;
  std::shared_ptr<const Trace::Record> trace{};  // of its samples
  std::exception_ptr failure{};                  // why there is no file
};

using Step = std::function<void(const Output&)>;

// Does it unless the output has failed before.
void Try(Output& output, const Step& step) {
  try {
    if (!output.failure) step(output);
  } catch (const std::exception&) {
    output.failure = std::current_exception();
  }
}

// "A, B and 11 more"
QString Named(const QStringList& names) {
  constexpr qsizetype most = 8;
  const QString first = names.first(std::min(most, names.size())).join(u", "_s);
  return names.size() > most ? Words::Command::andMore(first, names.size() - most) : first;
}

// Whether the files tell of what is known of samples besides their values.
enum class Traced { No, Yes };

// Writes one file for each chosen data set, several at once, and prints in their order where they are. One
// that is refused or cannot be written keeps none of the others from it; it is named, and the exit status
// tells. Those of a whole library that have no point in the period asked for are named together: no failure
// where others have. The library is read in portions: twice where files are numbered.
class Files {
 public:
  Files(const Arguments& arguments, const QString& ending, Traced traced)
      : traced_(traced),
        isWhole_(arguments.Operands().size() == 1),
        place_(arguments.Operands()[0]),
        dataSets_(place_, arguments.Operands().mid(1)),
        names_(OutputFolder(arguments), ending),
        total_(dataSets_.Count()) {}

  // What is refused is known before the others get their numbers.
  void Number(const Step& prepare) {
    dataSets_.Each([&](const std::vector<Library::Row>& rows) {
      std::vector<Output> outputs = OutputsOf(rows);
      QtConcurrent::blockingMap(outputs, [&](Output& output) { Try(output, prepare); });
      for (const Output& output : outputs) {
        if (output.failure)
          refused_[output.id] = output.failure;
        else
          ++count_;
      }
    });
  }

  int Write(const Step& write) {
    dataSets_.Each([&](const std::vector<Library::Row>& rows) {
      std::vector<Output> outputs = OutputsOf(rows);
      for (Output& output : outputs) {
        output.path = names_.Next(*output.data);
        if (const auto refused = refused_.find(output.id); refused != refused_.end())
          output.failure = refused->second;
        output.number = number_ += !output.failure;
        output.count = count_;
      }
      WriteAtOnce(outputs, write);
    });
    TellWithoutPoints();
    return std::max(status_, dataSets_.Status());
  }

 private:
  std::vector<Output> OutputsOf(const std::vector<Library::Row>& rows) const {
    std::vector<Output> outputs;
    for (const Library::Row& row : rows) outputs.emplace_back(Output{row.id, row.data});
    if (traced_ == Traced::No) return outputs;
    std::vector<Trace::Record> traces = dataSets_.Of().TracesOf(rows);
    for (std::size_t i = 0; i < outputs.size(); ++i)
      outputs[i].trace = std::make_shared<const Trace::Record>(std::move(traces[i]));
    return outputs;
  }

  void TellWithoutPoints() {
    if (withoutPoints_.isEmpty()) return;
    const QString text =
        Console::OnOneLine(withoutPoints_.size() == 1
                               ? Words::Command::oneWithoutPage(withoutPoints_.first())
                               : Words::Command::withoutPages(withoutPoints_.size(), Named(withoutPoints_)));
    if (number_ > 0) return Console::Warn(text);
    Console::Complain(text);
    status_ = std::max<int>(status_, CommandLine::StatusOf(InputError(text)));
  }

  void WriteAtOnce(const std::vector<Output>& outputs, const Step& write) {
    // What is below does not leave before all are written.
    QFutureSynchronizer<std::exception_ptr> failures(QtConcurrent::mapped(outputs, [&write](Output output) {
      Try(output, write);
      return output.failure;
    }));
    for (int i = 0; i < static_cast<int>(outputs.size()); ++i) {
      const Output& output = outputs[static_cast<size_t>(i)];
      try {
        const std::exception_ptr failure = failures.futures()[0].resultAt(i);
        if (failure) std::rethrow_exception(failure);
        Console::Print(output.path + u'\n');
      } catch (const std::exception& error) {
        const QString name = output.data->Description();
        if (isWhole_ && dynamic_cast<const NoPointsError*>(&error)) {
          withoutPoints_ << name;
          continue;
        }
        Console::Complain(Words::Library::refusedValues(place_, name, ErrorText(error)));
        status_ = std::max(status_, CommandLine::StatusOf(error));
      }
      progress_.Show(++done_, total_);
    }
  }

  const Traced traced_;
  const bool isWhole_;  // no data set was named
  const QString place_;
  ChosenDataSets dataSets_;
  FileNames names_;
  const qsizetype total_;
  std::map<qint64, std::exception_ptr> refused_;
  int count_ = 0;
  int number_ = 0;
  int done_ = 0;
  int status_ = CommandLine::Fine;
  QStringList withoutPoints_;
  Console::Progress progress_{Words::Command::writing()};
};

// The points that the charts of a data set with so many are to show, and what it adds to a file's name: the
// page of a part does not replace that of all points.
struct Stretch {
  std::function<std::optional<PointRange>(int count)> of;
  QString name{};
  std::optional<Period> period{};  // in place of points
};

QDate Day(const Arguments& arguments, const Option& option) {
  if (!arguments.Has(option)) return {};
  try {
    const QDate day = WrittenTimes::ReadDay(arguments.Text(option));
    if (day.isValid()) return day;
  } catch (const InputError& error) {
    throw InputError(Words::Command::wrongDay(option.name, error.Text()));
  }
  throw InputError(Words::Command::notADay(option.name, arguments.Text(option)));
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
  Files files(arguments, stretch.name + day + u'.' + format.choices[arguments.Choice(format)], Traced::Yes);
  files.Number(page);
  return files.Write([&](const Output& output) { PageOutput::WritePage(page(output), output.path); });
}

// A line for each sample; what has none any more is only counted.
void WriteSamples(const Output& output) {
  SaveFile(output.path, TraceTexts::Csv(*output.data, *output.trace).toUtf8());
  const auto runs = output.trace->unplacedRuns.size(), notes = output.trace->unplacedNotes.size();
  if (runs + notes > 0)
    Console::Warn(Words::Command::unplaced(Console::OnOneLine(output.data->Description()), runs, notes));
}

int RunExport(const Arguments& arguments) {
  if (arguments.Has(csv)) return Files(arguments, u".csv"_s, Traced::Yes).Write(WriteSamples);
  return Files(arguments, u".csf"_s, Traced::No).Write([](const Output& output) {
    CsfExport::WriteCsf(*output.data, output.path);
  });
}

}  // namespace

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
