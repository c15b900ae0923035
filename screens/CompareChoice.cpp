#include "screens/CompareChoice.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <unordered_map>

#include "core/DataObjectFunctions.h"
#include "core/Globals.h"
#include "core/Trap.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/ListFilter.h"
#include "screens/MainList.h"
#include "texts/ChartWords.h"
#include "texts/SharingWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

CompareChoice::CompareChoice(qint32 one, QWidget* parent) : QDialog(parent) {
  Trap(u"CompareChoice::Form_Load"_s, [&] {
    BuildControls(DataObjectFunctions::GetDataObjectDescription(one));
    Fill(one);
  });
}

void CompareChoice::BuildControls(const QString& description) {
  setObjectName(u"CompareChoice"_s);
  setWindowTitle(Words::Compare::title());
  setModal(true);
  setSizeGripEnabled(true);
  listOther = Named(new MainList(this), u"listOther"_s);
  listOther->setSelectionMode(QAbstractItemView::SingleSelection);
  listOther->setAccessibleName(Words::Main::dataSets());
  QString shown = description;
  auto* caption = new QLabel(Words::Compare::with(shown.replace(u'&', u"&&"_s)), this);
  caption->setWordWrap(true);
  caption->setBuddy(listOther);
  cmdCompare = Named(new QPushButton(Words::Compare::accept(), this), u"cmdCompare"_s);
  cmdCompare->setToolTip(Words::Compare::acceptTip());
  cmdCompare->setDefault(true);
  auto* cmdCancel = Named(new QPushButton(Words::Sharing::cancel(), this), u"cmdCancel"_s);
  cmdCancel->setAutoDefault(false);
  // Before the filter, which Escape empties first.
  connect(listOther, &MainList::EscapePressed, this, [this] {
    if (listOther->Rows().Filtered().LetsAllThrough()) reject();
  });
  filter_ = new ListFilter(listOther, this);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdCompare);
  buttons->addWidget(cmdCancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(caption);
  layout->addWidget(filter_);
  layout->addWidget(listOther, 1);
  layout->addLayout(buttons);
  const int em = fontMetrics().height();
  resize(QSize(em * 44, em * 28).boundedTo(RoomFor(*this)));
  filter_->PutBeforeList();
  listOther->setFocus();

  connect(listOther, &MainList::RowActivated, this, &QDialog::accept);
  connect(listOther, &MainList::Arranged, this, [this] { cmdCompare->setEnabled(listOther->HasCurrent()); });
  connect(cmdCompare, &QPushButton::clicked, this, &QDialog::accept);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, filter_, &ListFilter::Find);
  InstallHelpKey(this, HelpTopics::Compare);
}

void CompareChoice::Fill(qint32 one) {
  std::vector<CDataPtr> others;
  std::ranges::copy_if(Globals().gDataCollection, std::back_inserter(others),
                       [one](const CDataPtr& other) { return other->ID() != one; });
  // In the order that the user sees in the main window; behind those what its filter hides.
  std::unordered_map<qint32, size_t> places;
  if (const MainScreen* screen = Globals().mainScreen)
    for (const qint32 id : screen->ListedIDs()) places.emplace(id, places.size());
  std::ranges::stable_sort(others, {}, [&](const CDataPtr& other) {
    const auto place = places.find(other->ID());
    return place == places.end() ? places.size() : place->second;
  });
  listOther->SetHint(Words::Compare::noOther());
  listOther->AddRows(others);
}

qint32 CompareChoice::Chosen() const {
  return listOther->HasCurrent() ? listOther->Rows().IDAt(listOther->currentIndex().row()) : 0;
}
