#include "screens/RawDataNotes.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "screens/Controls.h"
#include "screens/RawDataBox.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int mostOffers = 4;
constexpr int longColumn = 2000;  // lines
// The letters are the page's; Alt and a digit press what is offered here.
QString WithDigit(QString caption, int number) {
  caption.replace(u'&', u"&&"_s);
  const qsizetype at = caption.indexOf(QString::number(number));
  return at < 0 ? u"%1 (&%2)"_s.arg(caption).arg(number) : caption.insert(at, u'&');
}

}  // namespace

RawDataNotes::RawDataNotes(RawDataBox* box, QWidget* parent) : QWidget(parent), box_(box) {
  lblRawDataNote = Named(new QLabel(this), u"lblRawDataNote"_s);
  lblRawDataNote->setTextFormat(Qt::PlainText);
  lblRawDataNote->setWordWrap(true);
  lblRawDataNote->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  lblRawDataNote->installEventFilter(this);
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
  row_ = new QHBoxLayout;
  row_->addWidget(cmdGoToLine);
  row_->addStretch();
  layout->addLayout(row_);
  moreOffers_ = Named(new QMenu(this), u"mnuMoreOffers"_s);
  for (int i = 0; i < mostOffers; ++i) {
    offerButtons_ << button(u"cmdOffer%1"_s.arg(i + 1));
    layout->addWidget(offerButtons_.back());
    connect(offerButtons_.back(), &QPushButton::clicked, this, [this, i] {
      if (!offerButtons_[i]->menu()) TakeOffer(i);
    });
  }
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
  offers_.clear();
  if (found.IsUnclear()) offers_ = RawDataReadings::Offers(box_->toPlainText());
  const auto label = [this](qsizetype i) { return WithDigit(offers_[i].caption, int(i) + 1); };
  const bool hasMore = offers_.size() > mostOffers;
  for (qsizetype i = 0; i < mostOffers; ++i) {
    const bool isOffered = i < offers_.size();
    const bool isMenu = hasMore && i == mostOffers - 1;
    offerButtons_[i]->setVisible(isOffered);
    offerButtons_[i]->setMenu(isMenu ? moreOffers_ : nullptr);
    if (!isOffered) continue;
    offerButtons_[i]->setText(isMenu ? WithDigit(Words::RawData::moreReadings(), mostOffers) : label(i));
    offerButtons_[i]->setToolTip(isMenu ? QString() : offers_[i].caption);
  }
  moreOffers_->clear();
  for (qsizetype i = mostOffers - 1; hasMore && i < offers_.size(); ++i)
    moreOffers_->addAction(label(i), this, [this, i] { TakeOffer(i); });
}

int RawDataNotes::DelayFor(const RawDataBox& box) { return box.blockCount() > longColumn ? 150 : 0; }

// A wrapped text claims no room of its own in the window around it.
void RawDataNotes::FitNote() {
  const int needed = width() > 0 ? lblRawDataNote->heightForWidth(width()) : 0;
  lblRawDataNote->setMinimumHeight(std::max(fontMetrics().lineSpacing() * 4, needed));
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
  return QWidget::eventFilter(watched, event);
}
