#include "screens/frmAbout.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QVersionNumber>
#include <QtEndian>
#include <algorithm>
#include <utility>

#include "core/Globals.h"
#include "core/Trap.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

QFrame* Separator(const QString& name, QWidget* parent) {
  auto* line = Named(new QFrame(parent), name);
  line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
  return line;
}

// The tool's full path, or empty where the settings store knows none.
QString SysInfoPath() {
  QString path;
  if (frmAbout::GetKeyValue(uR"(SOFTWARE\Microsoft\Shared Tools\MSINFO)"_s, u"PATH"_s, path)) return path;
  if (frmAbout::GetKeyValue(uR"(SOFTWARE\Microsoft\Shared Tools Location)"_s, u"MSINFO"_s, path)) {
    path += QDir::separator() + u"MSINFO32.EXE"_s;
    if (QFileInfo::exists(path)) return path;
  }
  return {};
}

}  // namespace

frmAbout::frmAbout(QWidget* parent, ProgramStarter startProgram)
    : QDialog(parent), startProgram_(std::move(startProgram)) {
  Trap(u"frmAbout::Form_Load"_s, [this] {
    BuildControls();
    InstallHelpKey(this, HelpTopics::About);
  });
}

void frmAbout::BuildControls() {
  setObjectName(u"frmAbout"_s);
  setWindowTitle(Words::About::title(LoadResText(u"Kestrel;108")));
  setModal(true);
  const int em = fontMetrics().height();

  auto* picIcon = TextLabel(u"picIcon"_s, this);
  picIcon->setPixmap(windowIcon().pixmap(QSize(em * 3, em * 3), devicePixelRatio()));
  auto* lblTitle = TextLabel(u"lblTitle"_s, this, LoadResText(u"Kestrel;108"));
  QFont large = lblTitle->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  lblTitle->setFont(large);
  const QString version = QVersionNumber::fromString(QCoreApplication::applicationVersion()).toString();
  auto* lblVersion = TextLabel(u"lblVersion"_s, this, Words::About::version(version));
  auto* lblDescription =
      TextLabel(u"lblDescription"_s, this,
                LoadResText(u"Kestrel - SPC control charting solution for the quality system novice;302"));
  auto* lblDisclaimer = TextLabel(u"lblDisclaimer"_s, this, LoadResText(u"Warning;303"));
  // A wrapped label asks for the height it needs at its narrowest.
  lblDescription->setMinimumWidth(em * 20);
  lblDisclaimer->setMinimumWidth(em * 20);

  auto* grid = new QGridLayout(this);
  grid->setColumnStretch(1, 1);
  grid->setHorizontalSpacing(em);
  grid->addWidget(picIcon, 0, 0, 3, 1, Qt::AlignTop);
  grid->addWidget(lblTitle, 0, 1, 1, 2);
  grid->addWidget(lblVersion, 1, 1, 1, 2);
  grid->addWidget(Separator(u"separator1"_s, this), 2, 1, 1, 2);
  grid->addWidget(lblDescription, 3, 1, 1, 2);
  grid->addWidget(Separator(u"separator2"_s, this), 4, 0, 1, 3);
  grid->addWidget(lblDisclaimer, 5, 0, 2, 2, Qt::AlignTop);
  AddButtons(grid);
  const int width = std::min(em * 30, RoomFor(*this).width());
  setMinimumWidth(width);
  resize(width, grid->heightForWidth(width));
}

void frmAbout::AddButtons(QGridLayout* grid) {
  auto* cmdOK = Named(new QPushButton(Words::ok(), this), u"cmdOK"_s);
  cmdOK->setDefault(true);
  auto* cmdSysInfo = Named(new QPushButton(Words::About::systemInfo(), this), u"cmdSysInfo"_s);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(cmdSysInfo, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
  grid->addWidget(cmdOK, 5, 2, Qt::AlignTop);
  grid->addWidget(cmdSysInfo, 6, 2, Qt::AlignTop);
  grid->setRowStretch(6, 1);
  setTabOrder(cmdOK, cmdSysInfo);
  cmdOK->setFocus();
}

bool frmAbout::StartProgram(const QString& path) { return QProcess::startDetached(path, {}); }

bool frmAbout::GetKeyValue(const QString& keyName, const QString& valueName, QString& text) {
  Registry& registry = *Globals().registry;
  Registry::Key key = 0;
  if (registry.RegOpenKeyEx(keyName, Registry::KeyRead, key) != Registry::Success) return false;
  Registry::Type type = Registry::None;
  QByteArray data;
  const int status = registry.RegQueryValueEx(key, valueName, type, data);
  registry.RegCloseKey(key);
  if (status != Registry::Success) return false;
  if (type == Registry::String) {
    if (data.endsWith('\0')) data.chop(1);
    text = QString::fromUtf8(data);
    return true;
  }
  if (type == Registry::Dword && data.size() == sizeof(quint32)) {
    text = u"&h"_s + QString::number(qFromLittleEndian<quint32>(data.constData()), 16).toUpper();
    return true;
  }
  return false;
}

void frmAbout::StartSysInfo() {
  Trap(u"frmAbout::StartSysInfo"_s, [this] {
    const QString path = SysInfoPath();
    if (!path.isEmpty() && startProgram_(path)) return;
    MessageBox::Show({.text = Words::About::noSystemInfo(), .title = LoadResText(u"Kestrel;108")});
  });
}
