// The standard boxes: title, text, icon and buttons; and the trap that turns an error into a box and a
// result.
#include "core/Messages.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "core/Trap.h"
#include "tests/support/RecordedMessageBoxes.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Buttons;
using MessageBox::Icon;

namespace {

void ExpectBox(const MessageBox::Request& box, const QString& title, const QString& text, Icon icon,
               Buttons buttons = Buttons::Ok) {
  EXPECT_EQ(box.title, title);
  EXPECT_EQ(box.text, text);
  EXPECT_EQ(box.icon, icon);
  EXPECT_EQ(box.buttons, buttons);
}

TEST(Messages, ErrorBoxes) {
  RecordedMessageBoxes boxes;
  for (int i = 0; i < 4; ++i) boxes.Expect();

  ShowErrorMessage(false, u"Plain"_s, {});
  ExpectBox(boxes.Take(), u"Error Message"_s, u"Plain"_s, Icon::Exclamation);

  ShowErrorMessage(true, u"Grave"_s, u"the detail"_s);
  ExpectBox(boxes.Take(), u"Critical Error Message"_s, u"Grave with error: \r\nthe detail"_s, Icon::Critical);

  ReportProcedureError(u"Module::Procedure"_s, u"Type mismatch"_s);
  ExpectBox(boxes.Take(), u"Critical Error Message"_s,
            u"Module::Procedure failed with error: \r\nType mismatch"_s, Icon::Critical);

  ShowInformationMessage(u"News"_s);
  ExpectBox(boxes.Take(), u"Information"_s, u"News"_s, Icon::Information);
}

TEST(Messages, AQuestionReturnsItsAnswer) {
  RecordedMessageBoxes boxes;
  boxes.Expect(Answer::No);
  EXPECT_EQ(ShowSystemMessage(u"Sure?"_s, Icon::Question, Buttons::YesNo), Answer::No);
  ExpectBox(boxes.Take(), u"System Message"_s, u"Sure?"_s, Icon::Question, Buttons::YesNo);
}

TEST(Trap, ReportsAnErrorAndGivesTheNeutralResult) {
  RecordedMessageBoxes boxes;
  EXPECT_EQ(Trap(u"M::P"_s, 0, [] { return 7; }), 7);
  EXPECT_TRUE(boxes.Shown().empty());

  boxes.Expect();
  EXPECT_EQ(Trap(u"M::P"_s, -1, []() -> int { throw Error(u"größer als ½"_s); }), -1);
  EXPECT_EQ(boxes.Take().text, u"M::P failed with error: \r\ngrößer als ½"_s);

  boxes.Expect();
  bool finished = false;
  Trap(u"M::Q"_s, [&] {
    if (!finished) throw std::out_of_range("Subscript out of range");
    finished = true;
  });
  EXPECT_FALSE(finished);
  EXPECT_EQ(boxes.Take().text, u"M::Q failed with error: \r\nSubscript out of range"_s);
}

TEST(RecordedMessageBoxes, FailsTheTestForWhatTheScriptDidNotForesee) {
  EXPECT_NONFATAL_FAILURE(
      {
        RecordedMessageBoxes boxes;
        ShowInformationMessage(u"nobody waits for me"_s);
      },
      "nobody waits for me");
  EXPECT_NONFATAL_FAILURE(
      {
        RecordedMessageBoxes boxes;
        boxes.Expect();
      },
      "never came");
  EXPECT_NONFATAL_FAILURE(
      {
        RecordedMessageBoxes boxes;
        boxes.Expect(Answer::Yes);
        ShowInformationMessage(u"no such button"_s);
      },
      "no button of the message box");
}

}  // namespace
