// kivuser: writes the file with the database account, adbuser.txt, and checks one.
#include "account.hpp"
#include "password.hpp"
#include "shared/codepage.hpp"
#include "shared/fileaccess.hpp"
#include "tools/winapi.hpp"

#include <shellapi.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace kivuser;

constexpr int kDone = 0;
constexpr int kFaulty = 1;
constexpr int kMisused = 2;

constexpr char kUsage[] =
    "usage: kivuser write FILE NAME [--first TEXT]\n"
    "       kivuser check FILE\n"
    "       kivuser --help\n"
    "write makes FILE, such as adbuser.txt, with the account of the database user NAME. The password is asked\n"
    "for on the console; where the standard input is a file or a pipe, it is the first line of that.\n"
    "TEXT goes into the first line of the account, which is empty otherwise. Nothing reads it.\n"
    "check says which user FILE names, or why the library finds no account in it.\n"
    "The exit code is 0 when all went well, 1 when something is wrong with the file or the password, and 2 when\n"
    "the command line is not one of these.\n";

using Words = std::vector<std::string>;

struct LocalMemory {
  void operator()(void * block) const { LocalFree(block); }
};

/// The command line in the code page that the library reads; nothing where that lacks a character of it.
std::optional<Words> commandLine() {
  int count = 0;
  std::unique_ptr<LPWSTR[], LocalMemory> const wide(CommandLineToArgvW(GetCommandLineW(), &count));
  Words words;
  for (int i = 1; i < count; ++i) {
    std::optional<std::string> word = kivtools::fromWide(wide[static_cast<std::size_t>(i)], GetACP());
    if (!word)
      return std::nullopt;
    words.push_back(*std::move(word));
  }
  return words;
}

std::string requireContent(Account const & account) {
  std::string reason;
  if (std::optional<std::string> content = contentOf(account, reason))
    return *std::move(content);
  throw std::runtime_error(reason);
}

int write(std::string const & file, Account account) {
  requireContent(account); // before anybody types a password
  account.password = readPassword();
  kivtools::writeFile(file, requireContent(account));
  std::printf("%s: the account of %s\n", file.c_str(), account.name.c_str());
  return kDone;
}

int check(std::string const & file) {
  std::string reason;
  std::optional<Account> const account = accountIn(kivtools::readFile(file), reason);
  if (!account) {
    std::fprintf(stderr, "%s: %s\n", file.c_str(), reason.c_str());
    return kFaulty;
  }
  std::printf("%s: the account of %s, no fault\n", file.c_str(), account->name.c_str());
  return kDone;
}

int misused() {
  std::fputs(kUsage, stderr);
  return kMisused;
}

int run(Words words) {
  if (words == Words{"--help"}) {
    std::fputs(kUsage, stdout);
    return kDone;
  }
  if (words.size() == 2 && words[0] == "check")
    return check(words[1]);
  std::string first;
  if (words.size() == 5 && words[3] == "--first") {
    first = words[4];
    words.resize(3);
  }
  if (words.size() == 3 && words[0] == "write")
    return write(words[1], {first, words[2], ""});
  return misused();
}

} // namespace

int main() {
  try {
    std::optional<Words> const words = commandLine();
    if (words)
      return run(*words);
    std::fputs("kivuser: a character of the command line is missing in the system's code page\n", stderr);
    return kMisused;
  } catch (std::exception const & error) {
    std::fprintf(stderr, "kivuser: %s\n", error.what());
    return kFaulty;
  }
}
