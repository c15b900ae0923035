// Every database operation of attaching a library fails once: it is refused before anything was closed, or
// there is no database any more and the panel says so; the user is told, and not over and over.
#include <gtest/gtest.h>

#include "core/GlobalFunctions.h"
#include "tests/support/FailEach.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;

namespace {

class NotedBoxes : public MessageBox::Presenter {
 public:
  NotedBoxes() : previous_(MessageBox::Install(this)) {}
  ~NotedBoxes() override { MessageBox::Install(previous_); }
  MessageBox::Answer Show(const MessageBox::Request& request) override {
    texts << request.text;
    return MessageBox::Answer::Ok;
  }
  QStringList texts;

 private:
  MessageBox::Presenter* previous_;
};

TEST(Faults, Attaching) {
  TestProgram program;
  NotedBoxes boxes;
  FailEach(
      [&] {
        boxes.texts.clear();
        program.state.gSetup.DatabaseName = u"before"_s;
        program.state.gDatabaseOpen = true;
        GlobalFunctions::AttachDatabase(program.LibraryPath());
        return program.state.gSetup.DatabaseName != u"before"_s;
      },
      [&](bool attached, const QString& failed) {
        EXPECT_EQ(boxes.texts.isEmpty(), attached) << boxes.texts.join(u'|').toStdString();
        EXPECT_LE(boxes.texts.size(), 2) << boxes.texts.join(u'|').toStdString();
        EXPECT_TRUE(attached || !failed.isEmpty());
        // What was open stays open where the other one cannot be.
        EXPECT_TRUE(program.state.gDatabaseOpen);
        EXPECT_TRUE(program.state.gLibrary);
      });
}

}  // namespace
