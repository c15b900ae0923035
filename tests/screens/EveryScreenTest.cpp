// What holds for every screen: a screen reader has a name for each control, the keyboard reaches it, no two
// answer the same key, and in another language every text is that language's and none is cut off.
#include <QAbstractItemView>
#include <QAccessible>
#include <QGroupBox>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QShortcut>
#include <QSpinBox>
#include <QToolButton>
#include <QTranslator>

#include "core/DataObjectFunctions.h"
#include "core/RegistryFunctions.h"
#include "core/VersionTexts.h"
#include "library/Merge.h"
#include "platform/ui/Contrast.h"
#include "platform/ui/QtMessageBox.h"
#include "screens/AddMeasurements.h"
#include "screens/CompareChoice.h"
#include "screens/CompareForm.h"
#include "screens/ConflictForm.h"
#include "screens/DataEditor.h"
#include "screens/ExpandedDataForm.h"
#include "screens/Help.h"
#include "screens/NoteForm.h"
#include "screens/PageView.h"
#include "screens/RecalcScreen.h"
#include "screens/RenameForm.h"
#include "screens/RestoreForm.h"
#include "screens/ScrollingPage.h"
#include "screens/ServerForm.h"
#include "screens/StatGraphics.h"
#include "screens/frmAbout.h"
#include "screens/frmConfigure.h"
#include "screens/frmMain.h"
#include "screens/frmUnits.h"
#include "tests/screens/OpenHelp.h"
#include "tests/support/Files.h"
#include "tests/support/RecordingDevice.h"
#include "tests/support/TestProgram.h"
#include "texts/SharingWords.h"
#include "texts/Words.h"

