#include "platform/registry/Registry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 queryRight = 0x1;  // of KEY_READ
constexpr quint32 setRight = 0x2;    // of KEY_WRITE

QString Folded(const QString& name) { return name.toCaseFolded(); }

QString DefaultPath() {
  const QString named = qEnvironmentVariable("KESTREL_SETTINGS");
  if (!named.isEmpty()) return named;
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         u"/kestrel/settings.json"_s;
}

}  // namespace

int MemoryRegistry::RegOpenKeyEx(const QString& path, quint32 access, Key& key) {
  key = 0;
  const QString folded = Folded(path);
  if (!keys_.contains(folded)) return NotFound;
  key = ++lastKey_;
  open_[key] = {folded, access};
  return Success;
}

int MemoryRegistry::RegCreateKeyEx(const QString& path, quint32 access, Key& key) {
  keys_.try_emplace(Folded(path), KeyNode{path, {}});
  return MemoryRegistry::RegOpenKeyEx(path, access, key);
}

int MemoryRegistry::RegQueryValueEx(Key key, const QString& name, Type& type, QByteArray& data) {
  const auto open = open_.find(key);
  if (open == open_.end()) return NotFound;
  if (!(open->second.access & queryRight)) return AccessDenied;
  const Values& values = keys_[open->second.path].values;
  const auto value = values.find(Folded(name));
  if (value == values.end()) return NotFound;
  type = value->second.type;
  data = value->second.data;
  return Success;
}

int MemoryRegistry::RegSetValueEx(Key key, const QString& name, Type type, const QByteArray& data) {
  const auto open = open_.find(key);
  if (open == open_.end()) return NotFound;
  if (!(open->second.access & setRight)) return AccessDenied;
  keys_[open->second.path].values[Folded(name)] = {name, type, data, {}};
  return Success;
}

int MemoryRegistry::RegCloseKey(Key key) { return open_.erase(key) ? Success : NotFound; }

QString MemoryRegistry::Location() const { return u"memory"_s; }

FileRegistry::FileRegistry(const QString& path) : path_(path.isEmpty() ? DefaultPath() : path) {}

int FileRegistry::RegOpenKeyEx(const QString& path, quint32 access, Key& key) {
  key = 0;
  const int status = Read();
  return status == Success ? MemoryRegistry::RegOpenKeyEx(path, access, key) : status;
}

int FileRegistry::RegCreateKeyEx(const QString& path, quint32 access, Key& key) {
  key = 0;
  const int status = Read();
  if (status != Success) return status;
  const bool isNew = !keys_.contains(Folded(path));
  MemoryRegistry::RegCreateKeyEx(path, access, key);
  return isNew ? Write() : Success;
}

int FileRegistry::RegSetValueEx(Key key, const QString& name, Type type, const QByteArray& data) {
  const int status = MemoryRegistry::RegSetValueEx(key, name, type, data);
  return status == Success ? Write() : status;
}

// The file is {key path: {value name: text for a string, {type: hexadecimal bytes} for anything else}}. A
// value whose bytes cannot be made out counts as empty and stays in the file as it is until it is set.
int FileRegistry::Read() {
  QFile file(path_);
  if (!QFileInfo::exists(path_)) {
    damaged_ = false;
    keys_.clear();
    return Success;
  }
  QJsonDocument document;
  if (file.open(QIODevice::ReadOnly)) document = QJsonDocument::fromJson(file.readAll());
  keys_.clear();
  if (!document.isObject()) return std::exchange(damaged_, true) ? Success : ReadFault;
  damaged_ = false;
  const QJsonObject keys = document.object();
  for (auto key = keys.begin(); key != keys.end(); ++key) {
    KeyNode& node = keys_[Folded(key.key())];
    node.path = key.key();
    const QJsonObject values = key.value().toObject();
    for (auto value = values.begin(); value != values.end(); ++value) {
      Value& entry = node.values[Folded(value.key())];
      entry.name = value.key();
      if (value->isString()) {
        entry.type = String;
        entry.data = value->toString().toUtf8();
      } else {
        const QJsonObject typed = value->toObject();
        entry.type = typed.isEmpty() ? None : static_cast<Type>(typed.begin().key().toInt());
        const QString text = typed.isEmpty() ? QString() : typed.begin()->toString();
        entry.data = QByteArray::fromHex(text.toLatin1());
        if (QString::fromLatin1(entry.data.toHex()) != text.toLower()) {
          entry.data.clear();
          entry.unreadable = text;
        }
      }
    }
  }
  return Success;
}

int FileRegistry::Write() {
  QJsonObject keys;
  for (const auto& [foldedPath, node] : keys_) {
    QJsonObject values;
    for (const auto& [foldedName, value] : node.values) {
      if (value.type == String)
        values[value.name] = QString::fromUtf8(value.data);
      else
        values[value.name] = QJsonObject{
            {QString::number(value.type),
             value.unreadable.isEmpty() ? QString::fromLatin1(value.data.toHex()) : value.unreadable}};
    }
    keys[node.path] = values;
  }
  if (!QDir().mkpath(QFileInfo(path_).absolutePath())) return WriteFault;
  if (damaged_) {
    QFile::remove(path_ + u".damaged"_s);
    if (!QFile::rename(path_, path_ + u".damaged"_s)) return WriteFault;
    damaged_ = false;
  }
  QSaveFile file(path_);
  const QByteArray text = QJsonDocument(keys).toJson();
  if (!file.open(QIODevice::WriteOnly)) return WriteFault;
  // A full disk may show no sooner than in the flush, and the commit would not mind.
  return file.write(text) == text.size() && file.flush() && file.commit() ? Success : WriteFault;
}
