// Finds a form's controls by their names and works them as a person does.
#pragma once

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <functional>
#include <stdexcept>

template <class Control = QLineEdit>
Control& Get(const QObject& form, QAnyStringView name) {
  auto* control = form.findChild<Control*>(name.toString());
  if (!control) throw std::runtime_error("no control " + name.toString().toStdString());
  return *control;
}

inline QString TextOf(const QObject& form, QAnyStringView name) {
  return Get<QWidget>(form, name).property("text").toString();
}

// At the left, where a check box takes it.
inline void Click(const QObject& form, QAnyStringView name) {
  QTest::mouseClick(&Get<QAbstractButton>(form, name), Qt::LeftButton, {}, QPoint(8, 8));
}

inline void Fire(const QObject& form, QAnyStringView timer) {
  QMetaObject::invokeMethod(&Get<QTimer>(form, timer), "timeout");
}

// What is done in the modal window that comes up next, or the button that is clicked there.
inline void InNextWindow(const std::function<void(QWidget&)>& act) {
  QTimer::singleShot(0, [act] {
    QWidget* window = QApplication::activeModalWidget();
    if (!window) throw std::runtime_error("no modal window");
    act(*window);
  });
}
inline void ClickInNextWindow(const char* button) {
  InNextWindow([button](QWidget& window) { Click(window, button); });
}

// Types over what stands there.
inline void Type(const QObject& form, QAnyStringView name, const QString& text) {
  QLineEdit& box = Get(form, name);
  box.selectAll();
  QTest::keyClick(&box, Qt::Key_Delete);
  QTest::keyClicks(&box, text);
}

inline void Drag(QWidget& widget, QPoint from, QPoint to) {
  QTest::mousePress(&widget, Qt::LeftButton, {}, from);
  QTest::mouseMove(&widget, to);
  QTest::mouseRelease(&widget, Qt::LeftButton, {}, to);
}
