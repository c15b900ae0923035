// What the chart screen looks like, and what its controls do.
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "core/Settings.h"
#include "platform/ui/ButtonBar.h"
#include "screens/Controls.h"
#include "screens/MarkList.h"
#include "screens/PageView.h"
#include "screens/PointsBar.h"
#include "screens/StatGraphics.h"
#include "screens/VerdictPanel.h"
#include "texts/ChartWords.h"
#include "texts/NoteWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

void StatGraphics::BuildControls() {
  setObjectName(u"StatGraphics"_s);
  setModal(true);
  setSizeGripEnabled(true);

  Toolbar1 = BuildToolbar();
  QLayout* head = BuildHead();
  view_ = Named(new PageView(this), u"PageView"_s);
  lblNews = TextLabel(u"lblNews"_s, this);
  lblNews->setForegroundRole(QPalette::PlaceholderText);
  lblNews->setMinimumHeight(fontMetrics().height());  // so that the page stays where it is
  pointsBar_ = Named(new PointsBar(this), u"PointsBar"_s);
  pointsBar_->hide();
  verdict_ = Named(new VerdictPanel(this), u"VerdictPanel"_s);

  auto* charts = new QVBoxLayout;
  charts->addLayout(head);
  charts->addWidget(BuildScaleNotice());
  charts->addWidget(view_, 1);
  charts->addWidget(pointsBar_);
  charts->addWidget(lblNews);
  auto* body = new QHBoxLayout;
  body->setContentsMargins(9, 0, 9, 9);
  body->addLayout(charts, 1);
  body->addWidget(verdict_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(Toolbar1);
  layout->addLayout(body, 1);
  setTabOrder(checkFitScale, view_);
  view_->setFocus();
  // It may be made smaller than the panel beside the charts has room in.
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  setMinimumSize(view_->minimumSize() + QSize(40, 120));
  const QSize room = screen()->availableSize();
  resize(std::min(1280, room.width() * 19 / 20), std::min(800, room.height() * 9 / 10));
  ConnectControls();
  ConnectPoints();
}

// In a small window the charts get the room that the captions of the commands and the panel can spare. What
// the panel tells stands on the page as well.
void StatGraphics::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  const int em = fontMetrics().height();
  const bool isLow = height() < em * 36;
  Toolbar1->PlaceCaptions(isLow ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonTextUnderIcon);
  verdict_->SetColumn(em * (width() < em * 50 ? 25 : 28) / 2);
  // What stands above the charts needs room for its letters, too.
  const int charts = std::max(view_->minimumWidth(), em * 18);
  verdict_->setVisible(width() >= verdict_->width() + charts + 2 * em);
}

ButtonBar* StatGraphics::BuildToolbar() {
  // The letters of the controls below it.
  auto* bar = new ButtonBar(u"Toolbar1"_s, this, u"AFOTVWX"_s);
  bar->AddButton(LoadResText(u"Print;206"), LoadResText(u"Print Options;207"), Symbol::Print);
  bar->AddButton(LoadResText(u"Save;210"), LoadResText(u"Save Changes;211"), Symbol::Save)
      ->setShortcut(QKeySequence::Save);
  bar->AddButton(LoadResText(u"Zoom In;212"), LoadResText(u"Chart Zoom;213"), Symbol::ZoomIn);
  bar->AddButton(LoadResText(u"Recalculate;214"), LoadResText(u"Recalculate control limits;215"),
                 Symbol::Recalculate);
  bar->AddButton(LoadResText(u"Utilities;216"), LoadResText(u"Utilities;216"), Symbol::Utilities);
  bar->AddButton(LoadResText(u"Help;219"), LoadResText(u"Application Help;220"), Symbol::Help);
  bar->AddButton(LoadResText(u"Close;221"), LoadResText(u"Close the current screen;222"), Symbol::Close);

  bar->AddEntry(Print, LoadResText(u"Print;206"), Symbol::Print)->setShortcut(QKeySequence::Print);
  bar->AddEntry(Print, LoadResText(u"Printer Setup;208"), Symbol::Printer);
  bar->AddEntry(Print, LoadResText(u"Page Setup;209"), Symbol::Page);
  bar->AddEntry(Utilities, LoadResText(u"Export;217"), Symbol::Export);
  bar->AddEntry(Utilities, LoadResText(u"Copy;218"), Symbol::Copy)->setShortcut(QKeySequence::Copy);
  bar->AddEntry(Utilities, Words::Adding::command(), Symbol::Add);
  bar->AddEntry(Utilities, Words::Chart::savePageAs(), Symbol::Save)
      ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
  bar->AddEntry(Utilities, Words::Points::command(), Symbol::Chart);
  bar->AddEntry(Utilities, Words::Marks::edit(), Symbol::Edit)->setShortcut(Qt::Key_F2);
  bar->AddEntry(Utilities, Words::Note::command(), Symbol::Edit)->setShortcut(Qt::Key_N);
  bar->AddEntry(Utilities, Words::Unplaced::command(), Symbol::Edit)->setShortcut(Qt::Key_U);
  bar->AddEntry(Utilities, Words::Marks::next(), Symbol::Next)->setShortcut(Qt::Key_F3);
  bar->AddEntry(Utilities, Words::Marks::previousEntry(), Symbol::Previous)
      ->setShortcut(Qt::SHIFT | Qt::Key_F3);
  return bar;
}

