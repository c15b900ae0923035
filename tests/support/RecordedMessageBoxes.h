// Answers message boxes by script and records them: a box that no answer was queued for, an answer that its
// box does not offer, and an answer left over at the end fail the test.
#pragma once

#include <QStringList>
#include <deque>
#include <functional>

#include "platform/ui/MessageBox.h"

class RecordedMessageBoxes : public MessageBox::Presenter {
 public:
  RecordedMessageBoxes();  // presents every box until destroyed, then the presenter before it does again
  ~RecordedMessageBoxes() override;
  RecordedMessageBoxes(const RecordedMessageBoxes&) = delete;
  RecordedMessageBoxes& operator=(const RecordedMessageBoxes&) = delete;

  // Queues the answer to the next box that has none yet, and what its text must hold.
  void Expect(MessageBox::Answer answer = MessageBox::Answer::Ok, QStringView text = {});
  void Expect(QStringView text) { Expect(MessageBox::Answer::Ok, text); }

  // Removes and returns the oldest box shown and not yet taken; fails the test where there is none.
  MessageBox::Request Take();

  // What was shown since this was asked last: the text and the answer.
  QStringList TakeAll() { return std::exchange(log_, {}); }

  MessageBox::Answer Show(const MessageBox::Request& request) override;

  std::function<void()> whileShown = [] {};

 private:
  struct Expected {
    MessageBox::Answer answer;
    QString text;
  };

  MessageBox::Presenter* previous_;
  std::deque<Expected> answers_;
  std::deque<MessageBox::Request> shown_;
  QStringList log_;
};

// Refuses what any box asks, and notes its text.
class NotedBoxes : public MessageBox::Presenter {
 public:
  NotedBoxes() : previous_(MessageBox::Install(this)) {}
  ~NotedBoxes() override { MessageBox::Install(previous_); }
  NotedBoxes(const NotedBoxes&) = delete;
  NotedBoxes& operator=(const NotedBoxes&) = delete;

  MessageBox::Answer Show(const MessageBox::Request& request) override {
    texts << request.text;
    return MessageBox::Refusal(request.buttons);
  }
  QStringList texts;

 private:
  MessageBox::Presenter* previous_;
};
