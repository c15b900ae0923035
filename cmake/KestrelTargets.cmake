# kestrel_room(NAME SOURCES ... USES ...): one static library, a room of the house or a part of one.
function(kestrel_room name)
  cmake_parse_arguments(ROOM "MOC" "" "SOURCES;USES" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  if(name STREQUAL "engine")
    target_link_libraries(${name} PUBLIC kestrel_options)
  else()
    target_link_libraries(${name} PUBLIC kestrel_qt_options ${ROOM_USES})
  endif()
  if(ROOM_MOC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()

# kestrel_resources(TARGET NAME ...): as qt_add_resources. The format's first version keeps no times of the files, so that
# two builds of one tree are the same.
function(kestrel_resources)
  qt_add_resources(${ARGV} OPTIONS --format-version 1)
endfunction()

# What tests write need not outlast the machine: in memory, syncing takes no time.
set(memory "")
execute_process(COMMAND df --output=avail -BM /dev/shm OUTPUT_VARIABLE free ERROR_QUIET)
if(free MATCHES "([0-9]+)M" AND CMAKE_MATCH_1 GREATER 500)
  set(memory /dev/shm)
endif()
set(KESTREL_TEST_FOLDER "${memory}" CACHE PATH "Where tests make their folders; empty: where the system does")

# How each test is started: without a display, at one scale, in a time zone that nobody expects.
set(kestrel_test_launcher
  env QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=1 TZ=Australia/Eucla QT_LOGGING_RULES=qt.qpa.*=false)
if(KESTREL_SANITIZE MATCHES "thread")
  list(APPEND kestrel_test_launcher
    "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/tsan.supp history_size=7")
endif()
if(KESTREL_TEST_FOLDER)
  list(APPEND kestrel_test_launcher "TMPDIR=${KESTREL_TEST_FOLDER}")
endif()

# kestrel_test(NAME SOURCES ... USES ...): one test program; every case of it is a test of CTest, labelled with its room.
# ON_SERVER: those named after a server share one, and are together one test of CTest.
# Tests see their data through KESTREL_TEST_DATA and the samples through KESTREL_SAMPLES.
function(kestrel_test name)
  cmake_parse_arguments(TEST "MOC;ON_SERVER" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE kestrel_qt_options ${TEST_USES} GTest::gtest)
  target_compile_definitions(${name} PRIVATE
    KESTREL_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/fixtures"
    KESTREL_SAMPLES="${PROJECT_SOURCE_DIR}/samples")
  # Google Test's macros use old-style casts and shadow names in places.
  target_compile_options(${name} PRIVATE -Wno-old-style-cast)
  if(TEST_MOC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME room)
  # This property is what CMake 3.25 has for a launcher of tests.
  set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR "${kestrel_test_launcher}")
  set(filter "*")
  if(TEST_ON_SERVER)
    set(filter "-*Server*")
    add_test(NAME ${name}_on_server COMMAND ${name} --gtest_filter=*Server*)
    set_tests_properties(${name}_on_server PROPERTIES LABELS ${room} TIMEOUT 300 SKIP_REGULAR_EXPRESSION "  SKIPPED ")
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 TEST_FILTER "${filter}"
    PROPERTIES LABELS ${room} TIMEOUT 300)
endfunction()
