// The command verify: the program checks its own figures on the machine at hand.
#include "charts/SaveFile.h"
#include "cli/Arguments.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "texts/CommandWords.h"
#include "texts/Version.h"
#include "verify/VerificationReport.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

const Option json = Option::Flag(u"json"_s, Words::Command::figuresOption());
const Option server =
    Option::Text(u"server"_s, Words::Command::addressValue(), Words::Command::verifyServerOption());
const Option pdf = Option::Text(u"pdf"_s, u"FILE"_s, Words::Command::pdfOption());

int RunVerify(const Arguments& arguments) {
  VerificationReport report{{}, Version::text, QDateTime::currentDateTime()};
  auto add = [&](const std::vector<Verification::Check>& checks) {
    report.checks.insert(report.checks.end(), checks.begin(), checks.end());
  };
  add(Verification::CertifiedSets());
  add(Verification::Constants());
  add(Verification::ReferenceCases());
  add({Verification::SaveAndLoad()});
  if (arguments.Has(server)) add({Verification::SaveAndLoad(arguments.Text(server))});
  if (arguments.Has(pdf)) SaveFile(arguments.Text(pdf), report.Pdf());
  Console::Print(arguments.Has(json) ? QString::fromUtf8(report.Json()) : report.Text());
  return Verification::AllPassed(report.checks) ? CommandLine::Fine : CommandLine::Differs;
}

}  // namespace

const Command& Verify() {
  static const Command command = {.name = u"verify"_s,
                                  .purpose = Words::Command::verifyPurpose(),
                                  .operands = {},
                                  .options = {json, pdf, server},
                                  .details = Words::Command::verifyDetails(),
                                  .run = RunVerify,
                                  .needsGraphics = true};
  return command;
}

}  // namespace Commands
