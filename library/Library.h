// A library: where data sets live. Opened, read, written, appended to and given units; a file or a server.
//
// Every failure is an Error; one that the engine's refusal of the values brings about is bad input. Nothing
// is shown, and nothing outside is changed. One thread at a time works with a library.
#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "data/CData.h"
#include "library/Backup.h"
#include "platform/ado/Connection.h"

class Library {
 public:
  // Gets what a user should know although nothing failed: that no backup could be made.
  using News = Backup::Tell;

  // A place is the path of a file or the address of a database on a server (ServerAddress.h).
  // Makes an empty library, or a copy of this one with everything in it; neither overwrites anything.
  static void Create(const QString& place);
  void CopyTo(const QString& place);

  // What a place is called where there is little room: the file's name, the database and its host.
  static QString NameOf(const QString& place);

  // Opens whatever is there, and proves that it is a database.
  explicit Library(const QString& place, const QString& provider = Connection::JetProvider);
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  // Opens it for work: of an accepted revision, whole, and guarded. The Error names the place.
  static std::unique_ptr<Library> Open(const QString& place, const News& news);

  // The revision that it gives itself (the last row's): null for none, or for one too short to be one.
  QString Revision();

  // Checks the file and whether this program may work with it; has the first change preceded by a backup.
  void Guard(const News& news);

  bool IsOnServer() const { return connection_.IsServer(); }

  // Whether the rights are enough to write: the user's on a server, or those of the file and its folder.
  bool CanWrite();  // asked once

  const QString& Place() const { return place_; }
  Connection& Database() { return connection_; }

  // What became of one row: a data set with its statistics, or why there is none.
  struct Row {
    CDataPtr data;
    std::optional<Error> failure;  // bad input where the engine refuses the values
    qint64 id = 0;
    QString description = {};
  };

  // Gives every row in the order of the IDs, or those chosen in theirs, calculated on all of the machine's
  // cores; `take` says whether to go on. Only some rows are read and held at a time: meanwhile other programs
  // may write. Each row is as it stood when it was read; one that is gone by then is left out.
  void ReadPortions(const std::function<bool(std::vector<Row>& rows)>& take,
                    const std::optional<std::vector<qint64>>& chosen = {});
  void ReadEach(const std::function<bool(const Row& row)>& take);

  // Every row at once: for libraries that are known to be small.
  std::vector<Row> ReadAll();

  // Which rows there are, in the order of the IDs.
  struct Entry {
    qint64 id;
    QString name;
  };
  std::vector<Entry> Entries();

  // The row of that ID; none where it is gone.
  std::optional<Row> Read(qint64 id);

  // Whether a data set has that name, or one that is the same.
  bool Contains(const QString& description);

  // Gives a data set another name, which it then goes by everywhere; what others have open stays the same
  // data set. InputError where another one has that name, or one that is the same. By its present name: gives
  // its ID.
  void Rename(qint64 id, const QString& name, const QDateTime& now) {
    Repeated(connection_, [&] { TryRename(id, name, now); });
  }
  qint64 Rename(const QString& description, const QString& name, const QDateTime& now);
  bool WasNamed(qint64 id, const QString& description);

  // What became of a save.
  struct Saved {
    enum class Outcome {
      Written,
      Conflict,  // somebody else changed the same meanwhile: nothing was written
      Gone       // the row was deleted meanwhile: nothing was written
    };
    Outcome outcome = Outcome::Written;
    bool isNew = false;
    CDataPtr theirs;        // Conflict: the data set as it stands in the library, with its statistics
    QStringList conflicts;  // Conflict: what both have changed, in words
    QString takenIn;        // Written: one line on what others had changed; empty where they had not
  };

  // Writes a data set in one transaction. One that was never read from a library is a new row; InputError
  // where its description is taken, by somebody who was faster. Else only what
  // was changed since its row was read is written (see Merge.h), existing rows keep their description, and
  // the data set is then as loading the row would make it; what is not Written leaves it as it was. A
  // conflict is decided for `data` where the user has seen and turned down `over`, the `theirs` of the save
  // before, and the row is still that one.
  Saved Save(CData& data, const QDateTime& now, const CData* over = nullptr) {
    return Repeated(connection_, [&] { return TrySave(data, now, over); });
  }

  // Adds a new data set, and its unit where that is not offered yet. The description must not be taken.
  // Control limits that cannot be kept yet are not stored. The runs are those of its samples, in their order.
  void Add(CData& data, const QDateTime& now, const std::vector<Trace::Run>& runs = {}) {
    Repeated(connection_, [&] { TryAdd(data, now, runs); });
  }

