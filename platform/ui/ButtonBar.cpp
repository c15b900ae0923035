#include "platform/ui/ButtonBar.h"

#include <QKeyEvent>
#include <QMenu>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

// The icon text is set as well because a tool button escapes the mnemonic of a text that it derives itself.
void SetMarkedCaption(QAction* action, const QString& marked) {
  action->setText(marked);
  action->setIconText(marked);
}

}  // namespace

ButtonBar::ButtonBar(const QString& objectName, QWidget* parent, const QString& reserved)
    : QToolBar(parent), mnemonics_(reserved) {
  setObjectName(objectName);
  setMovable(false);
  setFloatable(false);
  setContextMenuPolicy(Qt::PreventContextMenu);
  const int side = fontMetrics().height() * 3 / 2;
  setToolButtonStyle(captions_);
  setIconSize({side, side});
}

QAction* ButtonBar::AddButton(const QString& caption, const QString& toolTip, Symbol symbol) {
  const int number = int(items_.size()) + 1;
  QAction* action = addAction(SymbolIcon(symbol), {});
  SetMarkedCaption(action, mnemonics_.Mark(caption));
  action->setToolTip(toolTip);
  action->setObjectName(u"%1_%2"_s.arg(objectName()).arg(number));
  connect(action, &QAction::triggered, this, [this, number] { Q_EMIT ButtonClick(number); });

  auto* button = qobject_cast<QToolButton*>(widgetForAction(action));
  button->setObjectName(action->objectName());
  button->setFocusPolicy(Qt::TabFocus);
  button->setAccessibleDescription(toolTip);
  button->installEventFilter(this);
  items_.push_back({action, nullptr, {}, Mnemonics()});
  return action;
}

QAction* ButtonBar::AddEntry(int button, const QString& caption, Symbol symbol) {
  Item& item = items_[button - 1];
  if (!item.menu) {
    item.menu = new QMenu(this);
    item.menu->setObjectName(item.action->objectName() + u"_Menu"_s);
    item.action->setMenu(item.menu);
    qobject_cast<QToolButton*>(widgetForAction(item.action))->setPopupMode(QToolButton::InstantPopup);
  }
  const int number = int(item.entries.size()) + 1;
  QAction* entry = item.menu->addAction(SymbolIcon(symbol), item.entryMnemonics.Mark(caption));
  entry->setObjectName(u"%1_%2"_s.arg(item.action->objectName()).arg(number));
  connect(entry, &QAction::triggered, this,
          [this, button, number] { Q_EMIT ButtonMenuClick(button, number); });
  item.entries.push_back(entry);
  return entry;
}

QAction* ButtonBar::Button(int button) const { return At(button).action; }

QAction* ButtonBar::Entry(int button, int entry) const { return At(button).entries.at(entry - 1); }

void ButtonBar::SetCaption(int button, const QString& caption, Symbol symbol) {
  QAction* action = Button(button);
  const QString old = action->text();
  const qsizetype at = old.indexOf(u'&') + 1;
  // The letter stays the same where the new caption has it, so that the key does not move under the user's
  // finger.
  const qsizetype same = at > 0 ? caption.indexOf(old[at], 0, Qt::CaseInsensitive) : -1;
  SetMarkedCaption(action, same < 0 ? mnemonics_.Mark(caption) : QString(caption).insert(same, u'&'));
  action->setIcon(SymbolIcon(symbol));
}

void ButtonBar::PlaceCaptions(Qt::ToolButtonStyle place) {
  if (captions_ == place) return;
  captions_ = place;
  setToolButtonStyle(captions_);
  FitCaptions();
}

void ButtonBar::FitCaptions() {
  if (toolButtonStyle() == captions_) captionedWidth_ = sizeHint().width();
  setToolButtonStyle(width() < captionedWidth_ ? Qt::ToolButtonIconOnly : captions_);
}

void ButtonBar::resizeEvent(QResizeEvent* event) {
  QToolBar::resizeEvent(event);
  FitCaptions();
}

bool ButtonBar::eventFilter(QObject* watched, QEvent* event) {
  auto* button = qobject_cast<QToolButton*>(watched);
  if (button && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (button->defaultAction()->menu() && (enter || key == Qt::Key_Down)) {
      button->showMenu();
      return true;
    }
    if (enter) {
      button->click();
      return true;
    }
  }
  return QToolBar::eventFilter(watched, event);
}
