// A text as one of the pieces that writev and sendmsg take.
#pragma once

#include <sys/uio.h>

#include <string_view>

/// @param text  must outlive the result, which points to it
inline iovec Piece(std::string_view text) { return {const_cast<char*>(text.data()), text.size()}; }
