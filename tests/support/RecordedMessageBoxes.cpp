#include "tests/support/RecordedMessageBoxes.h"

#include <gtest/gtest.h>

using MessageBox::Answer;
using MessageBox::Buttons;

namespace {

bool Offers(Buttons buttons, Answer answer) {
  switch (answer) {
    case Answer::Ok:
      return buttons == Buttons::Ok;
    case Answer::Cancel:
      return buttons == Buttons::YesNoCancel;
    case Answer::Yes:
    case Answer::No:
      return buttons != Buttons::Ok;
  }
  return false;
}

std::string Described(const MessageBox::Request& request) {
  return "\"" + request.title.toStdString() + "\": " + request.text.toStdString();
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
  if (answers_.empty()) {
    ADD_FAILURE() << "unexpected message box " << Described(request);
    return MessageBox::Refusal(request.buttons);
  }
  const Answer answer = answers_.front();
  answers_.pop_front();
  if (!Offers(request.buttons, answer)) {
    ADD_FAILURE() << "the expected answer is no button of the message box " << Described(request);
    return MessageBox::Refusal(request.buttons);
  }
  return answer;
}
