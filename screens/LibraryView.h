// A form that may stand over the main window while the library changes.
#pragma once

class LibraryView {
 public:
  virtual ~LibraryView() = default;

  // The collection, or the units, may be others than they were. What the user has typed stays as it is.
  virtual void LibraryChanged() {}
};
