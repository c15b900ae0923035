#include "data/Json.h"

namespace Json {

QJsonObject ReadProperties(const CData& data) {
  QJsonObject object;
  data.ForEachProperty(
      [&](const char* name, const auto& read, const auto&, auto) { object[QLatin1StringView(name)] = read; });
  return object;
}

QJsonObject StoredProperties(const CData& data) {
  QJsonObject object;
  data.ForEachProperty([&](const char* name, const auto&, const auto& stored, auto) {
    object[QLatin1StringView(name)] = stored;
  });
  return object;
}

}  // namespace Json
