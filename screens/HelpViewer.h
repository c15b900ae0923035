// The window that shows the manual: contents, search, and the page.
#pragma once

#include <QList>
#include <QUrl>
#include <QWidget>

class QLineEdit;
class QListWidget;
class QStackedWidget;
class QTextBrowser;
class QToolBar;
class QTreeWidget;

struct HelpTopic {
  int number = 0;  // unique, never 0
  QString title;
  QUrl page;      // where QTextBrowser finds it: "qrc:/manual/main.html"
  int level = 0;  // 0 for a chapter, 1 for a topic of the chapter before it
};

class HelpViewer : public QWidget {
  Q_OBJECT
 public:
  // withContents: the contents and the search stand open beside the page; else a button opens them.
  HelpViewer(const QString& title, const QList<HelpTopic>& topics, bool withContents);

  // The first page, or the topic with that number; the window comes to the front and accepts input even while
  // a modal window is open. A number or page that does not exist is said on the page itself.
  void ShowContents();
  void ShowTopic(int number);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* MakeNavigation();
  void ConnectNavigation(QStackedWidget* lists);
  QToolBar* MakeToolBar();
  void MakeShortcuts();
  void FillContents();
  void Open(const QUrl& page);
  void ShowFault(const QString& fault, const QString& explanation);
  void ShowSearch();
  void BringToFront();
  void JoinFront();
  void Search(const QString& words);
  void MarkCurrentTopic(const QUrl& page);

  QList<HelpTopic> topics_;
  QTextBrowser* page_ = nullptr;
  QWidget* navigation_ = nullptr;
  QTreeWidget* contents_ = nullptr;
  QLineEdit* search_ = nullptr;
  QListWidget* results_ = nullptr;
};
