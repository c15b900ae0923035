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

int Verify(const QStringList& words) {
  const Arguments arguments(words, {u"pdf"_s}, {u"json"_s});
  arguments.RequirePositional(0, {});
  VerificationReport report{{}, Version::text, QDateTime::currentDateTime()};
  auto add = [&](const std::vector<Verification::Check>& checks) {
    report.checks.insert(report.checks.end(), checks.begin(), checks.end());
  };
  add(Verification::CertifiedSets());
  add(Verification::Constants());
  add(Verification::ReferenceCases());
  add({Verification::SaveAndLoad()});
  if (arguments.Has(u"pdf"_s)) SaveFile(arguments.Value(u"pdf"_s), report.Pdf());
  Console::Print(arguments.Has(u"json"_s) ? QString::fromUtf8(report.Json()) : report.Text());
  return Verification::AllPassed(report.checks) ? CommandLine::Fine : CommandLine::Differs;
}

}  // namespace Commands
