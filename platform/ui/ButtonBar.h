// A toolbar of numbered text-and-icon buttons, some of which drop down a menu of numbered entries.
#pragma once

#include <QToolBar>

#include "platform/ui/Icons.h"
#include "platform/ui/Mnemonics.h"

class QMenu;

// Buttons and entries count from 1. A bar named "Toolbar1" names its second button's tool button and action
// "Toolbar1_2" and the third entry of that button's menu "Toolbar1_2_3". A button that has entries opens its
// menu on a click and does nothing else. From the keyboard Enter, Space and Alt with the underlined letter
// press a button, and Down opens its menu.
class ButtonBar : public QToolBar {
  Q_OBJECT
 public:
  // reserved: mnemonic letters that other controls of the window use.
  explicit ButtonBar(const QString& objectName, QWidget* parent = nullptr, const QString& reserved = {});

  // Adds the button with the next number; a caption may bring its own mnemonic ("E&xit").
  QAction* AddButton(const QString& caption, const QString& toolTip, Symbol symbol);
  // Adds the next entry to the button's menu.
  QAction* AddEntry(int button, const QString& caption, Symbol symbol);

  QAction* Button(int button) const;  // setEnabled, setToolTip ...; SetCaption for its text
  QAction* Entry(int button, int entry) const;
  void SetCaption(int button, const QString& caption, Symbol symbol);
  // Where the captions stand, at first under the icons. A bar that has no room for them shows the icons
  // alone.
  void PlaceCaptions(Qt::ToolButtonStyle place);

 Q_SIGNALS:
  void ButtonClick(int button);  // not for buttons with a menu
  void ButtonMenuClick(int button, int entry);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Item {
    QAction* action = nullptr;
    QMenu* menu = nullptr;
    QList<QAction*> entries;
    Mnemonics entryMnemonics;
  };
  const Item& At(int button) const { return items_.at(button - 1); }
  void FitCaptions();

  QList<Item> items_;
  Mnemonics mnemonics_;
  Qt::ToolButtonStyle captions_ = Qt::ToolButtonTextUnderIcon;
  int captionedWidth_ = 0;
};
