#include "screens/RawDataNotes.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "screens/Controls.h"
#include "screens/RawDataBox.h"
#include "screens/ScrollingPage.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int mostButtons = 4;
constexpr int longColumn = 2000;  // lines

// The letters are the page's; Alt and a digit press what is offered here.
class Digits {
 public:
  // With the digit, or the next that is free; without one where none is.
  QString Mark(QString caption, int wanted) {
    caption.replace(u'&', u"&&"_s);
    while (wanted < 10 && taken_.contains(wanted)) ++wanted;
    if (wanted > 9) return caption;
    taken_ << wanted;
    const qsizetype at = caption.indexOf(QString::number(wanted));
    return at < 0 ? u"%1 (&%2)"_s.arg(caption).arg(wanted) : caption.insert(at, u'&');
  }

  // A reading keeps its digit while others come and go: who presses it twice takes no other one.
  QString Mark(const RawDataReadings::Offer& offer) {
    const bool isColumn = offer.kind == RawDataReadings::Offer::Column;
    return Mark(offer.caption, 1 + (isColumn ? offer.column : int(offer.kind)));
  }

 private:
  QList<int> taken_;
};

}  // namespace

RawDataNotes::RawDataNotes(RawDataBox* box, QWidget* parent) : QWidget(parent), box_(box) {
  lblRawDataNote = Named(new QLabel(this), u"lblRawDataNote"_s);
  lblRawDataNote->setTextFormat(Qt::PlainText);
  lblRawDataNote->setWordWrap(true);
  lblRawDataNote->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  lblRawDataNote->installEventFilter(this);
  box_->installEventFilter(this);
  const auto button = [this](const QString& name) {
    auto* made = Named(new QPushButton(this), name);
    made->setAutoDefault(false);
    made->hide();
    return made;
  };

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(lblRawDataNote);
  cmdGoToLine = button(u"cmdGoToLine"_s);
  connect(cmdGoToLine, &QPushButton::clicked, this, &RawDataNotes::GoToNamedLine);
  for (int i = 0; i < mostButtons; ++i) {
    offerButtons_ << button(u"cmdOffer%1"_s.arg(i + 1));
    connect(offerButtons_.back(), &QPushButton::clicked, this, [this, i] {
      if (!offerButtons_[i]->menu()) TakeOffer(i);
    });
  }
  row_ = new QHBoxLayout;
  row_->addStrut(cmdGoToLine->sizeHint().height());  // nothing moves when a button comes
  row_->addWidget(cmdGoToLine);
  if (IsLow(*this)) row_->addWidget(offerButtons_.front());
  row_->addStretch();
  layout->addLayout(row_);
  for (QPushButton* offer : offerButtons_)
    if (row_->indexOf(offer) < 0) layout->addWidget(offer);
  moreOffers_ = Named(new QMenu(this), u"mnuMoreOffers"_s);
}

void RawDataNotes::Show(const QString& note, const RawDataText::Examination& found) {
  const qsizetype commas = box_->DecimalCommasRead();
  QString text = note;
  if (commas > 0)
    text += u'\n' + (commas == 1 ? Words::RawData::commaWasRead() : Words::RawData::commasWereRead(commas));
  lblRawDataNote->setText(text);
  FitNote();
  namedLine_ = found.NamedLine();
  lblRawDataNote->setCursor(namedLine_ > 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
  cmdGoToLine->setText(Words::RawData::goToLine(namedLine_));
  cmdGoToLine->setVisible(namedLine_ > 0);
  box_->MarkUnclear(found.unclearLines);
  offers_.clear();
  if (found.IsUnclear()) offers_ = RawDataReadings::Offers(box_->toPlainText());
  ShowOffers();
}

// The last button has a menu of those that have none; on a low screen there is only that one.
void RawDataNotes::ShowOffers() {
  const qsizetype count = offers_.size();
  const qsizetype buttons = std::min<qsizetype>(IsLow(*this) ? 1 : mostButtons, count);
  const bool hasMenu = buttons < count || (count > 0 && IsLow(*this));
  const qsizetype alone = hasMenu ? buttons - 1 : buttons;
  Digits onPage, inMenu;
  moreOffers_->clear();
  for (qsizetype i = 0; i < count; ++i) {
    if (i >= alone) {
      moreOffers_->addAction(inMenu.Mark(offers_[i]), this, [this, i] { TakeOffer(i); });
      continue;
    }
    offerButtons_[i]->setText(onPage.Mark(offers_[i]));
    offerButtons_[i]->setToolTip(offers_[i].caption);
  }
  for (qsizetype i = 0; i < mostButtons; ++i) {
    offerButtons_[i]->setVisible(i < buttons);
    offerButtons_[i]->setMenu(hasMenu && i == alone ? moreOffers_ : nullptr);
  }
  if (!hasMenu) return;
  const QString caption = alone > 0 ? Words::RawData::moreReadings() : Words::RawData::chooseReading();
  offerButtons_[alone]->setText(onPage.Mark(caption, int(alone) + 1));
  offerButtons_[alone]->setToolTip({});
}

// Below the box, where a page that scrolls may not show it.
void RawDataNotes::BringIntoSight() {
  QWidget* above = parentWidget();
  while (above && !qobject_cast<ScrollingPage*>(above)) above = above->parentWidget();
  if (!above || !box_->hasFocus()) return;
  for (QWidget* shown : {static_cast<QWidget*>(this), static_cast<QWidget*>(box_)})  // of the box the caret
    static_cast<ScrollingPage*>(above)->ensureWidgetVisible(shown, 0, fontMetrics().height() / 2);
}

int RawDataNotes::DelayFor(const RawDataBox& box) { return box.blockCount() > longColumn ? 150 : 0; }

// A wrapped text claims no room of its own in the window around it.
void RawDataNotes::FitNote() {
  const int needed = width() > 0 ? lblRawDataNote->heightForWidth(width()) : 0;
  const int lines = IsLow(*this) ? 3 : 4;  // so that what stands below keeps its place
  lblRawDataNote->setMinimumHeight(std::max(fontMetrics().lineSpacing() * lines, needed));
}

void RawDataNotes::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitNote();
}

void RawDataNotes::TakeOffer(qsizetype index) {
  if (index >= offers_.size()) return;
  box_->ReplaceText(RawDataReadings::Apply(offers_[index], box_->toPlainText()));
  box_->setFocus();
}

void RawDataNotes::GoToNamedLine() {
  if (namedLine_ > 0) box_->GoToLine(namedLine_);
}

bool RawDataNotes::eventFilter(QObject* watched, QEvent* event) {
  if (watched == lblRawDataNote && event->type() == QEvent::MouseButtonRelease) GoToNamedLine();
  // On entering, and not later: the box stays where it is under the hands of who types in it.
  if (watched == box_ && event->type() == QEvent::FocusIn)
    QTimer::singleShot(0, this, &RawDataNotes::BringIntoSight);
  return QWidget::eventFilter(watched, event);
}
