#include "tests/support/RecordedMessageBoxes.h"

#include <gtest/gtest.h>

using MessageBox::Answer;
using MessageBox::Buttons;

namespace {

bool Offers(Buttons buttons, Answer answer) {
  if (answer == Answer::Ok) return buttons == Buttons::Ok;
  return answer == Answer::Cancel ? buttons == Buttons::YesNoCancel : buttons != Buttons::Ok;
}

const char* NameOf(Answer answer) {
  return answer == Answer::Ok ? "OK" : answer == Answer::Yes ? "Yes" : answer == Answer::No ? "No" : "Cancel";
}

}  // namespace

RecordedMessageBoxes::RecordedMessageBoxes() : previous_(MessageBox::Install(this)) {}

RecordedMessageBoxes::~RecordedMessageBoxes() {
  MessageBox::Install(previous_);
  if (!answers_.empty()) ADD_FAILURE() << answers_.size() << " expected message box(es) never came";
}

void RecordedMessageBoxes::Expect(Answer answer, QStringView text) {
  answers_.push_back({answer, text.toString()});
}

MessageBox::Request RecordedMessageBoxes::Take() {
  if (shown_.empty()) {
    ADD_FAILURE() << "no message box was shown";
    return {};
  }
  const MessageBox::Request request = shown_.front();
  shown_.pop_front();
  return request;
}

Answer RecordedMessageBoxes::Show(const MessageBox::Request& request) {
  whileShown();
  shown_.push_back(request);
  const std::string box = '"' + request.title.toStdString() + "\": " + request.text.toStdString();
  const Answer refusal = MessageBox::Refusal(request.buttons);
  if (answers_.empty()) {
    ADD_FAILURE() << "unexpected message box " << box;
    return refusal;
  }
  const Expected expected = answers_.front();
  answers_.pop_front();
  log_ << QStringLiteral("\"%1\" %2%3")
              .arg(request.text, QLatin1StringView(NameOf(expected.answer)),
                   request.prefersNo ? QStringLiteral(", though it prefers No") : QString());
  EXPECT_TRUE(request.text.contains(expected.text)) << expected.text.toStdString() << " is not in " << box;
  if (Offers(request.buttons, expected.answer)) return expected.answer;
  ADD_FAILURE() << "the answer is no button of " << box;
  return refusal;
}
