// The settings store's three routines: make a key, read a value, write a value.
//
// Value types: 1 REG_SZ, 4 REG_DWORD. An empty key path is the program's default one.
#pragma once

#include <QString>

namespace RegistryFunctions {

// True when the key exists or could be made.
bool CreateRegistryKey(const QString& keyPath);

// The value as text; empty on any failure. A REG_DWORD is read byte by byte from the highest, each byte's
// hexadecimal digits without a leading zero, and the hexadecimal text so made gives the number: exact for 0
// to 15 and for what the program stores, 16 for 256.
QString GetKeyValue(const QString& keyPath, const QString& valueName, int valueType);

// Makes the key first; true whenever the key is there, even if the write itself failed (that is reported).
bool SetKeyValue(const QString& keyPath, const QString& valueName, int valueType, const QString& value);

}  // namespace RegistryFunctions

namespace QCGlobalFunctions {

// Fills Globals().gSetup from the store; a missing value takes its default. False only on an unexpected
// error.
bool GetRegistrySettings();

}  // namespace QCGlobalFunctions
