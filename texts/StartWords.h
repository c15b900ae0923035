// The words of the first minute: the choice of a library, the sample library, and why a file is not opened.
#pragma once

#include "texts/Texts.h"

namespace Words::Start {

inline constexpr Text<> noLibrary{u"No library is open"};
inline constexpr Text<> whatALibraryIs{
    u"Kestrel keeps all measurements in one file, the library. Which one do you want to work with?"};
inline constexpr Text<> newLibrary{u"&New library…"};
inline constexpr Text<> newLibraryTip{
    u"Make an empty file for measurements of your own (Tools, New Database)"};
inline constexpr Text<> openLibrary{u"&Open a library…"};
inline constexpr Text<> openLibraryTip{u"Choose a file that exists already (Ctrl+O)"};
inline constexpr Text<> sampleLibrary{u"Sa&mple library…"};
inline constexpr Text<> sampleLibraryTip{u"Make a copy of thirteen published examples to try things out on"};
inline constexpr Text<> usedBefore{u"Used before:"};
inline constexpr Text<> sampleEntry{u"Sample Library…"};
inline constexpr Text<> sampleTitle{u"Sample Library"};
inline constexpr Text<> sampleFile{u"Kestrel Samples"};
inline constexpr Text<2> numbered{u"%1 %2"};
inline constexpr Text<> sampleNotMade{u"The sample library could not be made"};

}  // namespace Words::Start