namespace {

using Form = std::unique_ptr<QWidget>;

Form Main(TestProgram& program, bool hasLibrary) {
  program.state.gLibrary.reset();
  program.state.gDatabaseOpen = false;
  if (hasLibrary)
    RegistryFunctions::SetKeyValue(program.state.gSetup.RegistryKeyPath, u"DatabaseName"_s, Registry::String,
                                   program.LibraryPath());
  else
    program.boxes.Expect();
  auto form = std::make_unique<frmMain>(frmMain::Screens{});
  EXPECT_TRUE(form->Form_Load());
  form->show();
  Fire(*form, "InitTimer");
  return form;
}

Form Editor(TestProgram& program, bool adds) {
  program.state.gAddMode = adds;
  auto form = std::make_unique<DataEditor>();
  form->show();
  if (adds)
    Get<QPlainTextEdit>(*form, "txtRawData").setPlainText(u"1,5\n2.5\nx 7"_s);  // asks how it is meant
  Fire(*form, "NotesTimer");
  return form;
}

Form Chart(TestProgram&) {
  static PagePrinting printing;
  auto form = std::make_unique<StatGraphics>(StatGraphics::Links{}, printing);
  Get<QWidget>(*form, "PointsBar").show();
  return form;
}

Form Note(TestProgram& program) {
  const CData& data = *program.state.gDataCollection.at(0);
  return std::make_unique<NoteForm>(data, StatPage(data, {}), 3);
}

Form Restore(TestProgram& program) {
  program.state.gLibrary->Delete(program.Insert(u"GONE"_s), QDateTime::currentDateTime());
  return std::make_unique<RestoreForm>();
}

Form Conflict(TestProgram&) {
  const CDataPtr mine = TestProgram::NewDataSet(u"BORE"_s), theirs = TestProgram::NewDataSet(u"BORE"_s);
  theirs->SetUpperSpecLimit(13);
  return std::make_unique<ConflictForm>(
      Words::Sharing::conflict(u"BORE"_s),
      VersionTexts(*mine, *theirs, {Merge::NameOf(Column::Unit::SpecLimits)}));
}

Form HelpWindow(TestProgram&) {
  return std::make_unique<HelpViewer>(
      Words::Manual::contents(),
      QList<HelpTopic>{{1, Words::Manual::welcome(), QUrl(u"qrc:/manual/index.html"_s)}}, true);
}

Form Comparison(TestProgram& program) {
  static PagePrinting printing;
  const qint32 other = program.Insert(u"GONE"_s);
  EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  return std::make_unique<CompareForm>(program.state.gCurrentDataID, other, printing);
}

Form Choice(TestProgram& program) {
  program.Insert(u"GONE"_s);
  EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  return std::make_unique<CompareChoice>(program.state.gCurrentDataID);
}

template <class Screen>
Form Plain(TestProgram&) {
  return std::make_unique<Screen>();
}

struct Screen {
  const char* name;
  Form (*open)(TestProgram& program);
  const char* helpPage = nullptr;
};

const Screen screens[] = {
    {"main window", [](TestProgram& program) { return Main(program, true); }, "The main window"},
    {"start page", [](TestProgram& program) { return Main(program, false); }},
    {"data editor, adding", [](TestProgram& program) { return Editor(program, true); }, "The data editor"},
    {"data editor", [](TestProgram& program) { return Editor(program, false); }},
    {"larger view", Plain<ExpandedDataForm>, "Expanded raw data"},
    {"units", Plain<frmUnits>, "Units of measurement"},
    {"chart screen", Chart},
    {"recalculate", Plain<RecalcScreen>, "Recalculating limits"},
    {"add measurements", Plain<AddMeasurements>, "Adding measurements"},
    {"note", Note},
    {"restore", Restore},
    {"rename", Plain<RenameForm>},
    {"server", Plain<ServerForm>},
    {"conflict", Conflict},
    {"compare", Comparison},
    {"choice of another", Choice},
    {"configure", Plain<frmConfigure>, "Configuration"},
    {"about", Plain<frmAbout>, "The about box"},
    {"help", HelpWindow},
};

// Every screen of the table, filled and in front, and a message box with three buttons.
template <class Use>
void ForEachScreen(Use use) {
  for (const Screen& screen : screens) {
    SCOPED_TRACE(screen.name);
    TestProgram program;
    program.Execute(u"INSERT INTO Units (Name, Description) VALUES ('MM', '')"_s);
    program.state.gCurrentDataID = program.Insert(u"BORE"_s);
    ASSERT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    const Form form = screen.open(program);
    form->show();
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    QCoreApplication::processEvents();
    use(*form);
    if (!screen.helpPage) continue;
    QTest::keyClick(form.get(), Qt::Key_F1);
    ASSERT_TRUE(OpenHelp());
    EXPECT_EQ(Heading(), QLatin1StringView(screen.helpPage));
    ExpectUsable(*OpenHelp(), "while it is modal");
    OpenHelp()->close();
  }
  const auto whileOpen = [&](const char* name) {
    QTimer::singleShot(0, qApp, [&use, name] {
      SCOPED_TRACE(name);
      QWidget* box = QApplication::activeModalWidget();
      ASSERT_TRUE(box);
      use(*box);
      box->close();
    });
  };
  whileOpen("message box");
  QtMessageBox({Words::ok(), Words::yes(), Words::no(), Words::cancel()})
      .Show({LoadResText(u"Data has changed;226"), LoadResText(u"Confirmation;111"),
             MessageBox::Icon::Question, MessageBox::Buttons::YesNoCancel});
}

std::string NameOf(const QObject& object) {
  return std::string(object.metaObject()->className()) + ' ' + object.objectName().toStdString();
}

// What a user works with, and no part of such a thing nor a text that can be copied.
bool IsControl(const QWidget& widget) {
  for (const QWidget* above = widget.parentWidget(); above; above = above->parentWidget()) {
    if (qobject_cast<const QComboBox*>(above) || qobject_cast<const QSpinBox*>(above) ||
        qobject_cast<const QLineEdit*>(above))
      return false;
    if (above->isWindow()) break;
  }
  if (qobject_cast<const QLabel*>(&widget) || qobject_cast<const QScrollBar*>(&widget)) return false;
  return !widget.isWindow() &&
         (widget.focusPolicy() != Qt::NoFocus || qobject_cast<const QAbstractButton*>(&widget));
}

// Calls use for every control below it in the tree that a screen reader sees.
template <class Use>
void ForEachInTree(QAccessibleInterface* node, Use use) {
  if (!node) return;
  if (const auto* widget = qobject_cast<QWidget*>(node->object());
      widget && widget->isVisible() && IsControl(*widget))
    use(*widget, node->text(QAccessible::Name));
  for (int i = 0; i < node->childCount(); ++i) {
    QAccessibleInterface* child = node->child(i);
    if (child && child->object() != node->object()) ForEachInTree(child, use);
  }
}

// Where Tab leads to, from the control that has the focus until it is there again.
QSet<const QWidget*> TabStops(const QWidget& form) {
  QSet<const QWidget*> stops;
  const QWidget* first = form.focusWidget();
  for (int i = 0; i < 200 && form.focusWidget(); ++i) {
    QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
    stops << form.focusWidget();
    if (form.focusWidget() == first && i > 0 && stops.size() > 1) break;
  }
  return stops;
}

// The arrow keys lead from one of a group to the others.
bool IsBesideStop(const QWidget& widget, const QSet<const QWidget*>& stops) {
  const auto isBeside = [&](const QWidget* stop) {
    return qobject_cast<const QRadioButton*>(stop) && stop->parent() == widget.parent();
  };
  return qobject_cast<const QRadioButton*>(&widget) && std::ranges::any_of(stops, isBeside);
}

// The keys that something answers while it can be used.
QMultiMap<QString, std::string> Keys(const QWidget& form) {
  QMultiMap<QString, std::string> keys;
  for (const QObject* object : form.findChildren<QObject*>()) {
    QList<QKeySequence> own;
    const auto* button = qobject_cast<const QAbstractButton*>(object);
    const auto* label = qobject_cast<const QLabel*>(object);
    const auto* action = qobject_cast<const QAction*>(object);
    const auto* shortcut = qobject_cast<const QShortcut*>(object);
    if (button && button->isVisible() && button->isEnabled()) own << button->shortcut();
    if (label && label->isVisible() && label->buddy() && label->buddy()->isEnabled())
      own << QKeySequence::mnemonic(label->text());
    const bool isToldOnly = action && action->shortcutContext() == Qt::WidgetShortcut;  // in a menu
    if (action && action->isEnabled() && !isToldOnly) own << action->shortcuts();
    if (shortcut && shortcut->isEnabled()) own << shortcut->key();
    for (const QKeySequence& key : own)
      if (!key.isEmpty()) keys.insert(key.toString(), NameOf(*object));
  }
  return keys;
}

void ExpectEachOnce(const QMultiMap<QString, std::string>& keys) {
  for (const QString& key : keys.uniqueKeys())
    EXPECT_EQ(keys.count(key), 1) << key.toStdString() << ": " << ::testing::PrintToString(keys.values(key));
}

TEST(EveryScreen, HasItsKeysInTheManual) {
  const QString page = QString::fromUtf8(ReadFile(u":/manual/keys.html"_s));
  ForEachScreen([&](const QWidget& form) {
    for (QString key : Keys(form).uniqueKeys()) {
      if (key.startsWith(u"Alt+") && key.size() == 5) continue;  // the underlined letter of a control
      key.replace(u"Esc"_s, u"Escape"_s)
          .replace(u"PgDown"_s, u"Page Down"_s)
          .replace(u"PgUp"_s, u"Page Up"_s);
      const QRegularExpression word(u"[>, ]%1[<, ]"_s.arg(QRegularExpression::escape(key)));
      EXPECT_TRUE(page.contains(word)) << key.toStdString();
    }
  });
}

TEST(EveryScreen, NamesItsControlsAndLeadsToThemByKeyboard) {
  ForEachScreen([](const QWidget& form) {
    int controls = 0;
    ForEachInTree(QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&form)),
                  [&](const QWidget& control, const QString& name) {
                    ++controls;
                    EXPECT_FALSE(name.isEmpty()) << NameOf(control);
                  });
    EXPECT_GE(controls, 2);
    const QSet<const QWidget*> stops = TabStops(form);
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
      if (!IsControl(*widget) || !widget->isVisible() || !widget->isEnabled()) continue;
      EXPECT_TRUE(stops.contains(widget) || IsBesideStop(*widget, stops)) << NameOf(*widget);
    }
    ExpectEachOnce(Keys(form));
    for (const QMenu* menu : form.findChildren<QMenu*>()) {
      QMultiMap<QString, std::string> letters;
      for (const QAction* entry : menu->actions())
        if (const QKeySequence key = QKeySequence::mnemonic(entry->text()); !key.isEmpty())
          letters.insert(key.toString(), NameOf(*entry));
        else
          EXPECT_TRUE(entry->isSeparator()) << entry->text().toStdString() << " has no letter";
      ExpectEachOnce(letters);
    }
  });
}

