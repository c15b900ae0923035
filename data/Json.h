// Data sets as JSON objects, with the property names as keys.
#pragma once

#include <QJsonObject>

#include "data/CData.h"

namespace Json {

// Rounded, as the program shows them.
inline QJsonObject ReadProperties(const CData& data) {
  QJsonObject object;
  data.ForEachProperty(
      [&](const char* name, const auto& read, const auto&, auto) { object[QLatin1StringView(name)] = read; });
  return object;
}

// With every digit.
inline QJsonObject StoredProperties(const CData& data) {
  QJsonObject object;
  data.ForEachProperty([&](const char* name, const auto&, const auto& stored, auto) {
    object[QLatin1StringView(name)] = stored;
  });
  return object;
}

}  // namespace Json
