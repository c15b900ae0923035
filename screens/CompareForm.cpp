#include "screens/CompareForm.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include "core/DataObjectFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "data/RawDataText.h"
#include "platform/ui/ButtonBar.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/PageView.h"
#include "texts/ChartWords.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Icon;

namespace {

class ComparedPage : public QWidget {
 public:
  explicit ComparedPage(CompareForm* form) : QWidget(form), form_(form) {
    setMinimumSize(320, 180);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(Words::Chart::controlCharts());
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    if (form_->Page()) form_->Page()->PaintOut(painter, rect(), SmallestText(*this, 0.4));
  }

 private:
  CompareForm* form_;
};

bool HasPoints(const CData& data) { return data.NumberOfPlotPoints() >= RawDataText::fewestPoints; }

}  // namespace

CompareForm::CompareForm(qint32 one, qint32 other, PagePrinting& printing, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      printing_(printing) {
  Trap(u"CompareForm::Form_Load"_s, [&] {
    BuildControls();
    loaded_ = Load({one, other}) && ShowPage();
  });
}

int CompareForm::exec() { return loaded_ ? QDialog::exec() : int(Rejected); }

bool CompareForm::Load(const std::array<qint32, 2>& ids) {
  for (size_t i = 0; i < ids.size(); ++i) {
    CDataPtr present;
    DataObjectFunctions::GetDataObjectByID(ids[i], present);
    if (!present) throw Error(Words::noSuchDataSet(ids[i]));
    if (!HasPoints(*present)) {
      ShowSystemMessage(Words::Compare::tooFewPoints(present->Description()), Icon::Exclamation);
      return false;
    }
    data_[i] = std::make_shared<CData>(*present);
  }
  return true;
}

void CompareForm::BuildControls() {
  setObjectName(u"CompareForm"_s);
  setWindowTitle(Words::Compare::title());
  setModal(true);
  setSizeGripEnabled(true);
  ButtonBar* toolbar = BuildToolbar();
  checkSameScale = Named(new QCheckBox(Words::Compare::sameScale(), this), u"checkSameScale"_s);
  checkSameScale->setChecked(true);
  lblNews = TextLabel(u"lblNews"_s, this);
  lblNews->setForegroundRole(QPalette::PlaceholderText);
  view_ = Named(new ComparedPage(this), u"ComparedPage"_s);

  auto* head = new QHBoxLayout;
  head->addWidget(lblNews, 1);
  head->addWidget(checkSameScale);
  auto* body = new QVBoxLayout;
  body->setContentsMargins(9, 0, 9, 9);
  body->addLayout(head);
  body->addWidget(view_, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(toolbar);
  layout->addLayout(body, 1);
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  setMinimumSize(view_->minimumSize() + QSize(40, 120));
  const QSize room = screen()->availableSize();
  resize(std::min(1280, room.width() * 19 / 20), std::min(800, room.height() * 9 / 10));
  checkSameScale->setFocus();

  connect(toolbar, &ButtonBar::ButtonClick, this, &CompareForm::ButtonClick);
  connect(toolbar, &ButtonBar::ButtonMenuClick, this, &CompareForm::ButtonMenuClick);
  connect(checkSameScale, &QCheckBox::toggled, this, &CompareForm::ShowPage);
  connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, [] {
    if (MainScreen* main = Globals().mainScreen) main->ReadLibraryNews();
  });
  InstallHelpKey(this, HelpTopics::Compare);
}

ButtonBar* CompareForm::BuildToolbar() {
  auto* bar = new ButtonBar(u"Toolbar1"_s, this, u"S"_s);
  bar->AddButton(LoadResText(u"Print;206"), LoadResText(u"Print Options;207"), Symbol::Print);
  bar->AddButton(LoadResText(u"Utilities;216"), LoadResText(u"Utilities;216"), Symbol::Utilities);
  bar->AddButton(LoadResText(u"Help;219"), LoadResText(u"Application Help;220"), Symbol::Help);
  bar->AddButton(LoadResText(u"Close;221"), LoadResText(u"Close the current screen;222"), Symbol::Close);
  bar->AddEntry(Print, LoadResText(u"Print;206"), Symbol::Print)->setShortcut(QKeySequence::Print);
  bar->AddEntry(Print, LoadResText(u"Printer Setup;208"), Symbol::Printer);
  bar->AddEntry(Print, LoadResText(u"Page Setup;209"), Symbol::Page);
  bar->AddEntry(Utilities, LoadResText(u"Copy;218"), Symbol::Copy)->setShortcut(QKeySequence::Copy);
  bar->AddEntry(Utilities, Words::Chart::savePageAs(), Symbol::Save)
      ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
  return bar;
}

void CompareForm::ButtonClick(int button) {
  if (button == Help) CallUpHelp(HelpTopics::Compare);
  if (button == Close) reject();
}

void CompareForm::ButtonMenuClick(int button, int entry) {
  if (button == Print) {
    if (entry == 1)
      Trap(u"CompareForm::PrintPage"_s, [this] { TellFile(printing_.PrintPage(*MakePage(true))); });
    if (entry == 2) Trap(u"CompareForm::PrinterSetup"_s, [this] { printing_.PrinterSetup(this); });
    if (entry == 3) Trap(u"CompareForm::PageSetup"_s, [this] { printing_.PageSetup(this); });
  } else if (entry == 1) {
    Trap(u"CompareForm::CopyPage"_s, [this] {
      CopyPage(*MakePage(true));
      ShowSystemMessage(LoadResText(u"The graphics page has been copied.;224"), Icon::Information);
    });
  } else {
    Trap(u"CompareForm::SavePage"_s, [this] { TellFile(printing_.SavePage(*MakePage(true))); });
  }
}

void CompareForm::TellFile(const QString& path) {
  if (!path.isEmpty()) lblNews->setText(Words::Chart::pageWritten(path));
}

std::unique_ptr<ComparePage> CompareForm::MakePage(bool forOutput) const {
  ComparePageOptions options{.sameScale = checkSameScale->isChecked()};
  if (const auto& library = Globals().gLibrary) options.libraryName = QFileInfo(library->Place()).fileName();
  if (forOutput) options.printedAt = Globals().clock->Now();
  return std::make_unique<ComparePage>(*data_[0], *data_[1], options);
}

// False where there is no scale to draw on, which has then been said.
bool CompareForm::ShowPage() {
  return Trap(u"CompareForm::ShowPage"_s, false, [this] {
    const bool agree = ComparePage::UnitsAgree(*data_[0], *data_[1]);
    checkSameScale->setEnabled(agree);
    checkSameScale->setToolTip(agree ? Words::Compare::sameScaleTip() : Words::Compare::unitsDiffer());
    page_ = MakePage(false);
    view_->setAccessibleDescription(page_->Description());
    view_->update();
    return true;
  });
}

void CompareForm::LibraryChanged() {
  if (!loaded_) return;
  const QString now = Globals().clock->Now().toString(u"HH:mm:ss"_s);
  bool isNew = false;
  for (const CDataPtr& shown : data_) {
    const CDataPtr present = DataObjectFunctions::PresentOf(*shown);
    if (!present) return lblNews->setText(Words::Sharing::deletedByOthers(shown->Description()));
    if (!HasPoints(*present)) return lblNews->setText(Words::Compare::tooFewPoints(present->Description()));
    isNew = isNew || present->RowAsKnown() != shown->RowAsKnown();
    *shown = *present;
  }
  if (isNew && ShowPage()) lblNews->setText(Words::Sharing::updated(now));
}