// A language that has no letter of English, and takes a third more room. Places, endings of files and the
// program's name stay.
class PseudoLanguage : public QTranslator {
 public:
  PseudoLanguage() { QCoreApplication::installTranslator(this); }
  ~PseudoLanguage() override { QCoreApplication::removeTranslator(this); }
  bool isEmpty() const override { return false; }
  QString translate(const char*, const char* source, const char*, int) const override {
    static const QString small = u"áƀćďéƒğĥíĵķĺṁñöṗɋŕšťüṽŵẋýž"_s, large = small.toUpper();
    static const QRegularExpression kept(uR"(%\w|\(\*[^)]*\)|Kestrel)"_s);
    const QString english = QString::fromUtf8(source);
    QString text;
    for (qsizetype i = 0; i < english.size(); ++i) {
      const auto match = kept.match(english, i, QRegularExpression::NormalMatch,
                                    QRegularExpression::AnchorAtOffsetMatchOption);
      const char16_t letter = english[i].unicode();
      if (match.hasMatch()) {
        text += match.captured();
        i += match.capturedLength() - 1;
      } else if (letter >= u'a' && letter <= u'z') {
        text += small[letter - u'a'];
      } else {
        text += letter >= u'A' && letter <= u'Z' ? large[letter - u'A'] : english[i];
      }
    }
    for (qsizetype i = 0; i < (english.size() * 3 + 9) / 10; ++i) text += i % 6 == 5 ? u' ' : u'~';
    return text;
  }
};

