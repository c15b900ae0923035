// The protocol of a walk: what a user does, and below each step all that it changes on the form and in a
// table of the library, and the boxes that came up with their answers.
#pragma once

#include <QAbstractItemView>
#include <QPointer>

#include "platform/system/LoginName.h"
#include "tests/support/Approved.h"
#include "tests/support/TestProgram.h"
#include "tests/support/Widgets.h"

class Protocol {
 public:
  using States = Approved::Diary::States;

  // The table is told with the form; and what a test adds.
  Protocol(TestProgram& program, const QString& table, std::function<void(States&)> others = {})
      : program_(program), table_(table), others_(std::move(others)) {}

  // From now on of this form, or of none; it and the table are as they are.
  void Begin(const QString& what, const QWidget* form = nullptr) {
    form_ = form;
    diary_.Begin(what, Present());
  }

  // All that there is on the form.
  void Tell(const QString& what) {
    diary_.ForgetAllBut(u"row ");
    Step(what);
  }

  void Step(const QString& what) {
    QStringList boxes;
    for (const QString& box : program_.boxes.TakeAll()) boxes << u"box "_s + OneLine(box);
    diary_.Step(OneLine(what), Present(), boxes);
  }
  void Expect() const { diary_.Expect(); }

 private:
  QString OneLine(QString text) const {
    for (const QString& end : {u"\r\n"_s, u"\n"_s, u"\r"_s, u"\t"_s}) text.replace(end, u"|"_s);
    return text.replace(program_.folder.path(), u"@"_s).replace(LoginName() + u", 20"_s, u"me, 20"_s);
  }

  static QString StateOf(const QObject& control) {
    QStringList words;
    for (const char* property : {"text", "plainText", "currentText", "value", "title"})
      if (const QVariant value = control.property(property); value.isValid())
        words << u'"' + value.toString() + u'"';
    for (const auto& [property, expected, word] : {std::tuple{"checked", true, u"checked"},
                                                   {"readOnly", true, u"read only"},
                                                   {"enabled", false, u"disabled"},
                                                   {"visible", false, u"hidden"}})
      if (const QVariant value = control.property(property); value.isValid() && value.toBool() == expected)
        words << QString::fromUtf16(word);
    return words.join(u' ');
  }

  static QStringList RowsOf(const QAbstractItemModel& model) {
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < model.columnCount(); ++column) {
        const QModelIndex cell = model.index(row, column);
        cells << cell.data(cell.data().isValid() ? Qt::DisplayRole : Qt::ToolTipRole).toString();
      }
      rows << cells.join(u" | "_s);
    }
    return rows;
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
    if (!form_->isVisible()) return states;
    for (const QObject* control : form_->findChildren<QObject*>()) {
      const bool isControl = qobject_cast<const QWidget*>(control) || qobject_cast<const QAction*>(control);
      if (!isControl || control->objectName().isEmpty() || control->objectName().startsWith(u"qt_")) continue;
      const auto* parent = qobject_cast<const QWidget*>(control->parent());
      const bool isElsewhere = parent && parent->window() != form_ && parent->window()->isVisible();
      const QString name =
          (isElsewhere ? parent->window()->objectName() + u'/' : QString()) + control->objectName();
      states[name] = OneLine(StateOf(*control));
      const auto* view = qobject_cast<const QAbstractItemView*>(control);
      if (!view || !view->model()) continue;
      states[name + u" current"_s] = QString::number(view->currentIndex().row());
      const QStringList rows = RowsOf(*view->model());
      for (qsizetype i = 0; i < rows.size(); ++i) states[u"%1 %2"_s.arg(name).arg(i)] = OneLine(rows[i]);
    }
    return states;
  }

  TestProgram& program_;
  const QString table_;
  const std::function<void(States&)> others_;
  QPointer<const QWidget> form_;
  Approved::Diary diary_;
};
