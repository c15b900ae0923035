#include "screens/ReadOnly.h"

#include <QAbstractButton>
#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

#include "core/Globals.h"
#include "screens/Controls.h"
#include "texts/StartWords.h"

using namespace Qt::StringLiterals;

namespace {

QString Reason() {
  return Globals().gLibrary->IsOnServer() ? Words::Server::noRight() : Words::Server::fileIsReadOnly();
}

// Switches off again what a form switches on.
class Keeper : public QObject {
 public:
  using QObject::QObject;

  void Disable(QObject* command) {
    if (auto* action = qobject_cast<QAction*>(command)) {
      action->setEnabled(false);
      action->setToolTip(Reason());
      connect(action, &QAction::enabledChanged, this, [action] { action->setEnabled(false); });
    } else if (auto* control = qobject_cast<QWidget*>(command)) {
      control->setEnabled(false);
      control->setToolTip(Reason());
      control->installEventFilter(this);
    }
  }

  template <class Box>
  void KeepText(Box* box) {
    box->setReadOnly(true);
    box->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange) {
      if (auto* control = qobject_cast<QWidget*>(watched); control->isEnabled() && !IsText(control))
        control->setEnabled(false);
    } else if (event->type() == QEvent::ReadOnlyChange) {
      if (auto* line = qobject_cast<QLineEdit*>(watched)) line->setReadOnly(true);
      if (auto* text = qobject_cast<QPlainTextEdit*>(watched)) text->setReadOnly(true);
    }
    return false;
  }

 private:
  static bool IsText(QWidget* control) {
    return qobject_cast<QLineEdit*>(control) || qobject_cast<QPlainTextEdit*>(control);
  }
};

Keeper* KeeperOf(QWidget& form, const QStringList& commands) {
  auto* keeper = new Keeper(&form);
  for (const QString& name : commands)
    for (QObject* command : form.findChildren<QObject*>(name)) keeper->Disable(command);
  if (auto* layout = qobject_cast<QBoxLayout*>(form.layout())) {
    auto* reason = TextLabel(u"lblReadOnly"_s, &form, Reason());
    reason->setMargin(form.fontMetrics().height() / 2);
    layout->insertWidget(0, reason);
  }
  return keeper;
}

}  // namespace

bool ReadOnly::Holds() {
  const auto& library = Globals().gLibrary;
  return library && !library->CanWrite();
}

void ReadOnly::Rest(QWidget& form, const QStringList& commands) {
  if (Holds()) KeeperOf(form, commands);
}

void ReadOnly::RestWithBoxes(QWidget& form, const QStringList& commands) {
  if (!Holds()) return;
  Keeper* keeper = KeeperOf(form, commands);
  for (auto* box : form.findChildren<QLineEdit*>()) keeper->KeepText(box);
  for (auto* box : form.findChildren<QPlainTextEdit*>()) keeper->KeepText(box);
  for (auto* box : form.findChildren<QComboBox*>()) keeper->Disable(box);
  for (auto* box : form.findChildren<QListWidget*>()) keeper->Disable(box);
  for (auto* box : form.findChildren<QAbstractButton*>())
    if (box->isCheckable()) keeper->Disable(box);
}
