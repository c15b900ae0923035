#include "core/RegistryFunctions.h"

#include <QtEndian>

#include "core/Globals.h"
#include "core/Trap.h"
#include "platform/language/Conversions.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

QString PathOrDefault(const QString& path) {
  return path.isEmpty() ? Globals().gSetup.RegistryKeyPath : path;
}

// An open key of the store, closed on every path.
class OpenKey {
 public:
  OpenKey(const QString& path, quint32 access)
      : status_(Store().RegOpenKeyEx(PathOrDefault(path), access, key_)) {
    if (status_ == Registry::ReadFault) throw Error(Words::settingsUnread(Store().Location()));
  }
  ~OpenKey() {
    if (key_) Store().RegCloseKey(key_);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  static Registry& Store() { return *Globals().registry; }
  int Status() const { return status_; }
  Registry::Key Handle() const { return key_; }

 private:
  Registry::Key key_ = 0;
  int status_;
};

QString WriteFailure() { return Words::settingsUnwritten(OpenKey::Store().Location()); }

// Each byte from the highest without its leading zero: 00 01 00 00 gives &h0010, so 16. Stored settings hold
// numbers that were read in this way.
QString DwordText(const QByteArray& data) {
  QString digits;
  for (qsizetype i = data.size() - 1; i >= 0; --i) digits += QString::number(static_cast<uchar>(data[i]), 16);
  bool isNumber = false;
  const quint32 value = digits.toUInt(&isNumber, 16);
  if (!isNumber) throw Conversions::TypeMismatch();
  return QString::number(static_cast<qint32>(value));
}

QByteArray DwordBytes(const QString& value) {
  QByteArray data(sizeof(qint32), '\0');
  qToLittleEndian(Conversions::CLng(value), data.data());
  return data;
}

}  // namespace

bool RegistryFunctions::CreateRegistryKey(const QString& keyPath) {
  return Trap(u"RegistryFunctions::CreateRegistryKey"_s, false, [&] {
    if (OpenKey(keyPath, Registry::KeyRead).Status() == Registry::Success) return true;
    Registry::Key key = 0;
    const int status = OpenKey::Store().RegCreateKeyEx(PathOrDefault(keyPath), Registry::KeyWrite, key);
    if (key) OpenKey::Store().RegCloseKey(key);
    if (status != Registry::Success) throw Error(WriteFailure());
    return true;
  });
}

QString RegistryFunctions::GetKeyValue(const QString& keyPath, const QString& valueName, int valueType) {
  return Trap(u"RegistryFunctions::GetKeyValue"_s, QString(), [&] {
    const OpenKey key(keyPath, Registry::KeyRead);
    Registry::Type storedType{};
    QByteArray data;
    if (OpenKey::Store().RegQueryValueEx(key.Handle(), valueName, storedType, data) != Registry::Success)
      return QString();
    if (data.endsWith('\0')) data.chop(1);
    if (valueType == Registry::Dword) return DwordText(data);
    return valueType == Registry::String ? QString::fromUtf8(data) : QString();
  });
}

bool RegistryFunctions::SetKeyValue(const QString& keyPath, const QString& valueName, int valueType,
                                    const QString& value) {
  return Trap(u"RegistryFunctions::SetKeyValue"_s, false, [&] {
    if (!CreateRegistryKey(keyPath)) return false;
    const bool isDword = valueType == Registry::Dword;
    const QByteArray data = isDword ? DwordBytes(value) : value.toUtf8();
    const OpenKey key(keyPath, Registry::KeyWrite);
    const int status = OpenKey::Store().RegSetValueEx(key.Handle(), valueName,
                                                      isDword ? Registry::Dword : Registry::String, data);
    if (status != Registry::Success)
      ReportProcedureError(u"RegistryFunctions::SetKeyValue"_s, WriteFailure());
    return true;
  });
}

bool QCGlobalFunctions::GetRegistrySettings() {
  return Trap(u"QCGlobalFunctions::GetRegistrySettings"_s, false, [] {
    clsSetup& setup = Globals().gSetup;
    const QString viewsChart = RegistryFunctions::GetKeyValue(
        setup.RegistryKeyPath, u"ListviewDoubleClickViewsChart"_s, Registry::Dword);
    setup.ListviewDoubleClickViewsChart = viewsChart.isEmpty() || Conversions::CLng(viewsChart) != 0;
    setup.DatabaseName =
        RegistryFunctions::GetKeyValue(setup.RegistryKeyPath, u"DatabaseName"_s, Registry::String);
    return true;
  });
}
