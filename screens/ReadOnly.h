// What somebody sees of the forms who may only read the library: the reason, and nothing that writes.
#pragma once

#include <QStringList>

class QWidget;

namespace ReadOnly {

// Whether the present library can only be read.
bool Holds();

// Where it can: the commands of these names, buttons or actions, rest from now on, whatever else switches
// them on, and the reason stands at the top of the form.
void Rest(QWidget& form, const QStringList& commands);

// The same, and what the boxes hold can be read, but not be changed.
void RestWithBoxes(QWidget& form, const QStringList& commands);

}  // namespace ReadOnly