// What a user entered, a file's endings, the program's name, and a date.
bool IsForeign(QString text) {
  static const QRegularExpression own(
      uR"(\(\*[^)]*\)|Kestrel|BORE|GONE|MM|x 7|\S*StatData\.mdb|X-bar|\b[A-Z][a-z]{2} \d\d, \d{4} .*[AP]M)"_s);
  static const QRegularExpression english(u"[A-Za-z]"_s);
  return !text.remove(own).contains(english);
}

// Every text that the object shows, tells a screen reader or puts on a tool tip.
QStringList TextsOf(const QObject& object) {
  QStringList texts;
  for (const char* property : {"text", "title", "windowTitle", "toolTip", "placeholderText", "accessibleName",
                               "accessibleDescription", "suffix", "prefix"})
    texts << object.property(property).toString();
  const auto* list = qobject_cast<const QAbstractItemView*>(&object);
  const QAbstractItemModel* model = list ? list->model() : nullptr;
  for (const int role : {Qt::DisplayRole, Qt::ToolTipRole, Qt::AccessibleTextRole}) {
    for (int column = 0; model && column < model->columnCount(); ++column) {
      texts << model->headerData(column, Qt::Horizontal, role).toString();
      for (int row = 0; row < model->rowCount(); ++row)
        texts << model->index(row, column).data(role).toString();
    }
  }
  const auto* view = qobject_cast<const PageView*>(&object);
  const auto* comparison = qobject_cast<const CompareForm*>(&object);
  const OutputPage* page = comparison ? comparison->Page() : nullptr;
  if (view) page = view->Page();
  if (page) {
    constexpr QRectF target(0, 0, 1000, 640);
    RecordingDevice device(target.size().toSize());
    QPainter painter(&device);
    page->PaintOut(painter, target, 9);
    painter.end();
    for (const PaintedShape& shape : device.Shapes()) texts << shape.text;
  }
  return texts;
}

