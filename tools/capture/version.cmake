# Writes HEADER with the program's version and the commit that it is built from, anew only where that changed.
cmake_minimum_required(VERSION 3.25)
find_package(Git QUIET)
if(Git_FOUND)
    execute_process(COMMAND ${GIT_EXECUTABLE} describe --always --dirty --abbrev=12 WORKING_DIRECTORY ${SOURCE}
                    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
string(STRIP "${VERSION} ${commit}" version)
file(CONFIGURE OUTPUT ${HEADER} CONTENT "#pragma once\n\n#define BUILD_VERSION \"@version@\"\n" @ONLY)
