// What the main window shows in the list's place while no library is open: the ways to one.
#pragma once

#include <QWidget>
#include <functional>

class StartPage : public QWidget {
  Q_OBJECT
 public:
  struct Choices {
    std::function<void()> makeNew, open, samples;
    std::function<void(const QString& path)> attach;
  };
  StartPage(const Choices& choices, QWidget* parent);
};
