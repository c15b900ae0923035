#include "charts/PageNotes.h"

#include <QStringList>
#include <algorithm>

#include "charts/StatPage.h"
#include "platform/chart/Palette.h"
#include "platform/language/LocalTimes.h"
#include "texts/NoteWords.h"

using namespace Qt::StringLiterals;

namespace {

QString LetterAt(qsizetype place) {
  QString letters;
  for (qsizetype rest = place + 1; rest > 0; rest = (rest - 1) / 26)
    letters.prepend(QChar(char16_t(u'A' + (rest - 1) % 26)));
  return letters;
}

// "point 38 · 23/11/2026 14:05 · lee: text"; where the moment of the samples is not known, when it was noted.
QString LineOf(const QString& place, const QDateTime& taken, const Trace::Note& note) {
  QStringList lead{place};
  if (taken.isValid())
    lead << LocalTimes::Moment(taken);
  else if (note.time.isValid())
    lead << Words::Note::noted(LocalTimes::Moment(note.time));
  if (!note.author.isEmpty()) lead << note.author;
  return Words::Note::line(lead.join(u" \u00b7 "_s), note.text.simplified());
}

QString Listed(const QStringList& parts) { return parts.join(u" \u00b7 "_s); }

}  // namespace

QString TakenText(const PointTrace& trace, int point) {
  QStringList parts;
  if (const QDateTime time = trace.TimeOf(point); time.isValid()) parts << LocalTimes::Moment(time);
  if (const QString lot = trace.LotOf(point); !lot.isEmpty()) parts << Words::Note::lot(lot);
  return Listed(parts);
}

QString NotedText(const Trace::Note& note) {
  QStringList parts{note.author, LocalTimes::Moment(note.time)};
  parts.removeAll(QString());
  return parts.join(u", "_s);
}

std::vector<LetteredNote> LetterNotes(const PointTrace& trace, PointRange shown) {
  std::vector<LetteredNote> lettered;
  for (const Trace::Note& note : trace.NotesOn(shown))
    lettered.push_back({LetterAt(std::ssize(lettered)), trace.PointOf(note), &note});
  return lettered;
}

std::vector<PointLetters> LettersAtPoints(const std::vector<LetteredNote>& notes) {
  std::vector<PointLetters> letters;
  for (const LetteredNote& note : notes) {
    if (!letters.empty() && letters.back().point == note.point)
      letters.back().last = note.letter;
    else
      letters.push_back({note.point, note.letter, note.letter});
  }
  return letters;
}

Paragraphs NoteTexts(const PointTrace& trace, const std::vector<LetteredNote>& notes, bool isToTheEnd) {
  std::vector<Paragraphs::Item> items;
  for (const LetteredNote& one : notes)
    items.push_back({one.letter, LineOf(Words::Note::point(one.point), trace.TimeOf(one.point), *one.note)});
  if (isToTheEnd) {
    for (const Trace::Note& note : trace.NotesBehindPoints())
      items.push_back({{}, LineOf(Words::Note::noPointYet(note.sample + 1), {}, note)});
  }
  const Trace::Record& record = trace.Record();
  const QString unplaced = CountText(record.unplacedRuns.size(), record.unplacedNotes.size());
  return {std::move(items), [](int count) { return Words::Note::more(count); },
          unplaced.isEmpty() ? QString() : Words::Unplaced::onPage(unplaced)};
}

QString CountText(size_t runs, size_t notes) {
  using namespace Words::Unplaced;
  const QString run = runs == 1 ? oneRun() : Words::Unplaced::runs(runs);
  const QString note = notes == 1 ? oneNote() : Words::Unplaced::notes(notes);
  return runs == 0 && notes == 0 ? QString() : notes == 0 ? run : runs == 0 ? note : both(run, note);
}

// What the charts and the foot of the page tell of the points shown.
void StatPage::NoteShown(const std::optional<Period>& period) {
  const PointRange shown = ShownPoints();
  notes_ = LetterNotes(trace_, shown);
  noteTexts_ = NoteTexts(trace_, notes_, shown.last == static_cast<int>(charts_.xbar.values.size()));
  const auto stretches = trace_.Stretches(axis_, shown);
  for (ControlChart* chart : {&charts_.xbar, &charts_.r}) {
    chart->letters = LettersAtPoints(notes_);
    chart->axisStretches = stretches;
    chart->axisTitle = axis_ == AxisLabels::Times ? Words::AxisChoice::time() : Words::AxisChoice::lot();
    chart->period = period ? period->Text() : QString();
  }
}

QString StatPage::PeriodText(const Period& period) const {
  int others = 0;
  for (int point = charts_.xbar.shown.first; point <= charts_.xbar.shown.last; ++point)
    others += !period.Has(trace_.TimeOf(point));
  return others == 0 ? period.Text() : Words::Period::withOthers(period.Text(), others);
}

std::vector<LetteredNote> StatPage::NotesOn(int number) const {
  std::vector<LetteredNote> found;
  for (const LetteredNote& note : notes_)
    if (note.point == number) found.push_back(note);
  return found;
}

// They take no more than a part of the room beneath the verdict, and less where letters are large: the charts
// are to be read first.
StatPage::NotesPlace StatPage::PlaceOfNotes(const QRectF& target) const {
  constexpr double mostHeight = 0.36, beside = 0.01;
  constexpr double chartsNeed = 26, least = 4;  // in heights of letters
  constexpr int letters = 4;
  NotesPlace place;
  place.pixels = TextPixels(letters, PageUnit(target), page_.SmallestText());
  const double top = VerdictArea(target).bottom();
  const double rims = place.pixels;  // above and below
  const double room = target.bottom() - top;
  const double most =
      std::min(room * mostHeight, std::max(room - chartsNeed * place.pixels, least * place.pixels));
  place.room = {target.width() * (1 - 2 * beside), most - rims};
  const double height = noteTexts_.IsEmpty() ? 0 : noteTexts_.Height(place.room, place.pixels);
  const double taken = height > 0 ? height + rims : 0;
  place.area =
      QRectF(target.left() + beside * target.width(), target.bottom() - taken, place.room.width(), taken);
  return place;
}

void StatPage::PaintNotes(QPainter& painter, const QRectF& target) const {
  const NotesPlace place = PlaceOfNotes(target);
  if (place.area.isEmpty()) return;
  painter.fillRect(QRectF(target.left(), place.area.top(), target.width(), place.area.height()),
                   Palette::Colour(Palette::White));
  noteTexts_.Paint(painter, place.area.topLeft() + QPointF(0, place.pixels / 2.0), place.room, place.pixels);
}
