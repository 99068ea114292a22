#pragma once
/// \file
/// Texts of numbers with a fixed number of digits, such as "2024:03:05". Internal.

#include <cstddef>

namespace kivara {

/// Reads a text by a picture in which '9' stands for a digit, 0 to 9, and every other character for itself. The text may go
/// on after it.
/// \param numbers  gets the number of each run of digits, as many as the picture has
/// \return false when the text does not fit the picture; the numbers are then undefined
inline bool readFields(char const * text, char const * picture, int * numbers) {
  for (int number = 0; *picture != '\0'; ++text, ++picture) {
    if (*picture != '9') {
      if (*text != *picture)
        return false;
      continue;
    }
    if (*text < '0' || *text > '9')
      return false;
    number = number * 10 + (*text - '0');
    if (picture[1] != '9') {
      *numbers++ = number;
      number = 0;
    }
  }
  return true;
}

} // namespace kivara
