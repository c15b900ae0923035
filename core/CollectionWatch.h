// Brings what others change in the open library into the program's collection.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "data/CData.h"
#include "library/Library.h"
#include "library/LibraryWatch.h"

class CollectionWatch {
 public:
  // Of the library that is open now; the collection is to be read after that. `heard` is called as soon as a
  // server tells of a change.
  explicit CollectionWatch(std::function<void()> heard = {});

  struct News {
    std::vector<CDataPtr> changed = {};  // stand in the collection in the place of those with their IDs
    std::vector<CDataPtr> added = {};    // stand in the collection in the order of the IDs
    std::vector<CDataPtr> gone = {};     // stand there no longer
    bool others = false;                 // something else: a unit, a note; or Globals().gUnread
    bool replaced = false;               // the file has to be opened and read again: it may be another one
  };

  // What is new since the last time; none where nothing is. Where much is new, takes a part of it, so that
  // the windows do not wait; the rest comes with the next ones.
  std::optional<News> Take();
  bool HasMore() const { return !pending_.empty() && !waits_; }

 private:
  void ReadPending(News& news);
  void Bring(qint64 id, const std::optional<Library::Row>& row, News& news);

  const std::shared_ptr<Library> library_;
  LibraryWatch watch_;
  std::set<qint64> pending_;  // rows that are to be read again
  bool waits_ = false;        // for the timer's next tick, since they cannot be read just now
  QString trouble_;           // why they could not be
  enum class File { Same, Replaced, Unreadable } file_ = File::Same;  // in the library's place
};
