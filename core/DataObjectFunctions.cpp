#include "core/DataObjectFunctions.h"

#include <algorithm>
#include <exception>

#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Trap.h"
#include "platform/system/EventPump.h"
#include "platform/system/LoginName.h"
#include "texts/LibraryWords.h"

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

// The rows that are not among the data sets, and why; all in one box. A refusal by the engine has a message
// of its own, a row that cannot be read the procedure's.
void ReportUnread(bool refusedByEngine) {
  const QString text = Globals().gUnread.Text().replace(u'\n', u"\r\n"_s);
  if (text.isEmpty()) return;
  if (refusedByEngine)
    ReportRefusal(text);
  else
    ReportProcedureError(u"DataObjectFunctions::InitializeCDataCollection"_s, text);
}

void TellWhyNotWritten(const CData& data, const Library::Saved& saved) {
  const QString& name = data.Description();
  if (saved.outcome == Library::Saved::Outcome::Conflict)
    ShowSystemMessage(Words::Library::bothChanged(name, saved.conflicts.join(u", "_s)),
                      MessageBox::Icon::Exclamation);
  if (saved.outcome == Library::Saved::Outcome::Gone)
    ShowSystemMessage(Words::Library::deletedMeanwhile(name), MessageBox::Icon::Exclamation);
}

// The first entry that fits, or the end.
template <class Predicate>
std::vector<CDataPtr>::iterator Find(Predicate&& fits) {
  return std::ranges::find_if(Globals().gDataCollection, [&](const CDataPtr& data) { return fits(*data); });
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
    state.gUnread = {};
    const quint32 emptied = state.gCollectionEmptied;
    bool overtaken = false;
    bool refusedByEngine = false;  // the first row that is left out
    try {
      CurrentLibrary()->ReadEach([&](const Library::Row& row) {
        DoEvents();
        // The user may have attached another database or closed the program meanwhile.
        overtaken = state.gCollectionEmptied != emptied;
        if (overtaken) return false;
        if (!row.failure) {
          state.gDataCollection.push_back(row.data);
          return true;
        }
        if (state.gUnread.rows.empty()) refusedByEngine = row.failure->GetKind() == Error::Kind::BadInput;
        state.gUnread.rows[row.id] = row.failure->Text();
        return true;
      });
    } catch (const std::exception& error) {
      state.gUnread.library = ErrorText(error);
      throw;
    }
    if (overtaken) return false;
    ReportUnread(refusedByEngine);
    return !state.gDataCollection.empty();
  });
}

bool SaveDataObjectToDatabase(const CDataPtr& data, Library::Saved* saved, const CData* over) {
  return Trap(u"DataObjectFunctions::SaveDataObjectToDatabase"_s, false, [&] {
    const Library::Saved result = CurrentLibrary()->Save(*data, Globals().clock->Now(), over);
    if (saved)
      *saved = result;
    else
      TellWhyNotWritten(*data, result);
    if (result.outcome != Library::Saved::Outcome::Written) return false;
    data->SetIsDataValid(true);
    data->SetDataChanged(false);
    if (result.isNew) {
      data->SetID(IDOfNewRecord(data->Description()));
      Globals().gDataCollection.push_back(data);
    }
    return true;
  });
}

bool AppendToDataObject(const CDataPtr& data, const QStringList& values) {
  return Trap(u"DataObjectFunctions::AppendToDataObject"_s, false, [&] {
    *data = *CurrentLibrary()->Append(data->Description(), values, Globals().clock->Now()).data;
    return ModifyDataObjectInSystem(data);
  });
}

Trace::Record TraceOf(const CData& data) {
  return Trap(u"DataObjectFunctions::TraceOf"_s, Trace::Record(),
              [&] { return CurrentLibrary()->TraceOf(data); });
}

std::optional<Library::Noted> SetNote(const CData& data, qsizetype sample, const QString& seen,
                                      const QString& text) {
  return Trap(u"DataObjectFunctions::SetNote"_s, std::optional<Library::Noted>(), [&] {
    return std::optional(
        CurrentLibrary()->SetNote(data, sample, seen, text, LoginName(), Globals().clock->Now()));
  });
}

std::optional<Library::Noted> PlaceNote(const CData& data, qint64 number, qsizetype sample) {
  return Trap(u"DataObjectFunctions::PlaceNote"_s, std::optional<Library::Noted>(),
              [&] { return std::optional(CurrentLibrary()->PlaceNote(data, number, sample)); });
}

bool RemoveUnplaced(const CData& data, const std::vector<qint64>& runs, const std::vector<qint64>& notes) {
  return Trap(u"DataObjectFunctions::RemoveUnplaced"_s, false, [&] {
    CurrentLibrary()->RemoveUnplaced(data, runs, notes);
    return true;
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

CDataPtr PresentOf(const CData& data) {
  CDataPtr present;
  GetDataObjectByID(data.ID(), present);
  if (!present || present->Description() == data.Description()) return present;
  const bool isRenamed = Trap(u"DataObjectFunctions::PresentOf"_s, false, [&] {
    Library& library = *CurrentLibrary();
    return library.WasNamed(data.ID(), data.Description()) ||
           library.WasNamed(data.ID(), present->Description());
  });
  return isRenamed ? present : nullptr;
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
