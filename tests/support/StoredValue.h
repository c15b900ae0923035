// A value in the store of the settings, as a program before this one left it.
#pragma once

#include "platform/registry/Registry.h"

inline int StoreValue(Registry& registry, const QString& path, const QString& name, const QByteArray& data,
                      Registry::Type type = Registry::String) {
  Registry::Key key = 0;
  const int status = registry.RegCreateKeyEx(path, Registry::KeyWrite, key);
  return status == Registry::Success ? registry.RegSetValueEx(key, name, type, data) : status;
}
