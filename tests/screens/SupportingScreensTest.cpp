// Configuration, about box and help, driven as a person drives them, and the manual's own soundness.
#include <QListWidget>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTreeWidget>

#include "core/RegistryFunctions.h"
#include "platform/ui/Contrast.h"
#include "screens/Help.h"
#include "screens/frmAbout.h"
#include "screens/frmConfigure.h"
#include "screens/frmUnits.h"
#include "tests/screens/OpenHelp.h"
#include "tests/support/StoredValue.h"
#include "tests/support/TestProgram.h"

namespace {

const QString keyPath = uR"(Software\Orvane Labs\Kestrel)"_s;

// A store whose writes fail on demand although its keys can be made.
class FailingRegistry : public MemoryRegistry {
 public:
  bool fails = false;
  int RegSetValueEx(Key key, const QString& name, Type type, const QByteArray& data) override {
    return fails ? WriteFault : MemoryRegistry::RegSetValueEx(key, name, type, data);
  }
};

TEST(Configure, AcceptStoresAndStaysOpenForMore) {
  TestProgram program;
  FailingRegistry registry;
  program.state.registry = &registry;
  program.state.gSetup.ListviewDoubleClickViewsChart = true;
  const auto stored = [] {
    return RegistryFunctions::GetKeyValue(keyPath, u"ListviewDoubleClickViewsChart"_s, 4);
  };
  frmConfigure form;
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  const auto& accept = Get<QWidget>(form, "cmdAccept");
  EXPECT_TRUE(Get<QRadioButton>(form, "optionViewChart").isChecked());
  for (const bool edit : {true, false}) {
    EXPECT_FALSE(accept.isEnabled());
    QTest::keyClick(&form, edit ? Qt::Key_E : Qt::Key_V, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return accept.isEnabled(); }));
    program.boxes.Expect(u"Registry settings saved");
    Click(form, "cmdAccept");
    EXPECT_EQ(stored(), edit ? u"0" : u"1");
    EXPECT_EQ(program.state.gSetup.ListviewDoubleClickViewsChart, !edit);
    EXPECT_TRUE(program.state.gSettingsSaved);
    EXPECT_TRUE(form.isVisible());
  }
  registry.fails = true;
  Click(form, "optionEditSelection");
  program.boxes.Expect(u"RegistryFunctions::SetKeyValue");
  Click(form, "cmdAccept");
  EXPECT_TRUE(accept.isEnabled());
  QTest::keyClick(&form, Qt::Key_Escape);
  EXPECT_FALSE(form.isVisible());
  EXPECT_EQ(stored(), u"1") << "dropped without asking";
}

class AboutTest : public testing::Test {
 protected:
  // What the button starts, and whether that is possible; where it is not, a box says so.
  void ExpectStart(const QString& path, bool possible) {
    QString started;
    frmAbout form(nullptr, [&](const QString& tool) {
      started = tool;
      return possible;
    });
    form.show();
    if (!possible) program.boxes.Expect(u"System Information Is Unavailable At This Time");
    Click(form, "cmdSysInfo");
    EXPECT_EQ(started, path);
    Click(form, "cmdOK");
    EXPECT_FALSE(form.isVisible());
  }

  const QString direct = uR"(SOFTWARE\Microsoft\Shared Tools\MSINFO)"_s;
  const QString location = uR"(SOFTWARE\Microsoft\Shared Tools Location)"_s;
  TestProgram program;
};

TEST_F(AboutTest, StartsTheToolThatTheStoreNames) {
  ExpectStart({}, false);  // nothing is known
  StoreValue(program.registry, location, u"MSINFO"_s, QFile::encodeName(program.folder.path()));
  ExpectStart({}, false);  // the folder is known, the tool is not in it
  const QString tool = WriteFile(program.Path(u"MSINFO32.EXE"_s));
  ExpectStart(QDir::toNativeSeparators(tool), true);
  StoreValue(program.registry, direct, u"PATH"_s,
             QByteArray("/tools/info\0", 12));  // comes first, and without its closing zero
  ExpectStart(u"/tools/info"_s, true);
  ExpectStart(u"/tools/info"_s, false);
}

TEST_F(AboutTest, NumbersReadAsHexadecimalText) {
  StoreValue(program.registry, direct, u"Flags"_s, QByteArray("\x1f\x02\x00\x00", 4), Registry::Dword);
  QString text;
  EXPECT_TRUE(frmAbout::GetKeyValue(direct, u"Flags"_s, text));
  EXPECT_EQ(text, u"&h21F");
  EXPECT_FALSE(frmAbout::GetKeyValue(direct, u"Absent"_s, text));
}