QToolButton* StatGraphics::BuildNeighbour(const QString& name, int step) {
  auto* button = Named(new QToolButton(this), name);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  button->setIcon(SymbolIcon(step > 0 ? Symbol::Next : Symbol::Previous));
  button->setToolTip(step > 0 ? Words::Neighbour::nextTip() : Words::Neighbour::previousTip());
  button->setAccessibleName(step > 0 ? Words::Neighbour::next() : Words::Neighbour::previous());
  const auto show = [this, step] { ShowNeighbour(step); };
  connect(button, &QToolButton::clicked, this, show);
  auto* key = new QShortcut(Qt::CTRL | (step > 0 ? Qt::Key_PageDown : Qt::Key_PageUp), this);
  connect(key, &QShortcut::activated, this, show);
  return button;
}

QLayout* StatGraphics::BuildHead() {
  cmdPrevious = BuildNeighbour(u"cmdPrevious"_s, -1);
  cmdNext = BuildNeighbour(u"cmdNext"_s, 1);
  lblDescription = TextLabel(u"lblDescription"_s, this);
  lblDescription->setFont(HeadingFont(*this));
  checkFitScale = Named(new QCheckBox(Words::Chart::fitScale(), this), u"checkFitScale"_s);
  checkFitScale->setToolTip(Words::Chart::fitScaleTip());
  checkFitScale->setChecked(Settings::IsOn(Settings::chartFittedScale));
  cboAxis = Named(new QComboBox(this), u"cboAxis"_s);
  cboAxis->addItems({Words::AxisChoice::numbers(), Words::AxisChoice::times(), Words::AxisChoice::lots()});
  cboAxis->setToolTip(Words::AxisChoice::tip());
  cboAxis->setAccessibleName(Words::AxisChoice::tip());
  cboAxis->setCurrentIndex(std::clamp(Settings::Read(Settings::chartAxis).toInt(), 0, cboAxis->count() - 1));
  cboAxis->hide();
  auto* head = new QHBoxLayout;
  head->addWidget(cmdPrevious);
  head->addWidget(cmdNext);
  head->addWidget(lblDescription, 1);
  head->addWidget(cboAxis);
  head->addWidget(checkFitScale);
  return head;
}

QWidget* StatGraphics::BuildScaleNotice() {
  scaleNotice_ = Named(new QFrame(this), u"frameScale"_s);
  scaleNotice_->setFrameShape(QFrame::StyledPanel);
  lblScale = TextLabel(u"lblScale"_s, scaleNotice_, Words::Chart::flatScale());
  cmdFitScale = Named(new QPushButton(Words::Chart::drawFitted(), scaleNotice_), u"cmdFitScale"_s);
  cmdFitScale->setToolTip(Words::Chart::fitScaleTip());
  cmdFitScale->setAutoDefault(false);
  auto* row = new QHBoxLayout(scaleNotice_);
  row->setContentsMargins(6, 2, 2, 2);
  row->addWidget(lblScale, 1);
  row->addWidget(cmdFitScale);
  return scaleNotice_;
}

void StatGraphics::ConnectControls() {
  connect(Toolbar1, &ButtonBar::ButtonClick, this, &StatGraphics::ButtonClick);
  connect(Toolbar1, &ButtonBar::ButtonMenuClick, this, &StatGraphics::ButtonMenuClick);
  connect(cboAxis, &QComboBox::currentIndexChanged, this, &StatGraphics::LabelAxis);
  connect(new QShortcut(Qt::Key_T, this), &QShortcut::activated, cboAxis, [this] {
    if (cboAxis->isVisible()) cboAxis->setCurrentIndex((cboAxis->currentIndex() + 1) % cboAxis->count());
  });
  connect(checkFitScale, &QCheckBox::toggled, this, &StatGraphics::FitScale);
  connect(cmdFitScale, &QPushButton::clicked, checkFitScale, [this] { checkFitScale->setChecked(true); });
  connect(view_, &PageView::ZoomRequested, this, &StatGraphics::ZoomOnSelectedGraph);
  connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, [] {
    if (MainScreen* screen = Globals().mainScreen) screen->ReadLibraryNews();
  });
  connect(new QShortcut(Qt::Key_F1, this), &QShortcut::activated, this,
          [this] { links_.callUpHelp(links_.helpTopic); });
}

void StatGraphics::ConnectPoints() {
  connect(view_, &PageView::PointActivated, this, &StatGraphics::EditPoint);
  connect(view_, &PageView::StretchSelected, this, &StatGraphics::OfferStretch);
  connect(pointsBar_, &PointsBar::Changed, this, [this] { view_->SetStretch(pointsBar_->Points()); });
  connect(pointsBar_, &PointsBar::ShowRequested, this, [this] { ShowPoints(pointsBar_->Points()); });
  connect(pointsBar_, &PointsBar::AllRequested, this, [this] { ShowPoints(std::nullopt); });
  connect(pointsBar_, &PointsBar::MonthRequested, this, &StatGraphics::ShowMonth);
  view_->setContextMenuPolicy(Qt::ActionsContextMenu);
  for (const int entry : {7, 6}) view_->addAction(Toolbar1->Entry(Utilities, entry));
  connect(&verdict_->Marks(), &MarkList::Chosen, this, &StatGraphics::ShowMark);
  connect(verdict_, &VerdictPanel::StepRequested, this, &StatGraphics::StepMark);
}
