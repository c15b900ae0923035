#include "screens/HelpViewer.h"

#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

#include "platform/ui/Icons.h"
#include "screens/Controls.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int urlRole = Qt::UserRole;

QString HtmlOf(const QUrl& page) {
  QFile file(page.scheme() == u"qrc"_s ? u':' + page.path() : page.toLocalFile());
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool ContainsAll(const QString& text, const QStringList& words) {
  return std::all_of(words.begin(), words.end(),
                     [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

// Takes a picture at double size where there is one (NAME@2x.png) and the plain one would be stretched or
// shrunk: the browser itself looks for those only in the working folder, and shrinks without smoothing.
class PageBrowser : public QTextBrowser {
 public:
  using QTextBrowser::QTextBrowser;

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QTextBrowser::resizeEvent(event);
    FitPictures();
  }
  void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override {
    QTextBrowser::doSetSource(name, type);
    FitPictures();
  }

 private:
  // A picture that is wider than the page gets as wide as that.
  void FitPictures() {
    constexpr int drawnWidth = QTextFormat::UserProperty, drawnHeight = drawnWidth + 1;
    const double room = viewport()->width() - 4 * document()->documentMargin();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        QTextImageFormat picture = part.fragment().charFormat().toImageFormat();
        if (!picture.isValid()) continue;
        const bool isNew = !picture.hasProperty(drawnWidth);
        if (isNew) {
          picture.setProperty(drawnWidth, picture.width());
          picture.setProperty(drawnHeight, picture.height());
        }
        const double width = picture.doubleProperty(drawnWidth);
        const double scale = std::clamp(room / width, 0.1, 1.0);
        if (!isNew && picture.width() == width * scale) continue;
        picture.setWidth(width * scale);
        picture.setHeight(picture.doubleProperty(drawnHeight) * scale);
        const QImage drawn =
            Drawn(picture.name(), (QSizeF(picture.width(), picture.height()) * devicePixelRatioF()).toSize());
        document()->addResource(QTextDocument::ImageResource, source().resolved(QUrl(picture.name())), drawn);
        QTextCursor cursor(document());
        cursor.setPosition(part.fragment().position());
        cursor.setPosition(part.fragment().position() + part.fragment().length(), QTextCursor::KeepAnchor);
        cursor.setCharFormat(picture);
        break;  // what follows may have moved; pictures stand alone
      }
    }
  }

  QImage Drawn(const QString& name, QSize pixels) {
    // With a palette it would be shrunk to the palette's colours.
    const auto read = [this](const QString& file) {
      const auto picture =
          QImage::fromData(loadResource(QTextDocument::ImageResource, QUrl(file)).toByteArray());
      return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    };
    const QImage plain = read(name);
    if (plain.size() == pixels) return plain;
    const QImage fine = read(QString(name).replace(u".png"_s, u"@2x.png"_s));
    return (fine.isNull() ? plain : fine).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }
};

// The words around the first place where one of the searched words stands.
QString Excerpt(const QString& text, const QString& word) {
  constexpr int before = 30, length = 90;
  const qsizetype at = text.indexOf(word, 0, Qt::CaseInsensitive);
  const qsizetype from = at <= before ? 0 : text.lastIndexOf(u' ', at - before) + 1;
  return (from ? u"…"_s : QString()) + text.mid(from, length).simplified() + u"…"_s;
}

}  // namespace

HelpViewer::HelpViewer(const QString& title, const QList<HelpTopic>& topics, bool withContents)
    : topics_(topics) {
  setWindowTitle(title);
  setObjectName(u"HelpViewer"_s);
  setAttribute(Qt::WA_QuitOnClose, false);

  page_ = Named(new PageBrowser(this), u"Page"_s);
  page_->setAccessibleName(title);
  page_->setOpenExternalLinks(true);
  page_->document()->setDocumentMargin(fontMetrics().height());
  auto* splitter = new QSplitter(this);
  splitter->addWidget(MakeNavigation());
  splitter->addWidget(page_);
  splitter->setStretchFactor(1, 1);
  splitter->setChildrenCollapsible(false);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->setSpacing(0);
  layout->addWidget(MakeToolBar());
  layout->addWidget(splitter, 1);

  FillContents();
  MakeShortcuts();
  navigation_->setVisible(withContents);
  connect(page_, &QTextBrowser::sourceChanged, this, &HelpViewer::MarkCurrentTopic);
  const int em = fontMetrics().height();
  resize(QSize(em * (withContents ? 60 : 42), em * 40).boundedTo(RoomFor(*this)));
  qApp->installEventFilter(this);
}

