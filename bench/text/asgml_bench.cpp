// Texts for markup beside a loop over std::string that does the same.

#include "asgml.hpp"
#include "atools.hpp"
#include "support/ratio.hpp"
#include "sv/resource.hpp"
#include "tools/winapi.hpp"

#include <array>
#include <sstream>
#include <string>

namespace {

using SV::String;

/// Western prose with some markup, umlauts and line ends.
std::string mixedText() {
  std::string text;
  while (text.size() < (1 << 20))
    text += "Das B\xFCro pr\xFC"
            "ft den \"Auftrag\" <Nr. 12> & antwortet binnen zwei Tagen, wenn alles da ist.\r\n"
            "When the customer has signed, the office answers; 5 > 4, and it costs 10 \x80.\r\n";
  return text;
}

std::array<std::string, 256> const & entities() {
  static std::array<std::string, 256> const table = [] {
    std::array<std::string, 256> all;
    SV::ResMgr texts("language\\2057\\kivara72.dll");
    std::istringstream tokens(SV::Resource::LoadString(SV::ResId(0x2000000 | 11764, &texts)).c_str());
    std::string token;
    for (std::size_t place = 128; tokens >> token; ++place)
      all[place] = token == "0" ? "" : token;
    all['"'] = "&#34;";
    all['&'] = "&amp;";
    all['<'] = "&lt;";
    all['>'] = "&gt;";
    return all;
  }();
  return table;
}

std::string sgmlByLoop(std::string const & text) {
  std::string result;
  for (char const c : text) {
    std::string const & entity = entities()[static_cast<unsigned char>(c)];
    if (c == '\r')
      continue;
    if (!entity.empty())
      result += entity;
    else if (static_cast<unsigned char>(c) >= 32 || c == '\t' || c == '\n')
      result += c;
  }
  return result;
}

std::string inUtf8(std::string const & text) {
  int const size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), size)));
  int const units = static_cast<int>(wide.size());
  std::string result(
      static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr)),
      '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, result.data(), static_cast<int>(result.size()), nullptr, nullptr);
  return result;
}

std::string xmlByLoop(std::string const & text) {
  std::string result;
  for (char const c : text) {
    if (!Kiv_IsValidXMLChar(c, true, false))
      continue;
    if (c > 0 && c < 32)
      result += "&#" + std::to_string(int{c}) + ";";
    else if (c == '<')
      result += "&lt;";
    else if (c == '>')
      result += "&gt;";
    else if (c == '&')
      result += "&amp;";
    else if (c == '"')
      result += "&quot;";
    else if (c == '\x80')
      result += "&#8364;";
    else
      result += c;
  }
  return inUtf8(result);
}

template <class Text, class Operation> bench::Body on(Operation operation) {
  return [=](benchmark::State & state) {
    SV::ResMgr texts("language\\2057\\kivara72.dll");
    SV::Resource::SetResManager(&texts);
    Text const text(mixedText().c_str());
    for (auto _ : state) {
      auto result = operation(text);
      benchmark::DoNotOptimize(result);
    }
  };
}

bench::Pair const pairs[] = {
    {"KivSGMLString::GetSGMLString: 1 MB", bench::atMost(1.0), on<String>(KivSGMLString::GetSGMLString),
     "a loop over std::string", on<std::string>(sgmlByLoop)},
    {"KivSGMLString::XMLStr: 1 MB", bench::atMost(1.0),
     on<String>([](String const & text) { return KivSGMLString::XMLStr(text, false); }), "a loop over std::string",
     on<std::string>(xmlByLoop)},
};

} // namespace
