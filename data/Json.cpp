#include "data/Json.h"

namespace Json {

namespace {

auto Into(QJsonObject& object) {
  return [&object](const char* name, const auto& value) { object[QLatin1String(name)] = value; };
}

}  // namespace

QJsonObject ReadProperties(const CData& data) {
  QJsonObject object;
  data.ForEachProperty(Into(object));
  return object;
}

QJsonObject StoredProperties(const CData& data) {
  QJsonObject object;
  data.ForEachStoredProperty(Into(object));
  return object;
}

}  // namespace Json
