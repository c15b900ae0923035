#include "cli/LibrarySession.h"

#include <QRegularExpression>
#include <algorithm>

#include "cli/Console.h"
#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "platform/access/JetFile.h"
#include "platform/ado/Recordset.h"
#include "platform/error/Error.h"

using namespace Qt::StringLiterals;

MessageBox::Answer LibrarySession::Collector::Show(const MessageBox::Request& request) {
  // A script has no use for the name of the procedure that failed.
  static const QRegularExpression procedure(u"^\\w+::\\w+ failed with error: "_s);
  const QString text = request.text.simplified().remove(procedure);
  if (request.icon == MessageBox::Icon::Information)
    Console::Warn(text);  // news stops nothing
  else
    texts << text;
  return MessageBox::Refusal(request.buttons);
}

LibrarySession::LibrarySession(const QString& path) : path_(path), installation_(*this) {
  state_.registry = &registry_;
  state_.clock = &clock_;
  if (JetFile::IsAccessFile(path)) {
    throw Error(u"%1 is an Access file; \"kestrel convert\" makes a library from it"_s.arg(path));
  }
  Connection().OpenWith(path);  // its failure names the file and the reason
  QString revision;
  bool valid = false;
  GlobalFunctions::IsDBRevisionValid(path, revision, valid);
  if (!valid && messages_.texts.isEmpty()) {
    messages_.texts << u"it is not a library (it has no revision that is 2.0 or later)"_s;
  }
  Require([&] { return valid; });
  Require([&] { return GlobalFunctions::OpenDatabaseConnection(false, path); });
  state_.gDatabaseOpen = true;
}

const std::vector<CDataPtr>& LibrarySession::LoadDataSets() {
  // False without a message is an empty library.
  if (!DataObjectFunctions::InitializeCDataCollectionOnAllCores() && !messages_.texts.isEmpty()) {
    const QString name = NameOfRow(state_.gDataCollection.size());
    if (!messages_.texts.first().contains(name)) messages_.texts.prepend(u"data set \"%1\""_s.arg(name));
    Fail();
  }
  return state_.gDataCollection;
}

std::vector<CDataPtr> LibrarySession::Select(const QStringList& descriptions) {
  if (descriptions.isEmpty()) return state_.gDataCollection;
  std::vector<CDataPtr> selected;
  for (const QString& description : descriptions) {
    const auto& all = state_.gDataCollection;
    const auto find = [&](Qt::CaseSensitivity sensitivity) {
      return std::find_if(all.begin(), all.end(), [&](const CDataPtr& data) {
        return data->Description().compare(description, sensitivity) == 0;
      });
    };
    auto found = find(Qt::CaseSensitive);
    if (found == all.end()) found = find(Qt::CaseInsensitive);
    if (found == all.end()) {
      throw InputError(u"%1 has no data set \"%2\""_s.arg(path_, description));
    }
    selected.push_back(*found);
  }
  return selected;
}

CDataPtr LibrarySession::ReadDataSet(const QString& description) {
  try {
    return DataObjectFunctions::ReadDataObject(description);
  } catch (const std::exception& error) {
    messages_.texts << ErrorText(error);
    Fail();
  }
}

QString LibrarySession::NameOfRow(std::size_t index) {
  Recordset rows;
  rows.Open(u"SELECT * FROM StatData LIMIT 1 OFFSET %1"_s.arg(index), Database());
  return rows.RecordCount() > 0 ? rows.Field(u"Description"_s).toString() : QString();
}

void LibrarySession::Fail() {
  QString reason = messages_.texts.join(u"; "_s);
  throw Error(reason.contains(path_) ? reason : path_ + u": "_s + reason);
}
