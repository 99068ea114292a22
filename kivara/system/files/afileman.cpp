#include "afileman.hpp"

#include "acleanup.hpp"
#include "atrace.hpp"
#include "base/modules.hpp"
#include "base/newuuid.hpp"

#include <cstdlib>

using SV::String;

namespace {

constexpr unsigned kLineNoUuid = 102;
constexpr unsigned kLineNoReader = 219;

String & errorMessage() {
  static String text;
  return text;
}

/// The position of the last \p c from \p first on, or -1.
std::int32_t lastPlace(String const & text, char c, std::int32_t first = 0) {
  for (std::int32_t place = text.Len() - 1; place >= first; --place)
    if (text.charAt(place) == c)
      return place;
  return -1;
}

} // namespace

String const & KivBasicFileManager::getErrorMessage() { return errorMessage(); }
void KivBasicFileManager::_setErrorMessage(String const & text) { errorMessage() = text; }
void KivBasicFileManager::_appendErrorMessage(String const & text) { errorMessage() += text; }

long (*KivSystemFileManager::pReadStringFromFileFct)(String &, String const &, bool) = nullptr;
String KivSystemFileManager::g_sLastFileName;
String KivSystemFileManager::g_sLastFileContent;

String KivSystemFileManager::getTempDirectory() {
  char const * const temp = std::getenv("TEMP");
  return temp != nullptr ? temp : std::getenv("TMP");
}

String KivSystemFileManager::fileCreateTempName(char const * prefix, char const * extension) {
  String name = getTempDirectory();
  if (name.charAt(name.Len() - 1) != '\\')
    name += '\\';
  String const uuid = kivara::newUuid();
  if (uuid.Len() == 0) {
    displayErrorMessage(kivara::modules::kAfileman, kLineNoUuid);
    return {};
  }
  name += prefix;
  name += uuid;
  if (extension != nullptr)
    name = name + "." + extension;
  KivCleanUp::Instance().AddFileCleanUpAction(name);
  return name;
}

void KivSystemFileManager::splitFileName(String const & path, String & directory, String & fileName, String & baseName,
                                         String & extension, bool keepBackslash) {
  String const whole = path; // the parts may be written into the same string
  std::int32_t const backslash = lastPlace(whole, '\\');
  std::int32_t const start = backslash + 1;
  std::int32_t const dot = lastPlace(whole, '.', start);
  directory = whole.substr(0, keepBackslash ? start : backslash);
  fileName = whole.substr(start);
  extension = dot < 0 ? String() : whole.substr(dot);
  if (dot < 0)
    baseName = fileName;
  else if (backslash < 0)
    baseName = whole.substr(0, dot - 1); // one short, unlike in a directory: modules that store names rely on it
  else
    baseName = whole.substr(start, dot - start);
}

long KivSystemFileManager::readStringFromFile(String & out, String const & fileName, bool flag) {
  long result = -1;
  if (pReadStringFromFileFct != nullptr)
    result = pReadStringFromFileFct(out, fileName, flag);
  else
    displayErrorMessage(kivara::modules::kAfileman, kLineNoReader);
  g_sLastFileName = result == 0 ? fileName : String();
  g_sLastFileContent = result == 0 ? out : String();
  return result;
}

bool KivSystemFileManager::IsContentOfLastFile(String const & text) {
  if (g_sLastFileName.Len() == 0 || g_sLastFileContent.Len() == 0)
    return false;
  if (text.block() == g_sLastFileContent.block())
    return true;
  return text.Len() == g_sLastFileContent.Len() && SV::h_strcmp(text.c_str(), g_sLastFileContent.c_str()) == 0;
}

String KivSystemFileManager::GetLastFileName() { return g_sLastFileName; }
String KivSystemFileManager::GetLastFileContent() { return g_sLastFileContent; }
