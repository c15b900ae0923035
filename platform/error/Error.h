// The one family of errors: what kind of failure it is, its text for the user, and the thing at fault.
//
// Inside, every failure is thrown as an Error; a procedure of the desktop reports it and gives its neutral
// result, the command line prints one line and derives the exit status from the kind. Any other exception is
// a fault in the program, and is told as such.
#pragma once

#include <QString>
#include <exception>
#include <new>
#include <stdexcept>

class Error : public std::runtime_error {
 public:
  enum class Kind {
    BadInput,     // what was typed, given or read from a file of values is refused
    Unavailable,  // a library, file or device cannot be read or written
    Conflict,     // somebody else changed or deleted meanwhile what was to be written
    Unknown       // whether it was written cannot be known
  };

  explicit Error(const QString& text, Kind kind = Kind::Unavailable, const QString& about = {})
      : std::runtime_error(text.toStdString()), kind_(kind), about_(about) {}

  Kind GetKind() const { return kind_; }
  QString Text() const { return QString::fromUtf8(what()); }
  // The file, data set, value or option at fault; empty where the text says it all.
  const QString& About() const { return about_; }

 private:
  Kind kind_;
  QString about_;
};

// What was typed, given or read from a file of values is refused.
class InputError : public Error {
 public:
  explicit InputError(const QString& text, const QString& about = {}) : Error(text, Kind::BadInput, about) {}
};

// The words for a user. What is no Error comes from a fault in the program, and is never told as if the user
// could do something about it.
inline QString ErrorText(const std::exception& error) {
  if (const auto* known = dynamic_cast<const Error*>(&error)) return known->Text();
  if (dynamic_cast<const std::bad_alloc*>(&error)) return QStringLiteral("there is not enough memory");
  return QStringLiteral("there is a fault in the program (%1); please report it")
      .arg(QString::fromUtf8(error.what()));
}
