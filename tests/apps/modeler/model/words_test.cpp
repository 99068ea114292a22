// The words of model files, as the page on the sample product has them.
#include "apps/modeler/in_process.hpp"

#include "model/words.hpp"

#include <algorithm>
#include <sstream>

namespace {

using Words = std::vector<std::pair<std::string, std::string>>;

/// The page is in UTF-8.
std::string inCodePage(std::string const & text) {
  wchar_t wide[100] = L"";
  char bytes[100] = "";
  MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, wide, 100);
  WideCharToMultiByte(CP_ACP, 0, wide, -1, bytes, sizeof bytes, nullptr, nullptr);
  return bytes;
}

/// What stands between the accents of a line: "| `a` | `b` |".
std::vector<std::string> codeIn(std::string const & line) {
  std::vector<std::string> pieces;
  for (std::size_t start = line.find('`'); start != std::string::npos; start = line.find('`', start)) {
    std::size_t const end = line.find('`', start + 1);
    pieces.push_back(inCodePage(line.substr(start + 1, end - start - 1)));
    start = end + 1;
  }
  return pieces;
}

/// The table of words on the page.
Words wordsOfPage() {
  std::istringstream page(support::readFile(KIVARA_MODELER_PAGE).value());
  Words words;
  std::string line;
  while (std::getline(page, line) && !line.starts_with("| English | German |")) {
  }
  std::getline(page, line);
  while (std::getline(page, line) && line.starts_with("|"))
    if (std::vector<std::string> const pieces = codeIn(line); pieces.size() == 2)
      words.emplace_back(pieces[0], pieces[1]);
  return words;
}

class ModelerWords : public modeler::InProcess {};

TEST_F(ModelerWords, AreThoseOfThePageInBothLanguages) {
  Words words;
  for (int word = modeler::WORD_ACTIVITY; word <= modeler::WORD_DATE; ++word) {
    auto const id = static_cast<unsigned short>(word);
    words.emplace_back(Kiv_MultiLangGet(id, 2057).c_str(), Kiv_MultiLangGet(id, 1031).c_str());
  }
  Words page = wordsOfPage();
  std::sort(words.begin(), words.end());
  std::sort(page.begin(), page.end());
  EXPECT_EQ(page, words);
}

} // namespace
