// A form that shows something of the library while it stands over the main window.
#pragma once

class LibraryView {
 public:
  virtual ~LibraryView() = default;
};
