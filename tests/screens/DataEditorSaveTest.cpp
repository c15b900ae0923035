// Saving from the data editor: each check with its message, what is stored, and that a save that stops
// changes nothing. The protocol of each test is approved.
#include "screens/DataEditorSave.h"

#include "core/CreateStatistics.h"
#include "core/DataObjectFunctions.h"
#include "data/Statistics.h"
#include "tests/support/Cases.h"
#include "tests/support/Protocol.h"

namespace {

QString Values(int count) {
  QString text;
  for (int i = 0; i < count; ++i) text += QString::number(9.5 + (i * 7 % 11) / 10.0) + u'\n';
  text.chop(1);  // as typed: the last line is not ended
  return text;
}

class DataEditorSaveTest : public testing::Test {
 protected:
  DataEditorSaveTest() {
    Fill(Cases(u"editor.json"_s, u"sound"_s)[0]);
    fields.rawData = Values(40);
    protocol.Begin(u"Start"_s);
  }
  void TearDown() override { protocol.Expect(); }

  // Loads the table, as the program does, and takes the fields of its one data set.
  void Edit() {
    const qint32 id = program.Insert(u"BORE"_s);
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    DataObjectFunctions::GetDataObjectByID(id, edited);
    fields = EditorFields::Of(*edited);
    protocol.Step(u"Edit"_s);
  }

  // What is named; the raw data so many times, or with more behind them.
  void Fill(const QJsonValue& changes) {
    static const std::map<const char*, QString EditorFields::*> texts{
        {"description", &EditorFields::description},
        {"units", &EditorFields::units},
        {"usl", &EditorFields::usl},
        {"nominal", &EditorFields::nominal},
        {"lsl", &EditorFields::lsl},
        {"hiFlier", &EditorFields::hiFlier},
        {"lowFlier", &EditorFields::lowFlier},
        {"xUCL", &EditorFields::xUCL},
        {"xMean", &EditorFields::xMean},
        {"xLCL", &EditorFields::xLCL},
        {"rUCL", &EditorFields::rUCL},
        {"rMean", &EditorFields::rMean},
        {"rLCL", &EditorFields::rLCL},
        {"subGroup", &EditorFields::subGroup},
        {"maxSamples", &EditorFields::maxSamples},
        {"rawData", &EditorFields::rawData}};
    static const std::map<const char*, bool EditorFields::*> ticks{
        {"discardFliers", &EditorFields::discardFliers},
        {"calculateLimits", &EditorFields::calculateLimits},
        {"useAllSamples", &EditorFields::useAllSamples}};
    const int times = changes[u"times"_s].toInt(1);
    for (const auto& [name, text] : texts)
      if (const QJsonValue value = changes[QLatin1String(name)]; value.isString())
        fields.*text = value.toString().repeated(times);
    for (const auto& [name, tick] : ticks) fields.*tick = changes[QLatin1String(name)].toBool(fields.*tick);
    fields.rawData += changes[u"behind"_s].toString();
  }

  // With these answers to the boxes that it brings.
  void Save(const QString& what, std::initializer_list<Answer> answers = {Answer::Ok},
            const QStringList& units = {}) {
    for (const Answer answer : answers) program.boxes.Expect(answer);
    DataEditorSave save(fields, edited, units);
    const QString outcome =
        save.SaveSelect() ? u"saved"_s : u"stopped at \"%1\""_s.arg(save.ControlAtFault());
    protocol.Step(QStringList{what, outcome, save.Reason(), save.TakenIn()}.join(u' ').simplified());
    if (save.RawData() != fields.rawData) protocol.Step(u"now "_s + save.RawData());
  }

