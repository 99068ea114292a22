#include "asgml.hpp"

#include "atools.hpp"
#include "base/textids.hpp"
#include "sv/resource.hpp"
#include "text/sgml/sgmltables.hpp"

#include <algorithm>
#include <cstring>
#include <istream>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

using SV::String;

String KivSGMLString::g_aEntities[256];
int KivSGMLString::g_nMappingStartOffset = 128;
bool KivSGMLString::g_bInitedCharMap = false;
String KivSGMLString::g_sLanguage;
bool KivSGMLString::g_bWarn = true;
KivExportFileType KivSGMLString::g_eCurExportFileType = KIV_EXPORT_SGML;

namespace {

constexpr int kBytes = 256;
constexpr int kUpperBytes = 128;
constexpr int kLinesOfUpperMap = 129; // the name, and an entry for each byte
constexpr int kLinesOfWholeMap = 257;
constexpr std::size_t kLineBuffer = 1000;

constexpr char kDefaultLanguage[] = "DEFAULT";
constexpr char kStandsForItself[] = "0";

/// What a conversion does with a byte.
enum class Action : unsigned char { Copy, Replace, Drop };

/// The table of replacements in the form in which the loops over texts need it: reading the strings themselves would
/// cost two more loads for each byte.
struct ByteTable {
  kivara::ConvertedSizes sizes;     // a byte that is dropped as invalid counts as well
  std::array<bool, kBytes> changes; // whether the byte makes a text one that is converted
  std::array<Action, kBytes> actions;
};
ByteTable g_table;

void setEntry(ByteTable & table, int byte, String const & entity) {
  bool const isReplaced = entity.Len() > 0;
  bool const isValid = Kiv_IsValidXMLChar(static_cast<char>(byte), true, false);
  auto const place = static_cast<std::size_t>(byte);
  table.sizes[place] = isReplaced ? entity.Len() : 1;
  table.changes[place] = isReplaced;
  table.actions[place] = isReplaced ? Action::Replace : isValid ? Action::Copy : Action::Drop;
}

ByteTable tableOf(String const (&entities)[kBytes]) {
  ByteTable table;
  for (int byte = 0; byte < kBytes; ++byte)
    setEntry(table, byte, entities[byte]);
  table.sizes['\r'] = 0;
  table.changes['\r'] = true;
  table.actions['\r'] = Action::Drop;
  return table;
}

/// Writes the converted text without a NUL; the end of what was written.
unsigned char * convert(unsigned char const * text, String const (&entities)[kBytes], unsigned char * out) {
  for (; *text != '\0'; ++text) {
    Action const action = g_table.actions[*text];
    if (action == Action::Copy) {
      *out++ = *text;
    } else if (action == Action::Replace) {
      String const & entity = entities[*text];
      std::memcpy(out, entity.c_str(), static_cast<std::size_t>(entity.Len()));
      out += entity.Len();
    }
  }
  return out;
}

/// The item of a line of a map; empty when it has none.
std::string itemOf(char const * line) {
  std::string item(line);
  std::erase_if(item, [](char c) { return c == ' ' || c == '\r' || c == '\n'; });
  if (std::size_t const comment = item.find("//"); comment != std::string::npos)
    item.resize(comment);
  return item;
}

/// Calls \p use for each token between single blanks; the empty text has none.
template <class Use> void forEachToken(std::string_view text, Use const & use) {
  for (bool isMore = !text.empty(); isMore;) {
    std::size_t const blank = text.find(' ');
    use(text.substr(0, blank));
    isMore = blank != std::string_view::npos;
    text.remove_prefix(isMore ? blank + 1 : text.size());
  }
}

String defaultMapping() { return SV::Resource::LoadString(kivara::texts::kCharacterMap); }

String stringOf(std::string_view text) { return String(text.data(), static_cast<std::int32_t>(text.size())); }

} // namespace

KivSGMLString::KivSGMLString(String const & text) : text_(text) {}
KivSGMLString::KivSGMLString(char const * text) : text_(text) {}
KivSGMLString::KivSGMLString(KivSGMLString const & other) = default;
KivSGMLString & KivSGMLString::operator=(KivSGMLString const & other) = default;
KivSGMLString::~KivSGMLString() = default;

bool KivSGMLString::SetCharacterMap(std::istream * stream) {
  if (g_bInitedCharMap) {
    g_bInitedCharMap = false;
    std::fill(std::begin(g_aEntities), std::end(g_aEntities), String());
  }
  bool const isRead = __initCharMap(stream);
  return g_bInitedCharMap && isRead;
}

char const * KivSGMLString::GetLanguage() { return g_sLanguage.c_str(); }
void KivSGMLString::EnableWarning(bool strict) { g_bWarn = strict; }
void KivSGMLString::SetExportFileType(KivExportFileType type) { g_eCurExportFileType = type; }

