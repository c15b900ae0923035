#include "core/Settings.h"

#include "core/RegistryFunctions.h"

namespace Settings {

// An empty key path is the program's own.
QString Read(const Setting& setting) {
  const QString value = RegistryFunctions::GetKeyValue({}, setting.key.toString(), setting.type);
  return value.isEmpty() ? setting.standard.toString() : value;
}

void Write(const Setting& setting, const QString& value) {
  RegistryFunctions::SetKeyValue({}, setting.key.toString(), setting.type, value);
}

}  // namespace Settings