  TestProgram program;
  EditorFields fields;
  CDataPtr edited;
  Protocol protocol{program, u"StatData"_s, [this](Protocol::States& states) {
                      for (const CDataPtr& data : program.state.gDataCollection)
                        states[u"data set %1"_s.arg(data->ID())] =
                            u"%1 samples, USL %2, UCL %3, %4"_s.arg(data->SampleQty())
                                .arg(data->UpperSpecLimit())
                                .arg(data->XBarUCL())
                                .arg(data->UnitOfMeasurement());
                    }};
};

TEST_F(DataEditorSaveTest, AddsWithOneBoxAndNeverTwice) {
  fields.rawData = Values(8);
  Save(u"8 values"_s);
  Save(u"again"_s);
}

TEST_F(DataEditorSaveTest, EachRefusalSaysWhyAndChangesNothing) {
  const EditorFields newFields = fields;
  Edit();
  const EditorFields oldFields = fields;
  const CDataPtr present = edited;
  for (const bool adding : {true, false}) {
    edited = adding ? nullptr : present;
    for (const auto& one : Cases(u"editor.json"_s, u"refusals: what, the fields, without a box"_s)) {
      const QString what = one[0].toString();
      if (!adding && what == u"an apostrophe") continue;  // the description stays
      fields = adding ? newFields : oldFields;
      Fill(one[1]);
      Save(what,
           one[2].toBool() ? std::initializer_list<Answer>{} : std::initializer_list<Answer>{Answer::Ok});
    }
  }
}

TEST_F(DataEditorSaveTest, ExcessSamplesAreCutOnlyOnYes) {
  fields.rawData = Values(50);
  fields.useAllSamples = false;
  fields.maxSamples = u"40"_s;
  Save(u"50 values, 40 at most"_s, {Answer::No});
  Save(u"again"_s, {Answer::Yes, Answer::Ok});
}

TEST_F(DataEditorSaveTest, FliersGoBeforeExcessSamples) {
  fields.rawData = Values(38) + u"\n16\n4"_s;  // values on the limits go as well
  fields.discardFliers = true;
  Save(u"two fliers"_s, {Answer::No});
  Save(u"again"_s, {Answer::Yes, Answer::Ok});
  // 39 are to be kept and 38 are left: all of these.
  fields.description = u"second"_s;
  fields.useAllSamples = false;
  fields.maxSamples = u"39"_s;
  Save(u"39 at most"_s, {Answer::Yes, Answer::Yes, Answer::Ok});
}

TEST_F(DataEditorSaveTest, FewSamplesAreNamedByTheCountBeforeTheFliersWent) {
  program.boxes.Expect();
  EXPECT_FALSE(DataEditorSave(fields).PrepareRawData().isEmpty()) << "nothing was checked yet";
  protocol.Step(u"Prepare"_s);
}

TEST_F(DataEditorSaveTest, EditedLimitsAreKeptOrCalculated) {
  Edit();
  EXPECT_TRUE(fields.calculateLimits) << "a range limit of zero cannot be kept";
  EXPECT_EQ(fields.rLCL + fields.usl, u".000012.0000");
  Fill(Cases(u"editor.json"_s, u"limits of one's own, the mean calculated"_s)[0]);
  Save(u"limits of one's own"_s);
  fields = EditorFields::Of(*edited);
  EXPECT_FALSE(fields.calculateLimits);
  EXPECT_EQ(fields.xLCL, u"-.5000");
  fields.calculateLimits = true;
  Save(u"calculated"_s);
}

// Limits of a ten-thousandth were once stored, and then shown, with four decimals.
TEST_F(DataEditorSaveTest, FineLimitsAreStoredAsTypedAndStayThroughAnotherSave) {
  Fill(Cases(u"editor.json"_s, u"fine limits"_s)[0]);
  fields.rawData = u"0.000118\n0.000121\n0.000124\n0.000119\n0.000122\n"_s.repeated(8);
  Save(u"fine limits"_s);
  EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  edited = program.state.gDataCollection.at(0);
  fields = EditorFields::Of(*edited);
  EXPECT_EQ(fields.usl + fields.lsl, u".00015000.00010000");
  fields.sensitivity = 2;
  Save(u"another sensitivity"_s);
  fields.usl = u".123456789"_s;
  protocol.Step(fields.Hint());
}

TEST_F(DataEditorSaveTest, DigitsThatAreNotKeptAreAskedAbout) {
  fields.usl = u"12.0000000012"_s;
  fields.nominal = u"10.50"_s;
  fields.hiFlier = u"1234567890.12345678"_s;
  Save(u"many digits"_s, {Answer::No});
  Edit();
  fields.calculateLimits = false;
  fields.xUCL = u"11.123456"_s;
  fields.rLCL = u".0001"_s;
  Save(u"of a control limit"_s, {Answer::Yes, Answer::Ok});
}

TEST_F(DataEditorSaveTest, UnitsStandAsTheyAre) {
  // The capital of µ is another letter, which old files do not hold.
  for (const auto& [unit, list] :
       {std::pair{u"mΩ"_s, QStringList{u"mΩ"_s}}, {u"µm"_s, {}}, {u"straße ÿ"_s, {u"mm"_s}}}) {
    fields.units = unit;
    fields.description += u'x';
    Save(unit, {Answer::Ok}, list);
  }
}

TEST_F(DataEditorSaveTest, ACommaIsOneValueOrSeveralAsTheUserSays) {
  fields.rawData = Values(8) + u"\n9,5\n9,75\n9.1,9.2"_s;
  Save(u"commas"_s, {Answer::Cancel});
  Save(u"again"_s, {Answer::Yes, Answer::Ok});
  fields.description += u'x';
  Save(u"again"_s, {Answer::No, Answer::Ok});
}

TEST_F(DataEditorSaveTest, StrangeLimitsAreSavedOnlyOnYes) {
  Edit();
  fields.calculateLimits = false;
  fields.rLCL = u".1"_s;
  const EditorFields sound = fields;
  for (const auto& change : Cases(u"editor.json"_s, u"strange limits"_s)) {
    fields = sound;
    Fill(change);
    Save(u"strange"_s, {Answer::No});
  }
  fields = sound;
  Save(u"sound"_s);
  fields = EditorFields::Of(*edited);
  fields.subGroup = u"5"_s;
  fields.rUCL = u"3"_s;
  Save(u"subgroups of 5"_s, {Answer::Yes, Answer::Ok});
}

TEST_F(DataEditorSaveTest, AFailedWriteLeavesTheDataSetInUseAsItWas) {
  Edit();
  fields.rawData = Values(60);
  TestProgram::FailAt(u"update"_s);
  Save(u"failing"_s);
  TestProgram::FailAt({});
  program.Execute(u"DELETE * FROM StatData"_s);
  Save(u"deleted meanwhile"_s, {Answer::No});
}

TEST_F(DataEditorSaveTest, WhatAnotherProgramWroteMeanwhileIsNotOverwritten) {
  Edit();
  program.Execute(u"UPDATE StatData SET \"Values\" = \"Values\" || '10.5,'"_s);
  fields.usl = u"13"_s;
  Save(u"a value was added meanwhile"_s);
}

// The limits once came from the points of a range that had been chosen on the chart screen before.
TEST_F(DataEditorSaveTest, CalculatedLimitsComeFromAllPoints) {
  Edit();
  edited->SetDataStartPoint(2);
  edited->SetDataStopPoint(8);
  Save(u"with a range"_s);
}

TEST_F(DataEditorSaveTest, LimitsOfChosenPointsAreGivenUpOnlyOnYes) {
  Edit();
  edited->SetDataStopPoint(8);
  QCGlobalFunctions::ClearControlLimits(*edited);
  QCGlobalFunctions::CreateStatistics(*edited);
  fields = EditorFields::Of(*edited);
  Save(u"no"_s, {Answer::No});
  Save(u"yes"_s, {Answer::Yes, Answer::Ok});
}

TEST_F(DataEditorSaveTest, HintsSayWhatToWrite) {
  const auto note = [this](const QString& what) { protocol.Step(what + u": "_s + fields.Hint()); };
  note(u"sound"_s);
  fields.lowFlier = u"7,5"_s;
  note(u"a decimal comma"_s);
  fields.usl = u"1e999"_s;
  note(u"too large"_s);
  Edit();
  note(u"an existing one"_s);
  fields.calculateLimits = false;  // small subgroups have a range limit of 0
  note(u"to keep its limits"_s);
}

}  // namespace
