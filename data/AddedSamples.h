// New samples behind those of a data set whose control limits stay: which values a text holds, and what they
// make of the data set.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "data/CData.h"
#include "data/RawDataText.h"

namespace AddedSamples {

qsizetype CountOf(const CData& data);

RawDataText::Examination Examine(const QString& text, const CData& data);

// The values of the text; none where one of its lines is not clear.
QStringList ValuesIn(const QString& text);

// The data set with these values; null where the engine refuses them, or one of the lines is not clear.
std::unique_ptr<CData> Preview(const CData& data, const QString& text);

// The last point that breaks the rule that the data set violates; 0 where there is none.
int LastViolation(const CData& data);

}  // namespace AddedSamples
