// Saving from the data editor: each check with its message, what is stored, and that a save that stops
// changes nothing.
#include "screens/DataEditorSave.h"

#include "core/DataObjectFunctions.h"
#include "tests/support/TestProgram.h"

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
    fields.description = u" shaft Ø 🛠 "_s;
    fields.units = u"mm"_s;
    fields.usl = u"12"_s;
    fields.nominal = u"10"_s;
    fields.lsl = u"8"_s;
    fields.subGroup = u"4"_s;
    fields.rawData = Values(40);
  }

  QByteArray FileBytes() const {
    QFile file(program.LibraryPath());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  // Loads the table, as the program does, and takes the fields of its one data set.
  CDataPtr Edit() {
    const qint32 id = program.Insert(u"BORE"_s);
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    CDataPtr data;
    DataObjectFunctions::GetDataObjectByID(id, data);
    fields = EditorFields::Of(*data);
    return data;
  }

  QVariant Stored(const QString& column) const {
    return program.Rows(u"SELECT \"%1\" FROM StatData"_s.arg(column)).at(0).at(0);
  }
  size_t StoredRows() const { return program.Rows(u"SELECT * FROM StatData"_s).size(); }

  void Save(QStringView news, const CDataPtr& edited = nullptr) {
    program.boxes.Expect(news);
    EXPECT_TRUE(DataEditorSave(fields, edited).SaveSelect());
  }
  void Refuse(QStringView reason, const CDataPtr& edited = nullptr) {
    program.boxes.Expect(reason);
    EXPECT_FALSE(DataEditorSave(fields, edited).SaveSelect());
  }

  TestProgram program;
  EditorFields fields;
};

TEST_F(DataEditorSaveTest, AddsWithOneBoxAndNeverTwice) {
  fields.rawData = Values(8);
  Save(u"Data was saved to the database, but the application could not");
  EXPECT_EQ(Stored(u"Description"_s), u"SHAFT Ø 🛠"_s);
  EXPECT_EQ(Stored(u"UnitOfMeasurement"_s), u"MM"_s);
  EXPECT_EQ(Stored(u"Values"_s).toString().count(u','), 8) << "a last line that is not ended counts as well";
  EXPECT_EQ(Stored(u"HiFlier"_s), 16.0);
  EXPECT_EQ(Stored(u"LoFlier"_s), 4.0);
  EXPECT_NE(Stored(u"XBarUCL"_s), 0.0);
  EXPECT_EQ(program.screen.calls, QStringList{u"AddListRow SHAFT Ø 🛠"_s});

  const QByteArray before = FileBytes();
  Refuse(u"The file description entered already exists.");
  EXPECT_EQ(FileBytes(), before);
}

struct Refusal {
  const char* what;
  void (*spoil)(EditorFields&);
  QString text;
  QString control = {};
};

