#include "data/Trace.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <numeric>

#include "platform/error/Error.h"
#include "texts/NumberWords.h"

namespace {

using namespace Trace;

// Pairs of equal samples that are looked at.
constexpr qsizetype mostPairs = 4'000'000;

struct Span {
  qsizetype begin, end;
  qsizetype Size() const { return end - begin; }
};

// Two texts of samples, and which of the first became which of the second.
class Difference {
 public:
  Difference(const QStringList& before, const QStringList& after)
      : before_(before), after_(after), origins_(static_cast<std::size_t>(after.size()), isNew) {}

  Origins Run() {
    Span left{0, before_.size()}, right{0, after_.size()};
    while (left.Size() > 0 && right.Size() > 0 && before_[left.begin] == after_[right.begin])
      Keep(left.begin++, right.begin++);
    while (left.Size() > 0 && right.Size() > 0 && before_[left.end - 1] == after_[right.end - 1])
      Keep(--left.end, --right.end);
    if (!IsPartOf(left, right) && !HasPart(left, right)) KeepMost(left, right);
    PairReplaced(left, right);
    return origins_;
  }

 private:
  void Keep(qsizetype before, qsizetype after) {
    origins_[static_cast<std::size_t>(after)] = static_cast<qint32>(before);
  }

  // Samples only came, or only went: each stays with the first that can be its own.
  bool IsPartOf(Span left, Span right) {
    std::vector<qsizetype> places;
    for (qsizetype at = right.begin; at < right.end && std::ssize(places) < left.Size(); ++at)
      if (after_[at] == before_[left.begin + std::ssize(places)]) places.push_back(at);
    if (std::ssize(places) < left.Size()) return false;
    for (const qsizetype place : places) Keep(left.begin++, place);
    return true;
  }

  bool HasPart(Span left, Span right) {
    std::vector<qsizetype> places;
    for (qsizetype at = left.begin; at < left.end && std::ssize(places) < right.Size(); ++at)
      if (before_[at] == after_[right.begin + std::ssize(places)]) places.push_back(at);
    if (std::ssize(places) < right.Size()) return false;
    for (const qsizetype place : places) Keep(place, right.begin++);
    return true;
  }

  // The longest common subsequence: the longest rising one among the pairs of equal samples (Hunt and
  // Szymanski, Communications of the ACM 20, 1977).
  void KeepMost(Span left, Span right) {
    QHash<QString, std::vector<qsizetype>> places;  // before, falling
    for (qsizetype at = left.end; at-- > left.begin;) places[before_[at]].push_back(at);
    QHash<QString, qsizetype> times;
    qsizetype pairs = 0;
    for (qsizetype at = right.begin; at < right.end; ++at) {
      ++times[after_[at]];
      pairs += static_cast<qsizetype>(places.value(after_[at]).size());
    }
    struct Link {
      qsizetype before, after, previous;
    };
    std::vector<Link> links;
    std::vector<qsizetype> best;  // the link that ends the sequence of that length earliest
    for (qsizetype at = right.begin; at < right.end; ++at) {
      const auto found = places.constFind(after_[at]);
      if (found == places.cend()) continue;
      if (pairs > mostPairs && (found->size() > 1 || times[after_[at]] > 1)) continue;
      for (const qsizetype place : *found) {
        const auto length = std::ranges::lower_bound(
            best, place, {}, [&](qsizetype link) { return links[static_cast<std::size_t>(link)].before; });
        if (length != best.end() && links[static_cast<std::size_t>(*length)].before == place) continue;
        links.push_back({place, at, length == best.begin() ? -1 : *(length - 1)});
        const auto link = std::ssize(links) - 1;
        if (length == best.end())
          best.push_back(link);
        else
          *length = link;
      }
    }
    for (qsizetype link = best.empty() ? -1 : best.back(); link >= 0;) {
      const Link& kept = links[static_cast<std::size_t>(link)];
      Keep(kept.before, kept.after);
      link = kept.previous;
    }
  }

  // Between two samples that stay: as many came as went.
  void PairReplaced(Span left, Span right) {
    qsizetype before = left.begin;
    for (qsizetype at = right.begin; at < right.end;) {
      qsizetype next = at;
      while (next < right.end && origins_[static_cast<std::size_t>(next)] == isNew) ++next;
      const qsizetype stays = next < right.end ? origins_[static_cast<std::size_t>(next)] : left.end;
      if (next - at == stays - before)
        while (at < next) Keep(before++, at++);
      before = stays + 1;
      at = next + 1;
    }
  }

  const QStringList& before_;
  const QStringList& after_;
  Origins origins_;
};

}  // namespace

QString Trace::LotIn(const QString& text) {
  constexpr qsizetype mostLetters = 100;
  const QString lot = text.trimmed();
  const bool isOneLine = std::ranges::all_of(lot, [](QChar c) { return c == u'\t' || c.isPrint(); });
  if (!isOneLine) throw InputError(Words::Times::lotOfLines());
  if (lot.size() > mostLetters) throw InputError(Words::Times::longLot(lot.size(), mostLetters));
  return lot.simplified();
}

