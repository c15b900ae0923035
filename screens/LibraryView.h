// A form that shows something of the library while it stands over the main window.
#pragma once

class LibraryView {
 public:
  virtual ~LibraryView() = default;

  // The collection, or the units, may be others than they were. What the user has typed stays as it is.
  virtual void LibraryChanged() = 0;
};
