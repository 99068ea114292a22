// Texts for XML, by fixed rules.

#include "asgml.hpp"
#include "atools.hpp"
#include "text/sgml/sgmltables.hpp"

#include <cstring>
#include <string>

using SV::String;

namespace {

/// What each byte becomes. The system's code page, which decides on some, stays the same as long as the process.
class XmlTable {
public:
  explicit XmlTable(bool checkCodePage) {
    for (int byte = 0; byte < 256; ++byte) {
      auto const place = static_cast<std::size_t>(byte);
      auto const c = static_cast<char>(byte);
      std::string const text = Kiv_IsValidXMLChar(c, true, checkCodePage) ? textOf(c) : std::string();
      sizes_[place] = static_cast<std::int32_t>(text.size());
      text.copy(texts_[place].data(), text.size());
    }
  }

  std::int32_t lengthOf(String const & text) const {
    unsigned char const * const bytes = kivara::bytesOf(text);
    std::int64_t length = 0;
    for (std::int32_t i = 0; i < text.Len(); ++i)
      length += sizes_[bytes[i]];
    return kivara::checkedLength(length);
  }

  void write(String const & text, char * out) const {
    unsigned char const * const bytes = kivara::bytesOf(text);
    for (std::int32_t i = 0; i < text.Len(); ++i) {
      std::int32_t const size = sizes_[bytes[i]];
      if (size == 1)
        *out = static_cast<char>(bytes[i]);
      else
        std::memcpy(out, texts_[bytes[i]].data(), static_cast<std::size_t>(size));
      out += size;
    }
  }

private:
  static std::string textOf(char c) {
    switch (c) {
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '&': return "&amp;";
    case '"': return "&quot;";
    case '\x80': return "&#8364;";
    default: break;
    }
    bool const isControl = c > 0 && c < 32;
    return isControl ? "&#" + std::to_string(int{c}) + ";" : std::string(1, c);
  }

  kivara::ConvertedSizes sizes_;
  std::array<std::array<char, 8>, 256> texts_; // the longest has 7 characters
};

XmlTable const & tableFor(bool checkCodePage) {
  static XmlTable const checking(true);
  static XmlTable const plain(false);
  return checkCodePage ? checking : plain;
}

} // namespace

String KivSGMLString::XMLStr(String const & text, bool all) {
  XmlTable const & table = tableFor(all);
  std::int32_t const length = table.lengthOf(text);
  if (length == 0)
    return String();
  String result = String::ofLength(length);
  table.write(text, result.writable());
  SV::ConvertStringToUTF8String(result, result);
  return result;
}
