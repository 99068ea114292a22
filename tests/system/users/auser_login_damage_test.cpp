// A "login.ini" that was damaged: the full domain is wanted where one line of it still says so.
#include "currentuser.hpp"

#include "support/data/damage.hpp"

#include <algorithm>
#include <string>

namespace {

/// The library leaves the file open, and a process may have some hundred.
FILE * opened = nullptr;
FILE * rememberFile(char const * name, char const * mode) { return opened = std::fopen(name, mode); }

/// What the runtime reads of a text file: up to a Ctrl-Z, with CR LF for a line end.
std::string asText(std::string const & bytes) {
  std::string text;
  for (std::size_t at = 0; at < bytes.size() && bytes[at] != '\x1A'; ++at)
    if (bytes.compare(at, 2, "\r\n") != 0)
      text += bytes[at];
  return text;
}

/// The rules of the file: lines of up to 2048 bytes, each up to its NUL, without its line end and a carriage return before it.
bool isFullDomainWanted(std::string const & bytes) {
  std::string const text = asText(bytes);
  for (std::size_t at = 0; at < text.size();) {
    std::size_t const end = std::min(std::min(text.find('\n', at), text.size() - 1) + 1, at + 2048);
    std::string line = text.substr(at, end - at).c_str();
    for (char const c : {'\n', '\r'})
      if (line.ends_with(c))
        line.pop_back();
    if (line == "getfulldomainname=1")
      return true;
    at = end;
  }
  return false;
}

using LoginFileDamage = kivtest::CurrentUser;

TEST_F(LoginFileDamage, IsReadByTheRulesOfItsLines) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "msvcrt.dll",
                          {{"fopen", reinterpret_cast<void *>(rememberFile)}});
  security.results.clear();
  security.user = ""; // such an account is searched for again at each call
  support::Random random(171);
  support::WeakPlaces const marks = {
      .pieces = {"\r\n", "\n", "\r", " ", "1", "getfulldomainname=1", "\x1A", std::string(1, '\0')}};
  std::size_t wanted = 0;
  for (std::size_t i = 0; i < support::times(20); ++i) {
    std::string const bytes =
        support::damaged("[login]\r\nserver=here\r\ngetfulldomainname=1\r\nlast=1\r\n", random, marks);
    writeLoginFile(bytes);
    security.calls.clear();
    ask();
    std::fclose(opened);
    ASSERT_EQ(security.count("name"), isFullDomainWanted(bytes) ? 1u : 0u) << i;
    wanted += security.count("name");
  }
  EXPECT_GT(wanted, 0u);
  EXPECT_LT(wanted, support::times(20));
}

} // namespace
