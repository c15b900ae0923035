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
inline constexpr Text<1> isGone{u"%1 (the file is not there)"};
inline constexpr Text<> sampleEntry{u"Sample Library…"};
inline constexpr Text<> sampleTitle{u"Sample Library"};
inline constexpr Text<> sampleFile{u"Kestrel Samples"};
inline constexpr Text<2> numbered{u"%1 %2"};
inline constexpr Text<> sampleNotMade{u"The sample library could not be made"};

}  // namespace Words::Start

// The choice of a library on a server.
namespace Words::Server {

inline constexpr Text<> entry{u"Library on a Server…"};
inline constexpr Text<> title{u"Library on a Server"};
inline constexpr Text<> host{u"&Host:"};
inline constexpr Text<> port{u"&Port:"};
inline constexpr Text<> database{u"&Database:"};
inline constexpr Text<> user{u"&User:"};
inline constexpr Text<> address{u"&Address:"};
inline constexpr Text<> test{u"&Test"};
inline constexpr Text<> open{u"&Open"};
inline constexpr Text<> passwords{
    u"A password is kept neither here nor in the address: the file .pgpass in your home folder holds it."};
inline constexpr Text<> noAddress{u"An address begins with postgresql://"};
inline constexpr Text<1> isThere{u"The library (revision %1) can be read and written."};
inline constexpr Text<1> isReadOnly{
    u"The library (revision %1) can be read; you have no right to write in it."};
inline constexpr Text<> readOnly{u", read only"};
inline constexpr Text<> noRight{
    u"Read only: the server gives you the right to see this library, and none to change it."};
inline constexpr Text<> fileIsReadOnly{
    u"Read only: you may not write in the file of this library or in its folder, so nothing can be changed."};
inline constexpr Text<> passwordTitle{u"Password"};
inline constexpr Text<> password{u"&Password:"};
inline constexpr Text<> passwordIsKept{u"It is kept in memory until the program ends, and nowhere else."};

}  // namespace Words::Server
