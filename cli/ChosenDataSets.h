// The data sets that a command goes through, a portion at a time. A row that is none is named, and keeps none
// of the others from being used.
#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "cli/CommandLine.h"
#include "library/Library.h"

class ChosenDataSets {
 public:
  // Those of these descriptions, each once and in their order; all where none is named. Throws where one is
  // not there.
  explicit ChosenDataSets(const QString& place, const QStringList& descriptions = {});

  // Gives them with their statistics. What is given once is given again in the same order, but for what is
  // gone or unreadable by then.
  void Each(const std::function<void(std::vector<Library::Row>& rows)>& take);

  qsizetype Count() const;
  Library& Of() const { return *library_; }
  int Status() const { return status_; }  // that the rows which are none leave

 private:
  const QString place_;
  std::unique_ptr<Library> library_;
  std::optional<std::vector<qint64>> ids_;  // none before all are given once
  int status_ = CommandLine::Fine;
};
