#pragma once
/// \file
/// The body of an answer: its bytes as they arrive, and its text. Internal.

#include "tools/wstring.hpp"

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>

namespace kivara {

struct FreeBlock {
  void operator()(void * block) const { std::free(block); }
};

/// Bytes that grow at the end, followed by a NUL.
class HttpBody {
public:
  /// False when there is no memory; all else needs it first.
  bool allocate();

  /// Keeps what it holds and gives false where there is no memory, and beyond the length of a WString.
  bool append(void const * part, std::size_t size);

  unsigned int size() const { return static_cast<unsigned int>(size_); }
  char const * bytes() const { return bytes_.get(); }

  /// Hands the block over, which malloc gave.
  unsigned char * release() { return reinterpret_cast<unsigned char *>(bytes_.release()); }

private:
  using Block = std::unique_ptr<char, FreeBlock>;

  bool grow(std::size_t least);

  Block bytes_;
  std::size_t capacity_ = 0; // without the NUL
  std::size_t size_ = 0;
};

/// The text of \p size bytes followed by a NUL.
/// \param charset  one that begins with "utf-8", or any other for the ANSI code page, which is also the second choice
/// \return nothing when the system converts them in neither way
std::optional<SV::WString> textOfBody(char const * bytes, unsigned int size, SV::WString const & charset);

} // namespace kivara
