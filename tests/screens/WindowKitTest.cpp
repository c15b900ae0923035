// The window kit by itself: pictures that read without colour, bars driven by mouse and keyboard, boxes and
// their answers.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "platform/ui/ButtonBar.h"
#include "platform/ui/QtFileDialog.h"
#include "platform/ui/QtMessageBox.h"
#include "screens/Indicators.h"

using namespace Qt::StringLiterals;

namespace {

QImage Grey(const QPixmap& picture) {
  QImage onWhite(picture.size(), QImage::Format_RGB32);
  onWhite.fill(Qt::white);
  QPainter(&onWhite).drawPixmap(0, 0, picture);
  return onWhite.convertToFormat(QImage::Format_Grayscale8);
}

// Calls act once, as soon as such a window is in front, from inside whatever runs its event loop then.
template <class Window, class Act>
void InNext(Act act) {
  auto* poll = new QTimer(qApp);
  QObject::connect(poll, &QTimer::timeout, poll, [=] {
    QWidget* popup = QApplication::activePopupWidget();
    auto* window = qobject_cast<Window*>(popup ? popup : QApplication::activeWindow());
    if (!window) return;
    poll->stop();
    poll->deleteLater();
    act(window);
  });
  poll->start(0);
}

// The share of pixels that differ clearly.
double Difference(const QImage& a, const QImage& b) {
  int differing = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      differing += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 40;
  return double(differing) / (a.width() * a.height());
}

TEST(Indicators, StatesDifferWithoutColourAtEverySize) {
  for (const int side : {16, 24, 64})
    for (int a = 0; a <= 4; ++a)
      for (int b = 0; b < a; ++b)
        EXPECT_GT(Difference(Grey(ProcessStateIcon(a).pixmap(side, side)),
                             Grey(ProcessStateIcon(b).pixmap(side, side))),
                  0.08)
            << "states " << a << " and " << b << " at " << side;
  Led go, stop;
  for (Led* lamp : {&go, &stop}) lamp->SetOn(true);
  stop.SetColorValue(Led::Stop);
  EXPECT_GT(Difference(Grey(go.grab()), Grey(stop.grab())), 0.05);
}

TEST(MnemonicsTest, GivesEachCaptionALetterOfItsOwn) {
  Mnemonics mnemonics(u"s"_s);
  EXPECT_EQ(mnemonics.Mark(u"&Close"_s), u"&Close"_s);
  EXPECT_EQ(mnemonics.Mark(u"Zoom In"_s), u"&Zoom In"_s);
  EXPECT_EQ(mnemonics.Mark(u"Zoom Out"_s), u"Zoom &Out"_s);  // the second word's first letter
  EXPECT_EQ(mnemonics.Mark(u"Copy && so"_s), u"Co&py && so"_s);
  EXPECT_EQ(mnemonics.Mark(u"zoc"_s), u"zoc"_s);  // none left
}

class ButtonBarTest : public testing::Test {
 protected:
  ButtonBarTest() {
    bar.AddButton(u"View"_s, u"View it"_s, Symbol::Chart);
    bar.AddButton(u"Tools"_s, u"Utilities"_s, Symbol::Tools);
    bar.AddEntry(2, u"Configuration"_s, Symbol::Settings);
    bar.AddEntry(2, u"Connection"_s, Symbol::Database);
    bar.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&bar));
  }

  QToolButton* Tool(const QString& name) const { return bar.findChild<QToolButton*>(name); }

  // Runs action, which must open the menu, and picks its second entry there by its letter ("C&onnection",
  // since the C is the first entry's).
  static void PickFromMenu(const std::function<void()>& action) {
    InNext<QMenu>([](QMenu* menu) { QTest::keyClick(menu, Qt::Key_O); });
    action();
  }

  ButtonBar bar{u"Toolbar1"_s};
  QSignalSpy clicks{&bar, &ButtonBar::ButtonClick};
  QSignalSpy picks{&bar, &ButtonBar::ButtonMenuClick};
};

