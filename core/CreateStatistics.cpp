#include "core/CreateStatistics.h"

#include "core/Messages.h"
#include "core/Trap.h"

using namespace Qt::StringLiterals;

namespace QCGlobalFunctions {

bool CreateStatistics(CData& data) {
  return Trap(u"QCGlobalFunctions::CreateStatistics"_s, false, [&] {
    const bool succeeded = CalculateStatistics(data);
    if (!succeeded) ReportRefusal(data.ErrorMessage());
    return succeeded;
  });
}

}  // namespace QCGlobalFunctions
