#include "platform/ui/MessageBox.h"

#include <cstdio>
#include <utility>

namespace MessageBox {

namespace {
Presenter* installed = nullptr;
}

Answer Refusal(Buttons buttons) {
  switch (buttons) {
    case Buttons::YesNo:
      return Answer::No;
    case Buttons::YesNoCancel:
      return Answer::Cancel;
    case Buttons::Ok:
      break;
  }
  return Answer::Ok;
}

Presenter* Install(Presenter* presenter) { return std::exchange(installed, presenter); }

Answer Show(const Request& request) {
  if (installed) return installed->Show(request);
  std::fprintf(stderr, "%s: %s\n", request.title.toUtf8().constData(), request.text.toUtf8().constData());
  return Refusal(request.buttons);
}

}  // namespace MessageBox
