// The standard boxes: title, text, icon and buttons; and the trap that turns an error into a box and a
// result.
#include "core/Messages.h"

#include <gtest/gtest.h>

#include "core/Trap.h"
#include "tests/support/RecordedMessageBoxes.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Buttons;
using MessageBox::Icon;

namespace {

TEST(Messages, EveryKindOfBox) {
  RecordedMessageBoxes boxes;
  for (int i = 0; i < 3; ++i) boxes.Expect();
  boxes.Expect(Answer::No);
  ShowErrorMessage(false, u"Plain"_s, {});
  ShowErrorMessage(true, u"Grave"_s, u"the detail"_s);
  ShowInformationMessage(u"News"_s);
  EXPECT_EQ(ShowSystemMessage(u"Sure?"_s, Icon::Question, Buttons::YesNo), Answer::No);
  for (const auto& [title, text, icon] :
       {std::tuple(u"Error Message"_s, u"Plain"_s, Icon::Exclamation),
        {u"Critical Error Message"_s, u"Grave with error: \r\nthe detail"_s, Icon::Critical},
        {u"Information"_s, u"News"_s, Icon::Information},
        {u"System Message"_s, u"Sure?"_s, Icon::Question}}) {
    const MessageBox::Request box = boxes.Take();
    EXPECT_EQ(std::tuple(box.title, box.text, box.icon), std::tuple(title, text, icon));
  }
}

TEST(Trap, ReportsAnErrorAndGivesTheNeutralResult) {
  RecordedMessageBoxes boxes;
  EXPECT_EQ(Trap(u"M::P"_s, 0, [] { return 7; }), 7);
  boxes.Expect();
  EXPECT_EQ(Trap(u"M::P"_s, -1, []() -> int { throw Error(u"größer als ½"_s); }), -1);
  EXPECT_EQ(boxes.Take().text, u"M::P failed with error: \r\ngrößer als ½"_s);
  boxes.Expect();
  Trap(u"M::Q"_s, [] { throw std::out_of_range("Subscript out of range"); });
  EXPECT_EQ(
      boxes.Take().text,
      u"M::Q failed with error: \r\nthere is a fault in the program (Subscript out of range); please report it"_s);
}

}  // namespace
