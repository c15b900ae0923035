#include "screens/ListFilter.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

#include "screens/Controls.h"
#include "screens/MainList.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

ListFilter::ListFilter(MainList* list, QWidget* parent) : QWidget(parent), list_(list) {
  lblCounts = Named(new QLabel(this), u"lblCounts"_s);
  lblCounts->setTextFormat(Qt::PlainText);
  lblCounts->setWordWrap(true);
  txtFind = Named(new QLineEdit(this), u"txtFind"_s);
  txtFind->setClearButtonEnabled(true);
  txtFind->setToolTip(Words::Main::findTip());
  txtFind->installEventFilter(this);
  checkOutOfControl = Named(new QCheckBox(Words::Main::onlyOutOfControl(), this), u"checkOutOfControl"_s);
  auto* caption = new QLabel(Words::Main::find(), this);
  caption->setBuddy(txtFind);

  layout_ = new QGridLayout(this);
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->addWidget(lblCounts, 0, 0, 1, 3);
  layout_->addWidget(caption, 1, 0);
  layout_->addWidget(txtFind, 1, 1);
  layout_->addWidget(checkOutOfControl, 2, 0, 1, 3);
  layout_->setColumnStretch(1, 1);

  connect(txtFind, &QLineEdit::textChanged, this, &ListFilter::Apply);
  connect(checkOutOfControl, &QCheckBox::toggled, this, &ListFilter::Apply);
  connect(list_, &MainList::Arranged, this, &ListFilter::ShowCounts);
  connect(list_, &MainList::EscapePressed, this, &ListFilter::ShowAll);
  ShowCounts();
}

void ListFilter::Find() {
  txtFind->setFocus(Qt::ShortcutFocusReason);
  txtFind->selectAll();
}

void ListFilter::PutBeforeList() { setTabOrder(checkOutOfControl, list_); }

void ListFilter::ShowAll() {
  {
    const QScopedValueRollback together(isChanging_, true);
    txtFind->clear();
    checkOutOfControl->setChecked(false);
  }
  if (!list_->Rows().Filtered().LetsAllThrough()) Apply();
}

void ListFilter::Apply() {
  if (isChanging_) return;
  list_->SetFilter({.text = txtFind->text(), .onlyOutOfControl = checkOutOfControl->isChecked()});
}

void ListFilter::ShowCounts() {
  static constexpr Text<1> words[] = {Words::Main::countIdeal, Words::Main::countThreshold,
                                      Words::Main::countBrinkOfChaos, Words::Main::countChaos,
                                      Words::Main::countNotEvaluated};
  const auto counts = list_->Rows().CountsByState();
  QStringList texts;
  for (size_t i = 0; i < counts.size(); ++i) {
    const int count = counts[(counts.size() - 1) - i];  // the best first
    if (count > 0) texts << words[i](count);
  }
  QString text = texts.join(Words::Main::countComma());
  const MainListModel& rows = list_->Rows();
  if (rows.rowCount() < rows.Total()) text = Words::Main::shown(text, rows.rowCount(), rows.Total());
  lblCounts->setText(text);
}

// The check box stands beside the text where that leaves enough of it.
void ListFilter::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const bool isWide = width() > checkOutOfControl->sizeHint().width() + fontMetrics().averageCharWidth() * 30;
  if (isWide == isWide_) return;
  isWide_ = isWide;
  layout_->addWidget(checkOutOfControl, isWide ? 1 : 2, isWide ? 2 : 0, 1, isWide ? 1 : 3);
}

// From the check box.
void ListFilter::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
  list_->setFocus();
  QCoreApplication::sendEvent(list_, event);
}

// The keys of the list work in the box too, but for those that edit.
bool ListFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
      list_->setFocus();
      [[fallthrough]];
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      QCoreApplication::sendEvent(list_, event);
      return true;
    default:
      return false;
  }
}
