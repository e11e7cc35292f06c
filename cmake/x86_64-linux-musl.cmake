# A small C library (Debian's musl-tools) under the compiler's own C++ headers, without the C++
# library: the handler needs only the headers. They are configured for the big C library; the two
# definitions stand for what they expect of it and nothing here uses.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER g++)
set(headers /usr/include/c++)
file(GLOB versions RELATIVE ${headers} ${headers}/*)
list(GET versions -1 version)
set(CMAKE_CXX_FLAGS_INIT
    "-specs=/usr/lib/x86_64-linux-musl/musl-gcc.specs -isystem ${headers}/${version} -isystem /usr/include/x86_64-linux-gnu/c++/${version} \"-D__GLIBC_PREREQ(major,minor)=0\" -D__locale_t=locale_t")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-nodefaultlibs")
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT "-lc -lgcc")
# Its compiler wrapper knows static programs and position-independent ones, not both at once.
set(CAMERA_HAVE_STATIC_PIE OFF CACHE INTERNAL "")
