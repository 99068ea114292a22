#pragma once
/// \file
/// Formatting into a fixed buffer with the runtime's own functions. Internal.

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace kivara {

/// A text of at most Size - 1 characters on the stack; longer ones are cut.
template <std::size_t Size> class BoundedText {
public:
  __attribute__((format(ms_printf, 2, 3))) explicit BoundedText(char const * format, ...) {
    va_list arguments;
    va_start(arguments, format);
    put(format, arguments);
    va_end(arguments);
  }

  /// Another text in the same place: stack is what a failing program may have little of.
  __attribute__((format(ms_printf, 2, 3))) void set(char const * format, ...) {
    va_list arguments;
    va_start(arguments, format);
    put(format, arguments);
    va_end(arguments);
  }

  char const * c_str() const { return text_; }

private:
  // _vsnprintf is the runtime's own; libstdc++ puts another vsnprintf in its place, which reads formats differently.
  void put(char const * format, va_list arguments) {
    _vsnprintf(text_, Size, format, arguments);
    text_[Size - 1] = '\0'; // the runtime leaves a full buffer without one
  }

  char text_[Size];
};

/// Null counts as the empty text.
inline char const * orEmpty(char const * text) { return text != nullptr ? text : ""; }

} // namespace kivara