QWidget* HelpViewer::MakeNavigation() {
  search_ = Named(new QLineEdit, u"Search"_s);
  search_->setPlaceholderText(Words::Manual::searchTip());
  search_->setAccessibleName(Words::Manual::searchBox());
  search_->setClearButtonEnabled(true);
  contents_ = Named(new QTreeWidget, u"Contents"_s);
  contents_->setAccessibleName(Words::Manual::contents());
  contents_->setHeaderHidden(true);
  contents_->header()->setStretchLastSection(false);  // scrolls where it is too narrow
  contents_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  results_ = Named(new QListWidget, u"Results"_s);
  results_->setAccessibleName(Words::Manual::results());
  results_->setWordWrap(true);
  results_->setAlternatingRowColors(true);

  // The results take the place of the contents while there is something in the search box.
  auto* lists = new QStackedWidget;
  lists->addWidget(contents_);
  lists->addWidget(results_);
  ConnectNavigation(lists);

  navigation_ = new QWidget;
  auto* layout = new QVBoxLayout(navigation_);
  const int gap = fontMetrics().height() / 3;
  layout->setContentsMargins(gap, gap, 0, gap);
  layout->addWidget(search_);
  layout->addWidget(lists, 1);
  navigation_->setMinimumWidth(std::min(fontMetrics().height() * 17, screen()->availableSize().width() / 3));
  return navigation_;
}

void HelpViewer::ConnectNavigation(QStackedWidget* lists) {
  connect(search_, &QLineEdit::textChanged, this, [this, lists](const QString& words) {
    lists->setCurrentWidget(words.trimmed().isEmpty() ? static_cast<QWidget*>(contents_) : results_);
    Search(words);
  });
  connect(search_, &QLineEdit::returnPressed, this, [this] {
    if (results_->count() > 0) results_->setCurrentRow(0);
    results_->setFocus();
  });
  const auto openResult = [this](QListWidgetItem* item) {
    if (!item || item->data(urlRole).toUrl().isEmpty()) return;
    Open(item->data(urlRole).toUrl());
    page_->find(search_->text().simplified().section(u' ', 0, 0));
  };
  const auto openTopic = [this](QTreeWidgetItem* item) {
    if (item) Open(item->data(0, urlRole).toUrl());
  };
  // A click on what is current already is meant as well: the reader may have gone on from there.
  connect(results_, &QListWidget::currentItemChanged, this, openResult);
  connect(results_, &QListWidget::itemClicked, this, openResult);
  connect(contents_, &QTreeWidget::currentItemChanged, this, openTopic);
  connect(contents_, &QTreeWidget::itemClicked, this, openTopic);
}

QToolBar* HelpViewer::MakeToolBar() {
  auto* bar = new QToolBar(this);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  const int side = fontMetrics().height();
  bar->setIconSize({side, side});
  const auto add = [bar](Symbol symbol, const QString& text, const QString& tip) {
    QAction* action = bar->addAction(SymbolIcon(symbol), text);
    action->setToolTip(tip);
    bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    return action;
  };
  connect(add(Symbol::Contents, Words::Manual::contents(), Words::Manual::contentsTip()), &QAction::triggered,
          this, [this] { navigation_->setVisible(navigation_->isHidden()); });
  QAction* back = add(Symbol::Back, Words::Manual::back(), Words::Manual::backTip());
  back->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Left));
  back->setEnabled(false);
  connect(back, &QAction::triggered, page_, &QTextBrowser::backward);
  connect(page_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(add(Symbol::Search, Words::Manual::search(), Words::Manual::searchTip()), &QAction::triggered, this,
          &HelpViewer::ShowSearch);
  connect(add(Symbol::Close, Words::Manual::close(), Words::Manual::closeTip()), &QAction::triggered, this,
          &QWidget::close);
  return bar;
}

void HelpViewer::MakeShortcuts() {
  const auto onKey = [this](const QKeySequence& key, auto&& action) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, action);
  };
  onKey(Qt::Key_Escape, [this] { close(); });
  onKey(QKeySequence(Qt::CTRL | Qt::Key_F), [this] { ShowSearch(); });
  onKey(QKeySequence(Qt::ALT | Qt::Key_Home), [this] { ShowContents(); });
  onKey(QKeySequence(Qt::ALT | Qt::Key_Right), [this] { page_->forward(); });
}

