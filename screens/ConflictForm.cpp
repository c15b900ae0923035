#include "screens/ConflictForm.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "screens/Controls.h"
#include "screens/Help.h"
#include "texts/SharingWords.h"

using namespace Qt::StringLiterals;

ConflictForm::ConflictForm(const QString& question, const std::vector<VersionText>& versions, QWidget* parent)
    : QDialog(parent) {
  setObjectName(u"ConflictForm"_s);
  setWindowTitle(Words::Sharing::conflictTitle());
  setModal(true);
  setSizeGripEnabled(true);
  auto* lblQuestion = new QLabel(question, this);
  lblQuestion->setObjectName(u"lblQuestion"_s);
  lblQuestion->setTextFormat(Qt::PlainText);
  lblQuestion->setWordWrap(true);
  FillTable(versions);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  const auto button = [&](const QString& name, const QString& caption, const QString& toolTip,
                          Answer answer) {
    auto* made = new QPushButton(caption, this);
    made->setObjectName(name);
    made->setToolTip(toolTip);
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, [this, answer] { done(answer); });
    buttons->addWidget(made);
    return made;
  };
  using namespace Words::Sharing;
  button(u"cmdTheirs"_s, takeTheirs(), takeTheirsTip(), TakeTheirs);
  button(u"cmdMine"_s, keepMine(), keepMineTip(), KeepMine);
  auto* cmdCancel = button(u"cmdCancel"_s, cancel(), cancelTip(), Cancel);
  cmdCancel->setDefault(true);
  cmdCancel->setFocus();

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(lblQuestion);
  layout->addWidget(tableVersions, 1);
  layout->addLayout(buttons);
  const int em = fontMetrics().height();
  qsizetype lines = 10;  // of the question, the heading and the buttons
  for (const VersionText& version : versions)
    lines += 2 + std::max(version.mine.count(u'\n'), version.theirs.count(u'\n'));
  resize(QSize(em * 38, em * int(std::min(lines, qsizetype{40}))).boundedTo(RoomFor(*this)));
  InstallHelpKey(this, HelpTopics::Sharing);
}

void ConflictForm::FillTable(const std::vector<VersionText>& versions) {
  tableVersions = new QTableWidget(static_cast<int>(versions.size()), 3, this);
  tableVersions->setObjectName(u"tableVersions"_s);
  tableVersions->setAccessibleName(Words::Sharing::conflictTitle());
  tableVersions->setHorizontalHeaderLabels(
      {Words::Sharing::subject(), Words::Sharing::mine(), Words::Sharing::theirs()});
  tableVersions->setEditTriggers(QAbstractItemView::NoEditTriggers);
  tableVersions->setSelectionMode(QAbstractItemView::SingleSelection);
  tableVersions->setTabKeyNavigation(false);
  tableVersions->setWordWrap(true);
  tableVersions->verticalHeader()->hide();
  tableVersions->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  tableVersions->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  tableVersions->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  tableVersions->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  int row = 0;
  for (const VersionText& version : versions) {
    int column = 0;
    for (const QString& text : {version.subject, version.mine, version.theirs}) {
      auto* item = new QTableWidgetItem(text);
      item->setTextAlignment(Qt::AlignLeft | Qt::AlignTop);
      item->setToolTip(text);
      tableVersions->setItem(row, column++, item);
    }
    ++row;
  }
}
