// The cases of a test where these are many and nothing but texts and numbers: an array for each, as a file of
// tests/fixtures/cases lists them.
#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

inline QJsonArray Cases(const QString& file, const QString& part) {
  QFile json(QStringLiteral(KESTREL_TEST_DATA "/cases/") + file);
  if (!json.open(QIODevice::ReadOnly)) throw std::runtime_error("no file " + file.toStdString());
  const QJsonArray cases = QJsonDocument::fromJson(json.readAll())[part].toArray();
  if (cases.isEmpty()) throw std::runtime_error("no cases " + part.toStdString());
  return cases;
}

// A list of whole numbers in one of them.
template <class Number>
std::vector<Number> Numbers(const QJsonValue& list) {
  std::vector<Number> numbers;
  for (const auto& one : list.toArray()) numbers.push_back(static_cast<Number>(one.toInt()));
  return numbers;
}
