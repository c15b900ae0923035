// Runs and notes in a library: written, moved with their samples, and what others do to these.
#include "library/LibraryWatch.h"
#include "library/Merge.h"
#include "library/TraceTables.h"
#include "tests/library/LibraryFixture.h"

namespace {

class TracingTest : public AnyLibraryFixture {
 protected:
  using Outcome = Library::Noted::Outcome;

  // "9 10! 11|12|" with runs between the bars, * where none is known, and ! behind a sample with a note; then
  // how many samples each unplaced run had, and the unplaced notes.
  QString Told() { return Told(*library->Read(1)->data); }
  QString Told(const CData& data) {
    const Trace::Record record = others->TraceOf(data);
    QString told;
    qint64 last = -1;
    const QStringList samples = Trace::SamplesIn(data.DelimitedInputString());
    for (qsizetype at = 0; at < samples.size(); ++at) {
      const Trace::Run* run = record.RunAt(at);
      const qint64 number = run ? run->number : 0;
      if (number != last) told += run ? u"|"_s : u"*"_s;
      last = number;
      told += samples[at] + (record.NoteAt(at) ? u"! "_s : u" "_s);
    }
    for (const Trace::Run& run : record.unplacedRuns) told += u"-%1 "_s.arg(run.count);
    for (const Trace::Note& note : record.unplacedNotes) told += u"-%1=%2 "_s.arg(note.value, note.text);
    return told.trimmed();
  }
  void Append(const QStringList& values) { library->Append(u"A"_s, values, now); }
  Outcome Note(const CData& data, qsizetype sample, const QString& seen, const QString& text) {
    return library->SetNote(data, sample, seen, text, u"ann"_s, now).outcome;
  }
  void Save(const QString& values, const Trace::Origins& origins = {}) {
    Save(library->Read(1)->data, values, origins);
  }
  void Save(const CDataPtr& data, const QString& values, const Trace::Origins& origins = {}) {
    data->SetDelimitedInputString(values);
    data->SetSampleOrigins(origins);
    ASSERT_EQ(library->Save(*data, now).outcome, Library::Saved::Outcome::Written);
    EXPECT_TRUE(data->SampleOrigins().empty());
  }
};

}  // namespace

ON_BOTH(TracingTest);

TEST_P(TracingTest, AnAppendIsOneRunOfItsTimeAndLot) {
  const CDataPtr data = Added(u"A"_s);
  EXPECT_TRUE(library->TraceOf(*data).IsEmpty());
  EXPECT_EQ(others->Database().Has(u"SampleNote"_s), GetParam() == Place::Server) << "made when needed";
  Append({u"12"_s, u"13"_s});
  const QDateTime there(QDate(2024, 2, 29), QTime(23, 30), Qt::OffsetFromUTC, -3600);
  library->Append(u"A"_s, {u"14"_s}, now, Library::Limits::Stay, {there, u"L7"_s});
  const Trace::Record record = library->TraceOf(*library->Read(1)->data);
  ASSERT_EQ(record.runs.size(), 2U);
  EXPECT_EQ(record.runs[0].time, now);
  EXPECT_EQ(record.runs[1],
            (Trace::Run{10, 1, QDateTime(QDate(2024, 3, 1), QTime(0, 30), Qt::UTC), u"L7"_s, 2}));
  EXPECT_EQ(Value(u"SELECT TakenAt FROM SampleRun WHERE Entry = 2"_s), u"2024-03-01T00:30:00Z"_s);
  EXPECT_EQ(library->TraceOf(*data).unplacedRuns.size(), 2U) << "of a version without these samples";

  // Storage grows with runs, not with samples.
  Append(QStringList(500, u"10"_s));
  EXPECT_EQ(Number(u"SELECT count(*) FROM SampleRun"_s), 3);
  const auto bore = NewDataSet(u"B"_s);
  library->Add(*bore, now, {{0, 3, now, u"L1"_s}, {3, 5, {}, u"L2"_s}});
  const auto runs = library->TraceOf(*bore).runs;
  ASSERT_EQ(runs.size(), 2U);
  EXPECT_EQ(runs[1].lot + QString::number(runs[1].number), u"L22"_s);
  EXPECT_FALSE(runs[1].time.isValid());
}

