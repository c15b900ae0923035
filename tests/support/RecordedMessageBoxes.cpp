#include "tests/support/RecordedMessageBoxes.h"

#include <gtest/gtest.h>

using MessageBox::Answer;
using MessageBox::Buttons;

namespace {

bool Offers(Buttons buttons, Answer answer) {
  if (answer == Answer::Ok) return buttons == Buttons::Ok;
  return answer == Answer::Cancel ? buttons == Buttons::YesNoCancel : buttons != Buttons::Ok;
}

}  // namespace

RecordedMessageBoxes::RecordedMessageBoxes() : previous_(MessageBox::Install(this)) {}

RecordedMessageBoxes::~RecordedMessageBoxes() {
  MessageBox::Install(previous_);
  if (!answers_.empty()) ADD_FAILURE() << answers_.size() << " expected message box(es) never came";
}

void RecordedMessageBoxes::Expect(Answer answer) { answers_.push_back(answer); }

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
  shown_.push_back(request);
  const bool expected = !answers_.empty();
  const Answer answer = expected ? answers_.front() : MessageBox::Refusal(request.buttons);
  if (expected) answers_.pop_front();
  if (expected && Offers(request.buttons, answer)) return answer;
  ADD_FAILURE() << (expected ? "the answer is no button of \"" : "unexpected message box \"")
                << request.title.toStdString() << "\": " << request.text.toStdString();
  return MessageBox::Refusal(request.buttons);
}
