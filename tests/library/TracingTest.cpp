// Runs and notes in a library: written, moved with their samples, and what others do to these.
#include "library/Merge.h"
#include "library/TraceTables.h"
#include "tests/library/LibraryFixture.h"

namespace {

class TracingTest : public AnyLibraryFixture {
 protected:
  using Outcome = Library::Noted::Outcome;

  QString When(const QDateTime& time) const {
    return time == now ? u"now"_s : time.toUTC().toString(Qt::ISODate);
  }
  // Each sample with the numbers of its run and its note.
  static QString Samples(const CData& data, const Trace::Record& record) {
    QStringList samples = Trace::SamplesIn(data.DelimitedInputString());
    for (qsizetype at = 0; at < samples.size(); ++at) {
      if (const Trace::Run* run = record.RunAt(at)) samples[at] += u"@%1"_s.arg(run->number);
      if (const Trace::Note* note = record.NoteAt(at)) samples[at] += u"!%1"_s.arg(note->number);
    }
    return samples.join(u' ');
  }
  Approved::Diary::States Standing() override {
    Approved::Diary::States states;
    const std::vector<Library::Row> rows = others->ReadAll();
    const std::vector<Trace::Record> records = others->TracesOf(rows);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const QString& name = rows[i].description;
      states[name] = Samples(*rows[i].data, records[i]);
      for (const auto& runs : {records[i].runs, records[i].unplacedRuns})
        for (const auto& [first, count, time, lot, number] : runs)
          states[u"%1 run %2"_s.arg(name).arg(number)] +=
              u"(%1 of %2 in \"%3\")"_s.arg(count).arg(When(time), lot);
      for (const auto& notes : {records[i].notes, records[i].unplacedNotes})
        for (const auto& [sample, text, author, time, value, number] : notes)
          states[u"%1 note %2"_s.arg(name).arg(number)] =
              u"%1 (%2 %3, of %4)"_s.arg(text, author, When(time), value);
    }
    return states;
  }

  void Append(const QStringList& values, const Trace::Source& source = {}) {
    library->Append(u"A"_s, values, now, Library::Limits::Stay, source);
    Tell(u"append "_s + values.mid(0, 9).join(u' '));
  }
  void Note(const CData& data, qsizetype sample, const QString& seen, const QString& text,
            const QString& author = u"ann"_s) {
    const Library::Noted noted = library->SetNote(data, sample, seen, text, author, now);
    const QString outcome[] = {u"written"_s, u"conflict with \"%1\""_s.arg(noted.theirs.text), u"gone"_s};
    Tell(u"note \"%1\" in place of \"%2\" on sample %3: %4"_s.arg(text, seen)
             .arg(sample)
             .arg(outcome[int(noted.outcome)]));
  }
  void Save(const QString& values, const Trace::Origins& origins = {}) {
    Save(library->Read(1)->data, values, origins);
  }
  void Save(const CDataPtr& data, const QString& values, const Trace::Origins& origins = {}) {
    data->SetDelimitedInputString(values);
    data->SetSampleOrigins(origins);
    ASSERT_EQ(library->Save(*data, now).outcome, Library::Saved::Outcome::Written);
    EXPECT_TRUE(data->SampleOrigins().empty());
    Tell(u"save "_s + values);
  }
  void Set(const QString& values) {
    Execute(u"UPDATE StatData SET \"Values\" = '%1' WHERE ID = 1"_s.arg(values));
    Tell(u"another program writes "_s + values);
  }
};

}  // namespace

ON_BOTH(TracingTest);

TEST_P(TracingTest, AnAppendIsOneRunOfItsTimeAndLot) {
  const CDataPtr data = Added(u"A"_s);
  EXPECT_TRUE(library->TraceOf(*data).IsEmpty());
  EXPECT_EQ(others->Database().Has(u"SampleNote"_s), GetParam() == Place::Server) << "made when needed";
  Append({u"12"_s, u"13"_s});
  Append({u"14"_s}, {QDateTime(QDate(2024, 2, 29), QTime(23, 30), Qt::OffsetFromUTC, -3600), u"L7"_s});
  EXPECT_EQ(Value(u"SELECT TakenAt FROM SampleRun WHERE Entry = 2"_s), u"2024-03-01T00:30:00Z"_s);
  EXPECT_EQ(library->TraceOf(*data).unplacedRuns.size(), 2U) << "of a version without these samples";

  // Storage grows with runs, not with samples.
  Append(QStringList(30, u"10"_s));
  EXPECT_EQ(Number(u"SELECT count(*) FROM SampleRun"_s), 3);
  library->Add(*NewDataSet(u"B"_s), now, {{0, 3, now, u"L1"_s}, {3, 5, {}, u"L2"_s}});
  Tell(u"add in two lots"_s);
}

