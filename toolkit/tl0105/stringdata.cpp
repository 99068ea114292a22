#include "tools/detail/text_block.hpp"

#include <algorithm>
#include <cstring>
#include <new>

namespace SV {
namespace {

StringData emptyText{};
StringDataW emptyWideText{};

template <class Char> auto * createBlock(Char const * text, std::int32_t length) {
  using Data = typename detail::TextBlock<Char>::Data;
  length = std::clamp(length, 0, STRING_MAXLEN);
  auto * const block = static_cast<Data *>(::operator new(detail::allocatedBytes(detail::blockBytes<Char>(length))));
  block->nLen = length;
  block->nRefCount = 0;
  if (text != nullptr)
    std::memcpy(block->aStr, text, static_cast<std::size_t>(length) * sizeof(Char));
  block->aStr[length] = Char();
  return block;
}

} // namespace

StringData * GetEmptyStrData() { return &emptyText; }
StringDataW * GetEmptyStrDataW() { return &emptyWideText; }

StringData * CreateStringData(char const * text, std::int32_t length) { return createBlock(text, length); }
StringDataW * CreateStringData(wchar_t const * text, std::int32_t length) { return createBlock(text, length); }

void DeleteStringData(StringData * block) { ::operator delete(block); }
void DeleteStringData(StringDataW * block) { ::operator delete(block); }

} // namespace SV
