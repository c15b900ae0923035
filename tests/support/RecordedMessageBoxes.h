// Answers message boxes by script and records them: a box that no answer was queued for, an answer that its
// box does not offer, and an answer left over at the end fail the test.
#pragma once

#include <deque>

#include "platform/ui/MessageBox.h"

class RecordedMessageBoxes : public MessageBox::Presenter {
 public:
  RecordedMessageBoxes();  // presents every box until destroyed, then the presenter before it does again
  ~RecordedMessageBoxes() override;
  RecordedMessageBoxes(const RecordedMessageBoxes&) = delete;
  RecordedMessageBoxes& operator=(const RecordedMessageBoxes&) = delete;

  // Queues the answer to the next box that has none yet.
  void Expect(MessageBox::Answer answer = MessageBox::Answer::Ok);

  // The boxes shown and not yet taken, oldest first.
  const std::deque<MessageBox::Request>& Shown() const { return shown_; }

  // Removes and returns the oldest of them; fails the test where there is none.
  MessageBox::Request Take();

  MessageBox::Answer Show(const MessageBox::Request& request) override;

 private:
  MessageBox::Presenter* previous_;
  std::deque<MessageBox::Answer> answers_;
  std::deque<MessageBox::Request> shown_;
};