bool KivSGMLString::ReadSGMLMapping(std::istream * stream, String & mapping) {
  g_sLanguage = String();
  g_nMappingStartOffset = kUpperBytes;
  std::string entries;
  int count = 0;
  char line[kLineBuffer];
  while (count <= kLinesOfWholeMap && stream->getline(line, sizeof line)) {
    std::string const item = itemOf(line);
    if (item.empty())
      continue;
    if (count == 0 && (item == "MAP128" || item == "MAP256")) {
      g_nMappingStartOffset = item == "MAP128" ? kUpperBytes : 0;
      continue;
    }
    if (count == 0)
      g_sLanguage = item.c_str();
    else
      entries += (count > 1 ? " " : "") + item;
    ++count;
  }
  bool const fits =
      g_nMappingStartOffset == kUpperBytes ? count == kLinesOfUpperMap : !g_bWarn || count == kLinesOfWholeMap;
  if (!fits)
    g_sLanguage = kDefaultLanguage;
  mapping = fits ? stringOf(entries) : defaultMapping();
  return fits;
}

bool KivSGMLString::__initCharMap(std::istream * stream) {
  String mapping;
  bool isRead = true;
  if (stream != nullptr) {
    isRead = ReadSGMLMapping(stream, mapping);
  } else {
    g_sLanguage = kDefaultLanguage;
    mapping = defaultMapping();
    g_nMappingStartOffset = kUpperBytes;
  }
  if (g_nMappingStartOffset == kUpperBytes)
    __createSub128Mapping();
  int next = g_nMappingStartOffset;
  forEachToken({mapping.c_str(), static_cast<std::size_t>(mapping.Len())}, [&next](std::string_view token) {
    if (next < kBytes)
      g_aEntities[next++] = token == kStandsForItself ? String() : stringOf(token);
  });
  std::fill(g_aEntities + next, std::end(g_aEntities), String());
  g_table = tableOf(g_aEntities);
  g_bInitedCharMap = true;
  return isRead;
}

void KivSGMLString::__createSub128Mapping() {
  std::fill(g_aEntities, g_aEntities + g_nMappingStartOffset, String());
  g_aEntities['"'] = "&#34;";
  g_aEntities['&'] = "&amp;";
  g_aEntities['<'] = "&lt;";
  g_aEntities['>'] = "&gt;";
}

int KivSGMLString::__getConvertedLen(unsigned char const * text, bool & changed) {
  if (!g_bInitedCharMap)
    __initCharMap(nullptr);
  std::int64_t length = 0;
  bool isChanged = false;
  for (; *text != '\0'; ++text) {
    length += g_table.sizes[*text];
    isChanged |= g_table.changes[*text];
  }
  changed = isChanged;
  return kivara::checkedLength(length);
}

void KivSGMLString::__convertToBuf(unsigned char const * text, unsigned char * buffer) {
  *convert(text, g_aEntities, buffer) = '\0';
}

int KivSGMLString::GetSGMLStringLen(String const & text) {
  bool changed;
  return __getConvertedLen(kivara::bytesOf(text), changed);
}

char * KivSGMLString::GetpSGMLString(String const & text) {
  bool changed;
  int const length = __getConvertedLen(kivara::bytesOf(text), changed);
  if (length == 0 && !changed)
    return nullptr;
  auto const size = static_cast<std::size_t>(length) + 1;
  char * const result = new char[size];
  if (changed)
    __convertToBuf(kivara::bytesOf(text), reinterpret_cast<unsigned char *>(result));
  else
    std::memcpy(result, text.c_str(), size);
  return result;
}

char * KivSGMLString::GetpSGMLStringExt(String const & text, bool & changed) {
  int const length = __getConvertedLen(kivara::bytesOf(text), changed);
  if (changed)
    return GetpSGMLString(text);
  return length == 0 ? nullptr : const_cast<char *>(text.c_str());
}

String KivSGMLString::GetSGMLString(String const & text) {
  bool changed;
  int const length = __getConvertedLen(kivara::bytesOf(text), changed);
  if (!changed)
    return text.substr(0, length);
  if (length == 0)
    return String();
  String result = String::ofLength(length);
  auto * const buffer = reinterpret_cast<unsigned char *>(result.writable());
  unsigned char const * const end = convert(kivara::bytesOf(text), g_aEntities, buffer);
  return result.substr(0, static_cast<std::int32_t>(end - buffer)); // shares the block unless bytes were dropped
}

std::ostream & operator<<(std::ostream & out, KivSGMLString const & text) {
  if (KivSGMLString::g_eCurExportFileType == KIV_EXPORT_XML)
    return out << KivSGMLString::XMLStr(text.text_, true).c_str();
  bool changed;
  char * const converted = KivSGMLString::GetpSGMLStringExt(text.text_, changed);
  std::unique_ptr<char[]> const owner(changed ? converted : nullptr);
  if (converted != nullptr)
    out << converted;
  return out;
}
