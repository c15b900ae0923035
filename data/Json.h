// Data sets as JSON objects, with the property names as keys.
#pragma once

#include <QJsonObject>

#include "data/CData.h"

namespace Json {

QJsonObject ReadProperties(const CData& data);    // rounded, as the program shows them
QJsonObject StoredProperties(const CData& data);  // with every digit

}  // namespace Json
