# What the toolchain files for musl, a small C library, have in common: the compiler's own C++
# headers, without the C++ library (the handler needs only the headers), on top of musl.
# Expects CMAKE_C_COMPILER and CMAKE_CXX_COMPILER, and MUSL_HEADERS and MUSL_LIBRARIES, the folders
# of musl. Only the benchmarks have C sources.
#
# Programs are static and position independent. musl's own compiler wrapper cannot do both at once,
# so musl.specs names the start files.

# The compiler knows where its headers are.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -E -x c++ -v /dev/null
                OUTPUT_QUIET ERROR_VARIABLE search_list)
string(REGEX MATCHALL "\n (/[^\n]*/c\\+\\+/[^\n]*)" cxx_headers "${search_list}")
list(TRANSFORM cxx_headers STRIP)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=include
                OUTPUT_VARIABLE compiler_headers OUTPUT_STRIP_TRAILING_WHITESPACE)
list(TRANSFORM cxx_headers REPLACE "(.+)" "-isystem \"\\1\"")
list(JOIN cxx_headers " " cxx_headers)
set(c_headers "-isystem \"${MUSL_HEADERS}\" -isystem \"${compiler_headers}\"")

set(CMAKE_C_FLAGS_INIT "-nostdinc ${c_headers}")
# The C++ headers are configured for glibc. The two definitions replace what they expect of it and
# nothing here uses.
set(CMAKE_CXX_FLAGS_INIT
    "-nostdinc ${cxx_headers} ${c_headers} \"-D__GLIBC_PREREQ(major,minor)=0\" -D__locale_t=locale_t")
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-specs=\"${CMAKE_CURRENT_LIST_DIR}/musl.specs\" -B\"${MUSL_LIBRARIES}\" -L\"${MUSL_LIBRARIES}\" -nodefaultlibs")
set(CMAKE_C_STANDARD_LIBRARIES_INIT "-Wl,--start-group -lc -lgcc -Wl,--end-group")
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT ${CMAKE_C_STANDARD_LIBRARIES_INIT})
