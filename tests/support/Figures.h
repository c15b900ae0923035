// Data sets in which every figure differs from every other, so that none can stand under another's name
// unseen, and the figures of a data set by name.
#pragma once

#include <gtest/gtest.h>

#include <QJsonObject>
#include <QMap>
#include <QVariant>
#include <type_traits>

#include "data/CData.h"

using namespace Qt::StringLiterals;

using Figures = QMap<QString, QVariant>;

// As stored, in full precision.
inline Figures FiguresOf(const CData& data) {
  Figures figures;
  data.ForEachProperty([&](const char* name, const auto&, const auto& value, auto) {
    figures[QString::fromLatin1(name)] = QVariant::fromValue(value);
  });
  return figures;
}

// Sets what is named.
inline void SetFigures(CData& data, const QJsonObject& figures) {
  data.ForEachProperty([&]<class T>(const char* name, const T&, const auto&, auto set) {
    const QJsonValue value = figures[QLatin1String(name)];
    if (!value.isUndefined()) (data.*set)(value.toVariant().value<T>());
  });
}

// One that passes every check, not saved yet: around 10, between 8 and 12.
inline CDataPtr DataSetOf(const QString& description, const QString& values, qint16 subGroupSize) {
  auto data = std::make_shared<CData>();
  data->SetDescription(description);
  data->SetUnitOfMeasurement(u"MM"_s);
  data->SetDelimitedInputString(values);
  data->SetSubGroupSize(subGroupSize);
  data->SetUpperSpecLimit(12);
  data->SetLowerSpecLimit(8);
  data->SetNominalSpecLimit(10);
  return data;
}

// A number from 31 on for each property, with a fraction where it can have one; texts are their own names.
// What decides how the others are read stays as it is: the delimiter, the decimals.
inline CData DistinctData() {
  CData data;
  int number = 30;
  const auto next = [&number]<class T>(const T& initial, const char* name) {
    ++number;
    if constexpr (std::is_same_v<T, QString>)
      return QString::fromLatin1(name);
    else if constexpr (std::is_same_v<T, bool>)
      return !initial;
    else
      return static_cast<T>(number + 0.25);
  };
  data.ForEachProperty([&](const char* name, const auto& initial, const auto&, auto set) {
    (data.*set)(next(initial, name));
  });
  data.SetStringDelimiter(CData().StringDelimiter());
  data.SetPrecisionValue(CData().PrecisionValue());
  return data;
}

// All figures are as expected; each that is not is named.
inline void ExpectFigures(const CData& data, const Figures& expected) {
  const Figures found = FiguresOf(data);
  for (const auto& [name, value] : expected.asKeyValueRange())
    EXPECT_EQ(found.value(name), value)
        << name.toStdString() << ": " << found.value(name).toString().toStdString() << " for "
        << value.toString().toStdString();
}
