// What a library keeps of a data set: made, closed and read again.
#include <QDateTime>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QUuid>
#include <memory>

#include "data/Json.h"
#include "library/Library.h"
#include "platform/ado/ServerAddress.h"
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

// Where a library is made for the check, and is gone afterwards.
class Place {
 public:
  virtual ~Place() = default;
  virtual QString Text() const = 0;
};

class File : public Place {
 public:
  File() {
    if (!folder_.isValid()) throw Error(Words::Verify::noFolder(folder_.errorString()));
  }
  QString Text() const override { return folder_.filePath(u"verify.mdb"_s); }

 private:
  const QTemporaryDir folder_;
};

// A schema of a database, which the tables of a library that may stand there do not touch.
class Schema : public Place {
 public:
  explicit Schema(const QString& address) : address_(ServerAddress::Parse(address)) {
    connection_.OpenWith(address);
    connection_.Execute(u"CREATE SCHEMA "_s + name_);
    QString& options = address_.parts[u"options"_s];
    options = (options + u" -c search_path="_s + name_).trimmed();
  }
  ~Schema() override {
    try {
      connection_.Execute(u"DROP SCHEMA %1 CASCADE"_s.arg(name_));
    } catch (const Error&) {
      // The connection was lost: the check has failed, and says so.
    }
  }
  Schema(const Schema&) = delete;
  Schema& operator=(const Schema&) = delete;
  QString Text() const override { return address_.Text(); }

 private:
  const QString name_ = u"kestrel_verify_"_s + QUuid::createUuid().toString(QUuid::Id128);
  ServerAddress address_;
  Connection connection_;
};

}  // namespace

Check SaveAndLoad(const QString& address) {
  const bool onServer = !address.isEmpty();
  Check check{onServer ? Words::Verify::libraryThere() : Words::Verify::library(),
              onServer ? Words::Verify::savedAndLoadedThere() : Words::Verify::savedAndLoaded(),
              onServer ? Words::Verify::serverSource() : Words::Verify::librarySource()};
  const auto place = onServer ? std::unique_ptr<Place>(new Schema(address)) : std::make_unique<File>();
  const QString path = place->Text();
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
