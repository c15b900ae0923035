// The indicators of a process's condition: its state (0 to 4) and the stop and go lamp.
//
// Shape differs as well as colour, so that nobody needs colour to read them.
#pragma once

#include <QIcon>
#include <QWidget>

// The symbol of a state 1 to 4; any other is not evaluated.
QIcon ProcessStateIcon(int state);

// The state's symbol with its name beside it under a caption.
class ProcessStateIndicator : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int Value READ Value WRITE SetValue)
  Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
 public:
  explicit ProcessStateIndicator(QWidget* parent = nullptr);
  int Value() const { return value_; }
  void SetValue(int value);
  QString Caption() const { return caption_; }
  void SetCaption(const QString& caption);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Describe();  // tool tip and accessible texts

  int value_ = 0;
  QString caption_;
};

// A lamp: green with a tick for go, red with a bar for stop, grey and empty while off.
class Led : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int ColorValue READ ColorValue WRITE SetColorValue)
  Q_PROPERTY(bool On READ On WRITE SetOn)
 public:
  enum Color { Go = 3, Stop = 4 };
  explicit Led(QWidget* parent = nullptr);
  int ColorValue() const { return colorValue_; }
  void SetColorValue(int value);
  bool On() const { return on_; }
  void SetOn(bool on);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Describe();

  int colorValue_ = Go;
  bool on_ = false;
};
