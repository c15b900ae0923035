// Random edits of a data set with runs and notes, by several hands: KESTREL_EDITS of them, or some hundreds.
#include <random>
#include <ranges>

#include "tests/library/LibraryFixture.h"

namespace {

// A sample as only the test knows it: by a number that it keeps when it is corrected.
struct Sample {
  QString value;
  int identity;
};
using Samples = std::vector<Sample>;

class RandomEditsTest : public LibraryFixture {
 protected:
  void SetUp() override {
    LibraryFixture::SetUp();
    for (Library* hand : {library.get(), others.get()})
      hand->Database().Run(u"speed"_s, u"PRAGMA synchronous = OFF"_s);
    CDataPtr data = NewDataSet(u"A"_s);
    QString values;
    while (samples.size() < 12) values += samples.emplace_back(NewSample()).value + u',';
    data->SetDelimitedInputString(values);
    data->SetSubGroupSize(1);
    library->Save(*data, now);
  }

  static int Edits() {
    const int edits = qEnvironmentVariableIntValue("KESTREL_EDITS");
    return edits > 0 ? edits : 300;
  }
  std::size_t Any(std::size_t count) { return random() % count; }
  QString NewValue() {
    return areDistinct ? QString::number(10 + 1e-6 * ++values_, 'f', 6) : QString::number(1 + Any(4));
  }
  Sample NewSample() { return {NewValue(), ++identities_}; }

  static QString StoredForm(const Samples& of) {
    QString text;
    for (const Sample& sample : of) text += sample.value + u',';
    return text;
  }
  CDataPtr Present() { return others->Read(1)->data; }

  void Append(Library& hand) {
    QStringList values;
    for (auto left = 1 + Any(3); left > 0; --left) values << samples.emplace_back(NewSample()).value;
    hand.Append(u"A"_s, values, now);
    const qint64 run = hand.TraceOf(*Present()).runs.back().number;
    for (auto sample = samples.end() - values.size(); sample != samples.end(); ++sample)
      runOf[sample->identity] = run;
  }
  void Note() {
    const auto at = Any(samples.size());
    QString& noted = noteOf[samples[at].identity];
    const QString text = noted.isEmpty() ? QString::number(++notes_) : noted;  // each keeps its text
    EXPECT_EQ(library->SetNote(*Present(), qsizetype(at), noted, text, u"ann"_s, now).outcome,
              Library::Noted::Outcome::Written);
    noted = text;
  }

  // Some lines one after the other.
  void EditSome(Samples& of, std::size_t most) {
    for (auto left = 1 + Any(most); left > 0; --left) {
      const auto at = of.begin() + qsizetype(Any(of.size()));
      const auto kind = Any(of.size() > 60 ? 6 : 5);
      if (kind == 0) of.insert(at, NewSample());
      if (kind == 1 && of.size() > 9) of.erase(at);
      if (kind == 2) at->value = NewValue();
      if (kind == 3) of.push_back(NewSample());
      if (kind == 4 && of.size() > 20) of.erase(of.begin(), of.begin() + qsizetype(Any(5)));
      if (kind == 5) of.erase(of.begin(), of.end() - 30);
    }
  }
  // Who only sees the values takes a sample for the one before where as many came as went between two that
  // stay; else for a new one.
  void ForgetIdentities(const Samples& before, Samples& after) {
    std::map<QString, qsizetype> places;
    for (const Sample& sample : before) places.emplace(sample.value, places.size());
    qsizetype behind = 0;
    for (std::size_t at = 0; at <= after.size();) {
      std::size_t next = at;
      while (next < after.size() && !places.contains(after[next].value)) ++next;
      const qsizetype stays = next < after.size() ? places[after[next].value] : std::ssize(before);
      for (std::size_t gap = at; gap < next; ++gap)
        after[gap].identity = stays - behind == qsizetype(next - at)
                                  ? before[std::size_t(behind) + gap - at].identity
                                  : ++identities_;
      behind = stays + 1;
      at = next + 1;
    }
  }
  static Trace::Origins OriginsOf(const Samples& before, const Samples& after) {
    std::map<int, qint32> places;
    for (const Sample& sample : before) places.emplace(sample.identity, qint32(places.size()));
    Trace::Origins origins;
    for (const Sample& sample : after) {
      const auto place = places.find(sample.identity);
      origins.push_back(place == places.end() ? Trace::isNew : place->second);
    }
    return origins;
  }

