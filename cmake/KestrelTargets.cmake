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

# kestrel_test(NAME SOURCES ... USES ...): one test program; every case of it is a test of CTest.
# Tests see their data through KESTREL_TEST_DATA and the samples through KESTREL_SAMPLES.
function(kestrel_test name)
  cmake_parse_arguments(TEST "MOC" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE kestrel_qt_options ${TEST_USES} GTest::gtest)
  target_compile_definitions(${name} PRIVATE
    KESTREL_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data"
    KESTREL_SAMPLES="${PROJECT_SOURCE_DIR}/samples")
  # Google Test's macros use old-style casts and shadow names in places.
  target_compile_options(${name} PRIVATE -Wno-old-style-cast)
  if(TEST_MOC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_SCALE_FACTOR=1;TZ=Australia/Eucla;QT_LOGGING_RULES=qt.qpa.*=false")
endfunction()
