#include "core/Settings.h"

#include "core/Globals.h"
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

void Keep(const Setting& setting, const QString& value) {
  const ProgramState& state = Globals();
  Registry::Key key = 0;
  if (state.registry->RegCreateKeyEx(state.gSetup.RegistryKeyPath, Registry::KeyWrite, key) !=
      Registry::Success)
    return;
  state.registry->RegSetValueEx(key, setting.key.toString(), setting.type, value.toUtf8());
  state.registry->RegCloseKey(key);
}

}  // namespace Settings
