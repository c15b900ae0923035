#include "data/Trace.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/Cases.h"

using namespace Qt::StringLiterals;

namespace {

QStringList Samples(const QString& letters) { return letters.split(u' ', Qt::SkipEmptyParts); }

Trace::Run RunOf(qsizetype first, qsizetype count, qint64 number) { return {first, count, {}, {}, number}; }

}  // namespace

TEST(Trace, TheShortestDifferenceTellsWhichSamplesStay) {
  for (const auto& one :
       Cases(u"trace.json"_s, u"difference: before, after, where each came from, what it is"_s))
    EXPECT_EQ(Trace::ByDifference(Samples(one[0].toString()), Samples(one[1].toString())),
              Numbers<qint32>(one[2]))
        << one[3].toString().toStdString();
}

TEST(Trace, WhatIsMadeAnewInItsPlaceIsWhatItWas) {
  for (const auto& one :
       Cases(u"trace.json"_s, u"made anew: before, known, after, where each came from, what it is"_s))
    EXPECT_EQ(
        Trace::WithReturned(Numbers<qint32>(one[1]), Samples(one[0].toString()), Samples(one[2].toString())),
        Numbers<qint32>(one[3]))
        << one[4].toString().toStdString();
}

TEST(Trace, MovesRunsAndNotesWithTheirSamplesAndListsWhatIsLeft) {
  Trace::Record record;
  record.runs = {RunOf(0, 2, 1), RunOf(2, 3, 2), RunOf(6, 1, 3)};
  record.notes = {{2, u"tool changed"_s, {}, {}, u"c"_s, 1}, {6, u"dropped"_s, {}, {}, u"g"_s, 2}};
  const QStringList after = Samples(u"a b c x d e f"_s);
  const auto moved = Trace::Moved(record, {0, 1, 2, Trace::isNew, 3, 4, 5}, after);
  ASSERT_EQ(moved.runs.size(), 3U);
  EXPECT_EQ(moved.runs[1], RunOf(2, 1, 2));  // the second run in two stretches
  EXPECT_EQ(moved.runs[2], RunOf(4, 2, 2));
  ASSERT_EQ(moved.unplacedNotes.size(), 1U);
  EXPECT_EQ(moved.unplacedNotes[0].value, u"g"_s);
  EXPECT_EQ(moved.unplacedRuns, std::vector{RunOf(6, 1, 3)});
  EXPECT_EQ(moved.RunAt(3), nullptr);
  EXPECT_EQ(moved.RunAt(5)->number, 2);
  EXPECT_EQ(moved.NotesOn(0, 5).second - moved.NotesOn(0, 5).first, 1);

  // What is left of a run when its last stretch goes is told once, with all that went then.
  const auto gone = Trace::Moved(moved, {0, 1}, Samples(u"a b"_s));
  ASSERT_EQ(gone.unplacedRuns.size(), 2U);
  EXPECT_EQ(gone.unplacedRuns[1], RunOf(2, 3, 2));
  EXPECT_EQ(gone.unplacedNotes.size(), 2U);
}

// Against the definition: rising, of equal samples or of as many that were replaced, and as many equal ones
// as the table of the longest common subsequence says.
TEST(Trace, KeepsAsManySamplesAsCanStay) {
  std::mt19937 random(15);
  for (int round = 0; round < 300; ++round) {
    const auto text = [&] {
      QStringList samples;
      for (auto left = random() % 12; left > 0; --left) samples << QString::number(random() % 4);
      return samples;
    };
    const QStringList before = text(), after = text();
    QList<QList<int>> longest(before.size() + 1, QList<int>(after.size() + 1));
    for (qsizetype i = 0; i < before.size(); ++i)
      for (qsizetype k = 0; k < after.size(); ++k)
        longest[i + 1][k + 1] =
            before[i] == after[k] ? longest[i][k] + 1 : std::max(longest[i][k + 1], longest[i + 1][k]);
    const auto origins = Trace::ByDifference(before, after);
    int kept = 0;
    qint32 last = -1;
    for (std::size_t k = 0; k < origins.size(); ++k) {
      if (origins[k] == Trace::isNew) continue;
      ASSERT_GT(origins[k], last);
      last = origins[k];
      kept += before[last] == after[static_cast<qsizetype>(k)];
    }
    ASSERT_EQ(kept, longest.back().back())
        << before.join(u' ').toStdString() << " | " << after.join(u' ').toStdString();
  }
}
