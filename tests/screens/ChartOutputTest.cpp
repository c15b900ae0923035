// What leaves the chart screen: on paper, in files, on the clipboard.
#include "tests/screens/ChartScreenFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace {

class ChartOutputTest : public ChartScreenFixture {};

TEST_F(ChartOutputTest, Exports) {
  Open();
  for (const QString& none : {QString(), u"x"_s}) {
    files.Expect(none);
    Trigger("Toolbar1_5_1");
    EXPECT_FALSE(QFile::exists(u"x"_s));
  }
  for (int time = 0; time < 2; ++time)
    EXPECT_EQ(FileBy("Toolbar1_5_1", program.Path(u"shaft.csf"_s)).count("\r\n"), 28);
  files.Expect(program.Path(u"missing/shaft.csf"_s));
  Trigger("Toolbar1_5_1", {Answer::Ok});
}

TEST_F(ChartOutputTest, CopiesAPictureAndADrawing) {
  Open();
  Trigger("Toolbar1_5_2", {Answer::Ok});
  const QMimeData* formats = QGuiApplication::clipboard()->mimeData();
  EXPECT_GE(formats->imageData().value<QImage>().width(), 1920);
  EXPECT_TRUE(formats->data(u"image/svg+xml"_s).contains("Printed: 2024-02-29 13:45")) << "the head";
  EXPECT_TRUE(formats->data(u"application/pdf"_s).startsWith("%PDF"));
}

TEST_F(ChartOutputTest, SavesWhatIsInViewInTheFormatOfTheName) {
  Open();
  Drag(*view, PlaceOf(GraphId::R, 3), PlaceOf(GraphId::R, 6));
  Click(*screen, "cmdShowPoints");
  EXPECT_TRUE(FileBy("Toolbar1_5_4", program.Path(u"a.pdf"_s)).startsWith("%PDF"));
  EXPECT_TRUE(files.last.folder.endsWith(u"/Shaft.pdf"));
  EXPECT_FALSE(files.last.keepsExisting) << "the dialog asks before it replaces a file";
  EXPECT_TRUE(FileBy("Toolbar1_5_4", program.Path(u"a.png"_s)).startsWith("\x89PNG"));
  EXPECT_EQ(files.last.folder, program.Path(u"Shaft.pdf"_s)) << "where the last one went";
  EXPECT_TRUE(FileBy("Toolbar1_5_4", program.Path(u"a.svg"_s)).contains("points 3 to 6 of 10"));
  Trigger("Toolbar1_3");
  EXPECT_FALSE(FileBy("Toolbar1_5_4", program.Path(u"b.svg"_s)).contains("HISTOGRAM")) << "zoomed";
  files.Expect({});
  Trigger("Toolbar1_5_4");
  for (const auto& name : {u"missing/a.png"_s, u"a.jpg"_s}) {
    files.Expect(program.Path(name));
    Trigger("Toolbar1_5_4", {Answer::Ok});
  }
}

TEST_F(ChartOutputTest, PrintsToAFileWhereThereIsNoPrinter) {
  Open();
  Trigger("Toolbar1_1_2", {Answer::Ok});
  Trigger("Toolbar1_1_1", {Answer::No});
  program.boxes.Expect(Answer::Yes);
  EXPECT_TRUE(FileBy("Toolbar1_1_1", program.Path(u"a4.pdf"_s)).contains("/MediaBox [0 0 842"));
  EXPECT_TRUE(files.last.folder.endsWith(u"/Shaft.pdf"));
  Trigger("Toolbar1_1_3");
  EXPECT_TRUE(FileBy("Toolbar1_1_1", program.Path(u"letter.pdf"_s)).contains("/MediaBox [0 0 792"));
  files.Expect(program.Path(u"missing/a.pdf"_s));
  Trigger("Toolbar1_1_1", {Answer::Ok});
}

TEST_F(ChartOutputTest, PrintsOnThePrinterThatIsSetUp) {
  auto printers = std::make_unique<TestPrinters>(true);
  TestPrinters& desk = *printers;
  printing = PagePrinting(std::move(printers));
  Open();
  desk.paper = program.Path(u"paper"_s);
  Trigger("Toolbar1_1_3");
  Trigger("Toolbar1_1_1");  // and no file is asked for
  const QByteArray printed = ReadFile(desk.paper);
  EXPECT_TRUE(printed.contains("/MediaBox [0 0 792")) << "landscape";
  EXPECT_GT(printed.size(), 5000);
  EXPECT_EQ(desk.printer->docName(), u"Shaft");
  desk.printer->setOutputFileName({});
  desk.rejection = u"client-error-not-accepting-jobs"_s;
  Trigger("Toolbar1_1_1", {Answer::Ok});
  desk.rejection.clear();
  desk.paper.clear();
  Trigger("Toolbar1_1_2");  // to a file
  files.Expect({});
  Trigger("Toolbar1_1_1");
  EXPECT_EQ(files.last.folder, u"/nowhere/Shaft.pdf");
}

}  // namespace
