#include "core/parameters.h"

#include "core/text.h"

bool ReadParameter(const char* params, const char* key, std::int32_t& value) {
  // As long as any text parameter; white space and zeros in front of the digits are legal.
  char text[kParameterSize];
  if (!ReadParameter(params, key, text)) {
    return false;
  }
  value = ParseInt32(text);
  return true;
}