TEST_F(DataEditorSaveTest, EachRefusalSaysWhyAndChangesNothing) {
  const QString required = u"The required fields"_s, raw = u"txtRawData"_s, max = u"txtMaxSamples"_s,
                values = u"Data values could not be validated. Ensure at least 8 data points exist and"_s,
                error = u"Error attempting to save data: \r\n"_s;
#define SPOILT(change) [](EditorFields& f) { change; }
  const Refusal refusals[] = {
      {"no data", SPOILT(f.rawData = u" \r\n\n"_s), u"No data to process"_s, raw},
      {"seven values", SPOILT(f.rawData = Values(7)), values, raw},
      {"text at the end", SPOILT(f.rawData += u"\nabc"_s), values, raw},
      {"32768 values", SPOILT(f.rawData = u"1\n"_s.repeated(32768)), values, raw},
      {"no description", SPOILT(f.description = u"  "_s), required, u"txtDescription"_s},
      {"no unit", SPOILT(f.units.clear()), required, u"comboUnits"_s},
      {"decimal comma", SPOILT(f.usl = u"12,5"_s), required, u"txtUSL"_s},
      {"not a number", SPOILT(f.nominal = u"NaN"_s), required, u"txtNominal"_s},
      {"limits alike", SPOILT(f.lsl = f.usl), required, u"txtUSL"_s},
      {"subgroup of 21", SPOILT(f.subGroup = u"21"_s), u"The sub group size must be"_s, u"comboSubGroup"_s},
      {"a limit of zero",
       SPOILT(f.calculateLimits = false; f.xUCL = f.xLCL = f.rUCL = u"1"_s; f.rLCL = u"-.0"_s),
       u"Upper and lower control limits must be entered"_s, u"txtRLCL"_s},
      {"nominal above", SPOILT(f.nominal = u"12.001"_s), u"The nominal value cannot"_s, u"txtNominal"_s},
      {"no maximum", SPOILT(f.useAllSamples = false; f.maxSamples = u"ten"_s), u"The value entered for"_s,
       max},
      {"maximum beyond 16 bits", SPOILT(f.useAllSamples = false; f.maxSamples = u"40000"_s),
       error + u"Max Samples: no more than 32767"_s},
      {"limits too far apart", SPOILT(f.usl = u"1e308"_s; f.lsl = u"-1e308"_s),
       error + u"The spec limits are too far apart."_s},
      {"flier with a comma", SPOILT(f.hiFlier = u"14,5"_s),
       error + u"High flier: \"14,5\" is not a number. Decimals are written with a point."_s},
  };
#undef SPOILT
  const EditorFields newFields = fields;
  const CDataPtr edited = Edit();
  edited->SetRBarLCL(0.5);
  const CData dataBefore = *edited;
  const QByteArray before = FileBytes();
  for (const bool adding : {true, false}) {
    for (const Refusal& refusal : refusals) {
      SCOPED_TRACE(refusal.what);
      EditorFields spoilt = adding ? newFields : fields;
      refusal.spoil(spoilt);
      program.boxes.Expect(refusal.text);
      DataEditorSave save(spoilt, adding ? nullptr : edited);
      EXPECT_FALSE(save.SaveSelect());
      EXPECT_EQ(save.ControlAtFault(), refusal.control);
    }
  }
  EXPECT_EQ(FileBytes(), before);
  EXPECT_EQ(edited->HiFlier(), dataBefore.HiFlier());
  EXPECT_EQ(edited->DelimitedInputString(), dataBefore.DelimitedInputString());
  EXPECT_EQ(program.state.gDataCollection.size(), 1U);
}

TEST_F(DataEditorSaveTest, AnApostropheEndsInAMessageAndNeverInARow) {
  for (const QString& name : {u"O'RING"_s, u"X'; DELETE FROM StatData; --"_s}) {
    fields.description = name;
    const QByteArray before = FileBytes();
    Refuse(u"QCGlobalFunctions::IsDuplicateName failed");
    EXPECT_EQ(FileBytes(), before);
  }
}

TEST_F(DataEditorSaveTest, ExcessSamplesAreCutOnlyOnYes) {
  fields.rawData = Values(50);
  fields.useAllSamples = false;
  fields.maxSamples = u"40"_s;
  program.boxes.Expect(
      Answer::No,
      u"10 samples will be discarded upon save. Continue?\r\n\r\nThese are the last 10 of 50 values: ");
  EXPECT_FALSE(DataEditorSave(fields).SaveSelect());
  EXPECT_TRUE(program.boxes.Take().prefersNo);
  EXPECT_EQ(StoredRows(), 0U);
  program.boxes.Expect(Answer::Yes);
  Save(u"Data was saved");
  EXPECT_EQ(Stored(u"Values"_s), Values(40).replace(u'\n', u','));
  EXPECT_EQ(program.state.gDataCollection.at(0)->SampleQty(), 40);
}

TEST_F(DataEditorSaveTest, FliersGoBeforeExcessSamples) {
  fields.rawData = Values(38) + u"\n16\n4"_s;  // values on the limits go as well
  fields.discardFliers = true;
  program.boxes.Expect(
      Answer::No,
      u"2 samples do not lie between the flier limits 4 and 16:\r\n16 (value 39), 4 (value 40)\r\n\r\n"
      "The values behind a discarded one move up");
  EXPECT_FALSE(DataEditorSave(fields).SaveSelect());
  EXPECT_TRUE(program.boxes.Take().prefersNo);
  EXPECT_EQ(StoredRows(), 0U);
  program.boxes.Expect(Answer::Yes);
  Save(u"Data was saved");
  EXPECT_EQ(Stored(u"Values"_s), Values(38).replace(u'\n', u',') + u',');

  // 39 are to be kept and 38 are left: all of these.
  fields.description = u"second"_s;
  fields.useAllSamples = false;
  fields.maxSamples = u"39"_s;
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect(Answer::Yes,
                       u"Continue?\r\n\r\nWithout the fliers there are 38 values, which all stay.");
  Save(u"Data was saved");
  EXPECT_EQ(program.state.gDataCollection.back()->SampleQty(), 36) << "complete subgroups of 38";
}

