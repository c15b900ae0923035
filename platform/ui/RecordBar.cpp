#include "platform/ui/RecordBar.h"

using namespace Qt::StringLiterals;

RecordBar::RecordBar(const QString& objectName, QWidget* parent, const QString& reserved)
    : ButtonBar(objectName, parent, reserved) {
  AddButton(u"&Add"_s, u"Add a new record"_s, Symbol::Add);
  AddButton(u"&Save"_s, u"Save the changes to this record"_s, Symbol::Save);
  AddButton(u"&Delete"_s, u"Delete this record"_s, Symbol::Delete);
  AddButton(u"&Refresh list"_s, u"Read the list again and show its first record"_s, Symbol::Refresh);
  AddButton({}, {}, Symbol::Page)->setVisible(false);
  addSeparator();
  AddButton(u"&First"_s, u"Go to the first record"_s, Symbol::First);
  AddButton(u"&Previous"_s, u"Go to the previous record"_s, Symbol::Previous);
  AddButton(u"&Next"_s, u"Go to the next record"_s, Symbol::Next);
  AddButton(u"&Last"_s, u"Go to the last record"_s, Symbol::Last);
  addSeparator();
  AddButton(u"&Help"_s, u"Application help"_s, Symbol::Help);
  AddButton(u"E&xit"_s, u"Close this screen"_s, Symbol::Exit);
  connect(this, &ButtonBar::ButtonClick, this, &RecordBar::Command);
}
