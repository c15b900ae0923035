// A walk through a form: what a user does, step by step, in a protocol that is approved.
#pragma once

#include "tests/support/Protocol.h"

class Walk : public testing::Test {
 protected:
  using Answers = std::initializer_list<Answer>;

  explicit Walk(const QString& table = u"StatData"_s, std::function<void(Protocol::States&)> others = {})
      : protocol(program, table, std::move(others)) {}
  void TearDown() override { protocol.Expect(); }

  virtual QWidget& Form() const = 0;
  virtual void Settle() {}  // what the form's timers do a moment later

  // Timers fire when the test says so, however slow the machine is.
  static void HoldTimers() {
    constexpr int anHour = 3'600'000;
    for (const QWidget* window : QApplication::topLevelWidgets())
      for (QTimer* timer : window->findChildren<QTimer*>())
        if (timer->isActive() && !timer->objectName().isEmpty()) timer->setInterval(anHour);
  }

  // With these answers to the boxes that it brings, as in all of these.
  void Step(const QString& what, const std::function<void()>& act, Answers answers = {}) {
    for (const Answer answer : answers) program.boxes.Expect(answer);
    HoldTimers();
    act();
    HoldTimers();
    Settle();
    protocol.Step(what);
  }
  void Choose(const char* button, Answers answers = {}) {
    Step(
        QLatin1StringView(button), [&] { Click(Form(), button); }, answers);
  }
  void Trigger(const char* action, Answers answers = {}) {
    Step(
        QLatin1StringView(action), [&] { Get<QAction>(Form(), action).trigger(); }, answers);
  }
  void Tick(const char* timer, Answers answers = {}) {
    Step(
        QLatin1StringView(timer), [&] { Fire(Form(), timer); }, answers);
  }
  void PressOn(QWidget& widget, const QKeyCombination& key, Answers answers = {}) {
    const auto act = [&] { QTest::keyClick(&widget, key.key(), key.keyboardModifiers()); };
    Step(QKeySequence(key).toString(), act, answers);
  }
  // Where the focus is.
  void Press(const QKeyCombination& key, Answers answers = {}) {
    QWidget* focus = Form().focusWidget();
    PressOn(focus ? *focus : Form(), key, answers);
  }
  // Over what stands there.
  void Enter(const QWidget& form, const char* box, const QString& text) {
    Get(form, box).setFocus();
    Step(u"%1: %2"_s.arg(QLatin1StringView(box), text), [&] { Type(form, box, text); });
  }
  void Enter(const char* box, const QString& text) { Enter(Form(), box, text); }
  // By somebody else.
  void Elsewhere(const QString& sql, const std::function<void()>& whatTheFormDoes) {
    program.Execute(sql);
    Step(sql, whatTheFormDoes);
  }

  TestProgram program;
  Protocol protocol;
};
