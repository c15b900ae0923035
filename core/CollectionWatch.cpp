#include "core/CollectionWatch.h"

#include <algorithm>
#include <utility>

#include "core/Globals.h"

namespace {

constexpr quint32 mostMilliseconds = 50;

// For as long as it lives, a lock that another program holds is a failure at once.
class WithoutWaiting {
 public:
  explicit WithoutWaiting(Connection& connection) : connection_(connection), before_(connection.LockWait) {
    connection_.SetLockWait(0);
  }
  ~WithoutWaiting() { connection_.SetLockWait(before_); }
  WithoutWaiting(const WithoutWaiting&) = delete;
  WithoutWaiting& operator=(const WithoutWaiting&) = delete;

 private:
  Connection& connection_;
  const int before_;
};

}  // namespace

CollectionWatch::CollectionWatch(std::function<void()> heard)
    : library_(CurrentLibrary()), watch_(library_->Place()) {
  watch_.Heard = std::move(heard);
}

std::optional<CollectionWatch::News> CollectionWatch::Take() {
  ProgramState& state = Globals();
  if (state.gLibrary != library_) return std::nullopt;
  News news;
  const Unread unread = state.gUnread;
  if (const auto change = watch_.Look()) {
    news.others = change->others;
    if (change->replaced) file_ = File::Replaced;
    if (!change->trouble.isEmpty()) {
      file_ = File::Unreadable;
      state.gUnread.library = change->trouble;
    }
    pending_.insert(change->changed.begin(), change->changed.end());
    pending_.insert(change->deleted.begin(), change->deleted.end());
  }
  news.replaced = file_ == File::Replaced;
  if (file_ == File::Same && !pending_.empty()) ReadPending(news);
  news.others = news.others || state.gUnread != unread;
  const bool isNews =
      news.others || news.replaced || !news.changed.empty() || !news.added.empty() || !news.gone.empty();
  return isNews ? std::optional(news) : std::nullopt;
}

void CollectionWatch::ReadPending(News& news) {
  waits_ = false;
  Clock& clock = *Globals().clock;
  const auto now = [&clock] { return static_cast<quint32>(clock.GetTickCount()); };
  const quint32 start = now();
  try {
    const WithoutWaiting quick(library_->Database());
    while (!pending_.empty() && now() - start < mostMilliseconds) {
      const qint64 id = *pending_.begin();
      const std::optional<Library::Row> row = library_->Read(id);
      // What a load could not read is still not there.
      if (QString& told = Globals().gUnread.library; told == trouble_) told.clear();
      pending_.erase(pending_.begin());
      Bring(id, row, news);
    }
  } catch (const DatabaseError& error) {
    waits_ = true;
    if (!error.IsBusy()) Globals().gUnread.library = trouble_ = error.Text();
  }
}

void CollectionWatch::Bring(qint64 id, const std::optional<Library::Row>& row, News& news) {
  auto& collection = Globals().gDataCollection;
  auto& unread = Globals().gUnread.rows;
  unread.erase(id);
  if (row && row->failure) unread[id] = row->failure->Text();
  const auto found = std::ranges::find(collection, id, [](const CDataPtr& data) { return data->ID(); });
  if (!row || row->failure) {
    if (found == collection.end()) return;
    news.gone.push_back(*found);
    collection.erase(found);
  } else if (found == collection.end()) {
    const auto next =
        std::ranges::find_if(collection, [id](const CDataPtr& data) { return data->ID() > id; });
    collection.insert(next, row->data);
    news.added.push_back(row->data);
  } else if ((*found)->RowAsKnown() == row->data->RowAsKnown()) {
    news.others = true;  // what this program wrote, or a note on a sample
  } else {
    *found = row->data;
    news.changed.push_back(row->data);
  }
}
