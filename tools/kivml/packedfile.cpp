#include "packedfile.hpp"

#include "locale/amlstr_format.hpp"

#include <cstdio>
#include <cstring>
#include <map>

namespace kivml {
namespace {

namespace mlfile = kivara::mlfile;

void append(std::string & bytes, std::uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8)
    bytes += static_cast<char>(value >> shift & 0xFF);
}

std::string masked(std::string text) {
  for (char & c : text)
    c = static_cast<char>(static_cast<unsigned char>(c) ^ mlfile::kMask);
  return text;
}

std::string hexadecimal(std::uint32_t value) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(value));
  return text;
}

/// Goes through the bytes from front to back.
class Source {
public:
  explicit Source(std::string const & bytes) : bytes_(bytes) {}

  std::size_t left() const { return bytes_.size() - position_; }

  bool read(std::uint32_t & value) {
    if (left() < sizeof value)
      return false;
    value = 0;
    for (std::size_t i = 0; i < sizeof value; ++i)
      value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes_[position_ + i])) << (8 * i);
    position_ += sizeof value;
    return true;
  }

  std::string take(std::size_t count) {
    std::string part = bytes_.substr(position_, count);
    position_ += count;
    return part;
  }

private:
  std::string const & bytes_;
  std::size_t position_ = 0;
};

bool isHeadGood(Source & source, Faults & faults) {
  std::uint32_t magic = 0;
  if (!source.read(magic) || magic != mlfile::kMagic) {
    faults.push_back({0, "bad magic: " + hexadecimal(magic) + " instead of " + hexadecimal(mlfile::kMagic)});
    return false;
  }
  std::uint32_t version = 0;
  if (!source.read(version) || version != mlfile::kVersion) {
    faults.push_back({0, "bad version: " + hexadecimal(version) + " instead of " + hexadecimal(mlfile::kVersion)});
    return false;
  }
  return true;
}

/// Reads record \p number; false at the end of the records, good or bad.
bool readRecord(Source & source, std::size_t number, Texts & texts, Faults & faults) {
  std::uint32_t length = 0;
  if (!source.read(length)) {
    faults.push_back({number, "missing end record: the file ends here"});
    return false;
  }
  if (length == 0)
    return false;
  std::uint32_t resId = 0;
  if (!source.read(resId) || length > source.left()) {
    faults.push_back({number, "the length " + std::to_string(length) + " leads beyond the end of the file"});
    return false;
  }
  if (resId > kLastIdentifier)
    faults.push_back({number, "the identifier " + std::to_string(resId) + " is above 65535"});
  texts.push_back({resId, masked(source.take(length))});
  return true;
}

} // namespace

void findRepeatedIdentifiers(Texts const & texts, std::vector<std::size_t> const & places, Faults & faults) {
  std::map<std::uint32_t, std::size_t> first;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    auto const [entry, isNew] = first.try_emplace(texts[i].resId, places[i]);
    if (!isNew)
      faults.push_back({places[i], "the identifier " + std::to_string(texts[i].resId) + " is there twice, first at " +
                                       std::to_string(entry->second)});
  }
}

std::string pack(Texts const & texts) {
  std::string bytes;
  append(bytes, mlfile::kMagic);
  append(bytes, mlfile::kVersion);
  for (Text const & text : texts) {
    append(bytes, static_cast<std::uint32_t>(text.text.size()));
    append(bytes, text.resId);
    bytes += masked(text.text);
  }
  append(bytes, 0);
  return bytes;
}

Texts unpack(std::string const & bytes, Faults & faults) {
  Texts texts;
  Source source(bytes);
  if (!isHeadGood(source, faults))
    return texts;
  std::vector<std::size_t> places;
  std::size_t number = 1;
  while (readRecord(source, number, texts, faults))
    places.push_back(number++);
  if (faults.empty() && source.left() > 0)
    faults.push_back({number, std::to_string(source.left()) + " bytes after the end record"});
  findRepeatedIdentifiers(texts, places, faults);
  return texts;
}

} // namespace kivml
