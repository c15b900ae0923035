// The question what is to stand where the user and somebody else have changed the same: both versions, side
// by side.
#pragma once

#include <QDialog>
#include <vector>

#include "core/VersionTexts.h"

class QTableWidget;

class ConflictForm : public QDialog {
  Q_OBJECT
 public:
  enum Answer { Cancel = 0, TakeTheirs, KeepMine };

  ConflictForm(const QString& question, const std::vector<VersionText>& versions, QWidget* parent = nullptr);

  Answer Choice() const { return static_cast<Answer>(result()); }

 private:
  void FillTable(const std::vector<VersionText>& versions);

  QTableWidget* tableVersions = nullptr;
};
