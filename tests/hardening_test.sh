#!/usr/bin/env bash
# Checks how a binary that ships was linked:
#
#   hardening_test.sh BINARY position-independent|fixed-address
#
# It is one static, hardened executable, without anything of the C++ library's compiled part.
set -euo pipefail
binary=$1
address=$2
failures=0

expect() {
  local description=$1
  shift
  if ! "$@"; then
    echo "$binary: this does not hold: $description"
    failures=$((failures + 1))
  fi
}

lacks() { ! grep -qE -- "$1" <<<"$2"; }
holds() { grep -qE -- "$1" <<<"$2"; }

header=$(readelf --file-header --wide "$binary")
segments=$(readelf --program-headers --wide "$binary")
dynamic=$(readelf --dynamic --wide "$binary")
symbols=$(nm --demangle "$binary")

expect "no program interpreter" lacks 'INTERP' "$segments"
expect "no shared libraries" lacks 'NEEDED' "$dynamic"
expect "relocations are made read-only" holds 'GNU_RELRO' "$segments"
expect "the stack is not executable" holds 'GNU_STACK.* RW +0x' "$segments"
expect "no segment is writable and executable" lacks ' RWE ' "$segments"
expect "no search path for shared libraries" lacks 'RPATH|RUNPATH' "$dynamic"
expect "no relocations in the code" lacks 'TEXTREL' "$dynamic"
if [[ $address == position-independent ]]; then
  expect "position independent" holds 'Type: +DYN' "$header"
  expect "everything is bound at the start" holds 'BIND_NOW' "$dynamic"
else
  expect "nothing is bound at run time" holds 'no dynamic section' "$dynamic"
fi
expect "the stack is protected" holds ' __stack_chk_fail$' "$symbols"

# The product has its own operator new and delete; nothing else of these libraries is in it.
for part in '__cxa_(throw|begin_catch|allocate_exception|pure_virtual|guard_acquire|demangle)' \
  '__gxx_personality' 'typeinfo (for|name)' 'std::(locale|ios_base|terminate|bad_alloc|__throw)' \
  'std::basic_(string|ios|istream|ostream|streambuf)<' '__gnu_cxx::'; do
  expect "no $part" lacks " [A-TV-Z] .*$part" "$symbols"
done
expect "an operator new of its own" holds ' T operator new\(' "$symbols"

exit $((failures > 0))
