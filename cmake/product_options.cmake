# Compiler and linker options: those that all targets share, and those of the product.
include(CheckCXXSourceCompiles)
include(CheckCXXSourceRuns)

# Warnings for all code of this repository.
add_library(camera_warnings INTERFACE)
target_compile_options(camera_warnings INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Wsign-conversion -Wformat=2 -Wold-style-cast -Wcast-align
  -Wcast-qual -Wnon-virtual-dtor -Woverloaded-virtual -Wundef -Wvla -Wdouble-promotion
  -Wimplicit-fallthrough -Wswitch-enum
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op>
  $<$<BOOL:${CAMERA_WARNINGS_AS_ERRORS}>:-Werror>)

# What the product's code may use of the language; times and file sizes are 64 bits wide on the
# 32-bit board, too.
add_library(camera_language INTERFACE)
target_compile_features(camera_language INTERFACE cxx_std_17)
target_compile_options(camera_language INTERFACE -fno-rtti -fno-threadsafe-statics)
if(CAMERA_BUILD_FUZZERS)
  # A request that ends its process unwinds back into the fuzzer. libFuzzer needs to see the
  # branches of the product's code.
  target_compile_options(camera_language INTERFACE -fsanitize=fuzzer-no-link)
  # As they are on the camera, in everything that shares the product's headers.
  add_compile_options(-funsigned-char)
else()
  target_compile_options(camera_language INTERFACE
    -fno-exceptions -fno-asynchronous-unwind-tables)
endif()
target_compile_definitions(camera_language INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)

# Coverage counters for the product, and for the unit tests, which include its headers. Linked
# statically, like the product, because a test gives the handler little memory.
add_library(camera_coverage INTERFACE)
target_link_libraries(camera_language INTERFACE camera_coverage)
if(CAMERA_COVERAGE)
  add_library(coverage_exit STATIC tests/coverage/exit.cpp)
  target_compile_options(camera_coverage INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(camera_coverage INTERFACE --coverage -static -Wl,--wrap=_exit)
  target_link_libraries(camera_coverage INTERFACE coverage_exit)
endif()

# Sanitizers apply to everything, tests included.
if(CAMERA_SANITIZE)
  # The check of virtual calls needs the type information that the product is built without.
  add_compile_options(-fsanitize=${CAMERA_SANITIZE} -fno-sanitize=vptr -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${CAMERA_SANITIZE})
endif()

# Hardening of the binaries that ship. A handler that links the camera's own platform library as a
# shared one uses the C library that it was built for; otherwise it is one static executable, at a
# random address where the toolchain has the start file for that.
add_library(camera_hardening INTERFACE)
if(CMAKE_BUILD_TYPE MATCHES "^(Release|MinSizeRel|)$" AND NOT CAMERA_SANITIZE)
  target_compile_options(camera_hardening INTERFACE
    -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
    -ffunction-sections -fdata-sections)
  target_link_options(camera_hardening INTERFACE
    -Wl,-z,relro,-z,now,-z,noexecstack,--gc-sections)
  set(CMAKE_REQUIRED_FLAGS "-fPIE")
  set(CMAKE_REQUIRED_LINK_OPTIONS -static-pie)
  check_cxx_source_compiles("int main() { return 0; }" CAMERA_HAVE_STATIC_PIE)
  if(CAMERA_HAVE_STATIC_PIE)
    # Packed relocations start faster, but older start files do not apply them.
    set(CMAKE_REQUIRED_LINK_OPTIONS
        -static-pie -Wl,--fatal-warnings -Wl,-z,pack-relative-relocs)
    check_cxx_source_runs("
      int one = 1;
      int* volatile pointers[] = {&one, &one};
      int main() { return *pointers[1] - 1; }" CAMERA_HAVE_PACKED_RELOCATIONS)
  endif()
  unset(CMAKE_REQUIRED_FLAGS)
  unset(CMAKE_REQUIRED_LINK_OPTIONS)
  if(CAMERA_PLATFORM_LIBRARY MATCHES "\\.so")
    target_compile_options(camera_hardening INTERFACE -fPIE)
    target_link_options(camera_hardening INTERFACE -pie -static-libgcc -static-libstdc++)
  elseif(CAMERA_HAVE_STATIC_PIE)
    target_compile_options(camera_hardening INTERFACE -fPIE)
    target_link_options(camera_hardening INTERFACE -static-pie
      $<$<BOOL:${CAMERA_HAVE_PACKED_RELOCATIONS}>:-Wl,-z,pack-relative-relocs>)
  else()
    target_compile_options(camera_hardening INTERFACE -fno-PIE)
    target_link_options(camera_hardening INTERFACE -static)
  endif()
endif()
