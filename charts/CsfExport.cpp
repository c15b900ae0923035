#include "charts/CsfExport.h"

#include "charts/Histogram.h"
#include "charts/SaveFile.h"
#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/PageWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace CsfExport {

namespace {

class Lines {
 public:
  // A line of the file is found by its position, so that a text must not break it.
  void Add(QString line) {
    line.replace(u'\r', u' ').replace(u'\n', u' ');
    text_ += line + u"\r\n"_s;
  }
  void Add(double number) { Add(Conversions::CStr(number)); }
  void Add(bool value) { Add(Conversions::CStr(value)); }

  template <class Range>
  void AddList(const Range& elements) {
    QString line;
    for (const auto& element : elements) line.append(element).append(u',');
    Add(line);
  }

  QByteArray Bytes() const { return text_.toUtf8(); }

 private:
  QString text_;
};

// The first `count` elements of a list of the data set; Error, naming the list, when it holds fewer.
std::vector<QStringView> ListElements(QStringView list, QStringView delimiter, qsizetype count,
                                      const char* name) {
  std::vector<QStringView> elements;
  if (count <= 0) return elements;
  elements.reserve(static_cast<size_t>(count));
  for (const QStringView element : list.tokenize(delimiter)) {
    if (element.isEmpty() && elements.empty() && list.isEmpty()) break;
    elements.push_back(element);
    if (std::ssize(elements) == count) return elements;
  }
  throw Error(Words::Page::listTooShort(QString::fromLatin1(name), elements.size(), count));
}

QStringList InGeneralForm(const std::vector<QStringView>& numbers) {
  QStringList texts;
  for (const QStringView number : numbers) texts.append(Conversions::CStr(Conversions::CDbl(number)));
  return texts;
}

}  // namespace

QByteArray CsfText(const CData& data) {
  const QString delimiter = data.StringDelimiter();
  const qsizetype points = data.NumberOfPlotPoints();
  const QString averages = data.XBarOutputString();
  const QString ranges = data.RBarOutputString();
  const QString counts = data.HistogramBinValuesOutputString();
  const QString labels = data.HistogramLabelsOutputString();

  Lines lines;
  lines.Add(data.Description());
  for (const double value : {data.LowerSpecLimit(), data.UpperSpecLimit(), data.NominalSpecLimit(),
                             data.MinValue(), data.MaxValue(), data.StdDevValue()}) {
    lines.Add(value);
  }
  for (const qint32 value : {qint32{data.SampleQty()}, qint32{data.SubGroupSize()}, data.SensitivityValue(),
                             data.DetectionPeriod()}) {
    lines.Add(double(value));
  }
  for (const double value :
       {data.XBarLCL(), data.XBarMean(), data.XBarUCL(), data.RBarLCL(), data.RBarMean(), data.RBarUCL()}) {
    lines.Add(value);
  }
  lines.Add(data.UnitOfMeasurement());
  lines.Add(data.IsInControl());
  lines.Add(double(data.RuleViolation()));
  lines.Add(data.CPKValue());
  lines.Add(double(data.ProcessState()));
  lines.Add(double(data.NumberOfPlotPoints()));
  lines.Add(data.LastModified());
  lines.AddList(ListElements(averages, delimiter, points, "XBarOutputString"));
  lines.AddList(ListElements(ranges, delimiter, points, "RBarOutputString"));
  lines.AddList(
      InGeneralForm(ListElements(counts, delimiter, HistogramBins, "HistogramBinValuesOutputString")));
  lines.AddList(ListElements(labels, delimiter, HistogramBins, "HistogramLabelsOutputString"));
  return lines.Bytes();
}

void WriteCsf(const CData& data, const QString& path) { SaveFile(path, CsfText(data)); }

}  // namespace CsfExport
