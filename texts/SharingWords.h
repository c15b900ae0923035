// The named texts of a program that is not alone: a second start of it.
#pragma once

#include "texts/Texts.h"

namespace Words::Sharing {

// A second start.
inline constexpr Text<> noAnswer{
    u"Kestrel is running already, but does not answer. Close it, or end its process, and try again."};
inline constexpr Text<1> opensLater{u"%1 opens when the window in front is closed."};
inline constexpr Text<1> notOpened{u"%1 was not opened: there are changes that are not saved."};

}  // namespace Words::Sharing
