// The one table of every text the user sees, by number, and the look-up of a text reference.
#pragma once

#include <QString>

// The text for a text reference: a default text, ";" and a number, such as "System Message;165". The default
// text is for the reader of the code and never shown: a reference without ";", with something that is no
// number behind it or with a number that is not in the table gives the empty string.
QString LoadResText(QStringView reference);