TEST_F(DataEditorSaveTest, NothingLeftToSaveStopsWithAReason) {
  fields.hiFlier = u"2"_s;
  fields.lowFlier = u"1"_s;
  fields.maxSamples = u"0"_s;
  for (const bool allAreFliers : {true, false}) {
    fields.discardFliers = fields.useAllSamples = allAreFliers;
    DataEditorSave save(fields);
    EXPECT_FALSE(save.SaveSelect());
    EXPECT_FALSE(save.Reason().isEmpty());
  }
  EXPECT_EQ(StoredRows(), 0U);
}

TEST_F(DataEditorSaveTest, FewSamplesAreNamedByTheCountBeforeTheFliersWent) {
  program.boxes.Expect(
      u"-40 samples have been discarded because they exceed flier limits. Only 40 samples are remaining."
      "There must be at least 8 number of valid data samples to process");
  EXPECT_FALSE(DataEditorSave(fields).PrepareRawData().isEmpty()) << "nothing was checked yet";
}

TEST_F(DataEditorSaveTest, EditedLimitsAreKeptOrCalculated) {
  const CDataPtr edited = Edit();
  EXPECT_TRUE(fields.calculateLimits) << "a range limit of zero cannot be kept";
  EXPECT_EQ(fields.rLCL, u".0000");
  EXPECT_EQ(fields.usl, u"12.0000");
  fields.description = u"another name"_s;
  fields.calculateLimits = false;
  fields.xUCL = u"11.5"_s;
  fields.xLCL = u"-.5"_s;
  fields.xMean = u""_s;  // is calculated
  fields.rUCL = u"2"_s;
  fields.rLCL = u".0001"_s;
  Save(u"All data successfully saved.", edited);
  EXPECT_EQ(Stored(u"XBarUCL"_s), 11.5);
  EXPECT_EQ(Stored(u"XBarLCL"_s), -0.5);
  EXPECT_EQ(Stored(u"RBarLCL"_s), 0.0001);
  EXPECT_NEAR(Stored(u"XBarMean"_s).toDouble(), 10, 0.1);
  EXPECT_EQ(Stored(u"Description"_s), u"BORE"_s);
  EXPECT_EQ(edited->XBarUCL(), 11.5);
  EXPECT_EQ(program.screen.calls, QStringList{u"UpdateListRow BORE"_s});

  fields = EditorFields::Of(*edited);
  EXPECT_FALSE(fields.calculateLimits);
  EXPECT_EQ(fields.xLCL, u"-.5000");
  fields.calculateLimits = true;
  Save(u"All data successfully saved.", edited);
  EXPECT_EQ(Stored(u"RBarLCL"_s), 0.0);
  EXPECT_NE(Stored(u"XBarUCL"_s), 11.5);
}

// Limits of a ten-thousandth were once stored, and then shown, with four decimals.
TEST_F(DataEditorSaveTest, FineLimitsAreStoredAsTypedAndStayThroughAnotherSave) {
  fields.usl = u".00015"_s;
  fields.nominal = u".00012"_s;
  fields.lsl = u".00010"_s;
  fields.hiFlier = u".123456789012"_s;
  fields.rawData = u"0.000118\n0.000121\n0.000124\n0.000119\n0.000122\n"_s.repeated(8);
  Save(u"Data was saved");
  const auto expectStored = [this] {
    EXPECT_EQ(Stored(u"UpperSpecLimit"_s), 0.00015);
    EXPECT_EQ(Stored(u"NominalSpecLimit"_s), 0.00012);
    EXPECT_EQ(Stored(u"LowerSpecLimit"_s), 0.0001);
    EXPECT_EQ(Stored(u"HiFlier"_s), 0.123456789012);
  };
  expectStored();
  EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  const CDataPtr data = program.state.gDataCollection.at(0);
  fields = EditorFields::Of(*data);
  EXPECT_EQ(fields.usl, u".00015000"_s);
  fields.sensitivity = 2;
  Save(u"All data successfully saved.", data);
  expectStored();
  EXPECT_EQ(EditorFields::Of(*data).lsl, u".00010000"_s);
  fields.usl = u".123456789"_s;
  EXPECT_TRUE(fields.Hint().contains(u"no more than 8 decimals are shown"_s));
}

