#include "screens/frmConfigure.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "core/Messages.h"
#include "core/RegistryFunctions.h"
#include "core/Trap.h"
#include "platform/ui/Mnemonics.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "texts/Texts.h"

using namespace Qt::StringLiterals;

frmConfigure::frmConfigure(QWidget* parent) : QDialog(parent) {
  Trap(u"frmConfigure::Form_Load"_s, [this] {
    Globals().gSettingsSaved = false;
    BuildControls();
    LoadSettingsToScreen();
    InstallHelpKey(this, HelpTopics::Configuration);
  });
}

void frmConfigure::BuildControls() {
  setObjectName(u"frmConfigure"_s);
  setWindowTitle(LoadResText(u"Kestrel Configuration;192"));
  setModal(true);

  Mnemonics mnemonics;
  cmdAccept = Named(new QPushButton(mnemonics.Mark(LoadResText(u"&Accept;196")), this), u"cmdAccept"_s);
  cmdAccept->setDefault(true);
  cmdAccept->setEnabled(false);
  cmdClose = Named(new QPushButton(mnemonics.Mark(LoadResText(u"&Close;197")), this), u"cmdClose"_s);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdAccept);
  buttons->addWidget(cmdClose);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(BuildOptions(mnemonics));
  layout->addStretch();
  layout->addLayout(buttons);
  setMinimumWidth(fontMetrics().height() * 22);

  setTabOrder(optionViewChart, optionEditSelection);
  setTabOrder(optionEditSelection, cmdAccept);
  setTabOrder(cmdAccept, cmdClose);
  connect(cmdAccept, &QPushButton::clicked, this, &frmConfigure::AcceptSettings);
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

QWidget* frmConfigure::BuildOptions(Mnemonics& mnemonics) {
  auto* outer =
      Named(new QGroupBox(LoadResText(u" Listview Settings ;245"), this), u"frameListviewSettings"_s);
  auto* inner =
      Named(new QGroupBox(LoadResText(u"Double-click action;248"), outer), u"frameDoubleClickAction"_s);
  const auto option = [&](const QString& name, const QString& caption) {
    auto* made = Named(new QRadioButton(mnemonics.Mark(caption), inner), name);
    connect(made, &QRadioButton::clicked, this, [this] { cmdAccept->setEnabled(true); });
    return made;
  };
  optionViewChart = option(u"optionViewChart"_s, LoadResText(u"View Chart;247"));
  optionEditSelection = option(u"optionEditSelection"_s, LoadResText(u"Edit Selection;246"));
  auto* options = new QVBoxLayout(inner);
  options->addWidget(optionViewChart, 0, Qt::AlignLeft);
  options->addWidget(optionEditSelection, 0, Qt::AlignLeft);
  (new QVBoxLayout(outer))->addWidget(inner);
  return outer;
}

void frmConfigure::LoadSettingsToScreen() {
  const bool viewsChart = Globals().gSetup.ListviewDoubleClickViewsChart;
  optionViewChart->setChecked(viewsChart);
  optionEditSelection->setChecked(!viewsChart);
  (viewsChart ? optionViewChart : optionEditSelection)->setFocus();
}

bool frmConfigure::SaveScreenSettings() {
  return Trap(u"frmConfigure::SaveScreenSettings"_s, false, [this] {
    constexpr int dword = Registry::Dword;
    const QString name = u"ListviewDoubleClickViewsChart"_s;
    clsSetup& setup = Globals().gSetup;
    setup.ListviewDoubleClickViewsChart = optionViewChart->isChecked();
    const QString value = optionViewChart->isChecked() ? u"1"_s : u"0"_s;
    // Writing answers true as soon as the key exists, so only reading back tells whether the value got there.
    return RegistryFunctions::SetKeyValue(setup.RegistryKeyPath, name, dword, value) &&
           RegistryFunctions::GetKeyValue(setup.RegistryKeyPath, name, dword) == value;
  });
}

void frmConfigure::AcceptSettings() {
  if (!SaveScreenSettings()) return;
  ShowSystemMessage(LoadResText(u"Registry settings saved;201"), MessageBox::Icon::Information);
  cmdAccept->setEnabled(false);
  Globals().gSettingsSaved = true;
}
