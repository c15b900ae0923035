// The help window that is open, and the page that it shows.
#pragma once

#include <gtest/gtest.h>

#include <QTextBlock>
#include <QTextBrowser>

#include "screens/HelpViewer.h"
#include "tests/support/Widgets.h"

inline HelpViewer* OpenHelp() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (auto* help = qobject_cast<HelpViewer*>(window); help && help->isVisible()) return help;
  return nullptr;
}
inline QString Heading() { return Get<QTextBrowser>(*OpenHelp(), "Page").document()->firstBlock().text(); }

// A blocked window would not take the click on its "Contents" button.
inline void ExpectUsable(HelpViewer& help, const std::string& when) {
  QCoreApplication::processEvents();
  const auto& contents = Get<QWidget>(help, "Contents");
  const bool before = contents.isVisible();
  QTest::mouseClick(help.windowHandle(), Qt::LeftButton, {}, QPoint(20, 12));
  EXPECT_NE(contents.isVisible(), before) << when;
}
