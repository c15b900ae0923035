// Times, lots and notes on the page: which point has which, where they stand, and that nothing touches.

#include <set>

#include "platform/chart/StretchLabels.h"
#include "tests/charts/PageData.h"
#include "tests/charts/Painting.h"
#include "tests/support/Refusal.h"

namespace {

using namespace Qt::StringLiterals;
using Kind = Painting::Kind;
const QColor teal(0, 128, 128);  // the plates of the letters

const QDateTime noon = QDateTime(QDate(2026, 10, 30), QTime(12, 0)).toUTC();  // here

// Runs of three samples, a third of a day apart, in lots of four runs; none of the first ten samples.
std::shared_ptr<Trace::Record> Traced(qsizetype samples) {
  auto record = std::make_shared<Trace::Record>();
  for (qsizetype first = 10; first < samples; first += 3) {
    const qint64 run = (first - 10) / 3;
    record->runs.push_back({.first = first,
                            .count = std::min<qsizetype>(3, samples - first),
                            .time = noon.addSecs(run * 28800),
                            .lot = u"L-%1"_s.arg(run / 4),
                            .number = run + 1});
  }
  return record;
}

Trace::Note NoteOn(qsizetype sample, const QString& text, const QString& author, const QString& value = {}) {
  Trace::Note note;
  note.sample = sample;
  note.text = text;
  note.author = author;
  note.value = value;
  return note;
}

void AddNotes(Trace::Record& record, int count, const QString& text, qsizetype apart = 5) {
  for (int i = 0; i < count; ++i) record.notes.push_back(NoteOn(i * apart, text.arg(i + 1), u"lee"_s));
}

TEST(PageNotes, APointHasWhatItsSamplesHave) {
  auto record = Traced(50);
  AddNotes(*record, 3, u"note %1"_s, 7);  // on the samples 0, 7 and 14
  record->notes.push_back(NoteOn(13, u"another"_s, u"kim"_s));
  std::ranges::sort(record->notes, {}, &Trace::Note::sample);
  const PointTrace trace(record, 5, 8);
  EXPECT_FALSE(trace.TimeOf(2).isValid());
  EXPECT_EQ(trace.TimeOf(3), noon.addSecs(28800)) << "of its last sample, the fifteenth";
  EXPECT_EQ(trace.LotOf(6), u"L-1");
  EXPECT_EQ(trace.NotesOn(1).size(), 1u);
  EXPECT_EQ(trace.NotesOn(3).size(), 2u);
  const auto notes = LetterNotes(trace, {2, 8});
  EXPECT_EQ(LettersAtPoints(notes), (std::vector<PointLetters>{{2, u"A"_s, u"A"_s}, {3, u"B"_s, u"C"_s}}));

  // On the clock of this place, the day of the end included.
  const QDate day = noon.toLocalTime().date();
  const auto in = [&](QDate since, QDate until) {
    const auto points = trace.PointsIn({since, until});
    return points ? u"%1-%2"_s.arg(points->first).arg(points->last) : u"none"_s;
  };
  EXPECT_EQ(in({}, {}), u"3-8");
  EXPECT_EQ(in(day.addDays(1), day.addDays(2)), u"4-6");
  EXPECT_EQ(in({}, day.addDays(-1)), u"none");
  EXPECT_EQ(in(day.addDays(4), {}), u"none") << "those samples make no point yet";
  EXPECT_EQ(Period::Month({2026, 1, 31}, -1).since, QDate(2025, 12, 1));
  EXPECT_EQ(Period::Month({2026, 1, 31}, 1).until, QDate(2026, 2, 28));
}

TEST(PageNotes, LabelsOfTheAxisNeverTouchAndSayADayOnce) {
  const auto record = Traced(200);
  const PointTrace trace(record, 1, 200);
  for (const double wide : {200.0, 500.0, 3000.0}) {
    const auto stretches = trace.Stretches(AxisLabels::Times, {1, 200});
    const auto labels = PlaceStretchLabels(
        stretches, 0, wide, [&](double at) { return at / 201 * wide; },
        [](const QString& text) { return 7.0 * double(text.size()); });
    ASSERT_GE(labels.size(), 2u);
    double end = 0;
    QString day;
    for (const StretchLabel& label : labels) {
      const double half = 3.5 * double(label.text.size());
      EXPECT_GE(label.x - half, end - 1e-6) << label.text.toStdString();
      end = label.x + half;
      // What stands there is that point's day, or its time on the day that was said last.
      const int point = qRound(label.x / wide * 201);
      const QDateTime time = trace.TimeOf(point).toLocalTime();
      if (!time.isValid()) {
        EXPECT_EQ(label.text, u"#%1"_s.arg(point));
      } else if (label.text != time.time().toString(u"HH:mm"_s)) {
        EXPECT_EQ(label.text, time.date().toString(Qt::ISODate));
        EXPECT_NE(label.text, day);
        day = label.text;
      } else {
        EXPECT_EQ(day, time.date().toString(Qt::ISODate));
      }
    }
    EXPECT_LE(end, wide);
  }
  const auto lots = trace.Stretches(AxisLabels::Lots, {11, 40});
  ASSERT_EQ(lots.size(), 3u);
  EXPECT_EQ(lots[1].heading, u"L-1");
  EXPECT_EQ(lots[1].from, 23);
  EXPECT_TRUE(PointTrace(record, 1, 5).Stretches(AxisLabels::Times, {1, 5}).empty()) << "no point has a time";
}

// On paper as wide as A4 at 96 dots per inch, no letters below 7 points.
const QRectF charts(0, 0, 0.6 * 1047, 718);
Painting OnPaper(const StatPage& page) { return Painting(page, {1047, 718}, 7.0 / 72 * 96); }

TEST(PageNotes, TwentyNotesAreReadableAndNothingTouches) {
  const CData data = PageData::Random({.subgroups = 40});
  auto record = Traced(200);
  AddNotes(*record, 20, u"note %1: the second nozzle was cleaned and the pressure set again by the book"_s);
  for (const auto axis : {AxisLabels::Numbers, AxisLabels::Times, AxisLabels::Lots}) {
    const Painting sheet =
        OnPaper(StatPage(data, {.fittedScale = true, .trace = record, .axis = axis, .printedHead = true}));
    const Shapes texts = sheet.Texts();
    ExpectApart(texts, texts);
    for (const PaintedShape& text : texts) {
      EXPECT_GE(text.font.pixelSize(), 9) << text.text.toStdString();
      EXPECT_LE(text.Place().bottom(), 718);
    }
    const QStringList words = sheet.Words();
    for (char16_t letter = u'A'; letter <= u'T'; ++letter)
      EXPECT_EQ(words.count(QString(QChar(letter))), 3) << "in both charts and beneath: " << char(letter);
    const QString all = words.join(u' ');
    for (int i = 1; i <= 20; ++i) EXPECT_TRUE(all.contains(u"note %1: the second"_s.arg(i))) << i;
    EXPECT_FALSE(all.contains(u'\u2026')) << "there is room for all of it";
    EXPECT_TRUE(all.contains(u"point 20 \u00b7 "_s)) << all.toStdString();
    const QString titles[] = {u"Sample"_s, u"Time"_s, u"Lot"_s};
    EXPECT_EQ(words.count(titles[int(axis)]), 2);
    const Shapes plates = sheet.Find(Kind::Rectangle, teal, charts);
    EXPECT_GE(plates.size(), 40u);
    ExpectApart(plates, sheet.Find(Kind::Ellipse));
    ExpectApart(plates, sheet.Find(Kind::Polygon, QColor(255, 0, 0)));
  }
}

// Twenty among a thousand points: side by side, apart, in clusters, at the ends, beyond the limits; and more
// than there is room for.
TEST(PageNotes, NoLetterIsLeftOutOfACrowdedChart) {
  const auto every = [](int from, int count, int apart) {
    std::vector<int> points;
    for (int i = 0; i < count; ++i) points.push_back(from + i * apart);
    return points;
  };
  auto edges = every(0, 10, 1), clusters = every(150, 10, 2);
  std::ranges::copy(every(990, 10, 1), std::back_inserter(edges));
  std::ranges::copy(every(700, 10, 3), std::back_inserter(clusters));
  const std::vector<std::vector<int>> shapes{
      every(400, 20, 1), every(500, 20, 5), every(20, 20, 49), every(300, 20, 8), edges,
      clusters,          every(3, 90, 11)};
  for (size_t shape = 0; shape < shapes.size(); ++shape) {
    auto record = std::make_shared<Trace::Record>();
    for (const int point : shapes[shape]) record->notes.push_back(NoteOn(point, u"noted"_s, u"lee"_s));
    CData data = PageData::Random({.subgroups = 1000, .subgroupSize = 1});
    if (shape == 3) {
      QStringList values = data.DelimitedInputString().split(u',');
      for (const int point : shapes[shape]) values[point] = u"74.1"_s;
      data.SetDelimitedInputString(values.join(u','));
      ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(data));
    }
    for (const bool isFitted : {true, false}) {
      SCOPED_TRACE(testing::Message() << "shape " << shape << ", fitted " << isFitted);
      const Painting sheet =
          OnPaper(StatPage(data, {.fittedScale = isFitted, .trace = record, .printedHead = true}));
      const Shapes texts = sheet.Find(Kind::Text, {}, charts);
      const Shapes plates = sheet.Find(Kind::Rectangle, teal, charts);
      const Shapes curves = sheet.Find(Kind::Polyline, QColor(0, 0, 255), charts);
      const Shapes leaders = sheet.Find(Kind::Line, QColor(128, 128, 128), charts);
      ASSERT_GE(curves.size(), 2u);
      for (const Kind kind : {Kind::Polygon, Kind::Ellipse})
        ExpectApart(plates, sheet.Find(kind, {}, charts));
      ExpectApart(plates, plates);
      ExpectApart(texts, texts);
      for (const PaintedShape& plate : plates) {
        const QRectF box = plate.Place();
        for (const PaintedShape& curve : curves) EXPECT_FALSE(Crosses(curve.corners, box));
        for (const PaintedShape& leader : leaders)
          EXPECT_FALSE(Crosses(leader.corners, box.adjusted(0.2, 0.2, -0.2, -0.2)));
      }
      for (const PaintedShape& leader : leaders) {
        for (const PaintedShape& other : leaders) {
          const QLineF one(leader.corners[0], leader.corners[1]), two(other.corners[0], other.corners[1]);
          QPointF at;
          if (&leader == &other || one.intersects(two, &at) != QLineF::BoundedIntersection) continue;
          const auto isEnd = [&](QPointF end) { return QLineF(at, end).length() < 0.01; };
          EXPECT_TRUE(isEnd(one.p1()) || isEnd(one.p2()) || isEnd(two.p1()) || isEnd(two.p2()));
        }
      }
      // In each chart each letter once; only of ninety some stand for those between them.
      QStringList average, range;
      const double second = std::ranges::find(texts, u"Sample"_s, &PaintedShape::text)->Place().top();
      for (const PaintedShape& text : texts)
        if (text.ink == QColor(255, 255, 255))
          (text.Place().top() < second ? average : range) << text.text.split(u' ');
      const auto notes = LetterNotes(PointTrace(record, 1, 1000), {1, 1000});
      for (QStringList* letters : {&average, &range}) {
        const bool isFirstMissing = letters == &range && shapes[shape][0] == 0;  // it has no moving range
        if (shape == 6) {
          const QStringList some = letters->join(u'\u2013').split(u'\u2013');
          EXPECT_TRUE(some.first() <= u"B"_s && some.contains(u"CL"_s)) << some.join(u' ').toStdString();
          continue;
        }
        letters->sort();
        QStringList expected;
        for (const LetteredNote& note : notes) expected << note.letter;
        EXPECT_EQ(*letters, expected.mid(isFirstMissing));
      }
    }
  }
}

