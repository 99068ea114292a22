#include "account.hpp"

#include "acrypto.hpp"

#include <algorithm>
#include <memory>
#include <vector>

namespace kivuser {
namespace {

constexpr std::size_t kMostBytes = 4'095; // of the line that the library reads
constexpr std::size_t kBlockDigits = 32;  // two for each of 16 bytes
constexpr long kAesForm = 2;
constexpr std::size_t kLines = 3;
constexpr char kNoName[] = "the name of the user is empty";
constexpr char kDigits[] = "0123456789ABCDEFabcdef";

bool isOneLine(std::string const & text) { return text.find_first_of(std::string("\n\0", 2)) == std::string::npos; }

std::string encrypted(std::string const & text) {
  std::string copy = text;
  char * line = nullptr;
  KivEncryption::Instance().Encrypt(kAesForm, copy.data(), line, -1);
  std::unique_ptr<char[]> const owner(line);
  return line != nullptr ? line : "";
}

std::string decrypted(std::string const & line) {
  std::string copy = line;
  char * text = nullptr;
  KivEncryption::Instance().Decrypt(kAesForm, copy.data(), text);
  std::unique_ptr<char[]> const owner(text);
  return text != nullptr ? text : "";
}

std::vector<std::string> linesOf(std::string const & text) {
  std::vector<std::string> lines{""};
  for (char const c : text)
    if (c == '\n')
      lines.emplace_back();
    else
      lines.back() += c;
  return lines;
}

/// Why the bytes are no line of digits; empty when they are one.
std::string faultOfLine(std::string const & bytes) {
  if (bytes.empty())
    return "the file is empty";
  std::size_t const length = std::min(bytes.find_first_not_of(kDigits), bytes.size());
  std::string const rest = bytes.substr(length);
  if (rest == "\n" || rest == "\r\n")
    return "a line end follows the line: the library takes none";
  if (!rest.empty())
    return "byte " + std::to_string(length + 1) + " is no hexadecimal digit";
  if (length > kMostBytes)
    return "the line has " + std::to_string(length) + " bytes: at most " + std::to_string(kMostBytes) + " are read";
  if (length % kBlockDigits != 0)
    return "the line has " + std::to_string(length) + " digits: they come in blocks of " + std::to_string(kBlockDigits);
  return "";
}

} // namespace

std::optional<std::string> contentOf(Account const & account, std::string & reason) {
  if (!isOneLine(account.first) || !isOneLine(account.name) || !isOneLine(account.password)) {
    reason = "a line feed or a NUL cannot be kept";
    return std::nullopt;
  }
  if (account.name.empty()) {
    reason = kNoName;
    return std::nullopt;
  }
  std::string content = encrypted(account.first + '\n' + account.name + '\n' + account.password);
  if (content.empty() || content.size() > kMostBytes) {
    reason = "name and password are too long";
    return std::nullopt;
  }
  return content;
}

std::optional<Account> accountIn(std::string const & bytes, std::string & reason) {
  reason = faultOfLine(bytes);
  if (!reason.empty())
    return std::nullopt;
  std::vector<std::string> const lines = linesOf(decrypted(bytes));
  if (lines.size() != kLines) {
    reason = "the account has " + std::to_string(kLines) + " lines, and the text has " + std::to_string(lines.size()) +
             ": it is damaged, or of a build with another key";
    return std::nullopt;
  }
  if (lines[1].empty()) {
    reason = kNoName;
    return std::nullopt;
  }
  return Account{lines[0], lines[1], lines[2]};
}

} // namespace kivuser