TEST_P(TracingTest, TheyGoWithTheirSamplesWhereASaveChangesThese) {
  CDataPtr mine = Added(u"A"_s);
  Append({u"12"_s, u"13"_s});
  Append({u"14"_s});
  Note(*library->Read(1)->data, 9, {}, u"new tool"_s);
  Save(u"11,10,9,10,11,10,12,13.5,14,"_s);  // cut in front, and corrected
  // What a user does with lines of equal values is known to the editor only.
  Save(u"11,10,9,10,11,10,12,12,14,"_s, {0, 1, 2, 3, 4, 5, 7, Trace::isNew, 8});
  Save(u"11,10,9,10,11,10,12,14,"_s, {0, 1, 2});  // of another text

  // My edit, and what another hand has put behind meanwhile.
  mine = others->Read(1)->data;
  Append({u"15"_s});
  Note(*library->Read(1)->data, 8, {}, u"warm"_s);
  Save(mine, u"9,10,11,10,14,"_s);
  Append({u"12"_s});  // what is unplaced stays so
}

TEST_P(TracingTest, WhatAProgramThatDoesNotKnowThemChangesIsUnplacedFromThere) {
  Added(u"A"_s);
  Append({u"12"_s, u"13"_s});
  Append({u"14"_s, u"15"_s});
  const CDataPtr before = library->Read(1)->data;
  for (const qsizetype sample : {8, 11}) Note(*before, sample, {}, u"n%1"_s.arg(sample));
  const QString whole = Values();
  Set(whole + u" 16 ,"_s);
  Set(QString(whole).replace(u"14"_s, u"14.5"_s));
  EXPECT_EQ(Samples(*before, others->TraceOf(*before)), u"9 10 11 10 9 10 11 10 12@1!1 13@1 14@2 15@2!2"_s)
      << "of the version that they are of";
  Set(whole);  // nothing has been written
  // The same samples again are others.
  Set(u"9,10,11,10,9,10,11,10,12,13,14,"_s);
  Append({u"15"_s});
  Set(u"9,9,10,11,10,9,10,11,10,12,13,14,15,"_s);
  Save(u"9,10,11,10,9,10,11,10,12,13,14,15,"_s);

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
  std::vector<qint64> runs{library->TraceOf(*longer).runs.at(0).number};
  for (const Trace::Run& run : lost.unplacedRuns) runs.push_back(run.number);
  library->RemoveUnplaced(*longer, runs, {note, lost.unplacedNotes.at(1).number});
  Tell(u"removed"_s);
}

TEST_P(TracingTest, ANoteIsWrittenReplacedAndRemovedWhereItsSampleNowIs) {
  const CDataPtr seen = Added(u"A"_s);
  LibraryWatch watch(path);
  Note(*seen, 1, {}, u"  new tool "_s);
  EXPECT_EQ(News(watch)->changed, std::vector<qint64>{1}) << "the others are told";
  EXPECT_EQ(library->Read(1)->data->LastModified(), seen->LastModified());

  Note(*seen, 1, {}, u"old tool"_s, u"bob"_s);
  Note(*seen, 1, {}, u"new tool"_s);  // as both want it
  Save(u"8,9,10,11,10,9,10,11,10,"_s);
  Note(*seen, 1, u"new tool"_s, u"old tool"_s, u"bob"_s);
  Note(*seen, 5, {}, u"warm"_s);
  Note(*seen, 1, u"old tool"_s, {});
  Note(*seen, 1, u"old tool"_s, u"x"_s, u"bob"_s);

  const CDataPtr shown = library->Read(1)->data;
  Save(u"11,10,9,10,11,10,"_s);
  for (const qsizetype gone : {1, 9}) Note(*shown, gone, {}, u"x"_s);
  library->Rename(1, u"AA"_s, now);
  Note(*shown, 3, {}, u"x"_s);
  library->Delete(1, now);
  Note(*shown, 3, u"x"_s, u"y"_s);
}

TEST_P(TracingTest, WhatIsDeletedAndCopiedKeepsThem) {
  Added(u"A"_s);
  Append({u"12"_s});
  Note(*library->Read(1)->data, 8, {}, u"new tool"_s);
  library->CopyTo(folder.filePath(u"copy"_s));
  Library copy(folder.filePath(u"copy"_s));
  EXPECT_EQ(copy.TraceOf(*copy.Read(1)->data).notes.size(), 1U);
  library->Delete(1, now);
  library->Restore(library->DeletedDataSets().front());
  Tell(u"restored"_s);
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
