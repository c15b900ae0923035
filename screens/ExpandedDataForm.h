// The expanded view of the data editor's raw data: the same text in a larger box, with the same live line.
#pragma once

#include <QDialog>
#include <QTimer>
#include <optional>

#include "data/RawDataText.h"
#include "screens/LibraryView.h"
#include "screens/LineIdentity.h"

class RawDataBox;
class RawDataNotes;

class ExpandedDataForm : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  // Shows Globals().gRawDataText. The subgroup size, as typed, and the fliers are those of the editor's
  // boxes.
  explicit ExpandedDataForm(QWidget* parent = nullptr, const QString& subGroupSize = {},
                            const std::optional<RawDataText::FlierLimits>& fliers = {});

  // The same text in that box: its lines stay the same here, and beside them stands what is known of them.
  void ShowLinesOf(const RawDataBox& box, const Trace::Record& record);
  const LineIdentity::Lines& Lines() const;

  void accept() override;  // stores the box's text there
  void reject() override;  // leaves it as it is; asks first where something would be lost

 private:
  void BuildControls();
  void UpdateNotes();

  RawDataBox* txtRawData = nullptr;
  RawDataNotes* notes_ = nullptr;
  QString loaded_;
  const QString subGroupSize_;
  const std::optional<RawDataText::FlierLimits> fliers_;
  QTimer NotesTimer{this};
  QTimer LoadTimer{this};
};
