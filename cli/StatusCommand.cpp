// The command status: a table, or all figures for programs.
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <functional>
#include <vector>

#include "cli/Arguments.h"
#include "cli/ChosenDataSets.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/SharedOptions.h"
#include "cli/TraceTexts.h"
#include "data/Json.h"
#include "platform/language/Conversions.h"
#include "texts/CommandWords.h"
#include "texts/DetectionRules.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

const Option json = Option::Flag(u"json"_s, Words::Command::jsonOption());
const Option check = Option::Flag(u"check"_s, Words::Command::checkOption());

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

// Its columns are as wide as their widest cells, so that it is printed when all are known; until then each
// line is one text, which thousands of them have room for.
class Table {
 public:
  Table() {
    QStringList headings;
    for (const TableColumn& column : StatusColumns()) headings << column.heading;
    Add(headings);
  }

  void Add(const CData& data) {
    QStringList cells;
    for (const TableColumn& column : StatusColumns()) cells << Console::OnOneLine(column.text(data));
    Add(cells);
  }

  bool IsEmpty() const { return lines_.size() == 1; }

  void Print() const {
    constexpr qsizetype atOnce = 64 * 1024;
    QString text;
    for (const QByteArray& line : lines_) {
      text += Line(QString::fromUtf8(line).split(between));
      if (text.size() > atOnce) Console::Print(std::exchange(text, {}));
    }
    Console::Print(text);
  }

 private:
  static constexpr QChar between = u'\n';  // in no cell

  void Add(const QStringList& cells) {
    for (std::size_t i = 0; i < widths_.size(); ++i)
      widths_[i] = std::max(widths_[i], cells[static_cast<qsizetype>(i)].size());
    lines_.push_back(cells.join(between).toUtf8());
  }

  QString Line(const QStringList& cells) const {
    QString line;
    for (std::size_t i = 0; i < widths_.size(); ++i) {
      const QString& cell = cells[static_cast<qsizetype>(i)];
      line += StatusColumns()[i].isNumber ? cell.rightJustified(widths_[i]) : cell.leftJustified(widths_[i]);
      line += u"  "_s;
    }
    while (line.endsWith(u' ')) line.chop(1);
    return line + u'\n';
  }

  std::vector<QByteArray> lines_;
  std::vector<qsizetype> widths_ = std::vector<qsizetype>(StatusColumns().size(), 0);
};

// An array, printed element by element as the whole would be.
class JsonArray {
 public:
  void Print(const QJsonObject& element) {
    const QByteArray alone = QJsonDocument(QJsonArray{element}).toJson();
    Console::Print((isEmpty_ ? u"[\n"_s : u",\n"_s) + QString::fromUtf8(alone.sliced(2).chopped(3)));
    isEmpty_ = false;
  }
  void Close() const { Console::Print(isEmpty_ ? u"[\n]\n"_s : u"\n]\n"_s); }

 private:
  bool isEmpty_ = true;
};

int RunStatus(const Arguments& arguments) {
  ChosenDataSets dataSets(arguments.Operands()[0]);
  const bool asJson = arguments.Has(json);
  bool isControlled = true;
  Table table;
  JsonArray array;
  dataSets.Each([&](const std::vector<Library::Row>& rows) {
    for (const Library::Row& row : rows) {
      isControlled = isControlled && row.data->IsInControl();
      if (!asJson) table.Add(*row.data);
    }
    if (!asJson) return;
    const std::vector<Trace::Record> traces = dataSets.Of().TracesOf(rows);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      QJsonObject object = Json::ReadProperties(*rows[i].data);
      TraceTexts::AddTo(object, traces[i]);
      array.Print(object);
    }
  });
  const int failed = dataSets.Status();
  if (asJson)
    array.Close();
  else if (!table.IsEmpty())
    table.Print();
  else if (failed == CommandLine::Fine)
    Console::Print(Words::Command::noDataSets() + u'\n');
  return std::max<int>(failed,
                       arguments.Has(check) && !isControlled ? CommandLine::OutOfControl : CommandLine::Fine);
}

}  // namespace

const Command& Status() {
  static const Command command = {.name = u"status"_s,
                                  .purpose = Words::Command::statusPurpose(),
                                  .operands = {SharedOptions::libraryFile},
                                  .options = {json, check},
                                  .details = {},
                                  .run = RunStatus};
  return command;
}

}  // namespace Commands