TEST_F(ButtonBarTest, PlainButtonsAnswerMouseKeysAndMnemonic) {
  QToolButton* view = Tool(u"Toolbar1_1"_s);
  QTest::mouseClick(view, Qt::LeftButton);
  view->setFocus();
  QTest::keyClick(view, Qt::Key_Return);
  QTest::keyClick(view, Qt::Key_Space);
  QTest::keyClick(&bar, Qt::Key_V, Qt::AltModifier);
  QTRY_COMPARE_WITH_TIMEOUT(clicks.count(), 4, 1000);
  for (const auto& click : clicks) EXPECT_EQ(click.at(0).toInt(), 1);
  bar.Button(1)->setEnabled(false);
  QTest::mouseClick(view, Qt::LeftButton);
  EXPECT_EQ(clicks.count(), 4);
  bar.AddButton(u"Zoom In"_s, {}, Symbol::ZoomIn);
  bar.SetCaption(3, u"Zoom Out"_s, Symbol::ZoomOut);
  EXPECT_EQ(Tool(u"Toolbar1_3"_s)->text(), u"&Zoom Out"_s) << "the letter stays";
  EXPECT_EQ(Grey(bar.Button(3)->icon().pixmap(24)), Grey(SymbolIcon(Symbol::ZoomOut).pixmap(24)));
}

TEST_F(ButtonBarTest, AButtonWithAMenuOnlyOpensIt) {
  QToolButton* tools = Tool(u"Toolbar1_2"_s);
  PickFromMenu([&] { QTest::mouseClick(tools, Qt::LeftButton); });
  tools->setFocus();
  PickFromMenu([&] { QTest::keyClick(tools, Qt::Key_Down); });
  PickFromMenu([&] { QTest::keyClick(tools, Qt::Key_Return); });
  ASSERT_EQ(picks.count(), 3);
  for (const auto& pick : picks) EXPECT_EQ(pick, (QList<QVariant>{2, 2}));
  EXPECT_EQ(clicks.count(), 0);
}

TEST(QtMessageBoxTest, HasItsButtonsAndSignAndEscapeRefuses) {
  using namespace MessageBox;
  // The label's floor of width once kept the box from wrapping: the rest of the text was cut off.
  const QString text = u"one\r\rtwo <b>"_s + u" many words"_s.repeated(20);
  const QString yesNo = u"&No &Yes"_s, all = u"&Cancel "_s + yesNo;
  using Case = std::tuple<Buttons, QString, Icon, QMessageBox::Icon, QKeyCombination, Answer>;
  for (const auto& [buttons, captions, icon, sign, key, answer] :
       {Case{Buttons::YesNo, yesNo, Icon::Question, QMessageBox::Question, Qt::Key_Escape, Answer::No},
        Case{Buttons::YesNo, yesNo, Icon::None, QMessageBox::NoIcon, Qt::ALT | Qt::Key_Y, Answer::Yes},
        Case{Buttons::YesNo, yesNo, Icon::Exclamation, QMessageBox::Warning, Qt::Key_Return, Answer::Yes},
        Case{Buttons::YesNoCancel, all, Icon::Critical, QMessageBox::Critical, Qt::Key_Escape,
             Answer::Cancel},
        Case{Buttons::YesNoCancel, all, Icon::None, QMessageBox::NoIcon, Qt::ALT | Qt::Key_N, Answer::No},
        Case{Buttons::YesNoCancel, all, Icon::None, QMessageBox::NoIcon, Qt::Key_Return, Answer::Yes},
        Case{Buttons::Ok, u"&OK"_s, Icon::Information, QMessageBox::Information, Qt::Key_Escape,
             Answer::Ok}}) {
    InNext<QMessageBox>([&, &captions = captions, &sign = sign, &key = key](QMessageBox* box) {
      EXPECT_EQ(box->text(), QString(text).replace(u'\r', u'\n'));
      EXPECT_EQ(std::pair(box->windowTitle(), box->icon()), std::pair(u"System Message"_s, sign));
      QStringList shown;
      for (const QAbstractButton* button : box->buttons()) shown << button->text();
      shown.sort();
      EXPECT_EQ(shown.join(u' '), captions);
      const auto* label = box->findChild<QLabel*>(u"qt_msgbox_label"_s);
      EXPECT_GE(label->height(), label->heightForWidth(label->width()));
      QTest::keyClick(box, key.key(), key.keyboardModifiers());
    });
    EXPECT_EQ(QtMessageBox({u"&OK"_s, u"&Yes"_s, u"&No"_s, u"&Cancel"_s})
                  .Show({text, u"System Message"_s, icon, buttons}),
              answer);
  }
}

TEST(QtMessageBoxTest, ItsTitleIsNotCut) {
  InNext<QMessageBox>([](QMessageBox* box) {
    const int letters = box->fontMetrics().horizontalAdvance(box->windowTitle());
    EXPECT_GT(box->width(), letters + box->fontMetrics().height() * 6) << "the window's own buttons";
    QTest::keyClick(box, Qt::Key_Escape);
  });
  QtMessageBox({u"&OK"_s, {}, {}, {}}).Show({u"No"_s, u"A title of some more letters"_s});
}

