// A library opened for one command: the program state without a screen, and messages collected instead of
// shown.
#pragma once

#include <QString>
#include <vector>

#include "core/Globals.h"
#include "platform/ui/MessageBox.h"

class LibrarySession {
 public:
  // Opens the library. A Error that names the file where it cannot be opened or is no library of an
  // accepted revision.
  explicit LibrarySession(const QString& path);

  // Reads all data sets with their statistics. A Error where one of them cannot be read or calculated.
  const std::vector<CDataPtr>& LoadDataSets();

  // The loaded data sets of these descriptions (all for none). A InputError for one that does not exist.
  std::vector<CDataPtr> Select(const QStringList& descriptions);

  // The data set of that description straight from the table, without statistics; null where there is none. A
  // Error where it cannot be read.
  CDataPtr ReadDataSet(const QString& description);

  // Runs a procedure that reports failures by messages; where it says false they become the Error's text.
  template <class Procedure>
  void Require(Procedure&& procedure) {
    if (!procedure()) Fail();
  }

  Connection& Database() { return *state_.gConnection; }

 private:
  class Collector : public MessageBox::Presenter {
   public:
    MessageBox::Answer Show(const MessageBox::Request& request) override;
    QStringList texts;
  };
  // Puts this session's state and messages in force, and those before it back at the end.
  class Installation {
   public:
    explicit Installation(LibrarySession& session)
        : state_(InstallGlobals(&session.state_)), presenter_(MessageBox::Install(&session.messages_)) {}
    ~Installation() {
      MessageBox::Install(presenter_);
      InstallGlobals(state_);
    }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

   private:
    ProgramState* state_;
    MessageBox::Presenter* presenter_;
  };
  [[noreturn]] void Fail();
  QString NameOfRow(std::size_t index);

  QString path_;
  Collector messages_;
  MemoryRegistry registry_;
  SystemClock clock_;
  ProgramState state_;
  Installation installation_;
};
