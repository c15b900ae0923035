#include "screens/RestoreForm.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "core/Trap.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/Indicators.h"
#include "texts/DetectionRules.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {
enum Column { Description, DeletedAt, Samples, State };
}

RestoreForm::RestoreForm(QWidget* parent) : QDialog(parent) {
  Trap(u"RestoreForm::Form_Load"_s, [this] {
    BuildControls();
    Fill();
    InstallHelpKey(this, HelpTopics::RestoreDeleted);
  });
}

void RestoreForm::BuildList() {
  const int em = fontMetrics().height();
  listDeleted = new QTreeWidget(this);
  listDeleted->setObjectName(u"listDeleted"_s);
  listDeleted->setAccessibleName(Words::Sharing::restoreTitle());
  listDeleted->setRootIsDecorated(false);
  listDeleted->setUniformRowHeights(true);
  listDeleted->setAllColumnsShowFocus(true);
  listDeleted->setTabKeyNavigation(false);
  listDeleted->setIconSize(QSize(em, em));
  listDeleted->setHeaderLabels({LoadResText(u"Data Description;186"), Words::Sharing::deletedAt(),
                                Words::Figure::samples(), Words::Sharing::state()});
  listDeleted->header()->setStretchLastSection(false);
  listDeleted->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  listDeleted->header()->setSectionResizeMode(Description, QHeaderView::Stretch);
}

void RestoreForm::BuildControls() {
  setObjectName(u"RestoreForm"_s);
  setWindowTitle(Words::Sharing::restoreTitle());
  setModal(true);
  setSizeGripEnabled(true);
  const int em = fontMetrics().height();
  BuildList();
  auto* caption = new QLabel(Words::Sharing::deletedDataSets(), this);
  caption->setBuddy(listDeleted);
  txtName = new QLineEdit(this);
  txtName->setObjectName(u"txtName"_s);
  auto* nameCaption = new QLabel(Words::Sharing::restoreAs(), this);
  nameCaption->setBuddy(txtName);
  lblNews = new QLabel(this);
  lblNews->setObjectName(u"lblNews"_s);
  lblNews->setTextFormat(Qt::PlainText);
  lblNews->setWordWrap(true);
  lblNews->setMinimumHeight(em);
  cmdRestore = new QPushButton(Words::Sharing::restore(), this);
  cmdRestore->setObjectName(u"cmdRestore"_s);
  cmdRestore->setToolTip(Words::Sharing::restoreTip());
  cmdRestore->setDefault(true);
  cmdClose = new QPushButton(Words::Sharing::close(), this);
  cmdClose->setObjectName(u"cmdClose"_s);
  cmdClose->setAutoDefault(false);

  auto* name = new QHBoxLayout;
  name->addWidget(nameCaption);
  name->addWidget(txtName, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdRestore);
  buttons->addWidget(cmdClose);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(caption);
  layout->addWidget(listDeleted, 1);
  layout->addLayout(name);
  layout->addWidget(lblNews);
  layout->addLayout(buttons);
  resize(QSize(em * 38, em * 22).boundedTo(RoomFor(*this)));

  connect(listDeleted, &QTreeWidget::currentItemChanged, this, &RestoreForm::ShowSelected);
  connect(listDeleted, &QTreeWidget::itemDoubleClicked, this, &RestoreForm::Restore);
  connect(cmdRestore, &QPushButton::clicked, this, &RestoreForm::Restore);
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this,
          [this] { Trap(u"RestoreForm::Fill"_s, [this] { Fill(); }); });
}

void RestoreForm::Fill() {
  deleted_ = CurrentLibrary()->DeletedDataSets();
  listDeleted->clear();
  for (const Library::Deleted& deleted : deleted_) {
    const CDataPtr& dataSet = deleted.row.data;
    const bool isReadable = dataSet && !deleted.row.failure;
    auto* row = new QTreeWidgetItem(
        {deleted.row.description, deleted.deletedAt,
         isReadable ? QString::number(dataSet->SampleQty()) : QString(),
         isReadable ? ProcessState::Name(dataSet->ProcessState()) : Words::Sharing::notReadable()});
    row->setTextAlignment(Samples, Qt::AlignRight | Qt::AlignVCenter);
    if (isReadable) row->setIcon(State, ProcessStateIcon(dataSet->ProcessState()));
    listDeleted->addTopLevelItem(row);
  }
  listDeleted->setCurrentItem(listDeleted->topLevelItem(0));
  ShowSelected();
  (deleted_.empty() ? cmdClose : cmdRestore)->setDefault(true);
  if (deleted_.empty()) lblNews->setText(Words::Sharing::nothingDeleted());
}

const Library::Deleted* RestoreForm::Selected() const {
  const int row = listDeleted->indexOfTopLevelItem(listDeleted->currentItem());
  return row >= 0 && size_t(row) < deleted_.size() ? &deleted_[size_t(row)] : nullptr;
}

void RestoreForm::ShowSelected() {
  const Library::Deleted* selected = Selected();
  txtName->setText(selected ? selected->row.description : QString());
  txtName->setEnabled(selected);
  cmdRestore->setEnabled(selected);
  lblNews->clear();
}

void RestoreForm::Restore() {
  Trap(u"RestoreForm::cmdRestore_Click"_s, [this] {
    const Library::Deleted* selected = Selected();
    const QString name = txtName->text().trimmed();
    if (!selected || name.isEmpty()) return;
    if (CurrentLibrary()->Contains(name)) {
      lblNews->setText(Words::Sharing::nameTakenHere());
      txtName->setFocus();
      txtName->selectAll();
      return;
    }
    const auto id = static_cast<qint32>(selected->row.id);
    CurrentLibrary()->Restore(*selected, name);
    Fill();
    lblNews->setText(Words::Sharing::restored(name));
    if (MainScreen* screen = Globals().mainScreen) {
      screen->ReadLibraryNews();
      screen->SelectListRow(id);
    }
    deleted_.empty() ? cmdClose->setFocus() : listDeleted->setFocus();
  });
}
