#include "core/parameters.h"

#include "core/text.h"

bool ReadParameter(const char* params, const char* key, std::int32_t& value) {
  // The digits may follow white space and zeros, so a number needs as much room as a text.
  char text[kTextSize];
  if (!ReadParameter(params, key, text)) {
    return false;
  }
  value = ParseInt32(text);
  return true;
}
