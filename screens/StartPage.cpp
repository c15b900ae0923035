#include "screens/StartPage.h"

#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/RecentLibraries.h"
#include "library/Library.h"
#include "platform/ado/ServerAddress.h"
#include "platform/ui/Icons.h"
#include "screens/Controls.h"
#include "texts/StartWords.h"

using namespace Qt::StringLiterals;

namespace {

QString PlaceOf(const QString& path) {
  if (ServerAddress::IsOne(path)) return path;
  const QFileInfo file(path);
  const QString folder = QDir::toNativeSeparators(file.path());
  return file.exists() ? folder : Words::Start::isGone(folder);
}

}  // namespace

StartPage::StartPage(const Choices& choices, QWidget* parent) : QWidget(parent) {
  setObjectName(u"StartPage"_s);
  auto* layout = new QVBoxLayout(this);
  QLabel* heading = TextLabel(u"lblNoLibrary"_s, this, Words::Start::noLibrary());
  heading->setFont(HeadingFont(*this));
  layout->addWidget(heading);
  layout->addWidget(TextLabel(u"lblLibrary"_s, this, Words::Start::whatALibraryIs()));
  const int em = fontMetrics().height();
  const auto add = [&](const QString& name, const QString& caption, const QString& description, Symbol symbol,
                       const std::function<void()>& choice) {
    auto* button = Named(new QPushButton(SymbolIcon(symbol), caption, this), name);
    button->setAutoDefault(true);  // for the Enter key
    button->setAccessibleDescription(description);
    button->setMinimumWidth(em * 8);
    connect(button, &QPushButton::clicked, this, choice);
    layout->addSpacing(em / 2);
    layout->addWidget(button, 0, Qt::AlignLeft);
    layout->addWidget(TextLabel(name + u"_Description"_s, this, description));
  };
  add(u"cmdNew"_s, Words::Start::newLibrary(), Words::Start::newLibraryTip(), Symbol::New, choices.makeNew);
  add(u"cmdOpen"_s, Words::Start::openLibrary(), Words::Start::openLibraryTip(), Symbol::Database,
      choices.open);
  add(u"cmdSamples"_s, Words::Start::sampleLibrary(), Words::Start::sampleLibraryTip(), Symbol::Chart,
      choices.samples);
  const QStringList paths = RecentLibraries::Paths();
  layout->addSpacing(em);
  if (!paths.isEmpty()) layout->addWidget(new QLabel(Words::Start::usedBefore(), this));
  for (qsizetype i = 0; i < paths.size(); ++i) {
    add(u"cmdRecent_%1"_s.arg(i + 1), Library::NameOf(paths[i]).replace(u'&', u"&&"_s), PlaceOf(paths[i]),
        Symbol::Page, [attach = choices.attach, path = paths[i]] { attach(path); });
  }
  layout->addStretch();
  setFocusProxy(findChild<QPushButton*>(u"cmdNew"_s));
}