  enum class Limits { Stay, AreRenewed };

  // Puts values behind those of the data set, whose kept control limits stay or are calculated anew from all
  // points; those that the row leaves open are kept as soon as they can be. Together they are one run: of the
  // source's lot and time, or of now. Gives it with its statistics.
  struct Appended {
    CDataPtr data;
    bool keepsLimits = false;  // for the first time
  };
  Appended Append(const QString& description, const QStringList& values, const QDateTime& now,
                  Limits limits = Limits::Stay, const Trace::Source& source = {}) {
    return Repeated(connection_, [&] { return TryAppend(description, values, now, limits, source); });
  }

  // When and in which lots its samples were taken, and what was noted about them. Nothing else reads that.
  Trace::Record TraceOf(const CData& data);
  std::vector<Trace::Record> TracesOf(const std::vector<Row>& rows);  // at once

  // What became of a note.
  struct Noted {
    enum class Outcome {
      Written,
      Conflict,  // somebody else wrote or removed one meanwhile: nothing was written
      Gone       // the data set or its sample is not there any more: nothing was written
    };
    Outcome outcome = Outcome::Written;
    Trace::Note theirs;  // Conflict: the note that stands there; its text is empty where it was removed
  };

  // Notes something about one sample in place of what the user has seen noted there; without a text nothing
  // is noted there any more. The sample is the one that the data set has in that place, wherever it now is.
  Noted SetNote(const CData& data, qsizetype sample, const QString& seen, const QString& text,
                const QString& author, const QDateTime& now);

  // Puts a note that has lost its sample on this one; `theirs` is the note that stands there already.
  Noted PlaceNote(const CData& data, qint64 number, qsizetype sample);

  // Takes away runs and notes that have lost their samples, by their numbers. Those that others have given a
  // sample meanwhile stay.
  void RemoveUnplaced(const CData& data, const std::vector<qint64>& runs, const std::vector<qint64>& notes);

  // Offers a unit of measurement, unless it is offered already.
  void AddUnit(const QString& name);
  bool OffersUnit(const QString& name);
  void LockUnits();  // until the transaction that is open ends, nobody else adds one

  // A data set that was deleted, kept aside until it is restored or purged.
  struct Deleted {
    qint64 number;      // of the deletion
    QString deletedAt;  // as LastModified is written
    Row row;            // its ID and description, and the data set where that can be read
  };

  void Delete(qint64 id, const QDateTime& now);
  std::vector<Deleted> DeletedDataSets();  // newest first
  // Under its ID, and its own description or another; InputError where that is taken.
  void Restore(const Deleted& deleted, const QString& description = {});
  void Purge(const Deleted& deleted);

 private:
  using RawRows = std::vector<QVariantList>;
  RawRows Select(const QString& clause = {}, const QVariantList& values = {});
  RawRows SelectId(qint64 id);
  RawRows SelectNamed(const QString& description);
  RawRows SelectEach(std::span<const qint64> ids);
  std::vector<Entry> Entries(const QString& sql);
  std::optional<QVariantList> PresentRow(const CData& data);
  QVariantList WrittenRow(qint64 id);
  std::optional<qint64> FindId(const QString& sql, const QString& name);
  std::optional<qint64> FindDataSet(const QString& description);
  Saved TrySave(CData& data, const QDateTime& now, const CData* over);
  void TryAdd(CData& data, const QDateTime& now, std::vector<Trace::Run> runs);
  Appended TryAppend(const QString& description, const QStringList& values, const QDateTime& now,
                     Limits limits, const Trace::Source& source);
  void TryRename(qint64 id, const QString& name, const QDateTime& now);
  QVariantList Insert(const CData& data, const QDateTime& now);
  QVariantList Update(const QVariantList& before, const QVariantList& after, const QDateTime& now);
  void NoteLimitsBase(CData& data, const QVariantList& before, const QVariantList& written);
  void MoveTrace(const CData& data, const QVariantList& before, const QVariantList& after);
  struct Standing;
  std::optional<Standing> StandingOf(const CData& data);
  void TellOthers(qint64 id);
  CDataPtr Extended(const QString& description, const QStringList& values, Limits limits);
  InputError NotThere(const QString& description);
  void NoteFormerName(qint64 id, const QString& before, const QString& name);
  static QString NameIn(const QVariantList& row);
  void KeepName(qint64 id, const QString& description);
  void RequireFree(const QString& description);
  void RequireThere(qint64 id);
  void RequireKept(const Deleted& deleted);

  QString place_;
  Connection connection_;
  std::unique_ptr<Backup> backup_;
  std::optional<bool> canWrite_;
};
