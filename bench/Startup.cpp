// Measures the time from the start of the desktop program to its first painted window against that of a Qt
// main window with one word in it, process by process and in turn.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string_view>

#include "app/Desktop.h"

using namespace Qt::StringLiterals;

namespace {

// The fastest run counts: what a busy machine adds is never negative.
struct Cost {
  double wall = 1e9, processor = 1e9;  // milliseconds
};

void Run(Cost& cost, const char* program, const char* argument) {
  using namespace std::chrono;
  const auto start = steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    execl(program, program, argument, nullptr);
    _exit(127);
  }
  int status = 0;
  rusage use{};
  if (wait4(child, &status, 0, &use) != child || status != 0) {
    std::fprintf(stderr, "%s failed\n", program);
    std::exit(1);
  }
  const auto milliseconds = [](const timeval& time) {
    return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
  };
  cost.wall = std::min(cost.wall, duration<double, std::milli>(steady_clock::now() - start).count());
  cost.processor = std::min(cost.processor, milliseconds(use.ru_utime) + milliseconds(use.ru_stime));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::string_view(argv[1]) == "--desktop") return RunDesktop(argc, argv, {});

  const QTemporaryDir folder;  // neither the user's settings nor a copy that he runs matter
  qputenv("KESTREL_SETTINGS", folder.filePath(u"settings.json"_s).toLocal8Bit());
  qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
  if (!qEnvironmentVariableIsSet("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");

  Cost desktop, word;
  for (int repetition = 0; repetition < 30; ++repetition) {
    Run(word, KESTREL_WORD_WINDOW, "");
    Run(desktop, argv[0], "--desktop");
  }
  std::printf("%-42s %6.2f  (%.0f ms / %.0f ms)\n", "start to first window / one with a word",
              desktop.wall / word.wall, desktop.wall, word.wall);
  std::printf("%-42s %6.2f  (%.0f ms / %.0f ms)\n", "start to first window, processor time",
              desktop.processor / word.processor, desktop.processor, word.processor);
  return 0;
}
