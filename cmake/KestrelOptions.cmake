# What every target is compiled with: the language, the warnings, the sanitizers. CMAKE_COMPILE_WARNING_AS_ERROR makes
# errors of warnings; the developers' presets set it, and a newer compiler's warnings stop nobody else.
option(KESTREL_BENCH "Build the benchmarks" OFF)
option(KESTREL_FUZZ "Build the libFuzzer targets (clang only)" OFF)
set(KESTREL_SANITIZE "" CACHE STRING "Sanitizers, for instance address,undefined")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(kestrel_options INTERFACE)
target_include_directories(kestrel_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(kestrel_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Woverloaded-virtual -Wnon-virtual-dtor
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op -Wsuggest-override>
  # GCC 12 sees overlaps in std::string's own code where there are none (its bug 105651).
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(KESTREL_SANITIZE)
  target_compile_options(kestrel_options INTERFACE -fsanitize=${KESTREL_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer
    # What the sanitizers add makes GCC 12 doubt std::regex's own members.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(kestrel_options INTERFACE -fsanitize=${KESTREL_SANITIZE})
endif()
if(KESTREL_FUZZ)
  # Everything tells the fuzzer which of its branches an input took.
  target_compile_options(kestrel_options INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(kestrel_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Qt code writes its texts as Qt texts, and signals without the keyword macros.
add_library(kestrel_qt_options INTERFACE)
target_link_libraries(kestrel_qt_options INTERFACE kestrel_options)
target_compile_definitions(kestrel_qt_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_URL_CAST_FROM_STRING)