bool Trace::Record::IsEmpty() const {
  return runs.empty() && notes.empty() && unplacedRuns.empty() && unplacedNotes.empty();
}

const Trace::Run* Trace::Record::RunAt(qsizetype sample) const {
  const auto behind = std::ranges::upper_bound(runs, sample, {}, &Run::first);
  if (behind == runs.begin() || (behind - 1)->End() <= sample) return nullptr;
  return &*(behind - 1);
}

const Trace::Note* Trace::Record::NoteAt(qsizetype sample) const {
  const auto [first, end] = NotesOn(sample, 1);
  return first == end ? nullptr : first;
}

std::pair<const Trace::Note*, const Trace::Note*> Trace::Record::NotesOn(qsizetype first,
                                                                         qsizetype count) const {
  const auto place = [&](qsizetype sample) {
    return notes.data() + (std::ranges::lower_bound(notes, sample, {}, &Note::sample) - notes.begin());
  };
  return {place(first), place(first + count)};
}

void Trace::Record::Unplace(const std::vector<Run>& gone) {
  QSet<qint64> placed;
  for (const Run& run : runs) placed.insert(run.number);
  QHash<qint64, std::size_t> listed;
  for (const Run& run : gone) {
    if (placed.contains(run.number)) continue;
    if (const auto entry = listed.constFind(run.number); entry != listed.cend()) {
      unplacedRuns[*entry].count += run.count;
    } else {
      listed[run.number] = unplacedRuns.size();
      unplacedRuns.push_back(run);
    }
  }
}

Trace::Origins Trace::Unchanged(qsizetype count) {
  Origins origins(static_cast<std::size_t>(count));
  std::iota(origins.begin(), origins.end(), 0);
  return origins;
}

QStringList Trace::SamplesIn(const QString& values) {
  QStringList samples;
  for (const QString& sample : values.split(u',')) samples << sample.trimmed();
  if (samples.last().isEmpty()) samples.removeLast();
  return samples;
}

Trace::Origins Trace::ByDifference(const QStringList& before, const QStringList& after) {
  return Difference(before, after).Run();
}

Trace::Origins Trace::WithReturned(const Origins& origins, const QStringList& before,
                                   const QStringList& after) {
  Origins returned = origins;
  qsizetype gone = 0;  // the first one that may come back
  for (qsizetype at = 0; at < after.size(); ++at) {
    if (returned[static_cast<std::size_t>(at)] != isNew) {
      gone = returned[static_cast<std::size_t>(at)] + 1;
      continue;
    }
    qsizetype next = at;
    while (next < after.size() && returned[static_cast<std::size_t>(next)] == isNew) ++next;
    const qsizetype stays = next < after.size() ? returned[static_cast<std::size_t>(next)] : before.size();
    const QStringList went = before.mid(gone, std::max<qsizetype>(0, stays - gone));
    const Origins found = went.isEmpty() ? Origins() : ByDifference(went, after.mid(at, next - at));
    for (std::size_t i = 0; i < found.size(); ++i) {
      const qsizetype place = at + static_cast<qsizetype>(i);
      if (found[i] != isNew && went[found[i]] == after[place])
        returned[static_cast<std::size_t>(place)] = static_cast<qint32>(gone + found[i]);
    }
    at = next - 1;
  }
  return returned;
}

Trace::Origins Trace::Through(const Origins& first, const Origins& second) {
  Origins origins = second;
  for (qint32& origin : origins)
    if (origin != isNew) origin = first[static_cast<std::size_t>(origin)];
  return origins;
}

Trace::Origins Trace::Back(const Origins& origins, qsizetype count) {
  Origins back(static_cast<std::size_t>(count), isNew);
  for (std::size_t at = 0; at < origins.size(); ++at)
    if (origins[at] != isNew) back[static_cast<std::size_t>(origins[at])] = static_cast<qint32>(at);
  return back;
}

Trace::Record Trace::Moved(const Record& record, const Origins& origins, const QStringList& after) {
  Record moved;
  moved.unplacedRuns = record.unplacedRuns;
  moved.unplacedNotes = record.unplacedNotes;
  std::vector<bool> noteIsPlaced(record.notes.size());
  for (qsizetype at = 0; at < std::ssize(origins); ++at) {
    const qint32 origin = origins[static_cast<std::size_t>(at)];
    if (origin == isNew) continue;
    if (const Run* run = record.RunAt(origin)) {
      const bool goesOn =
          !moved.runs.empty() && moved.runs.back().End() == at && moved.runs.back().number == run->number;
      if (!goesOn) {
        moved.runs.push_back(*run);
        moved.runs.back().first = at;
        moved.runs.back().count = 0;
      }
      ++moved.runs.back().count;
    }
    if (const Note* note = record.NoteAt(origin)) {
      noteIsPlaced[static_cast<std::size_t>(note - record.notes.data())] = true;
      moved.notes.push_back(*note);
      moved.notes.back().sample = at;
      moved.notes.back().value = after[at];
    }
  }
  for (std::size_t i = 0; i < record.notes.size(); ++i)
    if (!noteIsPlaced[i]) moved.unplacedNotes.push_back(record.notes[i]);
  moved.Unplace(record.runs);
  return moved;
}
