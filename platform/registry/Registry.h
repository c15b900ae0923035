// A registry-like store of typed values: keys by path, values by name, data as bytes.
//
// Two roots: the machine's and the user's own. Names of keys and values compare without case. All calls give
// Windows error codes: 0 success, 2 not found, 5 access denied, 1015 the file of the store cannot be read, 29
// write fault.
#pragma once

#include <QByteArray>
#include <QString>
#include <map>

class Registry {
 public:
  enum Type : int {
    None = 0,
    String = 1,
    Dword = 4
  };  // REG_SZ (UTF-8 bytes), REG_DWORD (4 bytes, low byte first)
  enum Access : quint32 { KeyRead = 0x20019, KeyWrite = 0x20006 };
  enum Status { Success = 0, NotFound = 2, AccessDenied = 5, WriteFault = 29, ReadFault = 1015 };
  using Key = int;  // a handle; 0 is none

  virtual ~Registry() = default;
  virtual int RegOpenKeyEx(const QString& path, quint32 access, Key& key) = 0;
  virtual int RegCreateKeyEx(const QString& path, quint32 access, Key& key) = 0;
  virtual int RegQueryValueEx(Key key, const QString& name, Type& type, QByteArray& data) = 0;
  virtual int RegSetValueEx(Key key, const QString& name, Type type, const QByteArray& data) = 0;
  virtual int RegCloseKey(Key key) = 0;

  virtual QString Location() const = 0;  // what messages call the store
};

// The store in memory: for tests, and what the file's store works on.
class MemoryRegistry : public Registry {
 public:
  int RegOpenKeyEx(const QString& path, quint32 access, Key& key) override;
  int RegCreateKeyEx(const QString& path, quint32 access, Key& key) override;
  int RegQueryValueEx(Key key, const QString& name, Type& type, QByteArray& data) override;
  int RegSetValueEx(Key key, const QString& name, Type type, const QByteArray& data) override;
  int RegCloseKey(Key key) override;
  QString Location() const override;

 protected:
  struct Value {
    QString name;
    Type type = None;
    QByteArray data;
    QString unreadable = {};  // what a file holds in the data's place, where that is no bytes
  };
  struct OpenKey {
    QString path;  // folded
    quint32 access = 0;
  };
  using Values = std::map<QString, Value>;  // by folded name
  struct KeyNode {
    QString path;
    Values values;
  };
  std::map<QString, KeyNode> keys_;  // by folded path
  std::map<Key, OpenKey> open_;
  Key lastKey_ = 0;
};

// The store in a per-user file (JSON), written to a temporary file and renamed, so that a crash leaves the
// old or the new one. Every opening of a key reads the file anew, so that two programs see each other's
// changes. A file that cannot be read or understood is reported once, by the first opening of a key that
// meets it; from then on the store counts as empty. When it is next written, that file is set aside as
// NAME.damaged, never overwritten unseen.
class FileRegistry : public MemoryRegistry {
 public:
  // An empty path: the file that KESTREL_SETTINGS names, else one in the platform's per-user configuration
  // folder.
  explicit FileRegistry(const QString& path = {});
  QString Location() const override { return path_; }

  int RegOpenKeyEx(const QString& path, quint32 access, Key& key) override;
  int RegCreateKeyEx(const QString& path, quint32 access, Key& key) override;
  int RegSetValueEx(Key key, const QString& name, Type type, const QByteArray& data) override;

 private:
  int Read();
  int Write();

  QString path_;
  bool damaged_ = false;
};