TEST_F(DataEditorSaveTest, DigitsThatAreNotKeptAreAskedAboutAndLimitsThatBecomeOneRefused) {
  fields.usl = u"1e-9"_s;
  fields.nominal = fields.lsl = u"0"_s;
  Refuse(u"The spec limits 0 and 1e-9 are one with 8 decimals.");
  fields.usl = u"12.0000000012"_s;
  fields.nominal = u"10.50"_s;
  fields.lsl = u"8.00"_s;
  fields.hiFlier = u"1234567890.12345678"_s;
  program.boxes.Expect(
      Answer::No,
      u"Upper limit: 12.0000000012 is kept as 12.\r\nHigh flier: 1234567890.12345678 is kept as "
      u"1234567890.12346.\r\n\r\nSave all the same?");
  EXPECT_FALSE(DataEditorSave(fields, nullptr).SaveSelect());
  EXPECT_EQ(StoredRows(), 0U);
  const CDataPtr edited = Edit();
  fields.calculateLimits = false;
  fields.xUCL = u"11.123456"_s;
  fields.rLCL = u".0001"_s;
  program.boxes.Expect(Answer::Yes, u": 11.123456 is kept as 11.1235.");
  Save(u"All data successfully saved.", edited);
  EXPECT_EQ(Stored(u"XBarUCL"_s), 11.1235);
}

TEST_F(DataEditorSaveTest, UnitsStandAsTheyAre) {
  Edit();
  const auto stored = [this](const QString& unit, const QStringList& list) {
    fields.units = unit;
    fields.description += u'x';
    program.boxes.Expect();
    EXPECT_TRUE(DataEditorSave(fields, nullptr, list).SaveSelect());
    return program.state.gDataCollection.back()->UnitOfMeasurement();
  };
  EXPECT_EQ(stored(u"mΩ"_s, {u"mΩ"_s}), u"mΩ"_s);
  EXPECT_EQ(stored(u"µm"_s, {}), u"µM"_s)
      << "the capital of µ is another letter, which old files do not hold";
  EXPECT_EQ(stored(u"straße ÿ"_s, {u"mm"_s}), u"STRAßE Ÿ"_s);
}

TEST_F(DataEditorSaveTest, ACommaIsOneValueOrSeveralAsTheUserSays) {
  fields.rawData = Values(8) + u"\n9,5\n9,75\n9.1,9.2"_s;
  const QString question =
      u"2 lines hold such a value, line 9 first: \"\u20689,5\u2069\". Is each of them one value, as 9.5?"_s;
  for (const Answer answer : {Answer::Yes, Answer::No}) {
    fields.description += u'x';
    program.boxes.Expect(answer, question);
    Save(u"Data was saved");
    const QString end = answer == Answer::Yes ? u"9.5,9.75,9.1,9.2,"_s : u"9,5,9,75,9.1,9.2,"_s;
    EXPECT_EQ(program.state.gDataCollection.back()->DelimitedInputString(),
              Values(8).replace(u'\n', u',') + u',' + end);
  }
  program.boxes.Expect(Answer::Cancel);
  DataEditorSave save(fields);
  EXPECT_FALSE(save.SaveSelect());
  EXPECT_EQ(save.RawData(), fields.rawData);
}

