// The request body on standard input.
#pragma once

#include <cstdint>

#include "core/text_builder.h"

/// Reads the request body: one token without white space. Leading white space is skipped. The token
/// ends at the next white space, at a NUL, at the end of the input or at the announced length.
/// Clients send compact JSON; anything after a space is not part of the request.
///
/// Memory grows with the bytes that arrive, not with the announced length. Input that stalls or
/// never ends is bounded in time and size (see the constants in the implementation).
/// @param announced  the value of CONTENT_LENGTH; 0 or less gives an empty token
/// @param body       an empty text; receives the token
void ReadRequestBody(std::int32_t announced, TextBuilder& body);