TEST(Help, EveryTopicHasItsPage) {
  CallUpHelp(HelpTopics::Contents);
  auto& contents = Get<QTreeWidget>(*OpenHelp(), "Contents");
  for (QTreeWidgetItemIterator item(&contents); *item; ++item) {
    contents.setCurrentItem(*item);
    EXPECT_EQ(Heading(), (*item)->text(0));
  }
  OpenHelp()->close();
  CallUpHelp(9999);
  EXPECT_EQ(Heading(), u"No such topic");
  CallUpHelp(HelpTopics::Glossary);
  EXPECT_EQ(Heading(), u"Glossary");
  ASSERT_TRUE(QTest::qWaitForWindowActive(OpenHelp()));
  QTest::keyClick(OpenHelp(), Qt::Key_Escape);
  EXPECT_FALSE(OpenHelp());
}

// What is open already, also while two modal windows come and go over it.
TEST(Help, StaysUsableBesideWhatOpensOverIt) {
  TestProgram program;
  CallUpHelp(HelpTopics::Contents);
  HelpViewer& help = *OpenHelp();
  EXPECT_LE(help.height(), help.screen()->availableSize().height());
  const auto expectUsable = [&](const char* when) { ExpectUsable(help, when); };
  frmUnits form;
  form.open();
  expectUsable("under a window");
  {
    auto above = std::make_unique<frmConfigure>(&form);
    above->open();
    expectUsable("under two");
    above->close();
  }
  expectUsable("after the upper one is gone");
  form.close();
  expectUsable("alone");
  help.close();
}

TEST(Help, SearchFindsPagesThatHoldEveryWord) {
  CallUpHelp(HelpTopics::Contents);
  HelpViewer& help = *OpenHelp();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&help));
  QTest::keyClick(&help, Qt::Key_F, Qt::ControlModifier);
  const auto& results = Get<QListWidget>(help, "Results");
  Type(help, "Search", u"EIGHT successive"_s);
  ASSERT_EQ(results.count(), 1);
  QTest::keyClick(&Get(help, "Search"), Qt::Key_Return);
  EXPECT_EQ(Heading(), u"Detection rule four");
  QTest::keyClick(&help, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(Heading(), u"Welcome to Kestrel");
  // What a page is about comes before what mentions it, and a second click on it leads there again.
  Type(help, "Search", u"cpk"_s);
  EXPECT_TRUE(results.item(0)->text().startsWith(u"Capability: Cpk\n"_s));
  EXPECT_GT(results.count(), 3);
  const auto click = [&] {
    QTest::mouseClick(results.viewport(), Qt::LeftButton, {},
                      results.visualItemRect(results.item(0)).center());
  };
  click();
  EXPECT_EQ(Heading(), u"Capability: Cpk");
  QTest::keyClick(&help, Qt::Key_Left, Qt::AltModifier);
  EXPECT_NE(Heading(), u"Capability: Cpk");
  click();
  EXPECT_EQ(Heading(), u"Capability: Cpk");
  Type(help, "Search", u"qqqq"_s);
  EXPECT_EQ(results.item(0)->text(), u"Nothing found.");
  help.close();
}

TEST(Palette, HintsAndLinksCanBeRead) {
  const QColor blue(0, 0, 255);
  for (QPalette palette :
       {QPalette(Qt::lightGray), QPalette(QColor(239, 239, 239)), QPalette(QColor(50, 50, 50)),
        QPalette(Qt::black), QPalette(QColor(20, 30, 60), QColor(10, 20, 40))}) {
    palette.setColor(QPalette::Link, blue);
    palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
    palette = Contrast::WithReadableHints(palette);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
      EXPECT_GE(Contrast::Between(palette.color(group, QPalette::HighlightedText),
                                  palette.color(group, QPalette::Highlight)),
                4.5);
      for (const auto role : {QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited,
                              QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        for (const auto ground :
             {QPalette::Base, QPalette::AlternateBase, QPalette::Window, QPalette::Button})
          EXPECT_GE(Contrast::Between(palette.color(group, role), palette.color(group, ground)), 4.5)
              << palette.color(group, ground).name().toStdString() << ' ' << role;
    }
  }
  EXPECT_NEAR(Contrast::Between(Qt::white, QColor(0x76, 0x76, 0x76)), 4.54, 0.01);  // published, WebAIM
}

TEST(Manual, EveryLinkAndPictureResolves) {
  const QDir manual(u":/manual"_s);
  const QRegularExpression reference(uR"re((?:href|src)="([^"]+)")re"_s);
  const QStringList pages = manual.entryList({u"*.html"_s});
  EXPECT_GT(pages.size(), 20);
  for (const QString& name : pages) {
    const QString page = QString::fromUtf8(ReadFile(manual.filePath(name)));
    for (const auto& match : reference.globalMatch(page)) {
      const QString target = match.captured(1);
      for (const QString& file : {target, QString(target).replace(u".png"_s, u"@2x.png"_s)})
        EXPECT_TRUE(manual.exists(file)) << name.toStdString() << " refers to " << file.toStdString();
    }
  }
}

}  // namespace