TEST_F(DataEditorSaveTest, StrangeLimitsAreSavedOnlyOnYes) {
  const CDataPtr edited = Edit();
  const EditorFields sound = [this] {
    EditorFields kept = fields;
    kept.calculateLimits = false;
    kept.rLCL = u".1"_s;
    return kept;
  }();
  struct {
    void (*spoil)(EditorFields&);
    QString question;
  } const cases[] = {
      {[](EditorFields& f) { std::swap(f.xUCL, f.xLCL); },
       u"The X-bar control limits are the wrong way round"_s},
      {[](EditorFields& f) { f.hiFlier = u"1"_s, f.lowFlier = u"20"_s; },
       u"The flier limits are the wrong way round: lower 20, upper 1."_s},
      {[](EditorFields& f) { f.rMean = u"9"_s; },
       u"The range control limits do not enclose their mean: mean 9"_s},
      {[](EditorFields& f) { f.xUCL = u"102"_s, f.xMean = u"101"_s, f.xLCL = u"100"_s; },
       u"The X-bar control limits 100 to 102 lie far from all the values"_s},
      {[](EditorFields& f) { f.usl = u"120"_s, f.nominal = u"118"_s, f.lsl = u"116"_s; },
       u"The specification limits 116 to 120 lie far from all the values"_s},
  };
  const QByteArray before = FileBytes();
  for (const auto& one : cases) {
    fields = sound;
    one.spoil(fields);
    program.boxes.Expect(Answer::No, one.question);
    EXPECT_FALSE(DataEditorSave(fields, edited).SaveSelect());
    EXPECT_TRUE(program.boxes.Take().prefersNo);
  }
  EXPECT_EQ(FileBytes(), before);
  fields = sound;
  Save(u"All data successfully saved.\r\n\r\nThe range control limits were 0 to ", edited);
  program.boxes.Take();
  fields = EditorFields::Of(*edited);
  fields.subGroup = u"5"_s;
  fields.rUCL = u"3"_s;
  program.boxes.Expect(Answer::Yes, u"were made for subgroups of 4, and the subgroup size is now 5.");
  Save(u"All data successfully saved.", edited);
}

TEST_F(DataEditorSaveTest, AFailedWriteLeavesTheDataSetInUseAsItWas) {
  const CDataPtr edited = Edit();
  const QString before = edited->DelimitedInputString();
  fields.rawData = Values(60);
  TestProgram::FailAt(u"update"_s);
  Refuse(u"the disk is full", edited);
  TestProgram::FailAt({});
  program.Execute(u"DELETE * FROM StatData"_s);
  program.boxes.Expect(Answer::No, u"as a new data set?");
  EXPECT_FALSE(DataEditorSave(fields, edited).SaveSelect());
  EXPECT_EQ(edited->DelimitedInputString(), before);
  EXPECT_EQ(StoredRows(), 0U) << "added anew";
}

TEST_F(DataEditorSaveTest, WhatAnotherProgramWroteMeanwhileIsNotOverwritten) {
  const CDataPtr edited = Edit();
  program.Execute(u"UPDATE StatData SET \"Values\" = \"Values\" || '10.5,'"_s);
  fields.usl = u"13"_s;
  Save(u"All data successfully saved.", edited);
  EXPECT_EQ(Stored(u"UpperSpecLimit"_s), 13);
  EXPECT_TRUE(edited->DelimitedInputString().endsWith(u",10.5,"_s)) << "shown as it stands there";
  EXPECT_EQ(Stored(u"Values"_s), edited->DelimitedInputString());
}

// The limits once came from the points of a range that had been chosen on the chart screen before.
TEST_F(DataEditorSaveTest, CalculatedLimitsComeFromAllPoints) {
  const CDataPtr edited = Edit();
  const double limit = edited->XBarUCL();
  edited->SetDataStartPoint(2);
  edited->SetDataStopPoint(8);
  Save(u"All data successfully saved.", edited);
  EXPECT_EQ(edited->DataStartPoint(), 0);
  EXPECT_EQ(edited->XBarUCL(), limit);
}

TEST_F(DataEditorSaveTest, HintsSayWhatToWrite) {
  EXPECT_TRUE(fields.Hint().isEmpty());
  fields.lowFlier = u"7,5"_s;
  EXPECT_EQ(fields.Hint(), u"Low flier: write the decimal point, 7.5.");
  fields.usl = u"1e999"_s;
  EXPECT_EQ(fields.Hint(), u"Upper limit: this is not a number.");
  Edit();
  EXPECT_TRUE(fields.Hint().isEmpty());
  fields.calculateLimits = false;
  EXPECT_TRUE(fields.Hint().startsWith(u"Range LCL: to keep the control limits"))
      << "as it is in small subgroups";
}

}  // namespace
