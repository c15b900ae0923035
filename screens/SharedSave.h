// Saves what the user has changed in a library that others write to as well. Where a save meets what they
// changed or deleted, the user is asked.
#pragma once

#include <QString>

#include "data/CData.h"

namespace SharedSave {

enum class Outcome {
  Saved,
  TookTheirs,  // the user did: the data set is now as it stands in the library
  NotSaved     // told, or wanted so; nothing has changed
};

struct Result {
  Outcome outcome = Outcome::NotSaved;
  QString takenIn = {};  // one line on what others had changed and the save kept; mostly empty
};

// The collection then holds what `data` does. A data set whose row somebody has deleted can become a new one,
// which is then the selected one of the main list.
Result Save(const CDataPtr& data);

}  // namespace SharedSave
