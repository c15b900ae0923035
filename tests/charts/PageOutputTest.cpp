// Files of the page: pictures, documents and the .csf export, whole or not at all.
#include "charts/PageOutput.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <csignal>

#include "charts/CsfExport.h"
#include "charts/SaveFile.h"
#include "core/Trap.h"
#include "tests/charts/PageData.h"

using namespace Qt::StringLiterals;

namespace {

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(PageOutput, WritesEveryFormat) {
  const QTemporaryDir folder;
  StatPage page(PageData::Simple(), {.printedHead = true});
  page.Select(GraphId::Histogram);
  const QString pdf = folder.filePath(u"a"_s), png = folder.filePath(u"b"_s), svg = folder.filePath(u"c"_s);
  PageOutput::WritePdf(page, pdf);
  PageOutput::WritePng(page, png, {640, 400});
  PageOutput::WriteSvg(page, svg);
  EXPECT_TRUE(Contents(pdf).startsWith("%PDF-"));
  EXPECT_GT(Contents(pdf).size(), 5000);
  const QByteArray picture = Contents(svg);
  for (const char* text : {" AVERAGE", " RANGE", " HISTOGRAM", "LCL=9.7, Mean=10, UCL=10.3", "Std. Dev"}) {
    EXPECT_TRUE(picture.contains(text)) << text;
  }
  const QImage image(png);
  StatPage plain = page;
  plain.Select(GraphId::None);
  PageOutput::WritePng(plain, svg, {640, 400});
  EXPECT_EQ(image, QImage(svg)) << "the frame of the selected graph is not for paper";
}

TEST(PageOutput, NamesTheFileItCannotWriteAndLeavesNothing) {
  const QTemporaryDir folder;
  const CData data = PageData::Simple();
  const StatPage page(data, {});
  const QString path = folder.filePath(u"missing/a"_s);
  const std::function<void()> writers[] = {
      [&] { PageOutput::WritePdf(page, path); }, [&] { PageOutput::WritePng(page, path); },
      [&] { PageOutput::WritePng(page, path, {}); }, [&] { PageOutput::WriteSvg(page, path); },
      [&] { CsfExport::WriteCsf(data, path); }};
  for (const auto& write : writers) {
    try {
      write();
      ADD_FAILURE() << "written";
    } catch (const Error& error) {
      EXPECT_TRUE(ErrorText(error).startsWith(path));
    }
  }
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
  EXPECT_EQ(Contents(path), "older");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList(u"a.pdf"_s)) << "nothing half written";
}

TEST(CsfExport, WritesTheLinesInTheirPlacesAndNothingOfABrokenSeries) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"a.csf"_s);
  CData data = PageData::Simple();
  data.SetDescription(u"Øl\nbrewed"_s);
  CsfExport::WriteCsf(PageData::Random({}), path);
  CsfExport::WriteCsf(data, path);
  EXPECT_EQ(
      Contents(path),
      u"Øl "
      u"brewed\r\n9\r\n11\r\n10\r\n9.1\r\n10.9\r\n0.25\r\n16\r\n2\r\n2\r\n1\r\n9.7\r\n10\r\n10.3\r\n0\r\n0."
      u"2\r\n"
      "0.5\r\nmm\r\nFalse\r\n1\r\n1\r\n2\r\n8\r\n2024-05-17\r\n"
      "10.0,10.1,9.9,10.4,10.0,9.8,10.2,50.0,\r\n0.1,0.2,0.3,0.2,0.1,0.2,0.3,0.2,\r\n"
      "0,0,1,2,3,4,3,2,1,0,0,0,\r\n9.0,9.2,9.3,9.5,9.7,9.8,10.0,10.2,10.3,10.5,10.7,10.8,\r\n"_s.toUtf8());

  const QByteArray before = Contents(path);
  data.SetXBarOutputString(u"1,2"_s);
  EXPECT_THROW(CsfExport::WriteCsf(data, path), Error);
  EXPECT_EQ(Contents(path), before);
}

}  // namespace