TEST(PageNotes, TooManyAreCutShortThenCountedAndWhatLostItsSamplesComesLast) {
  const CData data = PageData::Random({.subgroups = 200});
  auto record = std::make_shared<Trace::Record>();
  const QString text = u"note %1 "_s + u"with many words "_s.repeated(12);
  AddNotes(*record, 30, text);
  record->unplacedNotes = {NoteOn(0, u"lost"_s, u"kim"_s, u"74.5"_s)};
  record->unplacedRuns.resize(970);
  const QString unplaced = u"No longer on a sample: 970 runs, 1 note. "_s;
  const QStringList cut = OnPaper(StatPage(data, {.trace = record})).Words();
  const QString all = cut.join(u' ');
  EXPECT_TRUE(all.contains(u"note 30 ") && all.contains(u'\u2026'));
  EXPECT_TRUE(all.contains(unplaced)) << all.toStdString();

  record->notes.clear();
  AddNotes(*record, 200, text);
  const Painting foot = OnPaper(StatPage(data, {.trace = record}));
  for (const PaintedShape& shape : foot.Texts())
    EXPECT_TRUE(!shape.text.contains(u"lee: note"_s) || shape.Place().top() > 400) << "the charts have room";
  const QStringList most = foot.Words();
  const int listed = int(most.filter(u"lee: note"_s).size());
  EXPECT_GT(listed, 30);
  EXPECT_TRUE(most.join(u'|').contains(u"|and %1 more: "_s.arg(200 - listed))) << listed;
  EXPECT_TRUE(most.last().startsWith(unplaced)) << most.last().toStdString();

  // A stretch has its own letters, and nothing behind its last point.
  record->notes.push_back(NoteOn(1000, u"begun"_s, {}));
  const StatPage part(data, {.points = PointRange{11, 13}, .trace = record});
  EXPECT_EQ(part.NotesOn(12).at(0).letter, u"B");
  EXPECT_TRUE(part.NotesOn(10).empty());
  EXPECT_FALSE(OnPaper(part).Words().join(u' ').contains(u"begun"));

  record->notes.clear();
  AddNotes(*record, 2, u"note %1: a few words that no column of three has room for on one line of its own"_s);
  record->unplacedNotes.clear();
  record->unplacedRuns.clear();
  EXPECT_EQ(
      OnPaper(StatPage(data, {.trace = record})).Words().filter(u"of its own"_s).filter(u"lee"_s).size(), 2)
      << "few stand in fewer columns";
}

TEST(PageNotes, APeriodShowsThePointsThatWereTakenInIt) {
  const CData data = PageData::Random({.subgroups = 40});
  auto record = Traced(200);
  const QDate day = noon.toLocalTime().date();
  const Period period{day.addDays(2), day.addDays(5)};
  const StatPage page(data, {.trace = record, .period = period, .printedHead = true});
  for (int point = 1; point <= 40; ++point) {
    const auto& [first, last] = page.ShownPoints();
    EXPECT_EQ(period.Has(page.Trace().TimeOf(point)), point >= first && point <= last) << point;
  }
  const QString words =
      day.addDays(2).toString(Qt::ISODate) + u" to "_s + day.addDays(5).toString(Qt::ISODate);
  EXPECT_EQ(OnPaper(page).Words().filter(words).size(), 3) << "in the head and in both charts";
  const auto drawLater = [&] { StatPage(data, {.trace = record, .period = Period{day.addDays(200), {}}}); };
  EXPECT_TRUE(Refusal<InputError>(drawLater).contains(u"were taken from"));
}

}  // namespace
