// Notes something on a point of the charts, beside what is known of its samples.
#pragma once

#include <QDialog>

#include "charts/StatPage.h"
#include "data/CData.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

class NoteForm : public QDialog {
  Q_OBJECT
 public:
  // On a point of the page of that data set. Accepted where the note has changed in the library.
  NoteForm(const CData& dataSet, const StatPage& page, int point, QWidget* parent = nullptr);

 public Q_SLOTS:
  void reject() override;  // every way of closing; what is typed is asked about

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void BuildControls();
  void Tell(const StatPage& page, int point);
  void Show(const Trace::Note& note);
  QString Typed() const;
  void Save();
  void Write(const QString& text);

  CData data_;                      // as it was on the page, whatever others do meanwhile
  qsizetype sample_ = 0;            // that the note is on, counted from 0
  QString seen_;                    // the note as it was when the user last saw it; empty for none
  std::vector<Trace::Note> notes_;  // of the point's samples
  QComboBox* cboNote = nullptr;     // which of them
  QLabel* lblPoint = nullptr;
  QLabel* lblTaken = nullptr;
  QLabel* lblSamples = nullptr;
  QPlainTextEdit* txtNote = nullptr;
  QLabel* lblNews = nullptr;
  QPushButton* cmdSave = nullptr;
  QPushButton* cmdRemove = nullptr;
};
