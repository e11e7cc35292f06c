# The camera's processor (32-bit Arm, hard float) with musl instead of glibc. The compiler is
# Debian's for that processor; musl for it is Debian's, too, unpacked below build/ and not
# installed.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static)

set(repository ${CMAKE_CURRENT_LIST_DIR}/..)
set(packages ${repository}/build/debian-armhf)
if(NOT EXISTS ${packages}/usr/lib/arm-linux-musleabihf/rcrt1.o)
  execute_process(COMMAND ${repository}/scripts/fetch_debian.sh armhf ${packages} musl musl-dev
                  RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR
      "This preset needs Debian's packages musl and musl-dev for armhf, and they could not be "
      "fetched. Unpack them below ${packages} (dpkg-deb --extract), or use the preset arm.")
  endif()
endif()
set(MUSL_HEADERS ${packages}/usr/include/arm-linux-musleabihf)
set(MUSL_LIBRARIES ${packages}/usr/lib/arm-linux-musleabihf)
include(${CMAKE_CURRENT_LIST_DIR}/musl.cmake)
