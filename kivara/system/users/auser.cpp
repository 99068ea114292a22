#include "auser.hpp"

#include "acrypto.hpp"
#include "aplatfrm.hpp"
#include "atrace.hpp"
#include "base/openfile.hpp"

#include <algorithm>
#include <memory>

using SV::String;

namespace {

constexpr long kAesForm = 2;
constexpr int kLineFeeds = 2; // between three lines

/// Empty for a line that is not in the AES text form.
String decrypted(char * line) {
  char * plain = nullptr;
  KivEncryption::Instance().Decrypt(kAesForm, line, plain);
  std::unique_ptr<char[]> const owner(plain);
  return String(plain);
}

bool hasThreeLines(String const & text) {
  return std::count(text.c_str(), text.c_str() + text.Len(), '\n') == kLineFeeds;
}

} // namespace

// The others delegate to it, so that the destructor closes the file when reading throws.
KivDBUserUtils::KivDBUserUtils(char const * name, char const * mode) : file(kivara::openForThisProgram(name, mode)) {}

KivDBUserUtils::KivDBUserUtils() : KivDBUserUtils(Kiv_GetProgramPathFilename("adbuser.txt").c_str(), "r") { read(); }

KivDBUserUtils::KivDBUserUtils(char const * name) : KivDBUserUtils(name != nullptr ? name : "", "r") {
  if (file == nullptr)
    KivDebugOut((String("File ") + name + " for KIV_BOOT information was not found!\n").c_str());
  read();
}

KivDBUserUtils::~KivDBUserUtils() {
  if (file != nullptr)
    std::fclose(file);
}

void KivDBUserUtils::read() {
  char line[4096];
  if (file == nullptr || std::fgets(line, sizeof line, file) == nullptr)
    return;
  // A line feed that was read too makes the line unreadable: those who write the file know that.
  String const text = decrypted(line);
  if (!hasThreeLines(text))
    return;
  first_ = text.token(0, '\n');
  name_ = text.token(1, '\n');
  password_ = text.token(2, '\n');
}
