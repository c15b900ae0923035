#include "platform/ui/FileDialog.h"

#include <utility>

namespace FileDialog {

namespace {
Presenter* installed = nullptr;
}

Presenter* Install(Presenter* presenter) { return std::exchange(installed, presenter); }

QString Ask(const Request& request) { return installed ? installed->Ask(request) : QString(); }

}  // namespace FileDialog