  // A save by one who has read the data set before another one appended, or not.
  void Save() {
    const CDataPtr mine = Present();
    const Samples base = samples;
    Samples edited = base;
    EditSome(edited, areDistinct ? 4 : 1);
    const bool isByEditor = areDistinct && Any(2) == 0;
    if (isByEditor) mine->SetSampleOrigins(OriginsOf(base, edited));
    if (!isByEditor && areDistinct) ForgetIdentities(base, edited);
    mine->SetDelimitedInputString(StoredForm(edited));
    if (Any(3) == 0) Append(*others);
    const Samples growth(samples.begin() + std::ssize(base), samples.end());
    ASSERT_EQ(library->Save(*mine, now).outcome, Library::Saved::Outcome::Written);
    // Whoever has only added comes behind the others.
    const bool onlyAdded = edited.size() >= base.size() &&
                           std::equal(base.begin(), base.end(), edited.begin(),
                                      [](const auto& a, const auto& b) { return a.value == b.value; });
    samples = onlyAdded ? base : edited;
    samples.insert(samples.end(), growth.begin(), growth.end());
    if (onlyAdded) samples.insert(samples.end(), edited.begin() + std::ssize(base), edited.end());
    ASSERT_EQ(Values(), StoredForm(samples));
  }

  void Step() {
    switch (Any(6)) {
      case 0:
        return Append(*library);
      case 1:
        return Note();
      default:
        return Save();
    }
  }

  std::mt19937 random{15};
  bool areDistinct = true;
  Samples samples;
  std::map<int, qint64> runOf;
  std::map<int, QString> noteOf;

 private:
  int values_ = 0, identities_ = 0, notes_ = 0;
};

}  // namespace

// Each run and each note is where its samples are, and nowhere else; what has none left is listed, once.
TEST_F(RandomEditsTest, NothingMovesToAnotherSampleAndNothingIsLost) {
  int moved = 0;
  for (int edit = 0; edit < Edits(); ++edit) {
    SCOPED_TRACE(edit);
    ASSERT_NO_FATAL_FAILURE(Step());
    const Trace::Record record = others->TraceOf(*Present());
    std::set<qint64> runs;
    std::set<QString> notes;
    for (std::size_t at = 0; at < samples.size(); ++at) {
      const auto run = runOf.find(samples[at].identity);
      const Trace::Run* found = record.RunAt(qsizetype(at));
      ASSERT_EQ(found ? found->number : 0, run == runOf.end() ? 0 : run->second) << at;
      if (found) runs.insert(found->number);
      const auto note = noteOf.find(samples[at].identity);
      const Trace::Note* noted = record.NoteAt(qsizetype(at));
      ASSERT_EQ(noted ? noted->text : QString(), note == noteOf.end() ? QString() : note->second) << at;
      if (!noted) continue;
      ASSERT_EQ(noted->value, samples[at].value);
      notes.insert(noted->text);
      ++moved;
    }
    for (const Trace::Run& run : record.unplacedRuns) ASSERT_TRUE(runs.insert(run.number).second);
    for (const Trace::Note& note : record.unplacedNotes) ASSERT_TRUE(notes.insert(note.text).second);
    const auto allRuns = std::views::values(runOf);
    const auto allNotes = std::views::values(noteOf);
    ASSERT_EQ(runs, std::set(allRuns.begin(), allRuns.end()));
    ASSERT_EQ(notes, std::set(allNotes.begin(), allNotes.end()));
  }
  std::cout << Edits() << " edits, " << runOf.size() << " samples in runs, " << noteOf.size()
            << " notes, looked at " << moved << " times" << std::endl;
}

// Of equal values it cannot be known which one went. No note is on another value, unless the edit replaced
// its own there.
TEST_F(RandomEditsTest, AmongEqualValuesANoteStaysOnItsValue) {
  areDistinct = false;
  for (Sample& sample : samples) sample.value = NewValue();
  const CDataPtr data = Present();
  data->SetDelimitedInputString(StoredForm(samples));
  library->Save(*data, now);
  std::map<QString, QString> valueOf;  // by the note's text
  std::size_t count = 0;
  for (int edit = 0; edit < Edits(); ++edit) {
    SCOPED_TRACE(edit);
    const Samples before = samples;
    noteOf.clear();  // where they are now is asked
    for (const Trace::Note& note : others->TraceOf(*Present()).notes)
      noteOf[samples[std::size_t(note.sample)].identity] = note.text;
    ASSERT_NO_FATAL_FAILURE(Step());
    const Trace::Record record = others->TraceOf(*Present());
    ASSERT_GE(record.notes.size() + record.unplacedNotes.size(), count);
    count = record.notes.size() + record.unplacedNotes.size();
    for (const Trace::Note& note : record.notes) {
      const Sample& at = samples[std::size_t(note.sample)];
      ASSERT_EQ(note.value, at.value);
      const auto was = std::ranges::find(before, at.identity, &Sample::identity);
      const bool isReplaced = was != before.end() && was->value != at.value;
      if (valueOf.contains(note.text) && !isReplaced) {
        ASSERT_EQ(valueOf[note.text], note.value);
      }
      valueOf[note.text] = note.value;
    }
  }
}
