// What stands below a raw-data box: the live line, the readings that are offered for what is unclear, and the
// way to the line at fault.
#pragma once

#include <QList>
#include <QWidget>

#include "data/RawDataReadings.h"
#include "data/RawDataText.h"

class QHBoxLayout;
class QLabel;
class QMenu;
class QPushButton;
class RawDataBox;

class RawDataNotes : public QWidget {
  Q_OBJECT
 public:
  explicit RawDataNotes(RawDataBox* box, QWidget* parent = nullptr);

  // `note` says what was found.
  void Show(const QString& note, const RawDataText::Examination& found);

  // How long an answer to a keystroke waits, in milliseconds: in a long column until the keys rest.
  static int DelayFor(const RawDataBox& box);

  // Selects the line that the note names, if it names one.
  void GoToNamedLine();

  // The row below the note, for what else belongs there.
  QHBoxLayout* Row() const { return row_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FitNote();
  void ShowOffers();
  void BringIntoSight();
  void TakeOffer(qsizetype index);

  RawDataBox* box_;
  QLabel* lblRawDataNote = nullptr;
  QPushButton* cmdGoToLine = nullptr;
  QHBoxLayout* row_ = nullptr;
  QList<QPushButton*> offerButtons_;
  QMenu* moreOffers_ = nullptr;  // of the last one, where there are more than buttons
  QList<RawDataReadings::Offer> offers_;
  qsizetype namedLine_ = 0;
};
