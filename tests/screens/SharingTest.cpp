// The main window beside others who work on the same library, and a second start of the program.
#include <QDialog>
#include <QLineEdit>

#include "screens/DataEditor.h"
#include "tests/screens/MainScreenFixture.h"

namespace {

const auto otherAttached = u"Current Database: other.kestrel (DB Rev. 2.1)"_s;

class SharingTest : public MainScreenFixture {
 protected:
  // The editor over the main window, on the current data set; `act` is what happens meanwhile.
  void WithEditor(const std::function<void(DataEditor&)>& act) {
    inEditor = [this, act] {
      DataEditor editor(main.get());
      editor.open();
      QCoreApplication::processEvents();
      act(editor);
    };
    Action("Toolbar1_2_2").trigger();
  }
};

TEST_F(SharingTest, ASecondStartHandsItsLibraryOverForThisRun) {
  StartLoaded({u"Bore"_s});
  const QString other = OtherLibrary();
  main->ShowLibrary({});
  main->ShowLibrary(program.LibraryPath());
  EXPECT_EQ(Panel(), libraryAttached) << "nothing to do but to show the window";
  main->ShowLibrary(other);
  Tick("HandOverTimer");
  EXPECT_EQ(Panel(), otherAttached);
  EXPECT_EQ(StoredDatabase(), program.LibraryPath());
  Tick("InitTimer");
  EXPECT_TRUE(Rows().isEmpty());
  main->ShowLibrary(program.Path(u"nowhere.db"_s));
  program.boxes.Expect(u"Error opening database:");
  Tick("HandOverTimer");
  EXPECT_EQ(Panel(), otherAttached);
  EXPECT_EQ(program.state.gDatabaseForThisRun, other);
}

TEST_F(SharingTest, ALibraryHandedOverWaitsForWhatIsNotSaved) {
  StartLoaded({u"Bore"_s});
  const QString other = OtherLibrary();
  WithEditor([&](DataEditor& editor) {
    Type(editor, "txtUSL", u"13"_s);
    main->ShowLibrary(other);
    program.boxes.Expect(Answer::Cancel, u"Do you wish to save these changes?");
    Tick("HandOverTimer");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(TextOf(editor, "txtUSL"), u"13");
    EXPECT_TRUE(Panel().contains(u"was not opened"_s));
    Tick("NewsTimer");
    EXPECT_EQ(Panel(), libraryAttached);
    Tick("HandOverTimer");  // is not asked again
    main->ShowLibrary(other);
    program.boxes.Expect(Answer::No, u"Do you wish to save these changes?");
    Tick("HandOverTimer");
    EXPECT_FALSE(editor.isVisible());
  });
  Tick("HandOverTimer");
  EXPECT_EQ(Panel(), otherAttached);
}

}  // namespace
