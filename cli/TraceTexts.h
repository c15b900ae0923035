// What is known of samples besides their values, as other programs read it.
#pragma once

#include <QJsonObject>
#include <QString>

#include "data/CData.h"
#include "data/Trace.h"

namespace TraceTexts {

// With the time of this place and its offset, as ISO 8601 has it; empty for no time.
QString Moment(const QDateTime& time);

// Puts the runs and notes under their names.
void AddTo(QJsonObject& object, const Trace::Record& record);

// RFC 4180, one line for each sample.
QString Csv(const CData& data, const Trace::Record& record);

}  // namespace TraceTexts
