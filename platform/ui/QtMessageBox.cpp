#include "platform/ui/QtMessageBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

QMessageBox::Icon IconOf(MessageBox::Icon icon) {
  switch (icon) {
    case MessageBox::Icon::Critical:
      return QMessageBox::Critical;
    case MessageBox::Icon::Question:
      return QMessageBox::Question;
    case MessageBox::Icon::Exclamation:
      return QMessageBox::Warning;
    case MessageBox::Icon::Information:
      return QMessageBox::Information;
    case MessageBox::Icon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// The button that is added last answers Escape and the closing of the box: the refusing one.
void AddButtons(QMessageBox& box, MessageBox::Buttons buttons) {
  const auto add = [&box](QMessageBox::StandardButton which, const QString& caption) {
    box.addButton(which)->setText(caption);
    box.setEscapeButton(which);
  };
  if (buttons == MessageBox::Buttons::Ok) {
    add(QMessageBox::Ok, u"&OK"_s);
    return;
  }
  add(QMessageBox::Yes, u"&Yes"_s);
  add(QMessageBox::No, u"&No"_s);
  if (buttons == MessageBox::Buttons::YesNoCancel) add(QMessageBox::Cancel, u"&Cancel"_s);
  box.setDefaultButton(QMessageBox::Yes);
}

}  // namespace

MessageBox::Answer QtMessageBox::Show(const MessageBox::Request& request) {
  // The documented texts end some lines with a lone carriage return, which a label would swallow.
  QString text = request.text;
  text.replace("\r\n"_L1, "\n"_L1).replace(u'\r', u'\n');

  QMessageBox box(IconOf(request.icon), request.title, text, QMessageBox::NoButton,
                  QApplication::activeWindow());
  box.setObjectName(u"MessageBox"_s);
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  AddButtons(box, request.buttons);
  switch (box.exec()) {
    case QMessageBox::Yes:
      return MessageBox::Answer::Yes;
    case QMessageBox::No:
      return MessageBox::Answer::No;
    case QMessageBox::Cancel:
      return MessageBox::Answer::Cancel;
    default:
      return MessageBox::Answer::Ok;
  }
}
