#include "cli/ChosenDataSets.h"

#include <algorithm>
#include <functional>

#include "cli/Console.h"
#include "data/Names.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

ChosenDataSets::ChosenDataSets(const QString& place, const QStringList& descriptions)
    : place_(place), library_(Library::Open(place, Console::Warn)) {
  if (descriptions.isEmpty()) return;
  const std::vector<Library::Entry> all = library_->Entries();
  ids_.emplace();
  for (const QString& description : descriptions) {
    const auto found = Names::Find(all.begin(), all.end(), description, std::mem_fn(&Library::Entry::name));
    if (found == all.end()) throw InputError(Words::Library::notThere(place, description), description);
    if (std::ranges::find(*ids_, found->id) == ids_->end()) ids_->push_back(found->id);
  }
}

void ChosenDataSets::Each(const std::function<void(std::vector<Library::Row>& rows)>& take) {
  std::vector<qint64> given;
  library_->ReadPortions(
      [&](std::vector<Library::Row>& rows) {
        std::erase_if(rows, [this](const Library::Row& row) {
          if (!row.failure) return false;
          Console::Complain(place_ + u": "_s + row.failure->Text());
          status_ = std::max(status_, CommandLine::StatusOf(*row.failure));
          return true;
        });
        for (const Library::Row& row : rows) given.push_back(row.id);
        if (!rows.empty()) take(rows);
        return true;
      },
      ids_);
  ids_ = std::move(given);
}

qsizetype ChosenDataSets::Count() const {
  return static_cast<qsizetype>(ids_ ? ids_->size() : library_->Entries().size());
}
