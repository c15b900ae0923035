#include "platform/ui/QtMessageBox.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "platform/ui/Icons.h"

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

// The box's sign: the style brings it as a small picture only, which blurs on fine screens.
Symbol SignOf(MessageBox::Icon icon) {
  switch (icon) {
    case MessageBox::Icon::Critical:
      return Symbol::SignCritical;
    case MessageBox::Icon::Question:
      return Symbol::SignQuestion;
    case MessageBox::Icon::Exclamation:
      return Symbol::SignExclamation;
    default:
      return Symbol::SignInformation;
  }
}

// The labels are reached by the names that the message box gives them; without them it looks as the style has
// it.
void Dress(QMessageBox& box, MessageBox::Icon icon) {
  const int em = box.fontMetrics().height();
  if (auto* sign = box.findChild<QLabel*>(u"qt_msgboxex_icon_label"_s);
      sign && icon != MessageBox::Icon::None) {
    sign->setPixmap(SymbolIcon(SignOf(icon)).pixmap(QSize(em * 5 / 2, em * 5 / 2), box.devicePixelRatio()));
  }
  if (auto* text = box.findChild<QLabel*>(u"qt_msgbox_label"_s)) {
    // The box wraps by itself a text that is wider; with a floor to its width it would cut that off instead.
    text->setWordWrap(false);
    const int width = text->sizeHint().width();  // with what tabs take in a label
    const int most = std::min(em * 28, box.screen()->availableSize().width() - em * 10);
    // The window's own buttons stand beside the title, whose letters may be bold.
    const int title = box.fontMetrics().horizontalAdvance(box.windowTitle()) * 5 / 4 + em * 2;
    if (width <= most) text->setMinimumWidth(std::max(width, std::min(title, most)));
  }
}

// The button that is added last answers Escape and the closing of the box: the refusing one.
void AddButtons(QMessageBox& box, const MessageBox::Request& request,
                const QtMessageBox::Captions& captions) {
  const auto add = [&box](QMessageBox::StandardButton which, const QString& caption) {
    box.addButton(which)->setText(caption);
    box.setEscapeButton(which);
  };
  if (request.buttons == MessageBox::Buttons::Ok) {
    add(QMessageBox::Ok, captions.ok);
    return;
  }
  add(QMessageBox::Yes, captions.yes);
  add(QMessageBox::No, captions.no);
  if (request.buttons == MessageBox::Buttons::YesNoCancel) add(QMessageBox::Cancel, captions.cancel);
  box.setDefaultButton(request.prefersNo ? QMessageBox::No : QMessageBox::Yes);
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
  AddButtons(box, request, captions_);
  Dress(box, request.icon);
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
