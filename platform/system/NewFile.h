// A file that appears under its name complete or not at all, and never in another one's place.
//
// It is written under another name beside. Left unfinished, or where the user or the system ends the program
// (Ctrl+C), it goes again. One at a time.
#pragma once

#include <QString>

class NewFile {
 public:
  // Makes the empty file. Error, its text the reason alone, where there can be none or the name is in use.
  explicit NewFile(const QString& path);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  const QString& Path() const { return unfinished_; }  // where it is written

  // Gives it its name; an Error where another program has taken it meanwhile.
  void Finish();

 private:
  QString given_;
  QString target_;
  QString unfinished_;
};
