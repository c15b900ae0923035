// What is long, and was looked at, stands in a file of tests/fixtures/approved. A test that finds something
// else names the lines that differ. With KESTREL_APPROVE set it writes what it finds: look at what changed
// before you commit that.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QMap>
#include <QStringList>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace Approved {

// Behind a tab stand places in pixels, which another font may move by so many.
inline bool AreAlike(const QString& one, const QString& other) {
  if (one.section(u'\t', 0, 0) != other.section(u'\t', 0, 0)) return false;
  const int most = one.startsWith(u"Text") ? 6 : 1;
  return std::ranges::equal(
      one.section(u'\t', 1).split(u' '), other.section(u'\t', 1).split(u' '),
      [most](const QString& a, const QString& b) { return std::abs(a.toInt() - b.toInt()) <= most; });
}

// The lines that stand in one list and not in the other.
inline QStringList Without(QStringList lines, const QStringList& others) {
  for (const QString& other : others) {
    const auto alike =
        std::ranges::find_if(lines, [&](const QString& line) { return AreAlike(line, other); });
    if (alike != lines.end()) lines.erase(alike);
  }
  return lines;
}

inline void Expect(const QString& name, const QStringList& found) {
  QFile file(QStringLiteral(KESTREL_TEST_DATA "/approved/%1.txt").arg(name));
  const bool approves = qEnvironmentVariableIsSet("KESTREL_APPROVE");
  ASSERT_TRUE(file.open(approves ? QIODevice::WriteOnly : QIODevice::ReadOnly)) << name.toStdString();
  if (approves) return void(file.write(found.join(u'\n').toUtf8() + '\n'));
  const QStringList approved = QString::fromUtf8(file.readAll()).chopped(1).split(u'\n');
  EXPECT_TRUE(std::ranges::equal(approved, found, AreAlike))
      << name.toStdString() << " (KESTREL_APPROVE=1 approves it anew), approved:\n"
      << Without(approved, found).join(u'\n').toStdString() << "\nfound:\n"
      << Without(found, approved).join(u'\n').toStdString();
}

// Under the name of the test that runs, whatever its parameter.
inline void Expect(const QStringList& found) {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  const auto part = [](const char* name, int which) {
    return QString::fromLatin1(name).section(u'/', which, which);
  };
  Expect(part(test->test_suite_name(), -1) + u'.' + part(test->name(), 0), found);
}

// What is done, and below each step all that it changes of what there is.
class Diary {
 public:
  using States = QMap<QString, QString>;

  void Begin(const QString& what, const States& states) {
    states_ = states;
    lines_ << u"* "_s + what;
  }
  void Step(const QString& what, const States& states, const QStringList& besides = {}) {
    hasSteps_ = true;
    lines_ << u"* "_s + what;
    for (const QString& line : besides) lines_ << u"    "_s + line;
    const States before = std::exchange(states_, states);
    for (const auto& [name, state] : states.asKeyValueRange())
      if (before.value(name) != state) lines_ << u"    %1: %2"_s.arg(name, state);
    const bool isClosed = states.value(u"form"_s) == u"closed";
    QStringList gone;  // a row and a window only once
    for (const QString& name : before.keys())
      if (!isClosed && !states.contains(name))
        gone << u"    %1 is gone"_s.arg(name.startsWith(u"row ") ? name.section(u' ', 0, 1)
                                                                 : name.section(u'/', 0, 0));
    gone.removeDuplicates();
    lines_ << gone;
  }
  void ForgetAllBut(QStringView start) {
    states_.removeIf([start](const auto& state) { return !state.key().startsWith(start); });
  }
  void Expect() const {
    if (hasSteps_) Approved::Expect(lines_);
  }

 private:
  States states_;
  QStringList lines_;
  bool hasSteps_ = false;
};

}  // namespace Approved
