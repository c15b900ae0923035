// The protocol of a walk: what a user does, and below each step all that it changes on the form and in a
// table of the library, and the boxes that came up with their answers.
#pragma once

#include <QAbstractItemView>
#include <QMap>

#include "tests/support/Approved.h"
#include "tests/support/TestProgram.h"
#include "tests/support/Widgets.h"

class Protocol {
 public:
  using States = QMap<QString, QString>;

  // The table is told with the form; and what a test adds.
  Protocol(TestProgram& program, const QString& table, std::function<void(States&)> others = {})
      : program_(program), table_(table), others_(std::move(others)) {}

  // From now on of this form, or of none; it and the table are as they are.
  void Begin(const QString& what, const QWidget* form = nullptr) {
    form_ = form;
    states_ = Present();
    lines_ << u"* "_s + what;
  }

  // All that there is.
  void Tell(const QString& what) {
    states_.clear();
    Step(what);
  }

  void Step(const QString& what) {
    hasSteps_ = true;
    lines_ << u"* "_s + OneLine(what);
    for (const QString& box : program_.boxes.TakeAll()) lines_ << u"    box "_s + OneLine(box);
    const States before = std::exchange(states_, Present());
    for (const auto& [name, state] : states_.asKeyValueRange())
      if (before.value(name) != state) lines_ << u"    %1: %2"_s.arg(name, state);
    const bool isClosed = states_.value(u"form"_s) == u"closed";
    for (const QString& name : before.keys())
      if (!isClosed && !states_.contains(name)) lines_ << u"    %1 is gone"_s.arg(name);
  }

  void Expect() const {
    if (!hasSteps_) return;
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    Approved::Expect(
        u"%1.%2"_s.arg(QLatin1StringView(test->test_suite_name()), QLatin1StringView(test->name())), lines_);
  }

 private:
  QString OneLine(QString text) const {
    for (const QString& end : {u"\r\n"_s, u"\n"_s, u"\r"_s, u"\t"_s}) text.replace(end, u"|"_s);
    return text.replace(program_.folder.path(), u"@"_s);
  }

  static QString StateOf(const QObject& control) {
    QStringList words;
    for (const char* property : {"text", "plainText", "currentText", "value", "title"})
      if (const QVariant value = control.property(property); value.isValid())
        words << u'"' + value.toString() + u'"';
    const auto* view = qobject_cast<const QAbstractItemView*>(&control);
    for (int row = 0; view && view->model() && row < view->model()->rowCount(); ++row)
      words << (view->currentIndex().row() == row ? u"> "_s : u""_s) +
                   view->model()->index(row, 0).data().toString();
    for (const auto& [property, expected, word] : {std::tuple{"checked", true, u"checked"},
                                                   {"readOnly", true, u"read only"},
                                                   {"enabled", false, u"disabled"},
                                                   {"visible", false, u"hidden"}})
      if (const QVariant value = control.property(property); value.isValid() && value.toBool() == expected)
        words << QString::fromUtf16(word);
    return words.join(u' ');
  }

  States Present() const {
    States states;
    QStringList columns;
    for (const auto& column : program_.Rows(u"SELECT name FROM pragma_table_info('%1')"_s.arg(table_)))
      columns << column[0].toString();
    for (const QVariantList& row : program_.Rows(u"SELECT * FROM "_s + table_))
      for (qsizetype i = 1; i < columns.size(); ++i)
        states[u"row %1 %2"_s.arg(row[0].toString(), columns[i])] = row[i].toString();
    states[u"main window"_s] = program_.screen.calls.join(u", "_s);
    if (others_) others_(states);
    if (!form_) return states;
    states[u"form"_s] = form_->isVisible() ? u"open"_s : u"closed"_s;
    if (const QWidget* focus = form_->focusWidget()) states[u"focus"_s] = focus->objectName();
    for (const QObject* control : form_->findChildren<QObject*>()) {
      const QString name = control->objectName();
      const bool isControl = qobject_cast<const QWidget*>(control) || qobject_cast<const QAction*>(control);
      if (isControl && form_->isVisible() && !name.isEmpty() && !name.startsWith(u"qt_"))
        states[name] = OneLine(StateOf(*control));
    }
    return states;
  }

  TestProgram& program_;
  const QString table_;
  const std::function<void(States&)> others_;
  const QWidget* form_ = nullptr;
  States states_;
  QStringList lines_;
  bool hasSteps_ = false;
};
