#pragma once
/// \file
/// Formatting into a fixed buffer with the runtime's own functions. Internal.

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace kivara {

/// A string of at most Size - 1 characters on the stack; a longer one is cut.
template <std::size_t Size> class BoundedText {
public:
  __attribute__((format(ms_printf, 2, 3))) explicit BoundedText(char const * format, ...) {
    va_list arguments;
    va_start(arguments, format);
    put(format, arguments);
    va_end(arguments);
  }

  /// Replaces the string: a failing program may have little stack left for another one.
  __attribute__((format(ms_printf, 2, 3))) void set(char const * format, ...) {
    va_list arguments;
    va_start(arguments, format);
    put(format, arguments);
    va_end(arguments);
  }

  char const * c_str() const { return text_; }

private:
  // _vsnprintf is the runtime's own; libstdc++ replaces vsnprintf by one that interprets some formats differently.
  void put(char const * format, va_list arguments) {
    _vsnprintf(text_, Size, format, arguments);
    text_[Size - 1] = '\0'; // the runtime does not terminate a full buffer
  }

  char text_[Size];
};

/// Null counts as the empty string.
inline char const * orEmpty(char const * text) { return text != nullptr ? text : ""; }

} // namespace kivara
