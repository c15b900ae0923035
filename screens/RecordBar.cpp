#include "screens/RecordBar.h"
#include "texts/UnitWords.h"

RecordBar::RecordBar(const QString& objectName, QWidget* parent, const QString& reserved)
    : ButtonBar(objectName, parent, reserved) {
  AddButton(Words::Record::add(), Words::Record::addTip(), Symbol::Add);
  AddButton(Words::Record::save(), Words::Record::saveTip(), Symbol::Save);
  AddButton(Words::Record::remove(), Words::Record::removeTip(), Symbol::Delete);
  AddButton(Words::Record::refresh(), Words::Record::refreshTip(), Symbol::Refresh);
  AddButton({}, {}, Symbol::Page)->setVisible(false);
  addSeparator();
  AddButton(Words::Record::first(), Words::Record::firstTip(), Symbol::First);
  AddButton(Words::Record::previous(), Words::Record::previousTip(), Symbol::Previous);
  AddButton(Words::Record::next(), Words::Record::nextTip(), Symbol::Next);
  AddButton(Words::Record::last(), Words::Record::lastTip(), Symbol::Last);
  addSeparator();
  AddButton(Words::Record::help(), Words::Record::helpTip(), Symbol::Help);
  AddButton(Words::Record::exit(), Words::Record::exitTip(), Symbol::Exit);
  connect(this, &ButtonBar::ButtonClick, this, &RecordBar::Command);
}
