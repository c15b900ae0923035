// The command verify: the program checks its own figures on the machine at hand.
#include "charts/SaveFile.h"
#include "cli/Arguments.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "texts/Version.h"
#include "verify/VerificationReport.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

const Option json = Option::Flag(u"json"_s, u"an object with every figure, expected and found"_s);
const Option pdf = Option::Text(u"pdf"_s, u"FILE"_s, u"a report for the file of records as well"_s);

int RunVerify(const Arguments& arguments) {
  VerificationReport report{{}, Version::text, QDateTime::currentDateTime()};
  auto add = [&](const std::vector<Verification::Check>& checks) {
    report.checks.insert(report.checks.end(), checks.begin(), checks.end());
  };
  add(Verification::CertifiedSets());
  add(Verification::Constants());
  add(Verification::ReferenceCases());
  add({Verification::SaveAndLoad()});
  if (arguments.Has(pdf)) SaveFile(arguments.Text(pdf), report.Pdf());
  Console::Print(arguments.Has(json) ? QString::fromUtf8(report.Json()) : report.Text());
  return Verification::AllPassed(report.checks) ? CommandLine::Fine : CommandLine::Differs;
}

}  // namespace

const Command& Verify() {
  static const Command command = {
      .name = u"verify"_s,
      .purpose = u"checks the program's own figures"_s,
      .operands = {},
      .options = {json, pdf},
      .details =
          u"Compares with certified, published and independently calculated figures on this machine. Exit\n"
          "status 1 when anything differs.\n"_s,
      .run = RunVerify,
      .needsGraphics = true};
  return command;
}

}  // namespace Commands
