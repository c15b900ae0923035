// The screen that shows two data sets beside each other, and puts their page on paper or into a file; and the
// choice of the second one.
#pragma once

#include <QDialog>
#include <array>

#include "charts/ComparePage.h"
#include "data/CData.h"
#include "screens/LibraryView.h"
#include "screens/PagePrinting.h"

class ButtonBar;
class QCheckBox;
class QLabel;

class CompareForm : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  // The printing outlives the form.
  CompareForm(qint32 one, qint32 other, PagePrinting& printing, QWidget* parent = nullptr);

  void LibraryChanged() override;
  int exec() override;  // rejected at once where a data set cannot be shown, which has then been said

  const ComparePage* Page() const { return page_.get(); }  // null while there is none

 private:
  enum ToolbarButton { Print = 1, Utilities, Help, Close };

  bool Load(const std::array<qint32, 2>& ids);
  void BuildControls();
  ButtonBar* BuildToolbar();
  void ButtonClick(int button);
  void ButtonMenuClick(int button, int entry);
  void TellFile(const QString& path);
  bool ShowPage();
  std::unique_ptr<ComparePage> MakePage(bool forOutput) const;

  PagePrinting& printing_;
  std::array<CDataPtr, 2> data_;  // copies, as they are shown
  std::unique_ptr<ComparePage> page_;
  bool loaded_ = false;
  QCheckBox* checkSameScale = nullptr;
  QWidget* view_ = nullptr;
  QLabel* lblNews = nullptr;
};
