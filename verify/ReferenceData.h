// The embedded reference data: what is calculated with, and the figures expected of it.
#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QString>

#include "engine/Engine.h"

namespace ReferenceData {

// "certified" or "cases" of reference/cases.json.
QJsonArray Part(const QString& name);

// A case's inputs, but for its values.
engine::Inputs InputsOf(const QJsonValue& reference);

}  // namespace ReferenceData
