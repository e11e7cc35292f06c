# This machine with musl instead of glibc (Debian's package musl-dev).
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
set(MUSL_HEADERS /usr/include/x86_64-linux-musl)
set(MUSL_LIBRARIES /usr/lib/x86_64-linux-musl)
include(${CMAKE_CURRENT_LIST_DIR}/musl.cmake)
