// What a library file keeps of a data set: made, closed and read again.
#include <QDateTime>
#include <QJsonDocument>
#include <QTemporaryDir>

#include "data/Json.h"
#include "library/Library.h"
#include "platform/error/Error.h"
#include "texts/VerifyWords.h"
#include "verify/ReferenceData.h"
#include "verify/Verification.h"

using namespace Qt::StringLiterals;

namespace Verification {

namespace {

CDataPtr DataSetOf(const QJsonValue& reference) {
  const engine::Inputs inputs = ReferenceData::InputsOf(reference);
  const auto data = std::make_shared<CData>();
  data->SetFollowsItsDecimals(true);
  data->SetDescription(reference[u"name"_s].toString());
  data->SetUpperSpecLimit(inputs.upperSpecLimit);
  data->SetLowerSpecLimit(inputs.lowerSpecLimit);
  data->SetSubGroupSize(static_cast<qint16>(inputs.subGroupSize));
  data->SetSensitivityValue(static_cast<qint32>(inputs.sensitivity));
  data->SetDetectionPeriod(static_cast<qint32>(inputs.detectionPeriod));
  data->SetDelimitedInputString(reference[u"values"_s].toString() + u',');
  return data;
}

// Everything that the program shows of a data set. The number of its row and the editor's own mark are not
// a matter of the file.
QString Shown(const CData& data) {
  QJsonObject properties = Json::ReadProperties(data);
  for (const char* name : {"ID", "IsDataValid"}) properties.remove(QLatin1String(name));
  return QString::fromUtf8(QJsonDocument(properties).toJson(QJsonDocument::Compact));
}

}  // namespace

Check SaveAndLoad() {
  Check check{Words::Verify::library(), Words::Verify::savedAndLoaded(), Words::Verify::librarySource()};
  const QTemporaryDir folder;
  if (!folder.isValid()) throw Error(Words::Verify::noFolder(folder.errorString()));
  const QString path = folder.filePath(u"verify.mdb"_s);
  Library::Create(path);
  std::vector<CDataPtr> saved;
  {
    const auto library = Library::Open(path, {});
    for (const QJsonValue reference : ReferenceData::Part(u"cases"_s)) {
      saved.push_back(DataSetOf(reference));
      library->Add(*saved.back(), QDateTime::currentDateTime());
    }
  }
  const std::vector<Library::Row> loaded = Library::Open(path, {})->ReadAll();
  for (std::size_t i = 0; i < saved.size(); ++i) {
    const bool isThere = i < loaded.size() && !loaded[i].failure;
    check.quantities.push_back(Quantity::OfTexts(saved[i]->Description(), Shown(*saved[i]),
                                                 isThere ? Shown(*loaded[i].data) : QString()));
  }
  return check;
}

}  // namespace Verification