void HelpViewer::ShowSearch() {
  navigation_->show();
  search_->setFocus();
  search_->selectAll();
}

void HelpViewer::FillContents() {
  QTreeWidgetItem* chapter = nullptr;
  for (const HelpTopic& topic : topics_) {
    auto* item = topic.level > 0 && chapter ? new QTreeWidgetItem(chapter) : new QTreeWidgetItem(contents_);
    if (topic.level == 0) chapter = item;
    item->setText(0, topic.title);
    item->setData(0, urlRole, topic.page);
  }
  contents_->expandAll();
}

void HelpViewer::ShowContents() {
  navigation_->show();
  search_->clear();
  Open(topics_.value(0).page);
  BringToFront();
  contents_->setFocus();
}

void HelpViewer::ShowTopic(int number) {
  const auto topic =
      std::find_if(topics_.begin(), topics_.end(), [&](auto& each) { return each.number == number; });
  if (topic == topics_.end()) {
    ShowFault(Words::Manual::noSuchTopic(), Words::Manual::noTopicNumber(number));
  } else {
    Open(topic->page);
  }
  BringToFront();
  page_->setFocus();
}

void HelpViewer::Open(const QUrl& page) {
  if (HtmlOf(page).isEmpty()) {
    ShowFault(Words::Manual::pageNotFound(), Words::Manual::pageMissing(page.fileName()));
  } else if (page_->source() != page) {
    page_->setSource(page);
  } else {
    page_->reload();  // from its beginning
  }
}

void HelpViewer::ShowFault(const QString& fault, const QString& explanation) {
  page_->setHtml(u"<h1>%1</h1><p>%2</p>"_s.arg(fault.toHtmlEscaped(), explanation.toHtmlEscaped()));
}

void HelpViewer::MarkCurrentTopic(const QUrl& page) {
  const QUrl plain = page.adjusted(QUrl::RemoveFragment);
  for (QTreeWidgetItemIterator each(contents_); *each; ++each) {
    if ((*each)->data(0, urlRole).toUrl() != plain) continue;
    const QSignalBlocker quiet(contents_);
    contents_->setCurrentItem(*each);
    return;
  }
}

void HelpViewer::Search(const QString& words) {
  QStringList wanted = words.simplified().split(u' ', Qt::SkipEmptyParts);
  for (QString& word : wanted)
    if (word.size() > 3 && word.endsWith(u's')) word.chop(1);  // what is said of one is said of several
  results_->clear();
  if (wanted.isEmpty()) return;
  int titles = 0;  // a page that is about the words comes before those that use them
  for (const HelpTopic& topic : topics_) {
    const QString text = QTextDocumentFragment::fromHtml(HtmlOf(topic.page)).toPlainText();
    if (!ContainsAll(text, wanted)) continue;
    auto* item = new QListWidgetItem(topic.title + u'\n' + Excerpt(text, wanted.first()));
    item->setData(urlRole, topic.page);
    results_->insertItem(ContainsAll(topic.title, wanted) ? titles++ : results_->count(), item);
  }
  if (results_->count() == 0) {
    auto* none = new QListWidgetItem(Words::Manual::nothingFound(), results_);
    none->setFlags(Qt::ItemIsEnabled);  // no result, but as dark as one
  }
}

void HelpViewer::BringToFront() {
  show();
  if (isMinimized()) showNormal();
  JoinFront();
  raise();
  activateWindow();
}

// A modal window blocks every window that does not belong to it, so the help joins the one that is open now.
void HelpViewer::JoinFront() {
  const QWidget* modal = QApplication::activeModalWidget();
  QWindow* front = modal ? modal->windowHandle() : nullptr;
  if (isVisible() && windowHandle()->transientParent() != front) windowHandle()->setTransientParent(front);
}

// Whichever window opens over it or closes, the help stays usable beside it.
bool HelpViewer::eventFilter(QObject* watched, QEvent* event) {
  const bool comesOrGoes = event->type() == QEvent::Show || event->type() == QEvent::Hide;
  const auto* window = comesOrGoes ? qobject_cast<QWidget*>(watched) : nullptr;
  if (window && window->isWindow() && window->isModal()) QTimer::singleShot(0, this, &HelpViewer::JoinFront);
  return QWidget::eventFilter(watched, event);
}