TEST_P(TracingTest, TheyGoWithTheirSamplesWhereASaveChangesThese) {
  CDataPtr mine = Added(u"A"_s);
  Append({u"12"_s, u"13"_s});
  Append({u"14"_s});
  ASSERT_EQ(Note(*library->Read(1)->data, 9, {}, u"new tool"_s), Outcome::Written);
  EXPECT_EQ(Told(), u"*9 10 11 10 9 10 11 10 |12 13! |14"_s);
  Save(u"11,10,9,10,11,10,12,13.5,14,"_s);
  EXPECT_EQ(Told(), u"*11 10 9 10 11 10 |12 13.5! |14"_s) << "cut in front, and corrected";
  // What a user does with lines of equal values is known to the editor only.
  Save(u"11,10,9,10,11,10,12,12,14,"_s, {0, 1, 2, 3, 4, 5, 7, Trace::isNew, 8});
  EXPECT_EQ(Told(), u"*11 10 9 10 11 10 |12! *12 |14"_s);
  Save(u"11,10,9,10,11,10,12,14,"_s, {0, 1, 2});  // of another text
  EXPECT_EQ(Told(), u"*11 10 9 10 11 10 |12! |14"_s);

  // My edit, and what another hand has put behind meanwhile.
  mine = others->Read(1)->data;
  Append({u"15"_s});
  ASSERT_EQ(Note(*library->Read(1)->data, 8, {}, u"warm"_s), Outcome::Written);
  Save(mine, u"9,10,11,10,14,"_s);
  EXPECT_EQ(Told(), u"*9 10 11 10 |14 |15! -1 -12=new tool"_s);
  Append({u"12"_s});
  EXPECT_EQ(Told(), u"*9 10 11 10 |14 |15! |12 -1 -12=new tool"_s) << "what is unplaced stays so";
}

TEST_P(TracingTest, WhatAProgramThatDoesNotKnowThemChangesIsUnplacedFromThere) {
  Added(u"A"_s);
  Append({u"12"_s, u"13"_s});
  Append({u"14"_s, u"15"_s});
  const CDataPtr before = library->Read(1)->data;
  for (const qsizetype sample : {8, 11}) Note(*before, sample, {}, u"n%1"_s.arg(sample));
  const auto set = [&](const QString& values) {
    Execute(u"UPDATE StatData SET \"Values\" = '%1' WHERE ID = 1"_s.arg(values));
  };
  const QString whole = Values();
  set(whole + u" 16 ,"_s);
  EXPECT_EQ(Told(), u"*9 10 11 10 9 10 11 10 |12! 13 |14 15! *16"_s);
  set(QString(whole).replace(u"14"_s, u"14.5"_s));
  EXPECT_EQ(Told(), u"*9 10 11 10 9 10 11 10 |12! 13 *14.5 15 -2 -15=n11"_s);
  EXPECT_EQ(Told(*before), u"*9 10 11 10 9 10 11 10 |12! 13 |14 15!"_s) << "of the version that they are of";
  set(whole);
  EXPECT_EQ(Told(), u"*9 10 11 10 9 10 11 10 |12! 13 |14 15!"_s) << "nothing has been written";
  // The same samples again are others.
  set(u"9,10,11,10,9,10,11,10,12,13,14,"_s);
  Append({u"15"_s});
  EXPECT_EQ(Told(), u"*9 10 11 10 9 10 11 10 |12! 13 *14 |15 -2 -15=n11"_s);
  set(u"9,9,10,11,10,9,10,11,10,12,13,14,15,"_s);
  Save(u"9,10,11,10,9,10,11,10,12,13,14,15,"_s);
  EXPECT_EQ(Told(), u"*9 10 11 10 9 10 11 10 12 13 14 15 -2 -2 -1 -12=n8 -15=n11"_s);

  // They are put on other samples or removed by hand; what has samples is not.
  const CDataPtr shown = library->Read(1)->data;
  const Trace::Record lost = library->TraceOf(*shown);
  const qint64 note = lost.unplacedNotes.at(0).number;
  Note(*shown, 0, {}, u"here"_s);
  EXPECT_EQ(library->PlaceNote(*shown, note, 0).theirs.text, u"here");
  EXPECT_EQ(library->PlaceNote(*shown, note, 11).outcome, Outcome::Written);
  EXPECT_EQ(library->PlaceNote(*shown, note, 10).outcome, Outcome::Gone) << "it has a sample";
  Append({u"16"_s});
  const CDataPtr longer = library->Read(1)->data;
  const Trace::Record known = library->TraceOf(*longer);
  const auto traces = library->TracesOf(library->ReadAll());
  EXPECT_EQ(traces.at(0).unplacedRuns, known.unplacedRuns);
  EXPECT_EQ(traces.at(0).notes, known.notes);
  std::vector<qint64> runs{known.runs.at(0).number};
  for (const Trace::Run& run : lost.unplacedRuns) runs.push_back(run.number);
  library->RemoveUnplaced(*longer, runs, {note, lost.unplacedNotes.at(1).number});
  EXPECT_EQ(Told(), u"*9! 10 11 10 9 10 11 10 12 13 14 15! |16"_s);
}

