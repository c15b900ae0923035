#include "core/CollectionWatch.h"

#include <QElapsedTimer>
#include <algorithm>

#include "core/Globals.h"

namespace {
constexpr qint64 mostMilliseconds = 50;
}

CollectionWatch::CollectionWatch() : library_(CurrentLibrary()), watch_(library_->Place()) {}

std::optional<CollectionWatch::News> CollectionWatch::Take() {
  if (Globals().gLibrary != library_) return std::nullopt;
  News news;
  if (const auto change = watch_.Look()) {
    news.others = change->others;
    news.replaced = change->replaced;
    news.trouble = change->trouble;
    pending_.insert(change->changed.begin(), change->changed.end());
    pending_.insert(change->deleted.begin(), change->deleted.end());
  }
  if (news.replaced) return news;
  isLocked_ = false;
  QElapsedTimer spent;
  spent.start();
  while (!pending_.empty() && spent.elapsed() < mostMilliseconds) {
    const qint64 id = *pending_.begin();
    std::optional<Library::Row> row;
    try {
      row = library_->Read(id);
    } catch (const DatabaseError&) {
      isLocked_ = true;  // the timer's next tick is soon enough
      break;
    }
    pending_.erase(pending_.begin());
    Bring(id, row, news);
  }
  const bool isEmpty = news.changed.empty() && news.added.empty() && news.gone.empty() && !news.others &&
                       news.trouble.isEmpty();
  return isEmpty ? std::nullopt : std::optional(news);
}

void CollectionWatch::Bring(qint64 id, const std::optional<Library::Row>& row, News& news) {
  auto& collection = Globals().gDataCollection;
  const auto found = std::ranges::find(collection, id, [](const CDataPtr& data) { return data->ID(); });
  if (!row || row->failure) {
    if (row) news.trouble = row->failure->Text();
    if (found == collection.end()) return;
    news.gone.push_back(*found);
    collection.erase(found);
  } else if (found == collection.end()) {
    const auto next =
        std::ranges::find_if(collection, [id](const CDataPtr& data) { return data->ID() > id; });
    collection.insert(next, row->data);
    news.added.push_back(row->data);
  } else if ((*found)->RowAsKnown() != row->data->RowAsKnown()) {  // else it is what this program wrote
    *found = row->data;
    news.changed.push_back(row->data);
  }
}
