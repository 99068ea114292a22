#include "sgml_model.hpp"

#include "atools.hpp"

#include <sstream>

namespace {

using Entities = SV::String (&)[256];

int openedLength(SV::String const & text);
char * openedNew(SV::String const & text);
char * openedNewOrSame(SV::String const & text, bool & changed);
Entities openedEntities();
int openedStart();

/// An explicit instantiation may name private members.
template <int (*kLength)(SV::String const &), char * (*kNew)(SV::String const &),
          char * (*kNewOrSame)(SV::String const &, bool &), SV::String (*kEntities)[256], int * kStart>
struct Opened {
  friend int openedLength(SV::String const & text) { return kLength(text); }
  friend char * openedNew(SV::String const & text) { return kNew(text); }
  friend char * openedNewOrSame(SV::String const & text, bool & changed) { return kNewOrSame(text, changed); }
  friend Entities openedEntities() { return *kEntities; }
  friend int openedStart() { return *kStart; }
};
template struct Opened<&KivSGMLString::GetSGMLStringLen, &KivSGMLString::GetpSGMLString,
                       &KivSGMLString::GetpSGMLStringExt, &KivSGMLString::g_aEntities,
                       &KivSGMLString::g_nMappingStartOffset>;

/// The lines as a buffer of 1,000 characters takes them; a longer one ends them.
std::vector<std::string> linesOf(std::string const & file) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < file.size();) {
    std::size_t const end = std::min(file.find('\n', start), file.size());
    if (end - start >= 1000)
      break;
    lines.push_back(file.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

std::string itemOf(std::string const & line) {
  std::string item;
  for (char const c : line) {
    if (c == '\0')
      break;
    if (c != ' ' && c != '\r')
      item += c;
  }
  return item.substr(0, item.find("//"));
}

void addUpperDefaults(std::array<std::string, 256> & entities) {
  entities['"'] = "&#34;";
  entities['&'] = "&amp;";
  entities['<'] = "&lt;";
  entities['>'] = "&gt;";
}

} // namespace

int SgmlInternals::length(SV::String const & text) { return openedLength(text); }
char * SgmlInternals::newString(SV::String const & text) { return openedNew(text); }
char * SgmlInternals::newOrSame(SV::String const & text, bool & changed) { return openedNewOrSame(text, changed); }
SV::String (&SgmlInternals::entities())[256] { return openedEntities(); }
int SgmlInternals::startOffset() { return openedStart(); }

MapModel::MapModel(std::string const & file, bool strict) : start(128) {
  std::vector<std::string> items;
  for (std::string const & line : linesOf(file)) {
    std::string const item = itemOf(line);
    if (item.empty())
      continue;
    if (items.empty() && item == "MAP128")
      start = 128;
    else if (items.empty() && item == "MAP256")
      start = 0;
    else
      items.push_back(item);
    if (items.size() > 257)
      break;
  }
  isGood = start == 128 ? items.size() == 129 : !strict || items.size() == 257;
  language = !isGood ? "DEFAULT" : items.empty() ? "" : items[0];
  if (!isGood)
    return;
  if (start == 128)
    addUpperDefaults(entities);
  for (std::size_t i = 1; i < items.size(); ++i)
    if (std::size_t const place = static_cast<std::size_t>(start) + i - 1; place < 256)
      entities[place] = items[i] == "0" ? "" : items[i];
}

std::array<std::string, 256> builtInEntities(int start) {
  std::array<std::string, 256> entities;
  if (start == 128)
    addUpperDefaults(entities);
  std::istringstream tokens(SV::Resource::LoadString(0x2000000 | 11764).c_str());
  std::string token;
  for (auto place = static_cast<std::size_t>(start); tokens >> token; ++place)
    entities[place] = token == "0" ? "" : token;
  return entities;
}

std::string convertedByModel(std::string const & text, std::array<std::string, 256> const & entities) {
  std::string const upToNul(text.c_str());
  std::string result;
  bool changed = false;
  for (char const c : upToNul) {
    std::string const & entity = entities[static_cast<unsigned char>(c)];
    changed = changed || c == '\r' || !entity.empty();
    if (c == '\r')
      continue;
    if (!entity.empty())
      result += entity;
    else if (static_cast<unsigned char>(c) >= 32 || c == '\t' || c == '\n')
      result += c;
  }
  return changed ? result : upToNul;
}

bool SgmlTest::setMap(std::string const & file) {
  std::istringstream stream(file);
  return KivSGMLString::SetCharacterMap(&stream);
}

std::array<std::string, 256> SgmlTest::table() {
  std::array<std::string, 256> all;
  for (std::size_t i = 0; i < 256; ++i)
    all[i] = textOf(SgmlInternals::entities()[i]);
  return all;
}

std::string numberedMap(std::string const & head, int entries) {
  std::string map = head;
  for (int i = 0; i < entries; ++i)
    map += 'e' + std::to_string(i) + '\n';
  return map;
}