TEST(QtFileDialogTest, AsksForWhatTheRequestSays) {
  using FileDialog::Kind;
  const QTemporaryDir folder;
  const QString there = folder.filePath(u"there.pdf"_s), filter = u"P (*.pdf)"_s;
  ASSERT_TRUE(QFile(there).open(QIODevice::WriteOnly));
  // The folder or the proposed file, and the file chosen: the proposed one, or none by Escape.
  using Case = std::tuple<Kind, bool, QString, QString>;
  for (const auto& [kind, keepsExisting, start, chosen] :
       {Case{Kind::Save, false, there, {}}, Case{Kind::Save, true, there, there},
        Case{Kind::Open, false, there, there}, Case{Kind::Open, false, folder.path(), {}}}) {
    InNext<QFileDialog>([&, &kind = kind, &keepsExisting = keepsExisting, &start = start,
                         &chosen = chosen](QFileDialog* dialog) {
      const bool save = kind == Kind::Save;
      EXPECT_EQ(dialog->acceptMode(), save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
      EXPECT_EQ(dialog->fileMode(), save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
      EXPECT_EQ(dialog->testOption(QFileDialog::DontConfirmOverwrite), keepsExisting);
      EXPECT_EQ(QStringList({dialog->windowTitle(), dialog->nameFilters().join(u' '), dialog->defaultSuffix(),
                             dialog->directory().path()}),
                QStringList({u"Title"_s, filter, u"pdf"_s, folder.path()}));
      EXPECT_EQ(dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->text(),
                start == there ? u"there.pdf"_s : QString());
      if (chosen.isEmpty()) return QTest::keyClick(dialog, Qt::Key_Escape);
      dialog->findChild<QDialogButtonBox*>()
          ->button(save ? QDialogButtonBox::Save : QDialogButtonBox::Open)
          ->click();
    });
    EXPECT_EQ(QtFileDialog().Ask({kind, u"Title"_s, filter, start, u"pdf"_s, keepsExisting}), chosen);
  }
}

TEST(QtFileDialogTest, ShowsTheKindOfFileThatTheFolderHas) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir(u"old"_s) && QDir(folder.path()).mkdir(u"other"_s));
  for (const QString& name :
       {u"plant.kestrel"_s, u"old/plant.MDB"_s, u"old/plant.db"_s, u"other/notes.txt"_s})
    ASSERT_TRUE(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
  InNext<QFileDialog>([&](QFileDialog* dialog) {
    const auto chosen = [&](const QString& entered) {
      dialog->setDirectory(folder.filePath(entered));
      Q_EMIT dialog->directoryEntered(folder.filePath(entered));
      return dialog->selectedNameFilter();
    };
    EXPECT_EQ(dialog->selectedNameFilter(), u"K (*.kestrel *.db)");
    EXPECT_EQ(chosen(u"old"_s), u"K (*.kestrel *.db)") << "it has such a file too";
    EXPECT_EQ(chosen(u"other"_s), u"K (*.kestrel *.db)");
    dialog->selectNameFilter(u"Access(*.mdb)"_s);
    EXPECT_EQ(chosen(u"old"_s), u"Access(*.mdb)");
    EXPECT_EQ(chosen(u"."_s), u"K (*.kestrel *.db)");
    dialog->selectNameFilter(u"All (*)"_s);
    EXPECT_EQ(chosen(u"old"_s), u"All (*)") << "the user's choice stays";
    QTest::keyClick(dialog, Qt::Key_Escape);
  });
  QtFileDialog().Ask({FileDialog::Kind::Open,
                      u"Title"_s,
                      u"Access(*.mdb);;K (*.kestrel *.db);;All (*)"_s,
                      folder.path(),
                      {}});
}

TEST(QtFileDialogTest, AnotherKindOfFileHasAnotherEnding) {
  const QTemporaryDir folder;
  for (const auto& [typed, expected] : {std::pair{QString(), u"ring 1.5.png"_s}, {u"x"_s, u"x.png"_s}}) {
    InNext<QFileDialog>([&typed = typed](QFileDialog* dialog) {
      QTest::keyClick(dialog->findChild<QComboBox*>(u"fileTypeCombo"_s), Qt::Key_Down);
      if (!typed.isEmpty()) dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(typed);
      dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
    });
    EXPECT_EQ(QtFileDialog().Ask({FileDialog::Kind::Save, u"Title"_s, u"P (*.pdf);;G (*.png)"_s,
                                  folder.filePath(u"ring 1.5.pdf"_s), u"pdf"_s}),
              folder.filePath(expected));
  }
}

}  // namespace
