#include "screens/StartPage.h"

#include <QCommandLinkButton>
#include <QDir>
#include <QFileInfo>
#include <QVBoxLayout>

#include "core/RecentLibraries.h"
#include "platform/ui/Icons.h"
#include "screens/Controls.h"
#include "texts/StartWords.h"

using namespace Qt::StringLiterals;

StartPage::StartPage(const Choices& choices, QWidget* parent) : QScrollArea(parent) {
  setObjectName(u"StartPage"_s);
  setWidgetResizable(true);
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  QLabel* heading = TextLabel(u"lblNoLibrary"_s, page, Words::Start::noLibrary());
  heading->setFont(HeadingFont(*this));
  layout->addWidget(heading);
  layout->addWidget(TextLabel(u"lblLibrary"_s, page, Words::Start::whatALibraryIs()));
  const auto add = [&](const QString& name, const QString& caption, const QString& description, Symbol symbol,
                       const std::function<void()>& choice) {
    auto* button = Named(new QCommandLinkButton(caption, description, page), name);
    button->setIcon(SymbolIcon(symbol));
    button->setAccessibleDescription(description);
    connect(button, &QCommandLinkButton::clicked, this, choice);
    layout->addWidget(button);
  };
  add(u"cmdNew"_s, Words::Start::newLibrary(), Words::Start::newLibraryTip(), Symbol::New, choices.makeNew);
  add(u"cmdOpen"_s, Words::Start::openLibrary(), Words::Start::openLibraryTip(), Symbol::Database,
      choices.open);
  add(u"cmdSamples"_s, Words::Start::sampleLibrary(), Words::Start::sampleLibraryTip(), Symbol::Chart,
      choices.samples);
  const QStringList paths = RecentLibraries::Paths();
  if (!paths.isEmpty()) layout->addWidget(new QLabel(Words::Start::usedBefore(), page));
  for (qsizetype i = 0; i < paths.size(); ++i) {
    const QFileInfo file(paths[i]);
    add(u"cmdRecent_%1"_s.arg(i + 1), file.fileName().replace(u'&', u"&&"_s),
        QDir::toNativeSeparators(file.path()), Symbol::Page,
        [attach = choices.attach, path = paths[i]] { attach(path); });
  }
  layout->addStretch();
  setWidget(page);
  setFocusProxy(page->findChild<QCommandLinkButton*>());
}
