// The request body on standard input.
#pragma once

#include <cstdint>

#include "core/text_builder.h"

/// Reads the request body: one token without white space. Leading white space is skipped; the
/// first white space after it, a NUL, the end of the input or the announced length ends the token.
/// Clients send compact JSON; what follows a blank is not part of the request.
///
/// Memory grows with what arrives, never with what is announced. Input that stalls or never ends
/// is given up after a fixed time and size (the constants beside the implementation).
///
/// @param announced  what CONTENT_LENGTH says; bounds the token, 0 or less gives an empty one
/// @param body       an empty text; receives the token
void ReadRequestBody(std::int32_t announced, TextBuilder& body);