TEST_P(TracingTest, ANoteIsWrittenReplacedAndRemovedWhereItsSampleNowIs) {
  const CDataPtr seen = Added(u"A"_s);
  LibraryWatch watch(path);
  EXPECT_EQ(Note(*seen, 1, {}, u"  new tool "_s), Outcome::Written);
  EXPECT_EQ(News(watch)->changed, std::vector<qint64>{1}) << "the others are told";
  const Trace::Record record = library->TraceOf(*seen);
  EXPECT_EQ(record.notes, (std::vector<Trace::Note>{{1, u"new tool"_s, u"ann"_s, now.toUTC(), u"10"_s, 1}}));
  EXPECT_EQ(library->Read(1)->data->LastModified(), seen->LastModified());

  EXPECT_EQ(Note(*seen, 1, {}, u"old tool"_s), Outcome::Conflict);
  EXPECT_EQ(library->SetNote(*seen, 1, {}, u"old tool"_s, u"bob"_s, now).theirs, record.notes[0]);
  EXPECT_EQ(Note(*seen, 1, {}, u"new tool"_s), Outcome::Written) << "as both want it";
  Save(u"8,9,10,11,10,9,10,11,10,"_s);
  library->SetNote(*seen, 1, u"new tool"_s, u"old tool"_s, u"bob"_s, now);
  EXPECT_EQ(library->TraceOf(*seen).notes[0].author, u"bob") << "who wrote it last";
  EXPECT_EQ(Note(*seen, 5, {}, u"warm"_s), Outcome::Written);
  EXPECT_EQ(Told(), u"*8 9 10! 11 10 9 10! 11 10"_s);
  EXPECT_EQ(Note(*seen, 1, u"old tool"_s, {}), Outcome::Written);
  EXPECT_EQ(Told(), u"*8 9 10 11 10 9 10! 11 10"_s);
  EXPECT_EQ(library->SetNote(*seen, 1, u"old tool"_s, u"x"_s, u"bob"_s, now).theirs.text, QString());

  const CDataPtr shown = library->Read(1)->data;
  Save(u"11,10,9,10,11,10,"_s);
  EXPECT_EQ(Note(*shown, 1, {}, u"x"_s), Outcome::Gone);
  EXPECT_EQ(Note(*shown, 9, {}, u"x"_s), Outcome::Gone);
  library->Rename(1, u"AA"_s, now);
  EXPECT_EQ(Note(*shown, 3, {}, u"x"_s), Outcome::Written);
  library->Delete(1, now);
  EXPECT_EQ(Note(*shown, 3, u"x"_s, u"y"_s), Outcome::Gone);
}

TEST_P(TracingTest, WhatIsDeletedAndCopiedKeepsThem) {
  Added(u"A"_s);
  Append({u"12"_s});
  Note(*library->Read(1)->data, 8, {}, u"new tool"_s);
  const QString told = Told();
  library->CopyTo(folder.filePath(u"copy"_s));
  Library copy(folder.filePath(u"copy"_s));
  EXPECT_EQ(copy.TraceOf(*copy.Read(1)->data).notes.size(), 1U);
  library->Delete(1, now);
  library->Restore(library->DeletedDataSets().front());
  EXPECT_EQ(Told(), told);
  library->Delete(1, now);
  library->Purge(library->DeletedDataSets().front());
  EXPECT_EQ(Number(u"SELECT (SELECT count(*) FROM SampleRun) + (SELECT count(*) FROM SampleNote)"_s), 0);
}

TEST_P(TracingTest, ManyRunsAreWrittenAsTheyAre) {
  const CDataPtr data = NewDataSet(u"A"_s);
  data->SetDelimitedInputString(u"9,10,11,10,"_s.repeated(500));
  std::vector<Trace::Run> runs;
  for (qsizetype first = 0; first < 2000; first += 2) runs.push_back({first, 2, now.addSecs(first), u"L"_s});
  library->Add(*data, now, runs);
  for (std::size_t i = 0; i < runs.size(); ++i) runs[i].number = static_cast<qint64>(i) + 1;
  EXPECT_EQ(library->TraceOf(*data).runs, runs);
}
