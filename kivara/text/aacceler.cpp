#include "aacceler.hpp"

#include "atrace.hpp"
#include "base/modules.hpp"
#include "sv/menu.hpp"
#include "sv/resource.hpp"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>

using SV::String;

namespace {

constexpr unsigned kLineNoMenu = 112;

constexpr int kFirstMnemonic = 33;
constexpr int kLastMnemonic = 127;

constexpr char kMark = '~';

unsigned char upper(char c) { return static_cast<unsigned char>(std::toupper(static_cast<unsigned char>(c))); }

/// The position of the mark; -1 when there is none.
std::int32_t markIn(String const & text) {
  void const * const mark = std::memchr(text.c_str(), kMark, static_cast<std::size_t>(text.Len()));
  return mark != nullptr ? static_cast<std::int32_t>(static_cast<char const *>(mark) - text.c_str()) : -1;
}

void insertMark(String & text, std::int32_t position) {
  String marked = text.substr(0, position);
  marked += kMark;
  marked += text.substr(position);
  text = marked;
}

/// The identifier, with the type of string resources in its high part.
unsigned long stringId(long id) { return SV::RSC_STRING << 16 | (static_cast<unsigned long>(id) & 0xFFFF); }

} // namespace

KivAcceleratorTable::KivAcceleratorTable() { Reset(); }

void KivAcceleratorTable::Reset() {
  std::fill(std::begin(inUse), std::end(inUse), true);
  std::fill(inUse + kFirstMnemonic, inUse + kLastMnemonic + 1, false);
}

bool KivAcceleratorTable::IsInUse(char c) const { return inUse[upper(c)]; }

bool KivAcceleratorTable::SetInUse(char c) {
  if (IsInUse(c))
    return false;
  inUse[upper(c)] = true;
  return true;
}

bool KivAcceleratorTable::AddAcceleratedString(String const & text) {
  std::int32_t const mark = markIn(text);
  if (mark < 0 || mark == text.Len() - 1)
    return false;
  SetInUse(text.charAt(mark + 1));
  return true;
}

bool KivAcceleratorTable::AccelerateString(String & text) {
  if (markIn(text) >= 0) {
    AddAcceleratedString(text);
    return true;
  }
  for (std::int32_t i = 0; i < text.Len(); ++i) {
    if (SetInUse(text.charAt(i))) {
      insertMark(text, i);
      return true;
    }
  }
  insertMark(text, 0);
  return false;
}

void KivAcceleratorTable::setAcceleratorsOfMenu(SV::Menu const * menu) {
  if (menu == nullptr) {
    displayErrorMessage(kivara::modules::kAacceler, kLineNoMenu);
    return;
  }
  for (unsigned short position = 0; position < menu->GetItemCount(); ++position) {
    unsigned short const id = menu->GetItemId(position);
    if (id != 0) // a separator
      AddAcceleratedString(menu->GetItemText(id));
  }
}

KivStringAcceleratorTable::KivStringAcceleratorTable() = default;
KivStringAcceleratorTable::~KivStringAcceleratorTable() = default;

KivStringAcceleratorTable * KivStringAcceleratorTable::GetGlobal() {
  static KivStringAcceleratorTable table;
  return &table;
}

String const & KivStringAcceleratorTable::GetString(long id) { return _GetElement(id); }
char const * KivStringAcceleratorTable::GetCharPtr(long id) { return _GetElement(id).c_str(); }

String const & KivStringAcceleratorTable::_GetElement(long id) {
  auto const known = strings_.find(id);
  if (known != strings_.end())
    return *known->second;
  // A missing resource calls the application, which may ask for the same string: what it got must stay valid.
  auto loaded = std::make_unique<String>(SV::Resource::LoadString(stringId(id)));
  auto const [entry, isNew] = strings_.emplace(id, loaded.get());
  if (isNew)
    loaded.release(); // NOLINT(bugprone-unused-return-value): the map owns it now
  return *entry->second;
}
