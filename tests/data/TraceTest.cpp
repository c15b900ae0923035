#include "data/Trace.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace {

QStringList Samples(const QString& letters) { return letters.split(u' ', Qt::SkipEmptyParts); }

Trace::Run RunOf(qsizetype first, qsizetype count, qint64 number) { return {first, count, {}, {}, number}; }

// Where every sample came from, as digits; - for a new one.
QString Told(const Trace::Origins& origins) {
  QString told;
  for (const qint32 origin : origins) told += origin == Trace::isNew ? u"-"_s : QString::number(origin);
  return told;
}

}  // namespace

TEST(Trace, TheShortestDifferenceTellsWhichSamplesStay) {
  const struct {
    QString before, after, origins;
  } cases[] = {
      {u"a b c d"_s, u"a b c d e"_s, u"0123-"_s},    // added behind
      {u"a b c d e"_s, u"c d e f"_s, u"234-"_s},     // cut in front, and added behind
      {u"a b c"_s, u"a x b c"_s, u"0-12"_s},         // came
      {u"a b c"_s, u"a c"_s, u"02"_s},               // went
      {u"a b c"_s, u"a x c"_s, u"012"_s},            // corrected
      {u"a b c d"_s, u"x y c d"_s, u"0123"_s},       // two for two
      {u"a b c d"_s, u"x c d"_s, u"-23"_s},          // one for two: in nobody's place
      {u"a b c d e"_s, u"x c e y"_s, u"-24-"_s},     // two for one, and one too many
      {u"a b c d b"_s, u"x b d b y"_s, u"0134-"_s},  // one for one, and three that stay
      {u""_s, u"a"_s, u"-"_s},
      {u"a"_s, u""_s, u""_s},
  };
  for (const auto& [before, after, origins] : cases)
    EXPECT_EQ(Told(Trace::ByDifference(Samples(before), Samples(after))), origins) << before.toStdString();
}

TEST(Trace, WhatIsMadeAnewInItsPlaceIsWhatItWas) {
  const QStringList before = Samples(u"a b c d"_s);
  const auto returned = [&](const Trace::Origins& origins, const QString& after) {
    return Told(Trace::WithReturned(origins, before, Samples(after)));
  };
  EXPECT_EQ(returned({0, -1, -1, 3}, u"a x c d"_s), u"0-23"_s);        // b went, and c was made anew
  EXPECT_EQ(returned({0, -1, -1, 2, 3}, u"a b d c d"_s), u"01-23"_s);  // d has its own place
  EXPECT_EQ(returned({-1, -1, 3}, u"b a d"_s), u"-03"_s);              // one of the two stays
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
    std::vector<std::vector<int>> longest(static_cast<std::size_t>(before.size()) + 1,
                                          std::vector<int>(static_cast<std::size_t>(after.size()) + 1));
    for (std::size_t i = 0; i < longest.size() - 1; ++i)
      for (std::size_t k = 0; k < longest[0].size() - 1; ++k)
        longest[i + 1][k + 1] = before[static_cast<qsizetype>(i)] == after[static_cast<qsizetype>(k)]
                                    ? longest[i][k] + 1
                                    : std::max(longest[i][k + 1], longest[i + 1][k]);
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
