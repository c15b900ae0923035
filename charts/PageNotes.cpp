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

QString LineOf(const Trace::Run& run) {
  QStringList lead{run.count == 1 ? Words::Note::oneSample() : Words::Note::samples(run.count)};
  if (run.time.isValid()) lead << LocalTimes::Moment(run.time);
  if (!run.lot.isEmpty()) lead << Words::Note::lot(run.lot);
  return Words::Note::line(Words::Note::unplaced(), lead.join(u" \u00b7 "_s));
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

std::vector<std::pair<int, QString>> LettersAtPoints(const std::vector<LetteredNote>& notes) {
  std::vector<std::pair<int, QString>> letters;
  for (const LetteredNote& note : notes) {
    if (!letters.empty() && letters.back().first == note.point)
      letters.back().second += u',' + note.letter;
    else
      letters.emplace_back(note.point, note.letter);
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
  for (const Trace::Note& note : trace.Record().unplacedNotes) {
    const QString place =
        note.value.isEmpty() ? Words::Note::unplaced() : Words::Note::unplacedValue(note.value);
    items.push_back({{}, LineOf(place, {}, note)});
  }
  for (const Trace::Run& run : trace.Record().unplacedRuns) items.push_back({{}, LineOf(run)});
  return {std::move(items), [](int count) { return Words::Note::more(count); }};
}

// What the charts and the foot of the page tell of the points shown.
void StatPage::NoteShown(const QString& period) {
  const PointRange shown = ShownPoints();
  notes_ = LetterNotes(trace_, shown);
  noteTexts_ = NoteTexts(trace_, notes_, shown.last == static_cast<int>(charts_.xbar.values.size()));
  const auto stretches = trace_.Stretches(axis_, shown);
  for (ControlChart* chart : {&charts_.xbar, &charts_.r}) {
    chart->letters = LettersAtPoints(notes_);
    chart->axisStretches = stretches;
    chart->axisTitle = axis_ == AxisLabels::Times ? Words::AxisChoice::time() : Words::AxisChoice::lot();
    chart->period = period;
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
