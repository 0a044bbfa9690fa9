# Shared by every target of the project: the include root, warnings and sanitizers.
add_library(orxdb_options INTERFACE)
target_include_directories(orxdb_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(orxdb_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This compiler sees overlapping copies in std::string's operator+ where there are none.
  target_compile_options(orxdb_options INTERFACE -Wno-restrict -Wno-unknown-warning-option)
endif()
if(ORXDB_SANITIZE)
  target_compile_options(orxdb_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(orxdb_options INTERFACE -fsanitize=address,undefined)
endif()
if(ORXDB_BUILD_FUZZERS)
  target_compile_options(orxdb_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# orxdb_part(name SOURCES... [LINK libs...]): one folder of the component as a static library.
function(orxdb_part name)
  cmake_parse_arguments(PART "" "" "LINK" ${ARGN})
  add_library(${name} STATIC ${PART_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PUBLIC orxdb_options ${PART_LINK})
endfunction()

# orxdb_version_record(target DESCRIPTION NAME FILENAME [MARKS...]): the text in a library that
# platform/framework/VersionRecord.h reads.
function(orxdb_version_record target RECORD_DESCRIPTION RECORD_NAME RECORD_FILENAME)
  list(TRANSFORM ARGN APPEND "\\n")
  list(JOIN ARGN "" RECORD_MARKS)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}Version.cpp)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/VersionRecord.cpp.in ${source} @ONLY)
  target_sources(${target} PRIVATE ${source})
endfunction()

# orxdb_test(name SOURCES... [LINK libs...] [ENVIRONMENT vars...]): a GoogleTest program, its
# cases registered with CTest one by one, labelled with its name.
function(orxdb_test name)
  cmake_parse_arguments(TEST "" "" "LINK;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${TEST_UNPARSED_ARGUMENTS} ${PROJECT_SOURCE_DIR}/tests/AdoptLocale.cpp)
  target_link_libraries(${name} PRIVATE orxdb_options ${TEST_LINK} GTest::gmock GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS ${name} TIMEOUT 300 ENVIRONMENT "${TEST_ENVIRONMENT}")
endfunction()
