// Fuzzes the file of the settings: whatever it holds, the program has settings or says once that it cannot
// read them, and what is written is there at the next start.
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "core/Globals.h"
#include "core/RegistryFunctions.h"
#include "tests/fuzz/Require.h"
#include "tests/support/RecordedMessageBoxes.h"

using namespace Qt::StringLiterals;

namespace {

// In memory where there is such a folder: every write is flushed to the disk.
QString Place() {
  const QString memory = u"/dev/shm"_s;
  return (QFile::exists(memory) ? memory : QDir::tempPath()) + u"/kestrel-fuzz-XXXXXX"_s;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const QTemporaryDir folder(Place());
  static const QString path = folder.filePath(u"settings.json"_s);
  static NotedBoxes boxes;
  static ProgramState state;
  InstallGlobals(&state);
  QFile file(path);
  Require(file.open(QIODevice::WriteOnly));
  file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
  file.close();

  FileRegistry registry(path);
  state.registry = &registry;
  state.gSetup = {};
  state.gSetup.RegistryKeyPath = u"Software\\Key"_s;
  boxes.texts.clear();
  QCGlobalFunctions::GetRegistrySettings();
  Require(boxes.texts.size() <= 1);
  Require(RegistryFunctions::SetKeyValue({}, u"DatabaseName"_s, Registry::String, u"new"_s));

  FileRegistry next(path);
  state.registry = &next;
  Require(RegistryFunctions::GetKeyValue({}, u"DatabaseName"_s, Registry::String) == u"new"_s);
  return 0;
}
