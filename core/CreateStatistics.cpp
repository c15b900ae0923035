#include "core/CreateStatistics.h"

#include "core/Messages.h"
#include "core/Trap.h"
#include "texts/Texts.h"

using namespace Qt::StringLiterals;

namespace QCGlobalFunctions {

bool CreateStatistics(CData& data) {
  return Trap(u"QCGlobalFunctions::CreateStatistics"_s, false, [&] {
    const bool succeeded = CalculateStatistics(data);
    if (!succeeded) {
      const QString failed = LoadResText(u"Failed to generate statistical data with error;112");
      ShowErrorMessage(true, failed + u"\r\n"_s + data.ErrorMessage(), {});
    }
    return succeeded;
  });
}

}  // namespace QCGlobalFunctions
