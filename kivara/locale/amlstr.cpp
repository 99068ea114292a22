#include "amlstr.hpp"

#include "ainter.hpp"
#include "locale/amlstr_format.hpp"

#include <algorithm>
#include <cstring>
#include <memory>

using SV::String;

namespace {

constexpr int kNotFound = 0x7FFFFFFF;

KivLanguageContainer languages;

void give(int * matchLength, String const & candidate) {
  if (matchLength != nullptr)
    *matchLength = candidate.Len();
}

/// Whether the identifier's string fulfils the condition in any language; the first language counts.
template <class Condition> bool matchesAny(unsigned short resId, int * matchLength, Condition const & condition) {
  for (auto const & [language, texts] : languages) {
    String const * const candidate = texts->Find(resId);
    if (candidate == nullptr || !condition(*candidate))
      continue;
    give(matchLength, *candidate);
    return true;
  }
  return false;
}

int positionOf(String const & candidate, char const * text) {
  char const * const place = candidate.Len() > 0 ? std::strstr(text, candidate.c_str()) : nullptr;
  return place != nullptr ? static_cast<int>(place - text) : kNotFound;
}

/// The last identifier, in the order of languages and identifiers, whose string fulfils the condition.
template <class Condition> unsigned short lastMatch(Condition const & condition) {
  unsigned short found = 0;
  for (auto const & [language, texts] : languages)
    for (auto const & [resId, candidate] : texts->GetTexts())
      if (condition(candidate))
        found = resId;
  return found;
}

} // namespace

void KivStringContainer::Add(unsigned short resId, String const & text) {
  texts_.try_emplace(texts_.end(), resId, text); // files are usually in ascending order
}

String const * KivStringContainer::Find(unsigned short resId) const {
  auto const entry = texts_.find(resId);
  return entry != texts_.end() ? &entry->second : nullptr;
}

KivLanguageContainer::KivLanguageContainer() = default;

KivLanguageContainer::~KivLanguageContainer() { DeleteAll(); }

KivStringContainer & KivLanguageContainer::Get(unsigned short language) {
  auto const place = lower_bound(language);
  if (place != end() && place->first == language)
    return *place->second;
  auto table = std::make_unique<KivStringContainer>();
  KivStringContainer & added = *emplace_hint(place, language, table.get())->second;
  static_cast<void>(table.release());
  return added;
}

void KivLanguageContainer::DeleteAll() {
  for (auto const & [language, texts] : *this)
    delete texts;
  clear();
}

void Kiv_InitializeMultiLanguageStrings() {
  for (unsigned short const language : KivInternational::GetAvailableLanguages())
    KivMLResFileReader(language, &languages.Get(language), kivara::mlfile::kFileName).Read();
}

void Kiv_DeinitializeMultiLanguageStrings() { languages.DeleteAll(); }

String Kiv_MultiLangGet(unsigned short resId, unsigned short const & language) {
  String const * const text = languages.Get(language).Find(resId);
  return text != nullptr ? *text : String();
}

bool Kiv_MultiLangEquals(String const & text, unsigned short resId, int * matchLength) {
  return Kiv_MultiLangEquals(text.c_str(), resId, matchLength);
}

bool Kiv_MultiLangEquals(char const * text, unsigned short resId, int * matchLength) {
  return matchesAny(resId, matchLength,
                    [text](String const & candidate) { return SV::h_strcmp(text, candidate.c_str()) == 0; });
}

bool Kiv_MultiLangStartsWith(String const & text, unsigned short resId, int * matchLength) {
  return Kiv_MultiLangStartsWith(text.c_str(), resId, matchLength);
}

bool Kiv_MultiLangStartsWith(char const * text, unsigned short resId, int * matchLength) {
  char const * const begin = text != nullptr ? text : "";
  return matchesAny(resId, matchLength, [begin](String const & candidate) {
    return std::strncmp(begin, candidate.c_str(), static_cast<std::size_t>(candidate.Len())) == 0;
  });
}

int Kiv_MultiLangSearchForAny(String const & text, unsigned short resId, int * matchLength) {
  int best = kNotFound;
  for (auto const & [language, texts] : languages) {
    String const * const candidate = texts->Find(resId);
    if (candidate == nullptr)
      continue;
    int const position = positionOf(*candidate, text.c_str());
    if (best != kNotFound && position >= best)
      continue;
    best = position;
    give(matchLength, *candidate);
  }
  return best;
}

unsigned short Kiv_MultiLangFindResId(String const & text) {
  return lastMatch([&text](String const & candidate) {
    return candidate.Len() == text.Len() &&
           (candidate.block() == text.block() || SV::h_strcmp(candidate.c_str(), text.c_str()) == 0);
  });
}

unsigned short Kiv_MultiLangFindResId(char const * text) {
  return lastMatch([text](String const & candidate) { return SV::h_strcmp(candidate.c_str(), text) == 0; });
}