// The room that a widget's text takes, or none where it may be cut.
QSize RoomNeededBy(const QWidget& widget) {
  const auto* label = qobject_cast<const QLabel*>(&widget);
  if (label && label->wordWrap()) return {0, label->heightForWidth(label->width())};
  if (label)
    return label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored ? QSize() : label->sizeHint();
  if (qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QGroupBox*>(&widget))
    return widget.minimumSizeHint();
  return {};
}

TEST(EveryScreen, SpeaksAnotherLanguageAndHasRoomForIt) {
  const PseudoLanguage language;
  ForEachScreen([](const QWidget& form) {
    QObjectList all = form.findChildren<QObject*>();
    for (const QObject* object : all << const_cast<QWidget*>(&form))
      for (const QString& text : TextsOf(*object))
        EXPECT_TRUE(IsForeign(text)) << NameOf(*object) << ": " << text.toStdString();
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      const QSize needed = RoomNeededBy(*widget);
      EXPECT_TRUE(widget->width() >= needed.width() && widget->height() >= needed.height())
          << NameOf(*widget) << ' ' << widget->property("text").toString().toStdString() << ": "
          << widget->width() << 'x' << widget->height() << ", needs " << needed.width() << 'x'
          << needed.height();
      EXPECT_TRUE(!needed.isValid() || widget->parentWidget()->rect().contains(widget->geometry()))
          << NameOf(*widget);
      const auto* area = qobject_cast<const QScrollArea*>(widget);
      const bool canScroll = !area || area->horizontalScrollBarPolicy() != Qt::ScrollBarAlwaysOff;
      EXPECT_TRUE(canScroll || area->widget()->width() <= area->viewport()->width()) << NameOf(*area);
    }
  });
}

TEST(EveryScreen, CanBeReadOnLightAndDarkAlsoWhereItIsDisabled) {
  const QPalette before = QApplication::palette();
  for (const QPalette& palette : {before, QPalette(QColor(50, 50, 50), QColor(40, 40, 40))}) {
    QApplication::setPalette(Contrast::WithReadableHints(palette));
    ForEachScreen([](const QWidget& form) {
      for (const QWidget* widget : form.findChildren<QWidget*>())
        for (const auto group : {QPalette::Active, QPalette::Disabled})
          EXPECT_GE(Contrast::Between(widget->palette().color(group, widget->foregroundRole()),
                                      widget->palette().color(group, widget->backgroundRole())),
                    Contrast::readable)
              << NameOf(*widget);
    });
  }
  QApplication::setPalette(before);
}

// In large letters on a small screen: no window is larger than it, none hides a command, and none scrolls to
// the sides but lists and the help's text.
TEST(EveryScreen, ShowsAllOfItWhereThereIsRoom) {
  ForEachScreen([](const QWidget& form) {
    for (const auto* area : form.findChildren<ScrollingPage*>())
      EXPECT_LE(area->widget()->height(), area->viewport()->height()) << NameOf(*area->widget());
  });
}

TEST(EveryScreen, FitsASmallScreenInLargeLetters) {
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPointSize(18);
  QApplication::setFont(large);
  ForEachScreen([](QWidget& form) {
    const QSize room(800, 600);
    form.resize(form.size().boundedTo(room));  // as a screen of that height has it
    QCoreApplication::processEvents();
    EXPECT_TRUE(form.width() <= room.width() && form.height() <= room.height())
        << form.width() << 'x' << form.height();
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      EXPECT_NE(widget->objectName(), u"qt_toolbar_ext_button"_s) << NameOf(*widget->parentWidget());
      const auto* area = dynamic_cast<const ScrollingPage*>(widget);
      EXPECT_TRUE(!area || area->widget()->width() <= area->viewport()->width()) << NameOf(*area->widget());
      const auto* line = dynamic_cast<const QLabel*>(widget);
      EXPECT_TRUE(!line || line->wordWrap() || widget->width() >= RoomNeededBy(*widget).width())
          << NameOf(*widget) << ' ' << line->text().toStdString();
    }
  });
  QApplication::setFont(before);
}

}  // namespace
