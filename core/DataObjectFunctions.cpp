#include "core/DataObjectFunctions.h"

#include <exception>
#include <limits>

#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Trap.h"
#include "platform/language/Conversions.h"
#include "platform/system/EventPump.h"
#include "texts/Texts.h"

using namespace Qt::StringLiterals;

namespace {

// The look-up compares the column Name, which StatData need not have. The data set is saved all the same, so
// its failure is not worth a message: the caller sees the ID 0.
qint32 IDOfNewRecord(const QString& description) {
  try {
    return QCGlobalFunctions::FindIDByName(u"StatData"_s, u"Description"_s, description);
  } catch (const std::exception&) {
    return 0;
  }
}

// A refusal by the engine has its own message, a row that cannot be read the procedure's.
bool IsUsable(const Library::Row& row) {
  if (!row.failure) return true;
  if (!row.refusedByEngine) throw Error(*row.failure);
  ShowErrorMessage(true,
                   LoadResText(u"Failed to generate statistical data with error;112") + u"\r\n"_s +
                       row.data->ErrorMessage(),
                   {});
  return false;
}

// The first entry that fits, or the end. The scans count in 16 bits: what lies behind that is out of reach.
template <class Predicate>
std::vector<CDataPtr>::iterator Find(Predicate&& fits) {
  auto& collection = Globals().gDataCollection;
  for (size_t i = 0; i < collection.size(); ++i) {
    if (i == std::numeric_limits<qint16>::max()) throw Conversions::Overflow();
    if (fits(*collection[i])) return collection.begin() + static_cast<std::ptrdiff_t>(i);
  }
  return collection.end();
}

auto FindByID(qint32 id) {
  return Find([id](const CData& data) { return data.ID() == id; });
}

bool IsEntry(std::vector<CDataPtr>::iterator found) { return found != Globals().gDataCollection.end(); }

}  // namespace

namespace DataObjectFunctions {

bool InitializeCDataCollection() {
  return Trap(u"DataObjectFunctions::InitializeCDataCollection"_s, false, [] {
    ProgramState& state = Globals();
    DeleteAllDataObjects();
    const quint32 emptied = state.gCollectionEmptied;
    bool loaded = false;
    CurrentLibrary()->ReadEach([&](const Library::Row& row) {
      DoEvents();
      // The user may have attached another database or closed the program meanwhile.
      loaded = state.gCollectionEmptied == emptied && IsUsable(row);
      if (loaded) state.gDataCollection.push_back(row.data);
      return loaded;
    });
    return loaded;
  });
}

bool SaveDataObjectToDatabase(const CDataPtr& data) {
  return Trap(u"DataObjectFunctions::SaveDataObjectToDatabase"_s, false, [&] {
    bool isNew = false;
    try {
      isNew = CurrentLibrary()->Save(*data, Globals().clock->Now());
    } catch (const Error& error) {
      if (error.GetKind() != Error::Kind::Conflict) throw;
      ShowSystemMessage(error.Text(), MessageBox::Icon::Exclamation);
      return false;
    }
    data->SetIsDataValid(true);
    data->SetDataChanged(false);
    if (isNew) {
      data->SetID(IDOfNewRecord(data->Description()));
      Globals().gDataCollection.push_back(data);
    }
    return true;
  });
}

bool AppendToDataObject(const CDataPtr& data, const QStringList& values) {
  return Trap(u"DataObjectFunctions::AppendToDataObject"_s, false, [&] {
    *data = *CurrentLibrary()->Append(data->Description(), values, Globals().clock->Now());
    return ModifyDataObjectInSystem(data);
  });
}

bool AddDataObjectToSystem(const CDataPtr& data) {
  return Trap(u"DataObjectFunctions::AddDataObjectToSystem"_s, false, [&] {
    Globals().gDataCollection.push_back(data);
    if (MainScreen* screen = Globals().mainScreen) screen->AddListRow(*data);
    return true;
  });
}

bool ModifyDataObjectInSystem(const CDataPtr& data) {
  return Trap(u"DataObjectFunctions::ModifyDataObjectInSystem"_s, false, [&] {
    if (!UpdateCollectionObject(data)) return false;
    if (MainScreen* screen = Globals().mainScreen) screen->UpdateListRow(*data);
    return true;
  });
}

bool UpdateCollectionObject(const CDataPtr& data) {
  return Trap(u"DataObjectFunctions::UpdateCollectionObject"_s, false, [&] {
    FindByID(data->ID());
    return true;
  });
}

bool DeleteDataObjectfromListview(qint32 id) {
  return Trap(u"DataObjectFunctions::DeleteDataObjectfromListview"_s, false, [&] {
    if (MainScreen* screen = Globals().mainScreen) screen->RemoveListRow(id);
    return true;
  });
}

bool DeleteDataObjectByID(qint32 id) {
  return Trap(u"DataObjectFunctions::DeleteDataObjectByID"_s, false, [&] {
    if (const auto found = FindByID(id); IsEntry(found)) Globals().gDataCollection.erase(found);
    return true;
  });
}

void DeleteAllDataObjects() {
  Trap(u"DataObjectFunctions::DeleteAllDataObjects"_s, [] {
    Globals().gDataCollection.clear();
    ++Globals().gCollectionEmptied;
  });
}

bool GetDataObjectByID(qint32 id, CDataPtr& data) {
  data.reset();
  return Trap(u"DataObjectFunctions::GetDataObjectByID"_s, false, [&] {
    if (const auto found = FindByID(id); IsEntry(found)) data = *found;
    return true;
  });
}

QString GetDataObjectDescription(qint32 id) {
  return Trap(u"DataObjectFunctions::GetDataObjectDescription"_s, QString(), [&] {
    const auto found = FindByID(id);
    return IsEntry(found) ? (*found)->Description() : QString();
  });
}

qint32 GetCurrentDataObjectID(const QString& description) {
  return Trap(u"DataObjectFunctions::GetCurrentDataObjectID"_s, 0, [&] {
    const auto found = Find([&](const CData& data) { return data.Description() == description; });
    return IsEntry(found) ? (*found)->ID() : 0;
  });
}

}  // namespace DataObjectFunctions
