// Files of the page: pictures, documents and the .csf export, whole or not at all.
#include "charts/PageOutput.h"

#include <sys/resource.h>

#include <QSvgRenderer>
#include <QTemporaryDir>
#include <csignal>

#include "charts/CsfExport.h"
#include "charts/SaveFile.h"
#include "tests/charts/PageData.h"
#include "tests/support/Approved.h"
#include "tests/support/Files.h"
#include "tests/support/Refusal.h"

namespace {

TEST(PageOutput, WritesTheSamePageInEveryFormat) {
  const QTemporaryDir folder;
  StatPage page = PageData::Page(PageData::Simple(), {.printedHead = true});
  page.Select(GraphId::Histogram);
  const QString pdf = folder.filePath(u"a"_s), png = folder.filePath(u"b"_s), svg = folder.filePath(u"c"_s);
  EXPECT_THROW(PageOutput::WritePage(page, folder.filePath(u"a.doc"_s)), InputError);
  for (const auto& [suffix, magic] :
       {std::pair{u"PDF"_s, "%PDF"}, {u"png"_s, "\x89PNG"}, {u"svg"_s, "<?xml"}}) {
    const QString path = folder.filePath(u"page."_s + suffix);
    PageOutput::WritePage(page, path);
    EXPECT_TRUE(ReadFile(path).startsWith(magic));
  }
  PageOutput::WritePdf(page, pdf);
  PageOutput::WritePng(page, png, {640, 400});
  PageOutput::WriteSvg(page, svg, {640, 400});
  page.Select(GraphId::None);  // its frame is not for paper
  page.SetSmallestText(7 / 72.0 * QImage(png).logicalDpiY());
  QImage painted(640, 400, QImage::Format_RGB32), drawn = painted;
  QPainter painter(&painted), drawing(&drawn);
  page.Paint(painter, {0, 0, 640, 400});
  EXPECT_EQ(QImage(png), painted);
  EXPECT_NEAR(QImage(png).width() / (QImage(png).dotsPerMeterX() / 1000.0), 277, 1) << "millimetres of paper";
  EXPECT_TRUE(ReadFile(svg).contains("<svg width=\"27")) << ReadFile(svg).left(200).toStdString();
  // The drawing, with edges and letters of its own, in every place about as dark.
  QSvgRenderer(svg).render(&drawing);
  const auto small = [](const QImage& image) {
    return image.scaled(32, 20, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  };
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 32; ++x)
      EXPECT_NEAR(qGray(small(drawn).pixel(x, y)), qGray(small(painted).pixel(x, y)), 12) << x << ' ' << y;
  EXPECT_TRUE(ReadFile(svg).contains("LCL=9.7, Mean=10, UCL=10.3"));
  EXPECT_TRUE(ReadFile(pdf).startsWith("%PDF-"));
  EXPECT_GT(ReadFile(pdf).size(), 5000);
  EXPECT_TRUE(ReadFile(pdf).contains("/MediaBox [0 0 842"));
}

TEST(PageOutput, NamesTheFileItCannotWriteAndLeavesNothing) {
  const QTemporaryDir folder;
  const CData data = PageData::Simple();
  const StatPage page = PageData::Page(data);
  const QString path = folder.filePath(u"missing/a"_s);
  const std::function<void()> writers[] = {
      [&] { PageOutput::WritePdf(page, path); }, [&] { PageOutput::WritePng(page, path); },
      [&] { PageOutput::WritePng(page, path, {}); }, [&] { PageOutput::WriteSvg(page, path); },
      [&] { CsfExport::WriteCsf(data, path); }};
  for (const auto& write : writers) EXPECT_TRUE(Refusal(write).startsWith(path));
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

// A limit of the process stands in for a full disk; what is short fails no sooner than in the flush.
TEST(PageOutput, LeavesTheOlderFileWhenTheDiskIsFull) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"a.pdf"_s);
  SaveFile(path, "older");
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  rlimit full = before;
  full.rlim_cur = 100;
  std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &full);
  for (const int size : {200, 100'000}) EXPECT_THROW(SaveFile(path, QByteArray(size, 'x')), Error) << size;
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(ReadFile(path), "older");
  EXPECT_EQ(EntriesOf(folder.path()), QStringList(u"a.pdf"_s)) << "nothing half written";
}

TEST(CsfExport, WritesEveryFigureOnItsOwnLineAndNothingOfABrokenSeries) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"a.csf"_s);
  CData data = DistinctData();
  const CData lists = PageData::Simple();
  data.SetDescription(u"Øl\nbrewed"_s);
  data.SetNumberOfPlotPoints(8);
  data.SetXBarOutputString(lists.XBarOutputString());
  data.SetRBarOutputString(lists.RBarOutputString());
  data.SetHistogramBinValuesOutputString(u"0,07,1,2.0,3,4,3,2,1,0,0,0"_s);
  data.SetHistogramLabelsOutputString(lists.HistogramLabelsOutputString());
  CsfExport::WriteCsf(PageData::Random({}), path);
  CsfExport::WriteCsf(data, path);
  QMap<QString, QString> names;
  for (const auto& [name, value] : FiguresOf(data).asKeyValueRange()) names[value.toString()] = name;
  QStringList lines;
  for (const QString& line : QString::fromUtf8(ReadFile(path)).split(u"\r\n"_s))
    lines << line + u"  "_s + names.value(line);
  Approved::Expect(lines);

  const QByteArray before = ReadFile(path);
  data.SetXBarOutputString(u"1,2"_s);
  EXPECT_THROW(CsfExport::WriteCsf(data, path), Error);
  EXPECT_EQ(ReadFile(path), before);
}

}  // namespace
