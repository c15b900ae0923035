#include "screens/UnplacedForm.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "core/DataObjectFunctions.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "platform/language/LocalTimes.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "texts/NoteWords.h"

using namespace Qt::StringLiterals;
namespace W = Words::Unplaced;

UnplacedForm::UnplacedForm(const CData& dataSet, const StatPage& page, std::optional<int> point,
                           QWidget* parent)
    : QDialog(parent),
      data_(dataSet),
      trace_(page.Trace()),
      point_(point),
      subgroupSize_(std::max<int>(1, dataSet.SubGroupSize())) {
  Trap(u"UnplacedForm::Form_Load"_s, [this] {
    BuildControls();
    Fill();
    InstallHelpKey(this, HelpTopics::Notes);
  });
}

void UnplacedForm::BuildList() {
  listUnplaced = Named(new QTreeWidget(this), u"listUnplaced"_s);
  listUnplaced->setAccessibleName(W::title());
  listUnplaced->setRootIsDecorated(false);
  listUnplaced->setUniformRowHeights(true);
  listUnplaced->setAllColumnsShowFocus(true);
  listUnplaced->setTabKeyNavigation(false);
  listUnplaced->setSelectionMode(QAbstractItemView::ExtendedSelection);
  listUnplaced->setHeaderLabels({W::kind(), W::when(), W::samples(), W::about()});
  listUnplaced->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  auto* remove = new QShortcut(Qt::Key_Delete, listUnplaced);
  remove->setContext(Qt::WidgetShortcut);
  connect(remove, &QShortcut::activated, this, [this] { Remove(false); });
  connect(listUnplaced, &QTreeWidget::itemSelectionChanged, this, &UnplacedForm::ShowSelected);
}

void UnplacedForm::BuildControls() {
  setObjectName(u"UnplacedForm"_s);
  setWindowTitle(W::title());
  setModal(true);
  setSizeGripEnabled(true);
  BuildList();
  auto* why = TextLabel(u"lblWhy"_s, this, W::why());
  txtNote = Named(new QPlainTextEdit(this), u"txtNote"_s);
  txtNote->setReadOnly(true);
  txtNote->setTabChangesFocus(true);
  txtNote->setAccessibleName(W::whole());
  lblNews = TextLabel(u"lblNews"_s, this);
  cmdPlace =
      PlainButton(u"cmdPlace"_s, this, point_ ? W::place(*point_) : W::placeSomewhere(), W::placeTip());
  cmdRemove = PlainButton(u"cmdRemove"_s, this, W::remove(), W::removeTip());
  cmdRemoveAll = PlainButton(u"cmdRemoveAll"_s, this, W::removeAll(), W::removeAllTip());
  auto* cmdClose = PlainButton(u"cmdClose"_s, this, W::close());

  auto* buttons = new QHBoxLayout;
  for (QPushButton* command : {cmdPlace, cmdRemove, cmdRemoveAll}) buttons->addWidget(command);
  buttons->addStretch();
  buttons->addWidget(cmdClose);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(why);
  layout->addWidget(listUnplaced, 3);
  layout->addWidget(txtNote, 1);
  layout->addWidget(lblNews);
  layout->addLayout(buttons);
  const int em = fontMetrics().height();
  lblNews->setMinimumHeight(fontMetrics().lineSpacing());
  txtNote->setMinimumHeight(2 * fontMetrics().lineSpacing());
  resize(QSize(em * 38, em * 26).boundedTo(RoomFor(*this)));
  listUnplaced->setFocus();
  connect(cmdPlace, &QPushButton::clicked, this, &UnplacedForm::Place);
  connect(cmdRemove, &QPushButton::clicked, this, [this] { Remove(false); });
  connect(cmdRemoveAll, &QPushButton::clicked, this, [this] { Remove(true); });
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

// Notes first: they are what somebody took pains over.
void UnplacedForm::Fill() {
  record_ = DataObjectFunctions::TraceOf(data_);
  listUnplaced->clear();
  QList<QTreeWidgetItem*> rows;
  for (const Trace::Note& note : record_.unplacedNotes)
    rows << new QTreeWidgetItem({W::note(), NotedText(note),
                                 note.value.isEmpty() ? QString() : W::was(note.value),
                                 note.text.simplified()});
  for (const Trace::Run& run : record_.unplacedRuns)
    rows << new QTreeWidgetItem(
        {W::run(), LocalTimes::Moment(run.time), QString::number(run.count), run.lot});
  listUnplaced->addTopLevelItems(rows);
  if (!rows.isEmpty()) listUnplaced->setCurrentItem(rows.first());
  cmdRemoveAll->setEnabled(!rows.isEmpty());
  lblNews->setText(rows.isEmpty() ? W::none() : QString());
  ShowSelected();
}

const Trace::Note* UnplacedForm::SelectedNote() const {
  const auto selected = listUnplaced->selectedItems();
  if (selected.size() != 1) return nullptr;
  const auto row = static_cast<size_t>(listUnplaced->indexOfTopLevelItem(selected.first()));
  return row < record_.unplacedNotes.size() ? &record_.unplacedNotes[row] : nullptr;
}

void UnplacedForm::ShowSelected() {
  const Trace::Note* note = SelectedNote();
  txtNote->setPlainText(note ? note->text : QString());
  cmdPlace->setEnabled(note && point_);
  cmdRemove->setEnabled(!listUnplaced->selectedItems().isEmpty());
}

// On the first of the point's samples that has none.
void UnplacedForm::Place() {
  Trap(u"UnplacedForm::Place"_s, [this] {
    using Outcome = Library::Noted::Outcome;
    const Trace::Note* note = SelectedNote();
    if (!note || !point_) return;
    const qsizetype first = qsizetype{*point_ - 1} * subgroupSize_;
    qsizetype sample = first;
    while (sample < first + subgroupSize_ - 1 && trace_.Record().NoteAt(sample)) ++sample;
    const auto placed = DataObjectFunctions::PlaceNote(data_, note->number, sample);
    if (!placed) return;
    hasChanged_ = true;
    if (placed->outcome != Outcome::Conflict) Fill();
    lblNews->setText(placed->outcome == Outcome::Written    ? W::placed(*point_)
                     : placed->outcome == Outcome::Conflict ? W::taken(*point_, placed->theirs.text)
                                                            : W::gone());
    listUnplaced->setFocus();
  });
}

void UnplacedForm::Remove(bool all) {
  Trap(u"UnplacedForm::Remove"_s, [&] {
    std::vector<qint64> runs, notes;
    const auto notesListed = std::ssize(record_.unplacedNotes);
    for (int row = 0; row < listUnplaced->topLevelItemCount(); ++row) {
      if (!all && !listUnplaced->topLevelItem(row)->isSelected()) continue;
      if (row < notesListed)
        notes.push_back(record_.unplacedNotes[size_t(row)].number);
      else
        runs.push_back(record_.unplacedRuns[size_t(row - notesListed)].number);
    }
    const QString what = CountText(runs.size(), notes.size());
    if (what.isEmpty() || !ConfirmedInSystemMessage(W::confirm(what))) return;
    if (!DataObjectFunctions::RemoveUnplaced(data_, runs, notes)) return;
    hasChanged_ = true;
    Fill();
    listUnplaced->setFocus();
  });
}
