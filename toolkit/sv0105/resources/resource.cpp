#include "sv/resource.hpp"

#include "resources/loading.hpp"

#include <cstring>
#include <string>
#include <utility>

namespace SV {

namespace {

constexpr unsigned long kTextsInBlock = 16;

/// The characters of a text in its block, which is a series of counted strings; empty if the block is too short.
std::wstring textInBlock(std::span<std::byte const> block, unsigned long index) {
  std::size_t position = 0;
  for (unsigned long i = 0;; ++i) {
    WORD length;
    if (block.size() - position < sizeof length)
      return {};
    std::memcpy(&length, block.data() + position, sizeof length);
    position += sizeof length;
    std::size_t const size = length * sizeof(wchar_t);
    if (block.size() - position < size)
      return {};
    if (i == index) {
      std::wstring text(length, L'\0');
      std::memcpy(text.data(), block.data() + position, size);
      return text;
    }
    position += size;
  }
}

String inCodePage(std::wstring const & wide) {
  int const count = static_cast<int>(wide.size());
  int const length = WideCharToMultiByte(CP_ACP, 0, wide.data(), count, nullptr, 0, nullptr, nullptr);
  if (length < 1)
    return String();
  String text = String::ofLength(length);
  WideCharToMultiByte(CP_ACP, 0, wide.data(), count, text.writable(), length, nullptr, nullptr);
  return text;
}

} // namespace

namespace detail {

std::span<std::byte const> findResource(ResMgr const & manager, unsigned long number, char const * type) {
  HMODULE const module = manager.GetModule();
  // Without a DLL the system would search the program.
  HRSRC const place = module ? FindResourceA(module, MAKEINTRESOURCEA(number), type) : nullptr;
  HGLOBAL const handle = place ? LoadResource(module, place) : nullptr;
  if (!handle)
    return {};
  return {static_cast<std::byte const *>(LockResource(handle)), SizeofResource(module, place)};
}

} // namespace detail

ResMgr * Resource::SetResManager(ResMgr * manager) { return std::exchange(detail::toolkit().resManager, manager); }

ResMgr * Resource::GetResManager() { return detail::toolkit().resManager; }

String Resource::LoadString(ResId const & id) {
  String text;
  detail::loadWithRetry(id, [&](ResMgr const & manager) {
    auto const block = detail::findResource(manager, id.GetNumber() / kTextsInBlock + 1, RT_STRING);
    text = inCodePage(textInBlock(block, id.GetNumber() % kTextsInBlock));
    return text.Len() > 0;
  });
  return text;
}

} // namespace SV
